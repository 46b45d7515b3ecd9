// SPDX-License-Identifier: MIT
#include "com/ado/late_bound.h"

#include <utility>

#include "com/ado/ado_error.h"
#include "com/automation/text.h"

namespace stockbook::com {
namespace {

// What is being done when a member fails, and its name.
struct MemberName {
  const char* operation;
  const wchar_t* name;
};

constexpr std::array<MemberName, kAdoMembers> kMemberNames = {{
    {"Execute", L"Execute"},
    {"ConnectionString", L"ConnectionString"},
    {"Execute", L"EOF"},
    {"Execute", L"MoveNext"},
    {"Execute", L"Close"},
    {"Execute", L"CacheSize"},
    {"Execute", L"GetRows"},
    {"Execute", L"Fields"},
    {"Execute", L"Count"},
    {"Execute", L"Item"},
    {"Execute", L"Name"},
    {"Execute", L"Value"},
}};

const MemberName& NameOf(AdoMember member) { return kMemberNames[static_cast<size_t>(member)]; }

// The class that an object's type information names, or nothing.
std::optional<GUID> ClassOf(IDispatch& object) {
  ComPtr<ITypeInfo> described;
  if (FAILED(object.GetTypeInfo(0, LOCALE_USER_DEFAULT, described.PutTyped())) || !described) return std::nullopt;
  TYPEATTR* attributes = nullptr;
  if (FAILED(described->GetTypeAttr(&attributes)) || attributes == nullptr) return std::nullopt;
  const GUID guid = attributes->guid;
  described->ReleaseTypeAttr(attributes);
  if (guid == GUID_NULL) return std::nullopt;
  return guid;
}

}  // namespace

std::shared_ptr<MemberIds> KnownClasses::IdsOf(IDispatch& object) {
  const auto named = ClassOf(object);
  if (!named) return std::make_shared<MemberIds>();
  std::shared_ptr<MemberIds>& ids = ids_[*named];
  if (ids == nullptr) ids = std::make_shared<MemberIds>();
  return ids;
}

LateBound::LateBound(ComPtr<IDispatch> object, KnownClasses& classes)
    : object_(std::move(object)), ids_(classes.IdsOf(*object_)) {}

DISPID LateBound::IdOf(AdoMember member) {
  std::optional<DISPID>& id = (*ids_)[static_cast<size_t>(member)];
  if (id) return *id;
  DISPID found = DISPID_UNKNOWN;
  auto* name = const_cast<wchar_t*>(NameOf(member).name);
  const HRESULT result = object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &found);
  // The one answer that is worth remembering beside an id; anything else, as from a server that is gone, may pass.
  if (result == DISP_E_UNKNOWNNAME || result == DISP_E_MEMBERNOTFOUND) {
    found = DISPID_UNKNOWN;
  } else if (FAILED(result)) {
    throw ErrorOfFailure(NameOf(member).operation, {result, {}});
  }
  id = found;
  return found;
}

Variant LateBound::CallReversed(AdoMember member, std::span<VARIANT> arguments) {
  // The host may let go of everything meanwhile.
  const ComPtr<IDispatch> object = object_;
  const DISPID id = IdOf(member);
  if (id == DISPID_UNKNOWN) {
    throw ErrorOfFailure(NameOf(member).operation,
                         {DISP_E_UNKNOWNNAME, "对象没有成员 " + FromWide(NameOf(member).name)});
  }
  DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  Variant answer;
  EXCEPINFO exception{};
  SetErrorInfo(0, nullptr);
  const HRESULT result = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                        &parameters, answer.Put(), &exception, nullptr);
  if (FAILED(result)) throw ErrorOfFailure(NameOf(member).operation, TakeFailure(result, exception));
  return answer;
}

bool LateBound::TryToWrite(AdoMember member, const Variant& value) {
  if (!Knows(member)) return false;
  const ComPtr<IDispatch> object = object_;
  VARIANT argument = value.get();
  DISPID named = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{&argument, &named, 1, 1};
  EXCEPINFO exception{};
  const HRESULT result = object->Invoke(IdOf(member), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters,
                                        nullptr, &exception, nullptr);
  if (FAILED(result)) TakeFailure(result, exception);
  return SUCCEEDED(result);
}

LateBound LateBound::ObjectIn(const Variant& value, AdoMember member, KnownClasses& classes) {
  const Variant plain = Variant::CopyOf(value.get());
  ComPtr<IDispatch> object;
  if (plain.get().vt == VT_DISPATCH) {
    object = ComPtr<IDispatch>(plain.get().pdispVal);
  } else if (plain.get().vt == VT_UNKNOWN) {
    object = ComPtr<IUnknown>(plain.get().punkVal).As<IDispatch>();
  }
  if (!object) {
    throw ErrorOfFailure(NameOf(member).operation,
                         {DISP_E_TYPEMISMATCH, FromWide(NameOf(member).name) + " 没有返回对象"});
  }
  return LateBound(std::move(object), classes);
}

Variant LeftOut() {
  Variant missing;
  missing.get().vt = VT_ERROR;
  missing.get().scode = DISP_E_PARAMNOTFOUND;
  return missing;
}

}  // namespace stockbook::com
