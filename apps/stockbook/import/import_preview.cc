// SPDX-License-Identifier: MIT
#include "stockbook/import/import_preview.h"

#include <sstream>

#include "base/text.h"
#include "stockbook/import/table_guess.h"

namespace stockbook::app {
namespace {

std::vector<std::string> TextsOf(const CsvRecord& record) {
  std::vector<std::string> texts;
  for (const std::string_view field : record.fields) texts.push_back(base::CleanUtf8(field));
  return texts;
}

// Keeps the lines that are shown.
class PreviewObserver : public ImportObserver {
 public:
  explicit PreviewObserver(ImportPreview& preview) : preview_(preview) {}

  void Imported(const CsvRecord& record) override { Keep(record, {}); }
  void Skipped(const CsvRecord& record, SkipReason /*reason*/, const ImportSentence& explanation) override {
    Keep(record, explanation);
    if (preview_.skipped.size() < kPreviewLinesShown)
      preview_.skipped.push_back({record.line, TextsOf(record), explanation});
  }
  bool GoesOn(int64_t lines) override { return lines < kPreviewLinesRead; }

 private:
  void Keep(const CsvRecord& record, const ImportSentence& problem) {
    if (preview_.lines.size() < kPreviewLinesShown) preview_.lines.push_back({record.line, TextsOf(record), problem});
  }

  ImportPreview& preview_;
};

bool IsMapped(const ImportMapping::Positions& mapping) {
  const auto has = [&](ImportField field) { return mapping[static_cast<size_t>(field)].has_value(); };
  return has(ImportField::Product) && has(ImportField::Date) && has(ImportField::Quantity);
}

// Lines as they are, as long as nobody knows what their columns mean.
void ShowLines(TableReader& table, ImportPreview& preview) {
  CsvRecord record;
  while (preview.lines.size() < kPreviewLinesShown && table.Next(record))
    preview.lines.push_back({record.line, TextsOf(record), {}});
  preview.tally.is_whole = false;
}

}  // namespace

ImportPreview PreviewTable(const std::string& path, const PreviewSettings& settings) {
  std::istringstream nothing;
  const auto table = OpenTable(path, nothing, settings.table);
  ImportPreview preview;
  CsvRecord header;
  ReadHeader(*table, header);
  preview.header = TextsOf(header);
  preview.mapping = settings.mapping ? *settings.mapping : GuessMapping(header.fields);
  // Another delimiter or sheet may have fewer columns.
  for (auto& position : preview.mapping) {
    if (position && *position >= header.fields.size()) position.reset();
  }
  preview.delimiter = table->delimiter();
  preview.sheets = table->sheets();
  preview.sheet = table->sheet();
  preview.decimal = table->decimal();
  preview.is_mapped = IsMapped(preview.mapping);
  if (preview.is_mapped) {
    ImportMapping mapping(preview.mapping);
    mapping.Locate(header.fields);
    PreviewObserver observer(preview);
    preview.tally = ReadMovements(*table, MovementReader(mapping, settings.direction, preview.decimal), observer,
                                  [](const Movement&) {});
  } else {
    ShowLines(*table, preview);
  }
  preview.encoding = table->EncodingName();
  return preview;
}

}  // namespace stockbook::app
