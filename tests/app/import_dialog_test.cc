// SPDX-License-Identifier: MIT
#include "stockbook/window/import_dialog.h"

#include <gtest/gtest.h>

#include <QStandardPaths>
#include <QTest>
#include <string>

#include "app/inventory_fixture.h"
#include "app/zip_file.h"
#include "qt/sheet/text.h"
#include "stockbook/command/gui_session.h"
#include "stockbook/import/workbook_file.h"
#include "stockbook/window/import_actions.h"

namespace stockbook::app {
namespace {

// 日期,商品编号,数量,单价,客户 in GBK.
const std::string kGbkHeader =
    "\xC8\xD5\xC6\xDA,\xC9\xCC\xC6\xB7\xB1\xE0\xBA\xC5,\xCA\xFD\xC1\xBF,\xB5\xA5\xBC\xDB,\xBF\xCD\xBB\xA7\n";
constexpr int kNumberColumn = 0;
constexpr int kProblemColumn = 1;

class ImportWindow : public InventoryTest {
 protected:
  ImportWindow() : session_(GuiNeed::kPicture) {}

  std::string Output() const { return PathOf("new.db"); }
  static QComboBox& Chooser(ImportDialog& dialog, const char* name) {
    auto* found = dialog.findChild<QComboBox*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return *found;
  }
  static std::string TextOf(ImportDialog& dialog, const char* name) {
    return qt::FromQString(dialog.findChild<QLabel*>(QString::fromLatin1(name))->text());
  }
  static QTableWidget& Lines(ImportDialog& dialog) { return *dialog.findChild<QTableWidget*>(QStringLiteral("lines")); }
  static std::string Cell(ImportDialog& dialog, int row, int column) {
    const QTableWidgetItem* item = Lines(dialog).item(row, column);
    return item == nullptr ? std::string("none") : qt::FromQString(item->text());
  }
  // As a user chooses it: by the keys of the chooser.
  static void Choose(QComboBox& chooser, int index) {
    chooser.window()->show();
    QTest::keyClick(&chooser, Qt::Key_Home);
    for (int step = 0; step < index; ++step) QTest::keyClick(&chooser, Qt::Key_Down);
    EXPECT_EQ(chooser.currentIndex(), index);
  }

  GuiSession session_;
};

TEST_F(ImportWindow, ShowsATableInGbkWithItsColumnsGuessed) {
  const std::string table = Write("t.csv", kGbkHeader + "2025-01-02,P1,3,12.5,K1\n2025-01-03,P2,4,2,\n");
  ImportDialog dialog(table);
  EXPECT_EQ(TextOf(dialog, "summary"), "编码 GBK；以逗号分隔；共 2 行，可导入 2 行");
  EXPECT_EQ(TextOf(dialog, "problem"), "");
  EXPECT_EQ(qt::FromQString(Chooser(dialog, "field0").currentText()), "商品编号");
  EXPECT_EQ(qt::FromQString(Chooser(dialog, "field3").currentText()), "日期");
  EXPECT_EQ(qt::FromQString(Chooser(dialog, "field6").currentText()), "客户");
  EXPECT_EQ(Chooser(dialog, "field7").currentIndex(), 0) << "there is no project";
  EXPECT_EQ(Cell(dialog, 0, kNumberColumn), "2");
  EXPECT_EQ(Cell(dialog, 1, 3), "P2");
  EXPECT_TRUE(Lines(dialog).isColumnHidden(kProblemColumn));
}

TEST_F(ImportWindow, ShowsWhichLinesWouldBeSkippedAndWhy) {
  const std::string table =
      Write("t.csv", "日期,商品编号,数量\n2025-01-02,P1,3\n2025-02-30,P1,3\n2025-01-02,,3\n2025-01-02,P1,many\n");
  ImportDialog dialog(table);
  EXPECT_EQ(TextOf(dialog, "summary"),
            "编码 UTF-8；以逗号分隔；共 4 行，可导入 1 行，将跳过 3 行（没有商品 1 行、日期有误 1 行、数量有误 1 行）");
  EXPECT_FALSE(Lines(dialog).isColumnHidden(kProblemColumn));
  EXPECT_EQ(Cell(dialog, 0, kProblemColumn), "");
  EXPECT_EQ(Cell(dialog, 1, kProblemColumn), "日期“2025-02-30”不存在：2025年2月只有 28 天");
  auto* only = dialog.findChild<QCheckBox*>(QStringLiteral("only_skipped"));
  dialog.show();
  QTest::keyClick(only, Qt::Key_Space);
  EXPECT_EQ(Lines(dialog).rowCount(), 3);
  EXPECT_EQ(Cell(dialog, 0, kNumberColumn), "3");
  EXPECT_EQ(Cell(dialog, 2, kProblemColumn), "数量“many”不是 15 位以内的数字");
}

TEST_F(ImportWindow, GivesProblemsTheirWidthWhereThereIsNothingElse) {
  const std::string table = Write("t.csv", "日期,商品编号,数量\n2025-01-02,P1,3\n2025-02-30,P1,3\n");
  ImportDialog dialog(table);
  dialog.show();
  const auto needed = [&] { return Lines(dialog).fontMetrics().horizontalAdvance(Lines(dialog).item(0, 1)->text()); };
  const int brief = Lines(dialog).columnWidth(kProblemColumn);
  EXPECT_LT(brief, Lines(dialog).viewport()->width() / 5);
  QTest::keyClick(dialog.findChild<QCheckBox*>(QStringLiteral("only_skipped")), Qt::Key_Space);
  EXPECT_GT(needed(), brief);
  EXPECT_GE(Lines(dialog).columnWidth(kProblemColumn), needed());
}

TEST_F(ImportWindow, GuessesTheColumnsAgainWhenTheDelimiterChanges) {
  const std::string table = Write("t.csv", "日期;商品编号;数量\n2025-01-02;P1;3,5\n");
  ImportDialog dialog(table);
  EXPECT_EQ(TextOf(dialog, "summary"), "编码 UTF-8；以分号分隔；共 1 行，可导入 1 行");
  Choose(Chooser(dialog, "delimiter"), 1);  // the comma
  EXPECT_EQ(TextOf(dialog, "problem"), "请选定日期、数量所在的列；整行都在一列中时，请改选分隔符。");
  EXPECT_FALSE(dialog.ImportInto(Output())) << "nothing can be imported like that";
  Choose(Chooser(dialog, "delimiter"), 2);  // the semicolon
  EXPECT_EQ(TextOf(dialog, "problem"), "");
  EXPECT_TRUE(dialog.ImportInto(Output()));
  EXPECT_EQ(OpenedInventory(Output()).One("SELECT 数量 FROM 出库记录"), "3.5");
}

TEST_F(ImportWindow, TakesAnotherColumnThatTheUserChooses) {
  const std::string table = Write("t.csv", "日期,商品编号,货名,数量,实发\n2025-01-02,P1,Bolt,3,2\n");
  ImportDialog dialog(table);
  Choose(Chooser(dialog, "field4"), 5);  // 实发
  Choose(Chooser(dialog, "field1"), 3);  // 货名
  Choose(Chooser(dialog, "direction"), 1);
  ASSERT_TRUE(dialog.ImportInto(Output()));
  ASSERT_TRUE(dialog.imported().has_value());
  EXPECT_EQ(dialog.imported()->file, Output());
  EXPECT_EQ(qt::FromQString(dialog.imported()->message),
            "已导入 1 行：出库 0 行，入库 1 行；单据 1 张，商品 1 种，期间 1 个。");
  const OpenedInventory inventory(Output());
  EXPECT_EQ(inventory.One("SELECT 数量 FROM 入库记录"), "2");
  EXPECT_EQ(inventory.One("SELECT 商品名称 FROM 商品设置"), "Bolt");
  EXPECT_EQ(inventory.One("SELECT 企业名称 FROM 厂商资料"), "(无供应商)");
}

TEST_F(ImportWindow, AsksWhichMarkBeginsTheDecimalsWhereItMayBeEither) {
  const std::string table = Write("t.csv", "日期;商品编号;数量\n2025-01-02;P1;1,234\n");
  ImportDialog dialog(table);
  EXPECT_EQ(Cell(dialog, 0, kProblemColumn), "数量“1,234”中的逗号可能是千分位也可能是小数点，请选定小数点");
  Choose(Chooser(dialog, "decimal"), 1);  // the point
  ASSERT_TRUE(dialog.ImportInto(Output()));
  EXPECT_EQ(OpenedInventory(Output()).One("SELECT 数量 FROM 出库记录"), "1234");
}

TEST_F(ImportWindow, OffersTheSheetsOfAWorkbook) {
  if (!CanReadWorkbooks()) GTEST_SKIP() << "built without libzip or Expat";
  const auto text = [](const std::string& words) { return "<c t=\"inlineStr\"><is><t>" + words + "</t></is></c>"; };
  const std::string sheet = "<row>" + text("日期") + text("商品编号") + text("数量") + "</row><row>" +
                            text("2025年1月2日") + text("P1") + "<c><v>2.5</v></c></row>";
  ImportDialog dialog(Write("t.xlsx", MakeWorkbook({sheet, {}, {}, {}, {}})));
  EXPECT_EQ(qt::FromQString(Chooser(dialog, "sheet").currentText()), "明细");
  EXPECT_EQ(TextOf(dialog, "summary"), "共 1 行，可导入 1 行");
  EXPECT_FALSE(Chooser(dialog, "encoding").isEnabled());
  EXPECT_FALSE(Chooser(dialog, "delimiter").isEnabled());
  Choose(Chooser(dialog, "sheet"), 0);
  EXPECT_EQ(TextOf(dialog, "problem"), "表是空的，第一行应为各列的标题。");
  Choose(Chooser(dialog, "sheet"), 1);
  EXPECT_EQ(TextOf(dialog, "problem"), "");
  ASSERT_TRUE(dialog.ImportInto(Output()));
  EXPECT_EQ(OpenedInventory(Output()).One("SELECT 数量 FROM 出库记录"), "2.5");
}

TEST_F(ImportWindow, SaysWhatCannotBeReadAndStaysOpen) {
  const std::string table = Write("t.xls", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 and so on");
  ImportDialog dialog(table);
  EXPECT_EQ(TextOf(dialog, "problem"),
            "无法导入“" + table + "”：这是旧格式（.xls）或设有密码的工作簿，请另存为不设密码的 .xlsx 或 .csv 再导入。");
  EXPECT_EQ(Lines(dialog).rowCount(), 0);
  const std::string empty = Write("e.csv", "");
  ImportDialog second(empty);
  EXPECT_EQ(TextOf(second, "problem"), "表是空的，第一行应为各列的标题。");
}

TEST_F(ImportWindow, RefusesToReplaceTheTableItself) {
  const std::string text = "日期,商品编号,数量\n2025-01-02,P1,3\n";
  const std::string table = Write("t.csv", text);
  ImportDialog dialog(table);
  EXPECT_FALSE(dialog.ImportInto(table));
  EXPECT_NE(TextOf(dialog, "problem").find("请换一个文件名"), std::string::npos);
  EXPECT_EQ(ReadAll(table), text);
}

TEST_F(ImportWindow, LeavesTheOldInventoryWhereQuotesHaveCostLines) {
  Write("new.db", "old");
  const std::string table = Write("t.csv", "日期,商品编号,数量\n2025-01-02,P1,3\n2025-01-02,\"P1,3\n");
  ImportDialog dialog(table);
  EXPECT_FALSE(dialog.ImportInto(Output()));
  EXPECT_EQ(TextOf(dialog, "problem"),
            "有引号没有配对，1 行无法读取，第一处在第 3 行，没有写入任何内容：请改正后再导入。");
  EXPECT_EQ(ReadAll(Output()), "old");
}

TEST_F(ImportWindow, SaysThatItLooksAtTheBeginningOfALongTableOnly) {
  std::string text = "日期,商品编号,数量\n";
  for (int64_t line = 0; line < kPreviewLinesRead + 10; ++line) text += "2025-01-02,P1,3\n";
  ImportDialog dialog(Write("t.csv", text));
  EXPECT_FALSE(dialog.preview().tally.is_whole);
  EXPECT_EQ(dialog.preview().tally.imported, kPreviewLinesRead);
  EXPECT_NE(TextOf(dialog, "summary").find("；前 "), std::string::npos) << TextOf(dialog, "summary");
  ASSERT_TRUE(dialog.ImportInto(Output()));
  EXPECT_EQ(OpenedInventory(Output()).One("SELECT count(*) FROM 出库记录"), "50010");
}

TEST_F(ImportWindow, BeginsWhereTablesAreAndNotInTheFolderOfTheSample) {
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  const QString own = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
  EXPECT_EQ(ImportActions::FolderOfTables(own + QStringLiteral("/sample.db")), documents);
  EXPECT_EQ(ImportActions::FolderOfTables({}), documents);
  EXPECT_EQ(ImportActions::FolderOfTables(QStringLiteral("/books/2025/stock.db")), QStringLiteral("/books/2025"));
}

// Every chooser has a label that the keyboard reaches it by.
TEST_F(ImportWindow, LabelsEveryChooser) {
  ImportDialog dialog(Write("t.csv", "日期,商品编号,数量\n2025-01-02,P1,3\n"));
  QList<QWidget*> labelled;
  for (const QLabel* label : dialog.findChildren<QLabel*>()) {
    if (label->buddy() != nullptr && label->text().contains(QLatin1Char('&'))) labelled.append(label->buddy());
  }
  for (QComboBox* chooser : dialog.findChildren<QComboBox*>())
    EXPECT_TRUE(labelled.contains(chooser)) << qt::FromQString(chooser->objectName());
}

}  // namespace
}  // namespace stockbook::app
