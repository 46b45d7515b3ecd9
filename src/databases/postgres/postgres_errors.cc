// SPDX-License-Identifier: MIT
#include "databases/postgres/postgres_errors.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace stockbook::databases {
namespace {

using platform::ErrorKind;

struct StateKind {
  std::string_view prefix;
  ErrorKind kind;
};
// The first that the state begins with.
constexpr std::array<StateKind, 18> kKinds = {{{"57014", ErrorKind::kInterrupted},
                                               {"57P03", ErrorKind::kBusy},
                                               {"53300", ErrorKind::kBusy},
                                               {"53200", ErrorKind::kMemory},
                                               {"55006", ErrorKind::kBusy},
                                               {"55P03", ErrorKind::kBusy},
                                               {"40", ErrorKind::kBusy},
                                               {"XX001", ErrorKind::kDamaged},
                                               {"XX002", ErrorKind::kDamaged},
                                               {"XX", ErrorKind::kInputOutput},
                                               {"08", ErrorKind::kInputOutput},
                                               {"28", ErrorKind::kInputOutput},
                                               {"3D", ErrorKind::kInputOutput},
                                               {"25P", ErrorKind::kInputOutput},
                                               {"53", ErrorKind::kInputOutput},
                                               {"57", ErrorKind::kInputOutput},
                                               {"58", ErrorKind::kInputOutput},
                                               {"F0", ErrorKind::kInputOutput}}};

struct StateText {
  std::string_view prefix;
  std::string_view text;
};
// The server's own words follow a text that ends with a colon.
constexpr std::array<StateText, 20> kTexts = {{
    {"22003", "语句计算的数值超出范围，请检查数据"},
    {"22012", "语句中除数为零，请检查数据"},
    {"22", "语句读到的数据不能转换成需要的类型，请检查数据"},
    {"25006", "只读打开的数据库拒绝写入，请只用查询语句"},
    {"40", "服务器中止了与其他程序冲突的读取，请稍后再试"},
    {"42501", "数据库角色没有读取权限，请管理员授予 SELECT 权限："},
    {"42P01", "找不到语句中的表，请检查语句和 Schema："},
    {"53100", "服务器的磁盘已满，请通知管理员"},
    {"53200", "服务器内存不足，请缩小查询的范围"},
    {"53300", "服务器的连接数已满，请稍后再试，或请管理员调大 max_connections"},
    {"54", "语句超过了服务器的限制，请缩小查询的范围："},
    {"55", "数据正被其他程序独占，请稍后再试："},
    {"57014", "语句被服务器或管理员取消，请重试"},
    {"57P01", "服务器正在关闭，连接已断开，请稍后再试"},
    {"57P02", "服务器出现故障，连接已断开，请稍后再试"},
    {"57P03", "服务器正在启动或关闭，请稍后再试"},
    {"57P05", "连接空闲太久，服务器已断开它，请重试"},
    {"58", "服务器读写文件出错，请通知管理员："},
    {"XX00", "服务器的数据或程序出错，请通知管理员："},
    {"25P", "服务器中止了事务，请重试"},
}};
constexpr std::array<StateText, 9> kConnectTexts = {{
    {"28P01", "密码不对，请检查 User 和 Password"},
    {"28", "服务器不接受这个用户、地址或加密方式，请检查 User 和 sslmode，或请管理员查看 pg_hba.conf"},
    {"3D", "没有这个数据库，请检查 Database"},
    {"42501", "用户没有连接这个数据库的权限，请管理员授予 CONNECT 权限"},
    {"53300", "服务器的连接数已满，请稍后再试，或请管理员调大 max_connections"},
    {"57P03", "服务器正在启动或关闭，请稍后再试"},
    {"57P01", "服务器正在关闭，请稍后再试"},
    {"22023", "有一项设置的值不被接受，请检查连接字符串"},
    {"42704", "服务器不认识连接字符串 options 中的一项设置，请改正它"},
}};

template <typename Texts>
std::string_view FindText(const Texts& texts, std::string_view sql_state) {
  const auto found =
      std::find_if(texts.begin(), texts.end(), [&](const StateText& row) { return sql_state.starts_with(row.prefix); });
  return found == texts.end() ? std::string_view() : found->text;
}

std::string CleanLine(std::string_view text) {
  std::string line = base::OneLine(base::CleanUtf8(text), " ");
  while (!line.empty() && line.back() == ' ') line.pop_back();
  return line;
}

// As the server itself packs a state into a number: six bits a character.
int NativeCode(std::string_view sql_state) {
  int code = 0;
  int shift = 0;
  for (const char character : sql_state.substr(0, 5)) {
    code += ((character - '0') & 0x3F) << shift;
    shift += 6;
  }
  return code;
}

bool IsStateCharacter(char character) {
  return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z');
}

}  // namespace

ErrorKind KindOfSqlState(std::string_view sql_state) {
  if (sql_state.empty()) return ErrorKind::kInputOutput;
  const auto found = std::find_if(kKinds.begin(), kKinds.end(),
                                  [&](const StateKind& row) { return sql_state.starts_with(row.prefix); });
  return found == kKinds.end() ? ErrorKind::kStatement : found->kind;
}

platform::Error ErrorOfSqlState(const char* operation, std::string_view sql_state, std::string_view detail) {
  std::string message(FindText(kTexts, sql_state));
  if (message.empty()) message = "服务器拒绝了语句：";
  if (message.ends_with("：")) message += CleanLine(detail);
  return {operation, message, NativeCode(sql_state), KindOfSqlState(sql_state), std::string(sql_state)};
}

platform::Error ErrorOfConnecting(const std::string& server, std::string_view sql_state, std::string_view detail) {
  std::string message = "无法连接数据库服务器“" + base::CleanUtf8(server) + "”：";
  const std::string_view reason = FindText(kConnectTexts, sql_state);
  if (!reason.empty()) {
    message += reason;
  } else if (!sql_state.empty()) {
    message += "服务器拒绝了连接，代码 " + std::string(sql_state);
  } else {
    message += "请检查 Host、Port、网络和 TLS 设置（sslmode）：" + CleanLine(detail);
  }
  const ErrorKind kind = KindOfSqlState(sql_state);
  return {"Open", message, NativeCode(sql_state), kind == ErrorKind::kStatement ? ErrorKind::kInputOutput : kind,
          std::string(sql_state)};
}

std::string SqlStateIn(std::string_view message) {
  constexpr size_t kLength = 5;
  std::string state;
  for (std::string_view line : base::Split(message, '\n')) {
    line = base::TrimBlanks(line);
    if (line.size() < kLength + 3 || line.substr(line.size() - kLength - 3, 3) != ":  ") continue;
    const std::string_view last = line.substr(line.size() - kLength);
    if (std::all_of(last.begin(), last.end(), IsStateCharacter)) state = last;
  }
  return state;
}

}  // namespace stockbook::databases
