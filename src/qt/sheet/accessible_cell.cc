// SPDX-License-Identifier: MIT
#include "qt/sheet/accessible_cell.h"

#include <algorithm>

#include "qt/sheet/accessible_grid.h"
#include "qt/sheet/text.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/sheet/contents/sheet.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::qt {

using sheet::NodeState;

bool AccessibleCell::isValid() const {
  const SheetWidget* view = grid_.view();
  // A widget whose sheet has gone shows another one, whose revisions begin anew.
  return view != nullptr && view->sheet().Revision() == place_.revision &&
         view->sheet().HasRow(std::max(place_.row, 0)) && view->sheet().HasColumn(place_.column);
}

QWindow* AccessibleCell::window() const { return grid_.window(); }

QAccessibleInterface* AccessibleCell::parent() const { return const_cast<AccessibleGrid*>(&grid_); }

QString AccessibleCell::text(QAccessible::Text kind) const {
  if (!isValid()) return {};
  if (kind == QAccessible::Description) return FoldingText();
  if (kind != QAccessible::Name) return {};
  if (place_.IsCaption()) return ToQString(grid_.Table().Caption(place_.column));
  return ToQString(grid_.view()->sheet().DisplayText(place_.row, place_.column));
}

QString AccessibleCell::FoldingText() const {
  const NodeState node = place_.IsCaption() ? NodeState::kNone : grid_.Table().NodeAt(place_.row);
  if (node == NodeState::kNone) return {};
  return node == NodeState::kOpen ? QStringLiteral("已展开") : QStringLiteral("已折叠");
}

QRect AccessibleCell::rect() const {
  if (!isValid() || columnIndex() < 0) return {};
  const sheet::TableAccess table = grid_.Table();
  const sheet::Rect area =
      place_.IsCaption() ? table.CaptionArea(place_.column) : table.CellArea(place_.row, place_.column);
  return area.IsEmpty() ? QRect() : grid_.view()->ToScreen(area);
}

QAccessible::Role AccessibleCell::role() const {
  return place_.IsCaption() ? QAccessible::ColumnHeader : QAccessible::Cell;
}

QAccessible::State AccessibleCell::state() const {
  QAccessible::State state;
  if (!isValid()) {
    state.invalid = true;
    return state;
  }
  const bool in_table = columnIndex() >= 0 && (place_.IsCaption() || rowIndex() >= 0);
  state.disabled = !grid_.view()->isEnabled();
  state.invisible = !in_table || !grid_.view()->isVisible();
  state.offscreen = rect().isEmpty();
  if (!place_.IsCaption()) AddCellStates(state);
  return state;
}

void AccessibleCell::AddCellStates(QAccessible::State& state) const {
  const SheetWidget& view = *grid_.view();
  state.readOnly = true;
  state.focusable = true;
  state.selectable = true;
  state.selected = isSelected();
  state.focused = view.hasFocus() && view.view().selection().current == sheet::CellPosition{place_.row, place_.column};
  const NodeState node = grid_.Table().NodeAt(place_.row);
  state.expandable = node != NodeState::kNone;
  state.expanded = node == NodeState::kOpen;
  state.collapsed = node == NodeState::kClosed;
}

void* AccessibleCell::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TableCellInterface) return static_cast<QAccessibleTableCellInterface*>(this);
  if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
  return nullptr;
}

bool AccessibleCell::isSelected() const {
  return isValid() && !place_.IsCaption() && grid_.view()->view().selection().Contains(place_.row, place_.column);
}

QList<QAccessibleInterface*> AccessibleCell::columnHeaderCells() const {
  if (!isValid() || place_.IsCaption() || !grid_.Table().HasCaptions()) return {};
  return {grid_.CellOf(-1, place_.column)};
}

int AccessibleCell::columnIndex() const { return isValid() ? grid_.Table().IndexOfColumn(place_.column) : -1; }

int AccessibleCell::rowIndex() const {
  return isValid() && !place_.IsCaption() ? grid_.Table().IndexOfRow(place_.row) : -1;
}

QStringList AccessibleCell::actionNames() const {
  if (!isValid() || !grid_.view()->isEnabled()) return {};
  if (place_.IsCaption()) return {pressAction()};
  QStringList names{setFocusAction()};
  if (grid_.Table().NodeAt(place_.row) != NodeState::kNone) names.prepend(toggleAction());
  return names;
}

QString AccessibleCell::localizedActionName(const QString& name) const {
  if (name == pressAction()) return QStringLiteral("选定整列");
  if (name == toggleAction() && isValid() && !place_.IsCaption())
    return grid_.Table().NodeAt(place_.row) == NodeState::kOpen ? QStringLiteral("折叠") : QStringLiteral("展开");
  return QAccessibleActionInterface::localizedActionName(name);
}

void AccessibleCell::doAction(const QString& name) {
  if (!actionNames().contains(name)) return;
  sheet::TableAccess table = grid_.Table();
  if (name == pressAction()) {
    table.SelectColumn(place_.column);
  } else if (name == toggleAction()) {
    table.ToggleNode(place_.row);
  } else {
    grid_.view()->setFocus(Qt::OtherFocusReason);
    table.GoTo(place_.row, place_.column);
  }
}

QStringList AccessibleCell::keyBindingsForAction(const QString& name) const {
  if (name != toggleAction() || !actionNames().contains(name)) return {};
  return {grid_.Table().NodeAt(place_.row) == NodeState::kOpen ? QStringLiteral("-") : QStringLiteral("+")};
}

}  // namespace stockbook::qt
