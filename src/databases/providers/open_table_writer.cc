// SPDX-License-Identifier: MIT
#include "databases/providers/open_table_writer.h"

#include <string>

#include "base/text.h"
#include "databases/connection_string.h"
#include "stockbook/platform/error.h"
#ifdef STOCKBOOK_WITH_POSTGRES
#include "databases/postgres/postgres_writer.h"
#endif

namespace stockbook::databases {

std::unique_ptr<TableWriter> OpenTableWriter(std::string_view connection_string, Existing existing) {
  const ConnectionString settings(connection_string);
  const std::string provider = settings.Find("Provider").value_or("");
  if (!base::EqualsIgnoringCase(provider, "Postgres"))
    throw platform::Error(
        "copy", "不能写入 Provider“" + provider + "”的数据库，目标应为 .db 文件或 Provider=Postgres 的服务器");
#ifdef STOCKBOOK_WITH_POSTGRES
  return OpenPostgresWriter(connection_string, existing);
#else
  static_cast<void>(existing);
  throw platform::Error("copy", "此程序编译时没有加入 Postgres，请安装 libpq（软件包 libpq-dev）后重新编译");
#endif
}

}  // namespace stockbook::databases
