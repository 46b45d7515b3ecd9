// SPDX-License-Identifier: MIT
#include "com/object/connection_point.h"

#include <olectl.h>

#include <algorithm>

#include "com/object/enumerator.h"

namespace stockbook::com {
namespace {

CONNECTDATA ConnectDataOf(const ConnectionPoint::Connection& connection) {
  return {ComPtr<IUnknown>(connection.sink).Detach(), connection.cookie};
}

}  // namespace

HRESULT ConnectionPoint::QueryInterface(REFIID id, void** result) {
  if (result == nullptr) return E_POINTER;
  const bool known = id == IID_IUnknown || id == IID_IConnectionPoint;
  *result = known ? static_cast<IConnectionPoint*>(this) : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* result) {
  if (result == nullptr) return E_POINTER;
  *result = interface_id_;
  return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** result) {
  if (result == nullptr) return E_POINTER;
  container_.AddRef();
  *result = &container_;
  return S_OK;
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
  if (cookie != nullptr) *cookie = 0;
  if (sink == nullptr || cookie == nullptr) return E_POINTER;
  // The listener may do anything when it is asked what it is.
  const ComPtr<IUnknown> pin(&object_);
  return Guarded(IID_IConnectionPoint, [&] {
    ComPtr<IUnknown> listener;
    // A script's listener answers to IDispatch and may not know whose events it hears.
    if (FAILED(sink->QueryInterface(interface_id_, listener.Put())) &&
        (interface_id_ == IID_IPropertyNotifySink || FAILED(sink->QueryInterface(IID_IDispatch, listener.Put())))) {
      throw AutomationError(CONNECT_E_CANNOTCONNECT, "无法连接：接收方不支持这个事件接口。");
    }
    connections_.push_back({++last_cookie_, std::move(listener)});
    *cookie = last_cookie_;
  });
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
  const auto found = std::find_if(connections_.begin(), connections_.end(),
                                  [&](const Connection& connection) { return connection.cookie == cookie; });
  if (found == connections_.end()) return CONNECT_E_NOCONNECTION;
  // Releasing the listener may end everything else.
  const ComPtr<IUnknown> pin(&object_);
  const ComPtr<IUnknown> sink = std::move(found->sink);
  connections_.erase(found);
  return S_OK;
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  return Guarded(IID_IConnectionPoint, [&] {
    *result = new Enumerator<IEnumConnections, Connection, CONNECTDATA>(connections_, ConnectDataOf);
  });
}

ComPtr<IUnknown> ConnectionPoint::SinkOf(DWORD cookie) const {
  for (const Connection& connection : connections_) {
    if (connection.cookie == cookie) return connection.sink;
  }
  return {};
}

}  // namespace stockbook::com
