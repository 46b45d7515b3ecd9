// SPDX-License-Identifier: MIT
#include "databases/execution/readable_tables.h"

#include <array>

#include "base/text.h"

namespace stockbook::databases {
namespace {

// Bills and their lines, masters, classes, periods and balances.
constexpr std::array<std::string_view, 19> kJournalTables = {
    "入库目录",    "入库记录",   "出库目录",      "出库记录",      "仓库设置",     "厂商资料", "客户资料",
    "项目设置",    "商品设置",   "商品资料",      "商品分类",      "厂商分类",     "客户分类", "项目分类",
    "tqAccPeriod", "仓库余额表", "tqSuppBalance", "tqCustBalance", "tqProjBalance"};

}  // namespace

ReadableTables::ReadableTables(std::string_view more) {
  for (const std::string_view name : kJournalTables) names_.insert(base::AsciiLower(name));
  for (const std::string_view piece : base::Split(more, ',')) {
    const std::string_view name = base::TrimBlanks(piece);
    all_ = all_ || name == "*";
    if (!name.empty()) names_.insert(base::AsciiLower(name));
  }
}

bool ReadableTables::Contains(std::string_view name) const {
  const std::string lower = base::AsciiLower(name);
  return !lower.starts_with("sqlite_") && (all_ || names_.contains(lower));
}

}  // namespace stockbook::databases
