// SPDX-License-Identifier: MIT
#include "com/window/accessible_sheet.h"

#include <memory>

#include "com/automation/guarded.h"
#include "com/automation/text.h"
#include "com/window/accessible_child.h"
#include "com/window/sheet_window.h"
#include "sheet/access/table_access.h"

namespace stockbook::com {
namespace {

using sheet::CellPosition;
using sheet::NodeState;
using sheet::TableAccess;

constexpr const char* kTableName = "库存明细账";

VARIANT NumberVariant(LONG number) {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_I4;
  value.lVal = number;
  return value;
}

bool IsCaptionCell(const CellPosition& cell) { return cell.row < 0; }

std::string NameOfCell(const TableAccess& table, const sheet::Sheet& sheet, const CellPosition& cell) {
  return IsCaptionCell(cell) ? table.Caption(cell.column) : sheet.DisplayText(cell.row, cell.column);
}

const char* ActionOf(const TableAccess& table, const CellPosition& cell) {
  if (IsCaptionCell(cell)) return "选定整列";
  switch (table.NodeAt(cell.row)) {
    case NodeState::kOpen:
      return "折叠";
    case NodeState::kClosed:
      return "展开";
    case NodeState::kNone:
      break;
  }
  return "选定";
}

}  // namespace

template <typename Body>
HRESULT AccessibleSheet::With(const VARIANT& child, Body body) {
  if (window_ == nullptr || window_->handle() == nullptr) return CO_E_OBJNOTCONNECTED;
  if (child.vt != VT_I4) return E_INVALIDARG;
  // A host that hears of what a reader does may drop the control.
  const std::shared_ptr<Window> keep = window_->shared_from_this();
  const ComPtr<IUnknown> pin = window_->Pin();
  HRESULT result = S_OK;
  const HRESULT guarded = Guarded(IID_IAccessible, [&] {
    Cell cell;
    if (child.lVal != CHILDID_SELF) {
      cell = CellOfChild(window_->view(), child.lVal);
      if (!cell) {
        result = E_INVALIDARG;
        return;
      }
    }
    result = body(cell);
  });
  return FAILED(guarded) ? guarded : result;
}

HRESULT AccessibleSheet::QueryInterface(REFIID id, void** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  if (id != IID_IUnknown && id != IID_IDispatch && id != IID_IAccessible) return E_NOINTERFACE;
  *result = static_cast<IAccessible*>(this);
  AddRef();
  return S_OK;
}

ULONG AccessibleSheet::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&references_)); }

ULONG AccessibleSheet::Release() {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

HRESULT AccessibleSheet::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT AccessibleSheet::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  if (info != nullptr) *info = nullptr;
  return E_NOTIMPL;
}

HRESULT AccessibleSheet::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) { return E_NOTIMPL; }

HRESULT AccessibleSheet::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) {
  return E_NOTIMPL;
}

HRESULT AccessibleSheet::get_accParent(IDispatch** parent) {
  if (parent == nullptr) return E_POINTER;
  *parent = nullptr;
  if (window_ == nullptr || window_->handle() == nullptr) return CO_E_OBJNOTCONNECTED;
  return AccessibleObjectFromWindow(window_->handle(), static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                    reinterpret_cast<void**>(parent));
}

HRESULT AccessibleSheet::get_accChildCount(LONG* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return With(NumberVariant(CHILDID_SELF), [&](const Cell&) {
    *count = ChildCountOf(window_->view());
    return S_OK;
  });
}

HRESULT AccessibleSheet::get_accChild(VARIANT child, IDispatch** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  // Cells are numbers, not objects.
  return With(child, [](const Cell& cell) { return cell ? S_FALSE : E_INVALIDARG; });
}

HRESULT AccessibleSheet::get_accName(VARIANT child, BSTR* name) {
  if (name == nullptr) return E_POINTER;
  *name = nullptr;
  return With(child, [&](const Cell& cell) {
    const std::string own = window_->name().empty() ? kTableName : window_->name();
    *name = Bstr(cell ? NameOfCell(TableAccess(window_->view()), window_->sheet(), *cell) : own).Detach();
    return S_OK;
  });
}

HRESULT AccessibleSheet::get_accValue(VARIANT /*child*/, BSTR* value) {
  if (value == nullptr) return E_POINTER;
  *value = nullptr;
  return DISP_E_MEMBERNOTFOUND;
}

// Where a cell is, which its name does not tell.
HRESULT AccessibleSheet::get_accDescription(VARIANT child, BSTR* description) {
  if (description == nullptr) return E_POINTER;
  *description = nullptr;
  return With(child, [&](const Cell& cell) {
    if (!cell || IsCaptionCell(*cell)) return S_FALSE;
    const TableAccess table(window_->view());
    const std::string row = table.RowName(cell->row);
    *description = Bstr(table.Caption(cell->column) + (row.empty() ? "" : "，" + row)).Detach();
    return S_OK;
  });
}

HRESULT AccessibleSheet::get_accRole(VARIANT child, VARIANT* role) {
  if (role == nullptr) return E_POINTER;
  VariantInit(role);
  return With(child, [&](const Cell& cell) {
    const LONG of_cell = cell && IsCaptionCell(*cell) ? ROLE_SYSTEM_COLUMNHEADER : ROLE_SYSTEM_CELL;
    *role = NumberVariant(cell ? of_cell : LONG{ROLE_SYSTEM_TABLE});
    return S_OK;
  });
}

LONG AccessibleSheet::StateOfSheet() const {
  LONG state =
      STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_READONLY | STATE_SYSTEM_MULTISELECTABLE | STATE_SYSTEM_EXTSELECTABLE;
  if (IsWindowVisible(window_->handle()) == 0) state |= STATE_SYSTEM_INVISIBLE;
  if (IsWindowEnabled(window_->handle()) == 0) state |= STATE_SYSTEM_UNAVAILABLE;
  return state | (window_->HasFocus() ? STATE_SYSTEM_FOCUSED : 0);
}

LONG AccessibleSheet::StateOf(const CellPosition& cell) const {
  const TableAccess table(window_->view());
  const bool caption = IsCaptionCell(cell);
  const sheet::Rect area = caption ? table.CaptionArea(cell.column) : table.CellArea(cell.row, cell.column);
  LONG state = STATE_SYSTEM_READONLY | (area.IsEmpty() ? STATE_SYSTEM_OFFSCREEN | STATE_SYSTEM_INVISIBLE : 0);
  if (IsWindowEnabled(window_->handle()) == 0) state |= STATE_SYSTEM_UNAVAILABLE;
  if (caption) return state;
  state |= STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_SELECTABLE;
  const sheet::Selection& selection = window_->view().selection();
  if (selection.Contains(cell.row, cell.column)) state |= STATE_SYSTEM_SELECTED;
  if (window_->HasFocus() && selection.current == cell) state |= STATE_SYSTEM_FOCUSED;
  const NodeState node = table.NodeAt(cell.row);
  if (node == NodeState::kOpen) state |= STATE_SYSTEM_EXPANDED;
  return state | (node == NodeState::kClosed ? STATE_SYSTEM_COLLAPSED : 0);
}

HRESULT AccessibleSheet::get_accState(VARIANT child, VARIANT* state) {
  if (state == nullptr) return E_POINTER;
  VariantInit(state);
  return With(child, [&](const Cell& cell) {
    *state = NumberVariant(cell ? StateOf(*cell) : StateOfSheet());
    return S_OK;
  });
}

HRESULT AccessibleSheet::get_accHelp(VARIANT /*child*/, BSTR* help) {
  if (help == nullptr) return E_POINTER;
  *help = nullptr;
  return DISP_E_MEMBERNOTFOUND;
}

HRESULT AccessibleSheet::get_accHelpTopic(BSTR* file, VARIANT /*child*/, LONG* topic) {
  if (file == nullptr || topic == nullptr) return E_POINTER;
  *file = nullptr;
  *topic = 0;
  return DISP_E_MEMBERNOTFOUND;
}

HRESULT AccessibleSheet::get_accKeyboardShortcut(VARIANT /*child*/, BSTR* keys) {
  if (keys == nullptr) return E_POINTER;
  *keys = nullptr;
  return DISP_E_MEMBERNOTFOUND;
}

HRESULT AccessibleSheet::get_accFocus(VARIANT* child) {
  if (child == nullptr) return E_POINTER;
  VariantInit(child);
  return With(NumberVariant(CHILDID_SELF), [&](const Cell&) {
    if (!window_->HasFocus()) return S_FALSE;
    *child = NumberVariant(ChildIdOf(window_->view(), window_->view().selection().current));
    return S_OK;
  });
}

// The current cell stands for a larger selection: its cells say themselves that they are selected.
HRESULT AccessibleSheet::get_accSelection(VARIANT* children) {
  if (children == nullptr) return E_POINTER;
  VariantInit(children);
  return With(NumberVariant(CHILDID_SELF), [&](const Cell&) {
    const LONG current = ChildIdOf(window_->view(), window_->view().selection().current);
    if (current == CHILDID_SELF) return S_FALSE;
    *children = NumberVariant(current);
    return S_OK;
  });
}

HRESULT AccessibleSheet::get_accDefaultAction(VARIANT child, BSTR* action) {
  if (action == nullptr) return E_POINTER;
  *action = nullptr;
  return With(child, [&](const Cell& cell) {
    if (!cell) return DISP_E_MEMBERNOTFOUND;
    *action = Bstr(ActionOf(TableAccess(window_->view()), *cell)).Detach();
    return S_OK;
  });
}

HRESULT AccessibleSheet::accDoDefaultAction(VARIANT child) {
  return With(child, [&](const Cell& cell) {
    if (!cell) return DISP_E_MEMBERNOTFOUND;
    if (IsWindowEnabled(window_->handle()) == 0) return S_FALSE;
    TableAccess table(window_->view());
    if (IsCaptionCell(*cell)) return table.SelectColumn(cell->column) ? S_OK : S_FALSE;
    if (table.ToggleNode(cell->row)) return S_OK;
    return table.GoTo(cell->row, cell->column) ? S_OK : S_FALSE;
  });
}

HRESULT AccessibleSheet::accSelect(LONG flags, VARIANT child) {
  return With(child, [&](const Cell& cell) {
    if (IsWindowEnabled(window_->handle()) == 0) return S_FALSE;
    if ((flags & SELFLAG_TAKEFOCUS) != 0) SetFocus(window_->handle());
    if (!cell) return flags == SELFLAG_TAKEFOCUS ? S_OK : E_INVALIDARG;
    // A selection is one rectangle: single cells cannot be added to it or taken from it.
    if (IsCaptionCell(*cell) || (flags & ~(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION)) != 0) return E_INVALIDARG;
    return window_ != nullptr && TableAccess(window_->view()).GoTo(cell->row, cell->column) ? S_OK : S_FALSE;
  });
}

HRESULT AccessibleSheet::accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) {
  if (left == nullptr || top == nullptr || width == nullptr || height == nullptr) return E_POINTER;
  *left = *top = *width = *height = 0;
  return With(child, [&](const Cell& cell) {
    const TableAccess table(window_->view());
    sheet::Rect area{0, 0, window_->view().size().width, window_->view().size().height};
    if (cell) area = IsCaptionCell(*cell) ? table.CaptionArea(cell->column) : table.CellArea(cell->row, cell->column);
    if (area.IsEmpty()) return S_FALSE;
    const RECT place = window_->ToScreen(area);
    *left = place.left;
    *top = place.top;
    *width = place.right - place.left;
    *height = place.bottom - place.top;
    return S_OK;
  });
}

// CHILDID_SELF if there is none.
LONG AccessibleSheet::Neighbour(LONG direction, const CellPosition& cell) const {
  const LONG child = ChildIdOf(window_->view(), cell);
  const LONG columns = TableAccess(window_->view()).ColumnCount();
  const bool first = (child - 1) % columns == 0;
  const bool last = child % columns == 0;
  switch (direction) {
    case NAVDIR_UP:
      return child > columns ? child - columns : CHILDID_SELF;
    case NAVDIR_DOWN:
      return child + columns;
    case NAVDIR_LEFT:
      return first ? CHILDID_SELF : child - 1;
    case NAVDIR_RIGHT:
      return last ? CHILDID_SELF : child + 1;
    case NAVDIR_PREVIOUS:
      return child - 1;
    case NAVDIR_NEXT:
      return child + 1;
    default:
      return CHILDID_SELF;
  }
}

HRESULT AccessibleSheet::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
  if (end == nullptr) return E_POINTER;
  VariantInit(end);
  return With(start, [&](const Cell& cell) {
    const LONG count = ChildCountOf(window_->view());
    LONG found = CHILDID_SELF;
    if (cell) found = Neighbour(direction, *cell);
    if (!cell && direction == NAVDIR_FIRSTCHILD && count > 0) found = 1;
    if (!cell && direction == NAVDIR_LASTCHILD) found = count;
    if (found == CHILDID_SELF || found > count) return S_FALSE;
    *end = NumberVariant(found);
    return S_OK;
  });
}

HRESULT AccessibleSheet::accHitTest(LONG left, LONG top, VARIANT* child) {
  if (child == nullptr) return E_POINTER;
  VariantInit(child);
  return With(NumberVariant(CHILDID_SELF), [&](const Cell&) {
    const std::optional<sheet::Point> point = window_->FromScreen({left, top});
    if (!point) return S_FALSE;
    const Cell at = TableAccess(window_->view()).CellAt(*point);
    *child = NumberVariant(at ? ChildIdOf(window_->view(), *at) : LONG{CHILDID_SELF});
    return S_OK;
  });
}

HRESULT AccessibleSheet::put_accName(VARIANT /*child*/, BSTR /*name*/) { return DISP_E_MEMBERNOTFOUND; }

HRESULT AccessibleSheet::put_accValue(VARIANT /*child*/, BSTR /*value*/) { return DISP_E_MEMBERNOTFOUND; }

}  // namespace stockbook::com
