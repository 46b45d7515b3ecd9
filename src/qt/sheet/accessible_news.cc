// SPDX-License-Identifier: MIT
#include "qt/sheet/accessible_news.h"

#include <utility>

#include "qt/sheet/accessible_grid.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/sheet/contents/sheet.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::qt {
namespace {

using ModelChange = QAccessibleTableModelChangeEvent;

// The cell's child index in the view; -1, which stands for the view itself, if it is not in the table.
int ChildOf(SheetWidget& view, const sheet::CellPosition& cell) {
  const auto* grid = dynamic_cast<AccessibleGrid*>(QAccessible::queryAccessibleInterface(&view));
  return grid == nullptr || cell.row < 0 ? -1 : grid->ChildIndex(cell.row, cell.column);
}

}  // namespace

AccessibleNews::AccessibleNews(SheetWidget& view, QAccessible::UpdateHandler hand_over)
    : view_(view), hand_over_(hand_over), active_(QAccessible::isActive()) {
  QAccessible::installActivationObserver(this);
}

AccessibleNews::~AccessibleNews() { QAccessible::removeActivationObserver(this); }

void AccessibleNews::accessibilityActiveChanged(bool active) {
  active_ = active;
  told_ = Now();
  told_selection_ = view_.view().selection();
  told_folding_ = FoldingNow();
}

void AccessibleNews::Send(QAccessibleEvent& event, int child) {
  event.setChild(child);
  hand_over_(&event);
}

void AccessibleNews::Send(QAccessible::Event type, int child) {
  QAccessibleEvent event(&view_, type);
  Send(event, child);
}

AccessibleNews::Table AccessibleNews::Now() const {
  const sheet::TableAccess table(view_.view());
  return {view_.sheet().Revision(), table.RowCount(), table.ColumnCount()};
}

AccessibleNews::Folding AccessibleNews::FoldingNow() const {
  const int row = view_.view().selection().current.row;
  if (!view_.sheet().HasRow(row)) return {};
  return {row, sheet::TableAccess(view_.view()).NodeAt(row)};
}

void AccessibleNews::Tell() {
  if (!active_) return;
  const Table now = Now();
  const bool reset = std::exchange(told_, now) != now;
  if (reset) {
    ModelChange event(&view_, ModelChange::ModelReset);
    hand_over_(&event);
  }
  if (reset || view_.view().selection() != told_selection_) TellSelection();
  TellFolding();
}

void AccessibleNews::TellSelection() {
  const sheet::Selection now = view_.view().selection();
  const sheet::Selection before = std::exchange(told_selection_, now);
  if (now.current != before.current) TellFocus();
  if (now.IsRange() || before.IsRange()) {
    Send(QAccessible::SelectionWithin, -1);
  } else if (now.current != before.current) {
    Send(QAccessible::Selection, ChildOf(view_, now.current));
  }
}

// The toolkit's bridge passes on no state of being open or closed, but it does pass on descriptions.
void AccessibleNews::TellFolding() {
  const Folding now = FoldingNow();
  const Folding before = std::exchange(told_folding_, now);
  const bool folds = now.node != sheet::NodeState::kNone && before.node != sheet::NodeState::kNone;
  if (now.row != before.row || now == before || !folds) return;
  Send(QAccessible::DescriptionChanged, ChildOf(view_, view_.view().selection().current));
}

void AccessibleNews::TellFocus() {
  if (!active_ || !view_.hasFocus()) return;
  Send(QAccessible::Focus, ChildOf(view_, view_.view().selection().current));
}

void AccessibleNews::TellNode(int row) {
  if (!active_) return;
  const Table now = Now();
  const Table before = std::exchange(told_, now);
  const sheet::TableAccess table(view_.view());
  const sheet::CellPosition current = view_.view().selection().current;
  const int tree = view_.sheet().OutlineCol();
  const bool on_node = current.row == row;
  QAccessible::State changed;
  changed.expanded = true;
  changed.collapsed = true;
  QAccessibleStateChangeEvent state(&view_, changed);
  Send(state, ChildOf(view_, {row, on_node ? current.column : tree}));
  TellFolding();
  const int rows = now.rows - before.rows;
  if (rows == 0) return;
  ModelChange event(&view_, rows > 0 ? ModelChange::RowsInserted : ModelChange::RowsRemoved);
  event.setFirstRow(table.IndexOfRow(row) + 1);
  event.setLastRow(table.IndexOfRow(row) + (rows > 0 ? rows : -rows));
  event.setFirstColumn(0);
  event.setLastColumn(now.columns - 1);
  hand_over_(&event);
}

}  // namespace stockbook::qt
