// SPDX-License-Identifier: MIT
#include "stockbook/import/open_table.h"

#include <array>

#include "stockbook/import/csv_reader.h"
#include "stockbook/import/import_sentence.h"
#include "stockbook/import/peeked_source.h"
#include "stockbook/import/table_guess.h"
#include "stockbook/import/workbook_reader.h"

namespace stockbook::app {
namespace {

constexpr size_t kMagicBytes = 16;
constexpr size_t kGuessedBytes = size_t{1} << 16;
constexpr size_t kMostWorkbookBytes = size_t{1} << 28;
constexpr std::string_view kArchiveMagic("PK\x03\x04", 4);

struct OtherKind {
  std::string_view magic;
  std::string_view english;
  std::string_view chinese;
};

constexpr std::string_view kUtf32English = "it is UTF-32 text; save it as UTF-8 and import that";
constexpr std::string_view kUtf32Chinese = "这是 UTF-32 文本，请另存为 UTF-8 再导入";

constexpr std::array<OtherKind, 5> kOtherKinds{{
    {{"\xFF\xFE\0\0", 4}, kUtf32English, kUtf32Chinese},
    {{"\0\0\xFE\xFF", 4}, kUtf32English, kUtf32Chinese},
    {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1",
     "it is a workbook of the old kind (.xls) or one with a password; save it as .xlsx without one, or as .csv, and "
     "import that",
     "这是旧格式（.xls）或设有密码的工作簿，请另存为不设密码的 .xlsx 或 .csv 再导入"},
    {"%PDF-", "it is a PDF document, which has no table to import; export .xlsx or .csv where it came from",
     "这是 PDF 文档，其中没有可导入的表，请从原处导出 .xlsx 或 .csv"},
    {"SQLite format 3", "it is an inventory already; open it with 'stockbook open'", "这已经是库存数据库，请直接打开"},
}};

void RefuseOtherKinds(std::string_view front, const std::string& name) {
  for (const OtherKind& kind : kOtherKinds) {
    if (!front.starts_with(kind.magic)) continue;
    throw TableError({"Cannot import '" + name + "': " + std::string(kind.english) + ".",
                      "无法导入“" + name + "”：" + std::string(kind.chinese) + "。"});
  }
}

// Separated values.
class TextTable : public OpenedTable {
 public:
  TextTable(std::unique_ptr<ByteSource> bytes, const TableOptions& options) : decimal_(options.decimal) {
    auto decoded = std::make_unique<DecodedSource>(std::move(bytes), options.encoding);
    decoded_ = decoded.get();
    text_ = std::make_unique<PeekedSource>(std::move(decoded));
    delimiter_ = options.delimiter ? *options.delimiter : GuessDelimiter(text_->Front(kGuessedBytes));
    reader_.emplace(*text_, delimiter_);
  }

  bool Next(CsvRecord& record) override { return reader_->Next(record); }
  void GiveUpRecord() override { reader_->GiveUpRecord(); }
  std::string_view EncodingName() const override { return decoded_->EncodingName(); }
  char delimiter() const override { return delimiter_; }
  const std::vector<std::string>& sheets() const override { return sheets_; }
  std::string sheet() const override { return {}; }
  DecimalMark decimal() const override {
    return decimal_.value_or(delimiter_ == ',' ? DecimalMark::kPoint : DecimalMark::kEither);
  }

 private:
  std::optional<DecimalMark> decimal_;
  DecodedSource* decoded_ = nullptr;
  std::unique_ptr<PeekedSource> text_;
  char delimiter_ = ',';
  std::optional<CsvReader> reader_;
  std::vector<std::string> sheets_;
};

// A sheet of a workbook.
class SheetTable : public OpenedTable {
 public:
  SheetTable(Workbook workbook, const TableOptions& options)
      : decimal_(options.decimal), reader_(std::move(workbook), options.sheet) {}

  bool Next(CsvRecord& record) override { return reader_.Next(record); }
  void GiveUpRecord() override { reader_.GiveUpRecord(); }
  std::string_view EncodingName() const override { return {}; }
  char delimiter() const override { return 0; }
  const std::vector<std::string>& sheets() const override { return reader_.sheets(); }
  std::string sheet() const override { return reader_.sheet(); }
  DecimalMark decimal() const override { return decimal_.value_or(DecimalMark::kPoint); }

 private:
  std::optional<DecimalMark> decimal_;
  WorkbookReader reader_;
};

}  // namespace

std::unique_ptr<OpenedTable> OpenTable(const std::string& path, std::istream& in, const TableOptions& options) {
  auto source = std::make_unique<PeekedSource>(OpenInput(path, in));
  const std::string name = path == "-" ? "standard input" : path;
  const std::string_view front = source->Front(kMagicBytes);
  RefuseOtherKinds(front, name);
  if (!front.starts_with(kArchiveMagic)) return std::make_unique<TextTable>(std::move(source), options);
  const std::string_view bytes = source->Front(kMostWorkbookBytes);
  if (bytes.size() == kMostWorkbookBytes) {
    throw TableError({"Cannot import '" + name + "': the workbook is larger than 256 MiB; save the sheet as .csv.",
                      "无法导入“" + name + "”：工作簿超过 256 MiB，请把工作表另存为 .csv。"});
  }
  return std::make_unique<SheetTable>(ReadWorkbook(bytes, name), options);
}

}  // namespace stockbook::app
