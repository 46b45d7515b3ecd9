// SPDX-License-Identifier: MIT
#pragma once

#include "platform/grid_observer.h"
#include "sheet/input/observer.h"

namespace stockbook::sheet {

class Sheet;

// The two who may watch a sheet, heard one after the other: the one who knows it as a grid, then its own observer. Each
// may take itself or the other away on the way, and either refusal is one.
class Observers final : public SheetObserver {
 public:
  explicit Observers(const Sheet& sheet) : sheet_(sheet) {}

  void SetGridObserver(platform::GridObserver* observer) { grid_ = observer; }
  void SetSheetObserver(SheetObserver* observer) { own_ = observer; }
  bool IsAny() const { return grid_ != nullptr || own_ != nullptr; }

  Verdict BeforeRowColChange(const CellPosition& old_cell, const CellPosition& new_cell) override;
  void AfterRowColChange(const CellPosition& old_cell, const CellPosition& new_cell) override;
  void MouseDown(const MouseEvent& event) override;
  void MouseUp(const MouseEvent& event) override;
  void DoubleClick() override;
  bool Copy() override;
  Verdict BeforeUserResize(int row, int column) override;
  void AfterUserResize(int row, int column) override;
  void AfterMoveColumn(int column, int position) override;

 private:
  float Twips(int pixels) const;

  const Sheet& sheet_;
  platform::GridObserver* grid_ = nullptr;
  SheetObserver* own_ = nullptr;
};

}  // namespace stockbook::sheet
