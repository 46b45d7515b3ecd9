// SPDX-License-Identifier: MIT
#include "stockbook/paper/paper_progress.h"

#include <QCoreApplication>
#include <climits>

namespace stockbook::app {
namespace {

// Cancelling is noticed within this time and that of a page.
constexpr int kTellingMs = 50;

}  // namespace

PaperProgress::PaperProgress(QWidget* parent, int patience_ms)
    : patience_ms_(patience_ms), dialog_(tr("正在排版…"), tr("取消"), 0, 100, parent) {
  dialog_.setWindowTitle(tr("输出"));
  dialog_.setWindowModality(Qt::WindowModal);
  dialog_.setAutoReset(false);
  dialog_.setAutoClose(false);
  // It is shown here and never by itself.
  dialog_.setMinimumDuration(INT_MAX);
  since_begin_.start();
  since_told_.start();
}

bool PaperProgress::Tell(int done, int all) {
  if (since_begin_.elapsed() < patience_ms_) return true;
  if (dialog_.isVisible() && since_told_.elapsed() < kTellingMs) return !dialog_.wasCanceled();
  since_told_.restart();
  dialog_.setMaximum(all);
  dialog_.setLabelText(tr("正在写第 %1 页，共 %2 页").arg(done).arg(all));
  dialog_.setValue(done);
  if (!dialog_.isVisible()) dialog_.show();
  QCoreApplication::processEvents();
  return !dialog_.wasCanceled();
}

qt::PageProgress PaperProgress::Telling() {
  return [this](int done, int all) { return Tell(done, all); };
}

}  // namespace stockbook::app
