// SPDX-License-Identifier: MIT
#include "qt/accessible_table.h"
#include "stockbook/base/value.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/platform/grid.h"

namespace stockbook::qt {
namespace {

TEST_F(AccessibleTable, TellsItsRoleNameAndCounts) {
  ASSERT_NE(Grid(), nullptr);
  EXPECT_EQ(Grid()->role(), QAccessible::Table);
  EXPECT_EQ(Name(Grid()), "库存明细账");
  EXPECT_EQ(Table()->rowCount(), kPeriods * kGroup);
  EXPECT_EQ(Table()->columnCount(), kColumns);
  EXPECT_EQ(Grid()->childCount(), (1 + kPeriods * kGroup) * kColumns) << "the captions are children too";
  EXPECT_TRUE(Grid()->state().focusable);
  EXPECT_TRUE(Grid()->state().multiSelectable);
  EXPECT_EQ(Table()->caption(), nullptr);
  EXPECT_EQ(Table()->summary(), nullptr);
}

TEST_F(AccessibleTable, IsCalledWhatTheHostCallsTheView) {
  view_->setAccessibleName("螺栓");
  EXPECT_EQ(Name(Grid()), "螺栓");
}

TEST_F(AccessibleTable, TellsTheCaptionsOfTheColumnsOnOneLine) {
  EXPECT_EQ(Table()->columnDescription(kBill).toStdString(), "日期 单据");
  EXPECT_EQ(Table()->columnDescription(kRevQty).toStdString(), "收入 数量");
  EXPECT_EQ(Table()->columnDescription(kColumns), QString());
  EXPECT_EQ(Table()->columnDescription(-1), QString());
  QAccessibleInterface* caption = Grid()->child(kRevQty);
  EXPECT_EQ(caption->role(), QAccessible::ColumnHeader);
  EXPECT_EQ(Name(caption), "收入 数量");
  const auto captions = Cell(4, kRevQty)->tableCellInterface()->columnHeaderCells();
  ASSERT_EQ(captions.size(), 1);
  EXPECT_EQ(captions.front(), caption);
}

TEST_F(AccessibleTable, TellsTheTextsThatTheCellsShow) {
  for (int row = 0; row < Table()->rowCount(); ++row) {
    ASSERT_EQ(Name(Cell(row, kBill)), sheet_.DisplayText(row + 1, testing::kLedgerBill)) << row;
    ASSERT_EQ(Name(Cell(row, kRevQty)), sheet_.DisplayText(row + 1, testing::kLedgerRevQty)) << row;
  }
  EXPECT_EQ(Name(Cell(0, kBill)), "2004-01");
  EXPECT_EQ(Cell(0, kBill)->role(), QAccessible::Cell);
  EXPECT_TRUE(Cell(0, kBill)->state().readOnly);
  EXPECT_EQ(Table()->rowDescription(1), "1") << "the line number stands in the fixed column";
  EXPECT_EQ(Table()->rowDescription(0), "2004-01");
}

TEST_F(AccessibleTable, HasNoCellsBesideItself) {
  EXPECT_EQ(Cell(-1, 0), nullptr);
  EXPECT_EQ(Cell(0, -1), nullptr);
  EXPECT_EQ(Cell(Table()->rowCount(), 0), nullptr);
  EXPECT_EQ(Cell(0, kColumns), nullptr);
  EXPECT_EQ(Grid()->child(-1), nullptr);
  EXPECT_EQ(Grid()->child(Grid()->childCount()), nullptr);
  EXPECT_EQ(Table()->rowDescription(-1), QString());
}

TEST_F(AccessibleTable, FindsEveryChildAtItsIndex) {
  for (int index = 0; index < Grid()->childCount(); ++index) {
    QAccessibleInterface* child = Grid()->child(index);
    ASSERT_NE(child, nullptr) << index;
    ASSERT_EQ(Grid()->indexOfChild(child), index);
    ASSERT_EQ(child->parent(), Grid());
    ASSERT_TRUE(child->isValid());
    QAccessibleTableCellInterface* cell = child->tableCellInterface();
    ASSERT_EQ(cell->columnIndex(), index % kColumns);
    ASSERT_EQ(cell->rowIndex(), index / kColumns - 1);
    ASSERT_EQ(cell->table(), Grid());
  }
}

TEST_F(AccessibleTable, TellsWhichCellIsCurrent) {
  sheet_.Select(kFirstLine + 2, testing::kLedgerRevQty);
  QAccessibleInterface* current = Grid()->focusChild();
  ASSERT_NE(current, nullptr);
  EXPECT_EQ(current->tableCellInterface()->rowIndex(), kFirstLine + 1);
  EXPECT_EQ(current->tableCellInterface()->columnIndex(), kRevQty);
  EXPECT_TRUE(current->state().focusable);
  EXPECT_EQ(current->state().focused, view_->hasFocus());
  EXPECT_TRUE(view_->hasFocus());
  EXPECT_FALSE(Cell(0, 0)->state().focused);
}

TEST_F(AccessibleTable, MovesTheCurrentCellToTheOneThatIsAskedTo) {
  const int last = Table()->rowCount() - 1;
  QAccessibleInterface* cell = Cell(last, kRevQty);
  EXPECT_TRUE(cell->state().offscreen);
  ASSERT_TRUE(cell->actionInterface()->actionNames().contains(QAccessibleActionInterface::setFocusAction()));
  cell->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
  EXPECT_EQ(sheet_.Row(), sheet_.Rows() - 1);
  EXPECT_EQ(sheet_.Col(), testing::kLedgerRevQty);
  EXPECT_FALSE(cell->state().offscreen) << "it came into view";
  EXPECT_EQ(Grid()->focusChild(), cell);
}

TEST_F(AccessibleTable, TellsTheSelectedCells) {
  sheet_.SelectRange(3, testing::kLedgerRevQty, 5, testing::kLedgerIssQty);
  EXPECT_EQ(Table()->selectedCellCount(), 3 * 3);
  const auto cells = Table()->selectedCells();
  ASSERT_EQ(cells.size(), 9);
  for (const QAccessibleInterface* cell : cells) EXPECT_TRUE(cell->state().selected);
  EXPECT_EQ(cells.front(), Cell(2, kRevQty));
  EXPECT_FALSE(Cell(1, kRevQty)->tableCellInterface()->isSelected());
  EXPECT_EQ(Table()->selectedRowCount(), 0);
  EXPECT_EQ(Table()->selectedColumnCount(), 0);
  EXPECT_FALSE(Table()->isRowSelected(3));
}

TEST_F(AccessibleTable, SelectsRowsAndColumns) {
  EXPECT_TRUE(Table()->selectRow(4));
  EXPECT_TRUE(Table()->isRowSelected(4));
  EXPECT_FALSE(Table()->isRowSelected(5));
  EXPECT_EQ(Table()->selectedRows(), QList<int>{4});
  EXPECT_EQ(Table()->selectedCellCount(), kColumns);
  EXPECT_FALSE(Table()->unselectRow(5));
  EXPECT_TRUE(Table()->unselectRow(4));
  EXPECT_EQ(Table()->selectedCellCount(), 1);
  EXPECT_TRUE(Table()->selectColumn(kRevQty));
  EXPECT_TRUE(Table()->isColumnSelected(kRevQty));
  EXPECT_EQ(Table()->selectedColumns(), QList<int>{kRevQty});
  EXPECT_EQ(Table()->selectedCellCount(), Table()->rowCount());
  EXPECT_TRUE(Table()->unselectColumn(kRevQty));
  EXPECT_FALSE(Table()->selectRow(-1));
  EXPECT_FALSE(Table()->selectRow(Table()->rowCount()));
  EXPECT_FALSE(Table()->selectColumn(kColumns));
  Grid()->child(kBill)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(Table()->isColumnSelected(kBill)) << "a caption selects its column";
}

TEST_F(AccessibleTable, FoldsAPeriodByItsAction) {
  QAccessibleInterface* node = Cell(kFirstNode - 1, kBill);
  QAccessibleInterface* line = Cell(kFirstLine - 1, kBill);
  QAccessibleInterface* total = Cell(kGroup - 1, kBill);
  EXPECT_TRUE(node->state().expandable);
  EXPECT_TRUE(node->state().expanded);
  EXPECT_FALSE(node->state().collapsed);
  EXPECT_FALSE(line->state().expandable);
  EXPECT_FALSE(total->state().expandable) << "a total has nothing to fold";
  EXPECT_EQ(node->text(QAccessible::Description), "已展开");
  EXPECT_EQ(total->text(QAccessible::Description), "");
  QAccessibleActionInterface* actions = node->actionInterface();
  EXPECT_EQ(actions->actionNames().front(), QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(actions->localizedActionName(QAccessibleActionInterface::toggleAction()), "折叠");
  actions->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_TRUE(sheet_.IsCollapsed(kFirstNode));
  EXPECT_TRUE(node->state().collapsed);
  EXPECT_EQ(node->text(QAccessible::Description), "已折叠");
  EXPECT_FALSE(node->state().expanded);
  EXPECT_EQ(actions->localizedActionName(QAccessibleActionInterface::toggleAction()), "展开");
  EXPECT_EQ(Table()->rowCount(), kPeriods * kGroup - kLines);
  EXPECT_EQ(Cell(1, kBill), total) << "the next row that is shown";
  EXPECT_EQ(total->tableCellInterface()->rowIndex(), 1);
  EXPECT_TRUE(line->isValid());
  EXPECT_TRUE(line->state().invisible);
  EXPECT_EQ(line->tableCellInterface()->rowIndex(), -1);
  EXPECT_EQ(Grid()->indexOfChild(line), -1);
  EXPECT_TRUE(line->rect().isEmpty());
  actions->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_FALSE(line->state().invisible);
  EXPECT_EQ(Cell(1, kBill), line);
}

TEST_F(AccessibleTable, LeavesHiddenColumnsOut) {
  QAccessibleInterface* cell = Cell(1, kRevQty);
  QAccessibleInterface* next = Cell(1, kRevQty + 1);
  sheet_.SetColHidden(testing::kLedgerRevQty, true);
  EXPECT_EQ(Table()->columnCount(), kColumns - 1);
  EXPECT_EQ(Cell(1, kRevQty), next);
  EXPECT_EQ(next->tableCellInterface()->columnIndex(), kRevQty);
  EXPECT_EQ(cell->tableCellInterface()->columnIndex(), -1);
  EXPECT_TRUE(cell->state().invisible);
  for (int column = 0; column < Table()->columnCount(); ++column) {
    EXPECT_NE(Table()->columnDescription(column), "收入 数量");
  }
  sheet_.Select(2, testing::kLedgerRevQty);
  EXPECT_EQ(Grid()->focusChild(), nullptr) << "the current cell cannot be seen";
}

TEST_F(AccessibleTable, HitsEveryCellThatIsInSightAtItsPlaceOnTheScreen) {
  sheet_.view().ScrollTo({35, 111});
  int seen = 0;
  for (int index = 0; index < Grid()->childCount(); ++index) {
    QAccessibleInterface* child = Grid()->child(index);
    const QRect area = child->rect();
    EXPECT_EQ(area.isEmpty(), child->state().offscreen);
    if (area.isEmpty()) continue;
    ++seen;
    EXPECT_TRUE(Grid()->rect().contains(area));
    for (const QPoint& corner : {area.topLeft(), area.bottomRight(), area.center()}) {
      ASSERT_EQ(Grid()->childAt(corner.x(), corner.y()), child) << index;
    }
  }
  EXPECT_GT(seen, 3 * kColumns);
  const QRect whole = Grid()->rect();
  EXPECT_EQ(Grid()->childAt(whole.left() + 1, whole.bottom() - 5), nullptr) << "the fixed column is no cell";
  EXPECT_EQ(Grid()->childAt(whole.left() - 10, whole.top()), nullptr);
}

TEST_F(AccessibleTable, MakesFewObjectsForAMillionRows) {
  std::vector<columns::Column> columns;
  for (int column = 0; column < testing::kLedgerColumns; ++column) {
    columns.push_back(columns::Column::Constant(base::Value(std::string("库")), 1'000'000));
  }
  sheet_.LoadColumns(std::move(columns), 0);
  EXPECT_EQ(Table()->rowCount(), 1'000'000);
  EXPECT_EQ(Grid()->childCount(), 1'000'001 * kColumns);
  QAccessibleInterface* last = Grid()->child(Grid()->childCount() - 1);
  EXPECT_EQ(last->tableCellInterface()->rowIndex(), 999'999);
  const QAccessible::Id first_id = QAccessible::uniqueId(Cell(0, 0));
  EXPECT_EQ(QAccessible::accessibleInterface(first_id), Cell(0, 0));
  constexpr int kAsked = 30'000;
  int kept = 0;
  std::vector<QAccessible::Id> ids;
  for (int row = 0; row < kAsked; ++row) ids.push_back(QAccessible::uniqueId(Cell(row, 1)));
  for (const QAccessible::Id id : ids) kept += QAccessible::accessibleInterface(id) != nullptr ? 1 : 0;
  EXPECT_LT(kept, 5000);
  EXPECT_GT(kept, 1000);
  EXPECT_EQ(QAccessible::accessibleInterface(first_id), nullptr) << "what nobody asked for again has left";
  EXPECT_NE(QAccessible::accessibleInterface(ids.back()), nullptr);
  sheet_.SelectRange(1, 1, sheet_.Rows() - 1, sheet_.Cols() - 1);
  EXPECT_EQ(Table()->selectedCellCount(), 1'000'000 * kColumns);
  EXPECT_EQ(Table()->selectedRowCount(), 1'000'000);
  EXPECT_LE(Table()->selectedCells().size(), 1000);
  EXPECT_LE(Table()->selectedRows().size(), 1000);
  for (const QAccessibleInterface* cell : Table()->selectedCells()) EXPECT_TRUE(cell->isValid());
}

TEST_F(AccessibleTable, KnowsThatACellIsGoneAfterRowsOrColumnsMoved) {
  const auto gone = [&](const char* change, auto&& apply) {
    QAccessibleInterface* cell = Cell(1, kRevQty);
    const QAccessible::Id id = QAccessible::uniqueId(cell);
    EXPECT_TRUE(cell->isValid());
    apply();
    EXPECT_FALSE(cell->isValid()) << change;
    EXPECT_TRUE(cell->state().invalid);
    EXPECT_EQ(Name(cell), "");
    EXPECT_TRUE(cell->rect().isEmpty());
    EXPECT_EQ(cell->tableCellInterface()->rowIndex(), -1);
    EXPECT_TRUE(cell->tableCellInterface()->columnHeaderCells().isEmpty());
    EXPECT_TRUE(cell->actionInterface()->actionNames().isEmpty());
    cell->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(Grid()->indexOfChild(cell), -1);
    EXPECT_NE(Cell(1, kRevQty), cell);
    EXPECT_EQ(QAccessible::accessibleInterface(id), cell) << "who holds it may still ask it";
  };
  gone("a row came", [&] { sheet_.AddItem("", 1); });
  gone("a row went", [&] { sheet_.RemoveItem(1); });
  gone("a column moved", [&] { sheet_.SetColPosition(3, 5); });
  gone("columns came", [&] { sheet_.SetCols(sheet_.Cols() + 1); });
  gone("other rows", [&] { SampleLedger({kPeriods, kLines}).Fill(sheet_); });
}

TEST_F(AccessibleTable, StaysWithAnEmptySheet) {
  sheet_.SetRows(1);
  EXPECT_EQ(Table()->rowCount(), 0);
  EXPECT_EQ(Grid()->focusChild(), nullptr);
  EXPECT_EQ(Table()->selectedCellCount(), 0);
  EXPECT_TRUE(Table()->selectedCells().isEmpty());
  EXPECT_EQ(Grid()->childCount(), kColumns);
  sheet_.SetRows(0);
  sheet_.SetCols(0);
  EXPECT_EQ(Grid()->childCount(), 0);
  EXPECT_EQ(Cell(0, 0), nullptr);
}

TEST_F(AccessibleTable, GoesWithItsView) {
  const QAccessible::Id grid = QAccessible::uniqueId(Grid());
  const QAccessible::Id cell = QAccessible::uniqueId(Cell(0, 0));
  view_.reset();
  EXPECT_EQ(QAccessible::accessibleInterface(grid), nullptr);
  EXPECT_EQ(QAccessible::accessibleInterface(cell), nullptr);
}

TEST_F(AccessibleTable, TakesNoCommandsWhileItIsDisabled) {
  QAccessibleInterface* node = Cell(0, kBill);
  ASSERT_TRUE(Table()->selectRow(1));
  view_->setEnabled(false);
  EXPECT_FALSE(Table()->unselectRow(1));
  EXPECT_TRUE(Table()->isRowSelected(1));
  EXPECT_TRUE(node->state().disabled);
  EXPECT_TRUE(node->actionInterface()->actionNames().isEmpty());
  node->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_FALSE(sheet_.IsCollapsed(kFirstNode));
  EXPECT_FALSE(Table()->selectRow(2));
  EXPECT_TRUE(Grid()->state().disabled);
}

class AccessibleWidget : public WithApplication {};

TEST_F(AccessibleWidget, IsCalledByTheJournalsCaptionAndOutlivesAReload) {
  auto connection = std::make_shared<testing::FakeConnection>();
  std::vector<testing::JournalLine> lines(5);
  for (size_t index = 0; index < lines.size(); ++index) {
    lines[index].period = "2004-03";
    lines[index].bill_no = "入库单 " + std::to_string(index);
  }
  testing::AnswerJournal(*connection, lines);
  StockbookWidget widget;
  widget.control().SetConn(connection);
  widget.show();
  QAccessibleInterface* grid = QAccessible::queryAccessibleInterface(widget.focusProxy());
  EXPECT_EQ(grid->text(QAccessible::Name).toStdString(), "库存明细账");
  ASSERT_TRUE(widget.Load(7, 0));
  EXPECT_EQ(grid->text(QAccessible::Name).toStdString(), widget.control().Caption());
  QAccessibleInterface* cell = grid->tableInterface()->cellAt(2, 0);
  ASSERT_NE(cell, nullptr);
  EXPECT_EQ(cell->text(QAccessible::Name), "入库单 0");
  ASSERT_TRUE(widget.Load(7, 0));
  EXPECT_FALSE(cell->isValid());
  EXPECT_TRUE(grid->isValid());
  EXPECT_EQ(grid->tableInterface()->cellAt(2, 0)->text(QAccessible::Name), "入库单 0");
}

}  // namespace
}  // namespace stockbook::qt
