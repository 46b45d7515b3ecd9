// SPDX-License-Identifier: MIT
// The ways from one journal to another, and what else the window does beside the journal.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTimer>
#include <QUrl>
#include <QWheelEvent>
#include <algorithm>
#include <string>
#include <vector>

#include "app/window_fixture.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/command/program_version.h"
#include "stockbook/inventory/inventory_catalog.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/window/help_dialog.h"
#include "stockbook/window/subject_search.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

class Ways : public WindowTest {
 protected:
  void OpenFirst() {
    Open();
    ASSERT_TRUE(window_->LoadFirstJournal().loaded);
  }
  std::string Cell(int row, const char* key) { return grid().TextMatrix(row, grid().ColIndex(key)); }
  double Number(int row, const char* key) { return grid().ValueMatrix(row, grid().ColIndex(key)); }
  void GoTo(int row) { grid().Select(row, grid().ColIndex(keys::kBillNo)); }
  template <typename Wanted>
  int RowWhere(Wanted wanted) {
    for (int row = grid().FixedRows(); row < grid().Rows(); ++row) {
      if (grid().RecordOfRow(row) >= 0 && wanted(row)) return row;
    }
    return -1;
  }
  QAction* Item(const QKeySequence& key) {
    for (QAction* action : window_->menus().ActionsWithKeys()) {
      if (action->shortcut() == key) return action;
    }
    return nullptr;
  }
};

TEST_F(Ways, BackAndForwardGoThroughTheJournalsWithThePlaceInEach) {
  OpenFirst();
  QAction* back = Item(QKeySequence(Qt::ALT | Qt::Key_Left));
  QAction* forward = Item(QKeySequence(Qt::ALT | Qt::Key_Right));
  EXPECT_FALSE(back->isEnabled());
  GoTo(7);
  JournalOptions second;
  second.key_id = 2;
  window_->LoadJournal(second);
  GoTo(5);
  EXPECT_TRUE(back->isEnabled());
  back->trigger();
  EXPECT_EQ(stockbook().control().KeyID(), 1);
  EXPECT_EQ(window_->bar().Options().key_id, 1);
  EXPECT_EQ(grid().Row(), 7);
  EXPECT_FALSE(back->isEnabled());
  forward->trigger();
  EXPECT_EQ(stockbook().control().KeyID(), 2);
  EXPECT_EQ(grid().Row(), 5);
  back->trigger();
  JournalOptions third;
  third.key_id = 3;
  window_->LoadJournal(third);
  EXPECT_FALSE(forward->isEnabled()) << "another way was taken";
}

TEST_F(Ways, AReloadIsNoStepOfTheWay) {
  OpenFirst();
  emit window_->bar().LoadWanted();
  EXPECT_FALSE(Item(QKeySequence(Qt::ALT | Qt::Key_Left))->isEnabled());
}

TEST_F(Ways, AnIssueLeadsToTheReceiptThatItWasDrawnFrom) {
  OpenFirst();
  const int issue = RowWhere([this](int row) { return Number(row, keys::kOtherID) > 0; });
  ASSERT_GT(issue, 0);
  const auto source = static_cast<int>(Number(issue, keys::kOtherID));
  grid().CollapseAll();
  GoTo(issue);
  Item(QKeySequence(Qt::CTRL | Qt::Key_J))->trigger();
  EXPECT_EQ(Number(grid().Row(), keys::kRecID), source);
  EXPECT_EQ(Number(grid().Row(), keys::kFlag), 0);
  EXPECT_TRUE(grid().RowIsVisible(grid().Row())) << "its period is open";
}

TEST_F(Ways, FromAPartnersJournalTheSourceIsInThatOfTheProduct) {
  Open();
  JournalOptions customer;
  customer.journal_type = 2;
  customer.dp_id = 3;
  ASSERT_TRUE(window_->LoadJournal(customer).loaded);
  const int issue = RowWhere([this](int row) { return Number(row, keys::kOtherID) > 0; });
  ASSERT_GT(issue, 0);
  const auto source = static_cast<int>(Number(issue, keys::kOtherID));
  const auto product = static_cast<int>(Number(issue, keys::kPdID));
  GoTo(issue);
  window_->links().GoToSource();
  EXPECT_EQ(window_->bar().Options().journal_type, 0);
  EXPECT_EQ(window_->bar().Options().key_id, product);
  EXPECT_EQ(Number(grid().Row(), keys::kRecID), source);
  Item(QKeySequence(Qt::ALT | Qt::Key_Left))->trigger();
  EXPECT_EQ(window_->bar().Options().journal_type, 2);
  EXPECT_EQ(grid().Row(), issue);
}

TEST_F(Ways, ARowWithoutASourceSaysSo) {
  OpenFirst();
  QSignalSpy told(&window_->links(), &JournalLinks::Told);
  GoTo(grid().FixedRows());
  window_->links().GoToSource();
  ASSERT_EQ(told.size(), 1);
  EXPECT_EQ(told[0][0].toString().toStdString(), "这一行没有记录库存来源。");
  EXPECT_EQ(window_->message().Message(), told[0][0].toString());
}

TEST_F(Ways, OneSideOfATransferLeadsToTheOther) {
  OpenFirst();
  const int issue =
      RowWhere([this](int row) { return Cell(row, keys::kBillName) == "调拨单" && Number(row, keys::kFlag) == 1; });
  ASSERT_GT(issue, 0);
  const std::string bill = Cell(issue, keys::kBillNo);
  GoTo(issue);
  window_->links().GoToOtherSide();
  EXPECT_NE(grid().Row(), issue);
  EXPECT_EQ(Cell(grid().Row(), keys::kBillNo), bill);
  EXPECT_EQ(Number(grid().Row(), keys::kFlag), 0);
  EXPECT_EQ(Cell(grid().Row(), keys::kDQty), Cell(issue, keys::kDQty));
  window_->links().GoToOtherSide();
  EXPECT_EQ(grid().Row(), issue);
}

TEST_F(Ways, ALineLeadsToItsPartnerAndFromThereToAProduct) {
  OpenFirst();
  const int sale = RowWhere([this](int row) { return Number(row, keys::kKsID) > 0 && Number(row, keys::kFlag) == 1; });
  ASSERT_GT(sale, 0);
  const auto customer = static_cast<int>(Number(sale, keys::kKsID));
  GoTo(sale);
  window_->links().GoToPartner();
  EXPECT_EQ(window_->bar().Options().journal_type, 2);
  EXPECT_EQ(window_->bar().Options().dp_id, customer);
  EXPECT_EQ(window_->bar().Options().key_id, 0) << "all products of the customer";
  const int line = RowWhere([this](int row) { return Number(row, keys::kPdID) > 1; });
  ASSERT_GT(line, 0);
  const auto product = static_cast<int>(Number(line, keys::kPdID));
  GoTo(line);
  window_->links().GoToProduct();
  EXPECT_EQ(window_->bar().Options().journal_type, 0);
  EXPECT_EQ(window_->bar().Options().key_id, product);
}

TEST_F(Ways, OneSearchFindsProductsPartnersAndProjectsByAnyOfTheirTexts) {
  OpenFirst();
  SubjectSearch search(*window_->journal().connection(), nullptr, 5);
  std::vector<JournalOptions> chosen;
  QObject::connect(&search, &SubjectSearch::Chosen, [&](const JournalOptions& options) { chosen.push_back(options); });
  const QAbstractItemModel& found = *search.found().model();
  const int all = found.rowCount();
  const auto connection = OpenInventory(PathOf("sample.db"));
  const InventoryCatalog catalog(*connection);
  const CatalogEntry customer = catalog.SecondKeys(base::CustomerJournal).back();
  search.words().setText(QStringLiteral("客户 ") + QString::fromStdString(customer.text));
  ASSERT_EQ(found.rowCount(), 1);
  QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QApplication::sendEvent(&search.words(), &enter);
  ASSERT_EQ(chosen.size(), 1U);
  EXPECT_EQ(chosen[0].journal_type, 2);
  EXPECT_EQ(chosen[0].dp_id, customer.key);
  EXPECT_EQ(chosen[0].key_id, 0);
  search.words().setText(QStringLiteral("项目"));
  EXPECT_GT(found.rowCount(), 0);
  EXPECT_LT(found.rowCount(), all);
  search.words().setText(QStringLiteral("没有这样的台账"));
  QApplication::sendEvent(&search.words(), &enter);
  EXPECT_EQ(chosen.size(), 1U) << "nothing was found";
}

TEST_F(Ways, TheArrowsMoveInWhatWasFoundWhileOneTypes) {
  OpenFirst();
  SubjectSearch search(*window_->journal().connection(), nullptr, 5);
  search.show();
  EXPECT_EQ(search.found().currentIndex().row(), 0);
  QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
  QApplication::sendEvent(&search.words(), &down);
  EXPECT_EQ(search.found().currentIndex().row(), 1);
}

TEST_F(Ways, CtrlAndTheWheelZoomTheJournal) {
  OpenFirst();
  const int before = static_cast<int>(stockbook().sheet().view().geometry().CellRect(1, 3).height);
  const int width = grid().ColWidth(3);
  QWheelEvent turned({50, 50}, {50, 50}, {}, {0, 240}, Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(stockbook().viewport(), &turned);
  EXPECT_DOUBLE_EQ(stockbook().Zoom(), 1.2);
  EXPECT_GT(stockbook().sheet().view().geometry().CellRect(1, 3).height, before);
  EXPECT_EQ(grid().ColWidth(3), width) << "the layout stays";
  EXPECT_EQ(grid().TopRow(), grid().FixedRows()) << "it did not scroll";
  Item(QKeySequence(Qt::CTRL | Qt::Key_0))->trigger();
  EXPECT_DOUBLE_EQ(stockbook().Zoom(), 1.0);
  for (int step = 0; step < 50; ++step) Item(QKeySequence(Qt::CTRL | Qt::Key_BracketRight))->trigger();
  EXPECT_DOUBLE_EQ(stockbook().Zoom(), 3.0);
}

TEST_F(Ways, AClickInAZoomedJournalMeansTheCellUnderTheMouse) {
  OpenFirst();
  stockbook().SetZoom(1.5);
  const int row = grid().FixedRows() + 3;
  const int column = grid().ColIndex(keys::kBillKind);
  const sheet::Rect cell = stockbook().sheet().view().geometry().CellRect(row, column);
  const QPointF at(cell.x + cell.width / 2.0, cell.y + cell.height / 2.0);
  for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    QMouseEvent event(type, at, stockbook().viewport()->mapToGlobal(at), Qt::LeftButton,
                      type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(stockbook().viewport(), &event);
  }
  EXPECT_EQ(grid().Row(), row);
  EXPECT_EQ(grid().Col(), column);
}

TEST_F(Ways, TheMenusOfTheGridNameTheKeysOfTheWindow) {
  OpenFirst();
  QStringList texts;
  // The menu waits for a choice in a loop of its own.
  QTimer::singleShot(0, [&] {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      auto* menu = qobject_cast<QMenu*>(widget);
      if (menu == nullptr || !menu->isVisible()) continue;
      for (const QAction* action : menu->actions()) texts.append(action->text());
      menu->close();
    }
  });
  const sheet::Rect cell =
      stockbook().sheet().view().geometry().CellRect(grid().FixedRows() + 3, grid().ColIndex(keys::kBillNo));
  const QPointF at(cell.x + cell.width / 2.0, cell.y + cell.height / 2.0);
  QMouseEvent press(QEvent::MouseButtonPress, at, stockbook().viewport()->mapToGlobal(at), Qt::RightButton,
                    Qt::RightButton, Qt::NoModifier);
  QApplication::sendEvent(stockbook().viewport(), &press);
  EXPECT_TRUE(texts.contains(QStringLiteral("查找(&F)\tCtrl+F"))) << texts.join(QLatin1Char('|')).toStdString();
  EXPECT_TRUE(texts.contains(QStringLiteral("刷新\tF5")));
}

TEST_F(Ways, AFileThatIsDroppedIsOpened) {
  OpenFirst();
  WriteSampleInventory(PathOf("other.db"), {});
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QString::fromStdString(PathOf("other.db")))});
  QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window_.get(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window_.get(), &drop);
  Settle();
  EXPECT_TRUE(Title().ends_with("— other.db")) << Title();
}

TEST_F(Ways, TextThatIsDraggedIsNotTaken) {
  OpenFirst();
  QMimeData data;
  data.setText(QStringLiteral("only text"));
  QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window_.get(), &enter);
  EXPECT_FALSE(enter.isAccepted());
}

TEST_F(Ways, HelpListsTheKeysOfTheMenusAndOfTheGrid) {
  OpenFirst();
  const HelpDialog help(window_->menus());
  const auto lists = [&](const QString& key) { return !help.keys().findItems(key, Qt::MatchExactly, 0).isEmpty(); };
  EXPECT_TRUE(lists(QStringLiteral("F5")));
  EXPECT_TRUE(lists(QStringLiteral("Ctrl+L")));
  EXPECT_TRUE(lists(QStringLiteral("Ctrl+A")));
  for (const QTreeWidgetItem* item : help.keys().findItems(QStringLiteral("Ctrl+L"), Qt::MatchExactly, 0))
    EXPECT_EQ(item->text(1).toStdString(), "列设置");
  const QList<QLabel*> labels = help.findChildren<QLabel*>();
  EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
    return label->text().contains(QString::fromUtf8(ProgramVersion().data()));
  })) << "it names the version";
}

TEST_F(Ways, NoTwoItemsOfTheMenusHaveTheSameKey) {
  QStringList all;
  for (const QAction* action : window_->menus().ActionsWithKeys()) all.append(action->shortcut().toString());
  QStringList different = all;
  different.removeDuplicates();
  EXPECT_EQ(all, different);
}

TEST_F(Ways, TheFirstJournalIsLoadedOnceTheProgramRuns) {
  window_->OpenDatabase(PathOf("sample.db"));
  window_->LoadOnceRunning(std::nullopt);
  EXPECT_EQ(grid().Rows(), 1) << "nothing is loaded before";
  QSignalSpy arrived(&window_->journal(), &ShownJournal::Arrived);
  window_->show();
  ASSERT_TRUE(arrived.size() > 0 || arrived.wait(300000));
  EXPECT_GT(grid().Rows(), 20);
}

}  // namespace
}  // namespace stockbook::app
