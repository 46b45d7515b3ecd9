// SPDX-License-Identifier: MIT
#include "stockbook/window/main_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCompleter>
#include <QHelpEvent>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QResizeEvent>
#include <QTimer>
#include <QToolTip>
#include <algorithm>
#include <memory>
#include <vector>

#include "app/window_fixture.h"
#include "stockbook/inventory/inventory_catalog.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/grid_appearance.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/window/message_line.h"
#include "stockbook/window/subject_chooser.h"
#include "stockbook/window/window_colours.h"

namespace stockbook::app {
namespace {

using Window = WindowTest;

TEST_F(Window, ShowsTheFirstProductsJournalAndSaysSo) {
  Open();
  const LoadReport report = window_->LoadFirstJournal();
  EXPECT_TRUE(report.loaded);
  EXPECT_EQ(report.process.front(), 0);
  EXPECT_EQ(report.process.back(), -1);
  EXPECT_TRUE(std::is_sorted(report.process.begin(), report.process.end() - 1));
  EXPECT_GT(grid().Rows(), 20);
  EXPECT_EQ(window_->stockbook().control().KeyID(), 1);
  EXPECT_TRUE(Title().ends_with("— sample.db")) << Title();
  EXPECT_TRUE(Title().starts_with(window_->stockbook().control().Caption())) << Title();
}

TEST_F(Window, LeavesTheKeysToTheGridAfterALoad) {
  Open();
  window_->activateWindow();
  window_->LoadFirstJournal();
  EXPECT_EQ(window_->focusWidget(), window_->stockbook().focusProxy());
  EXPECT_FALSE(grid().ColHidden(grid().Col())) << "the current cell can be seen";
}

TEST_F(Window, LoadsWhatTheBarSays) {
  Open();
  JournalOptions options;
  options.journal_type = 2;
  options.dp_id = 3;
  options.allow_qty2 = true;
  EXPECT_TRUE(window_->LoadJournal(options).loaded);
  EXPECT_EQ(window_->bar().Options().journal_type, 2);
  EXPECT_EQ(window_->bar().Options().dp_id, 3);
  EXPECT_EQ(window_->bar().Options().key_id, 0);
  EXPECT_EQ(window_->stockbook().control().FmtName(), "CustomerJournal");
  EXPECT_FALSE(grid().ColHidden(grid().ColIndex("IssQty2")));
  emit window_->bar().LoadWanted();
  EXPECT_EQ(window_->stockbook().control().dpID(), 3);
}

TEST_F(Window, DoesNotCarryAClassOverToTheNextJournal) {
  Open();
  JournalOptions options;
  options.journal_type = 2;
  options.dp_code = "01";
  window_->LoadJournal(options);
  EXPECT_EQ(window_->stockbook().control().dpCode(), "01");
  options.dp_code.clear();
  window_->LoadJournal(options);
  EXPECT_EQ(window_->stockbook().control().dpCode(), "");
}

TEST_F(Window, StaysAsItIsWhenAFileIsNoInventory) {
  Open();
  window_->LoadFirstJournal();
  const std::string title = Title();
  const int rows = grid().Rows();
  EXPECT_THROW(window_->OpenDatabase(Write("no.db", "this is no database, only some text")), platform::Error);
  EXPECT_THROW(window_->OpenDatabase(PathOf("missing.db")), platform::Error);
  EXPECT_EQ(Title(), title);
  EXPECT_EQ(grid().Rows(), rows);
}

TEST_F(Window, ReloadsOnceTheControlHasFinishedAsking) {
  Open();
  window_->LoadFirstJournal();
  grid().SetTextMatrix(1, 3, "changed");
  emit window_->stockbook().CommandExecute("Refresh", qt::BooleanReference());
  EXPECT_EQ(grid().TextMatrix(1, 3), "changed");
  QApplication::processEvents();
  EXPECT_NE(grid().TextMatrix(1, 3), "changed");
}

TEST_F(Window, GoesBackToTheSamePlaceWhenTheSameJournalIsLoadedAgain) {
  Open();
  window_->LoadFirstJournal();
  const int closed = grid().NextSubtotal(grid().FixedRows());
  grid().SetIsCollapsed(closed, true);
  const int amount = grid().ColIndex("StoAcc");
  ASSERT_GT(amount, 0);
  const int last = grid().Rows() - 1;
  grid().Select(last, amount);
  grid().SetTopRow(last);
  sheet::GridSheet& sheet = window_->stockbook().sheet();
  const sheet::ScrollPosition most = sheet.view().geometry().scroll();
  sheet.view().ScrollTo({most.x, most.y - 7});
  const sheet::ScrollPosition scroll = sheet.view().geometry().scroll();
  ASSERT_EQ(scroll.y, most.y - 7);
  emit window_->bar().LoadWanted();
  EXPECT_EQ(grid().Row(), last);
  EXPECT_EQ(grid().Col(), amount);
  EXPECT_EQ(sheet.view().geometry().scroll().y, scroll.y);
  EXPECT_EQ(sheet.view().geometry().scroll().x, scroll.x);
  EXPECT_TRUE(grid().IsCollapsed(closed));

  JournalOptions other = window_->bar().Options();
  other.key_id += 1;
  window_->LoadJournal(other);
  EXPECT_EQ(grid().Row(), 1);
  EXPECT_EQ(grid().TopRow(), 1);
  EXPECT_FALSE(grid().IsCollapsed(grid().NextSubtotal(grid().FixedRows())));
}

TEST_F(Window, KeepsWidthsAndOrderOfTheColumnsFromJournalToJournalOfAType) {
  Open();
  window_->LoadFirstJournal();
  const int explain = grid().ColIndex("Explain");
  const int usual = grid().ColWidth(explain);
  const int price = grid().ColWidth(grid().ColIndex("Price"));
  grid().SetColWidth(explain, usual + 600);
  grid().SetColPosition(explain, 1);
  JournalOptions other = window_->bar().Options();
  JournalOptions supplier = other;
  supplier.journal_type = 1;
  supplier.key_id = 0;
  window_->LoadJournal(supplier);
  EXPECT_NE(grid().ColIndex("Explain"), 1) << "each type has columns of its own";
  other.key_id += 1;
  other.allow_inv = true;
  window_->LoadJournal(other);
  window_->LoadJournal(other);
  EXPECT_EQ(grid().ColIndex("Explain"), 1);
  EXPECT_EQ(grid().ColWidth(1), usual + 600);
  EXPECT_EQ(grid().ColWidth(grid().ColIndex("Price")), price);

  window_->stockbook().control().DefaultFormat();
  EXPECT_EQ(grid().ColWidth(grid().ColIndex("Explain")), usual);
  emit window_->bar().LoadWanted();
  EXPECT_EQ(grid().ColWidth(grid().ColIndex("Explain")), usual);
  EXPECT_EQ(grid().ColIndex("Explain"), explain);
}

TEST_F(Window, DoesNothingWithoutAnInventory) {
  window_->show();
  emit window_->bar().LoadWanted();
  EXPECT_EQ(grid().Rows(), 1);
}

TEST_F(Window, CanBeClosedWhileItLoads) {
  Open();
  QObject::connect(&window_->stockbook(), &qt::StockbookWidget::Process, window_.get(),
                   [this](int) { window_->close(); });
  EXPECT_TRUE(window_->LoadFirstJournal().loaded);
  QApplication::processEvents();
  EXPECT_FALSE(window_->isVisible());
}

// The light colours are the defaults; both kinds of desktop are tested, whichever the machine has.
class WindowOnADesktop : public Window {
 protected:
  WindowOnADesktop() { QApplication::setPalette(light_); }
  ~WindowOnADesktop() override { QApplication::setPalette(light_); }

  void Turn(const QPalette& palette) {
    QApplication::setPalette(palette);
    QApplication::processEvents();
  }
  control::Stockbook& control() { return window_->stockbook().control(); }

  const QPalette light_{QColor(0xEF, 0xEF, 0xEF), QColor(0xEF, 0xEF, 0xEF)};
};

TEST_F(WindowOnADesktop, IsLightOrDarkAsTheDesktopIs) {
  Open();
  const control::Stockbook& stock = control();
  const platform::Colour back = stock.BackColor();
  const platform::Colour hot = stock.BackColorHot();
  const platform::Colour header = window_->stockbook().HeaderColor();
  Turn(DarkPalette());
  const sheet::Appearance dark = sheet::Appearance::Dark();
  EXPECT_EQ(stock.BackColor(), dark.Of(platform::GridColour::kBackColor));
  EXPECT_EQ(stock.ForeColor(), dark.Of(platform::GridColour::kForeColor));
  EXPECT_EQ(window_->stockbook().sheet().appearance().negative_fore, dark.negative_fore);
  EXPECT_NE(stock.BackColorHot(), hot);
  EXPECT_NE(window_->stockbook().HeaderColor(), header);
  Turn(light_);
  EXPECT_EQ(stock.BackColor(), back);
  EXPECT_EQ(stock.BackColorHot(), hot);
  EXPECT_EQ(window_->stockbook().HeaderColor(), header);
  EXPECT_EQ(window_->stockbook().sheet().appearance().colours, sheet::Appearance().colours);
}

TEST_F(WindowOnADesktop, StartsDarkOnADarkDesktop) {
  Turn(DarkPalette());
  MainWindow other;
  EXPECT_EQ(other.stockbook().control().BackColor(), sheet::Appearance::Dark().Of(platform::GridColour::kBackColor));
}

TEST_F(WindowOnADesktop, LeavesTheColoursThatAHostHasSet) {
  Open();
  control().SetBackColor(0x00CCFFFF);
  Turn(DarkPalette());
  EXPECT_EQ(control().BackColor(), 0x00CCFFFFu);
  control().SetForeColorHot(0x0000FF00);
  Turn(light_);
  EXPECT_EQ(control().BackColor(), 0x00CCFFFFu);
  EXPECT_EQ(control().ForeColorHot(), 0x0000FF00u);
}

// Types into the chooser's line as a user does.
void Type(SubjectChooser& chooser, const QString& text) {
  chooser.lineEdit()->selectAll();
  for (const QChar character : text) {
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
    QApplication::sendEvent(&chooser, &press);
  }
}

std::vector<CatalogEntry> SomeEntries() {
  return {{1, {}, "1001  六角螺栓  M8"}, {2, {}, "1002  六角螺栓  M10"}, {3, {}, "2001  平垫圈  M10"}};
}

TEST_F(Window, FindsASubjectByWordsInAnyOrder) {
  SubjectChooser chooser;
  chooser.SetEntries(SomeEntries());
  int chosen = 0;
  QObject::connect(&chooser, &SubjectChooser::Chosen, [&] { ++chosen; });
  Type(chooser, QStringLiteral("m10 螺栓"));
  EXPECT_EQ(chooser.completer()->completionModel()->rowCount(), 1);
  QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QApplication::sendEvent(&chooser, &enter);
  EXPECT_EQ(chooser.Current().key, 2);
  EXPECT_EQ(chooser.currentText().toStdString(), "1002  六角螺栓  M10");
  EXPECT_EQ(chosen, 1);
}

TEST_F(Window, KeepsTheChoiceWhenNothingIsFound) {
  SubjectChooser chooser;
  chooser.SetEntries(SomeEntries());
  EXPECT_TRUE(chooser.Choose(3, {}));
  int chosen = 0;
  QString missed;
  QObject::connect(&chooser, &SubjectChooser::Chosen, [&] { ++chosen; });
  QObject::connect(&chooser, &SubjectChooser::NothingFound, [&](const QString& words) { missed = words; });
  Type(chooser, QStringLiteral("nothing like it"));
  QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QApplication::sendEvent(&chooser, &enter);
  EXPECT_EQ(chosen, 0);
  EXPECT_EQ(missed.toStdString(), "nothing like it");
  EXPECT_EQ(chooser.Current().key, 3);
  EXPECT_EQ(chooser.currentText().toStdString(), "2001  平垫圈  M10");
  EXPECT_FALSE(chooser.Choose(4, {}));
  EXPECT_EQ(chooser.Current().key, 3);
}

TEST_F(Window, SaysThatNothingIsFound) {
  Open();
  QStringList messages;
  QObject::connect(&window_->bar(), &JournalBar::Failed, [&](const QString& message) { messages += message; });
  SubjectChooser& chooser = *window_->bar().findChild<SubjectChooser*>();
  Type(chooser, QStringLiteral("轴承座"));
  QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QApplication::sendEvent(&chooser, &enter);
  ASSERT_EQ(messages.size(), 1);
  EXPECT_EQ(messages[0].toStdString(), "没有找到：轴承座");
}

TEST_F(Window, TellsAMessageThatIsCutOffInATooltip) {
  MessageLine line;
  line.resize(100, 20);
  line.Show(QStringLiteral("<b>"));
  EXPECT_TRUE(line.toolTip().isEmpty());
  line.Show(QStringLiteral("<b>没有找到").repeated(10));
  EXPECT_TRUE(line.toolTip().contains(QStringLiteral("&lt;b&gt;没有找到")));
  EXPECT_LT(line.sizeHint().width(), 100) << "a long message does not widen the window";
  line.resize(3000, 20);
  QResizeEvent resized(line.size(), {100, 20});
  QApplication::sendEvent(&line, &resized);
  EXPECT_TRUE(line.toolTip().isEmpty());
}

TEST_F(Window, LoadsOnceWhenEnterIsPressedOnTheChoice) {
  SubjectChooser chooser;
  chooser.SetEntries(SomeEntries());
  int chosen = 0;
  QObject::connect(&chooser, &SubjectChooser::Chosen, [&] { ++chosen; });
  QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QApplication::sendEvent(&chooser, &enter);
  EXPECT_EQ(chosen, 1);
}

// Answers the dialog that asks for a password, once it is there.
void AnswerPassword(const QString& typed, QString& label, bool& hidden) {
  QTimer::singleShot(0, [&, typed] {
    auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    label = dialog->labelText();
    hidden = dialog->textEchoMode() == QLineEdit::Password;
    if (typed.isNull()) return dialog->reject();
    dialog->setTextValue(typed);
    dialog->accept();
  });
}

TEST_F(Window, AsksForAPasswordWithoutShowingIt) {
  QString label;
  bool hidden = false;
  AnswerPassword(QStringLiteral("open; sesame"), label, hidden);
  EXPECT_EQ(window_->AskInDialog()("stock@db.example.com"), "open; sesame");
  EXPECT_TRUE(hidden);
  EXPECT_EQ(label.toStdString(), "“stock@db.example.com”的密码：");
  AnswerPassword({}, label, hidden);
  EXPECT_EQ(window_->AskInDialog()("stock@db.example.com"), std::nullopt);
}

TEST_F(Window, NamesAnInventoryByItsConnectionStringsFileOnly) {
  window_->OpenDatabase("Provider=Stockbook.Embedded;Password=s3cret;Data Source=" + PathOf("sample.db"));
  window_->LoadFirstJournal();
  EXPECT_TRUE(Title().ends_with("— sample.db")) << Title();
  EXPECT_EQ(stockbook().control().Conn()->ConnectionString().find("s3cret"), std::string::npos);
}

TEST_F(Window, OffersAllThenTheClassesThenTheSubjects) {
  const auto connection = OpenInventory(PathOf("sample.db"));
  const InventoryCatalog catalog(*connection);
  const std::vector<CatalogEntry> depots = catalog.SecondKeys(base::MaterialJournal);
  EXPECT_EQ(depots.front(), (CatalogEntry{0, "", "全部仓库"}));
  EXPECT_GT(depots[1].key, 0);
  const std::vector<CatalogEntry> customers = catalog.SecondKeys(base::CustomerJournal);
  EXPECT_EQ(customers.front().text, "全部客户（分类以“0”开头的）") << "what all of them are";
  EXPECT_EQ(customers[1].class_code, "01");
  EXPECT_TRUE(customers[2].text.starts_with("　【")) << "a class of the second level stands further in";
  EXPECT_GT(customers.back().key, 0);
  EXPECT_EQ(catalog.FirstProductWithLines(), 1);
}

TEST_F(Window, TellsWhatTheDotAtTheEndOfTheBandStandsFor) {
  Open();
  const auto tip_at = [this](int x) {
    QWidget* band = stockbook().childAt(x, 4);
    if (band == nullptr) return QString();
    const QPoint at = band->mapFrom(&stockbook(), QPoint(x, 4));
    QHelpEvent help(QEvent::ToolTip, at, band->mapToGlobal(at));
    QApplication::sendEvent(band, &help);
    return QToolTip::text();
  };
  EXPECT_FALSE(tip_at(stockbook().width() / 2).contains(QStringLiteral("库存来源")));
  EXPECT_TRUE(tip_at(stockbook().width() - 4).contains(QStringLiteral("库存来源")));
}

}  // namespace
}  // namespace stockbook::app
