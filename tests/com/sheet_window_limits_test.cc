// SPDX-License-Identifier: MIT
// The window of a sheet at its limits: no room, very many rows, a mouse or a parent that goes in the middle.
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <utility>

#include "com/window/back_buffer.h"
#include "com/window/sheet_window.h"
#include "com/window/wheel.h"
#include "support/sample_ledger.h"

namespace stockbook::com {
namespace {

class SilentHost : public WindowHost {
 public:
  ComPtr<IUnknown> Pin() override { return {}; }
  void FocusChanged(Focus) override {}
};

class SheetWindowLimits : public ::testing::Test {
 protected:
  void SetUp() override {
    parent_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 600, 400, nullptr, nullptr, nullptr, nullptr);
    if (parent_ == nullptr) GTEST_SKIP() << "nothing here shows windows";
    testing::SampleLedger().Fill(sheet_);
    window_ = std::make_shared<SheetWindow>(host_, sheet_.view());
    window_->Create(parent_, {0, 0, 500, 300});
  }
  void TearDown() override {
    if (window_ != nullptr) window_->Destroy();
    if (parent_ != nullptr) DestroyWindow(parent_);
  }
  LRESULT Send(UINT message, WPARAM wide, LPARAM data = 0) {
    return SendMessageW(window_->handle(), message, wide, data);
  }
  void Resize(int width, int height) { SetWindowPos(window_->handle(), nullptr, 0, 0, width, height, SWP_NOZORDER); }
  void Print() {
    BackBuffer buffer;
    buffer.Resize({600, 400});
    Send(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(buffer.dc()), PRF_CLIENT);
  }
  int64_t ScrollY() { return sheet_.view().geometry().scroll().y; }

  SilentHost host_;
  HWND parent_ = nullptr;
  sheet::GridSheet sheet_;
  std::shared_ptr<SheetWindow> window_;
};

TEST_F(SheetWindowLimits, GoesThroughSizesWithoutRoom) {
  for (const auto& [width, height] : {std::pair{0, 0}, {1, 1}, {0, 300}, {500, 0}, {10, 10}, {17, 17}, {18, 18}}) {
    Resize(width, height);
    Print();
    Send(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)));
    Send(WM_KEYDOWN, VK_NEXT);
    Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(0, 0));
    Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-3000, 3000));
    Send(WM_LBUTTONUP, 0, MAKELPARAM(0, 0));
  }
  Resize(500, 300);
  EXPECT_GT(sheet_.view().size().width, 400);
}

TEST_F(SheetWindowLimits, ScrollsAMillionRowsToTheLast) {
  sheet_.SetRows(1000000);
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  ASSERT_NE(GetScrollInfo(window_->handle(), SB_VERT, &info), 0);
  EXPECT_GT(info.nMax, 0);
  EXPECT_GT(info.nPage, 0u);
  Send(WM_VSCROLL, SB_BOTTOM);
  EXPECT_EQ(ScrollY(), sheet_.view().geometry().max_scroll().y);
  EXPECT_EQ(sheet_.BottomRow(), 999999);
  GetScrollInfo(window_->handle(), SB_VERT, &info);
  EXPECT_EQ(info.nPos, info.nMax - static_cast<int>(info.nPage) + 1);
  Print();
}

TEST_F(SheetWindowLimits, ScrollsMorePixelsThanABarHas) {
  sheet_.SetRows(10000000);
  sheet_.SetRowHeight(-1, 15 * 400);
  ASSERT_GT(sheet_.view().geometry().max_scroll().y, int64_t{std::numeric_limits<int>::max()});
  Send(WM_VSCROLL, SB_BOTTOM);
  EXPECT_EQ(sheet_.BottomRow(), 9999999);
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  GetScrollInfo(window_->handle(), SB_VERT, &info);
  EXPECT_EQ(info.nPos, info.nMax - static_cast<int>(info.nPage) + 1);
  Send(WM_VSCROLL, SB_LINEUP);
  EXPECT_LT(ScrollY(), sheet_.view().geometry().max_scroll().y);
  Print();
}

TEST_F(SheetWindowLimits, EndsADragWhenSomebodyElseTakesTheMouse) {
  Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(200, 100));
  ASSERT_EQ(GetCapture(), window_->handle());
  const auto before = sheet_.view().selection();
  SetCapture(parent_);
  Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(300, 200));
  EXPECT_EQ(sheet_.view().selection().end, before.end);
  ReleaseCapture();
}

TEST_F(SheetWindowLimits, IsDestroyedInTheMiddleOfADragAndOfATip) {
  Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(200, 100));
  Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(200, 2000));
  DestroyWindow(std::exchange(parent_, nullptr));
  EXPECT_EQ(window_->handle(), nullptr);
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(SheetWindowLimits, AnswersEveryMessageOfTheMouseAndTheKeyboardWithoutArguments) {
  for (UINT message = WM_KEYFIRST; message <= WM_KEYLAST; ++message) Send(message, 0);
  for (UINT message = WM_MOUSEFIRST; message <= WM_MOUSELAST; ++message) {
    if (message != WM_RBUTTONDOWN && message != WM_RBUTTONDBLCLK) Send(message, 0);
  }
  for (const UINT message :
       {static_cast<UINT>(WM_GETDLGCODE), static_cast<UINT>(WM_PRINTCLIENT), static_cast<UINT>(WM_TIMER),
        static_cast<UINT>(WM_HSCROLL), static_cast<UINT>(WM_VSCROLL), static_cast<UINT>(WM_CAPTURECHANGED),
        static_cast<UINT>(WM_CANCELMODE), 0x02E3U, static_cast<UINT>(WM_SETTINGCHANGE),
        static_cast<UINT>(WM_SYSCOLORCHANGE), static_cast<UINT>(WM_THEMECHANGED), static_cast<UINT>(WM_MOUSEHOVER),
        static_cast<UINT>(WM_MOUSELEAVE)})
    Send(message, 0);
  EXPECT_EQ(GetCapture(), nullptr);
}

// A touchpad's two directions, in parts of a notch.
TEST_F(SheetWindowLimits, ScrollsSidewaysByTheOtherWheelAndByShift) {
  const auto turn = [&](UINT message, WORD keys, int delta) {
    Send(message, MAKEWPARAM(keys, static_cast<WORD>(delta)));
    return sheet_.view().geometry().scroll().x;
  };
  const int64_t once = turn(WM_MOUSEHWHEEL, 0, WHEEL_DELTA);
  EXPECT_GT(once, 0);
  EXPECT_EQ(turn(WM_MOUSEHWHEEL, 0, -WHEEL_DELTA), 0);
  int64_t parts = 0;
  for (int part = 0; part < 40; ++part) parts = turn(WM_MOUSEHWHEEL, 0, WHEEL_DELTA / 40);
  EXPECT_NEAR(static_cast<double>(parts), static_cast<double>(once), 1);
  EXPECT_EQ(turn(WM_MOUSEHWHEEL, 0, -32768), 0);
  EXPECT_GT(turn(WM_MOUSEWHEEL, MK_SHIFT, -WHEEL_DELTA), 0);
  EXPECT_EQ(turn(WM_MOUSEWHEEL, MK_SHIFT, 32767), 0);
  EXPECT_EQ(ScrollY(), 0);
}

TEST_F(SheetWindowLimits, TurnsAPageOfItsWidthSidewaysWhereTheUserHasSetPages) {
  UINT lines = 3;
  SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
  SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, WHEEL_PAGESCROLL, nullptr, 0);
  Wheel wheel;
  const sheet::Rect body = sheet_.view().geometry().BodyRect();
  const WPARAM notch = MAKEWPARAM(MK_SHIFT, static_cast<WORD>(-WHEEL_DELTA));
  EXPECT_EQ(wheel.Turn(WheelAxis::kVertical, notch, sheet_.view()).dx, body.width);
  EXPECT_EQ(wheel.Turn(WheelAxis::kVertical, notch & ~WPARAM{MK_SHIFT}, sheet_.view()).dy, body.height);
  SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, lines, nullptr, 0);
}

// Keys of an input method and characters are nobody's here: the system has them.
TEST_F(SheetWindowLimits, LeavesInputMethodsAlone) {
  const auto before = sheet_.view().selection();
  Send(WM_KEYDOWN, VK_PROCESSKEY);
  Send(WM_IME_STARTCOMPOSITION, 0);
  Send(WM_IME_ENDCOMPOSITION, 0);
  Send(WM_CHAR, 0x5E93);
  EXPECT_EQ(sheet_.view().selection().current, before.current);
}

}  // namespace
}  // namespace stockbook::com
