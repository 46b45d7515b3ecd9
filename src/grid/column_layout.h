// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "grid/hidden_keys.h"
#include "grid/layout_settings.h"
#include "stockbook/platform/grid_table.h"

namespace stockbook::grid {

inline constexpr int kColumnCount = 56;

// The properties of a column that AddColumn sets.
struct ColumnAttributes {
  std::string_view key;
  std::string caption;
  std::string format;
  bool hidden = false;
  platform::DataType type = platform::DataType::kString;
  platform::Alignment alignment = platform::Alignment::kLeftCenter;
  float width_twips = 0;
};

// Lays the journal grid out: the one place that defines the order, captions, types, formats, widths and default
// visibility of the columns. A column is looked up by key before it is created, so laying out again moves every known
// column back and resets it; surplus columns are dropped. Rebuilds the hidden-key list. Does not touch rows.
class ColumnLayout {
 public:
  ColumnLayout(platform::GridTable& grid, const LayoutSettings& settings, HiddenKeys& hidden_keys)
      : grid_(grid), settings_(settings), hidden_keys_(hidden_keys) {}

  // Builds the hidden-key list and the columns, and makes the column of `outline_key` the outline column.
  void FormatColumns(std::string_view outline_key);
  void BuildHiddenKeys();
  void AddColumn(int position, const ColumnAttributes& attributes);

 private:
  struct Definition;
  static const Definition* Definitions();
  std::string CaptionOf(const Definition& definition) const;
  std::string FormatOf(const Definition& definition) const;
  bool IsHidden(const Definition& definition) const;
  bool ShowsStock() const;

  platform::GridTable& grid_;
  const LayoutSettings& settings_;
  HiddenKeys& hidden_keys_;
};

}  // namespace stockbook::grid
