// SPDX-License-Identifier: MIT
#include "contract/back_end.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "contract/plain_inventory.h"
#include "contract/postgres_copy.h"
#include "databases/sqlite/embedded_connection.h"
#include "stockbook/databases/providers/open_connection.h"
#include "stockbook/databases/rows/row_source.h"
#include "support/test_folder.h"
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

void CopyInto(DatabaseFile& copy, sqlite3* original) {
  sqlite3_backup* backup = sqlite3_backup_init(copy.handle(), "main", original, "main");
  sqlite3_backup_step(backup, -1);
  sqlite3_backup_finish(backup);
}

// A copy of the file: as itself, or behind a driver.
class FileBackEnd : public BackEnd {
 public:
  FileBackEnd(const DatabaseFile& file, std::string connection) : connection_(std::move(connection)) {
    CopyInto(copy_, file.handle());
  }
  std::string ConnectionString(Dialect dialect) const override {
    return connection_ + copy_.path() + ";Tables=*" + (dialect == Dialect::kServer ? ";Dialect=SQL" : "");
  }
  bool Change(const std::string& sql) override {
    copy_.Run(sql);
    return true;
  }

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
  return std::make_unique<FileBackEnd>(file, "Provider=Odbc;AmpersandJoins=0;Driver=" + driver + ";Database=");
}

const std::filesystem::path kKept = std::filesystem::path(STOCKBOOK_SOURCE_DIR) / "../shared/data";

void Unpack(const std::string& name, const std::string& path) {
  const std::string command = "xz -dkc '" + (kKept / (name + ".xz")).string() + "' > '" + path + "'";
  if (std::system(command.c_str()) != 0) throw std::runtime_error(command);
}

// A desktop file of the kept inventory.
class DesktopBackEnd : public BackEnd {
 public:
  explicit DesktopBackEnd(const std::string& name) : path_(folder_.PathOf(name)) { Unpack(name, path_); }
  std::string ConnectionString(Dialect dialect) const override {
    return "Provider=Stockbook.Desktop;Cache=No;Data Source=" + path_ + ";Tables=*" +
           (dialect == Dialect::kServer ? ";Dialect=SQL" : "");
  }
  bool Change(const std::string&) override { return false; }

 private:
  TestFolder folder_;
  std::string path_;
};

std::unique_ptr<BackEnd> MakeDesktop(const DatabaseFile& file, const std::string& name, std::string& missing) {
  if (!IsBuilt("Stockbook.Desktop", missing)) return nullptr;
  // Made for another inventory than the kept one.
  missing = "desktop files cannot be written here";
  sqlite3_stmt* kept = nullptr;
  const bool is_kept = sqlite3_prepare_v2(file.handle(), "SELECT 1 FROM kept", -1, &kept, nullptr) == SQLITE_OK;
  sqlite3_finalize(kept);
  return is_kept ? std::make_unique<DesktopBackEnd>(name) : nullptr;
}

std::unique_ptr<BackEnd> MakeOlderDesktop(const DatabaseFile& file, std::string& missing) {
  return MakeDesktop(file, "inventory.mdb", missing);
}

std::unique_ptr<BackEnd> MakeNewerDesktop(const DatabaseFile& file, std::string& missing) {
  return MakeDesktop(file, "inventory.accdb", missing);
}

// The tables of a file as whole columns, which are asked for nothing in particular.
class FileColumns : public databases::RowSource {
 public:
  explicit FileColumns(const DatabaseFile& file) : file_(file.DesktopString()) {}
  void Periods(const Take<std::string>&) override {}
  void Receipts(const databases::RowFilter&, const TakeLine&) override {}
  void Issues(const databases::RowFilter&, const TakeLine&) override {}
  std::optional<std::vector<platform::Field>> Columns(std::string_view table, const databases::RowFilter&) override {
    return file_.Execute("SELECT * FROM " + std::string(table)).TakeAll();
  }
  void BeginMoment() override { moment_ = file_.ReadAsOfOneMoment(); }
  void EndMoment() override { moment_.reset(); }

 private:
  databases::EmbeddedConnection file_;
  std::unique_ptr<platform::Moment> moment_;
};

constexpr std::string_view kRows = "Rows";
constexpr std::string_view kRowColumns = "RowColumns";

// Own objects that are as the tables of a copy of the file.
class RowsBackEnd : public BackEnd {
 public:
  RowsBackEnd(const DatabaseFile& file, std::string_view kind) : kind_(kind) { CopyInto(copy_, file.handle()); }
  std::string ConnectionString(Dialect dialect) const override {
    return std::string(kProvider) + ";Tables=*" + (dialect == Dialect::kServer ? ";Dialect=SQL" : "");
  }
  std::unique_ptr<platform::Connection> Open(const std::string& connection_string) const override {
    const std::string_view settings = std::string_view(connection_string).substr(kProvider.size());
    return databases::OpenRowSource(Source(), settings.substr(settings.empty() ? 0 : 1));
  }
  bool Change(const std::string& sql) override {
    copy_.Run(sql);
    *objects_ = ReadPlainInventory(copy_.path());
    return true;
  }

 private:
  static constexpr std::string_view kProvider = "Provider=Stockbook.Rows";

  std::shared_ptr<databases::RowSource> Source() const {
    if (kind_ == kRowColumns) return std::make_shared<FileColumns>(copy_);
    *objects_ = ReadPlainInventory(copy_.path());
    return std::make_shared<PlainSource>(objects_);
  }

  std::string_view kind_;
  DatabaseFile copy_;
  std::shared_ptr<PlainInventory> objects_ = std::make_shared<PlainInventory>();
};

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
           ";Database=postgres;UID=tester;ConnSettings=SET search_path TO " + schema_ + tables +
           ";AmpersandJoins=0;Description=" + mark;
  }
  bool Change(const std::string& sql) override {
    server_.Run("SET search_path TO " + schema_ + ";" + sql);
    return true;
  }

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

constexpr Kind kKinds[] = {{"Embedded", MakeEmbedded},         {"OlderDesktop", MakeOlderDesktop},
                           {"NewerDesktop", MakeNewerDesktop}, {"SqliteByOdbc", MakeSqliteByOdbc},
                           {"Postgres", MakePostgres},         {"PostgresByOdbc", MakePostgresByOdbc}};

}  // namespace

std::unique_ptr<platform::Connection> BackEnd::Open(const std::string& connection_string) const {
  return databases::OpenConnection(connection_string);
}

bool FillAsKept(const std::string& kind, DatabaseFile& file) {
  if (!kind.ends_with("Desktop") || !std::filesystem::exists(kKept / "inventory.db.xz")) return false;
  const TestFolder folder;
  const std::string path = folder.PathOf("inventory.db");
  Unpack("inventory.db", path);
  sqlite3* kept = nullptr;
  sqlite3_open_v2(path.c_str(), &kept, SQLITE_OPEN_READONLY, nullptr);
  CopyInto(file, kept);
  sqlite3_close(kept);
  file.Run("CREATE TABLE kept(k)");
  return true;
}

std::vector<std::string> BackEndKinds() {
  std::vector<std::string> names;
  for (const Kind& kind : kKinds) names.emplace_back(kind.name);
  return names;
}

std::vector<std::string> InventoryKinds() {
  std::vector<std::string> names = BackEndKinds();
  names.emplace_back(kRows);
  names.emplace_back(kRowColumns);
  return names;
}

bool IsOfRows(const std::string& kind) { return kind == kRows || kind == kRowColumns; }

std::unique_ptr<BackEnd> MakeBackEnd(const std::string& kind, const DatabaseFile& file, std::string& missing) {
  if (IsOfRows(kind)) return std::make_unique<RowsBackEnd>(file, kind == kRows ? kRows : kRowColumns);
  for (const Kind& candidate : kKinds) {
    if (candidate.name == kind) return candidate.make(file, missing);
  }
  missing = "there is no such kind";
  return nullptr;
}

}  // namespace stockbook::testing
