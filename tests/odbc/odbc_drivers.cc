// SPDX-License-Identifier: MIT
#include "odbc/odbc_drivers.h"

#include <filesystem>

namespace stockbook::testing {
namespace {

std::string DriverLibrary(const std::string& name) {
  for (const char* folder : {"/usr/lib/x86_64-linux-gnu/odbc/", "/usr/lib/aarch64-linux-gnu/odbc/", "/usr/lib/odbc/"}) {
    if (std::filesystem::exists(folder + name)) return folder + name;
  }
  return "";
}

}  // namespace

std::string SqliteOdbcDriver() { return DriverLibrary("libsqlite3odbc.so"); }
std::string PostgresOdbcDriver() { return DriverLibrary("psqlodbcw.so"); }
std::string TdsOdbcDriver() { return DriverLibrary("libtdsodbc.so"); }

std::string SqliteOdbcString(const std::string& file, const std::string& more) {
  return "Provider=Odbc;Driver=" + SqliteOdbcDriver() + ";Database=" + file + (more.empty() ? "" : ";" + more);
}

}  // namespace stockbook::testing
