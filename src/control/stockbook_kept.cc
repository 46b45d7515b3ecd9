// SPDX-License-Identifier: MIT
// What the control knows of its journal, kept and put back.
#include <memory>
#include <utility>

#include "control/control_state.h"
#include "control/kept_journal.h"

namespace stockbook::control {

std::shared_ptr<KeptJournal> Stockbook::Keep() const {
  auto kept = std::make_shared<KeptJournal>();
  kept->connection = state_->connection;
  kept->layout = state_->layout;
  kept->hidden_keys = state_->hidden_keys;
  kept->keys = state_->keys;
  kept->subject = state_->subject;
  kept->header = state_->c1e_header;
  kept->outline_col_key = state_->outline_col_key;
  kept->acc_restrict_text = state_->acc_restrict_text;
  kept->acc_restricted = state_->acc_restricted;
  kept->row_height = state_->row_height;
  kept->row_height_title = state_->row_height_title;
  kept->row_height_sum = state_->row_height_sum;
  kept->title_as_laid_out = state_->title_as_laid_out;
  kept->data_as_laid_out = state_->data_as_laid_out;
  kept->record_count = state_->record_count;
  kept->hot_row = state_->handlers->hot_row().Keep();
  return kept;
}

void Stockbook::PutBack(KeptJournal&& kept) {
  if (state_->loading) return;
  const State::Watched journal(*state_);
  state_->connection = std::move(kept.connection);
  state_->layout = std::move(kept.layout);
  state_->hidden_keys = std::move(kept.hidden_keys);
  state_->keys = std::move(kept.keys);
  state_->subject = std::move(kept.subject);
  state_->c1e_header = std::move(kept.header);
  state_->outline_col_key = std::move(kept.outline_col_key);
  state_->acc_restrict_text = std::move(kept.acc_restrict_text);
  state_->acc_restricted = kept.acc_restricted;
  state_->row_height = kept.row_height;
  state_->row_height_title = kept.row_height_title;
  state_->row_height_sum = kept.row_height_sum;
  state_->title_as_laid_out = kept.title_as_laid_out;
  state_->data_as_laid_out = kept.data_as_laid_out;
  state_->record_count = kept.record_count;
  state_->handlers->hot_row().PutBack(kept.hot_row);
  state_->site.FrameChanged();
}

}  // namespace stockbook::control
