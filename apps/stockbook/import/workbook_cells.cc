// SPDX-License-Identifier: MIT
#include "stockbook/import/workbook_cells.h"

#include <optional>

#include "stockbook/import/import_sentence.h"
#include "stockbook/import/workbook_file.h"

namespace stockbook::app {
namespace {

constexpr size_t kMostUnpacked = size_t{1} << 30;
constexpr size_t kEndRecordBytes = 22;
constexpr size_t kEntryBytes = 46;

uint32_t LittleEndian(std::string_view bytes, size_t at, size_t count) {
  uint32_t number = 0;
  for (size_t index = count; index-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[at + index]);
  return number;
}

[[noreturn]] void FailWorkbook(const std::string& name, const std::string& english, const std::string& chinese) {
  throw TableError({"Cannot read '" + name + "': " + english + ".", "无法读取“" + name + "”：" + chinese + "。"});
}

// What the list at the end of an archive says its parts unpack to; nothing if there is no such list.
std::optional<size_t> UnpackedBytes(std::string_view archive) {
  const size_t end = archive.rfind("PK\5\6");
  if (end == std::string_view::npos || archive.size() - end < kEndRecordBytes) return std::nullopt;
  const uint32_t count = LittleEndian(archive, end + 10, 2);
  size_t at = LittleEndian(archive, end + 16, 4);
  size_t sum = 0;
  for (uint32_t entry = 0; entry < count; ++entry) {
    if (at > archive.size() || archive.size() - at < kEntryBytes || !archive.substr(at).starts_with("PK\1\2"))
      return std::nullopt;
    sum += LittleEndian(archive, at + 24, 4);
    at += kEntryBytes + LittleEndian(archive, at + 28, 2) + LittleEndian(archive, at + 30, 2) +
          LittleEndian(archive, at + 32, 2);
  }
  return sum;
}

}  // namespace

uint32_t TextPool::Add(std::string_view text) {
  const auto [found, is_new] = numbers_.try_emplace(std::string(text), static_cast<uint32_t>(texts_.size()));
  if (is_new) texts_.push_back(&found->first);
  return found->second;
}

Workbook ReadWorkbook(std::string_view bytes, const std::string& name) {
  const auto unpacked = UnpackedBytes(bytes);
  if (!unpacked)
    FailWorkbook(name, "the workbook is damaged or cut off; fetch it again", "工作簿已损坏或不完整，请重新获取");
  if (*unpacked > kMostUnpacked) {
    FailWorkbook(name, "the workbook unpacks to more than 1 GiB; save the sheet as .csv and import that",
                 "工作簿解开后超过 1 GiB，请把工作表另存为 .csv 再导入");
  }
  // A document and a presentation are archives of the same kind.
  if (bytes.find("xl/workbook") == std::string_view::npos) {
    FailWorkbook(name, "it is a packed archive and no workbook; save the sheet as .xlsx or .csv and import that",
                 "这是压缩包而不是工作簿，请把工作表另存为 .xlsx 或 .csv 再导入");
  }
  return ReadWorkbookFile(bytes, name);
}

}  // namespace stockbook::app
