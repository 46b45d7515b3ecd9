// SPDX-License-Identifier: MIT
#pragma once

#include <unknwn.h>

namespace stockbook::com {

// One interface of an object that has several: it borrows the object, which outlives it, and leaves identity and
// reference count to it.
template <typename Interface>
class Delegating : public Interface {
 public:
  explicit Delegating(IUnknown& object) : object_(object) {}
  virtual ~Delegating() = default;
  Delegating(const Delegating&) = delete;
  Delegating& operator=(const Delegating&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) final {
    return object_.QueryInterface(id, result);
  }
  ULONG STDMETHODCALLTYPE AddRef() final { return object_.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() final { return object_.Release(); }

 protected:
  IUnknown& object() const { return object_; }

 private:
  IUnknown& object_;
};

}  // namespace stockbook::com
