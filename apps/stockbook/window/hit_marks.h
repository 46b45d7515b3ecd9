// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPaintEvent>
#include <vector>

#include "stockbook/sheet/geometry/geometry.h"
#include "stockbook/window/journal_finder.h"

namespace stockbook::app {

// Marks every cell of a hit in view that has one of the words: after the journal has painted a part of itself, the
// marks of that part are painted over it. So the cells' own colours stay what they are, marks scroll with the pixels,
// and hits out of view cost nothing.
class HitMarks : public QObject {
  Q_OBJECT

 public:
  HitMarks(qt::StockbookWidget& stockbook, const JournalFinder& finder);

  void SetShown(bool shown);
  // The marked cells of the view, in the order in which they are painted.
  std::vector<sheet::CellPosition> Cells() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool AreWanted() const;
  // Calls visit(row, column, rectangle) for the marked cells that touch the part of the view, given in its pixels.
  template <typename Visit>
  void ForEachMark(const sheet::Rect& part, Visit visit) const;
  void Paint(const QRect& part);

  qt::StockbookWidget& stockbook_;
  const JournalFinder& finder_;
  bool shown_ = false;
  bool painting_ = false;
};

}  // namespace stockbook::app
