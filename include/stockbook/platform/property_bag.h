// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>
#include <variant>

#include "stockbook/base/api.h"
#include "stockbook/platform/picture.h"

namespace stockbook::platform {

// A value of a property bag: a signed 16-bit Integer, a signed 32-bit Long, or a picture object.
using BagValue = std::variant<int16_t, int32_t, PictureRef>;

// The host's keyed store of saved property values. Both operations may throw platform::Error.
class STOCKBOOK_API PropertyBag {
 public:
  virtual ~PropertyBag() = default;
  // `fallback` where the key is absent; the result has the fallback's type, or the control refuses it by Error.
  virtual BagValue Read(std::string_view key, const BagValue& fallback) = 0;
  // Replaces what the key had; an empty picture is a value, too.
  virtual void Write(std::string_view key, const BagValue& value) = 0;
};

}  // namespace stockbook::platform
