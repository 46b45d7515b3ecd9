// SPDX-License-Identifier: MIT
#include "stockbook/inventory/database_source.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <system_error>
#include <utility>

#include "base/text.h"
#include "databases/connection_string.h"
#include "stockbook/databases/providers/open_connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

constexpr int kMostAttempts = 3;

std::string FirstOf(const databases::ConnectionString& settings, std::initializer_list<const char*> keys) {
  for (const char* key : keys) {
    if (auto value = settings.Find(key); value && !value->empty()) return *std::move(value);
  }
  return {};
}

// "stock@db.example.com", or what else tells one server's database from another.
std::string NameOf(databases::ConnectionString settings) {
  settings.RemovePasswords();
  const std::string database = FirstOf(settings, {"Database", "dbname", "DSN", "Initial Catalog"});
  const std::string server = FirstOf(settings, {"Host", "Server", "hostaddr"});
  if (!database.empty() && !server.empty()) return database + "@" + server;
  if (!database.empty() || !server.empty()) return database + server;
  return settings.Text();
}

// Whatever a desktop database is called, its first page names the engine. Closing a file takes away the locks that
// SQLite has on it in this process, so that this is not for files that may be SQLite's.
bool IsDesktopFile(const std::string& file) {
  constexpr size_t kSignatureAt = 4;
  constexpr size_t kSignatureBytes = 15;
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(file, ignored)) return false;
  std::array<char, kSignatureAt + kSignatureBytes> front{};
  std::ifstream stream(file, std::ios::binary);
  if (!stream.read(front.data(), front.size())) return false;
  const std::string_view signature(front.data() + kSignatureAt, kSignatureBytes);
  return signature == "Standard Jet DB" || signature == "Standard ACE DB";
}

// What a server answers to whoever has no or a wrong password: invalid authorization, by the standard.
bool WantsPassword(const platform::Error& error) { return error.sql_state().starts_with("28"); }

}  // namespace

DatabaseSource::DatabaseSource(const std::string& argument) {
  if (IsConnectionString(argument)) {
    ReadString(argument);
  } else {
    file_ = name_ = argument;
    is_desktop_file_ = (argument.ends_with(".mdb") || argument.ends_with(".accdb")) && IsDesktopFile(argument);
  }
}

bool DatabaseSource::IsConnectionString(std::string_view argument) {
  const size_t equals = argument.find('=');
  if (equals == std::string_view::npos || argument.substr(0, equals).find('/') != std::string_view::npos) return false;
  std::error_code ignored;
  return !std::filesystem::exists(std::filesystem::path(argument), ignored);
}

bool DatabaseSource::MayHavePassword(std::string_view argument) {
  if (!IsConnectionString(argument)) return false;
  try {
    return databases::ConnectionString(argument).RemovePasswords();
  } catch (const platform::Error&) {
    return true;
  }
}

void DatabaseSource::ReadString(const std::string& text) {
  databases::ConnectionString settings(text);
  text_ = text;
  // Of the providers here, files are what has a Data Source and is no server.
  if (Provider().empty() || Provider().starts_with("stockbook.")) file_ = settings.Find("Data Source").value_or("");
  name_ = file_.empty() ? NameOf(settings) : file_;
  came_with_password_ = settings.RemovePasswords();
}

std::string DatabaseSource::Provider() const {
  return base::AsciiLower(databases::ConnectionString(text_).Find("Provider").value_or(""));
}

bool DatabaseSource::IsEmbedded() const {
  const auto provider = databases::ConnectionString(ConnectionString()).Find("Provider");
  return !provider || base::EqualsIgnoringCase(*provider, "Stockbook.Embedded");
}

bool DatabaseSource::TakesPassword() const { return !IsEmbedded(); }

std::string DatabaseSource::ConnectionString(SqlDialect dialect) const {
  databases::ConnectionString settings(text_);
  if (text_.empty()) {
    settings.Set("Provider", is_desktop_file_ ? "Stockbook.Desktop" : "Stockbook.Embedded");
    if (dialect == SqlDialect::kServer) settings.Set("Dialect", "SQL");
    settings.Set("Data Source", file_);
  }
  if (password_) settings.Set(Provider() == "odbc" ? "PWD" : "Password", *password_);
  if (waits_ && !settings.Find("Timeout")) settings.Set("Timeout", "0");
  return password_ || waits_ || text_.empty() ? settings.Text() : text_;
}

bool DatabaseSource::BecomesDesktopFile(const platform::Error& error) {
  constexpr int kNoDatabase = 26;  // SQLITE_NOTADB
  if (is_desktop_file_ || !text_.empty() || error.native_code() != kNoDatabase) return false;
  return is_desktop_file_ = IsDesktopFile(file_);
}

std::shared_ptr<platform::Connection> OpenInventory(DatabaseSource& source, SqlDialect dialect,
                                                    const AskPassword& ask) {
  const bool had_password = source.HasPassword();
  for (int attempt = 0;; ++attempt) {
    try {
      return databases::OpenConnection(source.ConnectionString(dialect));
    } catch (const platform::Error& error) {
      if (source.BecomesDesktopFile(error)) continue;
      if (!ask || had_password || !source.TakesPassword() || attempt >= kMostAttempts || !WantsPassword(error)) throw;
      auto password = ask(source.name());
      if (!password) throw;
      source.SetPassword(*std::move(password));
    }
  }
}

std::shared_ptr<platform::Connection> OpenInventory(const std::string& argument, SqlDialect dialect) {
  DatabaseSource source(argument);
  return OpenInventory(source, dialect);
}

}  // namespace stockbook::app
