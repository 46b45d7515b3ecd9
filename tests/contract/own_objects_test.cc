// SPDX-License-Identifier: MIT
// A journal over a host's own objects is the same, cell by cell, as over the same inventory in a file.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <stdexcept>

#include "contract/back_end.h"
#include "contract/contract_statements.h"
#include "contract/plain_inventory.h"
#include "contract/shown_cells.h"
#include "databases/sqlite/embedded_connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using databases::Dialect;
using Gives = PlainSource::Gives;

constexpr base::tqJournalTypeContants kJournalTypes[] = {base::MaterialJournal, base::SupplierJournal,
                                                         base::CustomerJournal, base::ProjectJournal};

// Every kind of journal of every kind of subject, some there and some not; the views take turns.
std::vector<JournalAsked> EveryJournal(const std::vector<int32_t>& products, const std::vector<int32_t>& second_keys) {
  std::vector<JournalAsked> journals;
  for (const auto type : kJournalTypes) {
    for (const int32_t product : products) {
      for (const int32_t second_key : second_keys) journals.push_back({type, product, second_key});
      for (const char* code : {"01", "0101", "02", "9"}) journals.push_back({type, product, 0, code});
    }
  }
  for (size_t at = 0; at < journals.size(); ++at) {
    journals[at].quantity2 = at % 2 == 0;
    journals[at].taxes = at % 3 == 0;
    journals[at].restricted = at % 5 == 0;
  }
  return journals;
}

class OwnObjects : public ::testing::Test {
 protected:
  void Fill() {
    CreateInventory(file_, {.price = "REAL"});
    FillInventory(file_);
    AddMovements(file_);
    LetItSayWhatObjectsSay(file_.path());
    objects_ = std::make_shared<PlainInventory>(ReadPlainInventory(file_.path()));
  }
  std::vector<std::string> InTheFile(const JournalAsked& asked, Dialect dialect = Dialect::kDesktop) const {
    return ShownCells(std::make_shared<databases::EmbeddedConnection>(
                          dialect == Dialect::kServer ? file_.ServerString() : file_.DesktopString()),
                      asked);
  }
  static std::vector<std::string> Shown(std::shared_ptr<databases::RowSource> source, const JournalAsked& asked,
                                        Dialect dialect = Dialect::kDesktop) {
    return ShownCells(databases::OpenRowSource(std::move(source), dialect == Dialect::kServer ? "Dialect=SQL" : ""),
                      asked);
  }
  // How many lines were compared.
  size_t ExpectTheJournalsOfTheFile(const std::vector<JournalAsked>& journals, Dialect dialect,
                                    const std::function<std::shared_ptr<databases::RowSource>()>& make) const {
    size_t lines = 0;
    for (const JournalAsked& asked : journals) {
      const std::vector<std::string> expected = InTheFile(asked, dialect);
      const std::string difference = Difference(Shown(make(), asked, dialect), expected, asked);
      EXPECT_EQ(difference, "");
      if (!difference.empty()) break;
      lines += expected.size();
    }
    return lines;
  }

  DatabaseFile file_;
  std::shared_ptr<PlainInventory> objects_;
};

TEST_F(OwnObjects, ShowEveryJournalAsTheirFileDoes) {
  Fill();
  EXPECT_GT(ExpectTheJournalsOfTheFile(EveryJournal({0, 1, 3, 9}, {0, 1, 2, 3, 5, 7}), Dialect::kDesktop,
                                       [&] { return std::make_shared<PlainSource>(objects_); }),
            30'000U);
}

TEST_F(OwnObjects, ShowEveryJournalAsTheirFileDoesInTheServerDialect) {
  Fill();
  EXPECT_GT(ExpectTheJournalsOfTheFile(EveryJournal({1, 9}, {0, 2, 3, 5, 7}), Dialect::kServer,
                                       [&] { return std::make_shared<PlainSource>(objects_); }),
            5'000U);
}

TEST_F(OwnObjects, ShowTheSameWhereTheyGiveMoreThanIsAskedFor) {
  Fill();
  size_t given = 0;
  size_t asked = 0;
  size_t told = 0;
  for (const JournalAsked& journal : EveryJournal({0, 1}, {0, 2, 3, 5, 7})) {
    const auto all = std::make_shared<PlainSource>(objects_, Gives::kAll);
    const auto exact = std::make_shared<PlainSource>(objects_);
    std::vector<std::string> shown = Shown(all, journal);
    told += std::erase_if(shown, PlainSource::IsOfWhatIsNotListed);
    ASSERT_EQ(Difference(shown, Shown(exact, journal), journal), "");
    given += all->given();
    asked += exact->given();
  }
  EXPECT_GT(given, 2 * asked) << "there were rows that nobody asked for";
  EXPECT_GT(told, 0U) << "among them those of later periods, which are said to be there";
}

TEST_F(OwnObjects, ShowTheSameInWhateverOrderTheyCome) {
  Fill();
  for (const unsigned seed : {1U, 2U}) {
    const auto shuffled = std::make_shared<PlainInventory>(Shuffled(*objects_, seed));
    EXPECT_GT(ExpectTheJournalsOfTheFile(EveryJournal({0, 1}, {0, 2, 3, 5, 7}), Dialect::kDesktop,
                                         [&] { return std::make_shared<PlainSource>(shuffled); }),
              5'000U)
        << seed;
  }
}

TEST_F(OwnObjects, ShowTheInventoryThatIsKeptBesideTheSources) {
  if (!FillAsKept("OlderDesktop", file_)) GTEST_SKIP() << "it is not there";
  LetItSayWhatObjectsSay(file_.path());
  objects_ = std::make_shared<PlainInventory>(ReadPlainInventory(file_.path()));
  ASSERT_FALSE(objects_->receipts.empty());
  ASSERT_FALSE(objects_->suppliers.empty());
  const auto product = static_cast<int32_t>(objects_->receipts.front().second.product);
  const auto supplier = static_cast<int32_t>(objects_->suppliers.front().id);
  EXPECT_GT(ExpectTheJournalsOfTheFile(EveryJournal({0, product}, {0, 1, supplier}), Dialect::kDesktop,
                                       [&] { return std::make_shared<PlainSource>(objects_); }),
            100U);
}

// Lines and amounts at the ends of what their types hold.
TEST_F(OwnObjects, KeepKeysOfSixtyFourBitsAndFourDecimalsExactly) {
  CreateInventory(file_, {.price = "REAL"});
  FillInventory(file_);
  file_.Run(R"(
    INSERT INTO 入库目录(BillID, AccPeriod, BillDate, 单据类型, 单据编号, dpID, ksID, pjID) VALUES
      (9007199254740992,'2005-01','2005-01-07','入库单','even',1,5,3),
      (9007199254740993,'2005-01','2005-01-08','入库单','odd',1,5,3),
      (9223372036854775807,'2005-01','2005-01-09','入库单','last',1,5,3),
      (-9223372036854775807,'2005-01','2005-01-10','入库单','first',1,5,3);
    INSERT INTO 入库记录(RecID, BillID, pdID, dpID, ksID, pjID, OtherID, 数量, 除税金额, 税额, 金额) VALUES
      (9007199254740992,9007199254740992,1,1,5,3,0,0.1,'0.0001','0.0001','0.0002'),
      (9007199254740993,9007199254740993,1,1,5,3,0,0.2,'0.0002','0.0001','0.0003'),
      (9223372036854775807,9223372036854775807,1,1,5,3,0,1e15,'461168601842738.7903','-0.0001','1'),
      (-9223372036854775807,-9223372036854775807,1,1,5,3,0,1e-7,'-461168601842738.7904','-0.9999','1');
    INSERT INTO 出库目录(BillID, AccPeriod, BillDate, 单据类型, 单据编号, dpID, ksID, pjID) VALUES
      (9007199254740993,'2005-01','2005-01-11','出库单','of odd',1,7,3);
    INSERT INTO 出库记录(RecID, BillID, pdID, dpID, ksID, pjID, OtherID, 数量, 除税金额) VALUES
      (9007199254740993,9007199254740993,1,1,7,3,9007199254740993,0.3,'12345678901234.5678'),
      (9007199254740992,9007199254740993,1,1,7,3,9223372036854775807,0.3,'0.0009');
  )");
  LetItSayWhatObjectsSay(file_.path());
  objects_ = std::make_shared<PlainInventory>(ReadPlainInventory(file_.path()));
  for (const JournalAsked& asked : EveryJournal({1}, {0, 1, 3, 5, 7}))
    EXPECT_EQ(Difference(Shown(std::make_shared<PlainSource>(objects_), asked), InTheFile(asked), asked), "");
  std::string all;
  for (const std::string& line :
       Shown(std::make_shared<PlainSource>(objects_), {.type = base::MaterialJournal, .key = 1}))
    all += line + "\n";
  for (const char* exact : {"RecID=9007199254740992 ", "RecID=9007199254740993 ", "BillID=9223372036854775807 ",
                            "BillID=-9223372036854775807 ", "Account=461168601842738.7903 ", "Account=0.0001 ",
                            "IssAcc=12345678901234.5678 ", "OtherID=9007199254740993 "})
    EXPECT_NE(all.find(exact), std::string::npos) << exact;
}

}  // namespace
}  // namespace stockbook::testing
