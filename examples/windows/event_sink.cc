// SPDX-License-Identifier: MIT
#include "event_sink.h"

#include <cstdio>

namespace {

// The ids of the events, in the order of the type library.
enum Event : DISPID {
  kProcess = 1,
  kAfterLoaded,
  kAfterFormatted,
  kCommandExecute,
  kNotify,
  kAfterRowChanged,
  kAfterRangeSelected,
  kMouseUp,
  kFindMsg
};

void PrintText(const char* event, const VARIANT& argument) {
  char text[2048] = "";
  if (argument.vt == VT_BSTR && argument.bstrVal != nullptr)
    WideCharToMultiByte(CP_UTF8, 0, argument.bstrVal, -1, text, sizeof text - 1, nullptr, nullptr);
  std::printf("%s: %s\n", event, text);
}

}  // namespace

HRESULT STDMETHODCALLTYPE EventSink::QueryInterface(REFIID id, void** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  if (id != __uuidof(IUnknown) && id != __uuidof(IDispatch) && id != __uuidof(__Stockbook)) return E_NOINTERFACE;
  *result = static_cast<IDispatch*>(this);
  AddRef();
  return S_OK;
}

ULONG STDMETHODCALLTYPE EventSink::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT STDMETHODCALLTYPE EventSink::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE EventSink::Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*,
                                            EXCEPINFO*, UINT*) {
  const UINT count = arguments == nullptr ? 0 : arguments->cArgs;
  if (event == kNotify && count == 1) PrintText("Notify", arguments->rgvarg[0]);
  if (event == kFindMsg && count == 1) PrintText("FindMsg", arguments->rgvarg[0]);
  // The second argument is the first one here: a host that wants no load writes VARIANT_TRUE into it.
  if (event == kCommandExecute && count == 2) PrintText("CommandExecute", arguments->rgvarg[1]);
  if (event == kAfterLoaded) std::puts("AfterLoaded");
  return S_OK;
}
