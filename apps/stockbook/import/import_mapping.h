// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stockbook::app {

// The possible meanings of a column.
enum class ImportField { Product, Name, Bill, Date, Quantity, Price, Partner, Project };
inline constexpr size_t kImportFieldCount = 8;

// Maps fields to columns: first by the names the user gave and, once the header line is read, by position.
class ImportMapping {
 public:
  // Reads "product=StockCode,date=InvoiceDate,..."; several texts are combined. Throws UsageError for an unknown or
  // repeated field and if product, date or quantity is missing.
  explicit ImportMapping(const std::vector<std::string>& texts);

  // By the positions of columns, counted from 0, which need no names; product, date and quantity must be there.
  using Positions = std::array<std::optional<size_t>, kImportFieldCount>;
  explicit ImportMapping(const Positions& positions);

  // Finds the named columns in the header line; throws UsageError if one is missing or occurs twice.
  void Locate(const std::vector<std::string_view>& header);

  size_t column_count() const { return column_count_; }
  bool Has(ImportField field) const { return is_mapped_[static_cast<size_t>(field)]; }
  // The field's text in a record of column_count() fields, without blanks of any width around it; empty if it is not
  // mapped.
  std::string_view Text(ImportField field, const std::vector<std::string_view>& fields) const;

 private:
  void Read(std::string_view text);

  std::array<std::optional<std::string>, kImportFieldCount> names_;
  std::array<bool, kImportFieldCount> is_mapped_{};
  std::array<size_t, kImportFieldCount> columns_{};
  size_t column_count_ = 0;
};

}  // namespace stockbook::app
