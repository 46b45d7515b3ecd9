// SPDX-License-Identifier: MIT
// Printing and exporting from the window.
#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <string>
#include <vector>

#include "app/window_fixture.h"
#include "stockbook/paper/page_setup_dialog.h"
#include "stockbook/paper/paper_memory.h"
#include "stockbook/paper/paper_progress.h"
#include "stockbook/paper/print_preview.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {
namespace {

class PaperOfTheWindow : public WindowTest {
 protected:
  void OpenFirst() {
    Open();
    ASSERT_TRUE(window_->LoadFirstJournal().loaded);
    told_ = std::make_unique<QSignalSpy>(&window_->paper(), &PaperActions::Told);
  }
  PaperActions& paper() { return window_->paper(); }
  std::string Told() const { return told_->isEmpty() ? "" : told_->last().at(0).toString().toStdString(); }

  template <typename Widget>
  Widget* Shown() {
    QApplication::processEvents();
    for (Widget* widget : window_->findChildren<Widget*>()) {
      if (widget->isVisible()) return widget;
    }
    return nullptr;
  }
  static void Press(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(widget, &press);
  }
  // The action of a window with the shortcut.
  static QAction* ActionOf(QWidget& window, const QKeySequence& shortcut) {
    for (QAction* action : window.findChildren<QAction*>()) {
      if (action->shortcut() == shortcut) return action;
    }
    return nullptr;
  }
  static const JournalFileFormat& Format(const QString& suffix) {
    static const std::vector<JournalFileFormat> formats = JournalFileFormats();
    for (const JournalFileFormat& format : formats) {
      if (format.suffix == suffix) return format;
    }
    throw std::logic_error("there is no such format");
  }
  QString FileOf(const char* name) const { return QString::fromStdString(PathOf(name)); }
  bool ExportAs(const char* name, const QString& suffix) { return paper().ExportTo(FileOf(name), Format(suffix)); }
  static int PagesIn(const std::string& pdf, const std::string& mark) {
    int count = 0;
    for (size_t at = pdf.find(mark); at != std::string::npos; at = pdf.find(mark, at + 1)) ++count;
    return count;
  }

  std::unique_ptr<QSignalSpy> told_;
};

TEST_F(PaperOfTheWindow, IsShownBeforeItIsPrintedPageByPage) {
  OpenFirst();
  QAction* action = ActionOf(*window_, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P));
  ASSERT_NE(action, nullptr);
  action->trigger();
  auto* preview = Shown<PrintPreview>();
  ASSERT_NE(preview, nullptr);
  EXPECT_GT(preview->PageCount(), 2);
  EXPECT_EQ(preview->page(), 0);
  const QImage first = preview->view().picture().toImage();
  ActionOf(*preview, QKeySequence(Qt::Key_PageDown))->trigger();
  EXPECT_EQ(preview->page(), 1);
  EXPECT_NE(preview->view().picture().toImage(), first);
  ActionOf(*preview, QKeySequence(Qt::CTRL | Qt::Key_End))->trigger();
  EXPECT_EQ(preview->page(), preview->PageCount() - 1);
  ActionOf(*preview, QKeySequence(Qt::Key_PageDown))->trigger();
  EXPECT_EQ(preview->page(), preview->PageCount() - 1) << "there is none after the last one";
  ActionOf(*preview, QKeySequence(Qt::CTRL | Qt::Key_Home))->trigger();
  EXPECT_EQ(preview->view().picture().toImage(), first);
  preview->activateWindow();
  ActionOf(*preview, QKeySequence(Qt::CTRL | Qt::Key_G))->trigger();
  QWidget* number = preview->focusWidget();
  ASSERT_NE(number, nullptr);
  Press(number, Qt::Key_Up);
  EXPECT_EQ(preview->page(), 1) << "the field of the number has the keys";
  Press(preview, Qt::Key_Escape);
  EXPECT_EQ(Shown<PrintPreview>(), nullptr);
}

TEST_F(PaperOfTheWindow, HasItsKeysInTheFieldOfThePageToo) {
  OpenFirst();
  paper().Preview();
  auto* preview = Shown<PrintPreview>();
  ASSERT_NE(preview, nullptr);
  preview->activateWindow();
  ActionOf(*preview, QKeySequence(Qt::CTRL | Qt::Key_G))->trigger();
  auto* number = qobject_cast<QSpinBox*>(preview->focusWidget());
  ASSERT_NE(number, nullptr);
  QTest::keyClick(number, Qt::Key_2);
  QTest::keyClick(number, Qt::Key_Return);
  EXPECT_EQ(preview->page(), 1);
  QTest::keyClick(number, Qt::Key_PageDown);
  EXPECT_EQ(preview->page(), 2) << "not ten pages on";
  QTest::keyClick(number, Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(preview->page(), 0);
  QTest::keyClick(number, Qt::Key_U, Qt::ControlModifier);
  EXPECT_NE(preview->findChild<PageSetupDialog*>(), nullptr);
  EXPECT_EQ(number->text().toStdString(), "1") << "and its text is not deleted";
}

TEST_F(PaperOfTheWindow, IsShownWithTheBreaksOfThePdf) {
  OpenFirst();
  paper().Preview();
  auto* preview = Shown<PrintPreview>();
  ASSERT_NE(preview, nullptr);
  const int pages = preview->PageCount();
  preview->close();
  ASSERT_TRUE(ExportAs("pages.pdf", QStringLiteral("pdf")));
  EXPECT_EQ(PagesIn(ReadAll(PathOf("pages.pdf")), "/Type /Page /"), pages);
}

TEST_F(PaperOfTheWindow, IsShownLargerAndSmaller) {
  OpenFirst();
  paper().Preview();
  auto* preview = Shown<PrintPreview>();
  ASSERT_NE(preview, nullptr);
  const double fitted = preview->view().scale();
  ActionOf(*preview, QKeySequence(QKeySequence::ZoomIn))->trigger();
  EXPECT_GT(preview->view().scale(), fitted);
  ActionOf(*preview, QKeySequence(Qt::CTRL | Qt::Key_0))->trigger();
  EXPECT_DOUBLE_EQ(preview->view().scale(), fitted);
  ActionOf(*preview, QKeySequence(Qt::CTRL | Qt::Key_1))->trigger();
  EXPECT_GE(preview->view().scale(), fitted);
}

TEST_F(PaperOfTheWindow, FollowsThePageSetUpAndRemembersIt) {
  OpenFirst();
  QSettings settings(FileOf("settings.ini"), QSettings::IniFormat);
  paper().Remember(settings);
  paper().Preview();
  auto* preview = Shown<PrintPreview>();
  ASSERT_NE(preview, nullptr);
  const int pages = preview->PageCount();
  ActionOf(*preview, QKeySequence(Qt::CTRL | Qt::Key_U))->trigger();
  auto* dialog = preview->findChild<PageSetupDialog*>();
  ASSERT_NE(dialog, nullptr);
  auto* size = dialog->findChild<QComboBox*>();
  size->setCurrentIndex(size->findData(static_cast<int>(QPageSize::A3)));
  dialog->accept();
  EXPECT_LT(preview->PageCount(), pages) << "there is more on a larger page";
  EXPECT_EQ(paper().choice().page.pageSize().id(), QPageSize::A3);
  EXPECT_EQ(RememberedPaper(&settings).page.pageSize().id(), QPageSize::A3);
}

TEST_F(PaperOfTheWindow, AsksForAFileAndWritesWhatItsEndingSays) {
  OpenFirst();
  QAction* action = ActionOf(*window_, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
  ASSERT_NE(action, nullptr);
  action->trigger();
  auto* dialog = Shown<QFileDialog>();
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->nameFilters().size(), static_cast<qsizetype>(JournalFileFormats().size()));
  auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  ASSERT_NE(name, nullptr);
  EXPECT_TRUE(name->text().startsWith(QStringLiteral("商品台账 六角螺栓"))) << name->text().toStdString();
  name->setText(FileOf("journal.pdf"));
  QMetaObject::invokeMethod(dialog, "accept");
  EXPECT_TRUE(ReadAll(PathOf("journal.pdf")).starts_with("%PDF"));
  EXPECT_TRUE(Told().starts_with("已导出：")) << Told();
}

TEST_F(PaperOfTheWindow, BecomesATableThatASpreadsheetTakesForUnicode) {
  OpenFirst();
  ASSERT_TRUE(ExportAs("journal.csv", QStringLiteral("csv")));
  const std::string table = ReadAll(PathOf("journal.csv"));
  EXPECT_TRUE(table.starts_with("\xEF\xBB\xBF"));
  EXPECT_NE(table.find("单据"), std::string::npos);
  EXPECT_NE(table.find("2025年01月合计"), std::string::npos);
}

TEST_F(PaperOfTheWindow, BecomesAPictureOfWhatIsSeen) {
  OpenFirst();
  ASSERT_TRUE(ExportAs("journal.png", QStringLiteral("png")));
  const QImage picture(FileOf("journal.png"));
  const QImage view = stockbook().grab().toImage().convertToFormat(picture.format());
  ASSERT_EQ(picture.width(), view.width());
  const int heading = picture.height() - view.height();
  ASSERT_GT(heading, 0);
  const QImage below = picture.copy(0, heading, view.width(), view.height());
  int unlike = 0;
  int ink = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (y < heading) ink += picture.pixel(x, y) != picture.pixel(0, 0) ? 1 : 0;
      if (y < view.height()) unlike += below.pixel(x, y) != view.pixel(x, y) ? 1 : 0;
    }
  }
  EXPECT_EQ(unlike, 0);
  EXPECT_GT(ink, 200) << "the words that say what it is of";
}

TEST_F(PaperOfTheWindow, NeverReplacesADatabase) {
  OpenFirst();
  const std::string before = ReadAll(PathOf("sample.db"));
  EXPECT_FALSE(ExportAs("sample.db", QStringLiteral("csv")));
  auto* box = Shown<QMessageBox>();
  ASSERT_NE(box, nullptr);
  EXPECT_TRUE(box->text().contains(QStringLiteral("不能覆盖"))) << box->text().toStdString();
  EXPECT_EQ(ReadAll(PathOf("sample.db")), before);
}

TEST_F(PaperOfTheWindow, SaysWhyAFileCannotBeWritten) {
  OpenFirst();
  EXPECT_FALSE(ExportAs("no such folder/journal.csv", QStringLiteral("csv")));
  auto* box = Shown<QMessageBox>();
  ASSERT_NE(box, nullptr);
  EXPECT_TRUE(box->text().contains(QStringLiteral("没有这个文件夹"))) << box->text().toStdString();
}

TEST_F(PaperOfTheWindow, KeepsTheOldFileWhenTheWorkIsCancelled) {
  OpenFirst();
  Write("journal.pdf", "as it was");
  paper().SetPatience(0);
  QTimer::singleShot(0, window_.get(), [&] {
    auto* dialog = window_->findChild<QProgressDialog*>();
    ASSERT_NE(dialog, nullptr);
    dialog->cancel();
  });
  EXPECT_FALSE(ExportAs("journal.pdf", QStringLiteral("pdf")));
  EXPECT_EQ(ReadAll(PathOf("journal.pdf")), "as it was");
  EXPECT_EQ(Told(), "导出已取消，没有写文件。");
  EXPECT_EQ(Shown<QMessageBox>(), nullptr) << "nothing went wrong";
}

TEST_F(PaperOfTheWindow, IsExportedByAPrinterThatMakesAPdf) {
  OpenFirst();
  QPrinter printer(QPrinter::ScreenResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(FileOf("printed.pdf"));
  printer.setPageLayout(paper().choice().page);
  EXPECT_TRUE(paper().PrintTo(printer));
  const std::string pdf = ReadAll(PathOf("printed.pdf"));
  EXPECT_GT(PagesIn(pdf, "/Type /Page /"), 2);
  EXPECT_NE(pdf.find("/Outlines"), std::string::npos) << "as it is exported";
  EXPECT_TRUE(Told().starts_with("已导出")) << Told();
}

TEST_F(PaperOfTheWindow, GoesToAPrinterAsFarAsPagesAreWanted) {
  OpenFirst();
  QPrinter printer(QPrinter::ScreenResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(FileOf("printed.pdf"));
  printer.setPageLayout(paper().choice().page);
  printer.setPrintRange(QPrinter::PageRange);
  printer.setFromTo(2, 3);
  EXPECT_TRUE(paper().PrintTo(printer));
  EXPECT_EQ(PagesIn(ReadAll(PathOf("printed.pdf")), "/Type /Page\n"), 2);
  EXPECT_EQ(Told(), "已送去打印，共 2 页。");
}

TEST_F(PaperOfTheWindow, IsNoLongerPrintedWhenItIsCancelled) {
  OpenFirst();
  QPrinter printer(QPrinter::ScreenResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(FileOf("printed.pdf"));
  printer.setPrintRange(QPrinter::PageRange);
  printer.setFromTo(1, 1000);
  paper().SetPatience(0);
  QTimer::singleShot(0, window_.get(), [&] {
    auto* dialog = window_->findChild<QProgressDialog*>();
    ASSERT_NE(dialog, nullptr);
    dialog->cancel();
  });
  EXPECT_FALSE(paper().PrintTo(printer));
  EXPECT_EQ(Told(), "打印已取消。");
}

TEST_F(PaperOfTheWindow, IsCalledWhatAFileCanBeCalled) {
  OpenFirst();
  ASSERT_NE(stockbook().control().Caption().find('/'), std::string::npos) << "GB/T 5783";
  paper().Print();
  auto* dialog = Shown<QPrintDialog>();
  ASSERT_NE(dialog, nullptr);
  const std::string name = dialog->printer()->docName().toStdString();
  EXPECT_EQ(name.find_first_of("/\\:"), std::string::npos) << name;
  EXPECT_FALSE(name.empty());
  dialog->close();
}

TEST_F(PaperOfTheWindow, IsNotWastedWithoutAJournal) {
  Open();
  told_ = std::make_unique<QSignalSpy>(&window_->paper(), &PaperActions::Told);
  stockbook().sheet().SetRows(1);
  paper().Preview();
  EXPECT_EQ(Shown<PrintPreview>(), nullptr);
  EXPECT_TRUE(Told().starts_with("还没有载入台账")) << Told();
  EXPECT_FALSE(ExportAs("journal.pdf", QStringLiteral("pdf")));
  EXPECT_EQ(ReadAll(PathOf("journal.pdf")), "");
}

class PaperChoices : public WindowTest {};

TEST_F(PaperChoices, AreWhatTheDialogShows) {
  PaperChoice choice;
  choice.page = QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Portrait, {5, 6, 7, 8.5}, QPageLayout::Millimeter);
  choice.pages_wide = 3;
  choice.carrying = Carrying::kNotTold;
  PageSetupDialog dialog(choice);
  const PaperChoice same = dialog.Choice();
  EXPECT_EQ(same.page.pageSize().id(), QPageSize::A5);
  EXPECT_EQ(same.page.orientation(), QPageLayout::Portrait);
  EXPECT_EQ(same.page.margins(), choice.page.margins());
  EXPECT_EQ(same.pages_wide, 3);
  EXPECT_EQ(same.carrying, Carrying::kNotTold);
  for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
    if (button->text().startsWith(QStringLiteral("恢复默认"))) button->click();
  }
  EXPECT_EQ(dialog.Choice().page.pageSize().id(), QPageSize::A4);
  EXPECT_EQ(dialog.Choice().pages_wide, 1);
}

TEST_F(PaperChoices, AreRememberedAndMadeSenseOf) {
  QSettings settings(QString::fromStdString(PathOf("settings.ini")), QSettings::IniFormat);
  PaperChoice choice;
  choice.page = QPageLayout(QPageSize(QPageSize::B5), QPageLayout::Portrait, {5, 6, 7, 8.5}, QPageLayout::Millimeter);
  choice.pages_wide = 2;
  choice.carrying = Carrying::kNotTold;
  RememberPaper(&settings, choice);
  const PaperChoice same = RememberedPaper(&settings);
  EXPECT_EQ(same.page.pageSize().id(), QPageSize::B5);
  EXPECT_EQ(same.page.orientation(), QPageLayout::Portrait);
  EXPECT_EQ(same.page.margins(), choice.page.margins());
  EXPECT_EQ(same.pages_wide, 2);
  EXPECT_EQ(same.carrying, Carrying::kNotTold);
  settings.setValue(QStringLiteral("paper/size"), QStringLiteral("Papyrus"));
  settings.setValue(QStringLiteral("paper/pagesWide"), 4000);
  settings.setValue(QStringLiteral("paper/margin0"), -3);
  EXPECT_EQ(RememberedPaper(&settings).page.pageSize().id(), QPageSize::A4);
  EXPECT_EQ(RememberedPaper(&settings).pages_wide, PaperChoice::kMostPagesWide);
  EXPECT_EQ(RememberedPaper(&settings).page.margins().left(), PaperChoice::kMarginMm);
  EXPECT_EQ(RememberedPaper(nullptr).pages_wide, 1);
}

}  // namespace
}  // namespace stockbook::app
