// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/columns/column.h"
#include "stockbook/platform/grid_types.h"
#include "stockbook/platform/picture.h"

namespace stockbook::platform {

// Whole columns at once. The rows that LoadColumns brought are records, numbered from 0 in the order they came; rows
// inserted among them (opening, nodes, totals) do not change a record's number and are not part of a loaded column.
// Everything here is O(1) or one pass over a column; texts of single cells set later stay on top of a loaded column
// only until it is replaced.
class STOCKBOOK_API GridBulk {
 public:
  virtual ~GridBulk() = default;

  // Replaces all data rows by the columns' rows; column i goes into grid column first_column + i. All columns have the
  // same size. The grid gets the columns that it lacks. Throws Error for columns of different sizes, for too many rows,
  // and where there is no such column.
  virtual void LoadColumns(std::vector<columns::Column> columns, int first_column) = 0;
  // Of the last load, whatever was inserted or removed since; SetRows down to the fixed rows forgets them.
  virtual size_t RecordCount() const = 0;
  // The grid row of a record (-1 if it was removed), and the record of a grid row (-1 for other rows); O(log inserted
  // rows).
  virtual int RowOfRecord(size_t record) const = 0;
  // -1 for a row that is no record or not there; O(log inserted rows).
  virtual int64_t RecordOfRow(int row) const = 0;
  // How many rows from `row` on show records that follow each other without a gap; 0 where the row is no record. O(log
  // inserted rows).
  virtual int RecordsFrom(int row) const = 0;
  // Another number whenever the records of any column were replaced, so that what LoadedText gave is no longer valid.
  virtual int64_t LoadedRevision() const = 0;

  // What the records show in a grid column, or nullptr when nothing was loaded there. Valid until the column changes.
  virtual const columns::Column* LoadedText(int column) const = 0;
  // The hidden data of the records, or nullptr when nothing was loaded there. Valid until the column changes.
  virtual const columns::Column* LoadedData(int column) const = 0;
  // Whether any record shows, or has as hidden data, something other than what was loaded; false for an unknown column.
  virtual bool HasEditedRecords(int column) const = 0;
  // Gives the records of a grid column other contents: shown text and hidden data alike. Throws Error unless there is
  // one value for each record, and for an unknown column.
  virtual void ReplaceLoaded(int column, columns::Column values) = 0;
  // Other shown texts; the hidden data stays what it was. Throws Error as ReplaceLoaded does.
  virtual void ReplaceLoadedText(int column, columns::Column texts) = 0;
  // A picture for every record: pictures[codes[record]]; code 0 must be no picture. Costs at most one byte per row.
  // Throws Error unless there is one code for each record, and for an unknown column.
  virtual void SetLoadedPictures(int column, std::vector<uint8_t> codes, std::vector<PictureRef> pictures,
                                 PictureAlignment alignment) = 0;
};

}  // namespace stockbook::platform
