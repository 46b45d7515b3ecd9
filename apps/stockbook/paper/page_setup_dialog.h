// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QSpinBox>
#include <array>

#include "stockbook/paper/journal_paper.h"

namespace stockbook::app {

// Asks how journals are to stand on paper: its size, which way up, the margins, how many pages wide, and whether pages
// tell what they carry. Every field has a label and a key.
class PageSetupDialog : public QDialog {
  Q_OBJECT

 public:
  explicit PageSetupDialog(const PaperChoice& choice, QWidget* parent = nullptr);

  PaperChoice Choice() const;

 private:
  void AddMargins(QFormLayout& form);
  void Show(const PaperChoice& choice);

  QComboBox* size_;
  QComboBox* orientation_;
  std::array<QDoubleSpinBox*, 4> margins_{};  // left, top, right, bottom
  QSpinBox* pages_wide_;
  QCheckBox* carrying_;
};

}  // namespace stockbook::app
