// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>
#include <QString>

#include "stockbook/inventory/inventory_catalog.h"

namespace stockbook::app {

// How often the user has chosen each subject of an inventory, kept in the settings; without settings it counts nothing.
class SubjectUses {
 public:
  // From now on uses are kept in the group of the settings, which outlive this.
  void KeepIn(QSettings* settings, const QString& group);

  // The kinds of subjects, which tell those of different tables apart: products, and by journal type the second keys.
  static QString ProductKind() { return QStringLiteral("product"); }
  static QString SecondKind(int journal_type) { return QStringLiteral("second%1").arg(journal_type); }

  int Of(const QString& kind, const CatalogEntry& entry) const;
  void Count(const QString& kind, const CatalogEntry& entry);

 private:
  QString KeyOf(const QString& kind, const CatalogEntry& entry) const;

  QSettings* settings_ = nullptr;
  QString group_;
};

}  // namespace stockbook::app
