// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "databases/sqlite/embedded_settings.h"

namespace stockbook::databases {

// Where the copy that the embedded engine reads is kept: for the next opening, or for one connection alone.
enum class CopyKeeping { kForTheNextOpening, kForOneConnection };

// What the connection string of a desktop database file says: Data Source=FILE, Timeout, Tables and Threads as
// EmbeddedSettings tells, where the time limit holds for copying as well; Password=TEXT; Cache=No for a copy that
// nobody else finds.
struct DesktopSettings {
  EmbeddedSettings embedded;  // its file is the desktop file
  std::string password;
  CopyKeeping keeping = CopyKeeping::kForTheNextOpening;
};

// Throws platform::Error when something is missing or means nothing.
DesktopSettings ReadDesktopSettings(std::string_view connection_string);

}  // namespace stockbook::databases
