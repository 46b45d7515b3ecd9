// SPDX-License-Identifier: MIT
#include "stockbook/window/password_question.h"

#include <QInputDialog>
#include <QLineEdit>

#include "qt/sheet/text.h"
#include "stockbook/window/host_translator.h"

namespace stockbook::app {

std::optional<std::string> AskForPassword(QWidget& window, const std::string& database) {
  bool accepted = false;
  const QString password =
      QInputDialog::getText(&window, HostText("密码"), HostText("“%1”的密码：").arg(qt::ToQString(database)),
                            QLineEdit::Password, {}, &accepted);
  if (!accepted) return std::nullopt;
  return qt::FromQString(password);
}

}  // namespace stockbook::app
