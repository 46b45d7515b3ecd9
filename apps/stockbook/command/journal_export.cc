// SPDX-License-Identifier: MIT
#include "stockbook/command/journal_export.h"

#include <array>
#include <cstdint>
#include <ostream>
#include <span>
#include <vector>

#include "sheet/contents/row_texts.h"
#include "stockbook/command/spreadsheet_text.h"

namespace stockbook::app {
namespace {

constexpr size_t kBufferBytes = size_t{1} << 16;

std::vector<int> ColumnsOf(const platform::Grid& grid, ExportColumns columns) {
  std::vector<int> chosen;
  for (int column = 0; column < grid.Cols(); ++column) {
    if (columns == ExportColumns::kAll || !grid.ColHidden(column)) chosen.push_back(column);
  }
  return chosen;
}

void FlushWhenFull(std::string& buffer, std::ostream& out) {
  if (buffer.size() < kBufferBytes) return;
  out << buffer;
  buffer.clear();
}

// Writes rows of fields, a field in quotes where it has to be.
class FieldWriter {
 public:
  FieldWriter(char separator, std::ostream& out) : separator_(separator), out_(out) {
    for (const char c : {separator, '"', '\n', '\r'}) quoted_[static_cast<unsigned char>(c)] = 1;
  }

  void WriteRow(std::span<const std::string_view> texts) {
    for (size_t at = 0; at < texts.size(); ++at) {
      if (at > 0) buffer_ += separator_;
      if (NeedsApostrophe(texts[at])) {
        Append(SpreadsheetText(texts[at]));
      } else {
        Append(texts[at]);
      }
    }
    buffer_ += '\n';
    FlushWhenFull(buffer_, out_);
  }
  void Flush() { out_ << buffer_; }

 private:
  void Append(std::string_view text) {
    // Without a branch for each character: most texts are short.
    unsigned quoted = 0;
    for (const char c : text) quoted |= quoted_[static_cast<unsigned char>(c)];
    if (quoted == 0) {
      buffer_ += text;
      return;
    }
    buffer_ += '"';
    for (const char c : text) {
      if (c == '"') buffer_ += '"';
      buffer_ += c;
    }
    buffer_ += '"';
  }

  char separator_;
  std::ostream& out_;
  std::array<uint8_t, 256> quoted_{};  // 1 for what has to be in quotes
  std::string buffer_;
};

void AppendMember(std::string_view name, std::string_view text, std::string& out) {
  if (out.back() != '{') out += ',';
  AppendJson(name, out);
  out += ':';
  AppendJson(text, out);
}

const char* TruthText(bool truth) { return truth ? "true" : "false"; }

void AppendColumns(const platform::Grid& grid, const std::vector<int>& columns, std::string& out) {
  for (const int column : columns) {
    out += out.back() == '[' ? "{" : ",{";
    AppendMember("key", grid.ColKey(column), out);
    AppendMember("caption", grid.TextMatrix(0, column), out);
    out += std::string(",\"hidden\":") + TruthText(grid.ColHidden(column)) +
           ",\"type\":" + std::to_string(static_cast<int>(grid.ColDataType(column)));
    AppendMember("format", grid.ColFormat(column), out);
    out += ",\"width\":" + std::to_string(grid.ColWidth(column)) + "}";
  }
}

void AppendRow(const platform::Grid& grid, const std::vector<int>& columns, const std::vector<std::string>& keys,
               int row, std::string& out) {
  out += "{\"row\":" + std::to_string(row) + ",\"node\":" + TruthText(grid.IsSubtotal(row)) +
         ",\"level\":" + std::to_string(grid.RowOutlineLevel(row)) + ",\"hidden\":" + TruthText(grid.RowHidden(row)) +
         ",\"height\":" + std::to_string(grid.RowHeight(row)) + ",\"text\":{";
  std::string display = "{";
  for (size_t at = 0; at < columns.size(); ++at) {
    const std::string text = grid.TextMatrix(row, columns[at]);
    if (text.empty()) continue;
    AppendMember(keys[at], text, out);
    AppendMember(keys[at], grid.DisplayText(row, columns[at]), display);
  }
  out += "},\"display\":" + display + "}}\n";
}

}  // namespace

void AppendJson(std::string_view text, std::string& out) {
  constexpr const char* kHex = "0123456789abcdef";
  out += '"';
  for (const char c : text) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        if (static_cast<unsigned char>(c) < 0x20) {
          out += "\\u00";
          out += kHex[c >> 4];
          out += kHex[c & 15];
        } else {
          out += c;
        }
    }
  }
  out += '"';
}

void WriteSeparated(const sheet::GridSheet& grid, ExportColumns columns, char separator, std::ostream& out) {
  const std::vector<int> chosen = ColumnsOf(grid, columns);
  FieldWriter writer(separator, out);
  std::vector<std::string> captions;
  for (const int column : chosen) captions.push_back(grid.TextMatrix(0, column));
  writer.WriteRow(std::vector<std::string_view>(captions.begin(), captions.end()));
  sheet::RowTexts(grid, chosen).ForEachRow(grid.FixedRows(), grid.Rows(), [&](std::span<const std::string_view> texts) {
    writer.WriteRow(texts);
  });
  writer.Flush();
}

void WriteNdjson(const platform::Grid& grid, ExportColumns columns, const std::string& caption,
                 const LoadReport& report, std::ostream& out) {
  const std::vector<int> chosen = ColumnsOf(grid, columns);
  std::vector<std::string> keys;
  for (const int column : chosen) keys.push_back(grid.ColKey(column));
  std::string buffer = "{";
  AppendMember("caption", caption, buffer);
  buffer += ",\"columns\":[";
  AppendColumns(grid, chosen, buffer);
  buffer += "],\"notify\":[";
  for (const std::string& message : report.notify) {
    if (buffer.back() != '[') buffer += ',';
    AppendJson(message, buffer);
  }
  buffer += "],\"process\":[";
  for (const int indicator : report.process) buffer += (buffer.back() == '[' ? "" : ",") + std::to_string(indicator);
  buffer += "]}\n";
  for (int row = grid.FixedRows(); row < grid.Rows(); ++row) {
    AppendRow(grid, chosen, keys, row, buffer);
    FlushWhenFull(buffer, out);
  }
  out << buffer;
}

}  // namespace stockbook::app
