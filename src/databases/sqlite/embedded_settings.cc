// SPDX-License-Identifier: MIT
#include "databases/sqlite/embedded_settings.h"

#include "base/text.h"
#include "databases/execution/time_limit.h"

namespace stockbook::databases {
namespace {

constexpr std::string_view kProvider = "Stockbook.Embedded";
}  // namespace

EmbeddedSettings ReadEmbeddedSettings(std::string_view connection_string) {
  const ConnectionString settings(connection_string);
  const std::string provider = settings.Find("Provider").value_or(std::string(kProvider));
  if (!base::EqualsIgnoringCase(provider, kProvider)) {
    throw platform::Error("Open", "不支持的 Provider“" + provider + "”，内置数据库为 " + std::string(kProvider));
  }
  const auto file = settings.Find("Data Source");
  if (!file || file->empty()) throw platform::Error("Open", "连接字符串缺少 Data Source，请写明数据库文件");
  return {*file, ReadTimeLimit(settings), ReadableTables(settings.Find("Tables").value_or(""))};
}

}  // namespace stockbook::databases
