// SPDX-License-Identifier: MIT
#include "stockbook/selection/selection_forms.h"

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "base/number.h"
#include "base/text.h"
#include "sheet/format/cell_format.h"
#include "sheet/outline/row_states.h"
#include "sheet/store/store.h"
#include "stockbook/command/spreadsheet_text.h"

namespace stockbook::app {
namespace {

// What spreadsheets call the language of formats: Chinese as in China.
constexpr const char* kLanguage = "2052";

// One cell as it is written.
struct CopiedCell {
  enum class Kind { kNothing, kNumber, kDate, kText };

  Kind kind = Kind::kNothing;
  std::string shown;
  std::string number;  // its digits with a point, without grouping
  std::string format;  // of a number
};

bool IsNumberValue(const base::Value& value) {
  return value.As<int64_t>() != nullptr || value.As<double>() != nullptr || value.As<base::Money>() != nullptr;
}

// What the record's cell holds as loaded; nothing where it shows something else.
base::Value LoadedValue(const sheet::Sheet& sheet, int row, int column) {
  const int64_t record = sheet.RecordOfRow(row);
  const sheet::SheetColumn& cells = sheet.store().columns().At(column);
  if (record < 0 || cells.HasRecordTexts() || cells.LoadedText() == nullptr) return {};
  return cells.LoadedText()->At(static_cast<size_t>(record));
}

CopiedCell CellOf(const sheet::Sheet& sheet, int row, int column) {
  CopiedCell cell;
  cell.shown = sheet.DisplayText(row, column);
  if (cell.shown.empty()) return cell;
  cell.kind = CopiedCell::Kind::kText;
  if (row < sheet.FixedRows()) return cell;
  const base::Value value = LoadedValue(sheet, row, column);
  if (value.As<base::Date>() != nullptr) cell.kind = CopiedCell::Kind::kDate;
  if (IsNumberValue(value)) {
    cell.number = value.Text();
  } else if (sheet::IsNumberType(sheet.ColDataType(column))) {
    const auto number = base::ParseNumber(sheet.TextMatrix(row, column));
    if (number) cell.number = base::NumberText(*number);
  }
  if (cell.number.empty()) return cell;
  cell.kind = CopiedCell::Kind::kNumber;
  if (sheet::IsNumberType(sheet.ColDataType(column))) cell.format = sheet.ColFormat(column);
  return cell;
}

void AppendEscaped(std::string_view text, std::string& html) {
  for (const char c : text) {
    switch (c) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      case '\n':
        html += "<br>";
        break;
      case '\r':
        break;
      default:
        html += c;
    }
  }
}

// A style sheet wants a backslash before each character of a format that might mean something to it.
std::string StyledFormat(std::string_view format) {
  std::string styled;
  for (const char c : format) {
    const bool plain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c & 0x80) != 0;
    if (!plain) styled += '\\';
    styled += c;
  }
  return styled;
}

// LibreOffice reads sdval and sdnum, others x:num and the style.
void AppendHtml(const CopiedCell& cell, std::string& html) {
  html += "<td";
  if (cell.kind == CopiedCell::Kind::kNumber) {
    html += " sdval=\"" + cell.number + "\" sdnum=\"" + kLanguage;
    if (!cell.format.empty()) {
      html += std::string(";0;");
      AppendEscaped(cell.format, html);
    }
    html += "\" x:num=\"" + cell.number + "\" align=\"right\"";
    if (!cell.format.empty()) {
      html += " style=\"mso-number-format:'";
      AppendEscaped(StyledFormat(cell.format), html);
      html += "'\"";
    }
  } else if (cell.kind == CopiedCell::Kind::kText) {
    html += std::string(" sdnum=\"") + kLanguage + ";0;@\" style=\"mso-number-format:'\\@'\"";
  }
  html += ">";
  AppendEscaped(cell.shown, html);
  html += "</td>";
}

void AppendQuoted(std::string_view text, std::string& out) {
  out += '"';
  out += base::ReplaceAll(base::ReplaceAll(SpreadsheetText(text), "\r", ""), "\"", "\"\"");
  out += '"';
}

void AppendSeparated(const CopiedCell& cell, std::string& out) {
  switch (cell.kind) {
    case CopiedCell::Kind::kNothing:
      break;
    case CopiedCell::Kind::kNumber:
      out += cell.number;
      break;
    case CopiedCell::Kind::kDate:
    case CopiedCell::Kind::kText:
      AppendQuoted(cell.shown, out);
  }
}

class FormsWriter {
 public:
  FormsWriter(const sheet::Sheet& sheet, const platform::CellRange& range) : sheet_(sheet), range_(range) {
    for (int column = range.column1; column < range.column2; ++column) {
      if (!sheet.ColHidden(column)) columns_.push_back(column);
    }
  }

  SelectionForms Write() {
    forms_.html =
        "<html><head><meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\">"
        "<style>br{mso-data-placement:same-cell}</style></head><body><table>\n";
    WriteCaptions();
    sheet_.states().ForEachRun(range_.row1, range_.row2,
                               [this](int64_t first, int64_t count, const sheet::RowState& state) {
                                 for (int64_t row = first; state.IsShown() && row < first + count; ++row)
                                   WriteRow(static_cast<int>(row));
                                 return true;
                               });
    forms_.html += "</table></body></html>\n";
    return std::move(forms_);
  }

 private:
  void WriteCaptions() {
    std::vector<CopiedCell> cells;
    for (const int column : columns_) {
      CopiedCell& cell = cells.emplace_back();
      cell.shown = base::OneLine(sheet_.TextMatrix(0, column), "");
      if (!cell.shown.empty()) cell.kind = CopiedCell::Kind::kText;
    }
    WriteCells(cells);
  }

  void WriteRow(int row) {
    std::vector<CopiedCell> cells;
    for (const int column : columns_) cells.push_back(CellOf(sheet_, row, column));
    WriteCells(cells);
  }

  void WriteCells(const std::vector<CopiedCell>& cells) {
    forms_.html += "<tr>";
    for (size_t at = 0; at < cells.size(); ++at) {
      AppendHtml(cells[at], forms_.html);
      if (at > 0) {
        forms_.csv += ',';
        forms_.tab_separated += '\t';
      }
      AppendSeparated(cells[at], forms_.csv);
      AppendSeparated(cells[at], forms_.tab_separated);
    }
    forms_.html += "</tr>\n";
    forms_.csv += "\r\n";
    forms_.tab_separated += "\r\n";
  }

  const sheet::Sheet& sheet_;
  platform::CellRange range_;
  std::vector<int> columns_;
  SelectionForms forms_;
};

}  // namespace

SelectionForms SelectionForms::Of(const sheet::Sheet& sheet, const sheet::Selection& selection) {
  const platform::CellRange range = selection.Range();
  if (range.row1 >= range.row2 || range.row2 > sheet.Rows() || range.column2 > sheet.Cols()) return {};
  return FormsWriter(sheet, range).Write();
}

}  // namespace stockbook::app
