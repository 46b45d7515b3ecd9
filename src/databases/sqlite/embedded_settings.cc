// SPDX-License-Identifier: MIT
#include "databases/sqlite/embedded_settings.h"

#include "base/decimal_text.h"
#include "base/number.h"
#include "base/text.h"
#include "databases/connection_string.h"

namespace stockbook::databases {
namespace {

constexpr std::string_view kProvider = "Stockbook.Embedded";
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

EmbeddedSettings ReadEmbeddedSettings(std::string_view connection_string) {
  const ConnectionString settings(connection_string);
  const std::string provider = settings.Find("Provider").value_or(std::string(kProvider));
  if (!base::EqualsIgnoringCase(provider, kProvider)) {
    throw platform::Error("Open", "不支持的 Provider“" + provider + "”，内置数据库为 " + std::string(kProvider));
  }
  const auto file = settings.Find("Data Source");
  if (!file || file->empty()) throw platform::Error("Open", "连接字符串缺少 Data Source，请写明数据库文件");
  EmbeddedSettings result{*file, std::nullopt, ReadableTables(settings.Find("Tables").value_or(""))};
  const auto timeout = settings.Find("Timeout");
  const double seconds = timeout ? SecondsOf(*timeout) : kUsualSeconds;
  if (seconds > 0) {
    result.time_limit =
        std::chrono::duration_cast<Interruption::Clock::duration>(std::chrono::duration<double>(seconds));
  }
  return result;
}

}  // namespace stockbook::databases
