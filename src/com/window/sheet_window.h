// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "com/automation/com_ptr.h"
#include "com/window/accessible_news.h"
#include "com/window/accessible_sheet.h"
#include "com/window/scroll_bars.h"
#include "com/window/sheet_input.h"
#include "com/window/sheet_surface.h"
#include "com/window/window.h"
#include "sheet/view/pixel_moves.h"
#include "stockbook/sheet/geometry/text_measure.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/sheet/view/view.h"
#include "stockbook/sheet/view/viewer.h"

namespace stockbook::com {

// The window that shows a sheet: it paints what is damaged, moves pixels when the sheet scrolls, maintains the scroll
// bars and forwards keys, mouse and wheel. While the sheet's redraw is off, the last frame stays. If the view or its
// sheet goes first, the window shows a sheet of its own without rows and columns from then on.
class SheetWindow : public Window, private sheet::SheetViewer, private sheet::TextMeasure {
 public:
  SheetWindow(WindowHost& host, sheet::View& view);
  ~SheetWindow() override;

  sheet::View& view() const { return *view_; }
  sheet::Sheet& sheet() const { return view_->sheet(); }
  // For screen readers.
  const std::string& name() const { return name_; }
  void SetName(const std::string& name) { name_ = name; }
  // Converts pixels of the sheet to those of the screen and back; nothing for points outside the view.
  RECT ToScreen(const sheet::Rect& rect) const;
  std::optional<sheet::Point> FromScreen(POINT point) const;
  // Where on the screen a menu opens: at the mouse, or below the cell if a key asked for it.
  POINT MenuPlace() const;
  bool HasFocus() const { return handle() != nullptr && GetFocus() == handle(); }
  // The system's fonts, colours or scale may have changed.
  void SystemChanged();

 protected:
  WindowStyle Style() const override;
  std::optional<LRESULT> Handle(UINT message, WPARAM wide, LPARAM data) override;

 private:
  // sheet::SheetViewer
  void Damaged(const sheet::Rect& area) override;
  void ScrollChanged() override;
  void CursorChanged(sheet::Cursor cursor) override;
  void SelectionChanged() override { news_.Tell(); }
  void NodeChanged(int row) override { news_.TellNode(row); }
  void ViewGone() override;
  sheet::TextMeasure* Measure() override { return this; }
  // sheet::TextMeasure
  int TextWidth(const platform::Font& font, std::string_view line) override;
  int LineHeight(const platform::Font& font) override;

  std::optional<LRESULT> HandleWindow(UINT message, WPARAM wide, LPARAM data);
  std::optional<LRESULT> HandleChange(UINT message, WPARAM wide, LPARAM data);
  // Makes the view the one that is shown.
  void ShowView(sheet::View& view);
  void Leave();
  // Gives the view the size of the window.
  void FitView();
  void PaintWindow();
  void PaintDamage();
  void DamageAll() { Damaged({0, 0, view_->size().width, view_->size().height}); }
  LRESULT AnswerReader(WPARAM wide);
  void Scroll(int bar, WPARAM message);
  void MovePixels();
  void MovePart(const sheet::Rect& part, int64_t dx, int64_t dy);

  std::string name_;
  std::unique_ptr<sheet::GridSheet> nothing_;  // instead of a sheet that has gone
  sheet::View* view_ = nullptr;
  bool shows_ = false;
  SheetInput input_;
  AccessibleNews news_;
  ComPtr<AccessibleSheet> accessible_;
  SheetSurface surface_;
  ScrollBars bars_;
  sheet::Cursor cursor_ = sheet::Cursor::kDefault;
  sheet::PixelMoves pixel_moves_;
};

}  // namespace stockbook::com
