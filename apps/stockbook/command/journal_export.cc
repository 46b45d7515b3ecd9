// SPDX-License-Identifier: MIT
#include "stockbook/command/journal_export.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <future>
#include <new>
#include <ostream>
#include <span>
#include <utility>
#include <vector>

#include "sheet/contents/row_texts.h"
#include "sheet/outline/row_states.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/command/spreadsheet_text.h"
#include "stockbook/export/bill_parts.h"

namespace stockbook::app {
namespace {

constexpr size_t kBufferBytes = size_t{1} << 16;
constexpr std::string_view kNumberCaption = "序号";

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
  size_t size() const { return buffer_.size(); }
  std::string Take() { return std::exchange(buffer_, {}); }

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

// The texts of a row, with the bill in its parts if that is wanted. Each thread has one of its own.
class ExportedRow {
 public:
  ExportedRow(const sheet::GridSheet& grid, const std::vector<int>& columns, BillColumns bill) : bills_(grid) {
    const int column = grid.ColIndex(base::keys::kBillNo);
    const auto found = std::find(columns.begin(), columns.end(), column);
    is_apart_ = bill == BillColumns::kApart && column >= 0 && found != columns.end();
    place_ = found - columns.begin();
  }

  std::span<const std::string_view> Captions(std::span<const std::string_view> texts) {
    parts_ = {std::string(kPeriodCaption), std::string(kBillDayCaption), std::string(kBillKindCaption),
              std::string(kBillNumberCaption)};
    return Expanded(texts);
  }
  std::span<const std::string_view> Texts(int row, std::span<const std::string_view> texts) {
    if (!is_apart_) return texts;
    BillParts bill = bills_.Of(row);
    parts_ = {std::move(bill.period), std::move(bill.day), std::move(bill.kind), std::move(bill.number)};
    return Expanded(texts);
  }

 private:
  std::span<const std::string_view> Expanded(std::span<const std::string_view> texts) {
    if (!is_apart_) return texts;
    row_.assign(texts.begin(), texts.begin() + place_);
    for (std::string& part : parts_) row_.push_back(sheet::RowTexts::WithSlack(part));
    row_.insert(row_.end(), texts.begin() + place_ + 1, texts.end());
    return row_;
  }

  BillSplitter bills_;
  bool is_apart_ = false;
  std::ptrdiff_t place_ = 0;
  std::array<std::string, 4> parts_;
  std::vector<std::string_view> row_;
};

// Writes the rows of a sheet on two threads, part by part, each in the memory of some megabytes.
class RowsWriter {
 public:
  RowsWriter(const sheet::GridSheet& grid, const std::vector<int>& columns, const SeparatedOptions& options,
             std::ostream& out)
      : grid_(grid), columns_(columns), separator_(options.separator), bill_(options.bill), out_(out) {}

  void WriteCaptions() {
    std::vector<std::string> captions;
    std::vector<std::string_view> texts;
    for (const int column : columns_) {
      const bool is_number = grid_.ColKey(column) == base::keys::kSeqNo;
      captions.push_back(grid_.TextMatrix(0, column));
      if (is_number && captions.back().empty()) captions.back() = kNumberCaption;
    }
    for (std::string& caption : captions) texts.push_back(sheet::RowTexts::WithSlack(caption));
    FieldWriter writer(separator_);
    writer.WriteRow(ExportedRow(grid_, columns_, bill_).Captions(texts));
    out_ << writer.Take();
  }

  void WriteRows(int first, int last) {
    while (last - first > kRowsOfPart) {
      const int middle = first + kRowsOfPart;
      const int end = std::min(middle + kRowsOfPart, last);
      auto other = std::async(std::launch::async | std::launch::deferred, [&] { return MakePart(first, middle); });
      const Part second = MakePart(middle, end);
      Finish(other.get(), middle);
      Finish(second, end);
      first = end;
    }
    Finish({first, {}}, last);
  }

 private:
  static constexpr int kRowsOfPart = 8192;  // they take longer to write than starting a thread does
  static constexpr size_t kMostBytes = size_t{2} << 20;
  struct Part {
    int end = 0;  // the row after the last one
    std::string text;
  };

  // As many of the rows as fit; none where there is no memory for them.
  Part MakePart(int first, int last) const {
    try {
      FieldWriter writer(separator_);
      ExportedRow exported(grid_, columns_, bill_);
      int row = first;
      const int end = sheet::RowTexts(grid_, columns_).ForEachRow(first, last, [&](auto texts) {
        writer.WriteRow(exported.Texts(row++, texts));
        return writer.size() < kMostBytes;
      });
      return {end, writer.Take()};
    } catch (const std::bad_alloc&) {
      return {first, {}};
    }
  }

  // Writes the part and the rows up to `last` that are missing.
  void Finish(const Part& part, int last) {
    out_ << part.text;
    if (part.end == last) return;
    FieldWriter writer(separator_);
    ExportedRow exported(grid_, columns_, bill_);
    int row = part.end;
    sheet::RowTexts(grid_, columns_).ForEachRow(part.end, last, [&](auto texts) {
      writer.WriteRow(exported.Texts(row++, texts));
      if (writer.size() >= kBufferBytes) out_ << writer.Take();
      return true;
    });
    out_ << writer.Take();
  }

  const sheet::GridSheet& grid_;
  const std::vector<int>& columns_;
  char separator_;
  BillColumns bill_;
  std::ostream& out_;
};

// Calls take(first, last) for the rows between the captions and the end that are not hidden on their own account.
template <typename Take>
void ForEachShownRun(const sheet::GridSheet& grid, Take take) {
  int first = grid.FixedRows();
  int last = first;
  grid.states().ForEachRun(first, grid.Rows(), [&](int64_t run, int64_t count, const sheet::RowState& state) {
    if (state.hidden) {
      if (first < last) take(first, last);
      first = static_cast<int>(run + count);
    }
    last = static_cast<int>(run + count);
    return true;
  });
  if (first < last) take(first, last);
}

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

void WriteSeparated(const sheet::GridSheet& grid, const SeparatedOptions& options, std::ostream& out) {
  const std::vector<int> chosen = ColumnsOf(grid, options.columns);
  if (options.mark == ByteOrderMark::kWritten) out << "\xEF\xBB\xBF";
  RowsWriter writer(grid, chosen, options, out);
  writer.WriteCaptions();
  ForEachShownRun(grid, [&](int first, int last) { writer.WriteRows(first, last); });
}

void WriteNdjson(const sheet::GridSheet& grid, ExportColumns columns, const std::string& caption,
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
  ForEachShownRun(grid, [&](int first, int last) {
    for (int row = first; row < last; ++row) {
      AppendRow(grid, chosen, keys, row, buffer);
      FlushWhenFull(buffer, out);
    }
  });
  out << buffer;
}

}  // namespace stockbook::app
