// SPDX-License-Identifier: MIT
#include "stockbook/control/stockbook.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "base/number.h"
#include "base/text.h"
#include "control/control_state.h"
#include "control/neutral.h"
#include "grid/product_names.h"
#include "grid/row_heights.h"
#include "grid/statistics.h"
#include "interaction/find/find.h"
#include "journal/periods.h"
#include "journal/vocabulary.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/control/row_fields.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/grid_guards.h"

namespace stockbook::control {
namespace {

namespace keys = base::keys;

constexpr const char* kNumericFont = "Arial";

// A fixed row for the captions and a fixed column for the row marks.
void StartUp(platform::GridTable& grid) {
  grid.SetRows(1);
  grid.SetFixedRows(1);
  grid.SetCols(1);
  grid.SetFixedCols(1);
}

// Moves the top row down by as many rows as the row lies below the view, so that the row becomes the last one in view.
// If there are rows of different heights or folded ones in between, bisection finds the first top row that shows it.
void MakeLastVisible(platform::Grid& grid, int row) {
  grid.SetTopRow(std::min(grid.TopRow() + row - grid.BottomRow(), row));
  if (grid.BottomRow() == row) return;
  const auto redraw = platform::RedrawOff(grid);
  int first = grid.FixedRows();
  int last = row;
  while (first < last) {
    const int middle = first + (last - first) / 2;
    grid.SetTopRow(middle);
    if (grid.BottomRow() < row)
      first = middle + 1;
    else
      last = middle;
  }
  grid.SetTopRow(first);
}

// A height as the grid accepts it, without its fraction.
int WholeTwips(float twips) {
  constexpr float kMost = 1 << 24;
  return static_cast<int>(std::clamp(twips, -kMost, kMost));
}

// The height to store for the property. What is no number is no height, and differs from itself for ever; below 0 the
// grid takes none.
float Height(const char* property, float twips) {
  if (twips < 0) {
    throw platform::Error(std::string("set ") + property,
                          std::string("高度不能是负数：") + property + " 收到的是 " +
                              base::NumberText(static_cast<double>(twips)) +
                              "，原来的高度没有改变。请给出 0 或更大的缇数（1440 缇为 1 英寸）。");
  }
  return std::isnan(twips) ? 0 : twips;
}

}  // namespace

Stockbook::Stockbook(const Surroundings& surroundings) : state_(std::make_unique<State>(*this, surroundings)) {
  state_->fg1.SetRows(state_->fg1.FixedRows());
  StartUp(state_->fg);
  state_->fore_color_hot = state_->fg.ColourOf(platform::GridColour::kForeColor);
  state_->img_mark = state_->images.Find("Mark");
  state_->c1e_header.picture = state_->images.Find(journal::WordsOf(state_->layout.journal_type).journal_picture);
  state_->WatchGrid();
  state_->FormatGrid();
}

Stockbook::~Stockbook() { state_->fg.SetObserver(nullptr); }

void Stockbook::SetJournalType(tqJournalTypeContants type) {
  const State::Watched journal(*state_);
  state_->layout.journal_type = type;
  state_->c1e_header.picture = state_->images.Find(journal::WordsOf(type).journal_picture);
  state_->FormatGrid();
  state_->site.FrameChanged();
}

std::string Stockbook::FmtName() const {
  return std::string(journal::WordsOf(state_->layout.journal_type).format_name);
}

namespace {

// Takes keys off the hidden-key list, or puts them on it and hides the columns that the layout would hide.
void AllowColumns(platform::GridColumns& grid, grid::HiddenKeys& hidden_keys, bool allow,
                  std::span<const char* const> keys, std::span<const char* const> hidden_at_once) {
  for (const char* key : keys) {
    if (allow)
      hidden_keys.ShowKey(key);
    else
      hidden_keys.HideKey(key);
  }
  if (allow) return;
  for (const char* key : hidden_at_once) {
    if (const int column = grid.ColIndex(key); column >= 0) grid.SetColHidden(column, true);
  }
}

}  // namespace

void Stockbook::SetAllowQty2(bool allow) {
  const State::Watched journal(*state_);
  state_->layout.allow_qty2 = allow;
  // The key of the statement's own second quantity goes on the list too; no layout has a column of it.
  static constexpr const char* kListed[] = {keys::kQuantity2, keys::kQty2, keys::kRevQty2, keys::kIssQty2,
                                            keys::kStoQty2};
  AllowColumns(state_->fg, state_->hidden_keys, allow, kListed, keys::kSecondUnit);
}

void Stockbook::SetAllowInv(bool allow) {
  const State::Watched journal(*state_);
  state_->layout.allow_inv = allow;
  AllowColumns(state_->fg, state_->hidden_keys, allow, keys::kTaxes, keys::kTaxes);
}

void Stockbook::SetdpID(int32_t id) {
  const State::Watched journal(*state_);
  state_->keys.dpID = State::NarrowedKey(id);
}

std::string Stockbook::AccPeriod() const {
  return OrNeutral(state_->Teller(), [&] { return journal::NewestAccPeriod(state_->connection.get()); });
}

std::string Stockbook::DepotName() const {
  return OrNeutral(state_->Teller(), [&] {
    return journal::Subjects(state_->connection.get(), state_->layout.journal_type).DepotName(state_->keys);
  });
}

void Stockbook::SetKeyID(int32_t id) {
  const State::Watched journal(*state_);
  state_->keys.KeyID = id;
  state_->subject = OrNeutral(state_->Teller(), [&] {
    return journal::Subjects(state_->connection.get(), state_->layout.journal_type).Read(id, state_->SecondUnit());
  });
}

void Stockbook::SetCaption(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->c1e_header.caption = std::string(base::TrimBlanks(caption)) + "   ";
  state_->site.FrameChanged();
}

std::string Stockbook::Caption() const { return std::string(base::TrimBlanks(state_->c1e_header.caption)); }

void Stockbook::SetAccRestrict(std::string_view text) {
  const State::Watched journal(*state_);
  const auto number = base::ParseNumber(text);
  const bool is_true = base::EqualsIgnoringCase(base::TrimBlanks(text), "true");
  if (!number && !is_true && !base::EqualsIgnoringCase(base::TrimBlanks(text), "false")) {
    throw platform::Error("set AccRestrict",
                          "类型不匹配：AccRestrict 须为 True、False 或数字，收到的是“" + std::string(text) + "”。", 13);
  }
  state_->acc_restrict_text = text;
  state_->acc_restricted = number ? *number != 0 : is_true;
}

RowFields Stockbook::Fields() const {
  return {state_->fg, state_->connection.get(), state_->acc_restricted ? AmountTexts::kMasked : AmountTexts::kShown,
          state_->Teller()};
}

std::shared_ptr<const void> Stockbook::SetHotRowAside() {
  struct Aside {
    explicit Aside(interaction::HotRow& row) : guard(row.SetAside()) {}
    const decltype(std::declval<interaction::HotRow&>().SetAside()) guard;
  };
  return std::make_shared<const Aside>(state_->handlers->hot_row());
}

int32_t Stockbook::BillID(int32_t row) const { return Fields().Get(fields::BillID, row); }

std::string Stockbook::BillName(int32_t row) const { return Fields().Get(fields::BillName, row); }

int16_t Stockbook::Flag(int32_t row) const { return Fields().Get(fields::Flag, row); }

std::string Stockbook::FlagName() const { return Flag(-1) == 0 ? "入库" : "出库"; }

void Stockbook::SetRow(int32_t row) {
  if (row < state_->fg.FixedRows() || row >= state_->fg.Rows() || state_->fg.Cols() <= state_->fg.FixedCols()) return;
  state_->fg.Select(row, state_->fg.Col() < 0 ? state_->fg.FixedCols() : state_->fg.Col());
  // A listener may have loaded fewer rows.
  if (row >= state_->fg.Rows()) return;
  if (state_->fg.RowHidden(row)) state_->fg.SetRowHidden(row, false);
  if (state_->fg.RowIsVisible(row)) return;
  if (row < state_->fg.TopRow()) {
    state_->fg.SetTopRow(row);
  } else if (row > state_->fg.BottomRow()) {
    MakeLastVisible(state_->fg, row);
  }
}

void Stockbook::SetRowHeight(float twips) {
  const State::Watched journal(*state_);
  state_->row_height = Height("RowHeight", twips);
  state_->fg.SetRowHeight(-1, WholeTwips(state_->row_height));
  state_->fg.SetRowHeight(0, WholeTwips(state_->row_height_title));
  SetRowHeightSum(state_->row_height_sum);
}

void Stockbook::SetRowHeightTitle(float twips) {
  const State::Watched journal(*state_);
  state_->row_height_title = Height("RowHeightTitle", twips);
  state_->fg.SetRowHeight(0, WholeTwips(state_->row_height_title));
}

void Stockbook::SetRowHeightSum(float twips) {
  const State::Watched journal(*state_);
  state_->row_height_sum = Height("RowHeightSum", twips);
  grid::SetSumRowHeight(state_->fg, WholeTwips(state_->row_height_sum));
}

void Stockbook::FollowFont(const platform::Font& font) {
  const State::Watched journal(*state_);
  const auto redraw = platform::RedrawOff(state_->fg);
  state_->fg.SetGridFont(font);
  if (state_->fg.Rows() == 0) return;
  const grid::RowSizes now = grid::ReadRowSizes(state_->fg);
  const int data = state_->data_as_laid_out;
  if (now.title != state_->title_as_laid_out || (now.data != 0 && now.data != data)) return;
  // A layout makes all nodes as high as totals; after a load only the totals are, and they stay so.
  std::vector<std::pair<int, int>> heights;
  for (int row = state_->fg.NextSubtotal(state_->fg.FixedRows()); row >= 0; row = state_->fg.NextSubtotal(row + 1))
    heights.emplace_back(row, state_->fg.RowHeight(row));
  const float sum = state_->row_height_sum;
  state_->SizeRows();
  const auto followed = [&](int height) {
    if (height == 2 * data) return 2 * state_->data_as_laid_out;
    return height == data ? state_->data_as_laid_out : height;
  };
  for (const auto& [row, height] : heights) state_->fg.SetRowHeight(row, followed(height));
  const int whole = WholeTwips(sum);
  state_->row_height_sum = followed(whole) == whole ? sum : static_cast<float>(followed(whole));
}

void Stockbook::DefaultFormat() { state_->FormatGrid(); }

void Stockbook::Prompt(const std::string& Msg) { state_->events.Notify(Msg); }

bool Stockbook::Find(std::string_view rSearchString, int32_t /*StartRow*/) {
  interaction::Find(state_->fg, state_->fg, state_->events, state_->outline_col_key, rSearchString);
  return false;
}

bool Stockbook::IsRangeSelected() const { return interaction::IsRangeSelected(state_->fg); }

std::string Stockbook::Statistics() const { return grid::Statistics(state_->fg); }

base::Value Stockbook::DoCommand(std::string_view CmdName, std::vector<base::Value>& rParas) {
  if (CmdName == "ColChanged") {
    // Any part of the list matches, the empty text included.
    if (std::string_view(keys::kNamePartsText).find(rParas.at(0).Text()) != std::string_view::npos)
      state_->RefreshProductNames();
  } else if (CmdName == "SetColFont") {
    grid::SetColumnsFont(state_->fg, state_->fg, keys::kNumericText, kNumericFont);
  }
  return {};
}

}  // namespace stockbook::control
