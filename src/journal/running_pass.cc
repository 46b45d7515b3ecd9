// SPDX-License-Identifier: MIT
#include "journal/running_pass.h"

#include <algorithm>

namespace stockbook::journal {
namespace {

// A column that is zero, or nothing, in every row need not be decoded.
const columns::Column* UnlessZero(const columns::Column* column) {
  if (column == nullptr) return nullptr;
  const auto constant = column->ConstantValue();
  if (!constant) return column;
  const auto number = constant->Number();
  return number && *number != 0 ? column : nullptr;
}

template <typename Number>
std::vector<Number> BufferFor(const columns::Column* column, size_t rows) {
  return column == nullptr ? std::vector<Number>() : std::vector<Number>(rows);
}

}  // namespace

RunningPass::Decoder RunningPass::MakeDecoder(const MovementSource& source) {
  const MovementSource used = {UnlessZero(source.quantity), UnlessZero(source.quantity2), UnlessZero(source.amount)};
  return {used, BufferFor<double>(used.quantity, kBlockRows), BufferFor<double>(used.quantity2, kBlockRows),
          BufferFor<int64_t>(used.amount, kBlockRows)};
}

MovementColumns RunningPass::Decode(Decoder& decoder, size_t first, size_t count) {
  MovementColumns columns;
  if (decoder.source.quantity != nullptr) {
    decoder.source.quantity->ReadNumbers(first, std::span(decoder.quantity).first(count));
    columns.quantity = std::span(decoder.quantity).first(count);
  }
  if (decoder.source.quantity2 != nullptr) {
    decoder.source.quantity2->ReadNumbers(first, std::span(decoder.quantity2).first(count));
    columns.quantity2 = std::span(decoder.quantity2).first(count);
  }
  if (decoder.source.amount != nullptr) {
    decoder.source.amount->ReadMoneyUnits(first, std::span(decoder.amount_units).first(count));
    columns.amount_units = std::span(decoder.amount_units).first(count);
  }
  return columns;
}

RunningPass::RunningPass(RunningBalance& balance, const MovementSource& movement, const MovementSource& receipts,
                         const MovementSource& issues)
    : balance_(balance),
      movement_(MakeDecoder(movement)),
      receipts_(MakeDecoder(receipts)),
      issues_(MakeDecoder(issues)),
      running_quantity_(kBlockRows),
      running_quantity2_(kBlockRows),
      running_amount_(kBlockRows),
      running_price_(kBlockRows) {}

RunningColumns RunningPass::RunBlock(size_t first, size_t count) {
  const MovementRows rows = {count, Decode(movement_, first, count), Decode(receipts_, first, count),
                             Decode(issues_, first, count)};
  const RunningColumns out = {std::span(running_quantity_).first(count), std::span(running_quantity2_).first(count),
                              std::span(running_amount_).first(count), std::span(running_price_).first(count)};
  balance_.Add(rows, out);
  return out;
}

void RunningBuilder::operator()(const RunningColumns& rows) {
  quantity.AppendDoubles(rows.quantity);
  quantity2.AppendDoubles(rows.quantity2);
  amount.AppendMoneyUnits(rows.amount_units);
  price.AppendDoubles(rows.price);
}

}  // namespace stockbook::journal
