// SPDX-License-Identifier: MIT
#include "databases/odbc/odbc_settings.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "databases/connection_string.h"
#include "databases/execution/time_limit.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

bool IsOurs(std::string_view key) {
  constexpr std::array<std::string_view, 6> kOurs = {"Provider", "Timeout", "Tables",
                                                     "Threads",  "Dialect", "AmpersandJoins"};
  return std::any_of(kOurs.begin(), kOurs.end(),
                     [&](std::string_view own) { return base::EqualsIgnoringCase(own, key); });
}

// Drivers know no quotes: what needed them here is in braces there.
std::string ForDriver(const std::string& key, const std::string& value) {
  const bool plain = value.starts_with('{') || value.find_first_of(";{}") == std::string::npos;
  return key + "=" + (plain ? value : "{" + base::ReplaceAll(value, "}", "}}") + "}");
}

}  // namespace

OdbcSettings ReadOdbcSettings(std::string_view connection_string) {
  const ConnectionString settings(connection_string);
  if (!settings.Find("Driver") && !settings.Find("DSN") && !settings.Find("FileDSN")) {
    throw platform::Error("Open", "连接字符串缺少 Driver 或 DSN，请写明 ODBC 驱动程序“Driver={…}”或数据源“DSN=…”");
  }
  OdbcSettings result;
  for (const auto& [key, value] : settings.settings()) {
    if (!IsOurs(key)) result.for_driver.append(result.for_driver.empty() ? "" : ";").append(ForDriver(key, value));
  }
  result.shown = WithoutPassword(connection_string);
  result.password = settings.Find("PWD").value_or(settings.Find("Password").value_or(""));
  if (result.password.starts_with('{') && result.password.ends_with('}'))
    result.password = result.password.substr(1, result.password.size() - 2);
  result.time_limit = ReadTimeLimit(settings);
  result.tables = settings.Find("Tables").value_or("");
  result.dialect = DialectOf(result.shown);
  result.joins_ampersand = settings.Find("AmpersandJoins").value_or("1") != "0";
  return result;
}

}  // namespace stockbook::databases
