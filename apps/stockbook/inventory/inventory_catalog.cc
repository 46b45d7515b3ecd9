// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_catalog.h"

#include <string_view>

#include "stockbook/heading/journal_coverage.h"
#include "stockbook/platform/recordset.h"

namespace stockbook::app {
namespace {

struct SecondKeyQueries {
  std::string_view all;
  std::string_view classes;  // "" if there are no classes
  std::string_view subjects;
  std::string_view key;
  std::string_view name;
};

SecondKeyQueries QueriesOf(base::tqJournalTypeContants type) {
  switch (type) {
    case base::MaterialJournal:
      return {"全部仓库", "", "Select * From 仓库设置 Order By dpID", "dpID", "仓库名称"};
    case base::SupplierJournal:
      return {"全部供应商", "Select ClassCode, ClassName From 厂商分类 Order By ClassCode",
              "Select * From 厂商资料 Order By KSID", "KSID", "企业名称"};
    case base::CustomerJournal:
      return {"全部客户", "Select ClassCode, ClassName From 客户分类 Order By ClassCode",
              "Select * From 客户资料 Order By KSID", "KSID", "企业名称"};
    case base::ProjectJournal:
      return {"全部项目", "Select ClassCode, ClassName From 项目分类 Order By ClassCode",
              "Select * From 项目设置 Order By 项目ID", "项目ID", "项目名称"};
  }
  return {"全部", "", "", "", ""};
}

int32_t KeyOf(const base::Value& value) { return static_cast<int32_t>(value.AsInteger().value_or(0)); }

// Indents by level in the tree; two characters of the code make a level.
std::string ClassText(const std::string& code, const std::string& name) {
  std::string indent;
  for (size_t level = 2; level < code.size(); level += 2) indent += "　";
  return indent + "【" + name + "】" + code;
}

void AppendPart(std::string& text, const base::Value& part) {
  const std::string piece = part.Text();
  if (piece.empty()) return;
  if (!text.empty()) text += "  ";
  text += piece;
}

// All texts of the current record, whatever its table has: short codes, bar codes, aliases, telephone numbers.
std::string AllTextsOf(const platform::Recordset& rows) {
  std::string texts;
  for (size_t field = 0; field < rows.FieldCount(); ++field) {
    const base::Value value = rows.FieldValue(field);
    const auto* text = value.As<std::string>();
    if (text != nullptr && !text->empty()) texts += *text + "\n";
  }
  return texts;
}

}  // namespace

std::vector<CatalogEntry> InventoryCatalog::Products() const {
  std::vector<CatalogEntry> entries;
  for (platform::Recordset rows = connection_.Execute("Select * From 商品设置 Order By 商品编号, pdID"); !rows.AtEnd();
       rows.MoveNext()) {
    CatalogEntry entry{KeyOf(rows.FieldValue("pdID")), {}, {}};
    if (entry.key <= 0) continue;
    for (const char* field : {"商品编号", "商品名称", "规格", "型号"}) AppendPart(entry.text, rows.FieldValue(field));
    entry.words = AllTextsOf(rows);
    entries.push_back(std::move(entry));
  }
  return entries;
}

std::vector<CatalogEntry> InventoryCatalog::SecondKeys(base::tqJournalTypeContants type) const {
  const SecondKeyQueries queries = QueriesOf(type);
  std::vector<CatalogEntry> entries{{0, {}, std::string(queries.all) + AllCovers(type)}};
  if (!queries.classes.empty()) {
    for (platform::Recordset rows = connection_.Execute(queries.classes); !rows.AtEnd(); rows.MoveNext()) {
      const std::string code = rows.FieldValue(size_t{0}).Text();
      if (!code.empty()) entries.push_back({0, code, ClassText(code, rows.FieldValue(1).Text())});
    }
  }
  if (!queries.subjects.empty()) {
    for (platform::Recordset rows = connection_.Execute(queries.subjects); !rows.AtEnd(); rows.MoveNext()) {
      const int32_t key = KeyOf(rows.FieldValue(queries.key));
      if (key > 0) entries.push_back({key, {}, rows.FieldValue(queries.name).Text(), AllTextsOf(rows)});
    }
  }
  return entries;
}

int32_t InventoryCatalog::LowestProduct(const std::string& statement) const {
  const platform::Recordset rows = connection_.Execute(statement);
  return rows.AtEnd() ? 0 : KeyOf(rows.FieldValue(size_t{0}));
}

int32_t InventoryCatalog::FirstProductWithLines() const {
  int32_t lowest = 0;
  for (const char* table : {"入库记录", "出库记录"}) {
    const std::string select = std::string("Select Top 1 pdID From ") + table;
    if (LowestProduct(select + " Where pdID=1") == 1) return 1;
    const int32_t product = LowestProduct(select + " Where pdID>0 Order By pdID");
    if (product > 0 && (lowest == 0 || product < lowest)) lowest = product;
  }
  return lowest;
}

}  // namespace stockbook::app
