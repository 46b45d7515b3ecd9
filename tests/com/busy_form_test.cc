// SPDX-License-Identifier: MIT
// A form that goes on with its work while the control raises events: it paints, takes the user's keys and mouse, draws
// the control elsewhere and saves it, in the middle of a load.
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

void PaintAndPump(HWND window) {
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) DispatchMessageW(&message);
}

void UseMouseAndKeys(HWND sheet) {
  for (const int key : {VK_DOWN, VK_NEXT, VK_END, VK_UP, VK_HOME, VK_RETURN, VK_ADD, VK_SUBTRACT}) {
    SendMessageW(sheet, WM_KEYDOWN, static_cast<WPARAM>(key), 0);
    SendMessageW(sheet, WM_KEYUP, static_cast<WPARAM>(key), 0);
  }
  for (const int y : {10, 60, 200}) {
    for (const int x : {5, 60, 300}) {
      SendMessageW(sheet, WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
      SendMessageW(sheet, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
      SendMessageW(sheet, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x + 40, y + 20));
      SendMessageW(sheet, WM_LBUTTONUP, 0, MAKELPARAM(x + 40, y + 20));
      SendMessageW(sheet, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(x, y));
      SendMessageW(sheet, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
    }
  }
  SendMessageW(sheet, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
  SendMessageW(sheet, WM_VSCROLL, SB_BOTTOM, 0);
  SendMessageW(sheet, WM_HSCROLL, SB_PAGERIGHT, 0);
  SendMessageW(sheet, WM_KILLFOCUS, 0, 0);
}

void DrawAndSave(const HostedJournal& host) {
  const ComPtr<IUnknown> object(host.get());
  const HDC dc = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
  const RECTL bounds{0, 0, 300, 200};
  EXPECT_EQ(object.As<IViewObject2>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr,
                                            nullptr, 0),
            S_OK);
  DeleteEnhMetaFile(CloseEnhMetaFile(dc));
  ComPtr<IStream> stream;
  CreateStreamOnHGlobal(nullptr, TRUE, stream.PutTyped());
  EXPECT_EQ(object.As<IPersistStreamInit>()->Save(stream.get(), FALSE), S_OK);
}

void AskAsAScreenReader(HWND sheet) {
  ComPtr<IAccessible> reader;
  AccessibleObjectFromWindow(sheet, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible, reader.Put());
  if (!reader) return;
  LONG children = 0;
  reader->get_accChildCount(&children);
  for (int32_t child = 0; child <= children + 1; child += 7) {
    BSTR name = nullptr;
    reader->get_accName(Variant(child).get(), &name);
    SysFreeString(name);
  }
}

void WorkOn(const HostedJournal& host, HWND form, HWND sheet) {
  UseMouseAndKeys(sheet);
  PaintAndPump(form);
  SetWindowPos(GetParent(sheet), nullptr, 0, 0, 200, 150, SWP_NOZORDER | SWP_NOACTIVATE);
  PaintAndPump(form);
  SetWindowPos(GetParent(sheet), nullptr, 0, 0, 400, 300, SWP_NOZORDER | SWP_NOACTIVATE);
  AskAsAScreenReader(sheet);
  DrawAndSave(host);
}

TEST(BusyForms, WorkOnInTheMiddleOfALoad) {
  const HWND form =
      CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 600, 400, nullptr, nullptr, nullptr, nullptr);
  if (form == nullptr) GTEST_SKIP() << "nothing here shows windows";
  FormSite site(form);
  {
    const HostedJournal host(HostedJournal::State::kEmpty);
    const auto object = ComPtr<IUnknown>(host.get()).As<IOleObject>();
    ASSERT_EQ(object->SetClientSite(&site), S_OK);
    ASSERT_EQ(object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &site, 0, form, &site.place), S_OK);
    HWND window = nullptr;
    ASSERT_EQ(object.As<IOleInPlaceObject>()->GetWindow(&window), S_OK);
    const HWND sheet = FindWindowExW(window, nullptr, L"tqStockbookSheet", nullptr);
    ASSERT_NE(sheet, nullptr);
    int depth = 0;
    int worked = 0;
    const auto sink = EventSink::Make([&](DISPID, std::vector<VARIANT*>) {
      if (++depth == 1) {
        WorkOn(host, form, sheet);
        ++worked;
      }
      --depth;
      return S_OK;
    });
    const DWORD cookie = testing::Connect(host.get(), sink.get());
    for (int time = 0; time < 2; ++time) {
      EXPECT_TRUE(host.Load());
      EXPECT_EQ(host.late().Get("Rows").Long(), 16);
      EXPECT_EQ(host.grid().Get("Tag").Text(), "");
      EXPECT_TRUE(host.grid().Get("Redraw").Truth());
    }
    EXPECT_GT(worked, 20);
    EXPECT_EQ(testing::Disconnect(host.get(), cookie), S_OK);
    EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_EQ(object->SetClientSite(nullptr), S_OK);
  }
  DestroyWindow(form);
  EXPECT_EQ(site.references, 1u);
  EXPECT_TRUE(testing::ComponentIsIdle());
}

}  // namespace
}  // namespace stockbook::com
