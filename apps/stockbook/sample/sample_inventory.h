// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "stockbook/sample/sample_stock.h"

namespace stockbook::app {

struct SampleOptions {
  int64_t lines = 5000;  // receipt and issue lines together
  int periods = 12;      // months with bills, from January 2025 on; the period before carries the opening stocks
  uint64_t seed = 1;
  SampleProductRange range = SampleProductRange::Many;
};

inline constexpr int64_t kMostSampleLines = 100'000'000;
inline constexpr int kMostSamplePeriods = 12'000;

struct SampleSummary {
  int64_t receipts = 0;
  int64_t issues = 0;
  int64_t bills = 0;
  int first_month = 0;
  int last_month = 0;
};

// Writes the inventory of a hardware wholesaler; the same options give the same file. Throws platform::Error if it
// cannot be written, and leaves no file then.
SampleSummary WriteSampleInventory(const std::string& path, const SampleOptions& options);

}  // namespace stockbook::app
