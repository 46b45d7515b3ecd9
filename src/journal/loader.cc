// SPDX-License-Identifier: MIT
#include "journal/loader.h"

#include <algorithm>

#include "base/column_keys.h"
#include "base/number.h"
#include "base/text.h"
#include "journal/blank_cells.h"
#include "journal/query_builder.h"
#include "journal/running_pass.h"
#include "platform/error.h"
#include "platform/grid_guards.h"

namespace stockbook::journal {
namespace {

namespace keys = base::keys;

constexpr const char* kOpeningWord = "期初";
constexpr const char* kTotalWord = "合计";
constexpr const char* kMask = "-";

// "2004-03" gives 2004年03月 and the word behind it.
std::string PeriodCaption(std::string_view period, const char* word) {
  return std::string(base::LeftCharacters(period, 4)) + "年" + std::string(base::RightCharacters(period, 2)) + "月" +
         word;
}

base::Value NumberOrZero(const base::Value& value) { return value.Number() ? value : base::Value(int64_t{0}); }

base::Money MoneyOrZero(const base::Value& value) {
  if (const auto money = value.AsMoney()) return *money;
  if (value.Number()) base::Money::ThrowOverflow();
  return {};
}

MovementSource SourceOf(const platform::Grid& grid, const char* quantity, const char* quantity2, const char* amount) {
  const auto loaded = [&](const char* key) { return grid.LoadedText(grid.ColIndex(key)); };
  return {loaded(quantity), loaded(quantity2), loaded(amount)};
}

}  // namespace

bool Loader::Load() {
  try {
    const platform::RedrawOff redraw(grid_);
    const platform::BusyTag tag(grid_, "Load");
    return LoadMarked();
  } catch (const std::exception& error) {
    TellError(error.what());
    return false;
  }
}

bool Loader::LoadMarked() {
  try {
    return LoadUnguarded();
  } catch (const std::exception& error) {
    TellError(error.what());
  } catch (...) {
    TellError("读入时发生未知错误，读入已停止。");
  }
  return false;
}

void Loader::TellError(const std::string& message) {
  HideUncomputed(steps_.IsAccRestricted());
  // A listener that fails again changes nothing about how the load ends.
  const auto tell = [](auto call) {
    try {
      call();
    } catch (...) {
    }
  };
  tell([&] { steps_.Prompt(message); });
  tell([&] { steps_.Process(-1); });
}

bool Loader::LoadUnguarded() {
  const bool cancelled = steps_.IsCancelled();
  if (!cancelled) {
    steps_.StoreArguments();
    ClearGrid();
    steps_.RefreshCaption();
    steps_.Prompt("正在读入：" + steps_.Caption() + "...");
    steps_.Process(0);
    FillGrid();
    steps_.ApplyLayout();
    WriteOpeningRow();
    steps_.Process(35);
    steps_.Process(40);
    ComputeRows();
    steps_.FinishRows();
  }
  steps_.Prompt("已读入：" + steps_.Caption());
  steps_.CloseLoad();
  steps_.Process(-1);
  return !cancelled;
}

void Loader::ClearGrid() {
  grid_.SetRows(grid_.FixedRows());
  grid_.SetCols(grid_.FixedCols());
}

void Loader::FillGrid() {
  const QueryBuilder builder(steps_.Connection(), steps_.JournalType(), steps_.Keys(),
                             [this](int at) { steps_.Process(at); });
  const std::string statement = builder.Build();
  platform::Recordset journal = steps_.Connection()->Execute(statement, platform::kExecuteUnspecified);
  steps_.StoreRecordCount(journal.RecordCount());
  steps_.Process(30);
  if (journal.AtEnd()) return;
  std::vector<platform::Field> fields = journal.TakeAll();
  std::vector<columns::Column> columns;
  columns.reserve(fields.size());
  for (platform::Field& field : fields) columns.push_back(std::move(field.column));
  const int first_column = grid_.FixedCols();
  rows_are_raw_ = true;
  grid_.LoadColumns(std::move(columns), first_column);
  for (size_t index = 0; index < fields.size(); ++index) {
    grid_.SetColKey(first_column + static_cast<int>(index), fields[index].name);
  }
  grid_.GroupBy(Column(keys::kPeriod), Column(keys::kBillNo), "%s");
}

void Loader::SetText(int row, std::string_view key, std::string_view text) {
  grid_.SetTextMatrix(row, Column(key), text);
}

void Loader::WriteOpeningRow() {
  opening_ = Totals();
  const OpeningBalance balance = OpenOpeningBalance(steps_.Connection(), steps_.JournalType(), steps_.Keys());
  // A balance that could not be read shows no row rather than a zero that nobody counted.
  if (!balance.result) return;
  const int row = grid_.FixedRows();
  grid_.AddItem("", row);
  if (!balance.result->AtEnd()) {
    WriteOpeningValues(row, *balance.result);
    return;
  }
  // Nothing was ever carried forward: the journal opens with zero.
  SetText(row, keys::kPeriod, balance.first_period);
  SetText(row, keys::kBillNo, PeriodCaption(balance.first_period, kOpeningWord));
  for (const char* key : keys::kRunning) SetText(row, key, "0");
}

void Loader::WriteOpeningValues(int row, const platform::Recordset& balance) {
  const char* quantity = "LastQty";
  const char* quantity2 = "LastQty2";
  const char* amount = "LastAcc";
  if (steps_.JournalType() == base::SupplierJournal) {
    quantity = keys::kRevQty, quantity2 = keys::kRevQty2, amount = keys::kRevAcc;
  } else if (steps_.JournalType() == base::CustomerJournal) {
    quantity = keys::kIssQty, quantity2 = keys::kIssQty2, amount = keys::kIssAcc;
  }
  const std::string period = balance.FieldValue("Period").Text();
  const base::Value opening_quantity = NumberOrZero(balance.FieldValue(quantity));
  const base::Value opening_quantity2 = NumberOrZero(balance.FieldValue(quantity2));
  opening_ = {*opening_quantity.Number(), *opening_quantity2.Number(), MoneyOrZero(balance.FieldValue(amount))};
  SetText(row, keys::kPeriod, period);
  SetText(row, keys::kBillNo, PeriodCaption(period, kOpeningWord));
  SetText(row, keys::kStoQty, base::NumberText(opening_.quantity));
  SetText(row, keys::kStoQty2, base::NumberText(opening_.quantity2));
  SetText(row, keys::kStoAcc, opening_.amount.Text());
  const double price = base::SafeDivide(opening_.amount.ToDouble(), opening_.quantity);
  SetText(row, keys::kStoPrice, base::NumberText(price));
  grid_.SetCellData(row, Column(keys::kStoAcc), base::Value(opening_.amount));
  grid_.SetCellData(row, Column(keys::kStoPrice), base::Value(price));
}

std::vector<Loader::PeriodRun> Loader::FindPeriods() const {
  std::vector<PeriodRun> runs;
  const columns::Column* periods = grid_.LoadedText(Column(keys::kPeriod));
  const size_t records = grid_.RecordCount();
  if (periods == nullptr || !periods->HasTextCodes()) {
    for (size_t record = 0; record < records; ++record) {
      std::string period = periods == nullptr ? std::string() : periods->Text(record);
      if (runs.empty() || runs.back().period != period) runs.push_back({record, record, std::move(period)});
      runs.back().end = record + 1;
    }
    return runs;
  }
  std::vector<uint32_t> codes(records);
  periods->ReadTextCodes(0, codes);
  for (size_t record = 0; record < records;) {
    const auto end = std::find_if(codes.begin() + static_cast<std::ptrdiff_t>(record), codes.end(),
                                  [&](uint32_t code) { return code != codes[record]; });
    const auto next = static_cast<size_t>(end - codes.begin());
    runs.push_back({record, next, periods->Text(record)});
    record = next;
  }
  return runs;
}

void Loader::ComputeRows() {
  const size_t records = grid_.RecordCount();
  if (records == 0) return;
  steps_.DecorateRecords();
  const std::vector<PeriodTotals> periods = RunBalance();
  BlankZeroCells();
  if (steps_.IsAccRestricted()) MaskAmounts();
  rows_are_raw_ = false;
  // Nothing of the grid is held while listeners run: they may do anything to it.
  for (const PeriodTotals& period : periods) {
    for (size_t record = period.run.begin; record < period.run.end; ++record) {
      steps_.Process(40 + static_cast<int>((record + 1) * 60 / records));
    }
    InsertTotalRow(period);
  }
}

std::vector<Loader::PeriodTotals> Loader::RunBalance() {
  RunningBalance balance(BalanceKindOf(steps_.JournalType()), opening_);
  RunningPass pass(balance, SourceOf(grid_, keys::kQuantity, keys::kQuantity2, keys::kAccount),
                   SourceOf(grid_, keys::kRevQty, keys::kRevQty2, keys::kRevAcc),
                   SourceOf(grid_, keys::kIssQty, keys::kIssQty2, keys::kIssAcc));
  RunningBuilder running;
  std::vector<PeriodTotals> periods;
  for (PeriodRun& run : FindPeriods()) {
    balance.StartPeriod();
    pass.Run(run.begin, run.end, running);
    periods.push_back({std::move(run), balance.Period(), balance.Cumulative()});
  }
  grid_.ReplaceLoaded(Column(keys::kStoQty), running.quantity.Finish());
  grid_.ReplaceLoaded(Column(keys::kStoQty2), running.quantity2.Finish());
  grid_.ReplaceLoaded(Column(keys::kStoAcc), running.amount.Finish());
  grid_.ReplaceLoaded(Column(keys::kStoPrice), running.price.Finish());
  return periods;
}

void Loader::InsertTotalRow(const PeriodTotals& period) {
  const int last = grid_.RowOfRecord(period.run.end - 1);
  if (last < 0) {
    throw platform::Error("insert total row",
                          "读入期间表格的行被删除，读入已停止：请勿在读入的事件中增删表格的行，再重新读入。");
  }
  const int row = last + 1;
  grid_.AddItem("", row);
  grid_.SetIsSubtotal(row, true);
  grid_.SetRowOutlineLevel(row, 0);
  grid_.SetRowHeight(row, steps_.SumRowHeight());
  SetText(row, keys::kBillNo, PeriodCaption(period.run.period, kTotalWord));
  const auto write = [&](const char* key, const base::Value& in_period, const base::Value& in_all) {
    const int column = Column(key);
    grid_.SetTextMatrix(row, column, grid_.FormatValue(column, in_period) + "\n" + grid_.FormatValue(column, in_all));
  };
  const auto write_totals = [&](const char* quantity, const char* quantity2, const char* amount,
                                const Totals& in_period, const Totals& in_all) {
    write(quantity, base::Value(in_period.quantity), base::Value(in_all.quantity));
    write(quantity2, base::Value(in_period.quantity2), base::Value(in_all.quantity2));
    write(amount, base::Value(in_period.amount), base::Value(in_all.amount));
  };
  write_totals(keys::kQuantity, keys::kQuantity2, keys::kAccount, period.in_period.movement, period.in_all.movement);
  write_totals(keys::kRevQty, keys::kRevQty2, keys::kRevAcc, period.in_period.receipts, period.in_all.receipts);
  write_totals(keys::kIssQty, keys::kIssQty2, keys::kIssAcc, period.in_period.issues, period.in_all.issues);
}

void Loader::BlankZeroCells() {
  const columns::Column* flags = grid_.LoadedText(Column(keys::kFlag));
  const auto blank = [&](const char* key, auto without) {
    const columns::Column* column = grid_.LoadedText(Column(key));
    if (column == nullptr) return;
    if (auto blanked = without(*column)) grid_.ReplaceLoadedText(Column(key), std::move(*blanked));
  };
  const auto of_flag = [flags](double flag) {
    return [flags, flag](const columns::Column& column) { return WithoutZerosOf(column, flags, flag); };
  };
  for (const char* key : {keys::kRevQty, keys::kRevAcc}) blank(key, of_flag(0));
  for (const char* key : {keys::kIssQty, keys::kIssAcc}) blank(key, of_flag(1));
  for (const char* key : {keys::kInputDate, keys::kAuditDate, keys::kField6}) blank(key, WithoutZeroDates);
}

void Loader::MaskAmounts() {
  for (const char* key : keys::kRestricted) {
    grid_.ReplaceLoadedText(Column(key),
                            columns::Column::Constant(base::Value(std::string(kMask)), grid_.RecordCount()));
  }
}

// The statement delivers each line's own movement in the stock columns; left standing, it would read as the stock.
void Loader::HideUncomputed(bool mask_amounts) noexcept {
  if (!rows_are_raw_) return;
  rows_are_raw_ = false;
  try {
    for (const char* key : keys::kRunning) {
      if (Column(key) >= 0)
        grid_.ReplaceLoaded(Column(key), columns::Column::Constant(base::Value(), grid_.RecordCount()));
    }
    if (mask_amounts) MaskAmounts();
  } catch (...) {
    // The error that stopped the load is the one to tell.
  }
}

}  // namespace stockbook::journal
