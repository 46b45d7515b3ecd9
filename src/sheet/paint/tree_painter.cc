// SPDX-License-Identifier: MIT
#include "sheet/paint/tree_painter.h"

#include <algorithm>

namespace stockbook::sheet {
namespace {

using platform::Colour;
using platform::GridColour;
using platform::OutlineBarStyle;
using platform::PictureRef;

bool HasLines(OutlineBarStyle style) {
  return style != OutlineBarStyle::kNone && style != OutlineBarStyle::kSymbols &&
         style != OutlineBarStyle::kSymbolsLeaf;
}
// Complete trees have a branch to every line, simple ones have only the trunk.
bool HasBranches(OutlineBarStyle style) {
  return style == OutlineBarStyle::kComplete || style == OutlineBarStyle::kCompleteLeaf;
}
bool HasLeafSigns(OutlineBarStyle style) {
  return style == OutlineBarStyle::kCompleteLeaf || style == OutlineBarStyle::kSimpleLeaf ||
         style == OutlineBarStyle::kSymbolsLeaf;
}

class TreePainter {
 public:
  TreePainter(const Appearance& appearance, const PaintMetrics& metrics, const SnapshotPane& pane, size_t column,
              Batches& batches)
      : appearance_(appearance), metrics_(metrics), pane_(pane), column_(column), batches_(batches) {}

  void AddRow(size_t at) {
    const SnapshotRow& row = pane_.rows[at];
    const Rect cell = pane_.CellRect(at, column_);
    seen_ = Rect{cell.x, cell.y, cell.width - metrics_.line, cell.height}.Intersected(pane_.area);
    if (HasLines(appearance_.outline_bar)) AddLines(row, cell);
    if (row.governs) {
      AddSign(row, cell);
    } else if (row.level > 0 && !row.node && HasLeafSigns(appearance_.outline_bar)) {
      const int dot = std::max(3, metrics_.outline.sign / 3);
      const int x = TrunkOf(cell, row.level - 1) - dot / 2;
      Add(LineColour(), {x, cell.y + cell.height / 2 - dot / 2, dot, dot});
    }
  }

 private:
  Colour LineColour() const { return appearance_.Of(GridColour::kGridColorFixed); }
  int TrunkOf(const Rect& cell, int level) const {
    return cell.x + level * metrics_.outline.step + metrics_.outline.step / 2;
  }
  void Add(Colour colour, const Rect& rect) { batches_.Fill(colour, rect.Intersected(seen_)); }

  void AddLines(const SnapshotRow& row, const Rect& cell) {
    const int line = metrics_.line;
    const int middle = cell.y + cell.height / 2;
    for (int level = 0; level < row.level && level * metrics_.outline.step < cell.width; ++level) {
      const bool goes_on = row.next_level > level;
      const bool own = level == row.level - 1;
      if (!goes_on && !own) continue;
      Add(LineColour(), {TrunkOf(cell, level), cell.y, line, goes_on ? cell.height : middle - cell.y + line});
      const int branch = metrics_.outline.step / 2 - metrics_.gap;
      if (own && (HasBranches(appearance_.outline_bar) || !goes_on))
        Add(LineColour(), {TrunkOf(cell, level), middle, branch, line});
    }
    // From an open node's sign down to its first line.
    const int sign_end = metrics_.outline.Sign(cell, row.level).bottom();
    if (row.governs && !row.collapsed)
      Add(LineColour(), {TrunkOf(cell, row.level), sign_end, line, cell.bottom() - sign_end});
  }

  void AddSign(const SnapshotRow& row, const Rect& cell) {
    const Rect box = metrics_.outline.Sign(cell, row.level);
    const PictureRef& picture = row.collapsed ? appearance_.node_closed : appearance_.node_open;
    if (picture != nullptr) {
      const int side = std::min(metrics_.outline.step, cell.height - metrics_.line);
      const int x = cell.x + row.level * metrics_.outline.step;
      batches_.pictures().push_back({picture.get(), {x, cell.y + (cell.height - side) / 2, side, side}, false});
      return;
    }
    const int line = metrics_.line;
    const Colour ink = appearance_.Of(GridColour::kForeColorFixed);
    Add(ink, {box.x, box.y, box.width, line});
    Add(ink, {box.x, box.bottom() - line, box.width, line});
    Add(ink, {box.x, box.y, line, box.height});
    Add(ink, {box.right() - line, box.y, line, box.height});
    const int arm = 2 * line;
    Add(ink, {box.x + arm, box.y + (box.height - line) / 2, box.width - 2 * arm, line});
    if (row.collapsed) Add(ink, {box.x + (box.width - line) / 2, box.y + arm, line, box.height - 2 * arm});
  }

  const Appearance& appearance_;
  const PaintMetrics& metrics_;
  const SnapshotPane& pane_;
  size_t column_;
  Batches& batches_;
  Rect seen_;
};

}  // namespace

void AddTree(const Appearance& appearance, const PaintMetrics& metrics, const SnapshotPane& pane, size_t column,
             Batches& batches) {
  TreePainter painter(appearance, metrics, pane, column, batches);
  for (size_t row = 0; row < pane.rows.size(); ++row) painter.AddRow(row);
}

}  // namespace stockbook::sheet
