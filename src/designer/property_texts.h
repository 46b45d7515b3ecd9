// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <span>

namespace stockbook::designer {

// What the property editor says of a property.
struct PropertyText {
  const char* name;
  const char* tool_tip;
};

// Every property that is edited in a form, in the order of the interface.
std::span<const PropertyText> PropertyTexts();

// The same as Qt Designer reads it from a plugin, and which texts have one line and are not translated.
QString PropertySpecifications();

}  // namespace stockbook::designer
