// SPDX-License-Identifier: MIT
// What becomes of a look-up that fails: what its statement refuses is neutral and told, any other error goes on.
#include <gtest/gtest.h>

#include <new>
#include <utility>

#include "journal/class_filters.h"
#include "journal/error_text.h"
#include "journal/opening_balance.h"
#include "journal/periods.h"
#include "journal/query_builder.h"
#include "journal/subjects.h"
#include "support/fake_connection.h"

namespace stockbook::journal {
namespace {

using testing::FakeConnection;
using testing::Text;
using testing::Whole;

using Messages = std::vector<std::string>;

// A connection whose every statement ends as told, and what is said about it.
class UnreadAnswers : public ::testing::Test {
 protected:
  Inventory inventory() {
    return {&connection_, [this](const std::string& message) { told_.push_back(message); }};
  }
  // Everything that looks something up.
  std::vector<std::pair<const char*, std::function<void()>>> LookUps() {
    const SubjectKeys keys = {7, 0, "01"};
    const auto subjects = [this](base::tqJournalTypeContants type) { return Subjects(inventory(), type); };
    return {
        {"newest period", [this] { NewestAccPeriod(inventory()); }},
        {"partners", [this] { PartnerKeyList(inventory(), base::SupplierJournal, "01"); }},
        {"projects", [this] { ProjectKeyList(inventory(), "01"); }},
        {"suppliers", [this] { SupplierKeyList(inventory(), "01"); }},
        {"customers", [this] { CustomerKeyList(inventory(), "01"); }},
        {"balance", [=, this] { OpenOpeningBalance(inventory(), base::MaterialJournal, keys); }},
        {"statement", [=, this] { QueryBuilder(inventory(), base::MaterialJournal, keys).Build(); }},
        {"product", [=] { subjects(base::MaterialJournal).Read(7, SecondUnit::kHidden); }},
        {"supplier", [=] { subjects(base::SupplierJournal).Read(7, SecondUnit::kHidden); }},
        {"member", [=] { subjects(base::CustomerJournal).ReadMember(5); }},
        {"depot", [=] { subjects(base::ProjectJournal).DepotName(keys); }},
        {"class code", [=] { subjects(base::SupplierJournal).SecondKeyClassCode(5, keys); }},
        {"class names", [=] { subjects(base::SupplierJournal).ClassNames("01"); }},
    };
  }

  FakeConnection connection_;
  Messages told_;
};

TEST_F(UnreadAnswers, OfARefusedStatementAreNeutralAndTold) {
  connection_.Fail("", "no such table");
  for (const auto& [name, look_up] : LookUps()) {
    told_.clear();
    EXPECT_NO_THROW(look_up()) << name;
    ASSERT_FALSE(told_.empty()) << name;
    EXPECT_TRUE(told_[0].ends_with("：no such table")) << name << ": " << told_[0];
  }
}

TEST_F(UnreadAnswers, OfTheEngineReachTheCallerAndNobodyElse) {
  for (const auto kind : {platform::ErrorKind::kBusy, platform::ErrorKind::kInputOutput, platform::ErrorKind::kDamaged,
                          platform::ErrorKind::kMemory, platform::ErrorKind::kInterrupted}) {
    connection_.Fail("", "busy", kind);
    for (const auto& [name, look_up] : LookUps()) EXPECT_THROW(look_up(), platform::Error) << name;
  }
  EXPECT_EQ(told_, Messages());
}

TEST_F(UnreadAnswers, ForWantOfMemoryOrOfAnythingElseReachTheCaller) {
  connection_.Do("", []() -> platform::Recordset { throw std::bad_alloc(); });
  for (const auto& [name, look_up] : LookUps()) EXPECT_THROW(look_up(), std::bad_alloc) << name;
  connection_.Do("", []() -> platform::Recordset { throw 7; });
  for (const auto& [name, look_up] : LookUps()) EXPECT_THROW(look_up(), int) << name;
  EXPECT_EQ(told_, Messages());
}

TEST_F(UnreadAnswers, OfAProjectsClassCodeAreExpectedAndNotTold) {
  connection_.Fail("", "no such column: pjID");
  EXPECT_EQ(Subjects(inventory(), base::ProjectJournal).SecondKeyClassCode(5, {7, 0, ""}), "");
  EXPECT_EQ(told_, Messages());
}

TEST_F(UnreadAnswers, LeaveTheMembersThatWereReadBefore) {
  // The field ends before the others do.
  connection_.Do("Select", [] {
    std::vector<platform::Field> fields;
    columns::ColumnBuilder keys;
    for (const int64_t key : {12, 15}) keys.AppendInteger(key);
    columns::ColumnBuilder names;
    for (const char* name : {"甲", "乙", "丙"}) names.AppendText(name);
    fields.push_back({"ksID", keys.Finish()});
    fields.push_back({"企业名称", names.Finish()});
    return platform::Recordset(std::move(fields));
  });
  EXPECT_EQ(PartnerKeyList(inventory(), base::SupplierJournal, "01"), "12,15");
  ASSERT_EQ(told_.size(), 1U);
  EXPECT_TRUE(told_[0].starts_with("读不到分类的全部成员")) << told_[0];
}

TEST_F(UnreadAnswers, SayThatThereIsNoPeriodWhereTheTableIsEmpty) {
  connection_.Answer("Select", {"AccPeriod"}, {});
  EXPECT_EQ(NewestAccPeriod(inventory()), "");
  EXPECT_EQ(told_, Messages()) << "no period is an answer";
  const OpeningBalance balance = OpenOpeningBalance(inventory(), base::MaterialJournal, {7, 0, ""});
  EXPECT_FALSE(balance.result.has_value());
  ASSERT_EQ(told_.size(), 1U);
  EXPECT_NE(told_[0].find("会计期间表 tqAccPeriod 是空的"), std::string::npos) << told_[0];
}

TEST_F(UnreadAnswers, KeepTheEarliestPeriodOfABalanceThatIsRefused) {
  connection_.Answer("Select", {"AccPeriod"}, {{Text("2004-03")}});
  connection_.Fail("SELECT TOP 1", "refused");
  EXPECT_EQ(OpenOpeningBalance(inventory(), base::MaterialJournal, {7, 0, ""}).first_period, "2004-03");
}

using ClassKeys = UnreadAnswers;

TEST_F(ClassKeys, ThatAreNoWholeNumbersAreLeftOutAndToldWithoutBeingRepeated) {
  connection_.Answer("Select", {"ksID", "pjID"},
                     {{Whole(12), Whole(9)},
                      {Text("1) OR (1=1"), Text("0 or 1")},
                      {base::Value(), base::Value()},
                      {base::Value(2.5), Text("")},
                      {Text("000031"), Text("-4")}});
  const std::pair<const char*, std::function<std::string()>> lists[] = {
      {"12,000031", [this] { return PartnerKeyList(inventory(), base::SupplierJournal, "01"); }},
      {"12,000031", [this] { return SupplierKeyList(inventory(), "01"); }},
      {"12,000031", [this] { return CustomerKeyList(inventory(), "01"); }},
      {"9,-4", [this] { return ProjectKeyList(inventory(), "01"); }},
  };
  for (const auto& [expected, list] : lists) {
    told_.clear();
    EXPECT_EQ(list(), expected);
    ASSERT_EQ(told_.size(), 1U);
    EXPECT_TRUE(told_[0].starts_with("分类中有 3 个成员的编号不是整数")) << told_[0];
    EXPECT_EQ(told_[0].find("OR"), std::string::npos) << "it may come from anywhere";
  }
}

TEST_F(ClassKeys, OfNobodyStandForNobodyAndNotForEverybody) {
  connection_.Answer("Select", {"ksID"}, {{Text("1) OR (1=1")}});
  connection_.Answer("Select Top 1", {"AccPeriod"}, {{Text("2004-06")}});
  EXPECT_EQ(SupplierKeyList(inventory(), "01"), "NULL");
  EXPECT_NE(
      QueryBuilder(inventory(), base::SupplierJournal, {0, 0, "01"}).Build().find("Where Recs.ksID in (NULL) And"),
      std::string::npos);
}

TEST_F(UnreadAnswers, AreOfOneMomentWhereSeveralStatementsBelongTogether) {
  connection_.Answer("Select", {"AccPeriod", "ksID"}, {{Text("2004-06"), Whole(3)}});
  connection_.Answer("SELECT", {"Period"}, {});
  OpenOpeningBalance(inventory(), base::SupplierJournal, {7, 0, "01"});
  QueryBuilder(inventory(), base::SupplierJournal, {7, 0, "01"}).Build();
  EXPECT_EQ(connection_.moments_of_statements, std::vector<int>(connection_.Sent().size(), 1));
  EXPECT_EQ(connection_.open_moments, 0);
}

TEST(TextOfError, IsItsOwnOrSaysWhatToDoWithoutMemory) {
  const auto text_of = [](auto thrown) {
    try {
      throw thrown;
    } catch (...) {
      return TextOfError("unknown");
    }
  };
  EXPECT_EQ(text_of(platform::Error("read", "坏了")), "坏了");
  EXPECT_EQ(text_of(7), "unknown");
  EXPECT_TRUE(text_of(std::bad_alloc()).starts_with("内存不足"));
}

TEST(TextOfError, IsKeptInTheRoomThatItIsGiven) {
  std::string room;
  try {
    throw platform::Error("read", "坏了");
  } catch (...) {
    EXPECT_EQ(TextOfError("unknown", room), "坏了");
  }
  EXPECT_EQ(room, "坏了");
}

}  // namespace
}  // namespace stockbook::journal
