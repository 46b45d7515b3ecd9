// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QWidget>

#include "stockbook/qt/beside.h"

namespace stockbook::app {

// A bar that is there while something is read that takes its time: how many rows have been read, and a button that
// cancels it, as Esc does. Borrows what works.
class WorkBar : public QWidget {
  Q_OBJECT

 public:
  explicit WorkBar(qt::Beside& beside, QWidget* parent = nullptr);

  QString Text() const { return text_->text(); }

 private:
  void Begin();
  void Show(qulonglong rows);

  QLabel* text_;
  QProgressBar* progress_;
  QPushButton* cancel_;
};

}  // namespace stockbook::app
