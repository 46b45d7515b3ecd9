// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/value.h"
#include "columns/column.h"
#include "platform/grid_types.h"
#include "platform/picture.h"
#include "sheet/format/cell_format.h"
#include "sheet/store/interval_map.h"
#include "sheet/store/row_order.h"

namespace stockbook::sheet {

// The pictures of loaded rows: one of a few per record.
struct LoadedPictures {
  std::vector<uint8_t> codes;
  std::vector<platform::PictureRef> pictures;
  platform::PictureAlignment alignment = platform::PictureAlignment::kLeftTop;

  platform::PictureRef At(RowId id) const {
    if (id < 0 || static_cast<size_t>(id) >= codes.size()) return nullptr;
    const size_t code = codes[static_cast<size_t>(id)];
    return code < pictures.size() ? pictures[code] : nullptr;
  }
};

// What a cell holds, without making a text of it: a value of a loaded column, or the text that was set on the cell.
struct CellContent {
  const columns::Column* column = nullptr;  // set when the value comes from a loaded column
  size_t record = 0;
  std::string_view text;  // else this
};

// One column of the sheet: its attributes, its loaded columns of texts and hidden data, and what was set on single
// cells on top of them. Moving a column is moving a pointer. Unset cells cost nothing.
class SheetColumn {
 public:
  static constexpr int kDefaultWidth = 960;  // twips

  std::string key;
  int position = 0;  // kept by ColumnSet
  bool hidden = false;
  int width_twips = kDefaultWidth;
  platform::DataType type = platform::DataType::kString;
  platform::Alignment alignment = platform::Alignment::kGeneral;
  CellFormat format;
  IntervalMap styles;  // codes of the store's CellStyles
  LoadedPictures pictures;

  CellContent ContentOf(RowId id) const;
  void AppendText(RowId id, std::string& out) const;
  double NumberOf(RowId id) const;
  base::Value DataOf(RowId id) const;
  void SetText(RowId id, std::string_view text);
  void SetData(RowId id, base::Value data);

  // The loaded column replaces what was set on records.
  void Load(std::shared_ptr<const columns::Column> values);
  void LoadText(std::shared_ptr<const columns::Column> texts);
  const columns::Column* LoadedText() const { return loaded_text_.get(); }
  const columns::Column* LoadedData() const { return loaded_data_.get(); }
  bool HasRecordTexts() const;
  // Texts or hidden data set on records.
  bool HasEditedRecords() const;

  // Forgets everything of the rows.
  void EraseRows(const std::vector<RowIdRange>& ids);
  // Forgets the loaded columns too.
  void Unload();
  size_t OverlayCells() const { return texts_.size() + data_.size(); }
  // Gives the row `to` the text, hidden data and style of the row `from`.
  void CopyRow(RowId from, RowId to);

  // What was loaded has a value for each of the `records`, and nothing is kept for rows that are not among the
  // ascending `living` ids; styles may reach over records that were removed, and have codes below `style_count`.
  bool CheckInvariants(const std::vector<RowIdRange>& living, size_t records, size_t style_count) const;
  // About what the column takes beyond what was loaded into it.
  size_t MemoryBytes() const;

 private:
  std::shared_ptr<const columns::Column> loaded_text_;
  std::shared_ptr<const columns::Column> loaded_data_;
  std::unordered_map<RowId, std::string> texts_;
  std::unordered_map<RowId, base::Value> data_;
};

}  // namespace stockbook::sheet
