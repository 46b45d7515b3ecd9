// SPDX-License-Identifier: MIT
#include "com/window/sheet_window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "com/automation/text.h"
#include "com/window/back_buffer.h"
#include "com/window/clipboard.h"
#include "com/window/images.h"
#include "support/sample_ledger.h"

namespace stockbook::com {
namespace {

// Counts what the window tells of the focus, and how often it wants everything kept alive.
class QuietHost : public WindowHost {
 public:
  ComPtr<IUnknown> Pin() override {
    ++pins;
    return {};
  }
  void FocusChanged(Focus focus) override { gained += focus == Focus::kGained ? 1 : 0; }
  int gained = 0;
  int pins = 0;
};

bool IsKnownClass(const wchar_t* name) {
  WNDCLASSEXW known{};
  known.cbSize = sizeof known;
  return GetClassInfoExW(GetModuleHandleW(nullptr), name, &known) != 0;
}

// The sample ledger in a window of 500 by 300 pixels, whose parent nobody sees.
class SheetWindowTest : public ::testing::Test {
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

  void Send(UINT message, WPARAM wide, LPARAM data = 0) { SendMessageW(window_->handle(), message, wide, data); }
  void PressAt(sheet::Point at, WPARAM keys = 0) {
    Send(WM_LBUTTONDOWN, MK_LBUTTON | keys, MAKELPARAM(at.x, at.y));
    Send(WM_LBUTTONUP, keys, MAKELPARAM(at.x, at.y));
  }
  sheet::Point MiddleOf(int row, int column) {
    const sheet::Rect cell = sheet_.view().geometry().VisibleCellRect(row, column);
    return {cell.x + cell.width / 2, cell.y + cell.height / 2};
  }
  // The window's pixels as they have come about.
  std::vector<uint32_t> Shown() {
    BackBuffer buffer;
    buffer.Resize(sheet_.view().size());
    Send(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(buffer.dc()), PRF_CLIENT);
    return PixelsOf(buffer);
  }
  // The view painted anew.
  std::vector<uint32_t> Fresh() {
    SheetSurface surface;
    const sheet::Size size = sheet_.view().size();
    surface.AddDamage({0, 0, size.width, size.height});
    surface.Paint(sheet_.view(), std::nullopt);
    BackBuffer buffer;
    buffer.Resize(size);
    surface.Show(buffer.dc(), {0, 0, size.width, size.height});
    return PixelsOf(buffer);
  }
  static std::vector<uint32_t> PixelsOf(const BackBuffer& buffer) {
    GdiFlush();
    std::vector<uint32_t> values(buffer.pixels().values,
                                 buffer.pixels().values + buffer.size().width * buffer.size().height);
    for (uint32_t& value : values) value &= 0x00FFFFFF;
    return values;
  }

  QuietHost host_;
  HWND parent_ = nullptr;
  sheet::GridSheet sheet_;
  std::shared_ptr<SheetWindow> window_;
};

TEST_F(SheetWindowTest, GivesTheViewItsSizeWithoutTheBars) {
  RECT client{};
  GetClientRect(window_->handle(), &client);
  EXPECT_EQ(sheet_.view().size(), (sheet::Size{static_cast<int>(client.right), static_cast<int>(client.bottom)}));
  EXPECT_LT(client.right, 500);  // the ledger is higher than the window
}

TEST_F(SheetWindowTest, SelectsWhatIsPressedAndExtendsWithShift) {
  PressAt(MiddleOf(4, 2));
  EXPECT_EQ(sheet_.view().selection().current, (sheet::CellPosition{4, 2}));
  PressAt(MiddleOf(6, 3), MK_SHIFT);
  EXPECT_EQ(sheet_.view().selection().current, (sheet::CellPosition{4, 2}));
  EXPECT_EQ(sheet_.view().selection().end, (sheet::CellPosition{6, 3}));
}

TEST_F(SheetWindowTest, MovesByKeysAndScrollsByTheWheelAndTheBars) {
  PressAt(MiddleOf(4, 2));
  Send(WM_KEYDOWN, VK_DOWN);
  EXPECT_EQ(sheet_.view().selection().current, (sheet::CellPosition{5, 2}));
  Send(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)));
  const int64_t notch = sheet_.view().geometry().scroll().y;
  EXPECT_GT(notch, 0);
  Send(WM_VSCROLL, SB_BOTTOM);
  EXPECT_EQ(sheet_.view().geometry().scroll().y, sheet_.view().geometry().max_scroll().y);
  Send(WM_VSCROLL, SB_TOP);
  EXPECT_EQ(sheet_.view().geometry().scroll().y, 0);
}

TEST_F(SheetWindowTest, AddsTheFractionsOfASlowWheel) {
  Send(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)));
  const int64_t notch = sheet_.view().geometry().scroll().y;
  Send(WM_VSCROLL, SB_TOP);
  for (int part = 0; part < 24; ++part) Send(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA / 24)));
  EXPECT_NEAR(static_cast<double>(sheet_.view().geometry().scroll().y), static_cast<double>(notch), 1);
}

TEST_F(SheetWindowTest, ShowsAfterEveryMoveOfPixelsWhatAFreshPaintingShows) {
  std::mt19937 random(12);
  ASSERT_EQ(Shown(), Fresh());
  for (int step = 0; step < 60; ++step) {
    const sheet::ScrollPosition most = sheet_.view().geometry().max_scroll();
    const auto within = [&](int64_t range) {
      return static_cast<int64_t>(random() % static_cast<uint64_t>(range + 1));
    };
    switch (random() % 4) {
      case 0:
        sheet_.view().ScrollTo({within(most.x), within(most.y)});
        break;
      case 1:
        sheet_.view().ScrollBy(static_cast<int>(within(60)) - 30, static_cast<int>(within(60)) - 30);
        break;
      case 2:
        Send(WM_KEYDOWN, random() % 2 == 0 ? VK_NEXT : VK_RIGHT);
        break;
      default:
        sheet_.SetFrozenCols(static_cast<int>(within(2)));
    }
    ASSERT_EQ(Shown(), Fresh()) << "after step " << step;
  }
}

TEST_F(SheetWindowTest, KeepsTheLastFrameWhileRedrawIsOff) {
  const std::vector<uint32_t> before = Shown();
  sheet_.SetRedraw(false);
  sheet_.SetTextMatrix(3, 2, "anders");
  EXPECT_EQ(Shown(), before);
  sheet_.SetRedraw(true);
  EXPECT_NE(Shown(), before);
}

TEST_F(SheetWindowTest, IsBlankWhereItGrowsWhileRedrawIsOff) {
  const std::vector<uint32_t> before = Shown();
  sheet_.SetRedraw(false);
  SetWindowPos(window_->handle(), nullptr, 0, 0, 560, 360, SWP_NOZORDER);
  const sheet::Size size = sheet_.view().size();
  BackBuffer buffer;
  buffer.Resize(size);
  PatBlt(buffer.dc(), 0, 0, size.width, size.height, BLACKNESS);
  Send(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(buffer.dc()), PRF_CLIENT);
  const std::vector<uint32_t> shown = PixelsOf(buffer);
  EXPECT_EQ(shown.back(), 0x00FFFFFFu);
  EXPECT_EQ(shown.front(), before.front());
}

TEST_F(SheetWindowTest, IsDimmedWhileItIsDisabledAndAfterwardsAsBefore) {
  const std::vector<uint32_t> before = Shown();
  EnableWindow(window_->handle(), FALSE);
  EXPECT_NE(Shown(), before);
  EnableWindow(window_->handle(), TRUE);
  EXPECT_EQ(Shown(), before);
}

TEST_F(SheetWindowTest, GoesOnScrollingWhileTheMouseMovesBeyondItsEdge) {
  const sheet::Point start = MiddleOf(4, 2);
  Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(start.x, start.y));
  constexpr ULONGLONG kPatienceMs = 60000;
  const ULONGLONG until = GetTickCount64() + kPatienceMs;
  while (sheet_.view().geometry().scroll().y == 0 && GetTickCount64() < until) {
    Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(start.x, 320));
    MSG timer;
    if (PeekMessageW(&timer, window_->handle(), WM_TIMER, WM_TIMER, PM_REMOVE) != 0) DispatchMessageW(&timer);
  }
  EXPECT_GT(sheet_.view().geometry().scroll().y, 0);
  Send(WM_LBUTTONUP, 0, MAKELPARAM(start.x, 320));
}

TEST_F(SheetWindowTest, EndsADragWhoseLastMessageSomebodyElseGot) {
  const sheet::Point start = MiddleOf(4, 2);
  const sheet::Point later = MiddleOf(7, 3);
  Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(start.x, start.y));
  EXPECT_EQ(GetCapture(), window_->handle());
  Send(WM_MOUSEMOVE, 0, MAKELPARAM(later.x, later.y));
  EXPECT_EQ(GetCapture(), nullptr);
  EXPECT_EQ(sheet_.view().selection().end, (sheet::CellPosition{4, 2}));
}

TEST_F(SheetWindowTest, LeavesNoClassBehindWhenItsParentGoesFirst) {
  ASSERT_TRUE(IsKnownClass(L"tqStockbookSheet"));
  DestroyWindow(std::exchange(parent_, nullptr));
  EXPECT_EQ(window_->handle(), nullptr);
  window_.reset();
  EXPECT_FALSE(IsKnownClass(L"tqStockbookSheet"));
}

TEST_F(SheetWindowTest, HasNoBarThatTheSheetDoesNotWant) {
  sheet_.SetScrollBars(platform::ScrollBarsSetting::kNone);
  RECT client{};
  GetClientRect(window_->handle(), &client);
  EXPECT_EQ(client.right, 500);
  EXPECT_EQ(client.bottom, 300);
}

TEST_F(SheetWindowTest, LivesOnWithoutItsView) {
  auto other = std::make_unique<sheet::GridSheet>();
  auto window = std::make_shared<SheetWindow>(host_, other->view());
  window->Create(parent_, {0, 0, 50, 50});
  other.reset();
  SendMessageW(window->handle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
  SendMessageW(window->handle(), WM_KEYDOWN, VK_DOWN, 0);
  EXPECT_EQ(window->sheet().Rows(), 0);
  window->Destroy();
}

TEST_F(SheetWindowTest, TellsReadersItsCellsByNumber) {
  const auto table = ComPtr<AccessibleSheet>::Adopt(new AccessibleSheet(*window_));
  VARIANT child{};
  child.vt = VT_I4;
  VARIANT role{};
  EXPECT_EQ(table->get_accRole(child, &role), S_OK);
  EXPECT_EQ(role.lVal, static_cast<LONG>(ROLE_SYSTEM_TABLE));
  LONG left = 0, top = 0, width = 0, height = 0;
  child.lVal = 1;
  Bstr caption;
  EXPECT_EQ(table->get_accName(child, caption.Put()), S_OK);
  EXPECT_FALSE(caption.Text().empty());
  EXPECT_EQ(table->accLocation(&left, &top, &width, &height, child), S_OK);
  VARIANT hit{};
  EXPECT_EQ(table->accHitTest(left + width / 2, top + height / 2, &hit), S_OK);
  EXPECT_EQ(hit.lVal, 1);
  LONG count = 0;
  EXPECT_EQ(table->get_accChildCount(&count), S_OK);
  child.lVal = count + 1;
  EXPECT_EQ(table->get_accName(child, caption.Put()), E_INVALIDARG);
  EXPECT_EQ(table->get_accName(child, nullptr), E_POINTER);
  child.lVal = count;
  const int pins = host_.pins;
  EXPECT_EQ(table->get_accRole(child, &role), S_OK);
  EXPECT_EQ(host_.pins, pins + 1) << "what a reader calls may end the window";
  EXPECT_EQ(table->accDoDefaultAction(child), S_OK);
  window_->Destroy();
  table->Detach();
  EXPECT_EQ(table->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
}

TEST(WindowImages, HasAPictureForEveryKeyThatIsDrawnAtEverySize) {
  const WindowImages images;
  for (const char* key : {"RevBill", "BuyBill1", "IssBill", "SaleBill1", "ShiftBill", "Bill1", "Mtr", "Depot",
                          "Supplier", "Customer", "Project", "StkBk", "SuppJnl", "CustJnl", "ProjJnl", "Mark"}) {
    const auto* picture = dynamic_cast<const PixelPicture*>(images.Find(key).get());
    ASSERT_NE(picture, nullptr) << key;
    for (const int side : {1, 16, 24, 40}) {
      const Pixels& pixels = picture->At(side, side);
      EXPECT_EQ(pixels.width, side);
      EXPECT_TRUE(
          std::any_of(pixels.values.begin(), pixels.values.end(), [](uint32_t value) { return value >> 24 > 0; }))
          << key << " at " << side;
    }
  }
  EXPECT_EQ(images.Find("none"), nullptr);
}

// The records of the number in a metafile of the old kind.
int CountRecords(HMETAFILE file, WORD wanted) {
  struct Count {
    WORD wanted;
    int found = 0;
  } count{wanted};
  EnumMetaFile(
      nullptr, file,
      [](HDC, HANDLETABLE*, METARECORD* record, int, LPARAM data) -> int {
        auto& counting = *reinterpret_cast<Count*>(data);
        if (record->rdFunction == counting.wanted) ++counting.found;
        return 1;
      },
      reinterpret_cast<LPARAM>(&count));
  return count.found;
}

TEST(GdiCanvas, PutsPicturesOnWhiteWhereNothingIsBlended) {
  const WindowImages images;
  const HDC dc = CreateMetaFileW(nullptr);
  {
    GdiFonts fonts;
    GdiCanvas canvas(dc, fonts, 1);
    canvas.PushClip({0, 0, 50, 50});
    const sheet::PictureItem item{images.Find("RevBill").get(), {4, 4, 16, 16}, false};
    canvas.DrawPictures({&item, 1});
  }
  const HMETAFILE file = CloseMetaFile(dc);
  EXPECT_EQ(CountRecords(file, META_STRETCHDIB) + CountRecords(file, META_DIBSTRETCHBLT), 1);
  EXPECT_EQ(CountRecords(file, META_SAVEDC), CountRecords(file, META_RESTOREDC));
  DeleteMetaFile(file);
}

TEST(WindowsClipboard, TakesATextFromAControlWithoutAWindow) {
  WindowsClipboard clipboard;
  clipboard.SetText("甲\t乙");
  ASSERT_NE(OpenClipboard(nullptr), 0);
  EXPECT_EQ(GetClipboardOwner(), nullptr);
  const HANDLE data = GetClipboardData(CF_UNICODETEXT);
  EXPECT_NE(data, nullptr);
  if (data != nullptr) {
    EXPECT_EQ(FromWide(static_cast<const wchar_t*>(GlobalLock(data))), "甲\t乙");
    GlobalUnlock(data);
  }
  CloseClipboard();
}

TEST(GdiCanvas, KeepsATextWithinTheWidthOfItsRectangle) {
  BackBuffer buffer;
  buffer.Resize({200, 40});
  GdiFonts fonts;
  const platform::Font font{"Noto Sans CJK SC", 12};
  {
    GdiCanvas canvas(buffer.dc(), fonts, 1);
    const sheet::TextItem items[] = {
        {"长得放不下的名称", {50, 10, 60, 20}, sheet::HorizontalAlign::kLeft},
        {"1234567890123456", {50, 10, 60, 20}, sheet::HorizontalAlign::kRight, sheet::TextOverflow::kClip}};
    canvas.DrawTexts(font, 0, items);
  }
  GdiFlush();
  bool inked = false;
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 200; ++x) {
      const uint32_t value = buffer.pixels().values[y * 200 + x] & 0x00FFFFFF;
      if (x >= 50 && x < 110)
        inked = inked || value != 0x00FFFFFF;
      else
        ASSERT_EQ(value, 0x00FFFFFFu) << x << " " << y;
    }
  }
  EXPECT_TRUE(inked);
}

TEST(GdiFont, ShortensToAnEllipsisThatFitsAndNeverCutsAPair) {
  GdiFont font({"Noto Sans CJK SC", 10}, 1);
  LaidText laid;
  for (const char* text : {"库存明细账的名称很长", "\xF0\xA0\xAE\xB7\xF0\xA0\xAE\xB7\xF0\xA0\xAE\xB7",
                           "abc \xD7\x90\xD7\x91\xD7\x92 def"}) {
    for (int most = 200; most >= 0; --most) {
      font.Lay(text, laid);
      if (laid.width <= most) continue;
      font.ShortenToFit(laid, most);
      ASSERT_EQ(laid.units.back(), L'…');
      const std::wstring kept = laid.units.substr(0, laid.units.size() - 1);
      ASSERT_TRUE(kept.empty() || !IS_HIGH_SURROGATE(kept.back()));
      ASSERT_TRUE(kept.empty() || laid.width <= most);
    }
  }
}

}  // namespace
}  // namespace stockbook::com
