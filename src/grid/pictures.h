// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/platform/picture.h"

namespace stockbook::grid {

// The twelve pictures that the host may set; empty ones are not drawn.
struct Pictures {
  platform::PictureRef node_closed;
  platform::PictureRef node_open;
  platform::PictureRef bill;
  platform::PictureRef bill_audited;
  platform::PictureRef rev;
  platform::PictureRef rev_audited;
  platform::PictureRef iss;
  platform::PictureRef iss_audited;
  platform::PictureRef shift;
  platform::PictureRef shift_audited;
  platform::PictureRef title_back;
  platform::PictureRef mark_back;
};

}  // namespace stockbook::grid
