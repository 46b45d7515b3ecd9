// SPDX-License-Identifier: MIT
#include "contract/back_end.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <functional>

#include "contract/postgres_copy.h"
#include "databases/providers/open_connection.h"
#ifdef STOCKBOOK_TESTS_HAVE_LIBPQ
#include "support/postgres_server.h"
#endif

namespace stockbook::testing {
namespace {

using databases::Dialect;

bool IsBuilt(const std::string& provider, std::string& missing) {
  const auto built = databases::BuiltProviders();
  if (std::find(built.begin(), built.end(), provider) != built.end()) return true;
  missing = "this build has no provider " + provider;
  return false;
}

// The path of a driver of Debian's packages, or nothing.
std::string DriverPath(const std::string& library, std::string& missing) {
  for (const char* folder : {"/usr/lib/x86_64-linux-gnu/odbc/", "/usr/lib/aarch64-linux-gnu/odbc/", "/usr/lib/odbc/"}) {
    if (std::filesystem::exists(folder + library)) return folder + library;
  }
  missing = "the driver " + library + " is not installed";
  return {};
}

// A copy of the file: as itself, or behind a driver.
class FileBackEnd : public BackEnd {
 public:
  FileBackEnd(const DatabaseFile& file, std::string connection) : connection_(std::move(connection)) {
    sqlite3_backup* backup = sqlite3_backup_init(copy_.handle(), "main", file.handle(), "main");
    sqlite3_backup_step(backup, -1);
    sqlite3_backup_finish(backup);
  }
  std::string ConnectionString(Dialect dialect) const override {
    return connection_ + copy_.path() + ";Tables=*" + (dialect == Dialect::kServer ? ";Dialect=SQL" : "");
  }
  void Change(const std::string& sql) override { copy_.Run(sql); }

 private:
  std::string connection_;
  DatabaseFile copy_;
};

std::unique_ptr<BackEnd> MakeEmbedded(const DatabaseFile& file, std::string&) {
  return std::make_unique<FileBackEnd>(file, "Provider=Stockbook.Embedded;Data Source=");
}

std::unique_ptr<BackEnd> MakeSqliteByOdbc(const DatabaseFile& file, std::string& missing) {
  if (!IsBuilt("Odbc", missing)) return nullptr;
  const std::string driver = DriverPath("libsqlite3odbc.so", missing);
  if (driver.empty()) return nullptr;
  return std::make_unique<FileBackEnd>(file, "Provider=Odbc;Driver=" + driver + ";Database=");
}

#ifdef STOCKBOOK_TESTS_HAVE_LIBPQ

// A schema of the shared server: by its own connection, or behind a driver.
class PostgresBackEnd : public BackEnd {
 public:
  PostgresBackEnd(const DatabaseFile& file, const PostgresServer& server, std::string driver)
      : server_(server), driver_(std::move(driver)), schema_("contract" + std::to_string(++schemas_)) {
    server_.Run("CREATE SCHEMA " + schema_ + "; SET search_path TO " + schema_ + ";" + PostgresCopyOf(file));
  }
  ~PostgresBackEnd() override { server_.Run("DROP SCHEMA " + schema_ + " CASCADE"); }

  std::string ConnectionString(Dialect dialect) const override {
    const std::string tables = ";Tables=*";
    const std::string mark = dialect == Dialect::kServer ? "SQL" : "journal";
    if (driver_.empty()) return server_.ConnectionString("Schema=" + schema_ + tables + ";application_name=" + mark);
    return "Provider=Odbc;Driver=" + driver_ + ";Servername=127.0.0.1;Port=" + std::to_string(server_.port()) +
           ";Database=postgres;UID=tester;ConnSettings=SET search_path TO " + schema_ + tables + ";Description=" + mark;
  }
  void Change(const std::string& sql) override { server_.Run("SET search_path TO " + schema_ + ";" + sql); }

 private:
  static int schemas_;
  const PostgresServer& server_;
  std::string driver_;
  std::string schema_;
};
int PostgresBackEnd::schemas_ = 0;

std::unique_ptr<BackEnd> OnPostgres(const DatabaseFile& file, const std::string& driver, std::string& missing) {
  const PostgresServer* server = SharedPostgresServer();
  if (server == nullptr) missing = "no PostgreSQL server is installed";
  return server == nullptr ? nullptr : std::make_unique<PostgresBackEnd>(file, *server, driver);
}

#else

std::unique_ptr<BackEnd> OnPostgres(const DatabaseFile&, const std::string&, std::string& missing) {
  missing = "the tests are built without libpq, which starts their server";
  return nullptr;
}

#endif

std::unique_ptr<BackEnd> MakePostgres(const DatabaseFile& file, std::string& missing) {
  return IsBuilt("Postgres", missing) ? OnPostgres(file, {}, missing) : nullptr;
}

std::unique_ptr<BackEnd> MakePostgresByOdbc(const DatabaseFile& file, std::string& missing) {
  if (!IsBuilt("Odbc", missing)) return nullptr;
  const std::string driver = DriverPath("psqlodbcw.so", missing);
  return driver.empty() ? nullptr : OnPostgres(file, driver, missing);
}

struct Kind {
  const char* name;
  std::unique_ptr<BackEnd> (*make)(const DatabaseFile& file, std::string& missing);
};

constexpr Kind kKinds[] = {{"Embedded", MakeEmbedded},
                           {"SqliteByOdbc", MakeSqliteByOdbc},
                           {"Postgres", MakePostgres},
                           {"PostgresByOdbc", MakePostgresByOdbc}};

}  // namespace

std::vector<std::string> BackEndKinds() {
  std::vector<std::string> names;
  for (const Kind& kind : kKinds) names.emplace_back(kind.name);
  return names;
}

std::unique_ptr<BackEnd> MakeBackEnd(const std::string& kind, const DatabaseFile& file, std::string& missing) {
  for (const Kind& candidate : kKinds) {
    if (candidate.name == kind) return candidate.make(file, missing);
  }
  missing = "there is no such kind";
  return nullptr;
}

}  // namespace stockbook::testing
