// SPDX-License-Identifier: MIT
#include "qt/sheet/accessible_grid.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "qt/sheet/text.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/sheet/contents/sheet.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::qt {
namespace {

// More than a screen reader asks for between two changes of the window. Lists stay well below, so that building one
// does not drop its own cells.
constexpr size_t kMostCells = 4096;
constexpr int kMostListed = 512;

int Clamped(int64_t count) { return static_cast<int>(std::min<int64_t>(count, std::numeric_limits<int>::max())); }

// A new interface for the toolkit's cache, which owns it.
QAccessibleInterface* MakeInterface(const QString& class_name, QObject* object) {
  if (class_name != QLatin1String(SheetWidget::staticMetaObject.className())) return nullptr;
  auto* view = qobject_cast<SheetWidget*>(object);
  return view == nullptr ? nullptr : new AccessibleGrid(view);
}

QList<int> ListOf(const sheet::IndexSpan& span) {
  QList<int> indexes;
  for (int index = span.first; index < span.last && indexes.size() < kMostListed; ++index) indexes.append(index);
  return indexes;
}

}  // namespace

AccessibleGrid::AccessibleGrid(SheetWidget* view) : QAccessibleWidget(view, QAccessible::Table) {}

AccessibleGrid::~AccessibleGrid() {
  for (const Known& known : recent_) QAccessible::deleteAccessibleInterface(known.id);
}

void AccessibleGrid::Install() { QAccessible::installFactory(&MakeInterface); }

SheetWidget* AccessibleGrid::view() const { return qobject_cast<SheetWidget*>(object()); }

sheet::TableAccess AccessibleGrid::Table() const { return sheet::TableAccess(view()->view()); }

void AccessibleGrid::ForgetOutlived() const {
  if (!cells_.empty() && cells_.begin()->first.revision != view()->sheet().Revision()) cells_.clear();
}

QAccessibleInterface* AccessibleGrid::CellOf(int row, int column) const {
  if (view() == nullptr) return nullptr;
  const sheet::Sheet& sheet = view()->sheet();
  if (row >= sheet.Rows() || column < 0 || column >= sheet.Cols()) return nullptr;
  ForgetOutlived();
  const CellPlace place{sheet.Revision(), std::max(row, -1), column};
  if (const auto found = cells_.find(place); found != cells_.end()) {
    recent_.splice(recent_.begin(), recent_, found->second);
    return QAccessible::accessibleInterface(found->second->id);
  }
  auto* cell = new AccessibleCell(*this, place);
  recent_.push_front({place, QAccessible::registerAccessibleInterface(cell)});
  cells_.emplace(place, recent_.begin());
  if (recent_.size() > kMostCells) {
    const Known oldest = recent_.back();
    recent_.pop_back();
    cells_.erase(oldest.place);
    QAccessible::deleteAccessibleInterface(oldest.id);
  }
  return cell;
}

int AccessibleGrid::ChildIndex(int row, int column) const {
  if (view() == nullptr) return -1;
  const sheet::TableAccess table = Table();
  const int at = table.IndexOfColumn(column);
  if (at < 0) return -1;
  if (row < 0) return table.HasCaptions() ? at : -1;
  const int64_t line = table.IndexOfRow(row);
  if (line < 0) return -1;
  return Clamped((line + (table.HasCaptions() ? 1 : 0)) * table.ColumnCount() + at);
}

int AccessibleGrid::childCount() const {
  if (view() == nullptr) return 0;
  const sheet::TableAccess table = Table();
  return Clamped((int64_t{table.RowCount()} + (table.HasCaptions() ? 1 : 0)) * table.ColumnCount());
}

QAccessibleInterface* AccessibleGrid::child(int index) const {
  if (index < 0 || index >= childCount()) return nullptr;
  const sheet::TableAccess table = Table();
  const int columns = table.ColumnCount();
  const int line = index / columns - (table.HasCaptions() ? 1 : 0);
  return CellOf(line < 0 ? -1 : table.RowOf(line), table.ColumnOf(index % columns));
}

int AccessibleGrid::indexOfChild(const QAccessibleInterface* child) const {
  const auto* cell = dynamic_cast<const AccessibleCell*>(child);
  if (cell == nullptr || cell->parent() != this || !cell->isValid()) return -1;
  return ChildIndex(cell->place().row, cell->place().column);
}

QAccessibleInterface* AccessibleGrid::childAt(int x, int y) const {
  if (view() == nullptr) return nullptr;
  const std::optional<sheet::Point> point = view()->FromScreen({x, y});
  const auto cell = point ? Table().CellAt(*point) : std::nullopt;
  return cell ? CellOf(cell->row, cell->column) : nullptr;
}

QAccessibleInterface* AccessibleGrid::focusChild() const {
  if (view() == nullptr) return nullptr;
  const sheet::CellPosition current = view()->view().selection().current;
  return current.row >= 0 && ChildIndex(current.row, current.column) >= 0 ? CellOf(current.row, current.column)
                                                                          : nullptr;
}

QString AccessibleGrid::text(QAccessible::Text kind) const {
  const QString text = QAccessibleWidget::text(kind);
  return kind == QAccessible::Name && text.isEmpty() ? QStringLiteral("库存明细账") : text;
}

QAccessible::State AccessibleGrid::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  state.multiSelectable = true;
  state.extSelectable = true;
  state.readOnly = true;
  return state;
}

void* AccessibleGrid::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TableInterface) return static_cast<QAccessibleTableInterface*>(this);
  return QAccessibleWidget::interface_cast(type);
}

QAccessibleInterface* AccessibleGrid::cellAt(int row, int column) const {
  if (view() == nullptr) return nullptr;
  const sheet::TableAccess table = Table();
  const int sheet_row = table.RowOf(row);
  return sheet_row < 0 ? nullptr : CellOf(sheet_row, table.ColumnOf(column));
}

int AccessibleGrid::columnCount() const { return view() == nullptr ? 0 : Table().ColumnCount(); }

int AccessibleGrid::rowCount() const { return view() == nullptr ? 0 : Table().RowCount(); }

QString AccessibleGrid::columnDescription(int column) const {
  const int sheet_column = view() == nullptr ? -1 : Table().ColumnOf(column);
  return sheet_column < 0 ? QString() : ToQString(Table().Caption(sheet_column));
}

QString AccessibleGrid::rowDescription(int row) const {
  const int sheet_row = view() == nullptr ? -1 : Table().RowOf(row);
  return sheet_row < 0 ? QString() : ToQString(Table().RowName(sheet_row));
}

int AccessibleGrid::selectedCellCount() const {
  if (view() == nullptr) return 0;
  return Clamped(int64_t{Table().SelectedRows().Count()} * Table().SelectedColumns().Count());
}

int AccessibleGrid::selectedColumnCount() const {
  return view() != nullptr && Table().SelectsWholeColumns() ? Table().SelectedColumns().Count() : 0;
}

int AccessibleGrid::selectedRowCount() const {
  return view() != nullptr && Table().SelectsWholeRows() ? Table().SelectedRows().Count() : 0;
}

QList<QAccessibleInterface*> AccessibleGrid::selectedCells() const {
  QList<QAccessibleInterface*> cells;
  if (view() == nullptr) return cells;
  const sheet::IndexSpan columns = Table().SelectedColumns();
  for (const int row : ListOf(Table().SelectedRows())) {
    for (int column = columns.first; column < columns.last && cells.size() < kMostListed; ++column) {
      cells.append(cellAt(row, column));
    }
  }
  return cells;
}

QList<int> AccessibleGrid::selectedColumns() const {
  return selectedColumnCount() > 0 ? ListOf(Table().SelectedColumns()) : QList<int>();
}

QList<int> AccessibleGrid::selectedRows() const {
  return selectedRowCount() > 0 ? ListOf(Table().SelectedRows()) : QList<int>();
}

bool AccessibleGrid::isColumnSelected(int column) const {
  if (selectedColumnCount() == 0) return false;
  const sheet::IndexSpan columns = Table().SelectedColumns();
  return column >= columns.first && column < columns.last;
}

bool AccessibleGrid::isRowSelected(int row) const {
  if (selectedRowCount() == 0) return false;
  const sheet::IndexSpan rows = Table().SelectedRows();
  return row >= rows.first && row < rows.last;
}

bool AccessibleGrid::selectRow(int row) {
  return view() != nullptr && view()->isEnabled() && Table().SelectRow(Table().RowOf(row));
}

bool AccessibleGrid::selectColumn(int column) {
  return view() != nullptr && view()->isEnabled() && Table().SelectColumn(Table().ColumnOf(column));
}

bool AccessibleGrid::unselectRow(int row) {
  return isRowSelected(row) && selectedRowCount() == 1 && view()->isEnabled() && Table().SelectCurrentAlone();
}

bool AccessibleGrid::unselectColumn(int column) {
  return isColumnSelected(column) && selectedColumnCount() == 1 && view()->isEnabled() && Table().SelectCurrentAlone();
}

}  // namespace stockbook::qt
