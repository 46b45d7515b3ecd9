// SPDX-License-Identifier: MIT
#include "stockbook/command/doctor_command.h"

#include <array>
#include <ostream>
#include <string>

#include "stockbook/command/command_line.h"
#include "stockbook/command/database_options.h"
#include "stockbook/doctor/inventory_doctor.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

constexpr std::string_view kUsage = R"(检查一个库存数据库，逐条说明哪张表的哪一行有什么问题、怎样处理。只读取，不修改。

用法：stockbook doctor DB [--json] [--password-file FILE]

  DB        库存数据库：文件（.db、.mdb、.accdb）或连接字符串
  --json    输出一个 JSON 文档，供程序读取；格式见 docs/doctor.md

检查：表和列是否齐全；键是否为空、重复；单据行、单据和余额引用的单据、商品、仓库、往来单位、项目、会计期间和
分类是否存在；期间的写法和先后；日期和数能否识别，日期是否在期间内，数量是否为负；余额表与单据逐期是否相符，
期初是否等于上期结存；内置数据库的索引是否齐全。每种问题最多列出 20 处，并给出总数。

退出码：0 没有问题，1 有问题，2 参数有误或数据库无法读取。

)";

constexpr std::array<Option, 2> kOptions{{{"json", OptionKind::Flag}, kPasswordFileOption}};

DoctorReport Examine(const CommandLine& line, Terminal& terminal) {
  DatabaseSource source = ReadSource(line, line.Positional(0, "DB, the inventory"), "doctor", terminal);
  source.WaitWithoutEnd();
  const auto connection = OpenInventory(source, SqlDialect::kDesktop, AskOnTerminal());
  return ExamineInventory(source, *connection);
}

int RunDoctor(const std::vector<std::string>& arguments, Terminal& terminal) {
  const CommandLine line(arguments, kOptions);
  line.ExpectAtMost(1);
  try {
    const DoctorReport report = Examine(line, terminal);
    if (line.Has("json")) {
      report.WriteJson(terminal.out);
    } else {
      report.WriteText(terminal.out);
    }
    return report.IsHealthy() ? kExitDone : kExitFailed;
  } catch (const platform::Error& error) {
    // Not 1: nobody knows whether the inventory is healthy.
    terminal.err << "stockbook doctor: " << OneLine(error.what()) << "\n";
    return kExitUsage;
  }
}

}  // namespace

Command DoctorCommand() {
  return {"doctor", "Examine an inventory for errors", std::string(kUsage).append(DatabaseUsage()), RunDoctor};
}

}  // namespace stockbook::app
