// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "columns/block_reader.h"
#include "journal/running_balance.h"
#include "stockbook/columns/column_builder.h"

namespace stockbook::journal {

// The columns that a running balance reads; nullptr is a column of zeros.
struct MovementSource {
  const columns::Column* quantity = nullptr;
  const columns::Column* quantity2 = nullptr;
  const columns::Column* amount = nullptr;
};

// Keeps the running columns of a journal as it grows.
struct RunningBuilder {
  columns::ColumnBuilder quantity;
  columns::ColumnBuilder quantity2;
  columns::ColumnBuilder amount;
  columns::ColumnBuilder price;

  void operator()(const RunningColumns& rows);
};

// Walks the movement columns of a result block by block, so that what it decodes stays in the cache, and runs the
// balance over them. One pass, in record order; it does not keep the rows.
class RunningPass {
 public:
  RunningPass(RunningBalance& balance, const MovementSource& movement, const MovementSource& receipts,
              const MovementSource& issues);

  // Records [begin, end), which must follow the ones before; all of one period. `take` receives the running values
  // block by block; they are valid until it returns.
  template <typename Take>
  void Run(size_t begin, size_t end, Take&& take) {
    for (const columns::RowBlock block : columns::RowBlocks(begin, end)) take(RunBlock(block));
  }

 private:
  struct Reader {
    columns::BlockReader<double> quantity;
    columns::BlockReader<double> quantity2;
    columns::BlockReader<int64_t> amount_units;

    explicit Reader(const MovementSource& source);
    MovementColumns Read(columns::RowBlock block);
  };

  RunningColumns RunBlock(columns::RowBlock block);

  RunningBalance& balance_;
  Reader movement_;
  Reader receipts_;
  Reader issues_;
  std::vector<double> running_quantity_;
  std::vector<double> running_quantity2_;
  std::vector<int64_t> running_amount_;
  std::vector<double> running_price_;
};

}  // namespace stockbook::journal
