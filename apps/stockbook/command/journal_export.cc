// SPDX-License-Identifier: MIT
#include "stockbook/command/journal_export.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <future>
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

// Writes rows of fields, a field in quotes where it has to be. Nearly no row needs any, so rows are copied as they are
// and then looked through as a whole.
class FieldWriter {
 public:
  explicit FieldWriter(char separator) : separator_(separator) {}

  // Reads sheet::RowTexts::kSlack bytes beyond the end of each text.
  void WriteRow(std::span<const std::string_view> texts) {
    const size_t begin = buffer_.size();
    if (!CopyPlain(texts)) {
      buffer_.resize(begin);
      for (size_t at = 0; at < texts.size(); ++at) {
        if (at > 0) buffer_ += separator_;
        Append(SpreadsheetText(texts[at]));
      }
      buffer_ += '\n';
    }
  }
  std::string Take() { return std::move(buffer_); }

 private:
  // False when some text is not written as it is.
  bool CopyPlain(std::span<const std::string_view> texts) {
    constexpr size_t kSlack = sheet::RowTexts::kSlack;
    size_t most = kSlack + texts.size() + 1;
    for (const std::string_view text : texts) most += text.size();
    const size_t begin = buffer_.size();
    buffer_.resize(begin + most);
    char* to = buffer_.data() + begin;
    for (const std::string_view text : texts) {
      const bool doubtful = BeginsLikeAFormula(text) || text.starts_with('\'');
      if (doubtful && NeedsApostrophe(text)) return false;
      // The next text overwrites what follows this one.
      std::memcpy(to, text.data(), text.size() <= kSlack ? kSlack : text.size());
      to += text.size();
      *to++ = separator_;
    }
    if (texts.empty()) ++to;
    const std::string_view row(buffer_.data() + begin, static_cast<size_t>(to - buffer_.data()) - begin);
    size_t separators = 0;
    size_t others = 0;
    for (const char c : row) {
      separators += c == separator_ ? 1 : 0;
      others += c == '"' || c == '\n' || c == '\r' ? 1 : 0;
    }
    to[-1] = '\n';
    buffer_.resize(begin + row.size());
    return separators == texts.size() && others == 0;
  }

  void Append(std::string_view text) {
    const std::array<char, 4> special{separator_, '"', '\n', '\r'};
    if (text.find_first_of(std::string_view(special.data(), special.size())) == std::string_view::npos) {
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
  std::string buffer_;
};

// Rows that take longer to write than starting a thread does.
constexpr int kRowsAtOnce = 8192;

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
  FieldWriter writer(separator);
  std::vector<std::string> captions;
  std::vector<std::string_view> caption_row;
  for (const int column : chosen) captions.push_back(grid.TextMatrix(0, column));
  for (std::string& caption : captions) caption_row.push_back(sheet::RowTexts::WithSlack(caption));
  writer.WriteRow(caption_row);
  out << writer.Take();
  const auto write_rows = [&](int first) {
    FieldWriter rows(separator);
    sheet::RowTexts(grid, chosen)
        .ForEachRow(first, std::min(first + kRowsAtOnce, grid.Rows()),
                    [&](std::span<const std::string_view> texts) { rows.WriteRow(texts); });
    return rows.Take();
  };
  // One part is written by another thread, if there is one to have, while this one writes the next.
  for (int row = grid.FixedRows(); row < grid.Rows(); row += 2 * kRowsAtOnce) {
    auto first = std::async(std::launch::async | std::launch::deferred, write_rows, row);
    const std::string second = row + kRowsAtOnce < grid.Rows() ? write_rows(row + kRowsAtOnce) : std::string();
    out << first.get() << second;
  }
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
