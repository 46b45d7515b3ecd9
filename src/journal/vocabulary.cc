// SPDX-License-Identifier: MIT
#include "journal/vocabulary.h"

#include <array>

namespace stockbook::journal {
namespace {

// Products, suppliers, customers and projects. The class code of a project is looked up by a key that its table spells
// differently, so it is never found; this is kept on purpose.
constexpr std::array<JournalWords, 4> kWords = {{
    {"商品资料", "商品分类", "pdID", "商品名称", "", "Stockbook", "StkBk", "Depot"},
    {"厂商资料", "厂商分类", "ksID", "企业名称", "ksID", "SupplierJournal", "SuppJnl", "Supplier"},
    {"客户资料", "客户分类", "ksID", "企业名称", "ksID", "CustomerJournal", "CustJnl", "Customer"},
    {"项目设置", "项目分类", "项目ID", "项目名称", "pjID", "ProjectJournal", "ProjJnl", "Project"},
}};

}  // namespace

JournalWords WordsOf(base::tqJournalTypeContants type) {
  const auto index = static_cast<size_t>(type);
  return index < kWords.size() ? kWords[index] : JournalWords{};
}

}  // namespace stockbook::journal
