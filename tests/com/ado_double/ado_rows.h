// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "com/automation/variant.h"
#include "stockbook/platform/recordset.h"

namespace stockbook::testing {

// What a recordset of the double shows: fields with names, and their values as automation has them.
class AdoRows {
 public:
  explicit AdoRows(std::vector<std::string> names) : names_(std::move(names)) {}
  virtual ~AdoRows() = default;
  const std::vector<std::string>& names() const { return names_; }
  virtual size_t Count() const = 0;
  virtual com::Variant At(size_t row, size_t field) const = 0;

 private:
  std::vector<std::string> names_;
};

// Values that a test made.
class MadeRows : public AdoRows {
 public:
  explicit MadeRows(std::vector<std::string> names) : AdoRows(std::move(names)) {}
  // Takes the values of one more row over.
  template <typename... Values>
  void Add(Values&&... values) {
    (values_.push_back(std::move(values)), ...);
  }
  size_t Count() const override { return names().empty() ? 0 : values_.size() / names().size(); }
  com::Variant At(size_t row, size_t field) const override {
    return com::Variant::CopyOf(values_[row * names().size() + field].get());
  }

 private:
  std::vector<com::Variant> values_;
};

// The columns of a result: whole numbers as Long where they fit and as 64 bits otherwise, currency, dates, texts.
class ColumnRows : public AdoRows {
 public:
  explicit ColumnRows(std::vector<platform::Field> fields);
  size_t Count() const override { return count_; }
  com::Variant At(size_t row, size_t field) const override;

 private:
  std::vector<platform::Field> fields_;
  size_t count_ = 0;
};

}  // namespace stockbook::testing
