// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/control/stockbook.h"
#include "stockbook/platform/images.h"

namespace stockbook::control {

// The pictures that bills have in a host that sets none.
inline void ShowDefaultPictures(Stockbook& control, const platform::Images& images) {
  control.SetBillPicture(images.Find("Bill"));
  control.SetBillAuditedPicture(images.Find("Bill1"));
  control.SetRevPicture(images.Find("RevBill"));
  control.SetRevAuditedPicture(images.Find("RevBill1"));
  control.SetIssPicture(images.Find("IssBill"));
  control.SetIssAuditedPicture(images.Find("IssBill1"));
  control.SetShiftPicture(images.Find("ShiftBill"));
  control.SetShiftAuditedPicture(images.Find("ShiftBill1"));
}

}  // namespace stockbook::control
