// SPDX-License-Identifier: MIT
// A bill as a whole: read from the inventory, shown, printed, and the way from its lines to journals and back.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QAction>
#include <QFile>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPdfWriter>
#include <set>

#include "app/window_fixture.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/inventory/inventory_bill.h"
#include "stockbook/journal/amount_texts.h"
#include "stockbook/window/bill_dialog.h"
#include "stockbook/window/bill_paper.h"
#include "stockbook/window/bill_view.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

class Bills : public WindowTest {
 protected:
  std::string Cell(int row, const char* key) { return grid().TextMatrix(row, grid().ColIndex(key)); }
  // One number from the sample as it is stored.
  double Stored(const std::string& sql) {
    sqlite3* database = nullptr;
    EXPECT_EQ(sqlite3_open(PathOf("sample.db").c_str(), &database), SQLITE_OK);
    double number = 0;
    sqlite3_exec(
        database, sql.c_str(),
        [](void* place, int, char** values, char**) {
          *static_cast<double*>(place) = std::stod(values[0]);
          return 0;
        },
        &number, nullptr);
    sqlite3_close(database);
    return number;
  }
  int BillOf(const std::string& condition, const char* table = "入库记录") {
    return static_cast<int>(
        Stored(std::string("SELECT BillID FROM ") + table + " GROUP BY BillID HAVING " + condition + " LIMIT 1"));
  }
  InventoryBill Read(BillSide side, int bill_id) {
    const auto connection = OpenInventory(PathOf("sample.db"));
    return ReadInventoryBill(*connection, side, bill_id).value();
  }
  // The first line of the journal that belongs to the bill.
  int LineOf(int bill_id) {
    for (int row = grid().FixedRows(); row < grid().Rows(); ++row) {
      if (stockbook().BillID(row) == bill_id) return row;
    }
    return -1;
  }
  BillDialog* Shown() {
    QApplication::processEvents();
    const QList<BillDialog*> dialogs = window_->findChildren<BillDialog*>();
    for (BillDialog* dialog : dialogs) {
      if (dialog->isVisible()) return dialog;
    }
    return nullptr;
  }
  static void Press(QWidget* widget, int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(widget, &press);
  }
  void PressShortcut(const QKeySequence& shortcut) {
    for (QAction* item : window_->findChildren<QAction*>()) {
      if (item->shortcut() == shortcut) return item->trigger();
    }
    ADD_FAILURE() << "there is no such item";
  }
  // Opens the bill, which has several products, from the journal of its first one.
  BillDialog* OpenBill(int bill_id) {
    Open();
    JournalOptions options;
    options.key_id = Read(BillSide::kReceipt, bill_id).lines.front().product_id;
    EXPECT_TRUE(window_->LoadJournal(options).loaded);
    grid().Select(LineOf(bill_id), grid().ColIndex(keys::kBillNo));
    PressShortcut(QKeySequence(Qt::CTRL | Qt::Key_B));
    return Shown();
  }
  int BillOfSeveralProducts() {
    return BillOf("Count(DISTINCT pdID) > 2 AND BillID NOT IN (SELECT BillID FROM 出库记录)");
  }
};

TEST_F(Bills, AreWholeWhateverTheJournalShowsOfThem) {
  const int bill_id = BillOfSeveralProducts();
  ASSERT_GT(bill_id, 0);
  BillDialog* dialog = OpenBill(bill_id);
  ASSERT_NE(dialog, nullptr);
  const std::string id = std::to_string(bill_id);
  const auto lines = static_cast<size_t>(Stored("SELECT Count(*) FROM 入库记录 WHERE BillID=" + id));
  ASSERT_GT(lines, 2U);
  EXPECT_EQ(dialog->bill().lines.size(), lines);
  EXPECT_EQ(dialog->lines().rowCount(), static_cast<int>(lines) + 1) << "and the total";
  EXPECT_FALSE(dialog->bill().number.isEmpty());
  EXPECT_FALSE(dialog->bill().facts.empty());
  base::Money sum;
  for (const BillView::Line& line : dialog->bill().lines) sum = sum + line.record.amount;
  EXPECT_NEAR(sum.ToDouble(), Stored("SELECT Sum(除税金额) FROM 入库记录 WHERE BillID=" + id), 0.00005);
  for (const BillView::Line& line : dialog->bill().lines) EXPECT_EQ(line.texts.size(), dialog->bill().columns.size());
  EXPECT_EQ(dialog->bill().totals.at(0).size(), dialog->bill().columns.size());
}

TEST_F(Bills, BeginAtTheLineFromWhichTheyWereOpened) {
  const int bill_id = BillOfSeveralProducts();
  BillDialog* dialog = OpenBill(bill_id);
  ASSERT_NE(dialog, nullptr);
  const int row = grid().Row();
  ASSERT_GE(dialog->Line(), 0);
  EXPECT_EQ(std::to_string(dialog->bill().lines[static_cast<size_t>(dialog->Line())].record.record_id),
            Cell(row, keys::kRecID));
}

TEST_F(Bills, LeadToTheJournalOfEachProductAndBack) {
  const int bill_id = BillOfSeveralProducts();
  BillDialog* dialog = OpenBill(bill_id);
  ASSERT_NE(dialog, nullptr);
  const std::string title = Title();
  const int row = grid().Row();
  const int last = static_cast<int>(dialog->bill().lines.size()) - 1;
  const BillLine wanted = dialog->bill().lines.back().record;
  ASSERT_NE(wanted.product_id, stockbook().control().KeyID());
  dialog->GoToLine(last);
  Press(&dialog->lines(), Qt::Key_Return);
  EXPECT_EQ(Shown(), nullptr) << "the journal is free to be read";
  EXPECT_EQ(stockbook().control().KeyID(), wanted.product_id);
  EXPECT_EQ(Cell(grid().Row(), keys::kRecID), std::to_string(wanted.record_id)) << "at the line of the bill";
  ASSERT_TRUE(window_->reading().strip().trail().isVisible());
  window_->reading().strip().trail().action().click();
  dialog = Shown();
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->Line(), last);
  EXPECT_EQ(Title(), title);
  EXPECT_EQ(grid().Row(), row) << "and the journal is where it was left";
  EXPECT_FALSE(window_->reading().strip().trail().isVisible());
}

TEST_F(Bills, AreReturnedToByKeys) {
  BillDialog* dialog = OpenBill(BillOfSeveralProducts());
  ASSERT_NE(dialog, nullptr);
  dialog->GoToLine(1);
  Press(&dialog->lines(), Qt::Key_Enter);
  QApplication::processEvents();
  PressShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_B));
  ASSERT_NE(Shown(), nullptr);
  EXPECT_EQ(Shown()->Line(), 1);
}

TEST_F(Bills, OfTransfersHaveBothSidesAndATotalOfEach) {
  const int bill_id = static_cast<int>(
      Stored("SELECT d.BillID FROM 入库目录 d JOIN 出库目录 e ON d.BillID=e.BillID WHERE d.单据类型='调拨单' LIMIT 1"));
  ASSERT_GT(bill_id, 0);
  for (const BillSide side : {BillSide::kReceipt, BillSide::kIssue}) {
    const BillView view = ViewOfBill(Read(side, bill_id), journal::AmountTexts::kShown);
    std::set<BillSide> sides;
    for (const BillView::Line& line : view.lines) sides.insert(line.record.side);
    EXPECT_EQ(sides.size(), 2U);
    ASSERT_EQ(view.totals.size(), 2U);
    EXPECT_EQ(view.totals[0][0].toStdString(), "出库合计");
    EXPECT_EQ(view.totals[1][0].toStdString(), "入库合计");
  }
}

TEST_F(Bills, HideTheAmountsThatTheJournalHides) {
  const InventoryBill bill = Read(BillSide::kReceipt, BillOfSeveralProducts());
  const BillView shown = ViewOfBill(bill, journal::AmountTexts::kShown);
  const BillView hidden = ViewOfBill(bill, journal::AmountTexts::kMasked);
  const auto texts_under = [](const BillView& view, const char* caption) {
    std::vector<std::string> texts;
    for (size_t column = 0; column < view.columns.size(); ++column) {
      if (view.columns[column].caption != QString::fromUtf8(caption)) continue;
      for (const BillView::Line& line : view.lines) texts.push_back(line.texts[column].toStdString());
      texts.push_back(view.totals[0][column].toStdString());
    }
    return texts;
  };
  EXPECT_NE(texts_under(shown, "金额").at(0), "-");
  for (const std::string& text : texts_under(hidden, "金额")) EXPECT_EQ(text, "-");
  for (const char* caption : {"税额", "含税单价", "含税金额"}) EXPECT_TRUE(texts_under(hidden, caption).empty());
  EXPECT_FALSE(texts_under(hidden, "数量").empty());
}

TEST_F(Bills, AddUpQuantitiesOfOneUnitOnly) {
  InventoryBill bill;
  bill.lines.resize(2);
  for (BillLine& line : bill.lines) line.measure = "个";
  bill.lines[0].quantity = 1.5;
  bill.lines[1].quantity = 2;
  const auto total = [&] {
    const BillView view = ViewOfBill(bill, journal::AmountTexts::kShown);
    for (size_t column = 0; column < view.columns.size(); ++column) {
      if (view.columns[column].caption == QStringLiteral("数量")) return view.totals[0][column].toStdString();
    }
    return std::string("there is no such column");
  };
  EXPECT_EQ(total(), "3.50");
  bill.lines[1].measure = "米";
  EXPECT_EQ(total(), "");
}

TEST_F(Bills, ThatAreGoneSaySo) {
  BillDialog* dialog = OpenBill(BillOfSeveralProducts());
  ASSERT_NE(dialog, nullptr);
  dialog->close();
  Stored("DELETE FROM 入库目录");
  PressShortcut(QKeySequence(Qt::CTRL | Qt::Key_B));
  EXPECT_EQ(Shown(), nullptr);
  EXPECT_EQ(window_->message().Message().toStdString(), "库存中已经没有这张单据，请重新载入台账（F5）。");
}

TEST_F(Bills, ArePrintedWithTheirLinesAndTotalsAndNothingTakenForMarkup) {
  InventoryBill bill = Read(BillSide::kReceipt, BillOfSeveralProducts());
  bill.lines[0].product_name = "<b>螺栓</b> & 垫圈";
  const BillLine line = bill.lines[0];
  while (bill.lines.size() < 200) bill.lines.push_back(line);
  const BillView view = ViewOfBill(bill, journal::AmountTexts::kShown);
  const QString html = BillHtml(view);
  EXPECT_TRUE(html.contains(QStringLiteral("&lt;b&gt;螺栓&lt;/b&gt; &amp; 垫圈")));
  EXPECT_TRUE(html.contains(view.number.toHtmlEscaped()));
  EXPECT_TRUE(html.contains(QStringLiteral("合计")));
  {
    QPdfWriter pdf(QString::fromStdString(PathOf("bill.pdf")));
    PrintBill(view, pdf);
  }
  QFile file(QString::fromStdString(PathOf("bill.pdf")));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray bytes = file.readAll();
  EXPECT_TRUE(bytes.startsWith("%PDF"));
  EXPECT_GT(bytes.count("/Type /Page\n"), 1) << "as many pages as it needs";
}

}  // namespace
}  // namespace stockbook::app
