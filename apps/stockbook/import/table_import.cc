// SPDX-License-Identifier: MIT
#include "stockbook/import/table_import.h"

#include "stockbook/import/import_inventory.h"
#include "stockbook/import/import_sentence.h"
#include "stockbook/inventory/inventory_writer.h"

namespace stockbook::app {
namespace {

// Whether a quote has run over the end of a line, so that what the line was is unknown.
bool IsTorn(const CsvRecord& record, SkipReason reason) {
  if (record.fault == CsvFault::UnclosedQuote) return true;
  return record.line_count > 1 && (reason == SkipReason::BadQuotes || reason == SkipReason::TooLong);
}

// What bytes that are no character were read as.
bool IsDamaged(const Movement& movement) {
  for (const std::string* text :
       {&movement.product, &movement.name, &movement.bill, &movement.partner, &movement.project}) {
    if (text->find("\uFFFD") != std::string::npos) return true;
  }
  return false;
}

}  // namespace

void ReadHeader(TableReader& table, CsvRecord& header) {
  if (!table.Next(header) || header.IsBlank()) {
    throw TableError(
        {"The table is empty: it needs a header line that names its columns.", "表是空的，第一行应为各列的标题。"});
  }
  if (header.fault != CsvFault::None) {
    throw TableError({"The header line cannot be read: its quotes do not match; correct them.",
                      "标题行无法读取：引号不配对，请改正。"});
  }
}

ImportTally ReadMovements(TableReader& table, const MovementReader& movements, ImportObserver& observer,
                          const std::function<void(const Movement&)>& take) {
  ImportTally tally;
  CsvRecord record;
  Movement movement;
  ImportSentence explanation;
  for (;;) {
    if (!observer.GoesOn(tally.imported + tally.skipped)) {
      tally.is_whole = false;
      return tally;
    }
    if (!table.Next(record)) return tally;
    const auto reason = movements.Read(record, movement, explanation);
    if (!reason) {
      ++tally.imported;
      if (IsDamaged(movement) && tally.damaged++ == 0) tally.first_damaged = record.line;
      take(movement);
      observer.Imported(record);
      continue;
    }
    const bool torn = IsTorn(record, *reason);
    const int64_t lines = torn ? 1 : record.line_count;
    tally.skipped += lines;
    tally.reasons[static_cast<size_t>(*reason)] += lines;
    if (torn && tally.lost++ == 0) tally.first_lost = record.line;
    observer.Skipped(record, *reason, explanation);
    if (torn && record.fault == CsvFault::None) table.GiveUpRecord();
  }
}

ImportResult ImportTable(TableReader& table, ImportPlan& plan, ImportObserver& observer) {
  CsvRecord header;
  ReadHeader(table, header);
  plan.mapping.Locate(header.fields);
  InventoryWriter writer(plan.output);
  ImportInventory inventory(writer, plan.direction);
  ImportResult result;
  result.tally = ReadMovements(table, MovementReader(plan.mapping, plan.direction, plan.decimal), observer,
                               [&](const Movement& movement) { inventory.Add(movement); });
  result.issues = inventory.issues();
  result.receipts = inventory.receipts();
  result.bills = inventory.bills();
  result.products = inventory.products();
  result.periods = inventory.periods();
  if (!result.tally.is_whole || result.tally.imported == 0 || result.tally.lost > 0) return result;
  inventory.Complete();
  writer.Finish();
  result.is_written = true;
  return result;
}

}  // namespace stockbook::app
