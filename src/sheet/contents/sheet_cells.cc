// SPDX-License-Identifier: MIT
// Sheet as platform::GridCells.
#include <utility>

#include "sheet/contents/kept_sheet.h"
#include "sheet/outline/row_states.h"
#include "sheet/store/store.h"
#include "stockbook/sheet/contents/sheet.h"

namespace stockbook::sheet {

using platform::Alignment;
using platform::CellRange;
using platform::Colour;
using platform::GridColour;
using platform::PictureAlignment;
using platform::PictureRef;

std::string Sheet::TextMatrix(int row, int column) const {
  return HasCell(row, column) ? store_.TextAt(row, column) : std::string();
}

void Sheet::SetTextMatrix(int row, int column, std::string_view text) {
  CheckCell("TextMatrix", row, column);
  Renew(revisions_.texts);
  store_.SetText(row, column, text);
  CellsChanged({row, column, row + 1, column + 1});
}

double Sheet::ValueMatrix(int row, int column) const {
  return HasCell(row, column) ? store_.columns().At(column).NumberOf(store_.order().IdAt(row)) : 0;
}

base::Value Sheet::CellData(int row, int column) const {
  return HasCell(row, column) ? store_.columns().At(column).DataOf(store_.order().IdAt(row)) : base::Value();
}

void Sheet::SetCellData(int row, int column, base::Value data) {
  CheckCell("CellData", row, column);
  store_.columns().At(column).SetData(store_.order().IdAt(row), std::move(data));
}

std::string Sheet::DisplayText(int row, int column) const {
  if (!HasCell(row, column)) return {};
  // Captions are texts, whatever the type of the column.
  return row < fixed_rows_ ? store_.TextAt(row, column) : store_.DisplayAt(row, column);
}

std::string Sheet::FormatValue(int column, const base::Value& value) const {
  std::string text;
  const bool formatted =
      HasColumn(column) && store_.columns().At(column).format().Append(ColDataType(column), value, text);
  return formatted ? text : value.Text();
}

PictureRef Sheet::CellPicture(int row, int column) const {
  PictureAlignment alignment{};
  return HasCell(row, column) ? store_.PictureAt(store_.columns().At(column), store_.order().IdAt(row), alignment)
                              : nullptr;
}

PictureAlignment Sheet::CellPictureAlignment(int row, int column) const {
  PictureAlignment alignment{};
  if (HasCell(row, column)) store_.PictureAt(store_.columns().At(column), store_.order().IdAt(row), alignment);
  return alignment;
}

void Sheet::SetCellPicture(const CellRange& range, const PictureRef& picture, PictureAlignment alignment) {
  if (!CheckRange("CellPicture", range)) return;
  store_.ChangeStyles(range, [&](CellStyle& style) {
    style.picture = picture;
    style.picture_alignment = alignment;
  });
  CellsChanged(range);
}

void Sheet::SetCellAlignment(const CellRange& range, Alignment alignment) {
  if (!CheckRange("CellAlignment", range)) return;
  store_.ChangeStyles(range, [&](CellStyle& style) { style.alignment = alignment; });
  CellsChanged(range);
}

std::string Sheet::CellFontName(int row, int column) const {
  if (!HasCell(row, column)) return appearance_.font.name;
  const CellStyle& style = store_.StyleAt(store_.columns().At(column), store_.order().IdAt(row));
  return style.font_name.empty() ? appearance_.font.name : style.font_name;
}

void Sheet::SetCellFontName(const CellRange& range, std::string_view name) {
  if (!CheckRange("CellFontName", range)) return;
  store_.ChangeStyles(range, [&](CellStyle& style) { style.font_name = name; });
  CellsChanged(range);
}

Colour Sheet::CellBackColor(int row, int column) const {
  if (!HasCell(row, column)) return appearance_.Of(GridColour::kBackColor);
  const CellStyle& style = store_.StyleAt(store_.columns().At(column), store_.order().IdAt(row));
  if (style.back) return *style.back;
  const CellPart part = PartOf(row, column);
  return states_.At(row).subtotal ? appearance_.NodeBackOf(part) : appearance_.BackOf(part);
}

Colour Sheet::CellForeColor(int row, int column) const {
  if (!HasCell(row, column)) return appearance_.Of(GridColour::kForeColor);
  const CellStyle& style = store_.StyleAt(store_.columns().At(column), store_.order().IdAt(row));
  return style.fore ? *style.fore : appearance_.ForeOf(PartOf(row, column));
}

void Sheet::SetCellColors(const CellRange& range, Colour back, Colour fore) {
  if (!CheckRange("CellColors", range)) return;
  if (range.row2 - range.row1 > 1) {
    store_.ChangeStyles(range, [&](CellStyle& style) {
      style.back = back;
      style.fore = fore;
    });
    CellsChanged(range);
    return;
  }
  // Cells of a single row that are given their default colours follow the grid's colours again.
  const bool node = states_.At(range.row1).subtotal;
  for (int column = range.column1; column < range.column2; ++column) {
    const CellPart part = PartOf(range.row1, column);
    const bool own_back = back == (node ? appearance_.NodeBackOf(part) : appearance_.BackOf(part));
    const bool own_fore = fore == appearance_.ForeOf(part);
    store_.ChangeStyles({range.row1, column, range.row2, column + 1}, [&](CellStyle& style) {
      style.back = own_back ? std::nullopt : std::optional(back);
      style.fore = own_fore ? std::nullopt : std::optional(fore);
    });
  }
  CellsChanged(range);
}

}  // namespace stockbook::sheet
