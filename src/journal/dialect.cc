// SPDX-License-Identifier: MIT
#include "journal/dialect.h"

#include "stockbook/platform/error.h"

namespace stockbook::journal {

bool IsSqlServerConnection(const platform::Connection* connection) {
  if (connection == nullptr) throw platform::Error("read connection string", "没有数据库连接：请先设置 Conn，再载入。");
  return platform::IsServerDialect(connection->ConnectionString());
}

std::string BillNoExpr(const platform::Connection* connection) {
  return IsSqlServerConnection(connection) ? "Convert(Char(10),Dir.BillDate,23) + Dir.单据类型 + ' ' + Dir.单据编号"
                                           : "Dir.BillDate & ' ' & Dir.单据类型 & ' ' & Dir.单据编号";
}

std::string PeriodLabelExpr(const platform::Connection* connection, std::string_view year, std::string_view month) {
  const std::string y(year);
  const std::string m(month);
  if (IsSqlServerConnection(connection)) {
    return "CAST(" + y + " As varchar(4))" + "+'年' + " + "right(cast(10000 + " + m + " as varchar), 2)" + "+'月'";
  }
  return "(" + y + " & '年' & Format(" + m + ",'00') & '月')";
}

std::string BillDateExpr(const platform::Connection* connection, std::string_view year, std::string_view month,
                         std::string_view day) {
  const std::string y(year);
  const std::string m(month);
  const std::string d(day);
  if (IsSqlServerConnection(connection)) {
    return "Convert(varchar(10),CAST(CAST(" + y + " AS char(4)) + '-' + CAST(" + m + " AS char(2)) + '-' + CAST(" + d +
           " AS char(2)) AS DATETIME),121)";
  }
  return "CDATE(" + y + " & '-' & " + m + " &  '-' & " + d + ")";
}

std::string BalancePeriodLabelExpr(const platform::Connection* connection) {
  return IsSqlServerConnection(connection) ? "" : "(bn.年份 & '年' & Format(bn.月份,'00月'))";
}

void RemoveTable(platform::Connection* connection, std::string_view table) {
  if (connection == nullptr) return;
  try {
    connection->Execute("Drop Table " + std::string(table));
  } catch (const std::exception&) {
    // The table may not exist, or the connection may be read-only.
  }
}

}  // namespace stockbook::journal
