// SPDX-License-Identifier: MIT
#include "sheet/input/observers.h"

#include "sheet/sheet.h"

namespace stockbook::sheet {
namespace {

constexpr double kTwipsPerPixel = 15.0;

}  // namespace

float Observers::Twips(int pixels) const { return static_cast<float>(pixels * kTwipsPerPixel / sheet_.scale()); }

Verdict Observers::BeforeRowColChange(const CellPosition& old_cell, const CellPosition& new_cell) {
  if (grid_ != nullptr &&
      grid_->BeforeRowColChange(old_cell.row, old_cell.column, new_cell.row, new_cell.column) == Verdict::kRefuse)
    return Verdict::kRefuse;
  return own_ != nullptr ? own_->BeforeRowColChange(old_cell, new_cell) : Verdict::kAllow;
}

void Observers::AfterRowColChange(const CellPosition& old_cell, const CellPosition& new_cell) {
  // References into the sheet's selection; an observer may move it.
  const CellPosition before = old_cell;
  const CellPosition now = new_cell;
  if (grid_ != nullptr) grid_->AfterRowColChange(before.row, before.column, now.row, now.column);
  if (own_ != nullptr) own_->AfterRowColChange(before, now);
}

void Observers::MouseDown(const MouseEvent& event) {
  if (grid_ != nullptr)
    grid_->MouseDown(static_cast<int16_t>(event.button), event.modifiers.bits, Twips(event.at.x), Twips(event.at.y));
  if (own_ != nullptr) own_->MouseDown(event);
}

void Observers::MouseUp(const MouseEvent& event) {
  if (grid_ != nullptr)
    grid_->MouseUp(static_cast<int16_t>(event.button), event.modifiers.bits, Twips(event.at.x), Twips(event.at.y));
  if (own_ != nullptr) own_->MouseUp(event);
}

void Observers::DoubleClick() {
  if (grid_ != nullptr) grid_->DoubleClick();
  if (own_ != nullptr) own_->DoubleClick();
}

bool Observers::Copy() {
  if (grid_ != nullptr && grid_->Copy()) return true;
  return own_ != nullptr && own_->Copy();
}

Verdict Observers::BeforeUserResize(int row, int column) {
  if (grid_ != nullptr && grid_->BeforeUserResize(row, column) == Verdict::kRefuse) return Verdict::kRefuse;
  return own_ != nullptr ? own_->BeforeUserResize(row, column) : Verdict::kAllow;
}

void Observers::AfterUserResize(int row, int column) {
  if (grid_ != nullptr) grid_->AfterUserResize(row, column);
  if (own_ != nullptr) own_->AfterUserResize(row, column);
}

void Observers::AfterMoveColumn(int column, int position) {
  if (grid_ != nullptr) grid_->AfterMoveColumn(column, position);
  if (own_ != nullptr) own_->AfterMoveColumn(column, position);
}

}  // namespace stockbook::sheet
