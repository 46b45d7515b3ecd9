// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>
#include <string>

namespace stockbook::qt {

// Takes what the toolkit logs while it lives, one at a time: the notices that no slot hears apart from all else.
class LoggedNotices {
 public:
  LoggedNotices() {
    Taken() = {};
    before_ = qInstallMessageHandler(&Take);
  }
  LoggedNotices(const LoggedNotices&) = delete;
  LoggedNotices& operator=(const LoggedNotices&) = delete;
  ~LoggedNotices() { qInstallMessageHandler(before_); }

  const QStringList& Texts() const { return Taken().notices; }
  const QStringList& Others() const { return Taken().others; }

 private:
  struct Lists {
    QStringList notices;
    QStringList others;
  };

  static Lists& Taken() {
    static Lists taken;
    return taken;
  }
  static void Take(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    const bool is_notice =
        type == QtInfoMsg && context.category != nullptr && context.category == std::string("stockbook");
    (is_notice ? Taken().notices : Taken().others).append(text);
  }

  QtMessageHandler before_ = nullptr;
};

}  // namespace stockbook::qt
