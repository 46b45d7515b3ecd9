// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QWidget>
#include <memory>
#include <vector>

#include "stockbook/command/journal_options.h"
#include "stockbook/platform/connection.h"
#include "stockbook/window/subject_chooser.h"
#include "stockbook/window/subject_uses.h"

namespace stockbook::app {

// The bar for choosing a journal: its type, the product, the second key or a class of it, and what to show. Where it
// has not the width for all of them, the boxes go into a menu, and then the second key into a row of its own.
class JournalBar : public QWidget {
  Q_OBJECT

 public:
  enum class Fold { kNone, kBoxes, kTwoRows };

  explicit JournalBar(QWidget* parent = nullptr);

  // Fills the choosers from the inventory. Throws platform::Error if its master tables cannot be read.
  void SetInventory(std::shared_ptr<platform::Connection> connection);
  // The same inventory has other subjects now.
  void ReadAgain();
  // Subjects that were chosen most often are found first; it outlives the bar.
  void SetUses(SubjectUses* uses);
  JournalOptions Options() const;
  // Shows the options. A key that the inventory does not have is shown as such.
  void SetOptions(const JournalOptions& options);
  // Takes what somebody has typed into the choosers and not yet entered.
  void TakeTypedTexts();
  Fold fold() const { return fold_; }

  QSize minimumSizeHint() const override;

 signals:
  void LoadWanted();
  // The inventory could not be read, or lacks the subject; a message for the user.
  void Failed(const QString& message);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  // What there is to choose from, without "all products".
  struct Subjects {
    std::vector<CatalogEntry> products;
    std::vector<CatalogEntry> seconds;
  };

  static Subjects Read(platform::Connection& connection, base::tqJournalTypeContants type);
  bool FillChoosers();
  void Fill(Subjects subjects);
  SubjectChooser::Uses UsesOf(const QString& kind) const;
  void NameType();
  // The keys go through the fields as the eye does.
  void OrderFields();
  void BuildBoxes();
  void BuildMoreMenu();
  void ConnectParts();
  void Arrange(Fold fold);
  int WidthOf(Fold fold) const;
  void FollowWidth();
  void CountUses() const;
  base::tqJournalTypeContants Type() const;

  std::shared_ptr<platform::Connection> connection_;
  SubjectUses* uses_ = nullptr;
  QGridLayout* rows_;
  QComboBox* type_;
  int filled_type_ = 0;  // the choosers are those of this type
  Subjects filled_;      // of that type, as they were read
  int left_type_ = -1;   // the type before, -1 for none of this inventory
  Subjects left_;
  QLabel* product_label_;
  QLabel* second_label_;
  SubjectChooser* product_;
  SubjectChooser* second_;
  QWidget* boxes_;
  QCheckBox* quantity2_;
  QCheckBox* tax_;
  QCheckBox* restrict_;
  QToolButton* more_;
  QPushButton* load_;
  Fold fold_ = Fold::kNone;
};

}  // namespace stockbook::app
