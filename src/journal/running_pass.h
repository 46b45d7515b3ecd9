// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <vector>

#include "journal/running_balance.h"
#include "platform/column.h"

namespace stockbook::journal {

// The columns that a running balance reads; nullptr is a column of zeros.
struct MovementSource {
  const platform::Column* quantity = nullptr;
  const platform::Column* quantity2 = nullptr;
  const platform::Column* amount = nullptr;
};

// Walks the movement columns of a result block by block, so that what it decodes stays in the cache, runs the balance
// over them and collects the running columns. One pass, in record order.
class RunningPass {
 public:
  RunningPass(RunningBalance& balance, const MovementSource& movement, const MovementSource& receipts,
              const MovementSource& issues);

  // Records [begin, end), which must follow the ones before; all of one period.
  void Run(size_t begin, size_t end);

  platform::Column TakeQuantity() { return quantity_.Finish(); }
  platform::Column TakeQuantity2() { return quantity2_.Finish(); }
  platform::Column TakeAmount() { return amount_.Finish(); }
  platform::Column TakePrice() { return price_.Finish(); }

 private:
  static constexpr size_t kBlockRows = RunningBalance::kBlockRows;

  struct Decoder {
    MovementSource source;
    std::vector<double> quantity;
    std::vector<double> quantity2;
    std::vector<int64_t> amount_units;
  };

  static Decoder MakeDecoder(const MovementSource& source);
  static MovementColumns Decode(Decoder& decoder, size_t first, size_t count);

  RunningBalance& balance_;
  Decoder movement_;
  Decoder receipts_;
  Decoder issues_;
  std::vector<double> running_quantity_;
  std::vector<double> running_quantity2_;
  std::vector<int64_t> running_amount_;
  std::vector<double> running_price_;
  platform::ColumnBuilder quantity_;
  platform::ColumnBuilder quantity2_;
  platform::ColumnBuilder amount_;
  platform::ColumnBuilder price_;
};

}  // namespace stockbook::journal
