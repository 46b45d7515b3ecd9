// SPDX-License-Identifier: MIT
#include "com/grid/member_call.h"

#include <olectl.h>

#include <string>

namespace stockbook::com {
namespace {

[[noreturn]] void FailOutside(const char* what, int index, int count) {
  const std::string there = count == 0 ? "网格是空的" : "网格中为 0 至 " + std::to_string(count - 1);
  throw AutomationError(CTL_E_INVALIDPROPERTYARRAYINDEX,
                        std::string(what) + " " + std::to_string(index) + " 不存在：" + there + "。");
}

}  // namespace

int MemberCall::Row(UINT index) const {
  const int row = ToLong((*this)[index]);
  if (!grid().HasRow(row)) FailOutside("行", row, grid().Rows());
  return row;
}

int MemberCall::Column(UINT index) const {
  const int column = ToLong((*this)[index]);
  if (!grid().HasColumn(column)) FailOutside("列", column, grid().Cols());
  return column;
}

int MemberCall::Code(const char* member, int most) const {
  const int code = ToLong(Value());
  if (code >= 0 && code <= most) return code;
  throw AutomationError(CTL_E_INVALIDPROPERTYVALUE, std::string(member) + " 须在 0 与 " + std::to_string(most) +
                                                        " 之间，收到的是 " + std::to_string(code) + "。");
}

}  // namespace stockbook::com
