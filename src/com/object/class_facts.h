// SPDX-License-Identifier: MIT
#pragma once

#include "com/library/identifiers.h"

#include "com/automation/delegating.h"

namespace stockbook::com {

// What the class is and which events it raises.
class ClassInfo final : public Delegating<IProvideClassInfo2> {
 public:
  using Delegating::Delegating;
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** result) override;
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* result) override;
};

// Which of the object's interfaces describe their failures.
class ErrorSupport final : public Delegating<ISupportErrorInfo> {
 public:
  using Delegating::Delegating;
  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override;
};

}  // namespace stockbook::com
