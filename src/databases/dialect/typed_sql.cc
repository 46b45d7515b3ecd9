// SPDX-License-Identifier: MIT
#include "databases/dialect/typed_sql.h"

#include "base/text.h"
#include "databases/dialect/refusal.h"

namespace stockbook::databases {
namespace {

std::string Quoted(std::string_view text, char quote) {
  std::string quoted;
  quoted.reserve(text.size() + 2);
  quoted += quote;
  for (const char c : text) quoted.append(c == quote ? 2 : 1, c);
  quoted += quote;
  return quoted;
}

const BoundSource* SourceNamed(const Scope& scope, const std::string& name, size_t offset) {
  const BoundSource* found = nullptr;
  for (const BoundSource& source : scope.sources) {
    if (!base::EqualsIgnoringCase(source.name, name)) continue;
    if (found != nullptr) throw Refusal(offset, "表名“" + name + "”在 FROM 中出现了两次，请使用不同的别名");
    found = &source;
  }
  return found;
}

// The column of that name; nullptr when there is none. A name that a derived table has twice is refused.
const BoundColumn* ColumnNamed(const BoundSource& source, const std::string& name, size_t offset) {
  const BoundColumn* found = nullptr;
  for (const BoundColumn& column : source.columns) {
    if (column.name.size() != name.size() || !base::EqualsIgnoringCase(column.name, name)) continue;
    if (found != nullptr) throw Refusal(offset, "字段“" + name + "”在“" + source.name + "”中不止一个");
    found = &column;
  }
  return found;
}

}  // namespace

Form RawFormOf(ValueClass cls) {
  if (cls == ValueClass::kMoney) return Form::kRawMoney;
  return cls == ValueClass::kDate ? Form::kRawDate : Form::kPlain;
}

Form ResultFormOf(ValueClass cls) {
  if (cls == ValueClass::kMoney) return Form::kUnits;
  if (cls == ValueClass::kDate) return Form::kDateText;
  return cls == ValueClass::kReal ? Form::kReal : Form::kPlain;
}

const BoundSource& Scope::FindSource(const std::string& name, size_t offset) const {
  for (const Scope* scope = this; scope != nullptr; scope = scope->outer) {
    if (const BoundSource* source = SourceNamed(*scope, name, offset)) return *source;
  }
  throw Refusal(offset, "FROM 中没有名为“" + name + "”的表");
}

const BoundColumn& Scope::Find(const std::string& qualifier, const std::string& name, size_t offset) const {
  if (!qualifier.empty()) {
    const BoundSource& source = FindSource(qualifier, offset);
    const BoundColumn* column = ColumnNamed(source, name, offset);
    if (column == nullptr) throw Refusal(offset, "表“" + qualifier + "”中没有字段“" + name + "”");
    return *column;
  }
  for (const Scope* scope = this; scope != nullptr; scope = scope->outer) {
    const BoundColumn* found = nullptr;
    for (const BoundSource& source : scope->sources) {
      const BoundColumn* column = ColumnNamed(source, name, offset);
      if (column != nullptr && found != nullptr) throw Refusal(offset, "字段“" + name + "”不止一个表中有，请写明表名");
      found = column != nullptr ? column : found;
    }
    if (found != nullptr) return *found;
  }
  throw Refusal(offset, "没有名为“" + name + "”的字段");
}

std::string QuotedName(std::string_view name) { return Quoted(name, '"'); }
std::string QuotedText(std::string_view text) { return Quoted(text, '\''); }

}  // namespace stockbook::databases
