// SPDX-License-Identifier: MIT
#include "databases/odbc/odbc_error.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "base/text.h"
#include "databases/odbc/driver_manager.h"

namespace stockbook::databases {
namespace {

struct StateOfKind {
  std::string_view prefix;
  platform::ErrorKind kind;
};

// ODBC's states, and those of servers that drivers pass on; the longer of two that match stands first.
constexpr std::array<StateOfKind, 18> kStates = {{
    {"HYT01", platform::ErrorKind::kInputOutput},
    {"HYT00", platform::ErrorKind::kInterrupted},
    {"HY008", platform::ErrorKind::kInterrupted},
    {"57014", platform::ErrorKind::kInterrupted},
    {"57", platform::ErrorKind::kInputOutput},
    {"08", platform::ErrorKind::kInputOutput},
    {"01002", platform::ErrorKind::kInputOutput},
    {"HY001", platform::ErrorKind::kMemory},
    {"HY013", platform::ErrorKind::kMemory},
    {"53200", platform::ErrorKind::kMemory},
    {"53", platform::ErrorKind::kInputOutput},
    {"58", platform::ErrorKind::kInputOutput},
    {"XX001", platform::ErrorKind::kDamaged},
    {"XX002", platform::ErrorKind::kDamaged},
    {"40", platform::ErrorKind::kBusy},
    {"55P03", platform::ErrorKind::kBusy},
    {"28", platform::ErrorKind::kInputOutput},
    {"IM", platform::ErrorKind::kInputOutput},
}};

std::string WhyNotOpened(const OdbcDiagnosis& diagnosis) {
  const std::string& state = diagnosis.state;
  if (state == "IM002") return "找不到 ODBC 数据源或驱动程序，请检查连接字符串的 DSN 或 Driver，并确认驱动程序已经安装";
  if (state == "01000" || state == "IM003" || state == "IM004")
    return "无法装入 ODBC 驱动程序，请检查连接字符串的 Driver，并确认驱动程序已经安装";
  constexpr int kLoginFailed = 18456;  // of SQL Server, under a state that says nothing
  if (state.starts_with("28") || diagnosis.native == kLoginFailed) return "数据库拒绝了登录，请检查用户名和密码";
  if (state.starts_with("HYT")) return "连接数据库超时，请检查服务器是否在运行，或调大 Timeout";
  if (state.starts_with("08")) return "无法连接数据库服务器，请检查服务器的地址、端口和登录，以及它是否在运行";
  return "无法通过 ODBC 打开数据库，请检查连接字符串";
}

std::string Quoted(const OdbcDiagnosis& diagnosis) {
  return diagnosis.text.empty() ? "" : "：" + diagnosis.text + "（SQLSTATE " + diagnosis.state + "）";
}

constexpr SQLSMALLINT kMessageUnits = 2048;

size_t WrittenUnits(SQLSMALLINT length) {
  return static_cast<size_t>(std::clamp<SQLSMALLINT>(length, 0, kMessageUnits - 1));
}

std::optional<OdbcDiagnosis> WideRecord(SQLSMALLINT handle_type, SQLHANDLE handle, SQLSMALLINT number) {
  OdbcDiagnosis record;
  std::array<SQLWCHAR, 6> state{};
  OdbcWideText message(kMessageUnits);
  SQLSMALLINT length = 0;
  const SQLRETURN code =
      SQLGetDiagRecW(handle_type, handle, number, state.data(), &record.native, message.data(), kMessageUnits, &length);
  if (!SQL_SUCCEEDED(code)) return std::nullopt;
  AppendUtf8(state.data(), 5, record.state);
  AppendUtf8(message.data(), WrittenUnits(length), record.text);
  return record;
}

std::optional<OdbcDiagnosis> NarrowRecord(SQLSMALLINT handle_type, SQLHANDLE handle, SQLSMALLINT number) {
  OdbcDiagnosis record;
  std::array<SQLCHAR, 6> state{};
  std::vector<SQLCHAR> message(kMessageUnits);
  SQLSMALLINT length = 0;
  const SQLRETURN code =
      SQLGetDiagRec(handle_type, handle, number, state.data(), &record.native, message.data(), kMessageUnits, &length);
  if (!SQL_SUCCEEDED(code)) return std::nullopt;
  record.state.assign(state.begin(), state.begin() + 5);
  record.text =
      base::CleanUtf8(std::string(message.begin(), message.begin() + static_cast<long>(WrittenUnits(length))));
  return record;
}

}  // namespace

OdbcDiagnosis DiagnosisOf(SQLSMALLINT handle_type, SQLHANDLE handle, OdbcLetters letters) {
  constexpr SQLSMALLINT kMostRecords = 4;
  OdbcDiagnosis diagnosis;
  for (SQLSMALLINT number = 1; number <= kMostRecords; ++number) {
    const auto record = letters == OdbcLetters::kWide ? WideRecord(handle_type, handle, number)
                                                      : NarrowRecord(handle_type, handle, number);
    if (!record) break;
    if (number == 1) {
      diagnosis.state = record->state;
      diagnosis.native = record->native;
    }
    const std::string text(base::TrimBlanks(base::OneLine(record->text, " ")));
    if (diagnosis.text.find(text) != std::string::npos) continue;
    diagnosis.text.append(diagnosis.text.empty() ? "" : "；").append(text);
  }
  return diagnosis;
}

bool IsConnectionLost(const std::string& state) {
  return state.starts_with("08") || state.starts_with("57P") || state == "HYT01" || state == "01002";
}

platform::ErrorKind KindOfState(const std::string& state) {
  for (const StateOfKind& known : kStates) {
    if (state.starts_with(known.prefix)) return known.kind;
  }
  return platform::ErrorKind::kStatement;
}

platform::Error ExecuteErrorOf(const OdbcDiagnosis& diagnosis, platform::ErrorKind kind) {
  const char* what = kind == platform::ErrorKind::kBusy ? "数据库正被其他程序占用，请稍后再试" : "数据库没有执行语句";
  return {"Execute", what + Quoted(diagnosis), diagnosis.native, kind, diagnosis.state};
}

platform::Error LostErrorOf(const OdbcDiagnosis& diagnosis) {
  return {"Execute", "与数据库的连接已断开，请检查服务器后重试" + Quoted(diagnosis), diagnosis.native,
          platform::ErrorKind::kInputOutput, diagnosis.state};
}

platform::Error OpenErrorOf(const OdbcDiagnosis& diagnosis) {
  return {"Open", WhyNotOpened(diagnosis) + Quoted(diagnosis), diagnosis.native, platform::ErrorKind::kInputOutput,
          diagnosis.state};
}

}  // namespace stockbook::databases
