// SPDX-License-Identifier: MIT
#include "stockbook/command/import_command.h"

#include <array>
#include <ostream>

#include "stockbook/command/command_line.h"
#include "stockbook/command/output_check.h"
#include "stockbook/import/open_table.h"
#include "stockbook/import/table_import.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

constexpr int64_t kReportsShown = 20;

constexpr std::array<Option, 8> kOptions{{
    {"output", OptionKind::Value, 'o'},
    {"map", OptionKind::Values},
    {"direction", OptionKind::Value},
    {"delimiter", OptionKind::Value},
    {"encoding", OptionKind::Value},
    {"decimal", OptionKind::Value},
    {"sheet", OptionKind::Value},
    {"strict", OptionKind::Flag},
}};

constexpr std::string_view kUsage = R"(Makes an inventory from a table of movements, such as the lines of invoices.

Usage: stockbook import TABLE -o DB --map FIELD=COLUMN,... --direction receipt|issue [--strict]
                        [--encoding NAME] [--delimiter C] [--decimal point|comma] [--sheet NAME]

  TABLE             separated values with one header line, or an .xlsx workbook; .xz and .gz files are unpacked; - is
                    standard input
  -o, --output DB   the inventory to write; an existing one is replaced when all has gone well
  --map LIST        which column holds what, for example
                    product=StockCode,name=Description,bill=InvoiceNo,date=InvoiceDate,quantity=Quantity,
                    price=UnitPrice,partner=CustomerID,project=Country
                    product, date and quantity are needed; --map may be given several times
  --direction D     what a positive quantity is: issue (sales, the default) or receipt (purchases)
  --encoding NAME   what the text is: utf-8, gb18030 (gbk, gb2312), big5, utf-16, utf-16be or windows-1252; without it
                    UTF-8, UTF-16 and GBK are told apart by what they contain
  --delimiter C     what separates the fields: a character, or tab; a comma without it
  --decimal MARK    whether a point or a comma begins the decimals; without it a point in workbooks and where commas
                    separate the fields, and elsewhere what each number shows: 3,5 and 1.234,56 and 1,234.56
  --sheet NAME      the sheet of a workbook; without it the first one that is not empty
  --strict          stop at the first line that cannot be read, and write nothing

Dates have the year first: 2025-02-09, 2025/2/9, 2025.2.9, 20250209 or 2025年2月9日, with or without a time. Numbers may
have thousands separators, a currency sign, wide digits, and brackets instead of a minus. A negative quantity goes the
other way; a quantity of 0 is imported as it stands. The amount is quantity times price, rounded half to even to four
decimals. Lines without a partner are filed under one of their own, (无客户), or (无供应商) where the table has receipts.
A line that cannot be read is reported with its number, counted and skipped. Lines that begin with a quote that is never
closed, or closed only in another line, so that nobody knows what they were, are lost: reading goes on at the next line,
all of them are reported, the exit code is 1, and an existing inventory stays as it was. An apostrophe in front of what a
spreadsheet would take for a formula is left out, as export put it there. The periods are the months of the dates, and
one without bills before them; all goods lie in one depot, 总库.
)";

std::optional<char> DelimiterOf(const CommandLine& line) {
  const auto text = line.Value("delimiter");
  if (!text) return std::nullopt;
  if (*text == "tab" || *text == "\\t") return '\t';
  if (text->size() == 1 && *text != "\"" && *text != "\n" && *text != "\r") return text->front();
  throw UsageError("The option --delimiter needs one character or the word tab, not '" + *text + "'.");
}

TextEncoding TextEncodingOf(const CommandLine& line) {
  const auto name = line.Value("encoding");
  if (!name) return TextEncoding::kDetected;
  if (const auto encoding = EncodingOf(*name)) return *encoding;
  throw UsageError("The option --encoding must be " + std::string(EncodingNames()) + ", not '" + *name + "'.");
}

std::optional<DecimalMark> DecimalOf(const CommandLine& line) {
  constexpr std::array<std::string_view, 2> kMarks{"point", "comma"};
  const auto mark = line.Choice("decimal", kMarks);
  if (!mark) return std::nullopt;
  return *mark == "comma" ? DecimalMark::kComma : DecimalMark::kPoint;
}

Direction DirectionOf(const CommandLine& line) {
  constexpr std::array<std::string_view, 2> kChoices{"receipt", "issue"};
  return line.Choice("direction", kChoices).value_or("issue") == "receipt" ? Direction::Receipt : Direction::Issue;
}

// What happens to a line that cannot be imported: it is left out, or it ends the import.
enum class BadLines { kSkipped, kFatal };

class LineReports : public ImportObserver {
 public:
  LineReports(std::ostream& err, BadLines bad_lines) : err_(err), bad_lines_(bad_lines) {}

  void Skipped(const CsvRecord& record, SkipReason /*reason*/, const ImportSentence& explanation) override {
    const std::string sentence = "Line " + std::to_string(record.line) + " cannot be imported: " + explanation.english;
    if (bad_lines_ == BadLines::kFatal) {
      throw platform::Error("import", sentence + "; correct it, or leave --strict out to skip it.");
    }
    ++reported_;
    if (reported_ <= kReportsShown) err_ << "stockbook import: " << OneLine(sentence) << "; it is skipped.\n";
    if (reported_ == kReportsShown + 1) err_ << "stockbook import: Further lines that are skipped are only counted.\n";
  }

 private:
  std::ostream& err_;
  BadLines bad_lines_;
  int64_t reported_ = 0;
};

void PrintResult(const ImportResult& result, std::ostream& out) {
  const ImportTally& tally = result.tally;
  out << "Read " << tally.imported + tally.skipped << " lines: imported " << tally.imported << " (" << result.issues
      << " issues, " << result.receipts << " receipts; " << result.bills << " bills, " << result.products
      << " products, " << result.periods << " periods), skipped " << tally.skipped;
  const char* separator = ": ";
  for (size_t index = 0; index < kSkipReasonCount; ++index) {
    if (tally.reasons[index] == 0) continue;
    out << separator << SkipReasonText(static_cast<SkipReason>(index)).english << " " << tally.reasons[index];
    separator = ", ";
  }
  out << ".\n";
}

// What is said of a table that is not simply UTF-8.
void PrintKind(const OpenedTable& table, std::ostream& out) {
  if (!table.sheets().empty()) out << "The table is sheet '" << OneLine(table.sheet()) << "' of a workbook.\n";
  const std::string_view encoding = table.EncodingName();
  if (!encoding.empty() && encoding != "UTF-8") out << "The table is " << encoding << " text.\n";
}

// A wrong encoding must not go unnoticed.
void WarnOfDamage(const ImportTally& tally, std::string_view encoding, std::ostream& err) {
  if (tally.damaged == 0) return;
  err << "stockbook import: Texts of " << tally.damaged << (tally.damaged == 1 ? " line" : " lines") << " hold "
      << (encoding.empty() ? "characters that were lost before" : "bytes that are no " + std::string(encoding))
      << ", the first in line " << tally.first_damaged << "; they are imported as \uFFFD"
      << (encoding.empty() ? "" : "; where there are many of them, say by --encoding what the table is") << ".\n";
}

void CheckWritten(const ImportTally& tally) {
  if (tally.imported == 0) {
    throw platform::Error("import",
                          "No line of " + std::to_string(tally.skipped) +
                              " could be imported, so that no inventory is written; look at --map and --delimiter.");
  }
  if (tally.lost == 0) return;
  throw platform::Error("import", "Quotes that are not closed have cost " + std::to_string(tally.lost) +
                                      (tally.lost == 1 ? " line" : " lines") + ", the first in line " +
                                      std::to_string(tally.first_lost) +
                                      ", so that no inventory is written; close them, or double them if they are "
                                      "text.");
}

// A workbook is no text, so that what is said about text is a mistake.
void CheckTextOptions(const CommandLine& line, const OpenedTable& table) {
  for (const std::string_view option : {"delimiter", "encoding"}) {
    if (table.delimiter() != 0 || !line.Has(option)) continue;
    throw UsageError("The table is a workbook (.xlsx), whatever its name, and no text: leave --" + std::string(option) +
                     " out.");
  }
  if (table.delimiter() != 0 && line.Has("sheet"))
    throw UsageError("The table is text and no workbook: leave --sheet out.");
}

int RunImport(const std::vector<std::string>& arguments, Terminal& terminal) {
  const CommandLine line(arguments, kOptions);
  line.ExpectAtMost(1);
  const std::string input = line.Positional(0, "TABLE, the table to import, or - for standard input");
  const std::string output = line.Required("output", "name the inventory to write with -o DB");
  if (output == "-") throw UsageError("An inventory cannot go to standard output; name a file with -o DB.");
  CheckOutput(output, input == "-" ? "" : input, Replaces::kAnyInventory);
  if (!line.Has("map")) throw UsageError("The option --map is missing: say which column holds what.");
  ImportPlan plan{ImportMapping(line.Values("map")), DirectionOf(line), DecimalMark::kPoint, output};
  TableOptions options{TextEncodingOf(line), DelimiterOf(line), line.Value("sheet").value_or(""), DecimalOf(line)};
  if (!options.delimiter) options.delimiter = ',';
  LineReports reports(terminal.err, line.Has("strict") ? BadLines::kFatal : BadLines::kSkipped);

  const auto table = OpenTable(input, terminal.in, options);
  CheckTextOptions(line, *table);
  plan.decimal = table->decimal();
  const ImportResult result = ImportTable(*table, plan, reports);
  if (result.tally.imported > 0) {
    PrintKind(*table, terminal.out);
    PrintResult(result, terminal.out);
    WarnOfDamage(result.tally, table->EncodingName(), terminal.err);
  }
  CheckWritten(result.tally);
  return kExitDone;
}

}  // namespace

Command ImportCommand() {
  return {"import", "Make an inventory from a table of movements (CSV, XLSX)", std::string(kUsage), RunImport};
}

}  // namespace stockbook::app
