// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <ocidl.h>

#include "com/automation/picture.h"
#include "stockbook/platform/property_bag.h"

namespace stockbook::com {

// The host's property bag. A failure of it is passed on as it is; a key that the bag says it does not have, or has no
// number for, is absent. A value of another type is converted by the rules of automation, or is a failure.
class HostBag final : public platform::PropertyBag {
 public:
  // `log` may be null; it is told of values that do not fit.
  HostBag(IPropertyBag& bag, IErrorLog* log, PictureObjects& pictures) : bag_(bag), log_(log), pictures_(pictures) {}

  platform::BagValue Read(std::string_view key, const platform::BagValue& fallback) override;
  void Write(std::string_view key, const platform::BagValue& value) override;

 private:
  IPropertyBag& bag_;
  IErrorLog* log_;
  PictureObjects& pictures_;
};

}  // namespace stockbook::com
