// SPDX-License-Identifier: MIT
#include <windows.h>

#include <gtest/gtest.h>
#include <ocidl.h>
#include <oleidl.h>

#include <memory>
#include <set>
#include <utility>

#include "com/component.h"
#include "com/form_site.h"
#include "com/library/identifiers.h"
#include "com/window/back_buffer.h"

namespace stockbook::com {
namespace {

using testing::FormSite;

class ActivationTest : public ::testing::Test {
 protected:
  void SetUp() override {
    form_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 600, 400, nullptr, nullptr, nullptr, nullptr);
    if (form_ == nullptr) GTEST_SKIP() << "nothing here shows windows";
    site_ = std::make_unique<FormSite>(form_);
    object_ = testing::NewStockbook<IOleObject>();
    ASSERT_TRUE(object_);
    ASSERT_EQ(object_->SetClientSite(site_.get()), S_OK);
  }
  void TearDown() override {
    if (object_) {
      object_->Close(OLECLOSE_NOSAVE);
      object_->SetClientSite(nullptr);
      object_.Reset();
    }
    if (site_ != nullptr) {
      EXPECT_EQ(site_->references, 1u);
    }
    if (form_ != nullptr) DestroyWindow(form_);
  }

  HRESULT Do(LONG verb) { return object_->DoVerb(verb, nullptr, site_.get(), 0, form_, &site_->place); }
  HWND ControlsWindow() const {
    HWND window = nullptr;
    const auto in_place = object_.As<IOleInPlaceObject>();
    in_place->GetWindow(&window);
    return window;
  }

  testing::Apartment apartment_;
  HWND form_ = nullptr;
  std::unique_ptr<FormSite> site_;
  ComPtr<IOleObject> object_;
};

TEST_F(ActivationTest, HasAWindowInTheFormsFromActivationToDeactivation) {
  EXPECT_EQ(ControlsWindow(), nullptr);
  ASSERT_EQ(Do(OLEIVERB_INPLACEACTIVATE), S_OK);
  EXPECT_EQ(site_->heard, "in place; show; ");
  const HWND window = ControlsWindow();
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(GetParent(window), form_);
  RECT rect{};
  GetClientRect(window, &rect);
  EXPECT_EQ(rect.right, 400);
  EXPECT_EQ(rect.bottom, 300);
  EXPECT_EQ(object_.As<IOleInPlaceObject>()->InPlaceDeactivate(), S_OK);
  EXPECT_EQ(IsWindow(window), FALSE);
  EXPECT_EQ(site_->heard, "in place; show; not in place; ");
}

TEST_F(ActivationTest, TellsTheFormWhenItTakesTheKeyboardAndGivesItBack) {
  ASSERT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
  EXPECT_EQ(site_->heard, "in place; show; ui; ");
  site_->heard.clear();
  EXPECT_EQ(object_.As<IOleInPlaceObject>()->UIDeactivate(), S_OK);
  EXPECT_EQ(site_->heard, "no ui; ");
  EXPECT_NE(ControlsWindow(), nullptr);
}

TEST_F(ActivationTest, FollowsThePlaceThatTheFormGivesIt) {
  ASSERT_EQ(Do(OLEIVERB_INPLACEACTIVATE), S_OK);
  const RECT place{10, 20, 210, 120};
  EXPECT_EQ(object_.As<IOleInPlaceObject>()->SetObjectRects(&place, &place), S_OK);
  RECT rect{};
  GetClientRect(ControlsWindow(), &rect);
  EXPECT_EQ(rect.right, 200);
  EXPECT_EQ(rect.bottom, 100);
  EXPECT_EQ(object_.As<IOleInPlaceObject>()->SetObjectRects(nullptr, nullptr), E_INVALIDARG);
}

TEST_F(ActivationTest, KeepsTheArrowsAndHandsTabToTheForm) {
  ASSERT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
  const auto active = object_.As<IOleInPlaceActiveObject>();
  const HWND sheet = FindWindowExW(ControlsWindow(), nullptr, L"tqStockbookSheet", nullptr);
  ASSERT_NE(sheet, nullptr);
  site_->heard.clear();
  MSG key{sheet, WM_KEYDOWN, VK_DOWN, 0, 0, {}};
  EXPECT_EQ(active->TranslateAccelerator(&key), S_OK);
  EXPECT_EQ(site_->heard, "");
  key.wParam = VK_TAB;
  EXPECT_EQ(active->TranslateAccelerator(&key), S_OK);
  EXPECT_EQ(site_->heard, "key 9; ");
  key.wParam = VK_F1;
  EXPECT_EQ(active->TranslateAccelerator(&key), S_FALSE);
}

TEST_F(ActivationTest, EndsADragByTheKeyThatWouldCloseTheForm) {
  ASSERT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
  const auto active = object_.As<IOleInPlaceActiveObject>();
  const HWND sheet = FindWindowExW(ControlsWindow(), nullptr, L"tqStockbookSheet", nullptr);
  SendMessageW(sheet, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(30, 40));
  ASSERT_EQ(GetCapture(), sheet);
  site_->heard.clear();
  MSG key{sheet, WM_KEYDOWN, VK_ESCAPE, 0, 0, {}};
  EXPECT_EQ(active->TranslateAccelerator(&key), S_OK);
  EXPECT_EQ(GetCapture(), nullptr);
  EXPECT_EQ(site_->heard, "");
  EXPECT_EQ(active->TranslateAccelerator(&key), S_FALSE);
  EXPECT_EQ(site_->heard, "key 27; ");
}

TEST_F(ActivationTest, LetsTheKeyboardOfADialogIn) {
  ASSERT_EQ(Do(OLEIVERB_INPLACEACTIVATE), S_OK);
  EXPECT_NE(GetWindowLongPtrW(ControlsWindow(), GWL_EXSTYLE) & WS_EX_CONTROLPARENT, 0);
}

TEST_F(ActivationTest, KeepsItsSizeInHundredthsOfAMillimetre) {
  SIZEL extent{};
  EXPECT_EQ(object_->GetExtent(DVASPECT_CONTENT, &extent), S_OK);
  EXPECT_GT(extent.cx, 0);
  SIZEL wanted{5080, 2540};
  EXPECT_EQ(object_->SetExtent(DVASPECT_CONTENT, &wanted), S_OK);
  EXPECT_EQ(object_.As<IViewObject2>()->GetExtent(DVASPECT_CONTENT, -1, nullptr, &extent), S_OK);
  EXPECT_EQ(extent.cx, 5080);
  EXPECT_EQ(extent.cy, 2540);
  EXPECT_EQ(object_->SetExtent(DVASPECT_ICON, &wanted), DV_E_DVASPECT);
  EXPECT_EQ(object_->SetExtent(DVASPECT_CONTENT, nullptr), E_POINTER);
}

TEST_F(ActivationTest, DrawsItselfWithoutAWindowIntoTheRectangleAlone) {
  BackBuffer buffer;
  buffer.Resize({400, 300});
  const RECTL bounds{40, 30, 360, 270};
  ASSERT_EQ(object_.As<IViewObject2>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, buffer.dc(), &bounds,
                                             nullptr, nullptr, 0),
            S_OK);
  GdiFlush();
  std::set<uint32_t> inside;
  for (int y = 0; y < 300; ++y) {
    for (int x = 0; x < 400; ++x) {
      const uint32_t value = buffer.pixels().values[y * 400 + x] & 0x00FFFFFF;
      const bool in = x >= 40 && x < 360 && y >= 30 && y < 270;
      if (in)
        inside.insert(value);
      else
        ASSERT_EQ(value, 0x00FFFFFFu) << x << " " << y;
    }
  }
  EXPECT_GT(inside.size(), 8u);  // band, captions, lines, background
}

TEST_F(ActivationTest, DrawsItselfIntoAMetafile) {
  const HDC dc = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
  const RECTL bounds{0, 0, 800, 400};
  EXPECT_EQ(object_.As<IViewObject2>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, &bounds,
                                             nullptr, 0),
            S_OK);
  const HENHMETAFILE file = CloseEnhMetaFile(dc);
  ENHMETAHEADER header{};
  GetEnhMetaFileHeader(file, sizeof header, &header);
  EXPECT_GT(header.nRecords, 20u);
  DeleteEnhMetaFile(file);
}

TEST_F(ActivationTest, DrawsItselfWhereATransformationPutsIt) {
  BackBuffer buffer;
  buffer.Resize({400, 300});
  SetGraphicsMode(buffer.dc(), GM_ADVANCED);
  const XFORM doubled{2, 0, 0, 2, 0, 0};
  SetWorldTransform(buffer.dc(), &doubled);
  const RECTL bounds{20, 15, 180, 135};
  ASSERT_EQ(object_.As<IViewObject2>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, buffer.dc(), &bounds,
                                             nullptr, nullptr, 0),
            S_OK);
  GdiFlush();
  RECT drawn{};
  for (int y = 0; y < 300; ++y) {
    for (int x = 0; x < 400; ++x) {
      if ((buffer.pixels().values[y * 400 + x] & 0x00FFFFFF) == 0x00FFFFFF) continue;
      const RECT pixel{x, y, x + 1, y + 1};
      UnionRect(&drawn, &drawn, &pixel);
    }
  }
  EXPECT_EQ(drawn.left, 40);
  EXPECT_EQ(drawn.top, 30);
  EXPECT_EQ(drawn.right, 360);
  EXPECT_EQ(drawn.bottom, 270);
  XFORM now{};
  EXPECT_NE(GetWorldTransform(buffer.dc(), &now), 0);
  EXPECT_EQ(now.eM11, 2);
}

// A form that prints into an old metafile gets the whole control, each part at its place.
TEST_F(ActivationTest, DrawsItselfIntoAMetafileOfTheOldKind) {
  const auto view = object_.As<IViewObject2>();
  const RECTL bounds{0, 0, 400, 300};
  BackBuffer straight;
  straight.Resize({400, 300});
  ASSERT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, straight.dc(), &bounds, nullptr, nullptr, 0),
            S_OK);
  const HDC dc = CreateMetaFileW(nullptr);
  ASSERT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, &bounds, nullptr, 0), S_OK);
  const HMETAFILE file = CloseMetaFile(dc);
  BackBuffer played;
  played.Resize({400, 300});
  PlayMetaFile(played.dc(), file);
  DeleteMetaFile(file);
  GdiFlush();
  int same = 0;
  for (int at = 0; at < 400 * 300; ++at)
    same += (straight.pixels().values[at] & 0x00FFFFFF) == (played.pixels().values[at] & 0x00FFFFFF) ? 1 : 0;
  EXPECT_GT(same, 400 * 300 * 97 / 100);
}

TEST_F(ActivationTest, RefusesToDrawWhatItHasNot) {
  const auto view = object_.As<IViewObject2>();
  const RECTL bounds{0, 0, 8, 4};
  EXPECT_EQ(view->Draw(DVASPECT_ICON, -1, nullptr, nullptr, nullptr, nullptr, &bounds, nullptr, nullptr, 0),
            DV_E_DVASPECT);
  EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, nullptr, &bounds, nullptr, nullptr, 0),
            E_INVALIDARG);
}

TEST_F(ActivationTest, OutlivesAFormThatClosesItInTheMiddleOfEveryStep) {
  for (const char* moment : {"in place", "show", "ui", "no ui", "not in place"}) {
    site_->heard.clear();
    site_->meanwhile = [&](const std::string& what) {
      if (what != moment) return;
      site_->meanwhile = nullptr;
      object_->Close(OLECLOSE_NOSAVE);
    };
    Do(OLEIVERB_UIACTIVATE);
    object_->Close(OLECLOSE_NOSAVE);
    EXPECT_EQ(ControlsWindow(), nullptr) << moment;
    EXPECT_FALSE(site_->meanwhile) << moment;
  }
}

TEST_F(ActivationTest, SurvivesTheEndOfTheFormsWindow) {
  ASSERT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
  DestroyWindow(std::exchange(form_, nullptr));
  EXPECT_EQ(object_->Close(OLECLOSE_NOSAVE), S_OK);
}

TEST_F(ActivationTest, GetsANewWindowInTheNextForm) {
  ASSERT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
  DestroyWindow(std::exchange(form_, nullptr));
  form_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 600, 400, nullptr, nullptr, nullptr, nullptr);
  FormSite next(form_);
  EXPECT_EQ(object_->SetClientSite(&next), S_OK);
  EXPECT_EQ(object_->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &next, 0, form_, &next.place), S_OK);
  EXPECT_NE(ControlsWindow(), nullptr);
  EXPECT_EQ(GetParent(ControlsWindow()), form_);
  EXPECT_EQ(object_->SetClientSite(site_.get()), S_OK);
  EXPECT_EQ(ControlsWindow(), nullptr);
  EXPECT_EQ(next.references, 1u);
}

TEST_F(ActivationTest, IsActivatedAgainByTheFormWhoseWindowWasMadeAnew) {
  ASSERT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
  DestroyWindow(FindWindowExW(form_, nullptr, L"tqStockbookControl", nullptr));
  EXPECT_EQ(ControlsWindow(), nullptr);
  EXPECT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
  EXPECT_NE(ControlsWindow(), nullptr);
}

TEST_F(ActivationTest, AnswersNullPointersWithANumber) {
  EXPECT_EQ(object_->GetClientSite(nullptr), E_POINTER);
  EXPECT_EQ(object_->GetUserClassID(nullptr), E_POINTER);
  EXPECT_EQ(object_->GetUserType(USERCLASSTYPE_FULL, nullptr), E_POINTER);
  EXPECT_EQ(object_->GetMiscStatus(DVASPECT_CONTENT, nullptr), E_POINTER);
  EXPECT_EQ(object_.As<IOleControl>()->GetControlInfo(nullptr), E_POINTER);
  EXPECT_EQ(object_.As<IOleInPlaceObject>()->GetWindow(nullptr), E_POINTER);
  EXPECT_EQ(object_.As<IOleInPlaceActiveObject>()->TranslateAccelerator(nullptr), E_POINTER);
  EXPECT_EQ(Do(-100), E_NOTIMPL);
}

}  // namespace
}  // namespace stockbook::com
