// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QWidget>

#include "qt/beside.h"

namespace stockbook::app {

// A bar that is there while something is read that takes its time: how many rows have been read, and a button that
// cancels it, as Esc does. Borrows what works.
class WorkBar : public QWidget {
  Q_OBJECT

 public:
  explicit WorkBar(qt::Beside& beside, QWidget* parent = nullptr);

  // How many rows are to be expected, from the last time; 0 where nobody knows. They are more than a journal has lines.
  void Expect(qulonglong rows) { expected_ = rows; }
  // Those that were read last.
  qulonglong RowsRead() const { return read_; }

 private:
  void Begin();
  void Show(qulonglong rows);

  QLabel* text_;
  QProgressBar* progress_;
  QPushButton* cancel_;
  qulonglong expected_ = 0;
  qulonglong read_ = 0;
};

}  // namespace stockbook::app
