// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <vector>

#include "com/automation/com_ptr.h"

namespace stockbook::com {

// The listeners of one interface. The object that offers it owns it, and lives as long as anybody holds it. Listeners
// may come and go, and call anything, while they hear.
class ConnectionPoint final : public IConnectionPoint {
 public:
  struct Connection {
    DWORD cookie;
    ComPtr<IUnknown> sink;  // of the point's interface
  };

  ConnectionPoint(IUnknown& object, IConnectionPointContainer& container, const IID& interface_id)
      : object_(object), container_(container), interface_id_(interface_id) {}
  virtual ~ConnectionPoint() = default;
  ConnectionPoint(const ConnectionPoint&) = delete;
  ConnectionPoint& operator=(const ConnectionPoint&) = delete;

  // The point is an object of its own, although it counts with the other.
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return object_.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return object_.Release(); }

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* result) override;
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** result) override;
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** result) override;

  bool HasSinks() const { return !connections_.empty(); }
  const IID& interface_id() const { return interface_id_; }

  // Calls every listener that is there at the start and still there when its turn comes, in the order they came.
  template <typename Interface, typename Tell>
  void ForEach(Tell tell) {
    if (connections_.empty()) return;
    const ComPtr<IUnknown> pin(&object_);
    std::vector<DWORD> cookies;
    for (const Connection& connection : connections_) cookies.push_back(connection.cookie);
    for (const DWORD cookie : cookies) {
      const ComPtr<IUnknown> sink = SinkOf(cookie);
      if (sink) tell(*static_cast<Interface*>(sink.get()));
    }
  }

 private:
  ComPtr<IUnknown> SinkOf(DWORD cookie) const;

  IUnknown& object_;
  IConnectionPointContainer& container_;
  IID interface_id_;
  std::vector<Connection> connections_;
  DWORD last_cookie_ = 0;
};

}  // namespace stockbook::com
