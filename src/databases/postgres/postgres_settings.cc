// SPDX-License-Identifier: MIT
#include "databases/postgres/postgres_settings.h"

#include <algorithm>
#include <array>
#include <memory>

#include "base/text.h"
#include "databases/connection_string.h"
#include "databases/execution/time_limit.h"
#include "databases/postgres/client_library.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

constexpr std::string_view kPostgresProvider = "Postgres";

struct Spelling {
  std::string_view ours;
  std::string_view parameter;  // libpq's name
};
// As other drivers spell what libpq calls differently.
constexpr std::array<Spelling, 10> kSpellings = {{{"Server", "host"},
                                                  {"Data Source", "host"},
                                                  {"Database", "dbname"},
                                                  {"Initial Catalog", "dbname"},
                                                  {"Uid", "user"},
                                                  {"User Id", "user"},
                                                  {"Username", "user"},
                                                  {"User Name", "user"},
                                                  {"PWD", "password"},
                                                  {"SSL Mode", "sslmode"}}};
// Read here, and nothing of libpq's. "Dialect" is where a string may say "SQL".
constexpr std::array<std::string_view, 5> kOwnKeys = {"provider", "schema", "timeout", "tables", "dialect"};
// What would change how the program talks with the server.
constexpr std::array<std::string_view, 2> kFixedKeys = {"client_encoding", "replication"};

std::string ParameterOf(std::string_view key) {
  for (const Spelling& spelling : kSpellings) {
    if (base::EqualsIgnoringCase(spelling.ours, key)) return std::string(spelling.parameter);
  }
  return base::AsciiLower(key);
}

template <typename Names>
bool Holds(const Names& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

struct KnownFreer {
  void operator()(PQconninfoOption* known) const { PQconninfoFree(known); }
};

bool IsParameterOfLibpq(const std::string& name) {
  const std::unique_ptr<PQconninfoOption, KnownFreer> known(PQconndefaults());
  if (!known) throw platform::Error("Open", "内存不足，无法连接数据库", 0, platform::ErrorKind::kMemory);
  for (const PQconninfoOption* option = known.get(); option->keyword != nullptr; ++option) {
    if (name == option->keyword) return true;
  }
  return false;
}

void CheckSetting(const std::string& key, const std::string& parameter, const std::string& value) {
  if (value.find('\0') != std::string::npos || key.find('\0') != std::string::npos) {
    throw platform::Error("Open", "连接字符串的“" + base::CleanUtf8(key) + "”含有空字符（NUL），请去掉它");
  }
  if (Holds(kFixedKeys, parameter)) throw platform::Error("Open", "连接字符串不能规定“" + key + "”，请去掉它");
  if (!IsParameterOfLibpq(parameter)) {
    throw platform::Error("Open", "连接字符串的“" + key + "”不是 PostgreSQL 连接的设置，请改正它的名称或去掉它");
  }
}

// A later setting takes the place of an earlier one.
void SetParameter(PostgresSettings& settings, const std::string& name, const std::string& value) {
  const auto same = [&](const auto& parameter) { return parameter.first == name; };
  const auto found = std::find_if(settings.parameters.begin(), settings.parameters.end(), same);
  if (found == settings.parameters.end()) {
    settings.parameters.emplace_back(name, value);
  } else {
    found->second = value;
  }
}

std::string ValueOf(const PostgresSettings& settings, std::string_view name) {
  for (const auto& [key, value] : settings.parameters) {
    if (key == name) return value;
  }
  return {};
}

// As people write where a server is: localhost:5432/shop.
std::string ServerText(const PostgresSettings& settings) {
  std::string text = ValueOf(settings, "host");
  if (text.empty()) text = ValueOf(settings, "hostaddr");
  if (text.empty()) text = "localhost";
  if (const std::string port = ValueOf(settings, "port"); !port.empty()) text += ":" + port;
  if (const std::string database = ValueOf(settings, "dbname"); !database.empty()) text += "/" + database;
  return text;
}

}  // namespace

PostgresSettings ReadPostgresSettings(std::string_view connection_string) {
  const ConnectionString text(connection_string);
  const std::string provider = text.Find("Provider").value_or("");
  if (!base::EqualsIgnoringCase(provider, kPostgresProvider)) {
    throw platform::Error("Open",
                          "不支持的 Provider“" + provider + "”，PostgreSQL 为 " + std::string(kPostgresProvider));
  }
  PostgresSettings settings;
  for (const auto& [key, value] : text.settings()) {
    const std::string parameter = ParameterOf(key);
    if (Holds(kOwnKeys, parameter)) continue;
    CheckSetting(key, parameter, value);
    SetParameter(settings, parameter, value);
  }
  settings.schema = text.Find("Schema").value_or("");
  if (settings.schema.find('\0') != std::string::npos) {
    throw platform::Error("Open", "连接字符串的 Schema 含有空字符（NUL），请去掉它");
  }
  settings.server = ServerText(settings);
  settings.shown = WithoutPassword(connection_string);
  settings.time_limit = ReadTimeLimit(text);
  settings.tables = ReadableTables(text.Find("Tables").value_or(""));
  return settings;
}

}  // namespace stockbook::databases
