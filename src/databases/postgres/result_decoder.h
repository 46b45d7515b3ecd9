// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "databases/dialect/value_class.h"
#include "databases/execution/column_sink.h"
#include "databases/postgres/client_library.h"
#include "databases/postgres/column_feed.h"
#include "databases/postgres/postgres_link.h"

namespace stockbook::databases {

// Reads the rows of a result, portion by portion, into columns. What the server's types are is decided once, by the
// first portion. Types that are not read in binary (a time with a zone, which only the server knows) need the result
// in text; there all types can be read but money, which is written as the server's country does.
class ResultDecoder {
 public:
  // Throws platform::Error when there are not as many columns as classes.
  ResultDecoder(const PGresult* first, std::span<const ValueClass> classes, std::span<ColumnSink> sinks);

  bool CanRead() const;
  // Whether a column counts the smallest coins of the server's currency: tell how many decimals that is, before Take.
  bool NeedsCoinDecimals() const;
  void SetCoinDecimals(int decimals) { coin_decimals_ = decimals; }

  // Throws platform::Error when a value is not what its type says.
  void Take(const PGresult* portion);
  // Call it after the last portion.
  void Finish();

 private:
  enum class Wire : unsigned char {
    kBoolean,
    kInt16,
    kInt32,
    kInt64,
    kObjectId,
    kFloat,
    kDouble,
    kNumeric,
    kCoins,
    kText,
    kPaddedText,
    kDate,
    kTimestamp,
    kZonedTimestamp,
    kTime,
    kUuid,
    kBytes,
    kOther
  };
  struct TypeRow;
  static Wire WireOf(Oid type);

  void TakeColumn(const PGresult* portion, size_t column);
  void TakeBinary(ColumnFeed& feed, Wire wire, std::string_view bytes) const;
  static void TakeTextual(ColumnFeed& feed, Wire wire, std::string_view text);

  WireFormat format_;
  int coin_decimals_ = 2;
  std::vector<Wire> wires_;
  std::vector<ColumnFeed> feeds_;
};

}  // namespace stockbook::databases
