// SPDX-License-Identifier: MIT
#include "journal/class_filters.h"

#include "base/text.h"
#include "journal/vocabulary.h"

namespace stockbook::journal {
namespace {

constexpr const char* kNobody = "NULL";

bool IsWholeNumber(std::string_view text) {
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// A key that is no number may be a text of any table that a class code asked for, so it is not repeated.
void SayLeftOut(const Inventory& inventory, size_t count) {
  if (count == 0) return;
  inventory.Say("分类中有 " + std::to_string(count) +
                " 个成员的编号不是整数，它们的单据没有列入：请在库存程序中更正这些编号，再重新读入。");
}

std::string ReadKeys(const Inventory& inventory, const std::string& statement, std::string_view field) {
  std::string list;
  size_t left_out = 0;
  inventory.Try("读不到分类的全部成员，列出的单据可能超出该分类：", [&] {
    platform::Recordset keys = inventory.connection()->Execute(statement, platform::kExecuteUnspecified);
    for (; !keys.AtEnd(); keys.MoveNext()) {
      const std::string key = keys.FieldValue(field).Text();
      if (IsWholeNumber(key))
        list += "," + key;
      else
        ++left_out;
    }
  });
  SayLeftOut(inventory, left_out);
  if (list.empty()) return left_out == 0 ? "" : kNobody;
  list.erase(0, 1);
  return list;
}

std::string LengthText(std::string_view code) { return std::to_string(base::CharacterCount(code)); }

}  // namespace

std::string PartnerKeyList(const Inventory& inventory, base::tqJournalTypeContants type, std::string_view code) {
  const JournalWords words = WordsOf(type == base::SupplierJournal ? type : base::CustomerJournal);
  return ReadKeys(
      inventory,
      "Select * From " + std::string(words.subject_table) + " Where ClassCode like '" + std::string(code) + "%'",
      "ksID");
}

std::string ProjectKeyList(const Inventory& inventory, std::string_view code) {
  if (code.empty()) return {};
  return ReadKeys(inventory, "Select 项目ID As pjID From 项目设置 Where ClassCode='" + std::string(code) + "'", "pjID");
}

std::string SupplierKeyList(const Inventory& inventory, std::string_view code) {
  if (code.empty()) return {};
  return ReadKeys(
      inventory,
      "Select ksID From 厂商资料 Where Left(ClassCode," + LengthText(code) + ") = '" + std::string(code) + "'", "ksID");
}

std::string CustomerKeyList(const Inventory& inventory, std::string_view code) {
  if (code.empty()) return {};
  return ReadKeys(
      inventory, "Select ksID From 客户资料 Where Left(ClassCode," + LengthText(code) + ")='" + std::string(code) + "'",
      "ksID");
}

}  // namespace stockbook::journal
