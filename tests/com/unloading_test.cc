// SPDX-License-Identifier: MIT
// A program that loads the component, shows a control and unloads the component again, as often as it likes.
#include <gtest/gtest.h>

#include <string>

#include "com/component.h"
#include "com/form_site.h"
#include "com/late.h"

namespace stockbook::com {
namespace {

using testing::FormSite;
using testing::Late;

template <typename Entrance>
Entrance EntranceOf(HMODULE component, const char* name) {
  return reinterpret_cast<Entrance>(reinterpret_cast<void*>(GetProcAddress(component, name)));
}

// A copy of the DLL: the one that all tests share stays loaded.
std::wstring CopiedComponent() {
  std::wstring folder(MAX_PATH + 1, L'\0');
  folder.resize(GetTempPathW(static_cast<DWORD>(folder.size()), folder.data()));
  const std::wstring path = folder + L"tqStockbook.copy." + std::to_wstring(GetCurrentProcessId()) + L".dll";
  EXPECT_NE(CopyFileW(testing::ComponentPath().c_str(), path.c_str(), FALSE), FALSE);
  return path;
}

void UseControl(IClassFactory& factory, HWND form) {
  FormSite site(form);
  {
    ComPtr<_Stockbook> control;
    ASSERT_EQ(factory.CreateInstance(nullptr, IID__Stockbook, control.Put()), S_OK);
    const auto object = control.As<IOleObject>();
    ASSERT_EQ(object->SetClientSite(&site), S_OK);
    EXPECT_EQ(object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &site, 0, form, &site.place), S_OK);
    UpdateWindow(form);
    EXPECT_EQ(Late(control.get()).Get("Rows").Long(), 1);
    EXPECT_EQ(control->put_dpID(40000), static_cast<HRESULT>(0x800A0006));
    EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_EQ(object->SetClientSite(nullptr), S_OK);
  }
  EXPECT_EQ(site.references, 1u);
}

void UseComponent(const std::wstring& path, HWND form) {
  const HMODULE component = LoadLibraryW(path.c_str());
  ASSERT_NE(component, nullptr);
  const auto get = EntranceOf<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(component, "DllGetClassObject");
  const auto can_unload = EntranceOf<HRESULT(STDAPICALLTYPE*)()>(component, "DllCanUnloadNow");
  {
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(get(CLSID_Stockbook, IID_IClassFactory, factory.Put()), S_OK);
    UseControl(*factory, form);
    EXPECT_EQ(can_unload(), S_FALSE);
  }
  EXPECT_EQ(can_unload(), S_OK);
  EXPECT_NE(FreeLibrary(component), FALSE);
  EXPECT_EQ(GetModuleHandleW(path.c_str()), nullptr) << "something of it is still held";
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) DispatchMessageW(&message);
}

TEST(Unloading, LeavesNothingThatCallsTheComponent) {
  const HWND form =
      CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 600, 400, nullptr, nullptr, nullptr, nullptr);
  if (form == nullptr) GTEST_SKIP() << "nothing here shows windows";
  const std::wstring path = CopiedComponent();
  for (int time = 0; time < 5; ++time) UseComponent(path, form);
  DestroyWindow(form);
  DeleteFileW(path.c_str());
}

}  // namespace
}  // namespace stockbook::com
