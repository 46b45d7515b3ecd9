// SPDX-License-Identifier: MIT
#include "com/object/stockbook_object.h"

#include "com/automation/guarded.h"
#include "com/object/type_descriptions.h"

namespace stockbook::com {

StockbookObject::StockbookObject(IUnknown* outer)
    : identity_(outer == nullptr ? *this : *outer),
      described_(DescriptionOf(IID__Stockbook)),
      parts_(identity_),
      event_source_(identity_),
      notices_(event_source_.changes(), described_),
      members_(identity_, described_, parts_, notices_),
      class_info_(identity_),
      error_support_(identity_),
      in_place_active_(identity_),
      activation_(parts_, in_place_active_),
      ole_object_(identity_, activation_),
      ole_control_(identity_, activation_, event_source_.raiser()),
      in_place_(identity_, activation_),
      view_object_(identity_, activation_),
      saved_state_(parts_),
      bag_persistence_(identity_, saved_state_),
      stream_persistence_(identity_, saved_state_),
      storage_persistence_(identity_, saved_state_) {
  in_place_active_.SetActivation(activation_);
  parts_.AddSite(saved_state_);
  parts_.AddSite(notices_);
  parts_.control().AddListener(&event_source_.raiser());
}

StockbookObject::~StockbookObject() {
  parts_.control().RemoveListener(&event_source_.raiser());
  parts_.RemoveSite(notices_);
  parts_.RemoveSite(saved_state_);
}

ComPtr<IUnknown> StockbookObject::Create(IUnknown* outer) {
  return ComPtr<IUnknown>::Adopt(new StockbookObject(outer));
}

ULONG StockbookObject::Release() {
  const ULONG left = --references_;
  if (left == 0) {
    references_ = 1;  // what ends with the object may take and drop references to it
    delete this;
  }
  return left;
}

HRESULT StockbookObject::QueryInterface(REFIID id, void** result) {
  if (result == nullptr) return E_POINTER;
  IUnknown* found = id == IID_IUnknown ? this : Find(id);
  *result = found;
  if (found == nullptr) return E_NOINTERFACE;
  found->AddRef();
  return S_OK;
}

// Every interface derives from IUnknown alone, so the pointer is the interface's.
IUnknown* StockbookObject::Find(REFIID id) {
  struct Entry {
    const IID& id;
    IUnknown* interface_pointer;
  };
  const Entry entries[] = {
      {IID_IDispatch, &members_},
      {IID__Stockbook, &members_},
      {IID_IConnectionPointContainer, &event_source_},
      {IID_IProvideClassInfo, &class_info_},
      {IID_IProvideClassInfo2, &class_info_},
      {IID_ISupportErrorInfo, &error_support_},
      {IID_IOleObject, &ole_object_},
      {IID_IOleControl, &ole_control_},
      {IID_IOleWindow, &in_place_},
      {IID_IOleInPlaceObject, &in_place_},
      {IID_IOleInPlaceActiveObject, &in_place_active_},
      {IID_IViewObject, &view_object_},
      {IID_IViewObject2, &view_object_},
      {IID_IPersist, static_cast<IPersistStreamInit*>(&stream_persistence_)},
      {IID_IPersistPropertyBag, &bag_persistence_},
      {IID_IPersistStreamInit, &stream_persistence_},
      {IID_IPersistStorage, &storage_persistence_},
  };
  for (const Entry& entry : entries) {
    if (entry.id == id) return entry.interface_pointer;
  }
  return nullptr;
}

HRESULT CreateStockbookObject(IUnknown* outer, REFIID id, void** result) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  // An outer object has to get at the object itself first.
  if (outer != nullptr && id != IID_IUnknown) return CLASS_E_NOAGGREGATION;
  HRESULT answer = E_UNEXPECTED;
  const HRESULT made = Guarded(id, [&] { answer = StockbookObject::Create(outer)->QueryInterface(id, result); });
  return FAILED(made) ? made : answer;
}

}  // namespace stockbook::com
