// SPDX-License-Identifier: MIT
#include "stockbook/export/xlsx_writer.h"

#include <unistd.h>
#include <xlsxwriter.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <ostream>
#include <tuple>
#include <utility>
#include <vector>

#include "base/text.h"
#include "databases/late/late_library.h"
#include "stockbook/command/program_end.h"
#include "stockbook/export/shown_table.h"
#include "stockbook/import/import_sentence.h"

namespace stockbook::app {
namespace {

// The library that writes workbooks, which brings those of archives and encryption, is loaded with the first export of
// one. Its functions are called as ever.
constexpr databases::LateLibrary kXlsxLibrary(STOCKBOOK_XLSX_WRITER_FILE);
constinit const databases::LateFunction<decltype(::format_set_bg_color)> format_set_bg_color(kXlsxLibrary,
                                                                                             "format_set_bg_color");
constinit const databases::LateFunction<decltype(::format_set_bold)> format_set_bold(kXlsxLibrary, "format_set_bold");
constinit const databases::LateFunction<decltype(::format_set_num_format)> format_set_num_format(
    kXlsxLibrary, "format_set_num_format");
constinit const databases::LateFunction<decltype(::lxw_strerror)> lxw_strerror(kXlsxLibrary, "lxw_strerror");
constinit const databases::LateFunction<decltype(::workbook_add_format)> workbook_add_format(kXlsxLibrary,
                                                                                             "workbook_add_format");
constinit const databases::LateFunction<decltype(::workbook_add_worksheet)> workbook_add_worksheet(
    kXlsxLibrary, "workbook_add_worksheet");
constinit const databases::LateFunction<decltype(::workbook_close)> workbook_close(kXlsxLibrary, "workbook_close");
constinit const databases::LateFunction<decltype(::workbook_new_opt)> workbook_new_opt(kXlsxLibrary,
                                                                                       "workbook_new_opt");
constinit const databases::LateFunction<decltype(::workbook_set_properties)> workbook_set_properties(
    kXlsxLibrary, "workbook_set_properties");
constinit const databases::LateFunction<decltype(::worksheet_fit_to_pages)> worksheet_fit_to_pages(
    kXlsxLibrary, "worksheet_fit_to_pages");
constinit const databases::LateFunction<decltype(::worksheet_freeze_panes)> worksheet_freeze_panes(
    kXlsxLibrary, "worksheet_freeze_panes");
constinit const databases::LateFunction<decltype(::worksheet_outline_settings)> worksheet_outline_settings(
    kXlsxLibrary, "worksheet_outline_settings");
constinit const databases::LateFunction<decltype(::worksheet_repeat_rows)> worksheet_repeat_rows(
    kXlsxLibrary, "worksheet_repeat_rows");
constinit const databases::LateFunction<decltype(::worksheet_set_column)> worksheet_set_column(kXlsxLibrary,
                                                                                               "worksheet_set_column");
constinit const databases::LateFunction<decltype(::worksheet_set_footer)> worksheet_set_footer(kXlsxLibrary,
                                                                                               "worksheet_set_footer");
constinit const databases::LateFunction<decltype(::worksheet_set_header)> worksheet_set_header(kXlsxLibrary,
                                                                                               "worksheet_set_header");
constinit const databases::LateFunction<decltype(::worksheet_set_landscape)> worksheet_set_landscape(
    kXlsxLibrary, "worksheet_set_landscape");
constinit const databases::LateFunction<decltype(::worksheet_set_row_opt)> worksheet_set_row_opt(
    kXlsxLibrary, "worksheet_set_row_opt");
constinit const databases::LateFunction<decltype(::worksheet_write_blank)> worksheet_write_blank(
    kXlsxLibrary, "worksheet_write_blank");
constinit const databases::LateFunction<decltype(::worksheet_write_number)> worksheet_write_number(
    kXlsxLibrary, "worksheet_write_number");
constinit const databases::LateFunction<decltype(::worksheet_write_string)> worksheet_write_string(
    kXlsxLibrary, "worksheet_write_string");

constexpr double kTwipsOfCharacter = 105;  // seven pixels, as wide as a digit of a workbook's usual font
constexpr size_t kMostCharacters = 32'767;
constexpr uint32_t kTotalColour = 0xE8EEF7;
constexpr uint32_t kCaptionColour = 0xD9D9D9;
constexpr std::string_view kSheetName = "库存台账";

[[noreturn]] void FailXlsx(const std::string& english, const std::string& chinese) {
  throw TableError({"The workbook could not be written: " + english + ".", "工作簿没有写成：" + chinese + "。"});
}

[[noreturn]] void FailForMemory() { FailXlsx("there is not enough memory", "内存不足"); }

// What the library reports is mostly a disk without room for its temporary files.
void CheckXlsx(lxw_error error) {
  if (error == LXW_NO_ERROR) return;
  if (error == LXW_ERROR_MEMORY_MALLOC_FAILED) FailForMemory();
  const std::string reason = lxw_strerror(error);
  FailXlsx(reason + " Look whether the disk is full", "磁盘可能已满（" + reason + "）");
}

// A file of its own in the folder for temporary files, gone with the object.
class WorkbookPlace {
 public:
  WorkbookPlace() : path_((std::filesystem::temp_directory_path() / "stockbook-XXXXXX").string()) {
    const int file = mkstemp(path_.data());
    if (file < 0) FailXlsx("there is no room for a temporary file", "没有存放临时文件的地方");
    close(file);
    unfinished_ = std::make_unique<UnfinishedFile>(path_);
  }
  ~WorkbookPlace() { unlink(path_.c_str()); }
  WorkbookPlace(const WorkbookPlace&) = delete;
  WorkbookPlace& operator=(const WorkbookPlace&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
  std::unique_ptr<UnfinishedFile> unfinished_;
};

// The formats of a grid's numbers are a workbook's too, as far as they are made of these.
std::string WorkbookFormat(const std::string& format) {
  const bool known = format.find_first_not_of("#0,.%-+() ;") == std::string::npos;
  if (known) return format;
  return format.find("yy") != std::string::npos ? "yyyy-mm-dd" : std::string();
}

struct FormatKey {
  std::string number;
  bool is_bold = false;
  uint32_t colour = 0;  // 0 for none
  bool operator<(const FormatKey& other) const {
    return std::tie(number, is_bold, colour) < std::tie(other.number, other.is_bold, other.colour);
  }
};

// One workbook while it is written, a row after the other.
class XlsxBook {
 public:
  XlsxBook(const ShownTable& table, const XlsxOptions& options, const std::string& path)
      : table_(table), options_(options) {
    lxw_workbook_options settings{};
    settings.constant_memory = LXW_TRUE;
    book_ = workbook_new_opt(path.c_str(), &settings);
    if (book_ == nullptr) FailForMemory();
    lxw_doc_properties properties{};
    std::string title = options.title;
    properties.title = title.data();
    workbook_set_properties(book_, &properties);
  }
  ~XlsxBook() {
    if (book_ != nullptr) workbook_close(book_);
  }
  XlsxBook(const XlsxBook&) = delete;
  XlsxBook& operator=(const XlsxBook&) = delete;

  void Add(const ShownRow& row) {
    if (sheet_ == nullptr || row_ == static_cast<lxw_row_t>(options_.most_rows)) Begin();
    lxw_row_col_options outline{};
    outline.level = row.is_line ? 1 : 0;
    outline.hidden = row.is_folded ? 1 : 0;
    outline.collapsed = row.is_closed ? 1 : 0;
    worksheet_set_row_opt(sheet_, row_, LXW_DEF_ROW_HEIGHT, nullptr, &outline);
    for (size_t at = 0; at < row.cells.size(); ++at) Write(static_cast<lxw_col_t>(at), row.cells[at], row);
    ++row_;
  }

  void Close() {
    if (sheet_ == nullptr) Begin();
    CheckXlsx(workbook_close(std::exchange(book_, nullptr)));
  }

 private:
  // A sheet with its captions.
  void Begin() {
    const std::string number = ++sheets_ == 1 ? "" : " " + std::to_string(sheets_);
    sheet_ = workbook_add_worksheet(book_, (std::string(kSheetName) + number).c_str());
    if (sheet_ == nullptr) FailForMemory();
    // The node of a period stands above its lines.
    worksheet_outline_settings(sheet_, LXW_TRUE, LXW_FALSE, LXW_TRUE, LXW_FALSE);
    worksheet_freeze_panes(sheet_, 1, static_cast<lxw_col_t>(table_.frozen_columns()));
    worksheet_set_landscape(sheet_);
    worksheet_fit_to_pages(sheet_, 1, 0);
    worksheet_repeat_rows(sheet_, 0, 0);
    worksheet_set_header(sheet_, Header().c_str());
    worksheet_set_footer(sheet_, "&C&P / &N");
    lxw_format* captions = Format({"", true, kCaptionColour});
    for (size_t at = 0; at < table_.columns().size(); ++at) {
      const auto column = static_cast<lxw_col_t>(at);
      const ShownColumn& shown = table_.columns()[at];
      worksheet_set_column(sheet_, column, column, shown.width_twips / kTwipsOfCharacter, nullptr);
      worksheet_write_string(sheet_, 0, column, shown.caption.c_str(), captions);
    }
    row_ = 1;
  }

  // What is printed above each page; an ampersand begins an instruction there.
  std::string Header() const {
    constexpr size_t kMost = 120;
    return "&C" + base::ReplaceAll(base::LeftCharacters(options_.title, kMost), "&", "&&");
  }

  lxw_format* Format(const FormatKey& key) {
    lxw_format*& format = formats_[key];
    if (format != nullptr) return format;
    format = workbook_add_format(book_);
    if (format == nullptr) FailForMemory();
    if (!key.number.empty()) format_set_num_format(format, key.number.c_str());
    if (key.is_bold) format_set_bold(format);
    if (key.colour != 0) format_set_bg_color(format, key.colour);
    return format;
  }

  void Write(lxw_col_t column, const ShownCell& cell, const ShownRow& row) {
    FormatKey key;
    key.is_bold = row.is_total || !row.is_line;
    key.colour = row.is_total ? kTotalColour : 0;
    lxw_error error = LXW_NO_ERROR;
    if (const auto* number = std::get_if<double>(&cell)) {
      key.number = WorkbookFormat(table_.columns()[column].format);
      error = worksheet_write_number(sheet_, row_, column, *number, Format(key));
    } else if (const auto* date = std::get_if<base::Date>(&cell)) {
      key.number = date->HasTime() ? "yyyy-mm-dd hh:mm:ss" : "yyyy-mm-dd";
      const double days = static_cast<double>(date->seconds()) / static_cast<double>(base::Date::kSecondsPerDay);
      error = worksheet_write_number(sheet_, row_, column, days, Format(key));
    } else if (const auto* text = std::get_if<std::string>(&cell)) {
      const std::string shown(base::LeftCharacters(*text, kMostCharacters));
      error = worksheet_write_string(sheet_, row_, column, shown.c_str(), Format(key));
    } else if (row.is_total) {
      error = worksheet_write_blank(sheet_, row_, column, Format(key));
    }
    CheckXlsx(error);
  }

  const ShownTable& table_;
  const XlsxOptions& options_;
  lxw_workbook* book_ = nullptr;
  lxw_worksheet* sheet_ = nullptr;
  lxw_row_t row_ = 0;
  int sheets_ = 0;
  std::map<FormatKey, lxw_format*> formats_;
};

void CopyWorkbook(const std::string& path, std::ostream& out) {
  std::ifstream file(path, std::ios::binary);
  std::vector<char> block(size_t{1} << 16);
  while (file.read(block.data(), static_cast<std::streamsize>(block.size())), file.gcount() > 0)
    out.write(block.data(), file.gcount());
}

}  // namespace

bool CanWriteXlsx() { return true; }

bool WriteXlsx(const sheet::GridSheet& grid, const XlsxOptions& options, std::ostream& out) {
  constexpr int kRowsBetweenQuestions = 1000;
  const WorkbookPlace place;
  const ShownTable table(grid, options.columns);
  XlsxBook book(table, options, place.path());
  const bool whole = table.ForEachRow([&](int grid_row, const ShownRow& row) {
    if (options.goes_on && grid_row % kRowsBetweenQuestions == 0 && !options.goes_on(grid_row)) return false;
    book.Add(row);
    return true;
  });
  if (!whole) return false;
  book.Close();
  CopyWorkbook(place.path(), out);
  return true;
}

}  // namespace stockbook::app
