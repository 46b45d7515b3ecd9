// SPDX-License-Identifier: MIT
#include "stockbook/import/workbook_parts.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "base/digits.h"
#include "base/number.h"
#include "base/text.h"
#include "stockbook/import/import_sentence.h"
#include "stockbook/import/workbook_styles.h"

namespace stockbook::app {
namespace {

// As many as a sheet of that format can have.
constexpr int kMostSheetRows = 1'048'576;
constexpr int kMostSheetColumns = 16'384;
constexpr int kDaysTo1904 = 1462;
// Far more than the 32,767 characters of a cell; a small file can unpack to a text without end.
constexpr size_t kMostCellBytes = size_t{1} << 20;

size_t NumberOr(std::string_view text, size_t otherwise) {
  size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? number : otherwise;
}

size_t NumberOf(const XmlAttributes& attributes, std::string_view name) {
  return NumberOr(attributes.Find(name).value_or("0"), 0);
}

std::string TextOf(const XmlAttributes& attributes, std::string_view name) {
  return std::string(attributes.Find(name).value_or(""));
}

// "B7" as column 1 and row 6; what is missing stays as it is.
void ReadPlace(std::string_view place, int& row, int& column) {
  const size_t letters = std::min(place.find_first_of("0123456789"), place.size());
  int number = 0;
  for (const char c : place.substr(0, std::min(letters, size_t{4}))) {
    if (c >= 'A' && c <= 'Z') number = number * 26 + (c - 'A' + 1);
  }
  if (number > 0) column = number - 1;
  const size_t line = NumberOr(place.substr(letters), 0);
  if (line > 0 && line <= kMostSheetRows) row = static_cast<int>(line) - 1;
}

void AppendOfCell(std::string_view more, std::string& text) {
  if (more.size() > kMostCellBytes - text.size()) {
    throw TableError(
        {"The workbook has a cell with more than 1 MiB of text, which no spreadsheet program writes; save "
         "the sheet as .csv and import that.",
         "工作簿中有一格文字超过 1 MiB，电子表格程序不会这样保存，请把工作表另存为 .csv 再导入。"});
  }
  text += more;
}

bool IsTrue(std::string_view text) { return text == "1" || text == "true"; }

}  // namespace

std::string RelationsPart::Target(std::string_view id) const {
  const auto found =
      std::find_if(relations_.begin(), relations_.end(), [&](const auto& known) { return known.id == id; });
  return found == relations_.end() ? std::string() : found->target;
}

std::string RelationsPart::TargetOfType(std::string_view ending) const {
  const auto found = std::find_if(relations_.begin(), relations_.end(),
                                  [&](const auto& known) { return std::string_view(known.type).ends_with(ending); });
  return found == relations_.end() ? std::string() : found->target;
}

void RelationsPart::Begin(std::string_view element, const XmlAttributes& attributes) {
  if (element != "Relationship") return;
  relations_.push_back({TextOf(attributes, "Id"), TextOf(attributes, "Type"), TextOf(attributes, "Target")});
}

void WorkbookPart::Begin(std::string_view element, const XmlAttributes& attributes) {
  if (element == "workbookPr" && IsTrue(attributes.Find("date1904").value_or(""))) epoch_day_ = kDaysTo1904;
  if (element == "sheet") sheets_.push_back({TextOf(attributes, "name"), TextOf(attributes, "id")});
}

bool SharedTextsPart::Find(size_t number, uint32_t& text) const {
  if (number >= texts_.size()) return false;
  text = texts_[number];
  return true;
}

void SharedTextsPart::Begin(std::string_view element, const XmlAttributes&) {
  if (element == "si") text_.clear();
  if (element == "rPh") in_reading_aid_ = true;
  if (element == "t") in_text_ = true;
}

void SharedTextsPart::End(std::string_view element) {
  if (element == "si") texts_.push_back(pool_.Add(text_));
  if (element == "rPh") in_reading_aid_ = false;
  if (element == "t") in_text_ = false;
}

void SharedTextsPart::Text(std::string_view text) {
  if (in_text_ && !in_reading_aid_) AppendOfCell(text, text_);
}

bool StylesPart::IsDate(size_t cell_format) const {
  if (cell_format >= cell_formats_.size()) return false;
  const size_t number = cell_formats_[cell_format];
  const auto found = codes_.find(number);
  return IsDateFormat(number, found == codes_.end() ? std::string_view() : found->second);
}

void StylesPart::Begin(std::string_view element, const XmlAttributes& attributes) {
  if (element == "numFmt") codes_[NumberOf(attributes, "numFmtId")] = TextOf(attributes, "formatCode");
  if (element == "cellXfs") in_cell_formats_ = true;
  if (element == "xf" && in_cell_formats_) cell_formats_.push_back(NumberOf(attributes, "numFmtId"));
}

void StylesPart::End(std::string_view element) {
  if (element == "cellXfs") in_cell_formats_ = false;
}

void SheetPart::Begin(std::string_view element, const XmlAttributes& attributes) {
  if (element == "row") {
    const size_t line = NumberOf(attributes, "r");
    row_ = line > 0 && line <= kMostSheetRows ? static_cast<int>(line) - 1 : row_ + 1;
    column_ = -1;
  } else if (element == "c") {
    BeginCell(attributes);
  } else if (element == "v" || element == "t") {
    in_value_ = true;
  } else if (element == "rPh") {
    in_reading_aid_ = true;
  }
}

void SheetPart::BeginCell(const XmlAttributes& attributes) {
  ++column_;
  ReadPlace(attributes.Find("r").value_or(""), row_, column_);
  type_ = TextOf(attributes, "t");
  format_ = NumberOf(attributes, "s");
  value_.clear();
}

void SheetPart::End(std::string_view element) {
  if (element == "c") EndCell();
  if (element == "sheetData" || element == "worksheet") Order();
  if (element == "v" || element == "t") in_value_ = false;
  if (element == "rPh") in_reading_aid_ = false;
}

void SheetPart::Text(std::string_view text) {
  if (in_value_ && !in_reading_aid_) AppendOfCell(text, value_);
}

void SheetPart::EndCell() {
  if (value_.empty()) return;
  uint32_t text = 0;
  if (type_ != "s") {
    Put(context_.pool.Add(ValueText()));
  } else if (context_.shared.Find(NumberOr(value_, SIZE_MAX), text)) {
    Put(text);
  }
}

void SheetPart::Put(uint32_t text) {
  if (row_ < 0 || row_ >= kMostSheetRows || column_ < 0 || column_ >= kMostSheetColumns) return;
  if (context_.pool.At(text).empty()) return;
  sheet_.cells.push_back({row_, column_, text});
}

// Files have their cells in order, and need not. Of several cells in one place the last one counts.
void SheetPart::Order() {
  std::vector<WorkbookCell>& cells = sheet_.cells;
  const auto place = [](const WorkbookCell& cell) { return std::pair(cell.row, cell.column); };
  const auto is_before = [&](const WorkbookCell& left, const WorkbookCell& right) {
    return place(left) < place(right);
  };
  const auto is_not_before = [&](const WorkbookCell& left, const WorkbookCell& right) {
    return !is_before(left, right);
  };
  if (std::adjacent_find(cells.begin(), cells.end(), is_not_before) == cells.end()) return;
  std::stable_sort(cells.begin(), cells.end(), is_before);
  const auto is_same = [&](const WorkbookCell& left, const WorkbookCell& right) { return place(left) == place(right); };
  // Of equal ones unique keeps the first, so that it goes from the end.
  const auto kept = std::unique(cells.rbegin(), cells.rend(), is_same);
  cells.erase(cells.begin(), kept.base());
}

std::string SheetPart::ValueText() const {
  if (type_ == "b") return IsTrue(value_) ? "TRUE" : "FALSE";
  if (!type_.empty() && type_ != "n") return base::CleanUtf8(value_);
  double number = 0;
  const auto [end, error] = std::from_chars(value_.data(), value_.data() + value_.size(), number);
  const bool is_number = error == std::errc() && end == value_.data() + value_.size() && std::isfinite(number);
  if (!is_number) return base::CleanUtf8(value_);
  return context_.styles.IsDate(format_) ? SerialDateText(number, context_.epoch_day) : base::NumberText(number);
}

}  // namespace stockbook::app
