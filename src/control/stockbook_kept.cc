// SPDX-License-Identifier: MIT
// What the control knows of its journal, kept and put back.
#include <utility>

#include "control/kept_journal.h"
#include "stockbook/control/stockbook.h"

namespace stockbook::control {

KeptJournal Stockbook::Keep() const {
  KeptJournal kept;
  kept.connection = connection_;
  kept.layout = layout_;
  kept.hidden_keys = hidden_keys_;
  kept.keys = keys_;
  kept.subject = subject_;
  kept.header = c1e_header_;
  kept.outline_col_key = outline_col_key_;
  kept.acc_restrict_text = acc_restrict_text_;
  kept.acc_restricted = acc_restricted_;
  kept.row_height = row_height_;
  kept.row_height_title = row_height_title_;
  kept.row_height_sum = row_height_sum_;
  kept.title_as_laid_out = title_as_laid_out_;
  kept.data_as_laid_out = data_as_laid_out_;
  kept.record_count = record_count_;
  kept.hot_row = handlers_->hot_row().Keep();
  return kept;
}

void Stockbook::PutBack(KeptJournal kept) {
  if (loading_) return;
  connection_ = std::move(kept.connection);
  layout_ = std::move(kept.layout);
  hidden_keys_ = std::move(kept.hidden_keys);
  keys_ = std::move(kept.keys);
  subject_ = std::move(kept.subject);
  c1e_header_ = std::move(kept.header);
  outline_col_key_ = std::move(kept.outline_col_key);
  acc_restrict_text_ = std::move(kept.acc_restrict_text);
  acc_restricted_ = kept.acc_restricted;
  row_height_ = kept.row_height;
  row_height_title_ = kept.row_height_title;
  row_height_sum_ = kept.row_height_sum;
  title_as_laid_out_ = kept.title_as_laid_out;
  data_as_laid_out_ = kept.data_as_laid_out;
  record_count_ = kept.record_count;
  handlers_->hot_row().PutBack(kept.hot_row);
  site_.FrameChanged();
}

}  // namespace stockbook::control
