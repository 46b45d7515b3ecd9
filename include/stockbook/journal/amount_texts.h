// SPDX-License-Identifier: MIT
#pragma once

namespace stockbook::journal {

// Whether cells show amounts, or a mask because amounts are restricted.
enum class AmountTexts { kShown, kMasked };

}  // namespace stockbook::journal
