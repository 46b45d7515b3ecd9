// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <oleidl.h>

#include <functional>
#include <string>

namespace stockbook::testing {

// A form's place for one control, in a window of the test's own. It records what the control tells it, and does in the
// middle of that what a test wants.
class FormSite final : public IOleClientSite, public IOleInPlaceSite, public IOleControlSite, public IDispatch {
 public:
  explicit FormSite(HWND window) : window_(window) {}
  virtual ~FormSite() = default;

  std::string heard;
  std::function<void(const std::string& what)> meanwhile;
  RECT place{0, 0, 400, 300};
  // Answers for ambient properties; without it there is a colour alone.
  std::function<HRESULT(DISPID property, VARIANT& value)> ambient;
  ULONG references = 1;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    *result = nullptr;
    if (id == IID_IUnknown || id == IID_IOleClientSite) *result = static_cast<IOleClientSite*>(this);
    if (id == IID_IOleWindow || id == IID_IOleInPlaceSite) *result = static_cast<IOleInPlaceSite*>(this);
    if (id == IID_IOleControlSite) *result = static_cast<IOleControlSite*>(this);
    if (id == IID_IDispatch) *result = static_cast<IDispatch*>(this);
    if (*result != nullptr) ++references;
    return *result == nullptr ? E_NOINTERFACE : S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }

  // IOleClientSite
  HRESULT STDMETHODCALLTYPE SaveObject() override { return Hear("save"); }
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
  HRESULT STDMETHODCALLTYPE ShowObject() override { return Hear("show"); }
  HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }
  // IOleInPlaceSite
  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
    *window = window_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return Hear("in place"); }
  HRESULT STDMETHODCALLTYPE OnUIActivate() override { return Hear("ui"); }
  HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT position,
                                             LPRECT clip, LPOLEINPLACEFRAMEINFO) override {
    *frame = nullptr;
    *document = nullptr;
    *position = place;
    *clip = place;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return Hear("no ui"); }
  HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return Hear("not in place"); }
  HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) override { return E_NOTIMPL; }
  // IOleControlSite
  HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, DWORD) override {
    Hear("key " + std::to_string(message->wParam));
    return message->wParam == VK_TAB ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE OnFocus(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }
  // IDispatch: the ambient properties
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID property, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* value, EXCEPINFO*,
                                   UINT*) override {
    if (ambient) return ambient(property, *value);
    constexpr DISPID kBackColour = -701;
    if (property != kBackColour) return DISP_E_MEMBERNOTFOUND;
    value->vt = VT_I4;
    value->lVal = 0x00123456;
    return S_OK;
  }

 private:
  HRESULT Hear(const std::string& what) {
    heard += what + "; ";
    if (meanwhile) meanwhile(what);
    return S_OK;
  }

  HWND window_;
};

}  // namespace stockbook::testing
