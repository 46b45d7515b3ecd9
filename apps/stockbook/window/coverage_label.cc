// SPDX-License-Identifier: MIT
#include "stockbook/window/coverage_label.h"

#include "platform/error.h"
#include "qt/text.h"
#include "qt/tool_tip.h"
#include "stockbook/heading/journal_coverage.h"

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
  const QString sentence = qt::ToQString(coverage.Sentence());
  setText(coverage.IsComplete() ? qt::ToQString(coverage.covers) : qt::ToQString(coverage.Short()));
  setToolTip(qt::PlainToolTip(sentence));
  setAccessibleDescription(sentence);
  setVisible(!text().isEmpty());
}

}  // namespace stockbook::app
