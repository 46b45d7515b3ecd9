// SPDX-License-Identifier: MIT
#include "com/object/persistence.h"

#include "com/automation/guarded.h"
#include "com/object/host_bag.h"
#include "com/object/memory_bag.h"
#include "com/object/saved_stream.h"

namespace stockbook::com {
namespace {

constexpr wchar_t kStreamName[] = L"Contents";

HRESULT GiveClass(CLSID* result) {
  if (result == nullptr) return E_POINTER;
  *result = CLSID_Stockbook;
  return S_OK;
}

template <typename Body>
HRESULT CallPinned(SavedState& state, REFIID id, Body body) {
  const ComPtr<IUnknown> pin = state.parts().Pin();
  return Guarded(id, body);
}

}  // namespace

void SavedState::Load(IPropertyBag& bag, IErrorLog* log) {
  HostBag host(bag, log, parts_.pictures());
  parts_.control().ReadProperties(host);
  dirty_ = false;
}

void SavedState::Save(IPropertyBag& bag) {
  HostBag host(bag, nullptr, parts_.pictures());
  parts_.control().WriteProperties(host);
}

void SavedState::Load(IStream& stream) {
  MemoryBag read = ReadSaved(stream, parts_.pictures());
  MemoryBag before;
  parts_.control().WriteProperties(before);
  try {
    parts_.control().ReadProperties(read);
  } catch (...) {
    parts_.control().ReadProperties(before);
    throw;
  }
  dirty_ = false;
}

void SavedState::Save(IStream& stream) {
  MemoryBag bag;
  parts_.control().WriteProperties(bag);
  WriteSaved(bag, stream, parts_.pictures());
}

HRESULT BagPersistence::GetClassID(CLSID* result) { return GiveClass(result); }

HRESULT BagPersistence::Load(IPropertyBag* bag, IErrorLog* log) {
  if (bag == nullptr) return RefuseNull(IID_IPersistPropertyBag);
  return CallPinned(state_, IID_IPersistPropertyBag, [&] { state_.Load(*bag, log); });
}

HRESULT BagPersistence::Save(IPropertyBag* bag, BOOL clear_dirty, BOOL /*save_all*/) {
  if (bag == nullptr) return RefuseNull(IID_IPersistPropertyBag);
  return CallPinned(state_, IID_IPersistPropertyBag, [&] {
    // No property has a default that could be left out.
    state_.Save(*bag);
    if (clear_dirty) state_.SetClean();
  });
}

HRESULT StreamPersistence::GetClassID(CLSID* result) { return GiveClass(result); }

HRESULT StreamPersistence::Load(IStream* stream) {
  if (stream == nullptr) return RefuseNull(IID_IPersistStreamInit);
  return CallPinned(state_, IID_IPersistStreamInit, [&] { state_.Load(*stream); });
}

HRESULT StreamPersistence::Save(IStream* stream, BOOL clear_dirty) {
  if (stream == nullptr) return RefuseNull(IID_IPersistStreamInit);
  return CallPinned(state_, IID_IPersistStreamInit, [&] {
    state_.Save(*stream);
    if (clear_dirty) state_.SetClean();
  });
}

HRESULT StreamPersistence::GetSizeMax(ULARGE_INTEGER* result) {
  if (result == nullptr) return E_POINTER;
  result->QuadPart = 0;
  return E_NOTIMPL;
}

HRESULT StoragePersistence::GetClassID(CLSID* result) { return GiveClass(result); }

HRESULT StoragePersistence::InitNew(IStorage* storage) {
  return storage == nullptr ? RefuseNull(IID_IPersistStorage) : S_OK;
}

HRESULT StoragePersistence::Load(IStorage* storage) {
  if (storage == nullptr) return RefuseNull(IID_IPersistStorage);
  return CallPinned(state_, IID_IPersistStorage, [&] {
    ComPtr<IStream> stream;
    Expect(storage->OpenStream(kStreamName, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, stream.PutTyped()));
    state_.Load(*stream);
  });
}

HRESULT StoragePersistence::Save(IStorage* storage, BOOL /*same_as_load*/) {
  if (storage == nullptr) return RefuseNull(IID_IPersistStorage);
  return CallPinned(state_, IID_IPersistStorage, [&] {
    ComPtr<IStream> stream;
    Expect(
        storage->CreateStream(kStreamName, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0, stream.PutTyped()));
    state_.Save(*stream);
    saved_ = true;
  });
}

HRESULT StoragePersistence::SaveCompleted(IStorage*) {
  if (saved_) state_.SetClean();
  saved_ = false;
  return S_OK;
}

// The storage is kept in no call.
HRESULT StoragePersistence::HandsOffStorage() { return S_OK; }

}  // namespace stockbook::com
