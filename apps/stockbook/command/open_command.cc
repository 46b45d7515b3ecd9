// SPDX-License-Identifier: MIT
#include "stockbook/command/open_command.h"

#include <QSettings>
#include <QStandardPaths>
#include <array>
#include <filesystem>
#include <ostream>
#include <utility>

#include "qt/sheet/text.h"
#include "stockbook/command/database_options.h"
#include "stockbook/command/gui_session.h"
#include "stockbook/platform/error.h"
#include "stockbook/sample/sample_inventory.h"
#include "stockbook/window/host_language.h"
#include "stockbook/window/last_inventory.h"
#include "stockbook/window/main_window.h"

namespace stockbook::app {
namespace {

constexpr std::string_view kUsage = R"(Opens the window.

Usage: stockbook [open] [DB] [JOURNAL] [--language LANG]

  DB   the inventory; .db, .mdb, .accdb or a connection string; without it the file that was opened last, at first the
       sample inventory, made on first use in the user's data folder
  --language LANG   zh or en, for this time; without it as chosen in the window, at first as the desktop

Without JOURNAL it is the one that was last shown of the inventory, at first the material journal of product 1, or of
the first product that has lines. The window is as it was left; what it remembers is in the user's settings. Where the
file that was opened last has gone or cannot be opened the sample comes instead, and a notice names the file.

)";

constexpr std::array<Option, 1> kOpenOptions{{{"language", OptionKind::Value}}};

// The sample inventory in the user's data folder, created now if it does not exist.
std::string SampleDatabase() {
  const std::string folder = qt::FromQString(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
  if (folder.empty())
    throw platform::Error("open", "There is no folder for the user's data; name an inventory to open.");
  const std::filesystem::path path = std::filesystem::path(folder) / "sample.db";
  std::error_code error;
  if (std::filesystem::exists(path, error)) return path.string();
  std::filesystem::create_directories(path.parent_path(), error);
  if (error) throw platform::Error("open", "The folder '" + folder + "' cannot be made: " + error.message() + ".");
  WriteSampleInventory(path.string(), {});
  return path.string();
}

int RunOpen(const std::vector<std::string>& arguments, Terminal& terminal) {
  const CommandLine line = ReadJournalCommand(arguments, kOpenOptions);
  const auto language = line.Choice("language", kLanguageNames);
  const auto options = ReadJournalOptions(line);
  DatabaseSource source;
  if (!line.positionals().empty()) source = ReadSource(line, line.positionals().front(), "open", terminal);
  GuiSession session(GuiNeed::kWindow);
  QSettings settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("stockbook"),
                     QStringLiteral("stockbook"));
  // What is asked for holds once; what was chosen in the window is remembered.
  const auto chosen = language ? LanguageNamed(*language) : RememberedLanguage(settings);
  session.Speak(chosen.value_or(LanguageOfDesktop()));
  MainWindow window;
  window.Remember(settings);
  if (line.positionals().empty()) {
    OpenLastInventory(window, SampleDatabase);
  } else {
    window.OpenDatabase(std::move(source), window.AskInDialog());
  }
  window.show();
  // A long load is read beside the window, which shows its progress.
  window.LoadOnceRunning(options);
  return session.Run();
}

}  // namespace

Command OpenCommand() { return {"open", "Open the window on an inventory", JournalCommandUsage(kUsage), RunOpen}; }

}  // namespace stockbook::app
