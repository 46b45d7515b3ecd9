// SPDX-License-Identifier: MIT
#include "com/object/event_source.h"

#include "com/object/enumerator.h"

namespace stockbook::com {
namespace {

using PointRef = ComPtr<IConnectionPoint>;

IConnectionPoint* HandOutPoint(const PointRef& point) { return PointRef(point).Detach(); }

}  // namespace

HRESULT EventSource::EnumConnectionPoints(IEnumConnectionPoints** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  return Guarded(IID_IConnectionPointContainer, [&] {
    std::vector<PointRef> points{PointRef(&events_), PointRef(&changes_)};
    *result = new Enumerator<IEnumConnectionPoints, PointRef, IConnectionPoint*>(std::move(points), HandOutPoint);
  });
}

HRESULT EventSource::FindConnectionPoint(REFIID id, IConnectionPoint** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  ConnectionPoint* found = nullptr;
  if (id == DIID___Stockbook) found = &events_;
  if (id == IID_IPropertyNotifySink) found = &changes_;
  if (found == nullptr) return CONNECT_E_NOCONNECTION;
  found->AddRef();
  *result = found;
  return S_OK;
}

}  // namespace stockbook::com
