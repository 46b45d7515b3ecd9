// SPDX-License-Identifier: MIT
#include "stockbook/command/import_command.h"

#include <array>
#include <ostream>

#include "platform/error.h"
#include "stockbook/command/command_line.h"
#include "stockbook/command/output_check.h"
#include "stockbook/import/compressed_input.h"
#include "stockbook/import/csv_reader.h"
#include "stockbook/import/import_inventory.h"
#include "stockbook/import/import_mapping.h"
#include "stockbook/import/import_movement.h"
#include "stockbook/inventory/inventory_writer.h"

namespace stockbook::app {
namespace {

constexpr int64_t kReportsShown = 20;

constexpr std::array<Option, 5> kOptions{{
    {"output", OptionKind::Value, 'o'},
    {"map", OptionKind::Values},
    {"direction", OptionKind::Value},
    {"delimiter", OptionKind::Value},
    {"strict", OptionKind::Flag},
}};

constexpr std::string_view kUsage = R"(Makes an inventory from a table of movements, such as the lines of invoices.

Usage: stockbook import CSV -o DB --map FIELD=COLUMN,... --direction receipt|issue [--delimiter C] [--strict]

  CSV               the table: one header line, UTF-8; .xz and .gz files are unpacked; - is standard input
  -o, --output DB   the inventory to write; an existing one is replaced when all has gone well
  --map LIST        which column holds what, for example
                    product=StockCode,name=Description,bill=InvoiceNo,date=InvoiceDate,quantity=Quantity,
                    price=UnitPrice,partner=CustomerID,project=Country
                    product, date and quantity are needed; --map may be given several times
  --direction D     what a positive quantity is: issue (sales, the default) or receipt (purchases)
  --delimiter C     what separates the fields: a character, or tab; a comma without it
  --strict          stop at the first line that cannot be read, and write nothing

Dates are yyyy-MM-dd, with or without HH:mm:ss. A negative quantity goes the other way; a quantity of 0 is imported as it
stands. The amount is quantity times price, rounded half to even to four decimals. A line that cannot be read is
reported with its number, counted and skipped. Lines that begin with a quote that is never closed, or closed only in
another line, so that nobody knows what they were, are lost: reading goes on at the next line, all of them are reported,
the exit code is 1, and an existing inventory stays as it was. An apostrophe in front of what a spreadsheet would take
for a formula is left out, as export put it there. The periods are the months of the dates, and one without bills before them; all goods
lie in one depot, 总库.
)";

// How many records were imported, and how many lines of the table were skipped.
struct Tally {
  int64_t imported = 0;
  int64_t skipped = 0;
  int64_t lost = 0;        // of the skipped ones, those that a quote has torn
  int64_t first_lost = 0;  // where the first of these begins
  std::array<int64_t, kSkipReasonCount> reasons{};
};

char DelimiterOf(const CommandLine& line) {
  const std::string text = line.Value("delimiter").value_or(",");
  if (text == "tab" || text == "\\t") return '\t';
  if (text.size() == 1 && text != "\"" && text != "\n" && text != "\r") return text.front();
  throw UsageError("The option --delimiter needs one character or the word tab, not '" + text + "'.");
}

Direction DirectionOf(const CommandLine& line) {
  constexpr std::array<std::string_view, 2> kChoices{"receipt", "issue"};
  return line.Choice("direction", kChoices).value_or("issue") == "receipt" ? Direction::Receipt : Direction::Issue;
}

// What happens to a line that cannot be imported: it is left out, or it ends the import.
enum class BadLines { kSkipped, kFatal };

class LineReports {
 public:
  LineReports(std::ostream& err, BadLines bad_lines) : err_(err), bad_lines_(bad_lines) {}

  // Reports a record, of which `lines` lines are skipped.
  void Report(const CsvRecord& record, int64_t lines, SkipReason reason, const std::string& explanation, Tally& tally) {
    const std::string sentence = "Line " + std::to_string(record.line) + " cannot be imported: " + explanation;
    if (bad_lines_ == BadLines::kFatal) {
      throw platform::Error("import", sentence + "; correct it, or leave --strict out to skip it.");
    }
    tally.skipped += lines;
    tally.reasons[static_cast<size_t>(reason)] += lines;
    ++reported_;
    if (reported_ <= kReportsShown) err_ << "stockbook import: " << OneLine(sentence) << "; it is skipped.\n";
    if (reported_ == kReportsShown + 1) err_ << "stockbook import: Further lines that are skipped are only counted.\n";
  }

 private:
  std::ostream& err_;
  BadLines bad_lines_;
  int64_t reported_ = 0;
};

void ReadHeader(CsvReader& reader, ImportMapping& mapping) {
  CsvRecord header;
  if (!reader.Next(header) || header.IsBlank()) {
    throw platform::Error("import", "The table is empty: it needs a header line that names its columns.");
  }
  if (header.fault != CsvFault::None) {
    throw platform::Error("import", "The header line cannot be read: its quotes do not match; correct them.");
  }
  mapping.Locate(header.fields);
}

// Whether a quote has run over the end of a line, so that what the line was is unknown.
bool IsTorn(const CsvRecord& record, SkipReason reason) {
  if (record.fault == CsvFault::UnclosedQuote) return true;
  return record.line_count > 1 && (reason == SkipReason::BadQuotes || reason == SkipReason::TooLong);
}

Tally ReadLines(CsvReader& reader, const MovementReader& movements, LineReports& reports, ImportInventory& inventory) {
  Tally tally;
  CsvRecord record;
  Movement movement;
  std::string explanation;
  while (reader.Next(record)) {
    const auto reason = movements.Read(record, movement, explanation);
    if (!reason) {
      ++tally.imported;
      inventory.Add(movement);
      continue;
    }
    const bool torn = IsTorn(record, *reason);
    if (torn && record.fault == CsvFault::None) reader.GiveUpRecord();
    reports.Report(record, torn ? 1 : record.line_count, *reason, explanation, tally);
    if (torn && tally.lost++ == 0) tally.first_lost = record.line;
  }
  return tally;
}

void PrintTally(const Tally& tally, const ImportInventory& inventory, std::ostream& out) {
  out << "Read " << tally.imported + tally.skipped << " lines: imported " << tally.imported << " ("
      << inventory.issues() << " issues, " << inventory.receipts() << " receipts; " << inventory.bills() << " bills, "
      << inventory.products() << " products, " << inventory.periods() << " periods), skipped " << tally.skipped;
  const char* separator = ": ";
  for (size_t index = 0; index < kSkipReasonCount; ++index) {
    if (tally.reasons[index] == 0) continue;
    out << separator << SkipReasonText(static_cast<SkipReason>(index)) << " " << tally.reasons[index];
    separator = ", ";
  }
  out << ".\n";
}

int RunImport(const std::vector<std::string>& arguments, Terminal& terminal) {
  const CommandLine line(arguments, kOptions);
  line.ExpectAtMost(1);
  const std::string input = line.Positional(0, "CSV, the table to import, or - for standard input");
  const std::string output = line.Required("output", "name the inventory to write with -o DB");
  if (output == "-") throw UsageError("An inventory cannot go to standard output; name a file with -o DB.");
  CheckOutput(output, input == "-" ? "" : input, Replaces::kAnyInventory);
  if (!line.Has("map")) throw UsageError("The option --map is missing: say which column holds what.");
  ImportMapping mapping(line.Values("map"));
  const Direction direction = DirectionOf(line);
  const char delimiter = DelimiterOf(line);

  const auto source = OpenInput(input, terminal.in);
  CsvReader reader(*source, delimiter);
  ReadHeader(reader, mapping);
  InventoryWriter writer(output);
  ImportInventory inventory(writer);
  LineReports reports(terminal.err, line.Has("strict") ? BadLines::kFatal : BadLines::kSkipped);
  const Tally tally = ReadLines(reader, MovementReader(mapping, direction), reports, inventory);
  if (tally.imported == 0) {
    throw platform::Error("import",
                          "No line of " + std::to_string(tally.skipped) +
                              " could be imported, so that no inventory is written; look at --map and --delimiter.");
  }
  if (tally.lost > 0) {
    PrintTally(tally, inventory, terminal.out);
    throw platform::Error("import", "Quotes that are not closed have cost " + std::to_string(tally.lost) +
                                        (tally.lost == 1 ? " line" : " lines") + ", the first in line " +
                                        std::to_string(tally.first_lost) +
                                        ", so that no inventory is written; close them, or double them if they are "
                                        "text.");
  }
  inventory.Complete();
  writer.Finish();
  PrintTally(tally, inventory, terminal.out);
  return kExitDone;
}

}  // namespace

Command ImportCommand() {
  return {"import", "Make an inventory from a table of movements (CSV)", std::string(kUsage), RunImport};
}

}  // namespace stockbook::app
