// SPDX-License-Identifier: MIT
#include <algorithm>
#include <utility>

#include "control/control_state.h"
#include "grid/bill_kinds.h"
#include "interaction/journal_caption.h"
#include "journal/blank_cells.h"
#include "journal/error_text.h"
#include "journal/infinite_quantities.h"
#include "journal/inventory.h"
#include "journal/journal_rows.h"
#include "journal/needed_fields.h"
#include "journal/query_builder.h"
#include "journal/restricted_amounts.h"
#include "journal/running_values.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/base/scope_exit.h"
#include "stockbook/platform/grid_guards.h"

namespace stockbook::control {

namespace keys = base::keys;

// One load. TakeSteps is the order of its steps; what a step computes is in journal/ and grid/.
class Stockbook::State::JournalLoad {
 public:
  // Keys below 0 keep what is set.
  JournalLoad(State& state, int32_t key, int32_t second_key) : state_(state), key_(key), second_key_(second_key) {}

  // True when the journal was loaded; false when the host cancelled it or an error stopped it, be it the grid's, the
  // connection's or a listener's. The grid's tag and redraw are restored in any case. Rows loaded before an error stay;
  // if they were not computed yet, their stock cells are emptied and restricted amounts masked. Where only a statement
  // failed that the journal can do without, the load goes on, and says so at its end. An empty class code keeps what is
  // set.
  bool Run(std::string_view class_code) {
    return ToldOnError([&] {
      class_code_ = class_code;
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
      const journal::Totals opening = ReadJournal();
      Process(35);
      Process(40);
      const std::vector<journal::PeriodTotals> periods = ComputeRows(opening);
      AddProblem(journal::DescribeInfiniteQuantity(opening, periods, grid_));
      InsertTotalRows(periods);
      state_.events.AfterLoaded();
      if (ShowsNameParts()) state_.RefreshProductNames();
      state_.ReadRowHeightsBack();
    }
    Notify("已读入：" + state_.control.Caption());  // read
    state_.outline_col_key = keys::kBillNo;
    state_.ApplyBackPictures();
    TellProblems();
    Process(-1);
    return !cancelled;
  }

  bool IsCancelled() {
    bool cancel = false;
    state_.events.CommandExecute("Load", cancel);
    return cancel;
  }

  // Fills the grid with the rows and the opening row, and returns what the journal opens with. All statements see the
  // database as of one moment, which begins before anything is changed: a database that is busy leaves the control as
  // it was. It ends before the many events of the rows, so that no writer waits for a host.
  journal::Totals ReadJournal() {
    connection_ = state_.connection;
    const auto moment = Inventory().OneMoment();
    PrepareHeader();
    ClearGrid();
    state_.ShowCaption(caption_);
    Notify("正在读入：" + state_.control.Caption() + "...");  // reading
    Process(0);
    const std::string statement = BuildStatement();
    platform::Recordset rows = connection_->Execute(statement, platform::kExecuteUnspecified);
    AddProblem(journal::CheckNeededFields(rows, type(), {state_.layout.allow_qty2, state_.layout.allow_inv}));
    AddRemarks(rows);
    state_.record_count = static_cast<int64_t>(rows.RecordCount());
    Process(30);
    rows_are_raw_ = !rows.AtEnd();
    journal::LayRows(std::move(rows), grid_, grid_);
    state_.FormatGrid();
    const auto balance = journal::OpenOpeningBalance(Inventory(), type(), state_.keys);
    if (balance.result) AddRemarks(*balance.result);
    return journal::WriteOpeningRow(balance, type(), grid_);
  }

  // Looks up what the header says and stores it with the keys: all of it, or nothing if a look-up fails.
  void PrepareHeader() {
    journal::SubjectKeys new_keys = state_.keys;
    journal::SubjectTexts new_subject = state_.subject;
    const journal::Subjects subjects(Inventory(), type());
    if (second_key_ >= 0) new_keys.dpID = NarrowedKey(second_key_);
    if (key_ >= 0) {
      new_keys.KeyID = key_;
      new_subject = subjects.Read(key_, state_.SecondUnit());
    }
    if (!class_code_.empty()) new_keys.dpCode = class_code_;
    subjects.CompleteClassCode(new_keys);
    caption_ = interaction::ComposeCaption(Inventory(), type(), new_keys, new_subject, state_.layout.titles);
    state_.keys = std::move(new_keys);
    state_.subject = std::move(new_subject);
    // Refused arguments leave the rows unchanged, and the hot one hot.
    state_.ForgetHotRow();
  }

  void ClearGrid() {
    grid_.SetRows(grid_.FixedRows());
    grid_.SetCols(grid_.FixedCols());
  }

  std::string BuildStatement() {
    const auto progress = [this](int indicator) { Process(indicator); };
    return journal::QueryBuilder(Inventory(), type(), state_.keys, progress).Build();
  }

  // Computes and decorates all records; returns the contents of the total rows.
  std::vector<journal::PeriodTotals> ComputeRows(const journal::Totals& opening) {
    if (grid_.RecordCount() == 0) return {};
    grid::BillKinds(grid_, state_.pictures, state_.images, state_.img_mark, state_.outline_col_key).DecorateRecords();
    std::vector<journal::PeriodTotals> periods = journal::ComputeRunningValues(opening, type(), grid_);
    journal::BlankZeroCells(grid_);
    if (state_.acc_restricted) journal::MaskAmounts(grid_);
    rows_are_raw_ = false;
    return periods;
  }

  // Raises the progress of every record, and inserts the total row of a period after that of its last one.
  void InsertTotalRows(const std::vector<journal::PeriodTotals>& periods) {
    const size_t records = periods.empty() ? 0 : periods.back().end;
    for (const journal::PeriodTotals& period : periods) {
      for (size_t record = period.begin; record < period.end; ++record)
        Process(40 + static_cast<int>((record + 1) * 60 / records));
      journal::InsertTotalRow(period, static_cast<int>(state_.row_height_sum), grid_, grid_);
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
    } catch (...) {
      std::string room;
      TellError(journal::TextOfError("读入时发生未知错误，读入已停止。", room));
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
    attempt([&] { TellProblems(); });
    attempt([&] { Notify(message); });
    attempt([&] { Process(-1); });
  }

  void HideUncomputed() {
    if (!rows_are_raw_) return;
    journal::EmptyRunningValues(grid_);
    if (state_.acc_restricted) journal::MaskAmounts(grid_);
  }

  // The database, and whoever hears at the end of the load what could not be read.
  journal::Inventory Inventory() {
    return {connection_.get(), [this](const std::string& problem) { AddProblem(problem); }};
  }

  // A statement that is run twice fails twice.
  void AddProblem(const std::string& problem) {
    if (problem.empty() || std::find(problems_.begin(), problems_.end(), problem) != problems_.end()) return;
    problems_.push_back(problem);
  }

  // What the connection left out of the rows.
  void AddRemarks(const platform::Recordset& rows) {
    for (const std::string& remark : rows.Remarks()) AddProblem(remark);
  }

  void TellProblems() {
    for (const std::string& problem : std::exchange(problems_, {})) Notify(problem);
  }

  void Notify(const std::string& message) { state_.events.Notify(message); }
  void Process(int indicator) { state_.events.Process(static_cast<int16_t>(indicator)); }
  base::tqJournalTypeContants type() const { return state_.layout.journal_type; }

  State& state_;
  platform::Grid& grid_ = state_.fg;
  int32_t key_;
  int32_t second_key_;
  std::string class_code_;
  // The load stays with the connection it began with, whatever a listener sets meanwhile.
  std::shared_ptr<platform::Connection> connection_;
  interaction::JournalCaption caption_;
  std::vector<std::string> problems_;
  bool rows_are_raw_ = false;  // the grid holds rows whose running values are not computed yet
};

void Stockbook::State::ShowCaption(const interaction::JournalCaption& caption) {
  c1e_header.picture = images.Find(caption.picture_key);
  control.SetCaption(caption.text);
}

bool Stockbook::Load(int32_t rKeyID, int32_t rdpID, std::string_view rdpCode) {
  if (state_->loading) return false;
  const State::Watched journal(*state_);
  state_->loading = true;
  const base::ScopeExit loaded([this] { state_->loading = false; });
  return State::JournalLoad(*state_, rKeyID, rdpID).Run(rdpCode);
}

}  // namespace stockbook::control
