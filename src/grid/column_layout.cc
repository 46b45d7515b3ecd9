// SPDX-License-Identifier: MIT
#include "grid/column_layout.h"

#include "base/text.h"
#include "grid/field_captions.h"
#include "stockbook/base/column_keys.h"

namespace stockbook::grid {
namespace {

namespace keys = base::keys;

constexpr const char* kAlwaysHidden[] = {keys::kPeriod, keys::kBillDate, keys::kRecID,    keys::kBillID,  keys::kDpID,
                                         keys::kKsID,   keys::kPjID,     keys::kPdID,     keys::kOtherID, keys::kFlag,
                                         keys::kDQty,   keys::kDStoQty,  keys::kBillName, keys::kMeasure2};
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

// How the caption text of a definition is used: unchanged, after a subject title, as the number of an optional field,
// or replaced by another text in the journals that accumulate.
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
      {keys::kSeqNo, "", Hide::kNo, kLong, Format::kNone, 200, kCenter},
      {keys::kPeriod, keys::kPeriod, Hide::kYes, kText, Format::kNone, 900, kLeft},
      {keys::kBillDate, keys::kPeriod, Hide::kYes, kText, Format::kNone, 900,
       kLeft},  // the same caption as Period, on purpose
      {keys::kBillNo, "单据", Hide::kNo, kText, Format::kNone, 2800, kLeft},
      {keys::kBillKind, "类型", Hide::kNo, kText, Format::kNone, 600, kLeft},
      {keys::kExplain, "摘要", Hide::kNo, kText, Format::kNone, 1000, kLeft},
      {keys::kProductName, "名称", Hide::kInList, kText, Format::kNone, 1200, kLeft, Caption::kMaterielTitle},
      {keys::kProductNo, "编号", Hide::kYes, kText, Format::kNone, 1000, kLeft, Caption::kMaterielTitle},
      {keys::kModel, "规格", Hide::kYes, kText, Format::kNone, 600, kLeft},
      {keys::kStandard, "型号", Hide::kYes, kText, Format::kNone, 600, kLeft},
      {keys::kMeasure, "单位", Hide::kYes, kText, Format::kNone, 500, kCenter},
      {keys::kMeasure2, "单位2", Hide::kYes, kText, Format::kNone, 500, kCenter},
      {keys::kPrice, "单价", Hide::kInList, kDouble, Format::kPrice, 1200, kRight},
      {keys::kQuantity, "入库/出库|数量", Hide::kInList, kDouble, Format::kQuantity, 1400, kRight},
      {keys::kQuantity2, "入库/出库|数量2", Hide::kInList, kDouble, Format::kNone, 1400, kRight},
      {keys::kAccount, "入库/出库|金额", Hide::kInList, kCurrency, Format::kAccount, 1400, kRight},
      {keys::kRevQty, "入库数量", Hide::kUnlessSupplier, kDouble, Format::kQuantity, 1400, kRight},
      {keys::kRevQty2, "入库数量2", Hide::kUnlessSupplierQty2, kDouble, Format::kNone, 1400, kRight},
      {keys::kRevAcc, "入库金额", Hide::kUnlessSupplier, kCurrency, Format::kAccount, 1400, kRight},
      {keys::kIssQty, "出库数量", Hide::kUnlessCustomer, kDouble, Format::kQuantity, 1400, kRight},
      {keys::kIssQty2, "出库数量2", Hide::kUnlessCustomerQty2, kDouble, Format::kNone, 1400, kRight},
      {keys::kIssAcc, "出库金额", Hide::kUnlessCustomer, kCurrency, Format::kAccount, 1400, kRight},
      {keys::kStoPrice, "库存单价", Hide::kNo, kDouble, Format::kPrice, 1200, kRight, Caption::kStock, "累计均价"},
      {keys::kStoQty, "库存数量", Hide::kNo, kDouble, Format::kQuantity, 1400, kRight, Caption::kStock, "累计数量"},
      {keys::kStoQty2, "库存数量2", Hide::kUnlessQty2, kDouble, Format::kNone, 1400, kRight, Caption::kStock,
       "累计数量2"},
      {keys::kStoAcc, "库存金额", Hide::kNo, kCurrency, Format::kAccount, 1400, kRight, Caption::kStock, "累计金额"},
      {keys::kRatio, "税率", Hide::kUnlessInv, kDouble, Format::kPercent, 900, kRight},
      {keys::kTax, "税额", Hide::kUnlessInv, kDouble, Format::kAccount, 1000, kRight},
      {keys::kTaxPrice, "含税单价", Hide::kUnlessInv, kDouble, Format::kPrice, 1200, kRight},
      {keys::kTaxAccount, "含税金额", Hide::kUnlessInv, kDouble, Format::kAccount, 1400, kRight},
      {keys::kField0, "0", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kField},
      {keys::kField1, "1", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kField},
      {keys::kField2, "2", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kField},
      {keys::kField3, "3", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kField},
      {keys::kField4, "4", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kField},
      {keys::kField5, "5", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kField},
      {keys::kField6, "6", Hide::kYes, kText, Format::kDay, 1400, kLeft, Caption::kField},
      {keys::kDepot, "仓库名称", Hide::kYes, kText, Format::kNone, 1400, kLeft},
      {keys::kEnterprise, "单位名称", Hide::kYes, kText, Format::kNone, 1400, kLeft},
      {keys::kProject, "名称", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kProjectTitle},
      {keys::kProjNo, "编号", Hide::kYes, kText, Format::kNone, 1400, kLeft, Caption::kProjectTitle},
      {keys::kInputor, "录入员", Hide::kYes, kText, Format::kNone, 1400, kLeft},
      {keys::kInputDate, "录入日期", Hide::kYes, kDate, Format::kDay, 1400, kLeft},
      {keys::kAuditor, "审核员", Hide::kYes, kText, Format::kNone, 1400, kLeft},
      {keys::kAuditDate, "审核日期", Hide::kYes, kDate, Format::kDay, 1400, kLeft},
      {keys::kDQty, "D库存数量", Hide::kYes, kDouble, Format::kQuantity, 1400, kRight},
      {keys::kDStoQty, "D库存数量", Hide::kYes, kDouble, Format::kQuantity, 1400, kRight},
      {keys::kBillID, "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {keys::kRecID, "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {keys::kDpID, "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {keys::kKsID, "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {keys::kPjID, "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {keys::kOtherID, "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {keys::kPdID, "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {keys::kFlag, "", Hide::kYes, kLong, Format::kNone, 400, kRight},
      {keys::kBillName, "单据名称", Hide::kYes, kText, Format::kNone, 400, kRight},
  };
  return kDefinitions;
}

bool ColumnLayout::ShowsStock() const {
  return settings_.journal_type == base::MaterialJournal || settings_.journal_type == base::ProjectJournal;
}

void ColumnLayout::BuildHiddenKeys() {
  hidden_keys_.Assign("|");
  hidden_keys_.AppendKeys(kAlwaysHidden);
  if (!settings_.allow_inv) hidden_keys_.AppendKeys(keys::kTaxes);
  switch (settings_.journal_type) {
    case base::MaterialJournal:
    case base::ProjectJournal:
      hidden_keys_.AppendKeys({keys::kProductName, keys::kProductNo, keys::kModel, keys::kStandard, keys::kMeasure});
      break;
    case base::SupplierJournal:
      hidden_keys_.AppendKeys({keys::kQuantity, keys::kQuantity2, keys::kAccount, keys::kIssQty, keys::kIssAcc});
      break;
    case base::CustomerJournal:
      hidden_keys_.AppendKeys({keys::kQuantity, keys::kQuantity2, keys::kAccount, keys::kRevQty, keys::kRevAcc});
      break;
  }
  hidden_keys_.Append(settings_.fields_filter);
  if (!settings_.allow_qty2) {
    for (const char* key : keys::kSecondUnit) hidden_keys_.HideKey(key);
  }
  if (!settings_.allow_inv) {
    for (const char* key : keys::kTaxes) hidden_keys_.HideKey(key);
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
