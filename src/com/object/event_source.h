// SPDX-License-Identifier: MIT
#pragma once

#include "com/library/identifiers.h"

#include "com/automation/delegating.h"
#include "com/object/connection_point.h"
#include "com/object/event_raiser.h"

namespace stockbook::com {

// Where listeners connect: the control's events first, changes of properties second.
class EventSource final : public Delegating<IConnectionPointContainer> {
 public:
  explicit EventSource(IUnknown& object)
      : Delegating(object),
        events_(object, *this, DIID___Stockbook),
        changes_(object, *this, IID_IPropertyNotifySink) {}

  EventRaiser& raiser() { return raiser_; }
  ConnectionPoint& changes() { return changes_; }

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** result) override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** result) override;

 private:
  ConnectionPoint events_;
  ConnectionPoint changes_;
  EventRaiser raiser_{events_};
};

}  // namespace stockbook::com
