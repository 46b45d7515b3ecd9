// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <vector>

#include "databases/table_writer.h"
#include "stockbook/inventory/inventory_schema.h"
#include "stockbook/platform/recordset.h"

namespace stockbook::app {

// How the fields of a table are stored: those of the schema first, under its names and, where that keeps every value,
// in its types; then what else the source has. Fields that the source lacks are added to `fields`, empty.
databases::StoredTable PlanStoredTable(TableName name, std::vector<platform::Field>& fields);

// Whether a column of the type holds exactly this value.
bool HoldsExactly(databases::StoredType type, const base::Value& value);

// What is the same for two columns only if they hold equal values in the same order: the number of values, a checksum
// of them all, and the sum where they are numbers.
struct ColumnDigest {
  size_t values = 0;  // that are not null
  uint64_t checksum = 0;
  std::string sum;  // exact for whole numbers and amounts; "" for texts and dates
  bool operator==(const ColumnDigest&) const = default;
};
ColumnDigest DigestOf(const columns::Column& column, databases::StoredType type);

}  // namespace stockbook::app
