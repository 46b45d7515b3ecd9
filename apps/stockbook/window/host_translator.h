// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTranslator>
#include <string>

namespace stockbook::app {

// The host's texts in English. The texts in the program are Chinese, and a text means the same wherever it stands; so
// what translates them asks for the text and not for the class that says it, and a text that moves stays translated.
class HostTranslator : public QTranslator {
 public:
  // False in a program that was built without the English texts.
  bool LoadEnglish();

  QString translate(const char* context, const char* source, const char* disambiguation = nullptr,
                    int n = -1) const override;
};

// A text of the host in the user's language, where there is no class to ask with its tr().
QString HostText(const char* chinese);
// The same for words that code without a toolkit has found.
QString HostText(const std::string& chinese);

}  // namespace stockbook::app
