// SPDX-License-Identifier: MIT
#include "stockbook/command/import_command.h"

#include <array>
#include <filesystem>
#include <ostream>
#include <system_error>

#include "platform/error.h"
#include "stockbook/command/command_line.h"
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
reported with its number, counted and skipped. The periods are the months of the dates; all goods lie in one depot, 总库.
)";

// How many lines were imported or skipped.
struct Tally {
  int64_t read = 0;
  int64_t skipped = 0;
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

  void Report(int64_t line, SkipReason reason, const std::string& explanation, Tally& tally) {
    const std::string sentence = "Line " + std::to_string(line) + " cannot be imported: " + explanation;
    if (bad_lines_ == BadLines::kFatal) {
      throw platform::Error("import", sentence + "; correct it, or leave --strict out to skip it.");
    }
    ++tally.skipped;
    ++tally.reasons[static_cast<size_t>(reason)];
    if (tally.skipped <= kReportsShown) err_ << "stockbook import: " << OneLine(sentence) << "; it is skipped.\n";
    if (tally.skipped == kReportsShown + 1)
      err_ << "stockbook import: Further lines that are skipped are only counted.\n";
  }

 private:
  std::ostream& err_;
  BadLines bad_lines_;
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

Tally ReadLines(CsvReader& reader, const MovementReader& movements, LineReports& reports, ImportInventory& inventory) {
  Tally tally;
  CsvRecord record;
  Movement movement;
  std::string explanation;
  while (reader.Next(record)) {
    ++tally.read;
    if (const auto reason = movements.Read(record, movement, explanation)) {
      reports.Report(record.line, *reason, explanation, tally);
    } else {
      inventory.Add(movement);
    }
  }
  return tally;
}

void PrintTally(const Tally& tally, const ImportInventory& inventory, std::ostream& out) {
  out << "Read " << tally.read << " lines: imported " << tally.read - tally.skipped << " (" << inventory.issues()
      << " issues, " << inventory.receipts() << " receipts; " << inventory.bills() << " bills, " << inventory.products()
      << " products, " << inventory.periods() << " periods), skipped " << tally.skipped;
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
  std::error_code ignored;
  if (std::filesystem::equivalent(input, output, ignored)) {
    throw UsageError("The inventory cannot take the place of its table '" + input + "'; name another file with -o DB.");
  }
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
  if (tally.read == tally.skipped) {
    throw platform::Error("import",
                          "No line of " + std::to_string(tally.read) +
                              " could be imported, so that no inventory is written; look at --map and --delimiter.");
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
