// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

#include "stockbook/base/api.h"
#include "stockbook/platform/picture.h"

namespace stockbook::platform {

// How the tree is drawn: not at all; signs with a trunk and a branch to every line (kComplete) or with the trunk alone
// (kSimple); signs alone. Those that end in Leaf have a sign at every line, too. The numbers are saved.
enum class OutlineBarStyle : int32_t {
  kNone = 0,
  kComplete = 1,
  kSimple = 2,
  kSymbols = 3,
  kCompleteLeaf = 4,
  kSimpleLeaf = 5,
  kSymbolsLeaf = 6
};

// The outline of a grid: its nodes (subtotal rows), how they are folded, and the looks of the tree. A node governs the
// deeper rows that follow it. Level 0 is the top; the lines under a top node have level 1.
class STOCKBOOK_API GridOutline {
 public:
  virtual ~GridOutline() = default;

  // One node row of level 0 above every run of equal texts in `column`, over all rows that are no nodes, which get
  // level 1; "%s" in the caption is the text of the run. The caption is in the cell of `caption_column`. Throws Error
  // for an unknown column, or where there is no room for so many rows.
  virtual void GroupBy(int column, int caption_column, std::string_view caption_format) = 0;
  // Makes a row a node of its level, unfolded, or (level rows stay) an ordinary row again. Throws Error for a row that
  // is not there, as all that follow.
  virtual void SetIsSubtotal(int row, bool subtotal) = 0;
  // From 0 (unless set) to 1000; others throw Error.
  virtual int RowOutlineLevel(int row) const = 0;
  virtual void SetRowOutlineLevel(int row, int level) = 0;
  // False for a row that is no node; setting it there changes nothing.
  virtual bool IsCollapsed(int row) const = 0;
  virtual void SetIsCollapsed(int row, bool collapsed) = 0;
  // Both fold or unfold every node, at the cost of one; current cell and scroll position stay.
  virtual void CollapseAll() = 0;
  virtual void ExpandAll() = 0;
  // Shows only where there is a column of the tree (GridColumns::OutlineCol); kComplete unless set.
  virtual OutlineBarStyle OutlineBar() const = 0;
  virtual void SetOutlineBar(OutlineBarStyle style) = 0;
  // Both stand in place of the signs of nodes; nullptr for the grid's own.
  virtual void SetNodeOpenPicture(const PictureRef& picture) = 0;
  virtual void SetNodeClosedPicture(const PictureRef& picture) = 0;
};

}  // namespace stockbook::platform
