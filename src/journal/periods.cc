// SPDX-License-Identifier: MIT
#include "journal/periods.h"

#include "base/text.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/platform/error.h"

namespace stockbook::journal {

std::string NewestAccPeriod(const Inventory& inventory) {
  std::string period;
  inventory.Try("读不到最新的会计期间，各期的单据都不会列出：", [&] {
    const platform::Recordset periods =
        inventory.connection()->Execute("Select Top 1 * From tqAccPeriod Order by AccPeriod DESC");
    if (!periods.AtEnd()) period = periods.FieldValue(base::keys::kAccPeriod).Text();
  });
  return period;
}

std::string EarliestAccPeriod(platform::Connection* connection) {
  if (connection == nullptr)
    throw platform::Error("read the earliest period", "没有数据库连接：请先设置 Conn，再载入。");
  const platform::Recordset periods = connection->Execute("Select * From tqAccPeriod Order by AccPeriod");
  if (periods.AtEnd())
    throw platform::Error("read the earliest period", "会计期间表 tqAccPeriod 是空的，请先在库存程序中建立会计期间。");
  return periods.FieldValue(base::keys::kAccPeriod).Text();
}

std::string PeriodCaption(std::string_view period, std::string_view word) {
  return std::string(base::LeftCharacters(period, 4)) + "年" + std::string(base::RightCharacters(period, 2)) + "月" +
         std::string(word);
}

}  // namespace stockbook::journal
