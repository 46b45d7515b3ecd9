// SPDX-License-Identifier: MIT
#include "com/grid/cell_members.h"

#include "com/automation/colour.h"

namespace stockbook::com {
namespace {

// -1 means all rows, those to come included.
int RowOrAll(const MemberCall& call) { return ToLong(call[0]) == -1 ? -1 : call.Row(0); }

platform::CellRange OneCell(const MemberCall& call) {
  const int row = call.Row(0);
  const int column = call.Column(1);
  return {row, column, row + 1, column + 1};
}

constexpr LateMember kCells[] = {
    {L"Rows", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().Rows()}); },
     [](const MemberCall& call) { call.grid().SetRows(ToLong(call.Value())); }},
    {L"FixedRows", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().FixedRows()}); },
     [](const MemberCall& call) { call.grid().SetFixedRows(ToLong(call.Value())); }},
    {L"Cols", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().Cols()}); },
     [](const MemberCall& call) { call.grid().SetCols(ToLong(call.Value())); }},
    {L"FixedCols", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().FixedCols()}); },
     [](const MemberCall& call) { call.grid().SetFixedCols(ToLong(call.Value())); }},
    {L"FrozenCols", 0, 0, [](const MemberCall& call) { return Variant(int32_t{call.grid().FrozenCols()}); },
     [](const MemberCall& call) { call.grid().SetFrozenCols(ToLong(call.Value())); }},

    {L"TextMatrix", 2, 2,
     [](const MemberCall& call) { return Variant(call.grid().TextMatrix(call.Row(0), call.Column(1))); },
     [](const MemberCall& call) { call.grid().SetTextMatrix(call.Row(0), call.Column(1), ToText(call.Value())); }},
    {L"ValueMatrix", 2, 2,
     [](const MemberCall& call) { return Variant(call.grid().ValueMatrix(call.Row(0), call.Column(1))); }, nullptr},
    {L"DisplayText", 2, 2,
     [](const MemberCall& call) { return Variant(call.grid().DisplayText(call.Row(0), call.Column(1))); }, nullptr},
    {L"CellData", 2, 2,
     [](const MemberCall& call) { return Variant(call.grid().CellData(call.Row(0), call.Column(1))); },
     [](const MemberCall& call) { call.grid().SetCellData(call.Row(0), call.Column(1), ToValue(call.Value())); }},
    {L"CellBackColor", 2, 2,
     [](const MemberCall& call) {
       return Variant(static_cast<int32_t>(call.grid().CellBackColor(call.Row(0), call.Column(1))));
     },
     [](const MemberCall& call) {
       const platform::CellRange cell = OneCell(call);
       call.grid().SetCellColors(cell, PlainColour(ToBits(call.Value())),
                                 call.grid().CellForeColor(cell.row1, cell.column1));
     }},
    {L"CellForeColor", 2, 2,
     [](const MemberCall& call) {
       return Variant(static_cast<int32_t>(call.grid().CellForeColor(call.Row(0), call.Column(1))));
     },
     [](const MemberCall& call) {
       const platform::CellRange cell = OneCell(call);
       call.grid().SetCellColors(cell, call.grid().CellBackColor(cell.row1, cell.column1),
                                 PlainColour(ToBits(call.Value())));
     }},
    {L"CellPicture", 2, 2,
     [](const MemberCall& call) {
       return Variant(call.pictures().ObjectOf(call.grid().CellPicture(call.Row(0), call.Column(1))).get());
     },
     [](const MemberCall& call) {
       const platform::CellRange cell = OneCell(call);
       call.grid().SetCellPicture(cell, call.pictures().PictureOf(ToDispatch(call.Value()).get()),
                                  call.grid().CellPictureAlignment(cell.row1, cell.column1));
     }},

    {L"ColKey", 1, 1, [](const MemberCall& call) { return Variant(call.grid().ColKey(call.Column(0))); },
     [](const MemberCall& call) { call.grid().SetColKey(call.Column(0), ToText(call.Value())); }},
    {L"ColIndex", 1, 1, [](const MemberCall& call) { return Variant(int32_t{call.grid().ColIndex(ToText(call[0]))}); },
     nullptr},
    {L"ColPosition", 1, 1, [](const MemberCall& call) { return Variant(int32_t{call.Column(0)}); },
     [](const MemberCall& call) { call.grid().SetColPosition(call.Column(0), call.ColumnValue()); }},
    {L"ColHidden", 1, 1, [](const MemberCall& call) { return Variant(call.grid().ColHidden(call.Column(0))); },
     [](const MemberCall& call) { call.grid().SetColHidden(call.Column(0), ToBoolean(call.Value())); }},
    {L"ColWidth", 1, 1, [](const MemberCall& call) { return Variant(int32_t{call.grid().ColWidth(call.Column(0))}); },
     [](const MemberCall& call) { call.grid().SetColWidth(call.Column(0), ToLong(call.Value())); }},
    {L"ColFormat", 1, 1, [](const MemberCall& call) { return Variant(call.grid().ColFormat(call.Column(0))); },
     [](const MemberCall& call) { call.grid().SetColFormat(call.Column(0), ToText(call.Value())); }},
    {L"ColDataType", 1, 1,
     [](const MemberCall& call) { return Variant(static_cast<int16_t>(call.grid().ColDataType(call.Column(0)))); },
     nullptr},
    {L"ColAlignment", 1, 1,
     [](const MemberCall& call) { return Variant(static_cast<int16_t>(call.grid().ColAlignment(call.Column(0)))); },
     [](const MemberCall& call) {
       call.grid().SetColAlignment(call.Column(0), static_cast<platform::Alignment>(call.Code("ColAlignment", 9)));
     }},

    {L"RowHidden", 1, 1, [](const MemberCall& call) { return Variant(call.grid().RowHidden(call.Row(0))); },
     [](const MemberCall& call) { call.grid().SetRowHidden(call.Row(0), ToBoolean(call.Value())); }},
    {L"RowHeight", 1, 1, [](const MemberCall& call) { return Variant(int32_t{call.grid().RowHeight(call.Row(0))}); },
     [](const MemberCall& call) { call.grid().SetRowHeight(RowOrAll(call), ToLong(call.Value())); }},
    {L"RowHeightMin", 0, 0, [](const MemberCall& call) { return Variant(call.grid().RowHeightMin()); },
     [](const MemberCall& call) { call.grid().SetRowHeightMin(ToSingle(call.Value())); }},
    {L"RowHeightMax", 0, 0, [](const MemberCall& call) { return Variant(call.grid().RowHeightMax()); },
     [](const MemberCall& call) { call.grid().SetRowHeightMax(ToSingle(call.Value())); }},
    {L"AddItem", 1, 2,
     [](const MemberCall& call) {
       call.grid().AddItem(ToText(call[0]), call.Has(1) ? ToLong(call[1]) : call.grid().Rows());
       return Variant();
     },
     nullptr},
    {L"RemoveItem", 1, 1,
     [](const MemberCall& call) {
       call.grid().RemoveItem(call.Row(0));
       return Variant();
     },
     nullptr},
};

}  // namespace

std::span<const LateMember> CellMembers() { return kCells; }

}  // namespace stockbook::com
