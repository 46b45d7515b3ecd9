// SPDX-License-Identifier: MIT
// The events of the mouse, raised by messages to the control's window on a form.
#include <windows.h>

#include <gtest/gtest.h>
#include <ocidl.h>
#include <oleacc.h>

#include "com/event_sink.h"
#include "com/form_site.h"
#include "com/hosted_journal.h"

namespace stockbook::com {
namespace {

using testing::EventSink;
using testing::FormSite;
using testing::HostedJournal;

constexpr DISPID kHeardBill = 4;
constexpr DISPID kHeardMoved = 6;
constexpr DISPID kHeardRange = 7;
constexpr DISPID kHeardMouse = 8;

class MouseEvents : public ::testing::Test {
 protected:
  void SetUp() override {
    form_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 600, 400, nullptr, nullptr, nullptr, nullptr);
    if (form_ == nullptr) GTEST_SKIP() << "nothing here shows windows";
  }
  void TearDown() override {
    if (form_ != nullptr) DestroyWindow(form_);
  }

  // The window of the sheet of the control, which is placed on the form and has a range selected.
  HWND ShowWithARange(const HostedJournal& host, FormSite& site) {
    const auto object = ComPtr<IUnknown>(host.get()).As<IOleObject>();
    EXPECT_EQ(object->SetClientSite(&site), S_OK);
    EXPECT_EQ(object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &site, 0, form_, &site.place), S_OK);
    EXPECT_TRUE(host.grid().Call("Select", 3, 2, 5, 4).Succeeded());
    HWND window = nullptr;
    object.As<IOleInPlaceObject>()->GetWindow(&window);
    return FindWindowExW(window, nullptr, L"tqStockbookSheet", nullptr);
  }

  HWND form_ = nullptr;
};

TEST_F(MouseEvents, ComeInTheirOrderWhenAButtonIsReleased) {
  FormSite site(form_);
  {
    const HostedJournal host(HostedJournal::State::kLoaded);
    const HWND sheet = ShowWithARange(host, site);
    ASSERT_NE(sheet, nullptr);
    const auto sink = EventSink::Make();
    testing::Connect(host.get(), sink.get());
    SendMessageW(sheet, WM_MBUTTONUP, MK_SHIFT, MAKELPARAM(100, 60));
    ASSERT_EQ(sink->heard().size(), 2u);
    EXPECT_EQ(sink->heard()[0], "7");
    EXPECT_EQ(sink->heard()[1].substr(0, 6), "8|4|1|");
    ComPtr<IUnknown>(host.get()).As<IOleObject>()->Close(OLECLOSE_NOSAVE);
    ComPtr<IUnknown>(host.get()).As<IOleObject>()->SetClientSite(nullptr);
  }
  EXPECT_EQ(site.references, 1u);
  EXPECT_TRUE(testing::ComponentIsIdle());
}

TEST_F(MouseEvents, LetAListenerReleaseTheControlInTheMiddleOfEach) {
  for (const DISPID event : {kHeardRange, kHeardMouse}) {
    SCOPED_TRACE(event);
    FormSite site(form_);
    HostedJournal host(HostedJournal::State::kLoaded);
    const HWND sheet = ShowWithARange(host, site);
    ASSERT_NE(sheet, nullptr);
    const auto sink = EventSink::Make([&](DISPID heard, std::vector<VARIANT*>) {
      if (heard == event) host.control().Reset();
      return S_OK;
    });
    testing::Connect(host.get(), sink.get());
    SendMessageW(sheet, WM_MBUTTONUP, 0, MAKELPARAM(100, 60));
    EXPECT_EQ(sink->Count(event), 1);
    EXPECT_EQ(IsWindow(sheet), FALSE);
    EXPECT_EQ(sink->references(), 1u) << "the control has ended and let go of its listener";
    EXPECT_EQ(site.references, 1u);
    EXPECT_TRUE(testing::ComponentIsIdle());
  }
}

// Somewhere there is the number of a bill, whose double click is announced.
void DoubleClickEverywhere(HWND sheet) {
  for (int y = 25; y < 290; y += 8) {
    for (int x = 25; x < 390 && IsWindow(sheet) != FALSE; x += 12) {
      for (const int message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP})
        SendMessageW(sheet, static_cast<UINT>(message), 0, MAKELPARAM(x, y));
    }
  }
}

TEST_F(MouseEvents, LetAListenerCloseTheControlInADoubleClick) {
  for (const bool drops_it : {false, true}) {
    SCOPED_TRACE(drops_it);
    FormSite site(form_);
    HostedJournal host(HostedJournal::State::kLoaded);
    const HWND sheet = ShowWithARange(host, site);
    ASSERT_NE(sheet, nullptr);
    const auto sink = EventSink::Make([&](DISPID heard, std::vector<VARIANT*>) {
      if (heard != kHeardBill) return S_OK;
      const auto object = ComPtr<IUnknown>(host.get()).As<IOleObject>();
      EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
      EXPECT_EQ(object->SetClientSite(nullptr), S_OK);
      if (drops_it) host.control().Reset();
      return S_OK;
    });
    testing::Connect(host.get(), sink.get());
    DoubleClickEverywhere(sheet);
    EXPECT_EQ(sink->Count(kHeardBill), 1);
    EXPECT_EQ(IsWindow(sheet), FALSE);
    EXPECT_EQ(sink->references(), drops_it ? 1u : 2u);
    EXPECT_EQ(site.references, 1u);
    EXPECT_EQ(testing::ComponentIsIdle(), drops_it);
  }
}

TEST_F(MouseEvents, LetAListenerReleaseTheControlThatAScreenReaderMoves) {
  FormSite site(form_);
  HostedJournal host(HostedJournal::State::kLoaded);
  const HWND sheet = ShowWithARange(host, site);
  ASSERT_NE(sheet, nullptr);
  ComPtr<IAccessible> reader;
  ASSERT_EQ(AccessibleObjectFromWindow(sheet, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible, reader.Put()), S_OK);
  LONG children = 0;
  ASSERT_EQ(reader->get_accChildCount(&children), S_OK);
  const auto sink = EventSink::Make([&](DISPID heard, std::vector<VARIANT*>) {
    if (heard == kHeardMoved) host.control().Reset();
    return S_OK;
  });
  testing::Connect(host.get(), sink.get());
  const Variant last{static_cast<int32_t>(children)};
  EXPECT_EQ(reader->accSelect(SELFLAG_TAKESELECTION, last.get()), S_OK);
  EXPECT_EQ(sink->Count(kHeardMoved), 1);
  EXPECT_EQ(IsWindow(sheet), FALSE);
  EXPECT_EQ(sink->references(), 1u);
  EXPECT_EQ(reader->get_accChildCount(&children), CO_E_OBJNOTCONNECTED);
  reader.Reset();
  EXPECT_TRUE(testing::ComponentIsIdle());
}

}  // namespace
}  // namespace stockbook::com
