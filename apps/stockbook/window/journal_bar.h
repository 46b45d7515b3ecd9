// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <memory>

#include "platform/connection.h"
#include "stockbook/command/journal_options.h"
#include "stockbook/window/subject_chooser.h"

namespace stockbook::app {

// The bar for choosing a journal: its type, the product, the second key or a class of it, and what to show.
class JournalBar : public QWidget {
  Q_OBJECT

 public:
  explicit JournalBar(QWidget* parent = nullptr);

  // Fills the choosers from the inventory. Throws platform::Error if its master tables cannot be read.
  void SetInventory(std::shared_ptr<platform::Connection> connection);
  JournalOptions Options() const;
  // Shows the options; a key that the inventory does not have leaves its chooser unchanged.
  void SetOptions(const JournalOptions& options);

 signals:
  void LoadWanted();
  // The inventory could not be read, or lacks the subject; a message for the user.
  void Failed(const QString& message);

 private:
  void FillChoosers();
  void BuildRow();

  std::shared_ptr<platform::Connection> connection_;
  QComboBox* type_;
  QLabel* second_label_;
  SubjectChooser* product_;
  SubjectChooser* second_;
  QCheckBox* quantity2_;
  QCheckBox* tax_;
  QCheckBox* restrict_;
  QPushButton* load_;
};

}  // namespace stockbook::app
