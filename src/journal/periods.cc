// SPDX-License-Identifier: MIT
#include "journal/periods.h"

#include "base/column_keys.h"
#include "base/text.h"
#include "platform/error.h"

namespace stockbook::journal {

std::string NewestAccPeriod(platform::Connection* connection) {
  if (connection == nullptr) return {};
  try {
    return connection->Execute("Select Top 1 * From tqAccPeriod Order by AccPeriod DESC")
        .FieldValue(base::keys::kAccPeriod)
        .Text();
  } catch (const std::exception&) {
    return {};
  }
}

std::string EarliestAccPeriod(platform::Connection* connection) {
  if (connection == nullptr)
    throw platform::Error("read the earliest period", "没有数据库连接：请先设置 Conn，再载入。");
  return connection->Execute("Select * From tqAccPeriod Order by AccPeriod").FieldValue(base::keys::kAccPeriod).Text();
}

std::string PeriodCaption(std::string_view period, std::string_view word) {
  return std::string(base::LeftCharacters(period, 4)) + "年" + std::string(base::RightCharacters(period, 2)) + "月" +
         std::string(word);
}

}  // namespace stockbook::journal
