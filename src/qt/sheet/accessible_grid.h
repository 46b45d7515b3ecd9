// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessibleWidget>
#include <list>
#include <map>

#include "qt/sheet/accessible_cell.h"
#include "sheet/access/table_access.h"

namespace stockbook::qt {

class SheetWidget;

// A SheetWidget for screen readers: a table of the shown data rows and the shown columns that are not fixed, both
// counted from 0 (see sheet::TableAccess). Its children are the captions, one for each column, and after them the cells
// row by row. The toggle action of a node's cells folds its row. Cells are created when asked for, and a few thousand
// of the most recently used are kept; hold a cell by its id, as everywhere in the toolkit, to use it for longer.
class AccessibleGrid final : public QAccessibleWidget, public QAccessibleTableInterface {
 public:
  explicit AccessibleGrid(SheetWidget* view);
  ~AccessibleGrid() override;

  // Makes QAccessible::queryAccessibleInterface return an AccessibleGrid for every SheetWidget. Further calls change
  // nothing.
  static void Install();

  SheetWidget* view() const;
  // The sheet as a table. Valid only while the view exists.
  sheet::TableAccess Table() const;
  // The cell, or for row -1 the column's caption; nullptr if the sheet has no such cell.
  QAccessibleInterface* CellOf(int row, int column) const;
  // The cell's child index; -1 if it is not a child.
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
  // The counts cover the whole selection, the lists only its first few hundred entries.
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
  // A selection is one rectangle, so a row or column can be deselected only if it is the only one selected.
  bool unselectRow(int row) override;
  bool unselectColumn(int column) override;
  // Cells detect by themselves whether a change of the sheet made them invalid.
  void modelChange(QAccessibleTableModelChangeEvent* /*event*/) override {}

 private:
  struct Known {
    CellPlace place;
    QAccessible::Id id = 0;
  };
  using Recent = std::list<Known>;

  // Cells from before the last change of rows or columns are no longer found; they are dropped like the others.
  void ForgetOutlived() const;

  // The most recently used first.
  mutable Recent recent_;
  mutable std::map<CellPlace, Recent::iterator> cells_;
};

}  // namespace stockbook::qt
