// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "stockbook/platform/connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {

// The SQL that the control sends.
enum class SqlDialect { kDesktop, kServer };

// Asks the user for the password of the database of the name; nothing when there will be none.
using AskPassword = std::function<std::optional<std::string>(const std::string& database)>;

// A database as the user names it: a file, or a connection string (Provider=…). A file that exists is a file, whatever
// its name looks like. The password is kept apart from everything that is shown, and joined to the rest here alone.
class DatabaseSource {
 public:
  DatabaseSource() = default;
  // Throws platform::Error where a connection string cannot be read; the message quotes nothing of it.
  explicit DatabaseSource(const std::string& argument);

  // Whether the text is meant as a connection string: it has an equals sign before any separator of folders and names
  // no file that exists.
  static bool IsConnectionString(std::string_view argument);
  // Whether an argument is a connection string with a password, or one that cannot be read.
  static bool MayHavePassword(std::string_view argument);

  // What titles and messages call it: the file as it was named, or database and server. Never holds a password.
  const std::string& name() const { return name_; }
  // The file that is read, "" for a server.
  const std::string& file() const { return file_; }
  // Whether it is a file that SQLite reads itself.
  bool IsEmbedded() const;
  // Whether the text itself had a password in it.
  bool came_with_password() const { return came_with_password_; }
  // Whether the kind of database may ask for a password: servers and desktop files do.
  bool TakesPassword() const;
  bool HasPassword() const { return came_with_password_ || password_.has_value(); }
  void SetPassword(std::string password) { password_ = std::move(password); }
  // For a command that may take its time: a string that says nothing else gets no time limit.
  void WaitWithoutEnd() { waits_ = true; }
  // The kind, as Provider names it, in lower case; "" for a file that was named by its path.
  std::string Provider() const;

  // The whole string, the password included: for opening, never for showing.
  std::string ConnectionString(SqlDialect dialect = SqlDialect::kDesktop) const;

 private:
  void ReadString(const std::string& text);

  // Once SQLite has said that the file is none of its own.
  bool BecomesDesktopFile(const platform::Error& error);
  friend std::shared_ptr<platform::Connection> OpenInventory(DatabaseSource& source, SqlDialect dialect,
                                                             const AskPassword& ask);

  std::string text_;  // the connection string of what is no file named by its path
  std::string name_;
  std::string file_;
  bool came_with_password_ = false;
  bool waits_ = false;
  bool is_desktop_file_ = false;
  std::optional<std::string> password_;
};

// Opens the inventory read-only. Where the server wants a password and there is none, `ask` is asked, up to three
// times. Throws platform::Error if it cannot be opened or is not an inventory.
std::shared_ptr<platform::Connection> OpenInventory(DatabaseSource& source, SqlDialect dialect = SqlDialect::kDesktop,
                                                    const AskPassword& ask = {});
// The same for a file or a connection string without a password.
std::shared_ptr<platform::Connection> OpenInventory(const std::string& argument,
                                                    SqlDialect dialect = SqlDialect::kDesktop);

}  // namespace stockbook::app
