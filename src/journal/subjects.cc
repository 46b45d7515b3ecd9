// SPDX-License-Identifier: MIT
#include "journal/subjects.h"

#include <map>

#include "base/text.h"
#include "journal/vocabulary.h"

namespace stockbook::journal {
namespace {

constexpr const char* kProductQuery =
    "SELECT pd.pdID, pd.商品名称, pd.商品编号, pd.计量单位,pd.计量2, pd.计价方法, pd.进位方法, pd.最低库存, "
    "pd.最高库存, pd.输入简码,"
    " pd.KSID, pd.默认单价, pd.普通税率, pd.增值税率, pd.购进单价, pd.普购税率, pd.增购税率, pd.ClassCode, "
    "pd.单位数量, pd.存放位置,"
    " pd.商品条码, pd.生产厂家, pd.备注, pd.别名, pd.颜色, pd.重量, pd.定义, pd.规格, pd.型号 FROM 商品设置 AS pd "
    "Where pdID=";
constexpr const char* kClassCode = "ClassCode";
constexpr const char* kClassName = "ClassName";
constexpr const char* kNameMissing = "读不到标题中的名称：";
constexpr const char* kClassMissing = "读不到分类代码：";

// The header shows the product's two descriptive columns crosswise.
void ReadProduct(const platform::Recordset& product, SecondUnit second_unit, SubjectTexts& texts) {
  if (product.AtEnd()) return;
  texts.key_name = product.FieldValue("商品名称").Text();
  texts.product_no = product.FieldValue("商品编号").Text();
  texts.standard = product.FieldValue("规格").Text();
  texts.model = product.FieldValue("型号").Text();
  texts.measure = product.FieldValue("计量单位").Text();
  const std::string unit = product.FieldValue("计量2").Text();
  if (second_unit == SecondUnit::kShown && !unit.empty()) texts.measure += "/" + unit;
}

// Of the first record; "" without one.
std::string FirstText(platform::Connection& connection, const std::string& statement, std::string_view field) {
  const platform::Recordset result = connection.Execute(statement);
  return result.AtEnd() ? std::string() : result.FieldValue(field).Text();
}

}  // namespace

SubjectTexts Subjects::Read(int32_t key, SecondUnit second_unit) const {
  SubjectTexts texts;
  if (type_ == base::SupplierJournal || type_ == base::CustomerJournal) {
    Member partner = ReadMember(key);
    texts.key_name = std::move(partner.name);
    texts.class_code = std::move(partner.class_code);
    return texts;
  }
  inventory_.Try(kNameMissing, [&] {
    ReadProduct(inventory_.connection()->Execute(kProductQuery + std::to_string(key)), second_unit, texts);
  });
  return texts;
}

Member Subjects::ReadMember(int32_t key) const {
  const JournalWords words = WordsOf(type_);
  Member member;
  inventory_.Try(kNameMissing, [&] {
    const platform::Recordset record =
        inventory_.connection()->Execute("Select * From " + std::string(words.subject_table) + " Where " +
                                         std::string(words.subject_key_field) + "=" + std::to_string(key));
    if (record.AtEnd()) return;
    member.name = record.FieldValue(words.subject_name_field).Text();
    member.class_code = record.FieldValue(kClassCode).Text();
  });
  return member;
}

std::string Subjects::ReadText(const std::string& statement, std::string_view field) const {
  std::string text;
  inventory_.Try(kNameMissing, [&] { text = FirstText(*inventory_.connection(), statement, field); });
  return text;
}

std::string Subjects::DepotName(const SubjectKeys& keys) const {
  if (type_ == base::MaterialJournal) {
    if (keys.dpID < 1) return "全部仓库";
    return ReadText("SELECT * FROM 仓库设置 Where dpID=" + std::to_string(keys.dpID), "仓库名称");
  }
  if (keys.dpCode.empty()) return "全部项目";
  if (keys.dpID > 0) return ReadText("SELECT * FROM 项目设置 Where 项目ID=" + std::to_string(keys.dpID), "项目名称");
  return ReadText("SELECT * FROM 项目分类 Where ClassCode='" + keys.dpCode + "'", kClassName);
}

std::string Subjects::SecondKeyClassCode(int32_t key, const SubjectKeys& keys) const {
  const JournalWords words = WordsOf(type_);
  if (words.class_code_key.empty()) return {};
  const std::string statement = "Select ClassCode From " + std::string(words.subject_table) + " Where " +
                                std::string(words.class_code_key) + "=" + std::to_string(key == 0 ? keys.dpID : key);
  const Inventory untold(inventory_.connection());
  std::string code;
  (type_ == base::ProjectJournal ? untold : inventory_).Try(kClassMissing, [&] {
    code = FirstText(*inventory_.connection(), statement, kClassCode);
  });
  return code;
}

void Subjects::CompleteClassCode(SubjectKeys& keys) const {
  if (keys.dpCode.empty() && keys.KeyID >= 1) keys.dpCode = SecondKeyClassCode(0, keys);
}

std::vector<std::string> Subjects::ClassNames(std::string_view code) const {
  const std::string table(WordsOf(type_).class_table);
  std::string statement;
  for (const size_t length : {2U, 4U, 6U, 8U, 10U}) {
    if (length > base::CharacterCount(code)) break;
    statement += statement.empty() ? "Select * From " : " Union Select * From ";
    statement += table + " Where ClassCode='" + std::string(base::LeftCharacters(code, length)) + "'";
  }
  if (statement.empty()) return {};
  std::map<std::string, std::string> by_code;  // so the shorter ones come first
  std::vector<std::string> names;
  inventory_.Try(kNameMissing, [&] {
    for (platform::Recordset classes = inventory_.connection()->Execute(statement); !classes.AtEnd();
         classes.MoveNext())
      by_code[classes.FieldValue(kClassCode).Text()] = classes.FieldValue(kClassName).Text();
    for (const auto& [class_code, name] : by_code) names.push_back(name);
  });
  return names;
}

}  // namespace stockbook::journal
