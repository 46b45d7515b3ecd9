// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "grid/pictures.h"
#include "stockbook/platform/grid_outline.h"
#include "stockbook/platform/grid_table.h"
#include "stockbook/platform/grid_view.h"
#include "stockbook/platform/images.h"

namespace stockbook::grid {

// Chooses and places the pictures of bill rows. The exact text of the BillName cell decides a row's kind; a row whose
// Auditor cell is not empty is audited. The two rules differ on purpose: BillKindPicture knows three special kinds,
// DecorateRow five.
class BillKinds {
 public:
  BillKinds(platform::GridTable& grid, const Pictures& pictures, const platform::Images& images,
            platform::PictureRef mark, std::string_view outline_key)
      : grid_(grid), pictures_(pictures), images_(images), mark_(std::move(mark)), outline_key_(outline_key) {}

  // The host's picture for the row's kind, possibly none. A row that is not a data row stands for the current row of
  // the view.
  platform::PictureRef BillKindPicture(int row, const platform::GridView& view) const;
  // Places the row's images: its kind in the outline column, product, mark, depot, partner and project.
  void DecorateRow(int row);
  // Does for all loaded records what DecorateRow does for one, and puts BillKindPicture into the BillKind cells. Takes
  // one pass over the deciding columns, and one byte per row for each column that shows pictures.
  void DecorateRecords();

 private:
  bool IsAudited(int row) const;
  std::string Text(int row, std::string_view key) const;
  void Place(int row, std::string_view key, const platform::PictureRef& picture, platform::PictureAlignment alignment);
  void PlaceRecords(std::string_view key, std::vector<uint8_t> codes, std::vector<platform::PictureRef> pictures,
                    platform::PictureAlignment alignment);
  const columns::Column* Loaded(std::string_view key) const { return grid_.LoadedText(grid_.ColIndex(key)); }

  platform::GridTable& grid_;
  const Pictures& pictures_;
  const platform::Images& images_;
  platform::PictureRef mark_;
  std::string_view outline_key_;
};

}  // namespace stockbook::grid
