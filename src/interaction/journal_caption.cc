// SPDX-License-Identifier: MIT
#include "interaction/journal_caption.h"

#include <map>

#include "base/text.h"
#include "journal/vocabulary.h"

namespace stockbook::interaction {
namespace {

constexpr const char* kMissing = "(无)";

std::string OrMissing(const std::string& text) { return text.empty() ? kMissing : text; }

std::string ProductText(const std::string& title, const SubjectTexts& subject) {
  std::string text = title + ":" + OrMissing(subject.key_name);
  if (!subject.product_no.empty()) text += "[" + subject.product_no + "]";
  if (!subject.model.empty() || !subject.standard.empty()) {
    const bool both = !subject.model.empty() && !subject.standard.empty();
    text += "{" + subject.model + (both ? "\\" : "") + subject.standard + "}";
  }
  return text + " 单位:" + OrMissing(subject.measure);
}

struct Member {
  std::string name;
  std::string class_code;
};

Member ReadMember(platform::Connection* connection, base::tqJournalTypeContants type, int32_t key) {
  Member member;
  if (connection == nullptr) return member;
  try {
    const platform::Recordset record =
        connection->Execute("Select * From " + std::string(journal::SubjectTable(type)) + " Where " +
                            std::string(journal::SubjectKeyField(type)) + "=" + std::to_string(key));
    if (record.AtEnd()) return member;
    member.name = record.FieldValue(type == base::ProjectJournal ? "项目名称" : "企业名称").Text();
    member.class_code = record.FieldValue("ClassCode").Text();
  } catch (const std::exception&) {
    // An unknown member shows as missing.
  }
  return member;
}

// Path and name of one partner or project, the path of a class, or all of them.
std::string MemberText(platform::Connection* connection, base::tqJournalTypeContants type,
                       const journal::SubjectKeys& keys, const std::string& title) {
  if (keys.dpID < 1)
    return keys.dpCode.empty() ? "全部" + title : title + ":" + OrMissing(ClassPath(connection, type, keys.dpCode));
  const Member member = ReadMember(connection, type, keys.dpID);
  const std::string path = ClassPath(connection, type, member.class_code);
  return title + ":" + (path.empty() ? "" : path + "\\") + OrMissing(member.name);
}

}  // namespace

std::string ClassPath(platform::Connection* connection, base::tqJournalTypeContants type, std::string_view code) {
  const std::string table(journal::ClassTable(type));
  std::string statement;
  for (const size_t length : {2U, 4U, 6U, 8U, 10U}) {
    if (length > base::CharacterCount(code)) break;
    statement += statement.empty() ? "Select * From " : " Union Select * From ";
    statement += table + " Where ClassCode='" + std::string(base::LeftCharacters(code, length)) + "'";
  }
  if (statement.empty() || connection == nullptr) return {};
  std::map<std::string, std::string> names;  // by code, so the shorter ones come first
  try {
    for (platform::Recordset classes = connection->Execute(statement); !classes.AtEnd(); classes.MoveNext()) {
      names[classes.FieldValue("ClassCode").Text()] = classes.FieldValue("ClassName").Text();
    }
  } catch (const std::exception&) {
    return {};
  }
  std::string path;
  for (const auto& [class_code, name] : names) path += (path.empty() ? "" : "\\") + OrMissing(name);
  return path;
}

JournalCaption ComposeCaption(platform::Connection* connection, base::tqJournalTypeContants type,
                              const journal::SubjectKeys& keys, const SubjectTexts& subject,
                              const std::array<std::string, 4>& titles) {
  const bool one = keys.dpID >= 1;
  switch (type) {
    case base::SupplierJournal:
      return {MemberText(connection, type, keys, titles[1]), one ? "Supplier" : "SuppJnl"};
    case base::CustomerJournal:
      return {MemberText(connection, type, keys, titles[2]), one ? "Customer" : "CustJnl"};
    case base::ProjectJournal:
      return {MemberText(connection, type, keys, titles[3]) + " [" + ProductText(titles[0], subject) + "]",
              one ? "Project" : "ProjJnl"};
    case base::MaterialJournal:
      break;
  }
  const std::string depot = SubjectHeader(connection, base::MaterialJournal).DepotName(keys);
  return {ProductText(titles[0], subject) + " [" + OrMissing(depot) + "]", one ? "Depot" : "StkBk"};
}

}  // namespace stockbook::interaction
