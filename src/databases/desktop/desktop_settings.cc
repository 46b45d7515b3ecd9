// SPDX-License-Identifier: MIT
#include "databases/desktop/desktop_settings.h"

#include "base/text.h"
#include "databases/connection_string.h"
#include "databases/execution/time_limit.h"

namespace stockbook::databases {
namespace {

constexpr std::string_view kDesktopProvider = "Stockbook.Desktop";

CopyKeeping KeepingOf(const std::string& text) {
  for (const char* yes : {"Yes", "True", "1"}) {
    if (base::EqualsIgnoringCase(text, yes)) return CopyKeeping::kForTheNextOpening;
  }
  for (const char* no : {"No", "False", "0"}) {
    if (base::EqualsIgnoringCase(text, no)) return CopyKeeping::kForOneConnection;
  }
  throw platform::Error("Open", "连接字符串的 Cache“" + text + "”应为 Yes 或 No，No 表示不保留转换后的副本");
}

}  // namespace

DesktopSettings ReadDesktopSettings(std::string_view connection_string) {
  const ConnectionString settings(connection_string);
  const std::string provider = settings.Find("Provider").value_or(std::string(kDesktopProvider));
  if (!base::EqualsIgnoringCase(provider, kDesktopProvider)) {
    throw platform::Error("Open",
                          "不支持的 Provider“" + provider + "”，桌面数据库文件为 " + std::string(kDesktopProvider));
  }
  const auto file = settings.Find("Data Source");
  if (!file || file->empty()) throw platform::Error("Open", "连接字符串缺少 Data Source，请写明数据库文件");
  const EmbeddedSettings embedded{*file, ReadTimeLimit(settings), ReadableTables(settings.Find("Tables").value_or("")),
                                  ReadThreads(settings)};
  return {embedded, settings.Find("Password").value_or(""), KeepingOf(settings.Find("Cache").value_or("Yes"))};
}

}  // namespace stockbook::databases
