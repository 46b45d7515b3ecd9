// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <cstddef>
#include <utility>
#include <vector>

#include "com/automation/com_ptr.h"
#include "com/automation/guarded.h"
#include "com/library/module.h"

namespace stockbook::com {

// How an enumerator hands out a copy of an item. `Kept` is what it holds, `Given` what the caller gets and frees.
template <typename Kept, typename Given>
using HandOut = Given (*)(const Kept& kept);

// An object that lists items: as they were when it was made, whatever happens to them afterwards.
template <typename Interface, typename Kept, typename Given>
class Enumerator final : public Interface {
 public:
  Enumerator(std::vector<Kept> items, HandOut<Kept, Given> hand_out, size_t next = 0)
      : items_(std::move(items)), hand_out_(hand_out), next_(next) {}
  virtual ~Enumerator() = default;
  Enumerator(const Enumerator&) = delete;
  Enumerator& operator=(const Enumerator&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    if (result == nullptr) return E_POINTER;
    const bool known = id == IID_IUnknown || id == __uuidof(Interface);
    *result = known ? static_cast<Interface*>(this) : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG count, Given* items, ULONG* fetched) override {
    if (items == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
    ULONG given = 0;
    while (given < count && next_ < items_.size()) items[given++] = hand_out_(items_[next_++]);
    if (fetched != nullptr) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const size_t left = items_.size() - next_;
    next_ += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(Interface** result) override {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    return Guarded(__uuidof(Interface), [&] { *result = new Enumerator(items_, hand_out_, next_); });
  }

 private:
  ModuleUse use_;
  std::vector<Kept> items_;
  HandOut<Kept, Given> hand_out_;
  size_t next_;
  ULONG references_ = 1;
};

}  // namespace stockbook::com
