// SPDX-License-Identifier: MIT
#include "databases/execution/time_limit.h"

#include <chrono>
#include <string>

#include "base/decimal_text.h"
#include "base/number.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

constexpr double kUsualSeconds = 60;

// Plain decimals alone: an exponent or grouping commas are more likely a slip than a wish.
double SecondsOf(const std::string& text) {
  constexpr double kMostSeconds = 1e8;
  const auto spelled = base::ReadDecimal(text, base::Grouping::kNone);
  const auto seconds = base::ParseNumber(text);
  if (!spelled || spelled->negative || spelled->exponent != 0 || !seconds || *seconds > kMostSeconds) {
    throw platform::Error("Open",
                          "连接字符串的 Timeout“" + text + "”不是时限，应为 0 至 100000000 之间的秒数，0 表示不限时");
  }
  return *seconds;
}

}  // namespace

std::optional<Interruption::Clock::duration> ReadTimeLimit(const ConnectionString& settings) {
  const auto timeout = settings.Find("Timeout");
  const double seconds = timeout ? SecondsOf(*timeout) : kUsualSeconds;
  if (seconds <= 0) return std::nullopt;
  return std::chrono::duration_cast<Interruption::Clock::duration>(std::chrono::duration<double>(seconds));
}

}  // namespace stockbook::databases
