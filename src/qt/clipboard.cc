// SPDX-License-Identifier: MIT
#include "qt/clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

#include "qt/text.h"

namespace stockbook::qt {

void QtClipboard::Clear() { QGuiApplication::clipboard()->clear(); }

void QtClipboard::SetText(std::string_view text) { QGuiApplication::clipboard()->setText(ToQString(text)); }

}  // namespace stockbook::qt
