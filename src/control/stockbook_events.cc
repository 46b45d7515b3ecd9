// SPDX-License-Identifier: MIT
// How the control responds to what the user does to its grid.
#include "interaction/grid_handlers.h"
#include "stockbook/control/stockbook.h"

namespace stockbook::control {

void Stockbook::WatchGrid() {
  handlers_ = std::make_unique<interaction::GridHandlers>(interaction::HandlerContext{
      .grid = fg_,
      .menu = menu_,
      .clipboard = clipboard_,
      .text_metrics = text_metrics_,
      .events = events_,
      .record_count = record_count_,
      .outline_key = outline_col_key_,
      .hidden_keys = hidden_keys_,
      .back_color_hot = back_color_hot_,
      .fore_color_hot = fore_color_hot_,
      .ids_of =
          [this](int row) {
            return interaction::RowIds{BillID(row), Fields().Get(fields::RecID, row)};
          },
      .describe = [this](int row) { return DescribeSource(row); },
      .apply_layout = [this] { FormatGrid(); },
      .store_row_height = [this](interaction::ResizedRow kind, int twips) { StoreRowHeight(kind, twips); },
  });
  fg_.SetObserver(handlers_.get());
}

std::string Stockbook::DescribeSource(int row) const {
  // In place of the description: a second message would wipe out the first.
  std::string problem;
  const RowFields fields(fg_, {connection_.get(), [&](const std::string& message) { problem = message; }},
                         AmountTexts::kShown);
  std::string source = fields.IssueSource(row);
  return problem.empty() ? source : problem;
}

void Stockbook::StoreRowHeight(interaction::ResizedRow kind, int twips) {
  const auto height = static_cast<float>(twips);
  switch (kind) {
    case interaction::ResizedRow::kCaption:
      SetRowHeightTitle(height);
      break;
    case interaction::ResizedRow::kNode:
      SetRowHeightSum(height);
      break;
    case interaction::ResizedRow::kLine:
      SetRowHeight(height);
      break;
  }
}

Stockbook::~Stockbook() { fg_.SetObserver(nullptr); }

void Stockbook::ForgetHotRow() { handlers_->hot_row().Forget(); }

void Stockbook::Prompt(const std::string& Msg) { events_.Notify(Msg); }

}  // namespace stockbook::control
