// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <optional>
#include <string>

namespace stockbook::app {

// Asks the user of the window for the password of the database, by a dialog that does not show what is typed; nothing
// if the user gives none.
std::optional<std::string> AskForPassword(QWidget& window, const std::string& database);

}  // namespace stockbook::app
