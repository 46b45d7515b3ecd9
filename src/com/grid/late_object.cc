// SPDX-License-Identifier: MIT
#include "com/grid/late_object.h"

#include "com/automation/guarded.h"
#include "com/automation/late_call.h"
#include "com/library/module.h"

namespace stockbook::com {
namespace {

constexpr WORD kReading = DISPATCH_PROPERTYGET | DISPATCH_METHOD;
constexpr WORD kWriting = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

class LateObject final : public IDispatch {
 public:
  LateObject(ControlLinkRef link, FrameName frame, std::span<const LateMember> members)
      : link_(std::move(link)), frame_(frame), members_(members) {}
  virtual ~LateObject() = default;
  LateObject(const LateObject&) = delete;
  LateObject& operator=(const LateObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    if (result == nullptr) return E_POINTER;
    const bool known = id == IID_IUnknown || id == IID_IDispatch;
    *result = known ? static_cast<IDispatch*>(this) : nullptr;
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

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** result) override {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    return DISP_E_BADINDEX;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                                   EXCEPINFO* exception, UINT* wrong_argument) override;

 private:
  static HRESULT CheckArguments(const LateMember& member, WORD flags, const DISPPARAMS& arguments);
  HRESULT Run(const LateMember& member, WORD flags, const DISPPARAMS& arguments, VARIANT* result);

  ModuleUse use_;
  ControlLinkRef link_;
  FrameName frame_;
  std::span<const LateMember> members_;
  ULONG references_ = 1;
};

HRESULT LateObject::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (names == nullptr || ids == nullptr) return E_POINTER;
  if (count == 0) return E_INVALIDARG;
  for (UINT name = 0; name < count; ++name) ids[name] = DISPID_UNKNOWN;
  for (size_t index = 0; index < members_.size(); ++index) {
    if (CompareStringOrdinal(members_[index].name, -1, names[0], -1, TRUE) == CSTR_EQUAL)
      ids[0] = static_cast<DISPID>(index + 1);
  }
  // Arguments have no names.
  return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT LateObject::CheckArguments(const LateMember& member, WORD flags, const DISPPARAMS& arguments) {
  const bool writing = (flags & kWriting) != 0;
  if (writing ? member.write == nullptr : member.read == nullptr) return DISP_E_MEMBERNOTFOUND;
  const UINT value = writing ? 1 : 0;
  if (arguments.cNamedArgs > value ||
      (arguments.cNamedArgs == 1 && arguments.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT))
    return DISP_E_NONAMEDARGS;
  const UINT count = arguments.cArgs;
  if (count < member.least_arguments + value || count > member.most_arguments + value) return DISP_E_BADPARAMCOUNT;
  return S_OK;
}

HRESULT LateObject::Run(const LateMember& member, WORD flags, const DISPPARAMS& arguments, VARIANT* result) {
  // A listener may end the control, and this object with it, while the grid tells what has changed.
  const ComPtr<IUnknown> self(this);
  const ComPtr<IUnknown> pin(link_->object);
  return Guarded(IID_IDispatch, [&] {
    if (link_->control == nullptr)
      throw AutomationError(CO_E_OBJNOTCONNECTED, "控件已经关闭：这个对象不再属于任何控件。");
    const MemberCall call(link_, frame_, arguments);
    if ((flags & kWriting) != 0) {
      member.write(call);
      return;
    }
    Variant read = member.read(call);
    if (result != nullptr) *result = read.Detach();
  });
}

// What the failed call said, for the caller of a late-bound one.
void FillException(HRESULT failed, EXCEPINFO& exception) {
  exception = {};
  exception.scode = failed;
  ComPtr<IErrorInfo> info;
  if (GetErrorInfo(0, info.PutTyped()) != S_OK) return;
  info->GetSource(&exception.bstrSource);
  info->GetDescription(&exception.bstrDescription);
}

HRESULT LateObject::Invoke(DISPID id, REFIID reserved, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                           EXCEPINFO* exception, UINT*) {
  if (result != nullptr) VariantInit(result);
  if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (arguments == nullptr) return RefuseNull(IID_IDispatch);
  if (HaveHoles(*arguments)) return E_INVALIDARG;
  if (id < 1 || static_cast<size_t>(id) > members_.size() || (flags & (kReading | kWriting)) == 0)
    return DISP_E_MEMBERNOTFOUND;
  const LateMember& member = members_[static_cast<size_t>(id) - 1];
  const HRESULT acceptable = CheckArguments(member, flags, *arguments);
  if (FAILED(acceptable)) return acceptable;
  const HRESULT done = Run(member, flags, *arguments, result);
  if (SUCCEEDED(done) || exception == nullptr) return done;
  FillException(done, *exception);
  return DISP_E_EXCEPTION;
}

}  // namespace

ComPtr<IDispatch> NewLateObject(ControlLinkRef link, FrameName frame, std::span<const LateMember> members) {
  return ComPtr<IDispatch>::Adopt(new LateObject(std::move(link), frame, members));
}

}  // namespace stockbook::com
