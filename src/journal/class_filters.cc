// SPDX-License-Identifier: MIT
#include "journal/class_filters.h"

#include "base/text.h"
#include "journal/vocabulary.h"

namespace stockbook::journal {
namespace {

std::string ReadKeys(platform::Connection* connection, const std::string& statement, std::string_view field) {
  std::string list;
  if (connection == nullptr) return list;
  try {
    platform::Recordset keys = connection->Execute(statement, platform::kExecuteUnspecified);
    for (; !keys.AtEnd(); keys.MoveNext()) list += "," + keys.FieldValue(field).Text();
  } catch (const std::exception&) {
    // The list ends with what was read so far.
  }
  if (!list.empty()) list.erase(0, 1);
  return list;
}

std::string LengthText(std::string_view code) { return std::to_string(base::CharacterCount(code)); }

}  // namespace

std::string PartnerKeyList(platform::Connection* connection, base::tqJournalTypeContants type, std::string_view code) {
  const JournalWords words = WordsOf(type == base::SupplierJournal ? type : base::CustomerJournal);
  return ReadKeys(
      connection,
      "Select * From " + std::string(words.subject_table) + " Where ClassCode like '" + std::string(code) + "%'",
      "ksID");
}

std::string ProjectKeyList(platform::Connection* connection, std::string_view code) {
  if (code.empty()) return {};
  return ReadKeys(connection, "Select 项目ID As pjID From 项目设置 Where ClassCode='" + std::string(code) + "'",
                  "pjID");
}

std::string SupplierKeyList(platform::Connection* connection, std::string_view code) {
  if (code.empty()) return {};
  return ReadKeys(
      connection,
      "Select ksID From 厂商资料 Where Left(ClassCode," + LengthText(code) + ") = '" + std::string(code) + "'", "ksID");
}

std::string CustomerKeyList(platform::Connection* connection, std::string_view code) {
  if (code.empty()) return {};
  return ReadKeys(
      connection,
      "Select ksID From 客户资料 Where Left(ClassCode," + LengthText(code) + ")='" + std::string(code) + "'", "ksID");
}

}  // namespace stockbook::journal
