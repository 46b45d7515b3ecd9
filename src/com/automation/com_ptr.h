// SPDX-License-Identifier: MIT
#pragma once

#include <unknwn.h>

#include <utility>

namespace stockbook::com {

// A counted reference to a COM object, which it releases. A plain value: copying adds a reference, moving hands it
// over.
template <typename Interface>
class ComPtr {
 public:
  ComPtr() = default;
  // Adds a reference.
  explicit ComPtr(Interface* object) : object_(object) {
    if (object_ != nullptr) object_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ~ComPtr() { Reset(); }
  ComPtr& operator=(const ComPtr& other) {
    ComPtr(other).Swap(*this);
    return *this;
  }
  ComPtr& operator=(ComPtr&& other) noexcept {
    ComPtr(std::move(other)).Swap(*this);
    return *this;
  }

  // Takes over a reference that the caller holds.
  static ComPtr Adopt(Interface* object) {
    ComPtr pointer;
    pointer.object_ = object;
    return pointer;
  }

  // The object as another interface, or nothing.
  template <typename Other>
  ComPtr<Other> As() const {
    ComPtr<Other> other;
    if (object_ != nullptr) object_->QueryInterface(__uuidof(Other), other.Put());
    return other;
  }

  Interface* get() const { return object_; }
  Interface* operator->() const { return object_; }
  Interface& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

  void Reset() {
    // Releasing may run code that looks at this pointer.
    if (Interface* object = std::exchange(object_, nullptr); object != nullptr) object->Release();
  }
  // Where a function writes a reference that it hands over.
  void** Put() {
    Reset();
    return reinterpret_cast<void**>(&object_);
  }
  Interface** PutTyped() {
    Reset();
    return &object_;
  }
  // Hands the reference over to the caller.
  Interface* Detach() { return std::exchange(object_, nullptr); }
  void Swap(ComPtr& other) noexcept { std::swap(object_, other.object_); }

 private:
  Interface* object_ = nullptr;
};

}  // namespace stockbook::com
