// SPDX-License-Identifier: MIT
#include "interaction/subject_header.h"

#include "journal/periods.h"

namespace stockbook::interaction {
namespace {

constexpr const char* kProductQuery =
    "SELECT pd.pdID, pd.商品名称, pd.商品编号, pd.计量单位,pd.计量2, pd.计价方法, pd.进位方法, pd.最低库存, "
    "pd.最高库存, pd.输入简码,"
    " pd.KSID, pd.默认单价, pd.普通税率, pd.增值税率, pd.购进单价, pd.普购税率, pd.增购税率, pd.ClassCode, "
    "pd.单位数量, pd.存放位置,"
    " pd.商品条码, pd.生产厂家, pd.备注, pd.别名, pd.颜色, pd.重量, pd.定义, pd.规格, pd.型号 FROM 商品设置 AS pd "
    "Where pdID=";

std::string Number(int64_t number) { return std::to_string(number); }

void ReadPartner(const platform::Recordset& partner, SubjectTexts& texts) {
  if (partner.AtEnd()) return;
  texts.key_name = partner.FieldValue("企业名称").Text();
  texts.class_code = partner.FieldValue("ClassCode").Text();
}

// The product's two descriptive columns are surfaced crosswise in the header.
void ReadProduct(const platform::Recordset& product, bool allow_qty2, SubjectTexts& texts) {
  if (product.AtEnd()) return;
  texts.key_name = product.FieldValue("商品名称").Text();
  texts.product_no = product.FieldValue("商品编号").Text();
  texts.standard = product.FieldValue("规格").Text();
  texts.model = product.FieldValue("型号").Text();
  texts.measure = product.FieldValue("计量单位").Text();
  const std::string second_unit = product.FieldValue("计量2").Text();
  if (allow_qty2 && !second_unit.empty()) texts.measure += "/" + second_unit;
}

}  // namespace

std::string_view HeaderPictureKey(base::tqJournalTypeContants type) {
  switch (type) {
    case base::SupplierJournal:
      return "SuppJnl";
    case base::CustomerJournal:
      return "CustJnl";
    case base::ProjectJournal:
      return "ProjJnl";
    case base::MaterialJournal:
      break;
  }
  return "StkBk";
}

SubjectTexts SubjectHeader::Lookup(int32_t key, bool allow_qty2) const {
  SubjectTexts texts;
  if (connection_ == nullptr) return texts;
  try {
    switch (type_) {
      case base::SupplierJournal:
        ReadPartner(connection_->Execute("Select * From 厂商资料 Where ksID=" + Number(key)), texts);
        break;
      case base::CustomerJournal:
        ReadPartner(connection_->Execute("Select * From 客户资料 Where ksID=" + Number(key)), texts);
        break;
      default:
        ReadProduct(connection_->Execute(kProductQuery + Number(key)), allow_qty2, texts);
    }
  } catch (const std::exception&) {
    // A failing query leaves the texts that were read.
  }
  return texts;
}

std::string SubjectHeader::ReadText(const std::string& statement, std::string_view field) const {
  if (connection_ == nullptr) return {};
  try {
    const platform::Recordset result = connection_->Execute(statement);
    return result.AtEnd() ? std::string() : result.FieldValue(field).Text();
  } catch (const std::exception&) {
    return {};
  }
}

std::string SubjectHeader::DepotName(const journal::SubjectKeys& keys) const {
  if (type_ == base::MaterialJournal) {
    if (keys.dpID < 1) return "全部仓库";
    return ReadText("SELECT * FROM 仓库设置 Where dpID=" + Number(keys.dpID), "仓库名称");
  }
  if (keys.dpCode.empty()) return "全部项目";
  if (keys.dpID > 0) return ReadText("SELECT * FROM 项目设置 Where 项目ID=" + Number(keys.dpID), "项目名称");
  return ReadText("SELECT * FROM 项目分类 Where ClassCode='" + keys.dpCode + "'", "ClassName");
}

std::string SubjectHeader::AccPeriod() const { return journal::NewestAccPeriod(connection_); }

std::string SubjectHeader::SecondKeyClassCode(int32_t key, const journal::SubjectKeys& keys) const {
  const std::string number = Number(key == 0 ? keys.dpID : key);
  switch (type_) {
    case base::SupplierJournal:
      return ReadText("Select ClassCode From 厂商资料 Where ksID=" + number, "ClassCode");
    case base::CustomerJournal:
      return ReadText("Select ClassCode From 客户资料 Where ksID=" + number, "ClassCode");
    // The project table names its key otherwise; where it has no such column the lookup finds nothing, and stays so.
    case base::ProjectJournal:
      return ReadText("Select ClassCode From 项目设置 Where pjID=" + number, "ClassCode");
    case base::MaterialJournal:
      break;
  }
  return {};
}

}  // namespace stockbook::interaction
