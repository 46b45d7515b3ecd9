// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "stockbook/base/api.h"
#include "stockbook/platform/picture.h"

namespace stockbook::platform {

// The control's keyed pictures: "RevBill", "BuyBill", "IssBill", "SaleBill", "ShiftBill", "Bill", each with "1" for the
// audited form; "Mtr", "Depot", "Supplier", "Customer", "Project"; "StkBk", "SuppJnl", "CustJnl", "ProjJnl"; and the
// mark picture "Mark". An unknown key gives no picture.
class STOCKBOOK_API Images {
 public:
  virtual ~Images() = default;
  // The picture, which lives as long as anybody holds it; nullptr for an unknown key.
  virtual PictureRef Find(std::string_view key) const = 0;
};

}  // namespace stockbook::platform
