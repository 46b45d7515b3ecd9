// SPDX-License-Identifier: MIT
#include "stockbook/command/copy_command.h"

#include <unistd.h>

#include <array>
#include <filesystem>
#include <memory>
#include <ostream>
#include <string>

#include "databases/providers/open_table_writer.h"
#include "stockbook/command/command_line.h"
#include "stockbook/command/database_options.h"
#include "stockbook/command/output_check.h"
#include "stockbook/copy/copy_progress.h"
#include "stockbook/copy/file_table_writer.h"
#include "stockbook/copy/inventory_copy.h"
#include "stockbook/inventory/stored_file.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

constexpr std::string_view kUsage =
    R"(把整个库存从一个数据库复制到另一个：全部库存表的全部列和行，值与源完全相同，行按键的先后。

用法：stockbook copy SOURCE TARGET [--replace] [--password-file FILE] [--target-password-file FILE]

  SOURCE      源：文件（.db、.mdb、.accdb）或连接字符串，只读取
  TARGET      目标：新的 .db 文件，或 'Provider=Postgres;Host=...;Database=...'
  --replace   目标已有库存时替换它；没有此选项就拒绝

要么全部完成，要么目标不变：文件先写在旁边的临时文件里，服务器的表在一个事务里写；写完后逐表读回，核对行数、
每列的合计和校验和，相同才生效。中断后重新运行即可。源在复制期间按同一时刻读取。

目标的密码取自 --target-password-file 或环境变量 STOCKBOOK_TARGET_PASSWORD；源是文件时，也取自
--password-file 或 STOCKBOOK_PASSWORD。

)";

constexpr std::array<Option, 3> kOptions{
    {{"replace", OptionKind::Flag}, kPasswordFileOption, {"target-password-file", OptionKind::Value}}};
constexpr PasswordPlaces kTargetPlaces{"target-password-file", "STOCKBOOK_TARGET_PASSWORD"};

// A file leaves the places of its password to the target as well, which is usually the one that has a password.
DatabaseSource ReadTarget(const CommandLine& line, const DatabaseSource& source, Terminal& terminal) {
  const std::string argument = line.Positional(1, "TARGET, the inventory to write");
  if (argument == "-") throw UsageError("An inventory cannot go to standard output; name a file.");
  DatabaseSource target = ReadSource(line, argument, "copy", terminal, kTargetPlaces);
  if (!target.HasPassword() && target.TakesPassword() && !source.file().empty())
    target = ReadSource(line, argument, "copy", terminal);
  return target;
}

DatabaseSource ReadCopySource(const CommandLine& line, Terminal& terminal) {
  const std::string argument = line.Positional(0, "SOURCE, the inventory to copy");
  if (DatabaseSource source(argument); !source.TakesPassword()) return source;
  return ReadSource(line, argument, "copy", terminal);
}

void CheckTargetFile(const DatabaseSource& source, const DatabaseSource& target, databases::Existing existing) {
  const std::string& file = target.file();
  if (file.ends_with(".mdb") || file.ends_with(".accdb"))
    throw UsageError("A desktop database file cannot be written; name a .db file.");
  CheckOutput(file, source.file(), Replaces::kAnyInventory);
  std::error_code ignored;
  if (existing == databases::Existing::kRefused && std::filesystem::exists(file, ignored))
    throw UsageError("The target '" + file + "' exists; give --replace to replace it, or name another file.");
}

// A connection reads them as null, and so they would be lost.
void RefuseUnreadableDates(const DatabaseSource& source) {
  const StoredFile file(source.file());
  for (size_t index = 0; index < kTableCount; ++index) {
    const auto table = static_cast<TableName>(index);
    file.ForEachUnreadableDate(table, [&](std::string_view column, const std::string& key, const std::string& text) {
      throw platform::Error("copy", "源库的表“" + std::string(InventoryTableOf(table).name) + "”中 " + key + " 的 " +
                                        std::string(column) + " 为“" + text +
                                        "”，不是日期，没有复制任何内容，请先用 stockbook doctor 检查并改正");
    });
  }
}

std::unique_ptr<databases::TableWriter> OpenTarget(const DatabaseSource& target, databases::Existing existing) {
  if (target.IsEmbedded()) return std::make_unique<FileTableWriter>(target.file());
  return databases::OpenTableWriter(target.ConnectionString(), existing);
}

void PrintNames(const char* caption, const CopiedTable& copied, const std::vector<std::string>& names,
                std::ostream& out) {
  if (names.empty()) return;
  out << "  " << copied.table.name << caption;
  for (size_t index = 0; index < names.size(); ++index) out << (index == 0 ? "" : "、") << OneLine(names[index]);
  out << "\n";
}

void PrintSums(const CopiedTable& copied, std::ostream& out) {
  for (size_t index = 0; index < copied.digests.size(); ++index) {
    const databases::StoredColumn& column = copied.table.columns[index];
    if (column.name == "数量" || column.name == "除税金额")
      out << "，" << column.name << "合计 " << copied.digests[index].sum;
  }
}

void PrintResult(const std::vector<CopiedTable>& tables, const std::string& target, std::ostream& out) {
  size_t rows = 0;
  size_t columns = 0;
  for (const CopiedTable& copied : tables) {
    rows += copied.rows;
    columns += copied.digests.size();
    out << "  " << copied.table.name << "：" << copied.rows << " 行";
    PrintSums(copied, out);
    out << "\n";
  }
  for (const CopiedTable& copied : tables) {
    PrintNames(" 中源库没有的列，已建为空列：", copied, copied.added, out);
    PrintNames(" 中库存账以外的列，也已复制：", copied, copied.extra, out);
  }
  out << "已复制到“" << target << "”：" << tables.size() << " 张表、" << rows << " 行；已从目标读回 " << columns
      << " 列核对行数、合计与校验和，全部相同。\n";
}

int RunCopy(const std::vector<std::string>& arguments, Terminal& terminal) {
  const CommandLine line(arguments, kOptions);
  line.ExpectAtMost(2);
  DatabaseSource source = ReadCopySource(line, terminal);
  const DatabaseSource target = ReadTarget(line, source, terminal);
  const auto existing = line.Has("replace") ? databases::Existing::kReplaced : databases::Existing::kRefused;
  if (target.IsEmbedded()) CheckTargetFile(source, target, existing);
  source.WaitWithoutEnd();
  const auto connection = OpenInventory(source, SqlDialect::kDesktop, AskOnTerminal());
  if (source.IsEmbedded()) RefuseUnreadableDates(source);
  const auto writer = OpenTarget(target, existing);
  std::vector<CopiedTable> tables;
  {
    CopyProgress progress(terminal.err, isatty(STDERR_FILENO) != 0 ? ProgressStyle::kOneLine : ProgressStyle::kLines);
    tables = CopyInventory(*connection, *writer,
                           [&](std::string_view step, std::string_view table, size_t done, size_t rows) {
                             progress.Show(step, table, done, rows, CopyProgress::Clock::now());
                           });
  }
  PrintResult(tables, target.name(), terminal.out);
  return kExitDone;
}

}  // namespace

Command CopyCommand() {
  return {"copy", "Copy an inventory into another database", std::string(kUsage).append(DatabaseUsage()), RunCopy};
}

}  // namespace stockbook::app
