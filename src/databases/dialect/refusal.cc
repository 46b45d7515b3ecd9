// SPDX-License-Identifier: MIT
#include "databases/dialect/refusal.h"

#include <algorithm>

#include "base/text.h"

namespace stockbook::databases {

platform::Error RefusedAt(std::string_view statement, const Refusal& refusal) {
  const std::string_view before = statement.substr(0, std::min(refusal.offset(), statement.size()));
  const auto line = std::count(before.begin(), before.end(), '\n') + 1;
  const size_t break_at = before.rfind('\n');
  const size_t character =
      base::CharacterCount(break_at == std::string_view::npos ? before : before.substr(break_at + 1)) + 1;
  return {"Execute", std::string(refusal.what()) + "（SQL 语句第 " + std::to_string(line) + " 行第 " +
                         std::to_string(character) + " 个字符）"};
}

}  // namespace stockbook::databases
