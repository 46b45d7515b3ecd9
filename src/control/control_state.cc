// SPDX-License-Identifier: MIT
#include "control/control_state.h"

#include "grid/column_layout.h"
#include "grid/product_names.h"
#include "grid/row_heights.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/control/row_fields.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/grid_guards.h"

namespace stockbook::control {

namespace keys = base::keys;

Stockbook::State::State(Stockbook& of, const Surroundings& surroundings)
    : control(of),
      fg(surroundings.fg),
      fg1(surroundings.fg1),
      text_metrics(surroundings.text_metrics),
      images(surroundings.images),
      menu(surroundings.menu),
      clipboard(surroundings.clipboard),
      site(surroundings.site) {}

Stockbook::State::Watched::Watched(State& state) : state_(state) {
  ++state.watched;
  if (state.watched > 1) return;
  try {
    before_.emplace(state.JournalValues());
  } catch (const std::bad_alloc&) {
    // What was before is not known, so that news is raised in any case; the call goes on with the memory there is.
  }
}

Stockbook::State::Watched::~Watched() {
  if (--state_.watched > 0 || (before_ && *before_ == state_.JournalValues())) return;
  try {
    state_.site.JournalChanged();
  } catch (...) {
    // The scope may be ending for an error that matters more.
  }
}

int16_t Stockbook::State::NarrowedKey(int32_t id) {
  if (id < INT16_MIN || id > INT16_MAX) {
    throw platform::Error("set dpID", "溢出：dpID 必须在 -32768 与 32767 之间，收到的是 " + std::to_string(id) + "。",
                          6);
  }
  return static_cast<int16_t>(id);
}

journal::Tell Stockbook::State::Teller() {
  return [this](const std::string& message) { events.Notify(message); };
}

journal::SecondUnit Stockbook::State::SecondUnit() const {
  return layout.allow_qty2 ? journal::SecondUnit::kShown : journal::SecondUnit::kHidden;
}

void Stockbook::State::FormatGrid() {
  const Watched journal(*this);
  {
    const auto tag = platform::BusyTag(fg, "Format");
    const auto pointer = platform::PointerKept(fg);
    const auto redraw = platform::RedrawOff(fg);
    outline_col_key = keys::kBillNo;
    grid::ColumnLayout(fg, layout, hidden_keys).FormatColumns(outline_col_key);
    SizeRows();
  }
  events.AfterFormatted();
}

void Stockbook::State::SizeRows() {
  const int sum = grid::SizeRows(fg, text_metrics, fg.GridFont()).sum;
  title_as_laid_out = fg.RowHeight(0);
  data_as_laid_out = sum / 2;
  control.SetRowHeightSum(static_cast<float>(sum));
}

void Stockbook::State::RefreshProductNames() { grid::RefreshProductNames(fg, fg); }

void Stockbook::State::ReadRowHeightsBack() {
  const grid::RowSizes sizes = grid::ReadRowSizes(fg);
  row_height_title = static_cast<float>(sizes.title);
  row_height = static_cast<float>(sizes.data);
  row_height_sum = static_cast<float>(sizes.sum);
}

void Stockbook::State::ApplyBackPictures() {
  constexpr auto kFill = platform::PictureAlignment::kStretch;
  fg.SetCellPicture({0, 1, 1, fg.Cols()}, pictures.title_back, kFill);
  fg.SetCellPicture({1, 0, fg.Rows(), 1}, pictures.mark_back, kFill);
}

// How the control responds to what the user does to its grid.
void Stockbook::State::WatchGrid() {
  handlers = std::make_unique<interaction::GridHandlers>(interaction::HandlerContext{
      .grid = fg,
      .menu = menu,
      .clipboard = clipboard,
      .text_metrics = text_metrics,
      .events = events,
      .record_count = record_count,
      .outline_key = outline_col_key,
      .hidden_keys = hidden_keys,
      .back_color_hot = back_color_hot,
      .fore_color_hot = fore_color_hot,
      .ids_of =
          [this](int row) {
            return interaction::RowIds{control.BillID(row), control.Fields().Get(fields::RecID, row)};
          },
      .describe = [this](int row) { return DescribeSource(row); },
      .apply_layout = [this] { FormatGrid(); },
      .store_row_height = [this](interaction::ResizedRow kind, int twips) { StoreRowHeight(kind, twips); },
  });
  fg.SetObserver(handlers.get());
}

std::string Stockbook::State::DescribeSource(int row) const {
  // In place of the description: a second message would wipe out the first.
  std::string problem;
  const RowFields fields(fg, connection.get(), AmountTexts::kShown,
                         [&](const std::string& message) { problem = message; });
  std::string source = fields.IssueSource(row);
  return problem.empty() ? source : problem;
}

void Stockbook::State::StoreRowHeight(interaction::ResizedRow kind, int twips) {
  const auto height = static_cast<float>(twips);
  switch (kind) {
    case interaction::ResizedRow::kCaption:
      control.SetRowHeightTitle(height);
      break;
    case interaction::ResizedRow::kNode:
      control.SetRowHeightSum(height);
      break;
    case interaction::ResizedRow::kLine:
      control.SetRowHeight(height);
      break;
  }
}

}  // namespace stockbook::control
