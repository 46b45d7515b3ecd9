// SPDX-License-Identifier: MIT
#include "databases/execution/row_sorter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "stockbook/columns/column_builder.h"

namespace stockbook::databases {
namespace {

using base::Value;
using Direction = RowSorter::Direction;

constexpr size_t kSorted = 200'000;  // enough for more than one thread

columns::Column Sample(uint32_t seed, const std::function<Value(std::mt19937&)>& value) {
  std::mt19937 random(seed);
  columns::ColumnBuilder builder;
  for (size_t row = 0; row < kSorted; ++row) builder.Append(value(random));
  return builder.Finish();
}

std::vector<uint32_t> OwnPlaces() {
  std::vector<uint32_t> places(kSorted);
  std::iota(places.begin(), places.end(), 0U);
  return places;
}

Value AnyDay(std::mt19937& random) { return Value(static_cast<int64_t>(random() % 40)); }
Value AnyWord(std::mt19937& random) {
  const auto number = random() % 500;
  return number == 0 ? Value() : Value("a long beginning of a text " + std::to_string(number));
}
Value AnyPrice(std::mt19937& random) { return Value(static_cast<double>(random() % 9) / 7); }

// Some rows stay tied, and keep their order.
TEST(RowSorter, GivesTheSameOrderOnAnyNumberOfThreads) {
  const columns::Column days = Sample(1, AnyDay);
  const columns::Column words = Sample(2, AnyWord);
  const columns::Column prices = Sample(3, AnyPrice);
  const std::vector<uint32_t> places = OwnPlaces();
  const auto key = [&](uint32_t row) {
    const Value word = words.At(row);
    return std::tuple(days.Number(row), -prices.Number(row), !word.IsNull(), word.Text());
  };
  std::vector<uint32_t> expected = places;
  std::stable_sort(expected.begin(), expected.end(), [&](uint32_t a, uint32_t b) { return key(a) < key(b); });
  for (const size_t threads : {1U, 2U, 3U}) {
    RowSorter sorter(kSorted, threads);
    sorter.Refine({&days, places}, Direction::kAscending);
    sorter.Refine({&prices, places}, Direction::kDescending);
    sorter.Refine({&words, places}, Direction::kAscending);
    EXPECT_TRUE(sorter.HasTies());
    EXPECT_TRUE(sorter.order() == expected) << threads;
    sorter.DropTied();
    std::vector<uint32_t> distinct = expected;
    distinct.erase(
        std::unique(distinct.begin(), distinct.end(), [&](uint32_t a, uint32_t b) { return key(a) == key(b); }),
        distinct.end());
    EXPECT_TRUE(sorter.order() == distinct) << threads;
  }
}

// Each group alone may hold numbers of one kind.
TEST(RowSorter, RefusesNumbersOfDifferentKindsWhoeverMeetsThem) {
  columns::ColumnBuilder halves;
  columns::ColumnBuilder mixed;
  for (size_t row = 0; row < kSorted; ++row) {
    const bool late = row >= kSorted / 2;
    halves.AppendInteger(late ? 1 : 0);
    if (late) {
      mixed.AppendDouble(0.5);
    } else {
      mixed.AppendInteger(static_cast<int64_t>(row % 3));
    }
  }
  const columns::Column first = halves.Finish();
  const columns::Column second = mixed.Finish();
  const std::vector<uint32_t> places = OwnPlaces();
  for (const size_t threads : {1U, 2U}) {
    RowSorter sorter(kSorted, threads);
    sorter.Refine({&first, places}, Direction::kAscending);
    EXPECT_THROW(sorter.Refine({&second, places}, Direction::kAscending), NotCovered) << threads;
  }
}

}  // namespace
}  // namespace stockbook::databases
