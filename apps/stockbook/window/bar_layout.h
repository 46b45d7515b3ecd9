// SPDX-License-Identifier: MIT
#pragma once

namespace stockbook::app {

// What the bars of the window leave free: around their parts and between groups of them, and between parts.
inline constexpr int kBarMargin = 8;
inline constexpr int kBarSpacing = 6;

}  // namespace stockbook::app
