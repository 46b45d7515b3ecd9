// SPDX-License-Identifier: MIT
#include "com/object/ole_object.h"

#include <algorithm>
#include <string_view>

#include "com/automation/guarded.h"
#include "com/library/identifiers.h"

namespace stockbook::com {
namespace {

constexpr std::wstring_view kUserType = L"Stockbook";

}  // namespace

HRESULT OleObject::SetClientSite(IOleClientSite* site) {
  const auto pin = activation_.parts().Pin();
  return Guarded(IID_IOleObject, [&] { activation_.SetSite(site); });
}

HRESULT OleObject::GetClientSite(IOleClientSite** site) {
  if (site == nullptr) return E_POINTER;
  *site = ComPtr<IOleClientSite>(activation_.site()).Detach();
  return S_OK;
}

HRESULT OleObject::SetHostNames(LPCOLESTR /*application*/, LPCOLESTR /*document*/) { return S_OK; }

HRESULT OleObject::Close(DWORD save) {
  const auto pin = activation_.parts().Pin();
  return Guarded(IID_IOleObject, [&] { activation_.Close(save); });
}

HRESULT OleObject::SetMoniker(DWORD /*which*/, IMoniker* /*moniker*/) { return E_NOTIMPL; }

HRESULT OleObject::GetMoniker(DWORD /*assign*/, DWORD /*which*/, IMoniker** moniker) {
  if (moniker == nullptr) return E_POINTER;
  *moniker = nullptr;
  return E_NOTIMPL;
}

HRESULT OleObject::InitFromData(IDataObject* /*data*/, BOOL /*creation*/, DWORD /*reserved*/) { return E_NOTIMPL; }

HRESULT OleObject::GetClipboardData(DWORD /*reserved*/, IDataObject** data) {
  if (data == nullptr) return E_POINTER;
  *data = nullptr;
  return E_NOTIMPL;
}

HRESULT OleObject::DoVerb(LONG verb, LPMSG /*message*/, IOleClientSite* /*site*/, LONG /*index*/, HWND /*parent*/,
                          LPCRECT /*place*/) {
  const auto pin = activation_.parts().Pin();
  switch (verb) {
    case OLEIVERB_PRIMARY:
    case OLEIVERB_SHOW:
    case OLEIVERB_UIACTIVATE:
      // A form that is being designed keeps the keyboard.
      return activation_.ambient().user_mode ? activation_.ActivateUi() : activation_.ActivateInPlace();
    case OLEIVERB_INPLACEACTIVATE:
      return activation_.ActivateInPlace();
    case OLEIVERB_HIDE: {
      activation_.DeactivateUi();
      const ControlWindow* window = activation_.window();
      if (window != nullptr) ShowWindow(window->handle(), SW_HIDE);
      return S_OK;
    }
    case OLEIVERB_DISCARDUNDOSTATE:
      return S_OK;
    default:
      // There are no verbs of its own; a positive one stands for the primary one then.
      if (verb < 0) return E_NOTIMPL;
      return FAILED(activation_.ActivateUi()) ? E_FAIL : OLEOBJ_S_INVALIDVERB;
  }
}

HRESULT OleObject::EnumVerbs(IEnumOLEVERB** verbs) {
  if (verbs == nullptr) return E_POINTER;
  *verbs = nullptr;
  return OleRegEnumVerbs(CLSID_Stockbook, verbs);
}

HRESULT OleObject::GetUserClassID(CLSID* id) {
  if (id == nullptr) return E_POINTER;
  *id = CLSID_Stockbook;
  return S_OK;
}

HRESULT OleObject::GetUserType(DWORD /*form*/, LPOLESTR* type) {
  if (type == nullptr) return E_POINTER;
  *type = static_cast<LPOLESTR>(CoTaskMemAlloc((kUserType.size() + 1) * sizeof(OLECHAR)));
  if (*type == nullptr) return E_OUTOFMEMORY;
  std::copy_n(kUserType.data(), kUserType.size() + 1, *type);
  return S_OK;
}

HRESULT OleObject::SetExtent(DWORD aspect, SIZEL* extent) {
  if (extent == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (extent->cx < 0 || extent->cy < 0) return E_INVALIDARG;
  const auto pin = activation_.parts().Pin();
  activation_.SetExtent(*extent);
  return S_OK;
}

HRESULT OleObject::GetExtent(DWORD aspect, SIZEL* extent) {
  if (extent == nullptr) return E_POINTER;
  *extent = {};
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  *extent = activation_.extent();
  return S_OK;
}

HRESULT OleObject::Advise(IAdviseSink* sink, DWORD* cookie) {
  if (cookie == nullptr) return E_POINTER;
  *cookie = 0;
  if (activation_.advise_holder() == nullptr) {
    const HRESULT made = CreateOleAdviseHolder(activation_.PutAdviseHolder());
    if (FAILED(made)) return made;
  }
  return activation_.advise_holder()->Advise(sink, cookie);
}

HRESULT OleObject::Unadvise(DWORD cookie) {
  IOleAdviseHolder* holder = activation_.advise_holder();
  return holder == nullptr ? OLE_E_NOCONNECTION : holder->Unadvise(cookie);
}

HRESULT OleObject::EnumAdvise(IEnumSTATDATA** sinks) {
  if (sinks == nullptr) return E_POINTER;
  *sinks = nullptr;
  IOleAdviseHolder* holder = activation_.advise_holder();
  return holder == nullptr ? S_OK : holder->EnumAdvise(sinks);
}

HRESULT OleObject::GetMiscStatus(DWORD aspect, DWORD* status) {
  if (status == nullptr) return E_POINTER;
  *status = aspect == DVASPECT_CONTENT ? kMiscStatus : 0;
  return S_OK;
}

HRESULT OleObject::SetColorScheme(LOGPALETTE* /*palette*/) { return E_NOTIMPL; }

}  // namespace stockbook::com
