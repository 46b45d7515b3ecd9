// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessibleWidget>
#include <list>
#include <map>

#include "qt/accessible_cell.h"
#include "sheet/access/table_access.h"

namespace stockbook::qt {

class GridView;

// A GridView as screen readers have it: a table of the shown data rows and the shown columns that are not fixed, both
// counted from 0 (see sheet::TableAccess). Its children are the captions, one for each column, and behind them the
// cells row by row. A node's row is folded by the toggle action of its cells. Nothing is made before somebody asks for
// it, and of the cells the latest asked for are kept, some thousands at most; one that must be kept longer is to be
// held by its id, as everywhere in the toolkit.
class AccessibleGrid final : public QAccessibleWidget, public QAccessibleTableInterface {
 public:
  explicit AccessibleGrid(GridView* view);
  ~AccessibleGrid() override;

  // Makes QAccessible::queryAccessibleInterface answer with one for every GridView. Calling it again changes nothing.
  static void Install();

  GridView* view() const;
  // The sheet as a table. Only while the view is there.
  sheet::TableAccess Table() const;
  // The cell, or the caption of the column for row -1; nullptr where the sheet has none.
  QAccessibleInterface* CellOf(int row, int column) const;
  // The child that it is; -1 when it is not among them.
  int ChildIndex(int row, int column) const;

  // QAccessibleInterface
  QAccessibleInterface* childAt(int x, int y) const override;
  QAccessibleInterface* child(int index) const override;
  int childCount() const override;
  int indexOfChild(const QAccessibleInterface* child) const override;
  QAccessibleInterface* focusChild() const override;
  QString text(QAccessible::Text kind) const override;
  QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  // QAccessibleTableInterface
  QAccessibleInterface* caption() const override { return nullptr; }
  QAccessibleInterface* summary() const override { return nullptr; }
  QAccessibleInterface* cellAt(int row, int column) const override;
  int columnCount() const override;
  int rowCount() const override;
  QString columnDescription(int column) const override;
  QString rowDescription(int row) const override;
  // The counts tell all that is selected, the lists the first some hundreds of it.
  int selectedCellCount() const override;
  int selectedColumnCount() const override;
  int selectedRowCount() const override;
  QList<QAccessibleInterface*> selectedCells() const override;
  QList<int> selectedColumns() const override;
  QList<int> selectedRows() const override;
  bool isColumnSelected(int column) const override;
  bool isRowSelected(int row) const override;
  bool selectRow(int row) override;
  bool selectColumn(int column) override;
  // Of a selection the rest can be given up, never a part: only the single selected row or column can.
  bool unselectRow(int row) override;
  bool unselectColumn(int column) override;
  // The cells know by themselves which change of the sheet they have outlived.
  void modelChange(QAccessibleTableModelChangeEvent* /*event*/) override {}

 private:
  struct Known {
    CellPlace place;
    QAccessible::Id id = 0;
  };
  using Recent = std::list<Known>;

  // Cells of before the sheet's last change of rows or columns are not found any more; they leave as the others do.
  void ForgetOutlived() const;

  // The latest asked for first.
  mutable Recent recent_;
  mutable std::map<CellPlace, Recent::iterator> cells_;
};

}  // namespace stockbook::qt
