// SPDX-License-Identifier: MIT
#include "base/column_keys.h"
#include "base/scope_exit.h"
#include "control/stockbook.h"
#include "grid/bill_kinds.h"
#include "interaction/journal_caption.h"
#include "journal/blank_cells.h"
#include "journal/journal_rows.h"
#include "journal/query_builder.h"
#include "journal/restricted_amounts.h"
#include "journal/running_values.h"
#include "platform/grid_guards.h"

namespace stockbook::control {

namespace keys = base::keys;

// One load. TakeSteps is the order of its steps; what a step computes is in journal/ and grid/.
class Stockbook::JournalLoad {
 public:
  // Keys below 0 and an empty class code keep what is set.
  JournalLoad(Stockbook& control, int32_t key, int32_t second_key, std::string_view class_code)
      : control_(control), key_(key), second_key_(second_key), class_code_(class_code) {}

  // True when the journal was loaded; false when the host cancelled it or an error stopped it, be it the grid's, the
  // connection's or a listener's. The grid's tag and redraw are restored in any case. Rows loaded before an error stay;
  // if they were not computed yet, their stock cells are emptied and restricted amounts masked.
  bool Run() {
    return ToldOnError([&] {
      const auto redraw = platform::RedrawOff(grid_);
      const auto tag = platform::BusyTag(grid_, "Load");
      return ToldOnError([&] { return TakeSteps(); });
    });
  }

 private:
  // False when the host cancelled the load. Every event is raised here, in BuildStatement (10 and 20), by FormatGrid
  // (AfterFormatted) or in InsertTotalRows (40 to 100). A listener may do anything to the grid and the control.
  bool TakeSteps() {
    const bool cancelled = IsCancelled();
    if (!cancelled) {
      StoreArguments();
      ClearGrid();
      control_.RefreshCaption();
      Notify("正在读入：" + control_.Caption() + "...");  // reading
      Process(0);
      const std::string statement = BuildStatement();
      platform::Recordset rows = connection_->Execute(statement, platform::kExecuteUnspecified);
      control_.record_count_ = static_cast<int64_t>(rows.RecordCount());
      Process(30);
      rows_are_raw_ = !rows.AtEnd();
      journal::LayRows(std::move(rows), grid_, grid_);
      control_.FormatGrid();
      const journal::Totals opening = WriteOpeningRow();
      Process(35);
      Process(40);
      InsertTotalRows(ComputeRows(opening));
      control_.events_.AfterLoaded();
      if (ShowsNameParts()) control_.RefreshProductNames();
      control_.ReadRowHeightsBack();
    }
    Notify("已读入：" + control_.Caption());  // read
    control_.outline_col_key_ = keys::kBillNo;
    control_.ApplyBackPictures();
    Process(-1);
    return !cancelled;
  }

  bool IsCancelled() {
    bool cancel = false;
    control_.events_.CommandExecute("Load", cancel);
    return cancel;
  }

  void StoreArguments() {
    connection_ = control_.connection_;
    if (key_ >= 0) control_.SetKeyID(key_);
    if (second_key_ >= 0) control_.SetdpID(second_key_);
    if (!class_code_.empty()) control_.keys_.dpCode = class_code_;
    journal::Subjects(connection_.get(), type()).CompleteClassCode(control_.keys_);
    // Refused arguments leave the rows unchanged, and the hot one hot.
    control_.ForgetHotRow();
  }

  void ClearGrid() {
    grid_.SetRows(grid_.FixedRows());
    grid_.SetCols(grid_.FixedCols());
  }

  std::string BuildStatement() {
    const auto progress = [this](int indicator) { Process(indicator); };
    return journal::QueryBuilder(connection_.get(), type(), control_.keys_, progress).Build();
  }

  journal::Totals WriteOpeningRow() {
    const auto balance = journal::OpenOpeningBalance(connection_.get(), type(), control_.keys_);
    return journal::WriteOpeningRow(balance, type(), grid_);
  }

  // Computes and decorates all records; returns the contents of the total rows.
  std::vector<journal::PeriodTotals> ComputeRows(const journal::Totals& opening) {
    if (grid_.RecordCount() == 0) return {};
    grid::BillKinds(grid_, control_.pictures_, control_.images_, control_.img_mark_, control_.outline_col_key_)
        .DecorateRecords();
    std::vector<journal::PeriodTotals> periods = journal::ComputeRunningValues(opening, type(), grid_);
    journal::BlankZeroCells(grid_);
    if (control_.acc_restricted_) journal::MaskAmounts(grid_);
    rows_are_raw_ = false;
    return periods;
  }

  // Raises the progress of every record, and inserts the total row of a period after that of its last one.
  void InsertTotalRows(const std::vector<journal::PeriodTotals>& periods) {
    const size_t records = periods.empty() ? 0 : periods.back().end;
    for (const journal::PeriodTotals& period : periods) {
      for (size_t record = period.begin; record < period.end; ++record)
        Process(40 + static_cast<int>((record + 1) * 60 / records));
      journal::InsertTotalRow(period, static_cast<int>(control_.row_height_sum_), grid_, grid_);
    }
  }

  bool ShowsNameParts() const {
    const auto shown = [&](const char* key) { return !grid_.ColHidden(grid_.ColIndex(key)); };
    const bool shows_model = type() != base::MaterialJournal && shown(keys::kModel);
    return shows_model || shown(keys::kStandard) || shown(keys::kMeasure);
  }

  // The result of `work`, or false after an error of any kind, which is reported.
  template <typename Work>
  bool ToldOnError(Work work) {
    try {
      return work();
    } catch (const std::exception& error) {
      TellError(error.what());
    } catch (...) {
      TellError("读入时发生未知错误，读入已停止。");  // an unknown error
    }
    return false;
  }

  void TellError(const std::string& message) {
    // A grid or a listener that fails again changes nothing about how the load ends.
    const auto attempt = [](auto call) {
      try {
        call();
      } catch (...) {
      }
    };
    attempt([&] { HideUncomputed(); });
    attempt([&] { Notify(message); });
    attempt([&] { Process(-1); });
  }

  void HideUncomputed() {
    if (!rows_are_raw_) return;
    journal::EmptyRunningValues(grid_);
    if (control_.acc_restricted_) journal::MaskAmounts(grid_);
  }

  void Notify(const std::string& message) { control_.events_.Notify(message); }
  void Process(int indicator) { control_.events_.Process(static_cast<int16_t>(indicator)); }
  base::tqJournalTypeContants type() const { return control_.layout_.journal_type; }

  Stockbook& control_;
  platform::Grid& grid_ = control_.fg_;
  int32_t key_;
  int32_t second_key_;
  std::string class_code_;
  // The load stays with the connection it began with, whatever a listener sets meanwhile.
  std::shared_ptr<platform::Connection> connection_;
  bool rows_are_raw_ = false;  // the grid holds rows whose running values are not computed yet
};

void Stockbook::RefreshCaption() {
  const interaction::JournalCaption caption =
      interaction::ComposeCaption(connection_.get(), layout_.journal_type, keys_, subject_, layout_.titles);
  c1e_header_.picture = images_.Find(caption.picture_key);
  SetCaption(caption.text);
}

bool Stockbook::Load(int32_t rKeyID, int32_t rdpID, std::string_view rdpCode) {
  if (loading_) return false;
  loading_ = true;
  const base::ScopeExit loaded([this] { loading_ = false; });
  return JournalLoad(*this, rKeyID, rdpID, rdpCode).Run();
}

}  // namespace stockbook::control
