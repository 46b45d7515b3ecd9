// SPDX-License-Identifier: MIT
#include "journal/needed_fields.h"

#include <span>

#include "stockbook/base/column_keys.h"
#include "stockbook/platform/error.h"

namespace stockbook::journal {
namespace {

namespace keys = base::keys;

constexpr const char* kOfEveryLine[] = {keys::kPeriod, keys::kBillNo, keys::kPrice,  keys::kQuantity, keys::kAccount,
                                        keys::kRevQty, keys::kRevAcc, keys::kIssQty, keys::kIssAcc,   keys::kFlag};
constexpr const char* kSecondQuantities[] = {keys::kQuantity2, keys::kRevQty2, keys::kIssQty2};
// What a line can be shown without, but no longer recognised by or opened from.
constexpr const char* kOfItsBill[] = {keys::kBillDate, keys::kBillKind, keys::kExplain, keys::kBillName,
                                      keys::kBillID,   keys::kRecID,    keys::kDpID,    keys::kKsID,
                                      keys::kPjID,     keys::kOtherID,  keys::kPdID};
constexpr const char* kOfItsProduct[] = {keys::kProductName, keys::kProductNo, keys::kModel, keys::kStandard,
                                         keys::kMeasure};

// Adds those of the names that the result has no field of.
void AddMissing(const platform::Recordset& rows, std::span<const char* const> names, std::string& list) {
  for (const char* name : names) {
    if (!rows.HasField(name)) list.append(list.empty() ? "" : "、").append(name);
  }
}

}  // namespace

std::string CheckNeededFields(const platform::Recordset& rows, base::tqJournalTypeContants type,
                              const ShownNumbers& shown) {
  if (rows.AtEnd()) return {};
  std::string missing;
  AddMissing(rows, kOfEveryLine, missing);
  if (shown.second_unit) AddMissing(rows, kSecondQuantities, missing);
  if (shown.taxes) AddMissing(rows, keys::kTaxes, missing);
  if (!missing.empty()) {
    throw platform::Error(
        "read journal",
        "查询结果中缺少字段 " + missing + "，读入已停止：请让数据库连接按语句中的别名返回这些字段，大小写也须一致。");
  }
  AddMissing(rows, kOfItsBill, missing);
  if (type != base::MaterialJournal) AddMissing(rows, kOfItsProduct, missing);
  return missing.empty() ? std::string()
                         : "查询结果中缺少字段 " + missing +
                               "，这些列是空的：请让数据库连接按语句中的别名返回这些字段，大小写也须一致。";
}

}  // namespace stockbook::journal
