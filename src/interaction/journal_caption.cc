// SPDX-License-Identifier: MIT
#include "interaction/journal_caption.h"

#include "journal/vocabulary.h"

namespace stockbook::interaction {
namespace {

constexpr const char* kMissing = "(无)";

std::string OrMissing(const std::string& text) { return text.empty() ? kMissing : text; }

std::string ProductText(const std::string& title, const journal::SubjectTexts& subject) {
  std::string text = title + ":" + OrMissing(subject.key_name);
  if (!subject.product_no.empty()) text += "[" + subject.product_no + "]";
  if (!subject.model.empty() || !subject.standard.empty()) {
    const bool both = !subject.model.empty() && !subject.standard.empty();
    text += "{" + subject.model + (both ? "\\" : "") + subject.standard + "}";
  }
  return text + " 单位:" + OrMissing(subject.measure);
}

// The names of a class and of the classes above it, from the top down: "华东\上海". "" when none is known.
std::string ClassPath(const journal::Inventory& inventory, base::tqJournalTypeContants type, std::string_view code) {
  std::string path;
  for (const std::string& name : journal::Subjects(inventory, type).ClassNames(code))
    path += (path.empty() ? "" : "\\") + OrMissing(name);
  return path;
}

// Path and name of one partner or project, the path of a class, or all of them.
std::string MemberText(const journal::Inventory& inventory, base::tqJournalTypeContants type,
                       const journal::SubjectKeys& keys, const std::string& title) {
  if (keys.dpID < 1)
    return keys.dpCode.empty() ? "全部" + title : title + ":" + OrMissing(ClassPath(inventory, type, keys.dpCode));
  const journal::Member member = journal::Subjects(inventory, type).ReadMember(keys.dpID);
  const std::string path = ClassPath(inventory, type, member.class_code);
  return title + ":" + (path.empty() ? "" : path + "\\") + OrMissing(member.name);
}

}  // namespace

JournalCaption ComposeCaption(const journal::Inventory& inventory, base::tqJournalTypeContants type,
                              const journal::SubjectKeys& keys, const journal::SubjectTexts& subject,
                              const std::array<std::string, 4>& titles) {
  const auto moment = inventory.OneMoment();
  const journal::JournalWords words = journal::WordsOf(type);
  const std::string_view picture = keys.dpID >= 1 ? words.member_picture : words.journal_picture;
  const std::string product = ProductText(titles[base::MaterialJournal], subject);
  const auto member_title = [&]() -> const std::string& { return titles[static_cast<size_t>(type)]; };
  switch (type) {
    case base::SupplierJournal:
    case base::CustomerJournal:
      return {MemberText(inventory, type, keys, member_title()), picture};
    case base::ProjectJournal:
      return {MemberText(inventory, type, keys, member_title()) + " [" + product + "]", picture};
    case base::MaterialJournal:
      break;
  }
  const std::string depot = journal::Subjects(inventory, base::MaterialJournal).DepotName(keys);
  return {product + " [" + OrMissing(depot) + "]", picture};
}

}  // namespace stockbook::interaction
