// SPDX-License-Identifier: MIT
#pragma once

#include <oaidl.h>

#include <string>
#include <vector>

#include "com/automation/com_ptr.h"

namespace stockbook::testing {

// What a type library says, as texts to compare. Types are long, short, float, boolean, string, variant, object (any
// automation object), "array of", a "*" for each level of reference, and names for what has one. A failing call leaves
// its part of a text empty.
class LibraryDump {
 public:
  explicit LibraryDump(ITypeLib& library) : library_(library) {}

  // Name, kind and flags of each type, in the library's order.
  std::vector<std::string> Types() const;
  // The functions of an interface with ids and places in its table: of one that is dual, as early binding sees it.
  std::vector<std::string> Functions(const char* interface_name) const;
  std::vector<std::string> EnumMembers(const char* name) const;
  // The interfaces of a class with their flags.
  std::vector<std::string> Interfaces(const char* class_name) const;

  // A type description, null where the library has none of that name.
  com::ComPtr<ITypeInfo> Find(const char* name) const;

 private:
  ITypeLib& library_;
};

}  // namespace stockbook::testing
