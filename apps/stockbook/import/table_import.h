// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "stockbook/import/import_mapping.h"
#include "stockbook/import/import_movement.h"
#include "stockbook/import/table_reader.h"

namespace stockbook::app {

// How many records were read, and how many lines of the table were skipped.
struct ImportTally {
  int64_t imported = 0;
  int64_t skipped = 0;
  int64_t lost = 0;        // of the skipped ones, those that a quote has torn
  int64_t first_lost = 0;  // where the first of these begins
  int64_t damaged = 0;     // of the imported ones, those with a text that holds a replaced character
  int64_t first_damaged = 0;
  std::array<int64_t, kSkipReasonCount> reasons{};
  bool is_whole = true;  // the table was read to its end
};

// Hears how an import goes.
class ImportObserver {
 public:
  virtual ~ImportObserver() = default;
  // A record cannot be imported, by which some lines are skipped. May throw, which ends the import.
  virtual void Skipped(const CsvRecord& /*record*/, SkipReason /*reason*/, const ImportSentence& /*explanation*/) {}
  // A record was imported.
  virtual void Imported(const CsvRecord& /*record*/) {}
  // Called before each record; false ends the reading.
  virtual bool GoesOn(int64_t /*lines*/) { return true; }
};

// Reads the header line. Throws TableError if there is none.
void ReadHeader(TableReader& table, CsvRecord& header);

// Reads all records below the header line. Lines that begin with a quote that is never closed are lost one by one.
ImportTally ReadMovements(TableReader& table, const MovementReader& movements, ImportObserver& observer,
                          const std::function<void(const Movement&)>& take);

// What an import made.
struct ImportResult {
  ImportTally tally;
  int64_t issues = 0;
  int64_t receipts = 0;
  int64_t bills = 0;
  size_t products = 0;
  size_t periods = 0;
  bool is_written = false;
};

struct ImportPlan {
  ImportMapping mapping;
  Direction direction = Direction::Issue;
  DecimalMark decimal = DecimalMark::kPoint;
  std::string output;
};

// Imports a table into a new inventory. It is not written, and an existing one stays, if no line could be imported, if
// quotes have cost lines, or if the observer ended the reading.
ImportResult ImportTable(TableReader& table, ImportPlan& plan, ImportObserver& observer);

}  // namespace stockbook::app
