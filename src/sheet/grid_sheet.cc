// SPDX-License-Identifier: MIT
#include "stockbook/sheet/grid_sheet.h"

#include <utility>

#include "sheet/contents/kept_sheet.h"

namespace stockbook::sheet {

void GridSheet::SelectRange(int row, int column, int row_sel, int col_sel) {
  CheckCell("Select", row, column);
  CheckCell("Select", row_sel, col_sel);
  view_.ChangeSelection({{row, column}, {row_sel, col_sel}});
}

void GridSheet::SetTopRow(int row) {
  CheckRow("TopRow", row);
  view_.ScrollTo(view_.geometry().WithTopRow(row));
}

void GridSheet::SetLeftCol(int column) {
  CheckColumn("LeftCol", column);
  view_.ScrollTo(view_.geometry().WithLeftCol(column));
}

GridSheet::Kept::Kept(KeptSheet contents, const View::Place& place)
    : contents_(std::make_unique<KeptSheet>(std::move(contents))), place_(place) {}

GridSheet::Kept::Kept(Kept&& other) noexcept = default;

GridSheet::Kept& GridSheet::Kept::operator=(Kept&& other) noexcept = default;

GridSheet::Kept::~Kept() = default;

GridSheet::Kept GridSheet::Keep() const { return {KeepContents(), view_.KeepPlace()}; }

void GridSheet::PutBack(Kept kept) {
  if (kept.contents_ == nullptr) return;
  PutBackContents(std::move(*kept.contents_));
  view_.PutBack(kept.place_);
}

}  // namespace stockbook::sheet
