// SPDX-License-Identifier: MIT
#include "com/grid/place_members.h"

#include <windows.h>

#include <algorithm>

namespace stockbook::com {
namespace {

// Writes a number through an argument that the host passed by reference.
void WriteNumber(VARIANT& argument, int number) {
  VARIANT* target = &argument;
  if (target->vt == (VT_BYREF | VT_VARIANT)) target = target->pvarVal;
  switch (target->vt) {
    case VT_BYREF | VT_I4:
      *target->plVal = number;
      return;
    case VT_BYREF | VT_I2:
      *target->piVal = static_cast<int16_t>(std::clamp(number, -32768, 32767));
      return;
    default:
      // A script's variable is a variant, which takes the number.
      if (target == &argument)
        throw AutomationError(MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 13), "类型不匹配：参数须按引用传递。");
      VariantClear(target);
      target->vt = VT_I4;
      target->lVal = number;
  }
}

Variant GetSelection(const MemberCall& call) {
  const sheet::GridSheet& grid = call.grid();
  const auto [row1, row2] = std::minmax(grid.Row(), grid.RowSel());
  const auto [column1, column2] = std::minmax(grid.Col(), grid.ColSel());
  const int corners[] = {row1, column1, row2, column2};
  for (UINT index = 0; index < 4; ++index) WriteNumber(call[index], corners[index]);
  return {};
}

Variant SelectCells(const MemberCall& call) {
  const int row = call.Row(0);
  const int column = call.Column(1);
  const int row_sel = call.Has(2) ? call.Row(2) : row;
  const int column_sel = call.Has(3) ? call.Column(3) : column;
  call.grid().SelectRange(row, column, row_sel, column_sel);
  return {};
}

// A grid without a current cell gets one, in the first row or column that scrolls.
void SelectEnd(const MemberCall& call, int row_sel, int column_sel) {
  sheet::GridSheet& grid = call.grid();
  const int row = grid.Row() < 0 ? row_sel : grid.Row();
  const int column = grid.Col() < 0 ? column_sel : grid.Col();
  grid.SelectRange(row, column, row_sel, column_sel);
}

constexpr LateMember kPlaces[] = {
    {L"Row", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().Row()}); },
     [](const MemberCall& call) {
       call.grid().Select(call.RowValue(), std::max(call.grid().Col(), call.grid().FixedCols()));
     }},
    {L"Col", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().Col()}); },
     [](const MemberCall& call) {
       call.grid().Select(std::max(call.grid().Row(), call.grid().FixedRows()), call.ColumnValue());
     }},
    {L"RowSel", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().RowSel()}); },
     [](const MemberCall& call) {
       SelectEnd(call, call.RowValue(), std::max(call.grid().ColSel(), call.grid().FixedCols()));
     }},
    {L"ColSel", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().ColSel()}); },
     [](const MemberCall& call) {
       SelectEnd(call, std::max(call.grid().RowSel(), call.grid().FixedRows()), call.ColumnValue());
     }},
    {L"Select", 2, 4, SelectCells, nullptr},
    {L"GetSelection", 4, 4, GetSelection, nullptr},
    {L"TopRow", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().TopRow()}); },
     [](const MemberCall& call) { call.grid().SetTopRow(call.RowValue()); }},
    {L"BottomRow", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().BottomRow()}); }, nullptr},
    {L"LeftCol", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().LeftCol()}); },
     [](const MemberCall& call) { call.grid().SetLeftCol(call.ColumnValue()); }},
    {L"RowIsVisible", 1, 1, [](const MemberCall& call) { return Variant(call.grid().RowIsVisible(call.Row(0))); },
     nullptr},
    {L"MouseRow", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().MouseRow()}); }, nullptr},
    {L"MouseCol", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().MouseCol()}); }, nullptr},
    {L"Redraw", 0, 0, [](const MemberCall& call) { return Variant(call.grid().Redraw()); },
     [](const MemberCall& call) { call.grid().SetRedraw(ToBoolean(call.Value())); }},
    {L"Tag", 0, 0, [](const MemberCall& call) { return Variant(call.grid().Tag()); },
     [](const MemberCall& call) { call.grid().SetTag(ToText(call.Value())); }},
    {L"MousePointer", 0, 0, [](const MemberCall& call) { return Variant(static_cast<int16_t>(call.grid().Pointer())); },
     [](const MemberCall& call) {
       call.grid().SetPointer(static_cast<platform::MousePointer>(call.Code("MousePointer", 15)));
     }},

    {L"IsSubtotal", 1, 1, [](const MemberCall& call) { return Variant(call.grid().IsSubtotal(call.Row(0))); },
     [](const MemberCall& call) { call.grid().SetIsSubtotal(call.Row(0), ToBoolean(call.Value())); }},
    {L"RowOutlineLevel", 1, 1,
     [](const MemberCall& call) { return Variant(int32_t{call.grid().RowOutlineLevel(call.Row(0))}); },
     [](const MemberCall& call) { call.grid().SetRowOutlineLevel(call.Row(0), ToLong(call.Value())); }},
    {L"IsCollapsed", 1, 1, [](const MemberCall& call) { return Variant(call.grid().IsCollapsed(call.Row(0))); },
     [](const MemberCall& call) { call.grid().SetIsCollapsed(call.Row(0), ToBoolean(call.Value())); }},
    {L"CollapseAll", 0, 0,
     [](const MemberCall& call) {
       call.grid().CollapseAll();
       return Variant();
     },
     nullptr},
    {L"ExpandAll", 0, 0,
     [](const MemberCall& call) {
       call.grid().ExpandAll();
       return Variant();
     },
     nullptr},
    {L"OutlineCol", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().OutlineCol()}); },
     [](const MemberCall& call) { call.grid().SetOutlineCol(ToLong(call.Value()) == -1 ? -1 : call.ColumnValue()); }},
};

}  // namespace

std::span<const LateMember> PlaceMembers() { return kPlaces; }

}  // namespace stockbook::com
