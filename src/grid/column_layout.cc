// SPDX-License-Identifier: MIT
#include "grid/column_layout.h"

#include "base/text.h"
#include "grid/field_captions.h"

namespace stockbook::grid {
namespace {

constexpr const char* kAlwaysHidden =
    "|Period|BillDate|RecID|BillID|dpID|ksID|pjID|pdID|OtherID|Flag|DQty|DStoQty|BillName|Measure2|";
constexpr const char* kTaxKeys = "Ratio|Tax|TaxPrice|TaxAccount|";
constexpr int kScratchColumns = 100;
constexpr auto kText = platform::DataType::kString;
constexpr auto kLong = platform::DataType::kLong;
constexpr auto kDouble = platform::DataType::kDouble;
constexpr auto kCurrency = platform::DataType::kCurrency;
constexpr auto kDate = platform::DataType::kDate;
constexpr auto kLeft = platform::Alignment::kLeftCenter;
constexpr auto kCenter = platform::Alignment::kCenterCenter;
constexpr auto kRight = platform::Alignment::kRightCenter;

enum class Hide {
  kNo,
  kYes,
  kInList,
  kUnlessSupplier,
  kUnlessSupplierQty2,
  kUnlessCustomer,
  kUnlessCustomerQty2,
  kUnlessQty2,
  kUnlessInv,
};

// How the caption text of a definition is used: as it stands, behind a subject title, as the number of an optional
// field, or with another one for the journals that accumulate.
enum class Caption { kPlain, kMaterielTitle, kProjectTitle, kField, kStock };

enum class Format { kNone, kPrice, kQuantity, kAccount, kPercent, kDay };

}  // namespace

struct ColumnLayout::Definition {
  const char* key;
  const char* caption;
  Hide hide;
  platform::DataType type;
  Format format;
  float width_twips;
  platform::Alignment alignment;
  Caption caption_rule = Caption::kPlain;
  const char* other_caption = "";  // kStock: in the partner journals
};

const ColumnLayout::Definition* ColumnLayout::Definitions() {
  static constexpr Definition kDefinitions[kColumnCount] = {
      {"SeqNo", "", Hide::kNo, kLong, Format::kNone, 200, kCenter},
      {"Period", "Period", Hide::kYes, kText, Format::kNone, 900, kLeft},
      {"BillDate", "Period", Hide::kYes, kText, Format::kNone, 900, kLeft},  // captioned like Period, and stays so
      {"BillNo", "单据", Hide::kNo, kText, Format::kNone, 2800, kLeft},
      {"BillKind", "类型", Hide::kNo, kText, Format::kNone, 600, kLeft},
      {"Explain", "摘要", Hide::kNo, kText, Format::kNone, 1000, kLeft},
      {"ProductName", "名称", Hide::kInList, kText, Format::kNone, 1200, kLeft, Caption::kMaterielTitle},
      {"ProductNo", "编号", Hide::kYes, kText, Format::kNone, 1000, kLeft, Caption::kMaterielTitle},
      {"Model", "规格", Hide::kYes, kText, Format::kNone, 600, kLeft},
      {"Standard", "型号", Hide::kYes, kText, Format::kNone, 600, kLeft},
      {"Measure", "单位", Hide::kYes, kText, Format::kNone, 500, kCenter},
      {"Measure2", "单位2", Hide::kYes, kText, Format::kNone, 500, kCenter},
      {"Price", "单价", Hide::kInList, kDouble, Format::kPrice, 1200, kRight},
      {"Quantity", "入库/出库|数量", Hide::kInList, kDouble, Format::kQuantity, 1400, kRight},
      {"Quantity2", "入库/出库|数量2", Hide::kInList, kDouble, Format::kNone, 1400, kRight},
      {"Account", "入库/出库|金额", Hide::kInList, kCurrency, Format::kAccount, 1400, kRight},
      {"RevQty", "入库数量", Hide::kUnlessSupplier, kDouble, Format::kQuantity, 1400, kRight},
      {"RevQty2", "入库数量2", Hide::kUnlessSupplierQty2, kDouble, Format::kNone, 1400, kRight},
      {"RevAcc", "入库金额", Hide::kUnlessSupplier, kCurrency, Format::kAccount, 1400, kRight},
      {"IssQty", "出库数量", Hide::kUnlessCustomer, kDouble, Format::kQuantity, 1400, kRight},
      {"IssQty2", "出库数量2", Hide::kUnlessCustomerQty2, kDouble, Format::kNone, 1400, kRight},
      {"IssAcc", "出库金额", Hide::kUnlessCustomer, kCurrency, Format::kAccount, 1400, kRight},
      {"StoPrice", "库存单价", Hide::kNo, kDouble, Format::kPrice, 1200, kRight, Caption::kStock, "累计均价"},
      {"StoQty", "库存数量", Hide::kNo, kDouble, Format::kQuantity, 1400, kRight, Caption::kStock, "累计数量"},
      {"StoQty2", "库存数量2", Hide::kUnlessQty2, kDouble, Format::kNone, 1400, kRight, Caption::kStock, "累计数量2"},
      {"StoAcc", "库存金额", Hide::kNo, kCurrency, Format::kAccount, 1400, kRight, Caption::kStock, "累计金额"},
      {"Ratio", "税率", Hide::kUnlessInv, kDouble, Format::kPercent, 900, kRight},
      {"Tax", "税额", Hide::kUnlessInv, kDouble, Format::kAccount, 1000, kRight},
      {"TaxPrice", "含税单价", Hide::kUnlessInv, kDouble, Format::kPrice, 1200, kRight},
      {"TaxAccount", "含税金额", Hide::kUnlessInv, kDouble, Format::kAccount, 1400, kRight},
      {"Field0", "0", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kField},
      {"Field1", "1", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kField},
      {"Field2", "2", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kField},
      {"Field3", "3", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kField},
      {"Field4", "4", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kField},
      {"Field5", "5", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kField},
      {"Field6", "6", Hide::kYes, kText, Format::kDay, 1400, kLeft, Caption::kField},
      {"Depot", "仓库名称", Hide::kYes, kText, Format::kNone, 1400, kLeft},
      {"Enterprise", "单位名称", Hide::kYes, kText, Format::kNone, 1400, kLeft},
      {"Project", "名称", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kProjectTitle},
      {"ProjNo", "编号", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kProjectTitle},
      {"Inputor", "录入员", Hide::kYes, kText, Format::kNone, 1400, kLeft},
      {"InputDate", "录入日期", Hide::kYes, kDate, Format::kDay, 1400, kLeft},
      {"Auditor", "审核员", Hide::kYes, kText, Format::kNone, 1400, kLeft},
      {"AuditDate", "审核日期", Hide::kYes, kDate, Format::kDay, 1400, kLeft},
      {"DQty", "D库存数量", Hide::kYes, kDouble, Format::kQuantity, 1400, kRight},
      {"DStoQty", "D库存数量", Hide::kYes, kDouble, Format::kQuantity, 1400, kRight},
      {"BillID", "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {"RecID", "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {"dpID", "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {"ksID", "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {"pjID", "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {"OtherID", "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {"pdID", "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {"Flag", "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {"BillName", "单据名称", Hide::kYes, kText, Format::kNone, 400, kRight},
  };
  return kDefinitions;
}

bool ColumnLayout::ShowsStock() const {
  return settings_.journal_type == base::MaterialJournal || settings_.journal_type == base::ProjectJournal;
}

void ColumnLayout::BuildHiddenKeys() {
  hidden_keys_.Assign(kAlwaysHidden);
  if (!settings_.allow_inv) hidden_keys_.Append(kTaxKeys);
  switch (settings_.journal_type) {
    case base::MaterialJournal:
    case base::ProjectJournal:
      hidden_keys_.Append("ProductName|ProductNo|Model|Standard|Measure|");
      break;
    case base::SupplierJournal:
      hidden_keys_.Append("Quantity|Quantity2|Account|IssQty|IssAcc|");
      break;
    case base::CustomerJournal:
      hidden_keys_.Append("Quantity|Quantity2|Account|RevQty|RevAcc|");
      break;
  }
  hidden_keys_.Append(settings_.fields_filter);
  if (!settings_.allow_qty2) {
    for (const char* key : {"Quantity2", "RevQty2", "IssQty2", "StoQty2"}) hidden_keys_.HideKey(key);
  }
  if (!settings_.allow_inv) {
    for (const char* key : {"Ratio", "Tax", "TaxPrice", "TaxAccount"}) hidden_keys_.HideKey(key);
  }
}

std::string ColumnLayout::CaptionOf(const Definition& definition) const {
  switch (definition.caption_rule) {
    case Caption::kPlain:
      break;
    case Caption::kMaterielTitle:
      return settings_.titles[base::MaterialJournal] + definition.caption;
    case Caption::kProjectTitle:
      return settings_.titles[base::ProjectJournal] + definition.caption;
    case Caption::kField:
      return FieldCaption(settings_, definition.caption[0] - '0');
    case Caption::kStock:
      return ShowsStock() ? definition.caption : definition.other_caption;
  }
  return definition.caption;
}

std::string ColumnLayout::FormatOf(const Definition& definition) const {
  switch (definition.format) {
    case Format::kNone:
      break;
    case Format::kPrice:
      return settings_.price_format;
    case Format::kQuantity:
      return settings_.quantity_format;
    case Format::kAccount:
      return settings_.account_format;
    case Format::kPercent:
      return "#0.00%";
    case Format::kDay:
      return "yyyy-MM-dd";
  }
  return {};
}

bool ColumnLayout::IsHidden(const Definition& definition) const {
  const bool supplier = settings_.journal_type == base::SupplierJournal;
  const bool customer = settings_.journal_type == base::CustomerJournal;
  switch (definition.hide) {
    case Hide::kNo:
      return false;
    case Hide::kYes:
      return true;
    case Hide::kInList:
      return hidden_keys_.IsHiddenKey(definition.key);
    case Hide::kUnlessSupplier:
      return !supplier;
    case Hide::kUnlessSupplierQty2:
      return !supplier || !settings_.allow_qty2;
    case Hide::kUnlessCustomer:
      return !customer;
    case Hide::kUnlessCustomerQty2:
      return !customer || !settings_.allow_qty2;
    case Hide::kUnlessQty2:
      return !settings_.allow_qty2;
    case Hide::kUnlessInv:
      return !settings_.allow_inv;
  }
  return false;
}

void ColumnLayout::AddColumn(int position, const ColumnAttributes& attributes) {
  int column = grid_.ColIndex(attributes.key);
  if (column < 0) {
    grid_.SetCols(grid_.Cols() + 1);
    column = grid_.Cols() - 1;
  }
  if (column != position) grid_.SetColPosition(column, position);
  const std::string caption =
      attributes.caption.empty() && position > 0 ? std::string(attributes.key) : attributes.caption;
  grid_.SetTextMatrix(0, position, base::ReplaceAll(caption, "|", "\n"));
  grid_.SetColKey(position, attributes.key);
  grid_.SetColHidden(position, attributes.hidden);
  grid_.SetColDataType(position, attributes.type);
  grid_.SetColFormat(position, attributes.format);
  grid_.SetColWidth(position, static_cast<int>(attributes.width_twips));
  grid_.SetColAlignment(position, attributes.alignment);
}

void ColumnLayout::FormatColumns(std::string_view outline_key) {
  grid_.SetCols(kScratchColumns);
  grid_.SetColAlignment(-1, platform::Alignment::kGeneral);
  BuildHiddenKeys();
  for (int position = 0; position < kColumnCount; ++position) {
    const Definition& definition = Definitions()[position];
    AddColumn(position, {definition.key, CaptionOf(definition), FormatOf(definition), IsHidden(definition),
                         definition.type, definition.alignment, definition.width_twips});
  }
  grid_.SetCols(kColumnCount);
  grid_.SetCellAlignment({0, 0, 1, grid_.Cols()}, platform::Alignment::kCenterCenter);
  grid_.SetOutlineCol(grid_.ColIndex(outline_key));
}

}  // namespace stockbook::grid
