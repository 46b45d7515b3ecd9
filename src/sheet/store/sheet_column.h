// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "sheet/format/cell_format.h"
#include "sheet/store/interval_map.h"
#include "sheet/store/packed_codes.h"
#include "sheet/store/row_order.h"
#include "stockbook/base/value.h"
#include "stockbook/columns/column.h"
#include "stockbook/platform/grid_types.h"
#include "stockbook/platform/picture.h"

namespace stockbook::sheet {

// The pictures of loaded rows: each record has one of a few.
struct LoadedPictures {
  PackedCodes codes;
  std::vector<platform::PictureRef> pictures;
  platform::PictureAlignment alignment = platform::PictureAlignment::kLeftTop;

  platform::PictureRef At(RowId id) const {
    if (id < 0 || static_cast<size_t>(id) >= codes.size()) return nullptr;
    const size_t code = codes.At(static_cast<size_t>(id));
    return code < pictures.size() ? pictures[code] : nullptr;
  }
};

// What a cell contains, not yet formatted: a value in a loaded column, or a text that was set on the cell.
struct CellContent {
  const columns::Column* column = nullptr;  // the loaded column, or nullptr
  size_t record = 0;
  std::string_view text;  // used if there is no column
};

// One column of the sheet: its attributes, the loaded columns of texts and hidden data, and what was set on single
// cells. Cells that were not set cost nothing.
class SheetColumn {
 public:
  static constexpr int kDefaultWidth = 960;  // twips

  std::string key;
  int position = 0;  // kept by ColumnSet
  bool hidden = false;
  int width_twips = kDefaultWidth;
  platform::Alignment alignment = platform::Alignment::kGeneral;
  IntervalMap styles;  // codes of the store's CellStyles
  LoadedPictures pictures;

  // The one that was set; else what the format shows, or a number where all loaded values are; else a text.
  platform::DataType type() const { return type_; }
  void SetType(platform::DataType type);
  const CellFormat& format() const { return format_; }
  void SetFormat(std::string_view format);

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
  // Whether texts or hidden data were set on records.
  bool HasEditedRecords() const;

  // Drops everything that belongs to the rows.
  void EraseRows(const std::vector<RowIdRange>& ids);
  // Drops the loaded columns, too.
  void Unload();
  size_t OverlayCells() const { return texts_.size() + data_.size(); }
  // Copies text, hidden data and style from row `from` to row `to`.
  void CopyRow(RowId from, RowId to);

  // The loaded columns have a value for each of the `records`, and nothing is stored for rows outside the ascending
  // `living` ids, except that styles may span removed records. Style codes are below `style_count`.
  bool CheckInvariants(const std::vector<RowIdRange>& living, size_t records, size_t style_count) const;
  // Approximate memory beyond that of the loaded columns.
  size_t MemoryBytes() const;

 private:
  void FindType();

  std::optional<platform::DataType> set_type_;
  platform::DataType type_ = platform::DataType::kString;
  CellFormat format_;
  std::shared_ptr<const columns::Column> loaded_text_;
  std::shared_ptr<const columns::Column> loaded_data_;
  std::unordered_map<RowId, std::string> texts_;
  std::unordered_map<RowId, base::Value> data_;
};

}  // namespace stockbook::sheet
