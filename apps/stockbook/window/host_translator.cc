// SPDX-License-Identifier: MIT
#include "stockbook/window/host_translator.h"

#include <QCoreApplication>

#ifdef STOCKBOOK_SPEAKS_ENGLISH
// The toolkit's macro declares the function outside of all namespaces.
static void PrepareTranslations() { Q_INIT_RESOURCE(stockbook_translations); }
#endif

namespace stockbook::app {
namespace {

// The one context in the file of texts.
constexpr const char* kHostContext = "stockbook";

}  // namespace

bool HostTranslator::LoadEnglish() {
#ifdef STOCKBOOK_SPEAKS_ENGLISH
  PrepareTranslations();
  return load(QStringLiteral(":/stockbook/translations/stockbook_en.qm"));
#else
  return false;
#endif
}

QString HostTranslator::translate(const char*, const char* source, const char* disambiguation, int n) const {
  return QTranslator::translate(kHostContext, source, disambiguation, n);
}

QString HostText(const char* chinese) { return QCoreApplication::translate(kHostContext, chinese); }

QString HostText(const std::string& chinese) { return HostText(chinese.c_str()); }

}  // namespace stockbook::app
