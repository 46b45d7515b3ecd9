// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>
#include <QString>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "stockbook/control/stockbook.h"

namespace stockbook::qt {

// How the user has arranged the journals: of each type the order of the columns, how many are frozen, and the widths,
// heights and visibility that are not those laid out, by the control, the host and what was put back. Every load lays
// columns and rows out anew; once Restore was called, what was arranged before a load is put back: what is hidden and
// shown before the host hears of the layout, so that it has the last word, and the rest when the load has laid its
// rows.
class KeptLayouts {
 public:
  explicit KeptLayouts(control::Stockbook& stockbook);

  // Both by keys in the group, an empty one being none. A value that means nothing counts as not saved.
  void Save(QSettings& settings, const QString& group);
  void Restore(const QSettings& settings, const QString& group);

  // What happens to the control, as soon as it does.
  void BeforeOtherType();
  void BeforeLoad();
  void AfterLoaded();
  // Also of a load that failed or was cancelled.
  void LoadEnded();
  // `raise` lets the host hear of the layout.
  void AfterFormatted(const std::function<void()>& raise);
  // `change` gives the grid another font, which heights follow that the user has not changed.
  void ChangeFont(const std::function<void()>& change);
  // `change` gives or takes a right, which hides columns at once.
  void ChangeRight(const std::function<void()>& change);

 private:
  struct Column {
    std::string key;
    std::optional<int> width_twips;  // where it is not that of the layout
    std::optional<bool> hidden;      // where the user has hidden or shown it
  };
  struct LaidOut {
    int width_twips = 0;
    bool hidden = false;
  };
  // In twips; 0 where there is no such row, or where the user has not changed it.
  struct Heights {
    int title = 0;
    int line = 0;
    int sum = 0;
  };
  struct Layout {
    std::vector<Column> columns;
    int frozen = 0;
    Heights heights;
  };

  static std::optional<Layout> Read(const QSettings& settings, const QString& prefix, int type);
  static void Write(QSettings& settings, const QString& prefix, int type, const Layout& layout);
  int Type() const { return static_cast<int>(stockbook_.JournalType()); }
  std::map<std::string, LaidOut> Shown() const;
  bool IsLaidOut() const;
  bool IsWithheld(const std::string& key) const;
  Heights ReadHeights() const;
  // Of what is not known better it takes what was `known`, if anything.
  Layout ReadLayout(const Layout* known) const;
  void Learn();
  void PutBack();
  enum class PutBackWhat { kHidden, kHiddenAndShown };
  void PutBackVisibility(PutBackWhat what);
  void PutBackColumns(const Layout& layout);
  void PutBackHeights(const Heights& heights);

  control::Stockbook& stockbook_;
  bool keeping_ = false;
  bool loading_ = false;
  std::optional<int> arranged_;  // of this type is what the grid shows the user's arrangement
  std::map<int, Layout> layouts_;
  Heights heights_laid_out_;
  std::map<std::string, LaidOut> columns_laid_out_;  // by their keys
};

}  // namespace stockbook::qt
