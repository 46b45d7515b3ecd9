// SPDX-License-Identifier: MIT
#include "journal/running_pass.h"

namespace stockbook::journal {
namespace {

// A column that is zero or no number in every row need not be decoded; an infinite one must be.
const columns::Column* UnlessZero(const columns::Column* column) {
  if (column == nullptr) return nullptr;
  const auto constant = column->ConstantValue();
  if (!constant) return column;
  const auto* number = constant->As<double>();
  return (number != nullptr ? *number : constant->Number().value_or(0)) != 0 ? column : nullptr;
}

}  // namespace

RunningPass::Reader::Reader(const MovementSource& source)
    : quantity(UnlessZero(source.quantity)),
      quantity2(UnlessZero(source.quantity2)),
      amount_units(UnlessZero(source.amount)) {}

MovementColumns RunningPass::Reader::Read(columns::RowBlock block) {
  return {quantity.Read(block), quantity2.Read(block), amount_units.Read(block)};
}

RunningPass::RunningPass(RunningBalance& balance, const MovementSource& movement, const MovementSource& receipts,
                         const MovementSource& issues)
    : balance_(balance),
      movement_(movement),
      receipts_(receipts),
      issues_(issues),
      running_quantity_(columns::kBlockRows),
      running_quantity2_(columns::kBlockRows),
      running_amount_(columns::kBlockRows),
      running_price_(columns::kBlockRows) {}

RunningColumns RunningPass::RunBlock(columns::RowBlock block) {
  const MovementRows rows = {block.count, movement_.Read(block), receipts_.Read(block), issues_.Read(block)};
  const RunningColumns out = {
      std::span(running_quantity_).first(block.count), std::span(running_quantity2_).first(block.count),
      std::span(running_amount_).first(block.count), std::span(running_price_).first(block.count)};
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
