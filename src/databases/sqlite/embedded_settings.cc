// SPDX-License-Identifier: MIT
#include "databases/sqlite/embedded_settings.h"

#include <algorithm>
#include <charconv>
#include <thread>

#include "base/text.h"
#include "databases/execution/time_limit.h"

namespace stockbook::databases {
namespace {

constexpr std::string_view kProvider = "Stockbook.Embedded";

}  // namespace

// More than a few wait for each other's memory instead of reading.
size_t ReadThreads(const ConnectionString& settings) {
  constexpr unsigned kUsualMost = 4;
  constexpr size_t kMost = 16;
  const auto text = settings.Find("Threads");
  if (!text) return std::clamp(std::thread::hardware_concurrency(), 1U, kUsualMost);
  size_t threads = 0;
  const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), threads);
  if (error != std::errc() || end != text->data() + text->size() || threads < 1 || threads > kMost)
    throw platform::Error("Open",
                          "连接字符串的 Threads“" + *text + "”不是线程数，应为 1 至 16 之间的整数，1 表示不用其他线程");
  return threads;
}

EmbeddedSettings ReadEmbeddedSettings(std::string_view connection_string) {
  const ConnectionString settings(connection_string);
  const std::string provider = settings.Find("Provider").value_or(std::string(kProvider));
  if (!base::EqualsIgnoringCase(provider, kProvider)) {
    throw platform::Error("Open", "不支持的 Provider“" + provider + "”，内置数据库为 " + std::string(kProvider));
  }
  const auto file = settings.Find("Data Source");
  if (!file || file->empty()) throw platform::Error("Open", "连接字符串缺少 Data Source，请写明数据库文件");
  const bool joins = settings.Find("AmpersandJoins") == "1";
  return {*file, ReadTimeLimit(settings), ReadableTables(settings.Find("Tables").value_or("")), ReadThreads(settings),
          joins ? Ampersand::kJoinsTexts : Ampersand::kServerRefusesTexts};
}

}  // namespace stockbook::databases
