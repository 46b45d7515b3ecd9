// SPDX-License-Identifier: MIT
#include "stockbook/command/gui_session.h"

#include <QFont>
#include <QLibraryInfo>
#include <QLocale>
#include <QString>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "qt/sheet/text.h"
#include "stockbook/command/command_line_dispatch.h"
#include "stockbook/command/program_end.h"
#include "stockbook/qt/fonts.h"
#include "stockbook/window/screen_fit.h"
#include "stockbook/window/window_style.h"

namespace stockbook::app {
namespace {

constexpr const char* kNoDisplay =
    "There is no display to open a window on; set DISPLAY, or use 'stockbook render' for a picture of it.";

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

bool NamesADisplay() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
  return IsSet("QT_QPA_PLATFORM") || IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY");
#else
  return true;
#endif
}

[[noreturn]] void EndWith(const std::string& sentence) {
  RemoveUnfinishedFiles();
  std::fprintf(stderr, "stockbook: %s\n", sentence.c_str());
  std::_Exit(kExitFailed);
}

// If a display is set but does not respond, the toolkit ends the program; this is the last chance to print an error.
void SayFatalOnly(QtMsgType type, const QMessageLogContext& /*context*/, const QString& /*message*/) {
  if (type == QtFatalMsg) EndWith(kNoDisplay);
}

// While a picture is made, an error of the system means that there is none: without memory for a thread, say, the
// toolkit reports that and waits for the thread for ever.
void EndAtSystemErrors(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (type == QtCriticalMsg) {
    EndWith("The system is out of memory or of other means (" + OneLine(message.toStdString()) +
            "); close other programs or take less data.");
  }
  SayFatalOnly(type, context, message);
}

// The libraries below the toolkit do not all survive a lack of memory, so there must be some to start with.
void AskForMemory() {
  constexpr size_t kLeast = size_t{64} << 20;
  ::operator delete(::operator new(kLeast));
}

}  // namespace

GuiSession::GuiSession(GuiNeed need, double scale) : arguments_{program_.data(), nullptr} {
  if (QCoreApplication::instance() != nullptr) return;
  if (need == GuiNeed::kWindow && !NamesADisplay()) throw NoDisplay(kNoDisplay);
  if (need == GuiNeed::kPicture) {
    AskForMemory();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Its event loop is not needed, and it ends the program when it is out of memory.
    qputenv("QT_NO_GLIB", "1");
    qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
  }
  qInstallMessageHandler(SayFatalOnly);
  application_ = std::make_unique<QApplication>(argument_count_, arguments_.data());
  qInstallMessageHandler(need == GuiNeed::kPicture ? EndAtSystemErrors : nullptr);
  QApplication::setApplicationName(QStringLiteral("stockbook"));
  QApplication::setApplicationDisplayName(HostText("库存台账"));
  const QString translations = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  if (translator_.load(QLocale(QLocale::Chinese, QLocale::China), QStringLiteral("qtbase"), QStringLiteral("_"),
                       translations)) {
    QCoreApplication::installTranslator(&translator_);
  }
  QApplication::setStyle(new WindowStyle);
  new ScreenFit(*application_);
  QFont font = QApplication::font();
  font.setFamily(qt::ToQString(qt::DefaultGridFont().name));
  QApplication::setFont(font);
}

GuiSession::~GuiSession() {
  if (application_ == nullptr) return;
  application_.reset();
  qInstallMessageHandler(nullptr);
}

void GuiSession::Speak(HostLanguage language) {
  if (language != HostLanguage::kEnglish || !host_texts_.LoadEnglish()) return;
  // The toolkit itself is written in English.
  QCoreApplication::removeTranslator(&translator_);
  QCoreApplication::installTranslator(&host_texts_);
  QApplication::setApplicationDisplayName(HostText("库存台账"));
}

int GuiSession::Run() { return QApplication::exec(); }

}  // namespace stockbook::app
