// SPDX-License-Identifier: MIT
#pragma once

#include "com/library/identifiers.h"

#include "com/library/module.h"
#include "com/object/activation.h"
#include "com/object/class_facts.h"
#include "com/object/event_source.h"
#include "com/object/in_place.h"
#include "com/object/object_parts.h"
#include "com/object/ole_control.h"
#include "com/object/ole_object.h"
#include "com/object/persistence.h"
#include "com/object/property_notices.h"
#include "com/object/stockbook_members.h"
#include "com/object/view_object.h"

namespace stockbook::com {

// The COM object: its reference count, and the table of its interfaces, each of them a class of its own that borrows
// the object. It may be part of another object ("outer"), whose identity and count the interfaces then have. For one
// apartment, the one that made it. Whoever runs code of the host holds a reference meanwhile (ObjectParts::Pin), so
// that the last one is never released under the feet of a running call.
class StockbookObject final : private IUnknown {
 public:
  // A new object with one reference, which belongs to the caller: the object itself, apart from any outer one.
  // Throws.
  static ComPtr<IUnknown> Create(IUnknown* outer);

 private:
  explicit StockbookObject(IUnknown* outer);
  virtual ~StockbookObject();
  StockbookObject(const StockbookObject&) = delete;
  StockbookObject& operator=(const StockbookObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;
  // The interface, not counted; null for one that the object does not have.
  IUnknown* Find(REFIID id);

  ModuleUse use_;
  ULONG references_ = 1;
  IUnknown& identity_;  // the outer object, or this one
  ComPtr<ITypeInfo> described_;
  ObjectParts parts_;
  EventSource event_source_;
  PropertyNotices notices_;
  StockbookMembers members_;
  ClassInfo class_info_;
  ErrorSupport error_support_;
  InPlaceActiveObject in_place_active_;
  Activation activation_;
  OleObject ole_object_;
  OleControl ole_control_;
  InPlaceObject in_place_;
  ViewObject view_object_;
  SavedState saved_state_;
  BagPersistence bag_persistence_;
  StreamPersistence stream_persistence_;
  StoragePersistence storage_persistence_;
};

// A new object as the interface asked for; what a class factory does.
HRESULT CreateStockbookObject(IUnknown* outer, REFIID id, void** result) noexcept;

}  // namespace stockbook::com
