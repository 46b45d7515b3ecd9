// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>
#include <compare>
#include <cstdint>

namespace stockbook::qt {

class AccessibleGrid;

// A cell by the sheet's own row and column; row -1 is the column's caption. Valid while the sheet's revision is the
// same.
struct CellPlace {
  int64_t revision = 0;
  int row = -1;
  int column = -1;

  bool IsCaption() const { return row < 0; }
  auto operator<=>(const CellPlace&) const = default;
};

// A cell or a caption of an AccessibleGrid, which owns it. It stores its place and reads the sheet for every question.
// Once rows or columns are added, removed or moved it is invalid and has no content; while its row is folded away or
// its column hidden, it is invisible and has no index.
class AccessibleCell final : public QAccessibleInterface,
                             public QAccessibleTableCellInterface,
                             public QAccessibleActionInterface {
 public:
  AccessibleCell(const AccessibleGrid& grid, const CellPlace& place) : grid_(grid), place_(place) {}

  const CellPlace& place() const { return place_; }

  // QAccessibleInterface
  bool isValid() const override;
  QObject* object() const override { return nullptr; }
  QWindow* window() const override;
  QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
  QAccessibleInterface* parent() const override;
  QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
  QString text(QAccessible::Text kind) const override;
  void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}
  QRect rect() const override;
  QAccessible::Role role() const override;
  QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  // QAccessibleTableCellInterface
  bool isSelected() const override;
  QList<QAccessibleInterface*> columnHeaderCells() const override;
  QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
  int columnIndex() const override;
  int rowIndex() const override;
  int columnExtent() const override { return 1; }
  int rowExtent() const override { return 1; }
  QAccessibleInterface* table() const override { return parent(); }

  // QAccessibleActionInterface: a cell becomes the current one, a node's cell folds or unfolds its row, a caption
  // selects its column.
  QStringList actionNames() const override;
  QString localizedActionName(const QString& name) const override;
  void doAction(const QString& name) override;
  QStringList keyBindingsForAction(const QString& name) const override;

 private:
  QString FoldingText() const;
  void AddCellStates(QAccessible::State& state) const;

  const AccessibleGrid& grid_;
  CellPlace place_;
};

}  // namespace stockbook::qt
