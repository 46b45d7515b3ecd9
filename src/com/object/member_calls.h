// SPDX-License-Identifier: MIT
#pragma once

#include "com/library/identifiers.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <type_traits>

#include "com/automation/colour.h"
#include "com/automation/dual_interface.h"
#include "com/automation/guarded.h"
#include "com/automation/text.h"
#include "com/object/object_parts.h"
#include "com/object/property_notices.h"

namespace stockbook::com {

// A property whose values are codes from 0 on, for the sentence about another one.
struct CodeRange {
  const char* name;
  int32_t most;
};

// How every member of the interface calls the control: the object stays alive until the member returns, whatever the
// host does meanwhile, and no exception leaves it.
class MemberCalls : public DualInterface<_Stockbook> {
 public:
  MemberCalls(IUnknown& object, ComPtr<ITypeInfo> described, ObjectParts& parts, PropertyNotices& notices)
      : DualInterface(object, std::move(described)), parts_(parts), notices_(notices) {}

 protected:
  using Control = control::Stockbook;

  ObjectParts& parts() { return parts_; }

  template <typename Body>
  HRESULT Call(Body body) {
    const ComPtr<IUnknown> pin = parts_.Pin();
    return Guarded(IID__Stockbook, [&] { body(parts_.control()); });
  }

  // A reader; the result is the empty value of its type where it fails.
  template <typename Read, typename Result, typename... Arguments>
  HRESULT Get(Result* result, Read read, Arguments... arguments) {
    if (result == nullptr) return RefuseNull(IID__Stockbook);
    *result = Result();
    return Call([&](Control& control) { Give(std::invoke(read, control, arguments...), result); });
  }
  HRESULT GetPicture(IPictureDisp** result, platform::PictureRef (Control::*read)() const);

  template <typename Argument, typename Given>
  HRESULT Put(void (Control::*write)(Argument), Given value) {
    return Call([&](Control& control) { (control.*write)(Taken<std::remove_cvref_t<Argument>>(value)); });
  }
  // A saved property, which a form may refuse to have changed.
  template <typename Argument, typename Given>
  HRESULT PutSaved(const char* name, void (Control::*write)(Argument), Given value) {
    return Call([&](Control& control) {
      notices_.ExpectMayChange(name);
      (control.*write)(Taken<std::remove_cvref_t<Argument>>(value));
    });
  }
  template <typename Code>
  HRESULT PutCode(const CodeRange& range, void (Control::*write)(Code), LONG value) {
    return Call([&](Control& control) {
      ExpectCode(range, value);
      notices_.ExpectMayChange(range.name);
      (control.*write)(static_cast<Code>(value));
    });
  }
  HRESULT PutPicture(const char* name, void (Control::*write)(platform::PictureRef), IPictureDisp* value);

 private:
  static void Give(std::string_view text, BSTR* result) { *result = Bstr(text).Detach(); }
  static void Give(bool truth, VARIANT_BOOL* result) { *result = truth ? VARIANT_TRUE : VARIANT_FALSE; }
  static void Give(int16_t number, SHORT* result) { *result = number; }
  static void Give(int32_t number, LONG* result) { *result = number; }
  static void Give(float number, FLOAT* result) { *result = number; }
  static void Give(platform::Colour colour, OLE_COLOR* result) { *result = colour; }
  template <typename Code>
  requires std::is_enum_v<Code>
  static void Give(Code code, LONG* result) { *result = static_cast<LONG>(code); }

  template <typename Argument, typename Given>
  static auto Taken(Given value) {
    if constexpr (std::is_same_v<Argument, std::string_view>)
      return FromBstr(value);
    else if constexpr (std::is_same_v<Argument, bool>)
      return value != VARIANT_FALSE;
    else if constexpr (std::is_same_v<Argument, platform::Colour>)
      return PlainColour(value);
    else
      return static_cast<Argument>(value);
  }
  static void ExpectCode(const CodeRange& range, LONG value);

  ObjectParts& parts_;
  PropertyNotices& notices_;
};

}  // namespace stockbook::com
