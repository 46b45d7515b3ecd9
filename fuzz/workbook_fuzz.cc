// SPDX-License-Identifier: MIT
// Workbooks of any parts, and archives with any bytes changed, give rows in their order or a sentence.
#include "app/zip_file.h"
#include "fuzzed_bytes.h"
#include "stockbook/import/import_sentence.h"
#include "stockbook/import/workbook_reader.h"

namespace stockbook::fuzz {
namespace {

void ReadAllOf(const std::string& bytes) {
  app::WorkbookReader reader(app::ReadWorkbook(bytes, "fuzzed.xlsx"), {});
  app::CsvRecord record;
  int64_t line = 0;
  size_t width = 0;
  while (reader.Next(record)) {
    Require(record.line > line && record.line <= 1'048'576, "rows come one after the other");
    line = record.line;
    if (width == 0) width = record.fields.size();
    Require(record.fields.size() >= width && record.fields.size() <= 16'384, "a row has its columns");
    bool has_text = false;
    for (const std::string_view field : record.fields) has_text = has_text || !field.empty();
    Require(has_text, "rows without texts are left out");
  }
}

}  // namespace
}  // namespace stockbook::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace stockbook::fuzz;
  FuzzedBytes bytes(data, size);
  const size_t changes = bytes.Below(3);
  const size_t places[2] = {bytes.Take<uint16_t>(), bytes.Take<uint16_t>()};
  const char values[2] = {bytes.Take<char>(), bytes.Take<char>()};
  stockbook::app::WorkbookXml xml;
  xml.shared_strings = bytes.TakeLine();
  xml.formats = bytes.TakeLine();
  xml.cell_formats = bytes.TakeLine();
  xml.workbook = bytes.TakeLine();
  xml.sheet = bytes.TakeAll();
  std::string archive = stockbook::app::MakeWorkbook(xml);
  for (size_t change = 0; change < changes; ++change) archive[places[change] % archive.size()] = values[change];
  try {
    ReadAllOf(archive);
  } catch (const stockbook::app::TableError& error) {
    Require(!error.chinese().empty() && error.what()[0] != '\0', "there is a reason in both languages");
  }
  return 0;
}
