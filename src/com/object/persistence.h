// SPDX-License-Identifier: MIT
#pragma once

#include "com/library/identifiers.h"

#include "com/automation/delegating.h"
#include "com/object/object_parts.h"

namespace stockbook::com {

// What a form keeps of the control: the saved properties, in a bag, in a stream or in a storage, and whether they have
// changed since they were kept. A bag's failure reaches the host at once, with what was read before it in force;
// a damaged stream changes nothing.
class SavedState final : public platform::ControlSite {
 public:
  explicit SavedState(ObjectParts& parts) : parts_(parts) {}

  ObjectParts& parts() { return parts_; }
  bool IsDirty() const { return dirty_; }
  void SetClean() { dirty_ = false; }

  void Load(IPropertyBag& bag, IErrorLog* log);
  void Save(IPropertyBag& bag);
  void Load(IStream& stream);
  void Save(IStream& stream);

  // platform::ControlSite
  void PropertyChanged(std::string_view /*key*/) override { dirty_ = true; }
  void FrameChanged() override {}

 private:
  ObjectParts& parts_;
  bool dirty_ = false;
};

// The three interfaces to it.
class BagPersistence final : public Delegating<IPersistPropertyBag> {
 public:
  BagPersistence(IUnknown& object, SavedState& state) : Delegating(object), state_(state) {}
  HRESULT STDMETHODCALLTYPE GetClassID(CLSID* result) override;
  HRESULT STDMETHODCALLTYPE InitNew() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override;
  HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clear_dirty, BOOL save_all) override;

 private:
  SavedState& state_;
};

class StreamPersistence final : public Delegating<IPersistStreamInit> {
 public:
  StreamPersistence(IUnknown& object, SavedState& state) : Delegating(object), state_(state) {}
  HRESULT STDMETHODCALLTYPE GetClassID(CLSID* result) override;
  HRESULT STDMETHODCALLTYPE IsDirty() override { return state_.IsDirty() ? S_OK : S_FALSE; }
  HRESULT STDMETHODCALLTYPE Load(IStream* stream) override;
  HRESULT STDMETHODCALLTYPE Save(IStream* stream, BOOL clear_dirty) override;
  // Nobody knows how large a picture is when written: hosts that need a size write to a stream that only counts.
  HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* result) override;
  HRESULT STDMETHODCALLTYPE InitNew() override { return S_OK; }

 private:
  SavedState& state_;
};

class StoragePersistence final : public Delegating<IPersistStorage> {
 public:
  StoragePersistence(IUnknown& object, SavedState& state) : Delegating(object), state_(state) {}
  HRESULT STDMETHODCALLTYPE GetClassID(CLSID* result) override;
  HRESULT STDMETHODCALLTYPE IsDirty() override { return state_.IsDirty() ? S_OK : S_FALSE; }
  HRESULT STDMETHODCALLTYPE InitNew(IStorage* storage) override;
  HRESULT STDMETHODCALLTYPE Load(IStorage* storage) override;
  HRESULT STDMETHODCALLTYPE Save(IStorage* storage, BOOL same_as_load) override;
  HRESULT STDMETHODCALLTYPE SaveCompleted(IStorage* storage) override;
  HRESULT STDMETHODCALLTYPE HandsOffStorage() override;

 private:
  SavedState& state_;
  bool saved_ = false;  // and not yet told that the saving is complete
};

}  // namespace stockbook::com
