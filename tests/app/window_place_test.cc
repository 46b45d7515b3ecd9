// SPDX-License-Identifier: MIT
// The place in each journal, which the window remembers between runs.
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>

#include "app/run_fixture.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

class PlaceOfReading : public RunTest {
 protected:
  void Start() {
    Begin();
    window_->resize(800, 500);
    ShowFirst();
  }
  void LoadProduct(int32_t product) {
    JournalOptions options;
    options.key_id = product;
    ASSERT_TRUE(window_->LoadJournal(options).loaded);
    Settle();
  }
  sheet::GridSheet& sheet() { return stockbook().sheet(); }
  int Last() { return static_cast<int>(sheet().RecordCount()) - 1; }
  // The line of a record becomes the current one, some way below the top of the view.
  void ReadAt(int record, const char* key) {
    sheet().Select(sheet().RowOfRecord(static_cast<size_t>(record)), sheet().ColIndex(key));
    sheet().SetTopRow(sheet().Row() - 3);
  }
  // The line and the column of the current cell, and what is at the top.
  std::string Place() {
    return std::to_string(sheet().RecordOfRow(sheet().Row())) + " " + sheet().ColKey(sheet().Col()) + " " +
           std::to_string(sheet().TopRow()) + " " + std::to_string(sheet().LeftCol());
  }
};

TEST_F(PlaceOfReading, IsReturnedToInEachJournal) {
  Start();
  LoadProduct(1);
  ASSERT_GT(Last(), 40);
  ReadAt(20, keys::kExplain);
  const std::string first = Place();
  LoadProduct(2);
  ReadAt(Last() / 2, keys::kStoAcc);
  sheet().SetLeftCol(sheet().Col() - 1);
  const std::string second = Place();
  End();

  Start();
  EXPECT_EQ(window_->bar().Options().key_id, 2);
  EXPECT_EQ(Place(), second);
  LoadProduct(1);
  EXPECT_EQ(Place(), first);
  LoadProduct(3);
  EXPECT_EQ(sheet().Row(), sheet().FixedRows()) << "this one was not read yet";
  EXPECT_EQ(sheet().TopRow(), sheet().FixedRows());
}

TEST_F(PlaceOfReading, IsThatOfTheLineWhereverOthersHaveMovedIt) {
  Start();
  LoadProduct(1);
  ReadAt(30, keys::kExplain);
  const std::string bill = sheet().TextMatrix(sheet().Row(), sheet().ColIndex(keys::kBillNo));
  const int row = sheet().Row();
  const int above = row - sheet().TopRow();
  const std::string first = sheet().TextMatrix(sheet().RowOfRecord(0), sheet().ColIndex(keys::kRecID));
  const bool received = !sheet().TextMatrix(sheet().RowOfRecord(0), sheet().ColIndex(keys::kRevQty)).empty();
  End();
  Change(PathOf("sample.db"),
         std::string("DELETE FROM ") + (received ? "入库记录" : "出库记录") + " WHERE RecID=" + first);
  Start();
  EXPECT_EQ(sheet().TextMatrix(sheet().Row(), sheet().ColIndex(keys::kBillNo)), bill);
  EXPECT_EQ(sheet().Row(), row - 1);
  EXPECT_EQ(sheet().Row() - sheet().TopRow(), above) << "as far below the top";
}

TEST_F(PlaceOfReading, IsThatOfTheViewWhereTheUserHasScrolledAway) {
  Start();
  LoadProduct(1);
  ReadAt(2, keys::kExplain);
  sheet().SetTopRow(sheet().RowOfRecord(static_cast<size_t>(Last()) / 2));
  const std::string place = Place();
  End();
  Start();
  EXPECT_EQ(Place(), place);
}

TEST_F(PlaceOfReading, IsInSightInASmallerWindow) {
  Start();
  LoadProduct(1);
  ReadAt(20, keys::kExplain);
  sheet().SetTopRow(sheet().Row() - 9);
  ASSERT_TRUE(sheet().view().geometry().RowIsVisible(sheet().Row()));
  window_->setMinimumSize(1, 1);
  End();
  {
    QSettings settings(QString::fromStdString(PathOf("window.ini")), QSettings::IniFormat);
    settings.remove(QStringLiteral("window/geometry"));
  }
  window_ = std::make_unique<MainWindow>();
  settings_ = std::make_unique<QSettings>(QString::fromStdString(PathOf("window.ini")), QSettings::IniFormat);
  window_->Remember(*settings_);
  window_->resize(800, 320);
  Open();
  ASSERT_TRUE(window_->LoadFirstJournal().loaded);
  EXPECT_EQ(sheet().RecordOfRow(sheet().Row()), 20);
  EXPECT_TRUE(sheet().view().geometry().RowIsVisible(sheet().Row()));
}

TEST_F(PlaceOfReading, IsTheSameLineWhereItsColumnIsHidden) {
  Start();
  LoadProduct(1);
  ReadAt(20, keys::kExplain);
  window_->columns().Hide(sheet().ColIndex(keys::kExplain));
  End();
  Start();
  EXPECT_EQ(sheet().RecordOfRow(sheet().Row()), 20);
  EXPECT_EQ(sheet().Col(), sheet().OutlineCol());
}

TEST_F(PlaceOfReading, IsTheBeginningWhereARangeHidesIt) {
  Start();
  LoadProduct(1);
  ReadAt(0, keys::kExplain);
  End();
  Start();
  JournalOptions options;
  options.key_id = 2;
  ASSERT_TRUE(window_->LoadJournal(options).loaded);
  options.key_id = 1;
  options.range.from = RangeBound::OfPeriod({2025, 6});
  ASSERT_TRUE(window_->LoadJournal(options).loaded);
  EXPECT_FALSE(sheet().RowHidden(sheet().Row()));
}

TEST_F(PlaceOfReading, IsForgottenWithEverythingElse) {
  Start();
  LoadProduct(1);
  ReadAt(20, keys::kExplain);
  window_->recall()->Forget();
  End();
  Start();
  LoadProduct(1);
  EXPECT_EQ(sheet().Row(), sheet().FixedRows());
}

TEST_F(PlaceOfReading, IsKeptOfTheLastFiftyJournalsOfAType) {
  Start();
  WindowMemory& memory = window_->recall()->memory();
  JournalOptions options;
  for (options.key_id = 1; options.key_id <= 60; ++options.key_id) memory.SetPlace(options, {options.key_id, {}, {}});
  options.key_id = 10;
  EXPECT_FALSE(memory.Place(options).has_value());
  options.key_id = 11;
  ASSERT_TRUE(memory.Place(options).has_value());
  EXPECT_EQ(memory.Place(options)->row, 11);
  options.dp_id = 1;
  EXPECT_FALSE(memory.Place(options).has_value()) << "another subject";
}

TEST_F(PlaceOfReading, IsNowhereForNonsenseInTheSettings) {
  Start();
  LoadProduct(1);
  const QString places = window_->recall()->memory().InventoryGroup() + QStringLiteral("/journal0/places");
  End();
  const QVariant values[] = {7,
                             -1,
                             std::numeric_limits<int>::max(),
                             QStringLiteral("nan"),
                             QStringLiteral("-inf"),
                             1e300,
                             QByteArray("\xff\x00\x01", 3)};
  for (const QVariant& value : values) {
    {
      QSettings settings(QString::fromStdString(PathOf("window.ini")), QSettings::IniFormat);
      settings.setValue(places, QVariantList{QVariantMap{{QStringLiteral("subject"), QStringLiteral("1/0/")},
                                                         {QStringLiteral("row"), value},
                                                         {QStringLiteral("column"), QStringLiteral("Explain")},
                                                         {QStringLiteral("line"), value},
                                                         {QStringLiteral("left"), value},
                                                         {QStringLiteral("height"), value},
                                                         {QStringLiteral("seen"), value}}});
    }
    Start();
    EXPECT_GT(sheet().RecordCount(), 0U);
    EXPECT_LT(sheet().Row(), sheet().Rows());
    EXPECT_TRUE(sheet().view().geometry().CheckInvariants());
    window_.reset();  // without keeping anything
    settings_.reset();
  }
}

}  // namespace
}  // namespace stockbook::app
