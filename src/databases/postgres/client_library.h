// SPDX-License-Identifier: MIT
#pragma once

#include <libpq-fe.h>

#include "databases/late/late_library.h"

namespace stockbook::databases {

// The client library of PostgreSQL, which brings a dozen others of encryption and directories, is loaded with the first
// server. Its functions are called as ever.
inline constexpr LateLibrary kClientLibrary("libpq.so.5");

inline constinit const LateFunction<decltype(::PQcancel)> PQcancel(kClientLibrary, "PQcancel");
inline constinit const LateFunction<decltype(::PQclear)> PQclear(kClientLibrary, "PQclear");
inline constinit const LateFunction<decltype(::PQconndefaults)> PQconndefaults(kClientLibrary, "PQconndefaults");
inline constinit const LateFunction<decltype(::PQconnectPoll)> PQconnectPoll(kClientLibrary, "PQconnectPoll");
inline constinit const LateFunction<decltype(::PQconnectStartParams)> PQconnectStartParams(kClientLibrary,
                                                                                           "PQconnectStartParams");
inline constinit const LateFunction<decltype(::PQconnectdbParams)> PQconnectdbParams(kClientLibrary,
                                                                                     "PQconnectdbParams");
inline constinit const LateFunction<decltype(::PQconnectionNeedsPassword)> PQconnectionNeedsPassword(
    kClientLibrary, "PQconnectionNeedsPassword");
inline constinit const LateFunction<decltype(::PQconninfoFree)> PQconninfoFree(kClientLibrary, "PQconninfoFree");
inline constinit const LateFunction<decltype(::PQconsumeInput)> PQconsumeInput(kClientLibrary, "PQconsumeInput");
inline constinit const LateFunction<decltype(::PQerrorMessage)> PQerrorMessage(kClientLibrary, "PQerrorMessage");
inline constinit const LateFunction<decltype(::PQescapeLiteral)> PQescapeLiteral(kClientLibrary, "PQescapeLiteral");
inline constinit const LateFunction<decltype(::PQexec)> PQexec(kClientLibrary, "PQexec");
inline constinit const LateFunction<decltype(::PQfformat)> PQfformat(kClientLibrary, "PQfformat");
inline constinit const LateFunction<decltype(::PQfinish)> PQfinish(kClientLibrary, "PQfinish");
inline constinit const LateFunction<decltype(::PQflush)> PQflush(kClientLibrary, "PQflush");
inline constinit const LateFunction<decltype(::PQfreeCancel)> PQfreeCancel(kClientLibrary, "PQfreeCancel");
inline constinit const LateFunction<decltype(::PQfreemem)> PQfreemem(kClientLibrary, "PQfreemem");
inline constinit const LateFunction<decltype(::PQftype)> PQftype(kClientLibrary, "PQftype");
inline constinit const LateFunction<decltype(::PQgetCancel)> PQgetCancel(kClientLibrary, "PQgetCancel");
inline constinit const LateFunction<decltype(::PQgetResult)> PQgetResult(kClientLibrary, "PQgetResult");
inline constinit const LateFunction<decltype(::PQgetisnull)> PQgetisnull(kClientLibrary, "PQgetisnull");
inline constinit const LateFunction<decltype(::PQgetlength)> PQgetlength(kClientLibrary, "PQgetlength");
inline constinit const LateFunction<decltype(::PQgetvalue)> PQgetvalue(kClientLibrary, "PQgetvalue");
inline constinit const LateFunction<decltype(::PQisBusy)> PQisBusy(kClientLibrary, "PQisBusy");
inline constinit const LateFunction<decltype(::PQnfields)> PQnfields(kClientLibrary, "PQnfields");
inline constinit const LateFunction<decltype(::PQntuples)> PQntuples(kClientLibrary, "PQntuples");
inline constinit const LateFunction<decltype(::PQparameterStatus)> PQparameterStatus(kClientLibrary,
                                                                                     "PQparameterStatus");
inline constinit const LateFunction<decltype(::PQputCopyData)> PQputCopyData(kClientLibrary, "PQputCopyData");
inline constinit const LateFunction<decltype(::PQputCopyEnd)> PQputCopyEnd(kClientLibrary, "PQputCopyEnd");
inline constinit const LateFunction<decltype(::PQresultErrorField)> PQresultErrorField(kClientLibrary,
                                                                                       "PQresultErrorField");
inline constinit const LateFunction<decltype(::PQresultStatus)> PQresultStatus(kClientLibrary, "PQresultStatus");
inline constinit const LateFunction<decltype(::PQsendQuery)> PQsendQuery(kClientLibrary, "PQsendQuery");
inline constinit const LateFunction<decltype(::PQsendQueryParams)> PQsendQueryParams(kClientLibrary,
                                                                                     "PQsendQueryParams");
inline constinit const LateFunction<decltype(::PQsetErrorVerbosity)> PQsetErrorVerbosity(kClientLibrary,
                                                                                         "PQsetErrorVerbosity");
inline constinit const LateFunction<decltype(::PQsetNoticeProcessor)> PQsetNoticeProcessor(kClientLibrary,
                                                                                           "PQsetNoticeProcessor");
inline constinit const LateFunction<decltype(::PQsetNoticeReceiver)> PQsetNoticeReceiver(kClientLibrary,
                                                                                         "PQsetNoticeReceiver");
inline constinit const LateFunction<decltype(::PQsetnonblocking)> PQsetnonblocking(kClientLibrary, "PQsetnonblocking");
inline constinit const LateFunction<decltype(::PQsocket)> PQsocket(kClientLibrary, "PQsocket");
inline constinit const LateFunction<decltype(::PQstatus)> PQstatus(kClientLibrary, "PQstatus");

}  // namespace stockbook::databases
