// SPDX-License-Identifier: MIT
#include "stockbook/platform/recordset.h"

#include <algorithm>

#include "base/text.h"
#include "stockbook/platform/error.h"

namespace stockbook::platform {

Recordset::Recordset(std::vector<Field> fields) : fields_(std::move(fields)) {
  for (const Field& field : fields_) rows_ = std::max(rows_, field.column.size());
}

void Recordset::Close() {
  fields_.clear();
  rows_ = 0;
  row_ = 0;
}

bool Recordset::HasField(std::string_view name) const {
  return std::any_of(fields_.begin(), fields_.end(), [&](const Field& field) { return field.name == name; });
}

base::Value Recordset::FieldValue(size_t index) const {
  // A field may end before the others; then its record is missing, and not null.
  if (AtEnd() || index >= fields_.size() || row_ >= fields_[index].column.size())
    throw Error("read field", "没有当前记录：请检查查询是否返回了数据。");
  return fields_[index].column.At(row_);
}

base::Value Recordset::FieldValue(std::string_view name) const {
  auto found = std::find_if(fields_.begin(), fields_.end(), [&](const Field& field) { return field.name == name; });
  if (found == fields_.end()) {
    found = std::find_if(fields_.begin(), fields_.end(),
                         [&](const Field& field) { return base::EqualsIgnoringCase(field.name, name); });
  }
  if (found == fields_.end())
    throw Error("read field", "查询结果中没有字段“" + std::string(name) + "”，请检查数据库的表结构。");
  return FieldValue(static_cast<size_t>(found - fields_.begin()));
}

std::vector<Field> Recordset::TakeAll() {
  std::vector<Field> fields = std::move(fields_);
  Close();
  return fields;
}

}  // namespace stockbook::platform
