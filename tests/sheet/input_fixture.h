// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>

#include "sheet/columns.h"
#include "sheet/sheet_in_view.h"

namespace stockbook::sheet::test {

using platform::CellRange;

inline constexpr Modifiers kNone{};
inline constexpr Modifiers kShift{Modifiers::kShift};
inline constexpr Modifiers kControl{Modifiers::kControl};

// Keeps what the sheet told, as words.
class Listener : public platform::GridObserver, public SheetViewer {
 public:
  platform::Verdict BeforeRowColChange(CellPosition from, CellPosition to) override {
    Note("before", from.row, from.column, to.row, to.column);
    return verdict;
  }
  void AfterRowColChange(CellPosition from, CellPosition to) override {
    Note("after", from.row, from.column, to.row, to.column);
  }
  void MouseDown(const platform::GridMouseEvent& event) override {
    Note("down", static_cast<int>(event.button), event.modifiers.bits, Pixels(event.x_twips), Pixels(event.y_twips));
  }
  void MouseUp(const platform::GridMouseEvent& event) override {
    Note("up", static_cast<int>(event.button), event.modifiers.bits, Pixels(event.x_twips), Pixels(event.y_twips));
  }
  void DoubleClick() override { told += "double;"; }
  platform::Verdict BeforeUserResize(int row, int column) override {
    told += "resize? " + std::to_string(row) + " " + std::to_string(column) + ";";
    return verdict;
  }
  void AfterUserResize(int row, int column) override {
    told += "resized " + std::to_string(row) + " " + std::to_string(column) + ";";
  }
  void AfterMoveColumn(int column, int position) override {
    told += "moved " + std::to_string(column) + " " + std::to_string(position) + ";";
  }
  void Damaged(const Rect& area) override {
    ++damages;
    damaged = area;
  }
  void ScrollChanged() override { ++scrolls; }
  void CursorChanged(Cursor now) override { cursor = now; }

  std::string Take() { return std::exchange(told, {}); }

  platform::Verdict verdict = platform::Verdict::kAllow;
  std::string told;
  int damages = 0;
  int scrolls = 0;
  Rect damaged;
  Cursor cursor = Cursor::kDefault;

 private:
  static int Pixels(float twips) { return static_cast<int>(twips / 15); }
  void Note(const char* what, int a, int b, int c, int d) {
    told += std::string(what) + " " + std::to_string(a) + " " + std::to_string(b) + " " + std::to_string(c) + " " +
            std::to_string(d) + ";";
  }
};

class Input : public SheetInView {
 protected:
  Input() : SheetInView(Together(Periods(1000, 5), Numbers(1000), Numbers(1000), Numbers(1000))) {
    sheet.SetObserver(&listener);
    sheet.view().SetViewer(&listener);
  }
  ~Input() override {
    sheet.SetObserver(nullptr);
    sheet.view().SetViewer(nullptr);
  }

  bool Press(Key key, Modifiers modifiers = kNone) { return keyboard.Press({key, modifiers}); }
  CellPosition Current() const { return sheet.view().selection().current; }
  CellRange Selected() const { return sheet.view().selection().Range(); }
  Point Middle(int row, int column) const {
    const Rect cell = sheet.view().geometry().CellRect(row, column);
    return {cell.x + cell.width / 2, cell.y + cell.height / 2};
  }
  void Click(Point at, Modifiers modifiers = kNone) {
    mouse.Press({MouseButton::kLeft, modifiers, at});
    mouse.Release({MouseButton::kLeft, modifiers, at});
  }
  void DragTo(Point from, Point to) {
    mouse.Press({MouseButton::kLeft, kNone, from});
    mouse.Move({MouseButton::kLeft, kNone, {(from.x + to.x) / 2, (from.y + to.y) / 2}});
    mouse.Move({MouseButton::kLeft, kNone, to});
  }
  void Drag(Point from, Point to) {
    DragTo(from, to);
    mouse.Release({MouseButton::kLeft, kNone, to});
  }

  Listener listener;
};

}  // namespace stockbook::sheet::test
