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

  // `kind` tells subjects of different tables apart, such as "product" and "customer".
  int Of(const QString& kind, const CatalogEntry& entry) const;
  void Count(const QString& kind, const CatalogEntry& entry);

 private:
  QString KeyOf(const QString& kind, const CatalogEntry& entry) const;

  QSettings* settings_ = nullptr;
  QString group_;
};

}  // namespace stockbook::app
