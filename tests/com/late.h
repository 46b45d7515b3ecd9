// SPDX-License-Identifier: MIT
#pragma once

#include "com/library/identifiers.h"

#include <initializer_list>
#include <string>
#include <vector>

#include "com/automation/com_ptr.h"
#include "com/automation/variant.h"

namespace stockbook::testing {

// A new control, by the class factory of the built DLL, as COM would make it.
com::ComPtr<_Stockbook> NewControl();
// Whether the DLL may be unloaded: nobody holds anything of it.
bool ComponentIsIdle();

// What a late-bound call gave.
struct LateResult {
  HRESULT code = S_OK;      // of a failure with a description the number in it
  std::string description;  // of a failure
  com::Variant value;

  bool Succeeded() const { return SUCCEEDED(code); }
  std::string Text() const { return com::ToText(value.get()); }
  int32_t Long() const { return com::ToLong(value.get()); }
  double Double() const { return com::ToDouble(value.get()); }
  bool Truth() const { return com::ToBoolean(value.get()); }
  com::ComPtr<IDispatch> Object() const { return com::ToDispatch(value.get()); }
};

// Late-bound calls, as a script makes them: by name, arguments in the order in which they are written.
class Late {
 public:
  explicit Late(IDispatch* object) : object_(object) {}

  template <typename... Arguments>
  LateResult Get(const char* name, Arguments&&... arguments) const {
    return Invoke(name, DISPATCH_PROPERTYGET | DISPATCH_METHOD, Packed(std::forward<Arguments>(arguments)...));
  }
  template <typename... Arguments>
  LateResult Call(const char* name, Arguments&&... arguments) const {
    return Invoke(name, DISPATCH_METHOD, Packed(std::forward<Arguments>(arguments)...));
  }
  // The value is the last argument.
  template <typename... Arguments>
  LateResult Put(const char* name, Arguments&&... arguments) const {
    return Invoke(name, DISPATCH_PROPERTYPUT, Packed(std::forward<Arguments>(arguments)...));
  }
  LateResult PutRef(const char* name, IDispatch* value) const {
    return Invoke(name, DISPATCH_PROPERTYPUTREF, Packed(com::Variant(value)));
  }
  LateResult Invoke(const char* name, WORD flags, std::vector<com::Variant> arguments) const;

 private:
  static com::Variant AsVariant(com::Variant value) { return value; }
  static com::Variant AsVariant(const char* text) { return com::Variant(std::string_view(text)); }
  static com::Variant AsVariant(int number) { return com::Variant(int32_t{number}); }
  static com::Variant AsVariant(double number) { return com::Variant(number); }
  static com::Variant AsVariant(bool truth) { return com::Variant(truth); }
  template <typename... Arguments>
  static std::vector<com::Variant> Packed(Arguments&&... arguments) {
    std::vector<com::Variant> packed;
    (packed.push_back(AsVariant(std::forward<Arguments>(arguments))), ...);
    return packed;
  }

  com::ComPtr<IDispatch> object_;
};

// The description that an early-bound call left behind.
std::string LastDescription();
// A picture object of that many pixels square.
com::ComPtr<IPictureDisp> NewPicture(int pixels);
// How many references there are, as far as AddRef and Release tell.
ULONG ReferencesOf(IUnknown* object);
// An argument that stands for nothing given.
com::Variant Missing();

}  // namespace stockbook::testing
