// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "stockbook/base/api.h"
#include "stockbook/platform/grid.h"
#include "stockbook/sheet/contents/sheet.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::sheet {

// A sheet with its own view, which together make up a whole grid. A widget shows the view, gives it its size and scale
// and forwards input to it.
class STOCKBOOK_API GridSheet final : public Sheet, public platform::Grid {
 public:
  // Goes with the sheet; a widget that shows it lets go of it first.
  View& view() { return view_; }
  const View& view() const { return view_; }

  // GridView
  int Row() const override { return view_.selection().current.row; }
  int Col() const override { return view_.selection().current.column; }
  void Select(int row, int column) override { SelectRange(row, column, row, column); }
  int RowSel() const override { return view_.selection().end.row; }
  int ColSel() const override { return view_.selection().end.column; }
  // The first cell becomes the current one, if the observer allows it. Throws platform::Error outside of the grid.
  void SelectRange(int row, int column, int row_sel, int col_sel);
  void CopySelection(platform::Clipboard& clipboard) override { view_.CopySelection(clipboard); }
  int TopRow() const override { return view_.geometry().TopRow(); }
  void SetTopRow(int row) override;
  int BottomRow() const override { return view_.geometry().BottomRow(); }
  // The first column of the scrolling part that is in view. Setting scrolls as far as there are columns, and throws
  // platform::Error for a column that is not there.
  int LeftCol() const { return view_.geometry().LeftCol(); }
  void SetLeftCol(int column);
  bool RowIsVisible(int row) const override { return view_.geometry().RowIsVisible(row); }
  int MouseRow() const override { return view_.mouse_cell().row; }
  int MouseCol() const override { return view_.mouse_cell().column; }
  void SetObserver(platform::GridObserver* observer) override { view_.SetObserver(observer); }

  // GridBusy
  bool Redraw() const override { return Sheet::Redraw(); }
  void SetRedraw(bool on) override { Sheet::SetRedraw(on); }
  std::string Tag() const override { return tag_; }
  void SetTag(std::string_view tag) override { tag_ = tag; }
  platform::MousePointer Pointer() const override { return view_.pointer(); }
  void SetPointer(platform::MousePointer pointer) override { view_.SetPointer(pointer); }

  // What the grid holds and where its view is, to be put back, be it after other rows were loaded. The observer hears
  // nothing of it. O(runs + columns + cells set), with the loaded columns shared.
  class Kept;
  // Both are about what the grid holds and where its view is, kept and put back, be it after other rows were loaded.
  // The observer hears nothing of it. O(runs + columns + cells set), with the loaded columns shared.
  Kept Keep() const;
  void PutBack(Kept kept);

  // Both are of the sheet together with its view: whether all parts agree, for tests, and approximate memory beyond the
  // values of the loaded columns.
  bool CheckInvariants() const { return Sheet::CheckInvariants() && view_.CheckInvariants(); }
  size_t EngineBytes() const { return Sheet::EngineBytes() + sizeof(View) + view_.MemoryBytes(); }

 private:
  View view_{*this};
  std::string tag_;
};

// What GridSheet::Keep returns. It is put back once: one that was moved from changes nothing.
class GridSheet::Kept {
 public:
  Kept(Kept&& other) noexcept;
  Kept& operator=(Kept&& other) noexcept;
  ~Kept();

 private:
  friend class GridSheet;
  Kept(KeptSheet contents, const View::Place& place);

  std::unique_ptr<KeptSheet> contents_;
  View::Place place_;
};

}  // namespace stockbook::sheet
