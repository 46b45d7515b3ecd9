// SPDX-License-Identifier: MIT
#include "com/ado_double/ado_rows.h"

#include <cstdint>

namespace stockbook::testing {
namespace {

std::vector<std::string> NamesOf(const std::vector<platform::Field>& fields) {
  std::vector<std::string> names;
  for (const platform::Field& field : fields) names.push_back(field.name);
  return names;
}

}  // namespace

ColumnRows::ColumnRows(std::vector<platform::Field> fields)
    : AdoRows(NamesOf(fields)), fields_(std::move(fields)), count_(fields_.empty() ? 0 : fields_[0].column.size()) {}

com::Variant ColumnRows::At(size_t row, size_t field) const {
  const base::Value value = fields_[field].column.At(row);
  const auto* whole = value.As<int64_t>();
  com::Variant variant;
  if (whole != nullptr && *whole != static_cast<int32_t>(*whole)) {
    variant.get().vt = VT_I8;
    variant.get().llVal = *whole;
  } else if (value.IsNull()) {
    variant.get().vt = VT_NULL;
  } else {
    variant = com::Variant(value);
  }
  return variant;
}

}  // namespace stockbook::testing
