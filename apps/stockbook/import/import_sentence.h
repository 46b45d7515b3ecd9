// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>

#include "stockbook/platform/error.h"

namespace stockbook::app {

// What is said of a table: in English on the command line, in Chinese in the window.
struct ImportSentence {
  std::string english;
  std::string chinese;
};

// A table that cannot be imported, or not as it is, or not written as one. what() is the English sentence.
class TableError : public platform::Error {
 public:
  explicit TableError(ImportSentence sentence)
      : Error("import", sentence.english), chinese_(std::move(sentence.chinese)) {}
  const std::string& chinese() const { return chinese_; }

 private:
  std::string chinese_;
};

}  // namespace stockbook::app
