// SPDX-License-Identifier: MIT
#include "stockbook/databases/providers/open_connection.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "databases/connection_string.h"
#include "stockbook/databases/sqlite/open_embedded.h"
#include "stockbook/platform/error.h"
#ifdef STOCKBOOK_WITH_DESKTOP_FILES
#include "databases/desktop/desktop_connection.h"
#endif
#ifdef STOCKBOOK_WITH_ODBC
#include "stockbook/databases/odbc/odbc_connection.h"
#endif
#ifdef STOCKBOOK_WITH_POSTGRES
#include "stockbook/databases/postgres/postgres_connection.h"
#endif

namespace stockbook::databases {
namespace {

using Open = std::unique_ptr<platform::Connection> (*)(std::string_view connection_string);

// A provider, how it is opened (nullptr where this was built without it), and what it would need.
struct Provider {
  std::string_view name;
  Open open;
  std::string_view needs;
};

#ifdef STOCKBOOK_WITH_DESKTOP_FILES
constexpr Open kOpenDesktop = OpenDesktop;
#else
constexpr Open kOpenDesktop = nullptr;
#endif

#ifdef STOCKBOOK_WITH_POSTGRES
constexpr Open kOpenPostgres = OpenPostgres;
#else
constexpr Open kOpenPostgres = nullptr;
#endif

#ifdef STOCKBOOK_WITH_ODBC
constexpr Open kOpenOdbc = OpenOdbc;
#else
constexpr Open kOpenOdbc = nullptr;
#endif

constexpr std::array<Provider, 4> kProviders = {{
    {"Stockbook.Embedded", OpenEmbedded, ""},
    {"Stockbook.Desktop", kOpenDesktop, "libmdb（软件包 mdbtools-dev）"},
    {"Postgres", kOpenPostgres, "libpq（软件包 libpq-dev）"},
    {"Odbc", kOpenOdbc, "unixODBC（软件包 unixodbc-dev）"},
}};

std::string JoinedNames() {
  std::string names;
  for (const Provider& provider : kProviders) names.append(names.empty() ? "" : "、").append(provider.name);
  return names;
}

}  // namespace

std::unique_ptr<platform::Connection> OpenConnection(std::string_view connection_string) {
  const ConnectionString settings(connection_string);
  const std::string name = settings.Find("Provider").value_or(std::string(kProviders[0].name));
  const auto provider = std::find_if(kProviders.begin(), kProviders.end(), [&](const Provider& candidate) {
    return base::EqualsIgnoringCase(candidate.name, name);
  });
  if (provider == kProviders.end()) {
    throw platform::Error("Open", "不支持的 Provider“" + name + "”，可用 " + JoinedNames());
  }
  if (provider->open == nullptr) {
    throw platform::Error("Open", "此程序编译时没有加入 " + std::string(provider->name) + "，请安装 " +
                                      std::string(provider->needs) + " 后重新编译");
  }
  return provider->open(connection_string);
}

std::vector<std::string> BuiltProviders() {
  std::vector<std::string> names;
  for (const Provider& provider : kProviders) {
    if (provider.open != nullptr) names.emplace_back(provider.name);
  }
  return names;
}

}  // namespace stockbook::databases
