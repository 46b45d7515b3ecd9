// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>

#include "grid/hidden_keys.h"
#include "stockbook/base/journal_type.h"

namespace stockbook::grid {

inline constexpr int kFieldCount = 7;

// Every host setting that the column layout depends on.
struct LayoutSettings {
  base::tqJournalTypeContants journal_type = base::MaterialJournal;
  bool allow_qty2 = false;
  bool allow_inv = false;
  std::string fields_filter;
  // Subject titles by journal type.
  std::array<std::string, 4> titles = {"商品", "发货单位", "收货单位", "项目"};
  // Captions of the optional fields, one for the receipt side and one for the issue side of each.
  std::array<std::array<std::string, 2>, kFieldCount> field_captions = {{{"经手人", "经手人"},
                                                                         {"交接人", "交接人"},
                                                                         {"包装", "包装"},
                                                                         {"货位", "货位"},
                                                                         {"期限", "期限"},
                                                                         {"序列号", "序列号"},
                                                                         {"生产日期", "生产日期"}}};
  std::string price_format = "#,##0.00";
  std::string quantity_format = "#,##0.00";
  std::string account_format = "#,##0.00";

  bool operator==(const LayoutSettings&) const = default;
};

}  // namespace stockbook::grid
