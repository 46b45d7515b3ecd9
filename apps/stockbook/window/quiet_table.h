// SPDX-License-Identifier: MIT
#pragma once

#include <QTableView>

namespace stockbook::app {

// A table whose current line follows something else. A table tells screen readers that the keyboard's focus is at its
// current cell whenever that changes; this one only while it has the focus, and when it gets it.
class QuietTable : public QTableView {
  Q_OBJECT

 public:
  using QTableView::QTableView;

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  void TellFocus();
};

}  // namespace stockbook::app
