// SPDX-License-Identifier: MIT
#include "stockbook/control/stockbook.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "base/number.h"
#include "base/text.h"
#include "control/neutral.h"
#include "grid/column_layout.h"
#include "grid/product_names.h"
#include "grid/row_heights.h"
#include "grid/statistics.h"
#include "interaction/find/find.h"
#include "journal/periods.h"
#include "journal/vocabulary.h"
#include "stockbook/base/column_keys.h"
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
  return std::isnan(twips) ? 0 : static_cast<int>(std::clamp(twips, -kMost, kMost));
}

}  // namespace

Stockbook::Stockbook(const Surroundings& surroundings)
    : fg_(surroundings.fg),
      fg1_(surroundings.fg1),
      text_metrics_(surroundings.text_metrics),
      images_(surroundings.images),
      menu_(surroundings.menu),
      clipboard_(surroundings.clipboard),
      site_(surroundings.site) {
  fg1_.SetRows(fg1_.FixedRows());
  StartUp(fg_);
  fore_color_hot_ = fg_.ColourOf(platform::GridColour::kForeColor);
  img_mark_ = images_.Find("Mark");
  c1e_header_.picture = images_.Find(journal::WordsOf(layout_.journal_type).journal_picture);
  WatchGrid();
  FormatGrid();
}

void Stockbook::SetJournalType(tqJournalTypeContants type) {
  layout_.journal_type = type;
  c1e_header_.picture = images_.Find(journal::WordsOf(type).journal_picture);
  FormatGrid();
  site_.FrameChanged();
}

std::string Stockbook::FmtName() const { return std::string(journal::WordsOf(layout_.journal_type).format_name); }

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
  layout_.allow_qty2 = allow;
  // The key of the statement's own second quantity goes on the list too; no layout has a column of it.
  static constexpr const char* kListed[] = {keys::kQuantity2, keys::kQty2, keys::kRevQty2, keys::kIssQty2,
                                            keys::kStoQty2};
  AllowColumns(fg_, hidden_keys_, allow, kListed, keys::kSecondUnit);
}

void Stockbook::SetAllowInv(bool allow) {
  layout_.allow_inv = allow;
  AllowColumns(fg_, hidden_keys_, allow, keys::kTaxes, keys::kTaxes);
}

int16_t Stockbook::NarrowedKey(int32_t id) {
  if (id < INT16_MIN || id > INT16_MAX) {
    throw platform::Error("set dpID", "溢出：dpID 必须在 -32768 与 32767 之间，收到的是 " + std::to_string(id) + "。",
                          6);
  }
  return static_cast<int16_t>(id);
}

void Stockbook::SetdpID(int32_t id) { keys_.dpID = NarrowedKey(id); }

journal::Tell Stockbook::Teller() const {
  return [this](const std::string& message) { events_.Notify(message); };
}

std::string Stockbook::AccPeriod() const {
  return OrNeutral(Teller(), [&] { return journal::NewestAccPeriod(connection_.get()); });
}

std::string Stockbook::DepotName() const {
  return OrNeutral(Teller(),
                   [&] { return journal::Subjects(connection_.get(), layout_.journal_type).DepotName(keys_); });
}

journal::SecondUnit Stockbook::SecondUnit() const {
  return layout_.allow_qty2 ? journal::SecondUnit::kShown : journal::SecondUnit::kHidden;
}

void Stockbook::SetKeyID(int32_t id) {
  keys_.KeyID = id;
  subject_ = OrNeutral(
      Teller(), [&] { return journal::Subjects(connection_.get(), layout_.journal_type).Read(id, SecondUnit()); });
}

void Stockbook::SetCaption(std::string_view caption) {
  c1e_header_.caption = std::string(base::TrimBlanks(caption)) + "   ";
  site_.FrameChanged();
}

std::string Stockbook::Caption() const { return std::string(base::TrimBlanks(c1e_header_.caption)); }

void Stockbook::SetAccRestrict(std::string_view text) {
  const auto number = base::ParseNumber(text);
  const bool is_true = base::EqualsIgnoringCase(base::TrimBlanks(text), "true");
  if (!number && !is_true && !base::EqualsIgnoringCase(base::TrimBlanks(text), "false")) {
    throw platform::Error("set AccRestrict",
                          "类型不匹配：AccRestrict 须为 True、False 或数字，收到的是“" + std::string(text) + "”。", 13);
  }
  acc_restrict_text_ = text;
  acc_restricted_ = number ? *number != 0 : is_true;
}

RowFields Stockbook::Fields() const {
  return {fg_, {connection_.get(), Teller()}, acc_restricted_ ? AmountTexts::kMasked : AmountTexts::kShown};
}

int32_t Stockbook::BillID(int32_t row) const { return Fields().Get(fields::BillID, row); }

std::string Stockbook::BillName(int32_t row) const { return Fields().Get(fields::BillName, row); }

int16_t Stockbook::Flag(int32_t row) const { return Fields().Get(fields::Flag, row); }

std::string Stockbook::FlagName() const { return Flag(-1) == 0 ? "入库" : "出库"; }

void Stockbook::SetRow(int32_t row) {
  if (row < fg_.FixedRows() || row >= fg_.Rows() || fg_.Cols() <= fg_.FixedCols()) return;
  fg_.Select(row, fg_.Col() < 0 ? fg_.FixedCols() : fg_.Col());
  // A listener may have loaded fewer rows.
  if (row >= fg_.Rows()) return;
  if (fg_.RowHidden(row)) fg_.SetRowHidden(row, false);
  if (fg_.RowIsVisible(row)) return;
  if (row < fg_.TopRow()) {
    fg_.SetTopRow(row);
  } else if (row > fg_.BottomRow()) {
    MakeLastVisible(fg_, row);
  }
}

void Stockbook::SetRowHeight(float twips) {
  row_height_ = twips;
  fg_.SetRowHeight(-1, WholeTwips(twips));
  fg_.SetRowHeight(0, WholeTwips(row_height_title_));
  SetRowHeightSum(row_height_sum_);
}

void Stockbook::SetRowHeightTitle(float twips) {
  row_height_title_ = twips;
  fg_.SetRowHeight(0, WholeTwips(twips));
}

void Stockbook::SetRowHeightSum(float twips) {
  row_height_sum_ = twips;
  grid::SetSumRowHeight(fg_, WholeTwips(twips));
}

void Stockbook::FormatGrid() {
  {
    const auto tag = platform::BusyTag(fg_, "Format");
    const auto pointer = platform::PointerKept(fg_);
    const auto redraw = platform::RedrawOff(fg_);
    outline_col_key_ = keys::kBillNo;
    grid::ColumnLayout(fg_, layout_, hidden_keys_).FormatColumns(outline_col_key_);
    SizeRows();
  }
  events_.AfterFormatted();
}

void Stockbook::SizeRows() {
  const int sum = grid::SizeRows(fg_, text_metrics_, fg_.GridFont()).sum;
  title_as_laid_out_ = fg_.RowHeight(0);
  data_as_laid_out_ = sum / 2;
  SetRowHeightSum(static_cast<float>(sum));
}

void Stockbook::FollowFont(const platform::Font& font) {
  const auto redraw = platform::RedrawOff(fg_);
  fg_.SetGridFont(font);
  if (fg_.Rows() == 0) return;
  const grid::RowSizes now = grid::ReadRowSizes(fg_);
  const int data = data_as_laid_out_;
  if (now.title != title_as_laid_out_ || (now.data != 0 && now.data != data)) return;
  // A layout makes all nodes as high as totals; after a load only the totals are, and they stay so.
  std::vector<std::pair<int, int>> heights;
  for (int row = fg_.NextSubtotal(fg_.FixedRows()); row >= 0; row = fg_.NextSubtotal(row + 1))
    heights.emplace_back(row, fg_.RowHeight(row));
  const float sum = row_height_sum_;
  SizeRows();
  const auto followed = [&](int height) {
    if (height == 2 * data) return 2 * data_as_laid_out_;
    return height == data ? data_as_laid_out_ : height;
  };
  for (const auto& [row, height] : heights) fg_.SetRowHeight(row, followed(height));
  const int whole = WholeTwips(sum);
  row_height_sum_ = followed(whole) == whole ? sum : static_cast<float>(followed(whole));
}

void Stockbook::DefaultFormat() { FormatGrid(); }

void Stockbook::RefreshProductNames() { grid::RefreshProductNames(fg_, fg_); }

void Stockbook::ReadRowHeightsBack() {
  const grid::RowSizes sizes = grid::ReadRowSizes(fg_);
  row_height_title_ = static_cast<float>(sizes.title);
  row_height_ = static_cast<float>(sizes.data);
  row_height_sum_ = static_cast<float>(sizes.sum);
}

void Stockbook::ApplyBackPictures() {
  constexpr auto kFill = platform::PictureAlignment::kStretch;
  fg_.SetCellPicture({0, 1, 1, fg_.Cols()}, pictures_.title_back, kFill);
  fg_.SetCellPicture({1, 0, fg_.Rows(), 1}, pictures_.mark_back, kFill);
}

bool Stockbook::Find(std::string_view rSearchString, int32_t /*StartRow*/) {
  interaction::Find(fg_, fg_, events_, outline_col_key_, rSearchString);
  return false;
}

bool Stockbook::IsRangeSelected() const { return interaction::IsRangeSelected(fg_); }

std::string Stockbook::Statistics() const { return grid::Statistics(fg_); }

base::Value Stockbook::DoCommand(std::string_view CmdName, std::vector<base::Value>& rParas) {
  if (CmdName == "ColChanged") {
    // Any part of the list matches, the empty text included.
    if (std::string_view(keys::kNamePartsText).find(rParas.at(0).Text()) != std::string_view::npos)
      RefreshProductNames();
  } else if (CmdName == "SetColFont") {
    grid::SetColumnsFont(fg_, fg_, keys::kNumericText, kNumericFont);
  }
  return {};
}

}  // namespace stockbook::control
