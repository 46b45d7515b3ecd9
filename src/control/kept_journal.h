// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "grid/hidden_keys.h"
#include "grid/layout_settings.h"
#include "interaction/hot_row.h"
#include "journal/subject_keys.h"
#include "journal/subjects.h"
#include "stockbook/control/container.h"
#include "stockbook/platform/connection.h"

namespace stockbook::control {

// What a control knows of the journal in its grid, and what a host sets for a load: connection, rights, journal type,
// keys, captions, header and row heights. A plain value; see Stockbook::Keep.
struct KeptJournal {
  std::shared_ptr<platform::Connection> connection;
  grid::LayoutSettings layout;
  grid::HiddenKeys hidden_keys;
  journal::SubjectKeys keys;
  journal::SubjectTexts subject;
  Container header;
  std::string outline_col_key;
  std::string acc_restrict_text;
  bool acc_restricted = false;
  float row_height = 0;  // twips, as are the next four
  float row_height_title = 0;
  float row_height_sum = 0;
  int title_as_laid_out = 0;
  int data_as_laid_out = 0;
  int64_t record_count = -1;
  interaction::HotRow::Kept hot_row;
};

}  // namespace stockbook::control
