// SPDX-License-Identifier: MIT
// Whole journals through the late-bound connection, from the same file as the program's exports of them.
#include "com/library/identifiers.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "com/ado/ado_connection.h"
#include "com/ado_double/ado_double.h"
#include "com/automation/text.h"
#include "com/component.h"
#include "com/exported_journal.h"
#include "stockbook/base/column_keys.h"
#include "support/fake_surroundings.h"
#ifdef STOCKBOOK_TESTS_HAVE_SQLITE
#include "stockbook/base/value.h"
#include "stockbook/databases/sqlite/open_embedded.h"
#include "stockbook/interaction/event_listener.h"
#include "stockbook/platform/grid.h"
#endif

namespace stockbook::com {
namespace {

using testing::AdoManner;
using testing::ExportedJournal;

std::shared_ptr<platform::Connection> OpenExported([[maybe_unused]] const std::string& dialect) {
#ifdef STOCKBOOK_TESTS_HAVE_SQLITE
  return databases::OpenEmbedded("Provider=Stockbook.Embedded;" + dialect + "Data Source=" + testing::ExportFolder() +
                                 "inventory.db");
#else
  return nullptr;
#endif
}

bool CanCompare() {
#ifdef STOCKBOOK_TESTS_HAVE_SQLITE
  return !testing::ExportedJournals().empty();
#else
  return false;
#endif
}

constexpr const char* kCannotCompare = "without SQLite's source or exports of the program; see tools/export-journals";

testing::JournalReader ReaderOf(const platform::Grid& grid) {
  return {grid.Cols(),
          [&](int col) { return grid.ColKey(col); },
          [&](int row, int col) { return grid.TextMatrix(row, col); },
          [&](int row, int col) { return grid.DisplayText(row, col); },
          [&](int row) { return grid.IsSubtotal(row); },
          [&](int row) { return grid.RowOutlineLevel(row); }};
}

// Keeps what the control said last.
class LastNotice : public interaction::EventListener {
 public:
  explicit LastNotice(control::Stockbook& control) : control_(control) { control_.AddListener(this); }
  ~LastNotice() override { control_.RemoveListener(this); }
  LastNotice(const LastNotice&) = delete;
  LastNotice& operator=(const LastNotice&) = delete;
  void Notify(const std::string& message) override { text = message; }
  std::string text;

 private:
  control::Stockbook& control_;
};

// The program adds the product to the header of a partner journal.
std::string CaptionOfControl(const std::string& first_line, int type) {
  const std::string exported = testing::FirstLineText(first_line, "caption");
  const bool is_of_partners = type == base::SupplierJournal || type == base::CustomerJournal;
  return is_of_partners ? exported.substr(0, exported.find(" [商品:")) : exported;
}

void Load(control::Stockbook& control, const ExportedJournal& journal) {
  const LastNotice notice(control);
  // The words of the program that exported it.
  control.SetSupplierTitle("供应商");
  control.SetCustomerTitle("客户");
  control.SetAccRestrict("False");
  control.SetJournalType(static_cast<base::tqJournalTypeContants>(journal.type));
  control.SetdpCode(journal.class_code);
  control.SetdpID(journal.second);
  ASSERT_TRUE(control.Load(journal.product, journal.second)) << notice.text;
  std::vector<base::Value> column{base::Value(std::string(base::keys::kModel))};
  control.DoCommand("ColChanged", column);
}

void ExpectAsExported(const ExportedJournal& journal, const AdoManner& manner) {
  SCOPED_TRACE(journal.name);
  const std::vector<std::string> lines = testing::LinesOf(journal);
  ASSERT_GT(lines.size(), 2U);
  testing::AdoLog log;
  testing::ControlOverFakes fakes;
  const auto object = testing::MakeAdoDouble(log, OpenExported(journal.dialect), manner);
  fakes.control->SetConn(OpenAdoConnection(object.get()));
  Load(*fakes.control, journal);
  EXPECT_EQ(testing::JsonText(fakes.control->Caption()), CaptionOfControl(lines[0], journal.type));
  const auto reader = ReaderOf(fakes.fg);
  ASSERT_EQ(fakes.fg.Rows() - fakes.fg.FixedRows(), static_cast<int>(lines.size()) - 1);
  for (size_t line = 1; line < lines.size(); ++line) {
    const int row = fakes.fg.FixedRows() + static_cast<int>(line) - 1;
    ASSERT_EQ(testing::ComparedPartOf(reader, row), testing::ComparedPart(lines[line]));
  }
}

TEST(JournalsOverAdo, AreThoseThatTheProgramExports) {
  if (!CanCompare()) GTEST_SKIP() << kCannotCompare;
  for (const ExportedJournal& journal : testing::ExportedJournals()) ExpectAsExported(journal, {});
}

TEST(JournalsOverAdo, AreTheSameRowByRow) {
  if (!CanCompare()) GTEST_SKIP() << kCannotCompare;
  AdoManner manner;
  manner.fetch = AdoManner::Fetch::kRowByRow;
  manner.type = AdoManner::Type::kNone;
  ExpectAsExported(testing::ExportedJournals().front(), manner);
}

// A member of the grid that a host is handed, by its name.
Variant AskGrid(IDispatch& grid, const wchar_t* name, std::vector<int> arguments) {
  auto* asked = const_cast<wchar_t*>(name);
  DISPID id = DISPID_UNKNOWN;
  EXPECT_HRESULT_SUCCEEDED(grid.GetIDsOfNames(IID_NULL, &asked, 1, LOCALE_USER_DEFAULT, &id));
  std::vector<VARIANT> reversed;
  for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
    reversed.push_back(Variant(int32_t{*argument}).Detach());
  }
  DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  Variant answer;
  EXPECT_HRESULT_SUCCEEDED(grid.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &parameters,
                                       answer.Put(), nullptr, nullptr));
  return answer;
}

testing::JournalReader ReaderOf(IDispatch& grid) {
  return {ToLong(AskGrid(grid, L"Cols", {}).get()),
          [&](int col) { return ToText(AskGrid(grid, L"ColKey", {col}).get()); },
          [&](int row, int col) {
            return ToText(AskGrid(grid, L"TextMatrix", {row, col}).get());
          },
          [&](int row, int col) {
            return ToText(AskGrid(grid, L"DisplayText", {row, col}).get());
          },
          [&](int row) { return ToBoolean(AskGrid(grid, L"IsSubtotal", {row}).get()); },
          [&](int row) { return ToLong(AskGrid(grid, L"RowOutlineLevel", {row}).get()); }};
}

void ComposeNames(_Stockbook& control) {
  SAFEARRAY* parameters = SafeArrayCreateVector(VT_VARIANT, 0, 1);
  static_cast<VARIANT*>(parameters->pvData)[0] = Variant(std::string_view(base::keys::kModel)).Detach();
  Variant nothing;
  EXPECT_HRESULT_SUCCEEDED(control.DoCommand(Bstr("ColChanged").get(), &parameters, nothing.Put()));
  SafeArrayDestroy(parameters);
}

void LoadObject(_Stockbook& control, const ExportedJournal& journal) {
  ASSERT_HRESULT_SUCCEEDED(control.put_SupplierTitle(Bstr("供应商").get()));
  ASSERT_HRESULT_SUCCEEDED(control.put_CustomerTitle(Bstr("客户").get()));
  ASSERT_HRESULT_SUCCEEDED(control.put_AccRestrict(Bstr("False").get()));
  ASSERT_HRESULT_SUCCEEDED(control.put_JournalType(static_cast<tqJournalTypeContants>(journal.type)));
  ASSERT_HRESULT_SUCCEEDED(control.put_dpCode(Bstr(journal.class_code).get()));
  ASSERT_HRESULT_SUCCEEDED(control.put_dpID(journal.second));
  VARIANT_BOOL loaded = VARIANT_FALSE;
  ASSERT_HRESULT_SUCCEEDED(control.Load(journal.product, journal.second, Bstr("").get(), &loaded));
  ASSERT_EQ(loaded, VARIANT_TRUE);
  ComposeNames(control);
}

void ExpectObjectShows(_Stockbook& control, const std::vector<std::string>& lines) {
  Bstr caption;
  ASSERT_HRESULT_SUCCEEDED(control.get_Caption(caption.Put()));
  tqJournalTypeContants type{};
  ASSERT_HRESULT_SUCCEEDED(control.get_JournalType(&type));
  EXPECT_EQ(testing::JsonText(caption.Text()), CaptionOfControl(lines[0], static_cast<int>(type)));
  ComPtr<IDispatch> grid;
  ASSERT_HRESULT_SUCCEEDED(control.get_Grid(grid.PutTyped()));
  const auto reader = ReaderOf(*grid);
  const int fixed = ToLong(AskGrid(*grid, L"FixedRows", {}).get());
  ASSERT_EQ(ToLong(AskGrid(*grid, L"Rows", {}).get()) - fixed, static_cast<int>(lines.size()) - 1);
  for (size_t line = 1; line < lines.size(); ++line) {
    ASSERT_EQ(testing::ComparedPartOf(reader, fixed + static_cast<int>(line) - 1), testing::ComparedPart(lines[line]));
  }
}

TEST(JournalsOverAdo, AreReadBackThroughTheGridOfTheObjectAsTheProgramExportsThem) {
  if (!CanCompare()) GTEST_SKIP() << kCannotCompare;
  const testing::Apartment apartment;
  testing::AdoLog log;
  for (const ExportedJournal& journal : testing::ExportedJournals()) {
    SCOPED_TRACE(journal.name);
    const std::vector<std::string> lines = testing::LinesOf(journal);
    ASSERT_GT(lines.size(), 2U);
    const auto control = testing::NewStockbook<_Stockbook>();
    ASSERT_TRUE(control);
    const auto connection = testing::MakeAdoDouble(log, OpenExported(journal.dialect));
    ASSERT_HRESULT_SUCCEEDED(control->putref_Conn(connection.get()));
    LoadObject(*control, journal);
    ExpectObjectShows(*control, lines);
  }
  EXPECT_EQ(log.objects, 0);
}

TEST(JournalsOverAdo, TellWhyALoadEndsWhenTheConnectionBreaks) {
  if (!CanCompare()) GTEST_SKIP() << kCannotCompare;
  testing::AdoLog log;
  testing::ControlOverFakes fakes;
  const LastNotice notice(*fakes.control);
  AdoManner manner;
  manner.dies_at_row = 100;
  fakes.control->SetConn(OpenAdoConnection(testing::MakeAdoDouble(log, OpenExported(""), manner).get()));
  EXPECT_FALSE(fakes.control->Load(1, 0));
  EXPECT_NE(notice.text.find("网络连接中断"), std::string::npos) << notice.text;
  EXPECT_EQ(log.objects, 1);
}

}  // namespace
}  // namespace stockbook::com
