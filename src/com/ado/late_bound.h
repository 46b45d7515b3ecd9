// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

#include "com/automation/com_ptr.h"
#include "com/automation/variant.h"

namespace stockbook::com {

// The members of a connection, its recordsets and their fields that are called.
enum class AdoMember : uint8_t {
  kExecute,
  kConnectionString,
  kEof,
  kMoveNext,
  kClose,
  kCacheSize,
  kGetRows,
  kFields,
  kCount,
  kItem,
  kName,
  kValue,
};
inline constexpr size_t kAdoMembers = static_cast<size_t>(AdoMember::kValue) + 1;

// Under which dispatch ids an object knows its members; looked up when they are called first. DISPID_UNKNOWN means that
// it has none of that name.
using MemberIds = std::array<std::optional<DISPID>, kAdoMembers>;

// The ids that objects of one class share. A class is told by its type information; an object without any, as scripts
// make them, is alone with its ids.
class KnownClasses {
 public:
  std::shared_ptr<MemberIds> IdsOf(IDispatch& object);

 private:
  struct Less {
    bool operator()(const GUID& left, const GUID& right) const { return std::memcmp(&left, &right, sizeof left) < 0; }
  };
  std::map<GUID, std::shared_ptr<MemberIds>, Less> ids_;
};

// An object that is called by the names of its members. A failing call throws platform::Error with its number.
class LateBound {
 public:
  LateBound(ComPtr<IDispatch> object, KnownClasses& classes);

  // Whether there is a member of that name.
  bool Knows(AdoMember member) { return IdOf(member) != DISPID_UNKNOWN; }
  // Reads a property or calls a method, whichever it is. The arguments stand in their order.
  template <typename... Arguments>
  Variant Call(AdoMember member, Arguments... arguments) {
    // Automation wants the last one first.
    std::array<Variant, sizeof...(Arguments)> ordered{Variant(std::move(arguments))...};
    std::array<VARIANT, sizeof...(Arguments) + 1> reversed{};
    for (size_t at = 0; at < ordered.size(); ++at) reversed[ordered.size() - 1 - at] = ordered[at].get();
    return CallReversed(member, std::span(reversed).first(ordered.size()));
  }
  // The object that a property or method gives.
  template <typename... Arguments>
  LateBound Object(AdoMember member, KnownClasses& classes, Arguments... arguments) {
    return ObjectIn(Call(member, std::move(arguments)...), member, classes);
  }
  // False when the property is not there or cannot be written.
  bool TryToWrite(AdoMember member, const Variant& value);

 private:
  DISPID IdOf(AdoMember member);
  Variant CallReversed(AdoMember member, std::span<VARIANT> arguments);
  static LateBound ObjectIn(const Variant& value, AdoMember member, KnownClasses& classes);

  ComPtr<IDispatch> object_;
  std::shared_ptr<MemberIds> ids_;
};

// What stands for an optional argument that is left out.
Variant LeftOut();

}  // namespace stockbook::com
