// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>
#include <string>

#include "stockbook/command/journal_options.h"
#include "stockbook/window/column_memory.h"
#include "stockbook/window/reading_place.h"

namespace stockbook::app {

// What the window remembers between runs, in the user's settings and never in an inventory: things of the window, of an
// inventory, and of the journals of one type in an inventory. An inventory is told by a digest of its path or of its
// name at a server, so that no password and no path is in the keys. The settings outlive this.
class WindowMemory {
 public:
  explicit WindowMemory(QSettings& settings) : settings_(settings) {}

  QSettings& settings() { return settings_; }

  QVariant OfWindow(const QString& name) const { return settings_.value(QStringLiteral("window/") + name); }
  void SetOfWindow(const QString& name, const QVariant& value);

  // The inventory of everything below; nothing is remembered of an empty name.
  void SetInventory(const std::string& name);
  QString InventoryGroup() const { return group_; }
  std::optional<JournalOptions> LastSubject() const;
  void SetLastSubject(const JournalOptions& options);

  // Of the journals of one type, under any name.
  QVariant OfJournals(int journal_type, const QString& name) const;
  void SetOfJournals(int journal_type, const QString& name, const QVariant& value);
  std::optional<ColumnChanges> Columns(int journal_type) const;
  void SetColumns(int journal_type, const ColumnChanges& changes);

  // Where the journal of the options was left; the last ones that were read of each type are kept.
  std::optional<KeptPlace> Place(const JournalOptions& options) const;
  void SetPlace(const JournalOptions& options, const KeptPlace& place);

  // Forgets all of it, whatever inventory it is of.
  void Forget();

 private:
  void Put(const QString& key, const QVariant& value);
  QString KeyOfJournals(int journal_type, const QString& name) const;

  QSettings& settings_;
  QString group_;
};

}  // namespace stockbook::app
