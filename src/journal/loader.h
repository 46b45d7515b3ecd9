// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "base/journal_type.h"
#include "journal/opening_balance.h"
#include "journal/running_balance.h"
#include "journal/subject_keys.h"
#include "platform/grid.h"

namespace stockbook::journal {

// What a load asks of the control around it. Nothing in it reports errors but by throwing.
class LoadSteps {
 public:
  virtual ~LoadSteps() = default;
  // Raises the command "Load"; true when the host cancelled it.
  virtual bool IsCancelled() = 0;
  virtual void StoreArguments() = 0;
  virtual void RefreshCaption() = 0;
  virtual std::string Caption() const = 0;
  virtual void Prompt(const std::string& message) = 0;
  virtual void Process(int indicator) = 0;
  virtual platform::Connection* Connection() const = 0;
  virtual base::tqJournalTypeContants JournalType() const = 0;
  virtual SubjectKeys Keys() const = 0;
  virtual void StoreRecordCount(size_t count) = 0;
  // The default layout and formats.
  virtual void ApplyLayout() = 0;
  virtual bool IsAccRestricted() const = 0;
  // Pictures of every record.
  virtual void DecorateRecords() = 0;
  // Height of a total row in twips.
  virtual int SumRowHeight() const = 0;
  // After the last row: the event, product names, heights read back.
  virtual void FinishRows() = 0;
  // Outline column and background pictures, loaded or cancelled.
  virtual void CloseLoad() = 0;
};

// Loads a journal into the grid: runs the statement, takes the result's columns over, groups them by period, puts the
// opening row in front, computes the running values and the total rows, and tells the host how far it is. It owns the
// order of these steps and the arithmetic. Cost: one pass over the columns it computes with; rows inserted for periods
// cost nothing to the others.
class Loader {
 public:
  Loader(platform::Grid& grid, LoadSteps& steps) : grid_(grid), steps_(steps) {}

  // True when the journal was loaded; false when it was cancelled or an error stopped it, be it the grid's, the
  // connection's or a listener's. It throws nothing; tag and redraw come back as they were in any case. Rows that were
  // loaded before an error stay; their stock cells are empty until they are computed, and restricted amounts are hidden
  // all the same.
  bool Load();

 private:
  struct PeriodRun {
    size_t begin = 0;  // records [begin, end)
    size_t end = 0;
    std::string period;
  };

  struct PeriodTotals {
    PeriodRun run;
    MovementSums in_period;
    MovementSums in_all;
  };

  bool LoadMarked();
  bool LoadUnguarded();
  void TellError(const std::string& message);
  void ClearGrid();
  void FillGrid();
  void WriteOpeningRow();
  void WriteOpeningValues(int row, const platform::Recordset& balance);
  std::vector<PeriodRun> FindPeriods() const;
  void ComputeRows();
  std::vector<PeriodTotals> RunBalance();
  void InsertTotalRow(const PeriodTotals& period);
  void BlankZeroCells();
  void MaskAmounts();
  void HideUncomputed(bool mask_amounts) noexcept;
  void SetText(int row, std::string_view key, std::string_view text);
  int Column(std::string_view key) const { return grid_.ColIndex(key); }

  platform::Grid& grid_;
  LoadSteps& steps_;
  Totals opening_;
  bool rows_are_raw_ = false;  // the grid holds rows whose running values are not computed yet
};

}  // namespace stockbook::journal
