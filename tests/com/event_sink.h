// SPDX-License-Identifier: MIT
#pragma once

#include "com/library/identifiers.h"

#include <functional>
#include <string>
#include <vector>

#include "com/automation/com_ptr.h"
#include "com/automation/variant.h"

namespace stockbook::testing {

// A listener of the event interface that keeps what it hears, one line an event, and then does what the test says.
class EventSink final : public IDispatch {
 public:
  // Called with the event's number and the arguments in their order.
  using Hear = std::function<HRESULT(DISPID event, std::vector<VARIANT*> arguments)>;

  static com::ComPtr<EventSink> Make(Hear hear = {}) {
    return com::ComPtr<EventSink>::Adopt(new EventSink(std::move(hear)));
  }
  virtual ~EventSink() = default;

  const std::vector<std::string>& heard() const { return heard_; }
  // How often an event was heard.
  int Count(DISPID event) const { return counts_[event]; }
  ULONG references() const { return references_; }
  void SetHear(Hear hear) { hear_ = std::move(hear); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                                   UINT*) override;

 private:
  explicit EventSink(Hear hear) : hear_(std::move(hear)) {}

  Hear hear_;
  std::vector<std::string> heard_;
  int counts_[16] = {};
  ULONG references_ = 1;
};

// Connects the sink to the control's events; the cookie, or 0 after a failure.
DWORD Connect(IUnknown* control, IUnknown* sink, const IID& events = DIID___Stockbook);
HRESULT Disconnect(IUnknown* control, DWORD cookie, const IID& events = DIID___Stockbook);

}  // namespace stockbook::testing
