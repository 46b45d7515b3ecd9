// SPDX-License-Identifier: MIT
#include "stockbook/window/coverage_label.h"

#include "qt/sheet/tool_tip.h"
#include "stockbook/platform/error.h"
#include "stockbook/window/coverage_words.h"

namespace stockbook::app {

CoverageLabel::CoverageLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  hide();
}

void CoverageLabel::Tell(platform::Connection& connection, const JournalOptions& options) {
  JournalCoverage coverage;
  try {
    coverage = ReadCoverage(connection, options);
  } catch (const platform::Error&) {
  }
  const QString sentence = CoverageSentence(coverage);
  setText(ShortCoverage(coverage));
  setToolTip(qt::PlainToolTip(sentence));
  setAccessibleDescription(sentence);
  setVisible(!text().isEmpty());
}

}  // namespace stockbook::app
