// SPDX-License-Identifier: MIT
#pragma once

#include <sqlext.h>
#include <sqlucode.h>

#include "databases/late/late_library.h"

namespace stockbook::databases {

// The driver manager of ODBC is loaded with the first connection. Its functions are called as ever.
inline constexpr LateLibrary kDriverManager("libodbc.so.2");

inline constinit const LateFunction<decltype(::SQLAllocHandle)> SQLAllocHandle(kDriverManager, "SQLAllocHandle");
inline constinit const LateFunction<decltype(::SQLBindCol)> SQLBindCol(kDriverManager, "SQLBindCol");
inline constinit const LateFunction<decltype(::SQLCancel)> SQLCancel(kDriverManager, "SQLCancel");
inline constinit const LateFunction<decltype(::SQLColumns)> SQLColumns(kDriverManager, "SQLColumns");
inline constinit const LateFunction<decltype(::SQLColumnsW)> SQLColumnsW(kDriverManager, "SQLColumnsW");
inline constinit const LateFunction<decltype(::SQLDescribeColW)> SQLDescribeColW(kDriverManager, "SQLDescribeColW");
inline constinit const LateFunction<decltype(::SQLDisconnect)> SQLDisconnect(kDriverManager, "SQLDisconnect");
inline constinit const LateFunction<decltype(::SQLDriverConnect)> SQLDriverConnect(kDriverManager, "SQLDriverConnect");
inline constinit const LateFunction<decltype(::SQLDriverConnectW)> SQLDriverConnectW(kDriverManager,
                                                                                     "SQLDriverConnectW");
inline constinit const LateFunction<decltype(::SQLEndTran)> SQLEndTran(kDriverManager, "SQLEndTran");
inline constinit const LateFunction<decltype(::SQLExecDirect)> SQLExecDirect(kDriverManager, "SQLExecDirect");
inline constinit const LateFunction<decltype(::SQLExecDirectW)> SQLExecDirectW(kDriverManager, "SQLExecDirectW");
inline constinit const LateFunction<decltype(::SQLFetch)> SQLFetch(kDriverManager, "SQLFetch");
inline constinit const LateFunction<decltype(::SQLFreeHandle)> SQLFreeHandle(kDriverManager, "SQLFreeHandle");
inline constinit const LateFunction<decltype(::SQLGetConnectAttrW)> SQLGetConnectAttrW(kDriverManager,
                                                                                       "SQLGetConnectAttrW");
inline constinit const LateFunction<decltype(::SQLGetData)> SQLGetData(kDriverManager, "SQLGetData");
inline constinit const LateFunction<decltype(::SQLGetDiagRec)> SQLGetDiagRec(kDriverManager, "SQLGetDiagRec");
inline constinit const LateFunction<decltype(::SQLGetDiagRecW)> SQLGetDiagRecW(kDriverManager, "SQLGetDiagRecW");
inline constinit const LateFunction<decltype(::SQLGetInfoW)> SQLGetInfoW(kDriverManager, "SQLGetInfoW");
inline constinit const LateFunction<decltype(::SQLGetStmtAttrW)> SQLGetStmtAttrW(kDriverManager, "SQLGetStmtAttrW");
inline constinit const LateFunction<decltype(::SQLMoreResults)> SQLMoreResults(kDriverManager, "SQLMoreResults");
inline constinit const LateFunction<decltype(::SQLNativeSqlW)> SQLNativeSqlW(kDriverManager, "SQLNativeSqlW");
inline constinit const LateFunction<decltype(::SQLNumResultCols)> SQLNumResultCols(kDriverManager, "SQLNumResultCols");
inline constinit const LateFunction<decltype(::SQLPrimaryKeys)> SQLPrimaryKeys(kDriverManager, "SQLPrimaryKeys");
inline constinit const LateFunction<decltype(::SQLPrimaryKeysW)> SQLPrimaryKeysW(kDriverManager, "SQLPrimaryKeysW");
inline constinit const LateFunction<decltype(::SQLSetConnectAttrW)> SQLSetConnectAttrW(kDriverManager,
                                                                                       "SQLSetConnectAttrW");
inline constinit const LateFunction<decltype(::SQLSetEnvAttr)> SQLSetEnvAttr(kDriverManager, "SQLSetEnvAttr");
inline constinit const LateFunction<decltype(::SQLSetStmtAttrW)> SQLSetStmtAttrW(kDriverManager, "SQLSetStmtAttrW");
inline constinit const LateFunction<decltype(::SQLTables)> SQLTables(kDriverManager, "SQLTables");
inline constinit const LateFunction<decltype(::SQLTablesW)> SQLTablesW(kDriverManager, "SQLTablesW");

}  // namespace stockbook::databases
