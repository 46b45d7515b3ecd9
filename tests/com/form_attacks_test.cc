// SPDX-License-Identifier: MIT
// Forms that change, run short of room, or go in the middle of something; and what is left behind.
#include <windows.h>

#include <gtest/gtest.h>
#include <ocidl.h>
#include <olectl.h>

#include <memory>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include "com/automation/text.h"
#include "com/event_sink.h"
#include "com/form_site.h"
#include "com/hosted_journal.h"
#include "com/window/back_buffer.h"

namespace stockbook::com {
namespace {

using testing::EventSink;
using testing::FormSite;
using testing::HostedJournal;

constexpr DISPID kHeardNotice = 5;
constexpr const wchar_t* kMenuClass = L"#32768";

// A loaded control in a form of 600 by 400 pixels.
class FormAttacks : public ::testing::Test {
 protected:
  void SetUp() override {
    form_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 600, 400, nullptr, nullptr, nullptr, nullptr);
    if (form_ == nullptr) GTEST_SKIP() << "nothing here shows windows";
    site_ = std::make_unique<FormSite>(form_);
    host_ = std::make_unique<HostedJournal>(HostedJournal::State::kLoaded);
    ASSERT_EQ(Object()->SetClientSite(site_.get()), S_OK);
  }
  void TearDown() override {
    if (host_ != nullptr && host_->get() != nullptr) {
      Object()->Close(OLECLOSE_NOSAVE);
      Object()->SetClientSite(nullptr);
    }
    host_.reset();
    if (site_ != nullptr) {
      EXPECT_EQ(site_->references, 1u);
    }
    if (form_ != nullptr) DestroyWindow(form_);
    EXPECT_TRUE(testing::ComponentIsIdle());
  }

  ComPtr<IOleObject> Object() const { return ComPtr<IUnknown>(host_->get()).As<IOleObject>(); }
  void Activate() {
    ASSERT_EQ(Object()->DoVerb(OLEIVERB_UIACTIVATE, nullptr, site_.get(), 0, form_, &site_->place), S_OK);
  }
  HWND Window() const {
    HWND window = nullptr;
    Object().As<IOleInPlaceObject>()->GetWindow(&window);
    return window;
  }
  HWND Sheet() const { return FindWindowExW(Window(), nullptr, L"tqStockbookSheet", nullptr); }
  void PlaceAt(const RECT& place, const RECT& clip) {
    EXPECT_EQ(Object().As<IOleInPlaceObject>()->SetObjectRects(&place, &clip), S_OK);
  }
  // What the form sees of the control, as pixels.
  std::vector<uint32_t> Printed() const {
    BackBuffer buffer;
    buffer.Resize({600, 400});
    SendMessageW(Window(), WM_PRINT, reinterpret_cast<WPARAM>(buffer.dc()), PRF_CLIENT | PRF_CHILDREN);
    GdiFlush();
    return {buffer.pixels().values, buffer.pixels().values + 600 * 400};
  }

  HWND form_ = nullptr;
  std::unique_ptr<FormSite> site_;
  std::unique_ptr<HostedJournal> host_;
};

TEST_F(FormAttacks, ARoomlessPlaceAndALargeBorderLeaveNothingToDraw) {
  Activate();
  for (const RECT& place : {RECT{0, 0, 0, 0}, RECT{5, 5, 6, 6}, RECT{50, 50, 10, 10}, RECT{0, 0, 300, 20}}) {
    PlaceAt(place, place);
    Printed();
  }
  EXPECT_EQ(host_->get()->put_BorderWidth(1000), S_OK);
  const RECT place{0, 0, 400, 300};
  PlaceAt(place, place);
  Printed();
  RECT sheet{};
  GetWindowRect(Sheet(), &sheet);
  EXPECT_EQ(sheet.right, sheet.left);
}

TEST_F(FormAttacks, WhatAFormCutsOffIsNotThere) {
  Activate();
  const HRGN region = CreateRectRgn(0, 0, 0, 0);
  RECT box{};
  PlaceAt({10, 10, 210, 110}, {0, 0, 100, 600});
  ASSERT_EQ(GetWindowRgn(Window(), region), SIMPLEREGION);
  GetRgnBox(region, &box);
  EXPECT_EQ(box.right, 90);
  EXPECT_EQ(box.bottom, 100);
  PlaceAt({10, 10, 210, 110}, {300, 300, 500, 500});
  EXPECT_EQ(GetWindowRgn(Window(), region), NULLREGION) << "all of it is cut off";
  PlaceAt({10, 10, 210, 110}, {0, 0, 600, 400});
  EXPECT_EQ(GetWindowRgn(Window(), region), ERROR) << "nothing is cut off";
  PlaceAt({10, 10, 210, 110}, {0, 0, 0, 0});
  EXPECT_EQ(GetWindowRgn(Window(), region), ERROR) << "the form says nothing of it";
  DeleteObject(region);
}

TEST_F(FormAttacks, AMenuEndsWithTheFormThatIsDestroyedWhileItIsOpen) {
  ShowWindow(form_, SW_SHOW);
  Activate();
  static HWND form;
  form = form_;
  // Menus have a message loop of their own, in which timers come.
  SetTimer(form_, 7, 50, [](HWND window, UINT, UINT_PTR id, DWORD) {
    if (FindWindowW(kMenuClass, nullptr) == nullptr) return;
    KillTimer(window, id);
    DestroyWindow(std::exchange(form, nullptr));
  });
  SendMessageW(Sheet(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(150, 100));
  form_ = form;
  EXPECT_EQ(form_, nullptr) << "the menu was open";
  EXPECT_EQ(Window(), nullptr);
}

TEST_F(FormAttacks, AControlMayBeClosedAndDroppedWhileItsMenuIsOpen) {
  ShowWindow(form_, SW_SHOW);
  Activate();
  static HostedJournal* host;
  host = host_.get();
  SetTimer(form_, 7, 50, [](HWND window, UINT, UINT_PTR id, DWORD) {
    if (FindWindowW(kMenuClass, nullptr) == nullptr) return;
    KillTimer(window, id);
    const auto object = ComPtr<IUnknown>(host->get()).As<IOleObject>();
    object->Close(OLECLOSE_NOSAVE);
    object->SetClientSite(nullptr);
    host->control().Reset();
  });
  SendMessageW(Sheet(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(150, 100));
  EXPECT_EQ(host_->get(), nullptr) << "the menu was open";
  EXPECT_TRUE(testing::ComponentIsIdle());
}

TEST_F(FormAttacks, ATipGoesWithTheMouseAndWithItsWindow) {
  ShowWindow(form_, SW_SHOW);
  Activate();
  const auto tip = [] {
    HWND found = nullptr;
    while ((found = FindWindowExW(nullptr, found, L"tooltips_class32", nullptr)) != nullptr)
      if (IsWindowVisible(found) != 0) return found;
    return found;
  };
  host_->get()->put_Caption(Bstr(std::string(600, 'x')).get());
  SendMessageW(Window(), WM_MOUSEHOVER, 0, MAKELPARAM(60, 12));
  EXPECT_NE(tip(), nullptr);
  SendMessageW(Window(), WM_MOUSELEAVE, 0, 0);
  EXPECT_EQ(tip(), nullptr);
  SendMessageW(Window(), WM_MOUSEHOVER, 0, MAKELPARAM(60, 12));
  EXPECT_NE(tip(), nullptr);
  DestroyWindow(std::exchange(form_, nullptr));
  EXPECT_EQ(tip(), nullptr);
}

TEST_F(FormAttacks, AClipboardThatSomebodyElseHasOpenIsLeftToHim) {
  Activate();
  const auto sink = EventSink::Make();
  testing::Connect(host_->get(), sink.get());
  const HANDLE opened = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  const HANDLE finished = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  std::thread other([&] {
    OpenClipboard(nullptr);
    SetEvent(opened);
    WaitForSingleObject(finished, INFINITE);
    CloseClipboard();
  });
  WaitForSingleObject(opened, INFINITE);
  BYTE keys[256] = {};
  keys[VK_CONTROL] = 0x80;
  SetKeyboardState(keys);
  SendMessageW(Sheet(), WM_KEYDOWN, 'C', 0);
  keys[VK_CONTROL] = 0;
  SetKeyboardState(keys);
  SetEvent(finished);
  other.join();
  EXPECT_EQ(sink->Count(kHeardNotice), 1) << "the user hears of it";
  CloseHandle(opened);
  CloseHandle(finished);
}

TEST_F(FormAttacks, AFormsNewFontAndColourAreTakenAtOnce) {
  ComPtr<IFont> font;
  FONTDESC wanted{sizeof(FONTDESC), const_cast<wchar_t*>(L"Noto Sans CJK SC"), {}, FW_NORMAL, 0, 0, 0, 0};
  wanted.cySize.int64 = 200000;  // 20 points
  ASSERT_EQ(OleCreateFontIndirect(&wanted, IID_IFont, font.Put()), S_OK);
  Activate();
  const std::vector<uint32_t> before = Printed();
  const double size = host_->grid().Get("FontSize").Double();
  site_->ambient = [&](DISPID property, VARIANT& value) {
    if (property == DISPID_AMBIENT_FONT) {
      value.vt = VT_DISPATCH;
      value.pdispVal = font.As<IDispatch>().Detach();
    } else if (property == DISPID_AMBIENT_BACKCOLOR) {
      value.vt = VT_I4;
      value.lVal = 0x0000FF00;
    } else {
      return DISP_E_MEMBERNOTFOUND;
    }
    return S_OK;
  };
  EXPECT_EQ(Object().As<IOleControl>()->OnAmbientPropertyChange(DISPID_AMBIENT_FONT), S_OK);
  EXPECT_NEAR(host_->grid().Get("FontSize").Double(), 20, 0.5);  // a whole number of pixels
  EXPECT_NE(Printed(), before);
  // A font that the program has set itself stays.
  EXPECT_TRUE(host_->grid().Put("FontSize", size).Succeeded());
  EXPECT_EQ(Object().As<IOleControl>()->OnAmbientPropertyChange(DISPID_UNKNOWN), S_OK);
  EXPECT_EQ(host_->grid().Get("FontSize").Double(), size);
}

TEST_F(FormAttacks, AFormThatAnswersNonsenseForItsPropertiesIsNotBelieved) {
  const double size = host_->grid().Get("FontSize").Double();
  for (const VARTYPE type : {VT_EMPTY, VT_NULL, VT_BSTR, VT_DISPATCH, VT_UNKNOWN, VT_I4, VT_R8}) {
    site_->ambient = [type](DISPID, VARIANT& value) {
      value.vt = type;
      value.llVal = type == VT_I4 ? -1 : 0;
      return S_OK;
    };
    EXPECT_EQ(Object().As<IOleControl>()->OnAmbientPropertyChange(DISPID_UNKNOWN), S_OK) << type;
  }
  EXPECT_EQ(host_->grid().Get("FontSize").Double(), size);
  Activate();
  Printed();
}

TEST_F(FormAttacks, AFormThatIsDesignedKeepsTheKeyboard) {
  site_->ambient = [](DISPID property, VARIANT& value) {
    if (property != DISPID_AMBIENT_USERMODE) return DISP_E_MEMBERNOTFOUND;
    value.vt = VT_BOOL;
    value.boolVal = VARIANT_FALSE;
    return S_OK;
  };
  EXPECT_EQ(Object().As<IOleControl>()->OnAmbientPropertyChange(DISPID_AMBIENT_USERMODE), S_OK);
  site_->heard.clear();
  EXPECT_EQ(Object()->DoVerb(OLEIVERB_PRIMARY, nullptr, site_.get(), 0, form_, &site_->place), S_OK);
  EXPECT_EQ(site_->heard, "in place; show; ");
}

TEST_F(FormAttacks, ChangesAreSavedByTheFormWhenItClosesTheControl) {
  Activate();
  const auto saved = Object().As<IPersistStreamInit>();
  ASSERT_EQ(saved->InitNew(), S_OK);
  site_->heard.clear();
  Object()->Close(OLECLOSE_SAVEIFDIRTY);
  EXPECT_EQ(site_->heard.find("save; "), std::string::npos) << "nothing has changed";
  EXPECT_EQ(host_->get()->put_BorderWidth(3), S_OK);
  Object()->Close(OLECLOSE_NOSAVE);
  EXPECT_EQ(site_->heard.find("save; "), std::string::npos);
  Object()->Close(OLECLOSE_SAVEIFDIRTY);
  EXPECT_NE(site_->heard.find("save; "), std::string::npos);
}

TEST_F(FormAttacks, EventsAreNotRaisedWhileAFormHasThemFrozen) {
  const auto sink = EventSink::Make();
  testing::Connect(host_->get(), sink.get());
  const auto control = Object().As<IOleControl>();
  EXPECT_EQ(control->FreezeEvents(TRUE), S_OK);
  EXPECT_EQ(control->FreezeEvents(TRUE), S_OK);
  EXPECT_TRUE(host_->Load());
  EXPECT_EQ(control->FreezeEvents(FALSE), S_OK);
  EXPECT_TRUE(host_->Load());
  EXPECT_EQ(sink->heard().size(), 0u);
  EXPECT_EQ(control->FreezeEvents(FALSE), S_OK);
  EXPECT_EQ(control->FreezeEvents(FALSE), S_OK) << "once too often";
  EXPECT_TRUE(host_->Load());
  EXPECT_GT(sink->heard().size(), 0u);
}

// As a printer has them: pixels far smaller than those of the screen, behind a mapping of the form's.
TEST_F(FormAttacks, ADrawingIsSharpAtTheResolutionOfAPrinter) {
  const SIZEL extent{10583, 7938};  // 400 by 300 pixels of the screen
  SIZEL wanted = extent;
  ASSERT_EQ(Object()->SetExtent(DVASPECT_CONTENT, &wanted), S_OK);
  BackBuffer buffer;
  buffer.Resize({2500, 1875});
  SetMapMode(buffer.dc(), MM_ANISOTROPIC);
  SetWindowExtEx(buffer.dc(), 400, 300, nullptr);
  SetViewportExtEx(buffer.dc(), 2500, 1875, nullptr);
  const RECTL bounds{0, 0, 400, 300};
  ASSERT_EQ(Object().As<IViewObject2>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, buffer.dc(), &bounds,
                                              nullptr, nullptr, 0),
            S_OK);
  EXPECT_EQ(GetMapMode(buffer.dc()), MM_ANISOTROPIC);
  GdiFlush();
  // The band is as high as 32 pixels of the screen, and below it are the captions.
  const auto at = [&](int x, int y) { return buffer.pixels().values[y * 2500 + x] & 0x00FFFFFF; };
  EXPECT_EQ(at(2000, 190), 0x00FFFFFFu);
  EXPECT_NE(at(2000, 210), 0x00FFFFFFu);
  std::set<uint32_t> right;
  for (int y = 0; y < 1875; ++y) right.insert(at(2490, y));
  EXPECT_GT(right.size(), 2u) << "drawn to the right edge";
}

// How many more objects of GDI the process can have.
int FreeHandles() {
  std::vector<HBRUSH> brushes;
  constexpr size_t kMost = 100000;
  while (brushes.size() < kMost) {
    const HBRUSH brush = CreateSolidBrush(static_cast<COLORREF>(brushes.size()));
    if (brush == nullptr) break;
    brushes.push_back(brush);
  }
  for (const HBRUSH brush : brushes) DeleteObject(brush);
  return static_cast<int>(brushes.size());
}

int WindowsOfThread() {
  int count = 0;
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND, LPARAM data) -> BOOL {
        ++*reinterpret_cast<int*>(data);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&count));
  return count;
}

TEST_F(FormAttacks, NothingOfTheSystemsIsKeptWhenWindowsAreOpenedAndClosed) {
  const auto open_and_close = [&](int times) {
    for (int time = 0; time < times; ++time) {
      Activate();
      Printed();
      UpdateWindow(form_);
      SendMessageW(Window(), WM_MOUSEHOVER, 0, MAKELPARAM(60, 12));
      SendMessageW(Sheet(), WM_MOUSEHOVER, 0, MAKELPARAM(150, 100));
      SendMessageW(Sheet(), WM_KEYDOWN, VK_DOWN, 0);
      EXPECT_EQ(Object().As<IOleInPlaceObject>()->InPlaceDeactivate(), S_OK);
    }
  };
  host_->get()->put_Caption(Bstr(std::string(600, 'x')).get());
  open_and_close(10);
  const int free = FreeHandles();
  const int windows = WindowsOfThread();
  const DWORD user = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
  open_and_close(200);
  EXPECT_GE(FreeHandles(), free);
  EXPECT_EQ(WindowsOfThread(), windows);
  EXPECT_LE(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS), user);
}

}  // namespace
}  // namespace stockbook::com
