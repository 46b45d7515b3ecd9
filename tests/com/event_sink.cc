// SPDX-License-Identifier: MIT
#include "com/event_sink.h"

namespace stockbook::testing {

using com::ComPtr;

HRESULT EventSink::QueryInterface(REFIID id, void** result) {
  const bool known = id == IID_IUnknown || id == IID_IDispatch || id == DIID___Stockbook;
  *result = known ? static_cast<IDispatch*>(this) : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG EventSink::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT EventSink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*, UINT*) {
  const ComPtr<IUnknown> pin(this);
  std::vector<VARIANT*> arguments;
  std::string line = std::to_string(id);
  for (UINT index = parameters->cArgs; index > 0; --index) {
    VARIANT& argument = parameters->rgvarg[index - 1];
    arguments.push_back(&argument);
    line += "|" + com::ToText(com::Variant::CopyOf(argument).get());
  }
  heard_.push_back(line);
  if (id >= 0 && id < 16) ++counts_[id];
  return hear_ ? hear_(id, arguments) : S_OK;
}

namespace {

ComPtr<IConnectionPoint> PointOf(IUnknown* control, const IID& events) {
  ComPtr<IConnectionPoint> point;
  const auto container = ComPtr<IUnknown>(control).As<IConnectionPointContainer>();
  if (container) container->FindConnectionPoint(events, point.PutTyped());
  return point;
}

}  // namespace

DWORD Connect(IUnknown* control, IUnknown* sink, const IID& events) {
  DWORD cookie = 0;
  const auto point = PointOf(control, events);
  if (point) point->Advise(sink, &cookie);
  return cookie;
}

HRESULT Disconnect(IUnknown* control, DWORD cookie, const IID& events) {
  const auto point = PointOf(control, events);
  return point ? point->Unadvise(cookie) : E_NOINTERFACE;
}

}  // namespace stockbook::testing
