// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>
#include <QString>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "stockbook/control/stockbook.h"

namespace stockbook::qt {

// How the user has arranged the journals: of each type the order, widths and visibility of the columns, how many are
// frozen, and the heights of rows where they are not those of the font. Every load lays columns and rows out anew; once
// Restore was called, what was arranged before a load is put back when it has laid its rows.
class KeptLayouts {
 public:
  explicit KeptLayouts(control::Stockbook& stockbook) : stockbook_(stockbook) {}

  // Both by keys in the group, an empty one being none. A value that means nothing counts as not saved.
  void Save(QSettings& settings, const QString& group);
  void Restore(const QSettings& settings, const QString& group);

  // What happens to the control, as soon as it does.
  void BeforeOtherType();
  void BeforeLoad();
  void AfterLoaded();
  // Also of a load that failed or was cancelled.
  void LoadEnded();
  // `raise` lets the host hear of the layout; columns that it hides then stay hidden.
  void AfterFormatted(const std::function<void()>& raise);

 private:
  struct Column {
    std::string key;
    std::optional<int> width_twips;  // where it is not that of the layout
    bool hidden = false;
  };
  // In twips; 0 where there is no such row.
  struct Heights {
    int title = 0;
    int line = 0;
    int sum = 0;
    bool operator==(const Heights&) const = default;
  };
  struct Layout {
    std::vector<Column> columns;
    int frozen = 0;
    std::optional<Heights> heights;
  };

  static std::optional<Layout> Read(const QSettings& settings, const QString& prefix, int type);
  static void Write(QSettings& settings, const QString& prefix, int type, const Layout& layout);
  int Type() const { return static_cast<int>(stockbook_.JournalType()); }
  std::set<std::string> HiddenKeys() const;
  std::map<std::string, int> Widths() const;
  bool IsLaidOut() const;
  bool IsWithheld(const std::string& key) const;
  Heights ReadHeights() const;
  Layout ReadLayout() const;
  void Learn();
  void PutBack();
  void PutBackColumns(const Layout& layout);
  void PutBackHeights(const Heights& heights);

  control::Stockbook& stockbook_;
  bool keeping_ = false;
  bool loading_ = false;
  std::optional<int> arranged_;  // of this type is what the grid shows the user's arrangement
  std::map<int, Layout> layouts_;
  Heights laid_out_;                            // by the font
  std::map<std::string, int> widths_laid_out_;  // with what the host made of them
  std::set<std::string> host_hides_;            // when it heard of the last layout
};

}  // namespace stockbook::qt
