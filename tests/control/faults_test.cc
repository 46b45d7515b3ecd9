// SPDX-License-Identifier: MIT
// Every operation of the control with a fault at each call that it makes of its surroundings.
#include <gtest/gtest.h>

#include "stockbook/base/value.h"
#include "stockbook/control/row_fields.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/fake_surroundings.h"
#include "support/faulty_grid.h"
#include "support/faulty_ports.h"
#include "support/memory_bag.h"
#include "support/small_journal.h"

namespace stockbook::control {
namespace {

using testing::Fault;

// Whether errors reach the caller of an operation, or are its own matter.
enum class Errors { kReachTheCaller, kStayInside };

struct Operation {
  const char* name;
  Errors errors;
  std::function<void()> perform;
  std::function<void()> prepare = {};
  bool replaces_everything = false;  // so that nothing need be prepared for its next time
};

// A control whose every port may fail.
class EveryFault : public ::testing::Test {
 protected:
  EveryFault()
      : real_(testing::SmallJournal()), connection_(std::make_shared<testing::FaultyConnection>(real_, faults_)) {
    real_->Answer("Select * From 厂商资料", {"ksID", "企业名称", "ClassCode"},
                  {{testing::Whole(5), testing::Text("五金厂"), testing::Text("0102")}});
    real_->Answer("Select * From 厂商分类", {"ClassCode", "ClassName"}, {{testing::Text("01"), testing::Text("华东")}});
    real_->Answer("Select ksID From 厂商资料", {"ksID"}, {{testing::Whole(5)}});
    real_->Answer("Select ClassCode From 厂商资料", {"ClassCode"}, {{testing::Text("0102")}});
    real_->Answer("SELECT '2004-03' As Period", {"Period", "RevQty", "RevQty2", "RevAcc"},
                  {{testing::Text("2004-03"), testing::Whole(3), testing::Whole(0), testing::Whole(6)}});
    real_->Answer("SELECT * FROM 仓库设置", {"仓库名称"}, {{testing::Text("总库")}});
    std::vector<testing::JournalLine> lines = {{.bill_no = "1", .quantity = 4}, {.bill_no = "2", .quantity = 5}};
    std::vector<std::vector<base::Value>> rows;
    for (const testing::JournalLine& line : lines) rows.push_back(JournalRow(line));
    real_->Answer("SELECT dir.AccPeriod AS Period", testing::JournalFieldNames(), rows);
    sheet_.view().SetSize({900, 700}, 1.0);
    control_.SetConn(connection_);
    control_.AddListener(&heard_);
    StartOver();
    reference_ = Stock();
    EXPECT_EQ(control_.Rows(), 16);
  }

  void StartOver() {
    faults_.FailCall(0);
    menu_.Choose("");
    control_.SetConn(connection_);
    control_.SetAllowInv(false);
    control_.SetAccRestrict("0");
    control_.SetdpCode("");
    control_.SetdpID(0);
    control_.SetJournalType(base::MaterialJournal);
    sheet_.SetFrozenCols(0);
    ASSERT_TRUE(control_.Load(7, 0));
    sheet_.Select(4, sheet_.ColIndex("BillNo"));
  }
  std::vector<std::string> Stock() {
    std::vector<std::string> stock;
    for (int row = 1; row < sheet_.Rows(); ++row)
      stock.push_back(sheet_.TextMatrix(row, sheet_.ColIndex("BillNo")) + " " +
                      sheet_.TextMatrix(row, sheet_.ColIndex("StoQty")));
    return stock;
  }
  // Whatever lines a load that failed has left, none shows a stock that is not its own.
  void ExpectNoWrongStock() {
    const int bills = sheet_.ColIndex("BillNo");
    const int stock = sheet_.ColIndex("StoQty");
    if (bills < 0 || stock < 0 || control_.JournalType() != base::MaterialJournal) return;
    for (int row = 1; row < sheet_.Rows(); ++row) {
      const std::string text = sheet_.TextMatrix(row, stock);
      const std::string line = sheet_.TextMatrix(row, bills) + " " + text;
      EXPECT_TRUE(text.empty() || std::find(reference_.begin(), reference_.end(), line) != reference_.end()) << line;
    }
  }
  void ExpectAtRest() {
    EXPECT_EQ(sheet_.Tag(), "");
    EXPECT_TRUE(sheet_.Redraw());
    EXPECT_EQ(sheet_.Pointer(), platform::MousePointer::kDefault);
    EXPECT_TRUE(sheet_.CheckInvariants());
    EXPECT_EQ(real_->open_moments, 0);
    EXPECT_FALSE(control_.IsRaising());
  }
  platform::GridObserver& user() { return sheet_.view().observer(); }
  void RightClick(platform::CellPosition cell, const char* choice, int index = 0) {
    sheet_.view().SetMouseCell(cell);
    menu_.Choose(choice, index);
    user().MouseDown({platform::MouseButton::kRight, {}, 0, 0});
  }
  void DoCommand(const char* command, const char* parameter) {
    std::vector<base::Value> parameters = {testing::Text(parameter)};
    control_.DoCommand(command, parameters);
  }

  std::vector<Operation> Loads();
  std::vector<Operation> Methods();
  std::vector<Operation> Properties();
  std::vector<Operation> Rows();
  std::vector<Operation> HeaderMenu();
  std::vector<Operation> Gestures();
  void Prepare(const Operation& operation);
  void Try(const Operation& operation, int call, Fault fault);
  void TryEveryCall(const Operation& operation, Fault fault);
  void TryAll(const std::vector<Operation>& operations);

  testing::Faults faults_;
  testing::ControlOverFakes fakes_;
  sheet::GridSheet sheet_;
  testing::FaultyGrid grid_{sheet_, faults_};
  testing::FaultyMetrics metrics_{fakes_.metrics, faults_};
  testing::FaultyImages images_{fakes_.images, faults_};
  testing::FakeMenu menu_;
  testing::FaultyMenu faulty_menu_{menu_, faults_};
  testing::FaultyClipboard clipboard_{fakes_.clipboard, faults_};
  testing::FaultySite site_{faults_};
  testing::MemoryBag bag_;
  testing::FaultyBag faulty_bag_{bag_, faults_};
  std::shared_ptr<testing::FakeConnection> real_;
  std::shared_ptr<testing::FaultyConnection> connection_;
  testing::FaultyListener heard_{faults_};
  Stockbook control_{{grid_, fakes_.fg1, metrics_, images_, faulty_menu_, clipboard_, site_}};
  std::vector<std::string> reference_;
};

std::vector<Operation> EveryFault::Loads() {
  constexpr auto kInside = Errors::kStayInside;
  const auto load = [this](int32_t second_key) {
    heard_.lines.clear();
    const bool loaded = control_.Load(7, second_key);
    EXPECT_EQ(heard_.LastOf("Process"), "-1");
    EXPECT_EQ(heard_.LastOf("Notify").empty(), false);
    if (!loaded) {
      ExpectNoWrongStock();
    }
  };
  return {
      {"Load", kInside, [=] { load(0); }},
      {"LoadOfADepotRestricted", kInside,
       [=, this] {
         control_.SetAccRestrict("1");
         load(3);
       }},
      {"LoadThatTheHostCancels", kInside,
       [=, this] {
         heard_.cancels = true;
         control_.Load(7, 0);
         heard_.cancels = false;
         EXPECT_EQ(heard_.LastOf("Process"), "-1");
       }},
      {"LoadOfASupplierClass", kInside, [=] { load(0); },
       [this] {
         control_.SetJournalType(base::SupplierJournal);
         control_.SetdpCode("0102");
       }},
  };
}

std::vector<Operation> EveryFault::Methods() {
  constexpr auto kThrown = Errors::kReachTheCaller;
  return {
      {"Find", kThrown, [this] { control_.Find("出库"); }},
      {"FindByPattern", kThrown, [this] { control_.Find("*单 1?"); }},
      {"ColChanged", kThrown, [this] { DoCommand("ColChanged", "Measure"); }},
      {"SetColFont", kThrown, [this] { DoCommand("SetColFont", ""); }},
      {"Statistics", kThrown, [this] { control_.Statistics(); }},
      {"DefaultFormat", kThrown, [this] { control_.DefaultFormat(); }},
      {"IsRangeSelected", kThrown, [this] { control_.IsRangeSelected(); }},
      {"Prompt", kThrown, [this] { control_.Prompt("x"); }},
      {"ReadProperties", kThrown, [this] { control_.ReadProperties(faulty_bag_); }},
      {"WriteProperties", kThrown, [this] { control_.WriteProperties(faulty_bag_); }},
      {"FollowFont", kThrown,
       [this] {
         control_.FollowFont({"Arial", 12});
       }},
      {"SetJournalType", kThrown, [this] { control_.SetJournalType(base::SupplierJournal); }},
  };
}

std::vector<Operation> EveryFault::Properties() {
  constexpr auto kThrown = Errors::kReachTheCaller;
  constexpr auto kInside = Errors::kStayInside;
  const auto picture = testing::MakePicture("p");
  return {
      {"AccPeriod", kInside, [this] { control_.AccPeriod(); }},
      {"DepotName", kInside, [this] { control_.DepotName(); }, [this] { control_.SetdpID(3); }},
      {"SetKeyID", kInside, [this] { control_.SetKeyID(7); }},
      {"SetAllowQty2", kThrown, [this] { control_.SetAllowQty2(false); }},
      {"SetAllowInv", kThrown, [this] { control_.SetAllowInv(false); }},
      {"SetCaption", kThrown, [this] { control_.SetCaption("x"); }},
      {"Rows", kThrown, [this] { control_.Rows(); }},
      {"Row", kThrown, [this] { control_.Row(); }},
      {"SetRow", kThrown, [this] { control_.SetRow(12); }},
      {"SetRowHeight", kThrown, [this] { control_.SetRowHeight(300); }},
      {"SetRowHeightTitle", kThrown, [this] { control_.SetRowHeightTitle(300); }},
      {"SetRowHeightSum", kThrown, [this] { control_.SetRowHeightSum(300); }},
      {"SetBackColor", kThrown, [this] { control_.SetBackColor(1); }},
      {"BackColor", kThrown, [this] { control_.BackColor(); }},
      {"SetGridLines", kThrown, [this] { control_.SetGridLines(control_.GridLines()); }},
      {"SetOutlinebar", kThrown, [this] { control_.SetOutlinebar(control_.Outlinebar()); }},
      {"SetRowHeightMin", kThrown, [this] { control_.SetRowHeightMin(control_.RowHeightMin()); }},
      {"SetScrollBars", kThrown, [this] { control_.SetScrollBars(control_.ScrollBars()); }},
      {"SetNodeOpenPicture", kThrown, [=, this] { control_.SetNodeOpenPicture(picture); }},
      {"SetTitleBackPicture", kThrown, [=, this] { control_.SetTitleBackPicture(picture); }},
      {"SetBillPicture", kThrown, [=, this] { control_.SetBillPicture(picture); }},
      {"SetBackColorHot", kThrown, [this] { control_.SetBackColorHot(0x00E2D2C7); }},
      {"SetBorderWidth", kThrown, [this] { control_.SetBorderWidth(1); }},
  };
}

std::vector<Operation> EveryFault::Rows() {
  constexpr auto kInside = Errors::kStayInside;
  return {
      {"BillID", kInside, [this] { control_.BillID(); }},
      {"BillName", kInside, [this] { control_.BillName(); }},
      {"FlagName", kInside, [this] { control_.FlagName(); }},
      {"Price", kInside, [this] { control_.Fields().Get(fields::Price); }},
      {"Account", kInside, [this] { control_.Fields().Get(fields::Account); }},
      {"BillDate", kInside, [this] { control_.Fields().Get(fields::BillDate); }},
      {"SetPrice", kInside, [this] { control_.Fields().Set(fields::Price, 4, 2.5); }},
      {"SetQuantity", kInside, [this] { control_.Fields().Set(fields::Quantity, 4, 4); }},
      {"SetPdID", kInside, [this] { control_.Fields().Set(fields::pdID, -1, 7); }},
      {"IssueSource", kInside, [this] { control_.Fields().IssueSource(6); }},
      {"IssueSourceOfAnOpening", kInside, [this] { control_.Fields().IssueSource(5); }},
  };
}

std::vector<Operation> EveryFault::HeaderMenu() {
  constexpr auto kInside = Errors::kStayInside;
  const platform::CellPosition caption{0, sheet_.ColIndex("Explain")};
  return {
      {"HeaderMenu", kInside, [=, this] { RightClick(caption, ""); }},
      {"HeaderMenuFreezes", kInside, [=, this] { RightClick(caption, "mnuFrozen"); }},
      {"HeaderMenuHides", kInside, [=, this] { RightClick(caption, "mnuHiddenCol"); }},
      {"HeaderMenuLaysOut", kInside, [=, this] { RightClick(caption, "mnuDefault"); }},
      {"HeaderMenuTogglesAField", kInside, [=, this] { RightClick(caption, "mnuField", 5); }},
      {"HeaderMenuTogglesTheOutline", kInside, [=, this] { RightClick(caption, "mnuField", 0); }},
  };
}

std::vector<Operation> EveryFault::Gestures() {
  constexpr auto kInside = Errors::kStayInside;
  const platform::CellPosition line{6, sheet_.ColIndex("BillNo")};
  const platform::CellPosition node{2, sheet_.ColIndex("BillNo")};
  return {
      {"BodyMenu", kInside, [=, this] { RightClick(line, ""); }},
      {"BodyMenuShowsTheBill", kInside, [=, this] { RightClick(line, "mnuBill"); }},
      {"BodyMenuCopies", kInside, [=, this] { RightClick(line, "mnuCopy"); }},
      {"BodyMenuFinds", kInside, [=, this] { RightClick(line, "mnuFind"); }},
      {"BodyMenuRefreshes", kInside, [=, this] { RightClick(line, "mnuRefresh"); }},
      {"BodyMenuFolds", kInside, [=, this] { RightClick(node, "mnuCollapse", 1); }},
      {"BodyMenuUnfolds", kInside, [=, this] { RightClick(node, "mnuCollapse", 0); }},
      {"AnotherRow", kInside, [this] { sheet_.Select(sheet_.Row() == 6 ? 5 : 6, 3); }},
      {"ClickWithShift", kInside,
       [this] {
         user().MouseDown({platform::MouseButton::kLeft, {platform::Modifiers::kShift}, 0, 0});
       }},
      {"RangeSelected", kInside,
       [this] {
         sheet_.SelectRange(3, 3, 5, 5);
         user().MouseUp({platform::MouseButton::kLeft, {}, 0, 0});
       }},
      {"DoubleClick", kInside,
       [=, this] {
         sheet_.view().SetMouseCell(line);
         user().DoubleClick();
       }},
      {"CopyKey", kInside, [this] { user().Copy(); }},
      {"RowResized", kInside, [this] { user().AfterUserResize(4, -1); }},
      {"TitleResized", kInside, [this] { user().AfterUserResize(0, -1); }},
      {"NodeResized", kInside, [this] { user().AfterUserResize(2, -1); }},
      {"ColumnMoved", kInside, [this] { user().AfterMoveColumn(3, 4); }},
  };
}

void EveryFault::Prepare(const Operation& operation) {
  StartOver();
  if (operation.prepare) operation.prepare();
  faults_.FailCall(0);
}

void EveryFault::Try(const Operation& operation, int call, Fault fault) {
  faults_.FailCall(call, fault);
  bool thrown = false;
  try {
    operation.perform();
  } catch (...) {
    thrown = true;
  }
  const bool failed = faults_.HasFailed();
  faults_.FailCall(0);
  EXPECT_FALSE(thrown && operation.errors == Errors::kStayInside);
  EXPECT_FALSE(thrown && !failed);
  ExpectAtRest();
  EXPECT_NO_THROW(operation.perform()) << "the next time";
  ExpectAtRest();
}

// The sanitizers make it ten times slower: there every call fails in one way only.
#ifdef STOCKBOOK_SANITIZED
constexpr int kStep = 4;
#elif defined _WIN32
// Wine's heap is slower still.
constexpr int kStep = 8;
#else
constexpr int kStep = 1;
#endif

void EveryFault::TryEveryCall(const Operation& operation, Fault fault) {
  Prepare(operation);
  operation.perform();
  const int calls = faults_.Calls();
  if (fault == Fault::kStatement) RecordProperty(operation.name, calls);
  for (int call = 1 + static_cast<int>(fault) % kStep; call <= calls && !HasFailure(); call += kStep) {
    SCOPED_TRACE(std::string(operation.name) + ", call " + std::to_string(call) + ", fault " +
                 std::to_string(static_cast<int>(fault)));
    if (!operation.replaces_everything) Prepare(operation);
    Try(operation, call, fault);
  }
  StartOver();
  EXPECT_EQ(Stock(), reference_) << operation.name;
}

void EveryFault::TryAll(const std::vector<Operation>& operations) {
  for (const Operation& operation : operations) {
    for (const Fault fault : {Fault::kStatement, Fault::kEngine, Fault::kMemory, Fault::kAlien})
      TryEveryCall(operation, fault);
  }
}

TEST_F(EveryFault, LeavesTheControlInOrderDuringALoad) {
  std::vector<Operation> loads = Loads();
  for (Operation& load : loads) load.replaces_everything = true;
  TryAll(loads);
}

TEST_F(EveryFault, LeavesTheControlInOrderDuringItsMethods) { TryAll(Methods()); }
TEST_F(EveryFault, LeavesTheControlInOrderWhenPropertiesAreReadAndWritten) { TryAll(Properties()); }
TEST_F(EveryFault, LeavesTheControlInOrderWhenRowsAreReadAndWritten) { TryAll(Rows()); }
TEST_F(EveryFault, LeavesTheControlInOrderInTheMenuOfACaption) { TryAll(HeaderMenu()); }
TEST_F(EveryFault, LeavesTheControlInOrderWhateverTheUserDoes) { TryAll(Gestures()); }

}  // namespace
}  // namespace stockbook::control
