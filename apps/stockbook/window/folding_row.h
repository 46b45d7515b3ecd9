// SPDX-License-Identifier: MIT
#pragma once

#include <QGridLayout>
#include <QHBoxLayout>
#include <QMargins>
#include <QWidget>

namespace stockbook::app {

// The row of a bar with its parts side by side: a head, a tail and, at the right end, what closes the bar. Where the
// window is too narrow, the tail goes into a second row, so that a bar that opens never makes its window wider than the
// screen.
class FoldingRow : public QWidget {
  Q_OBJECT

 public:
  explicit FoldingRow(const QMargins& margins, QWidget* parent = nullptr);

  // To be filled from left to right, the head first; that is the order of the tab key, too.
  QHBoxLayout& head() { return *head_; }
  QHBoxLayout& tail() { return *tail_; }
  void SetEnd(QWidget* end);
  // What stands behind the tail while that is in the same row, and in the first one always. Called before SetEnd.
  void SetNote(QWidget* note) { note_ = note; }
  bool IsFolded() const { return folded_; }
  QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void Arrange(bool folded);
  void FollowWidth();

  QGridLayout* grid_;
  QHBoxLayout* head_;
  QHBoxLayout* tail_;
  QWidget* note_ = nullptr;
  int note_width_ = 0;  // the widest so far: a row that folds with every other note would be restless
  QWidget* end_ = nullptr;
  bool folded_ = false;
};

}  // namespace stockbook::app
