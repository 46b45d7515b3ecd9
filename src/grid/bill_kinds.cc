// SPDX-License-Identifier: MIT
#include "grid/bill_kinds.h"

#include <algorithm>
#include <array>

#include "columns/row_classes.h"
#include "stockbook/base/column_keys.h"

namespace stockbook::grid {
namespace {

namespace keys = base::keys;
using columns::ClassifyNumbers;
using columns::ClassifyTexts;

constexpr auto kPicturePlace = platform::PictureAlignment::kLeftCenter;
constexpr auto kMarkPlace = platform::PictureAlignment::kRightTop;
constexpr const char* kSupplierBills = "|入库单|采购单|";

struct Kind {
  const char* bill_name;  // nullptr matches any other name
  const char* image;
  platform::PictureRef Pictures::*host_picture;
  platform::PictureRef Pictures::*host_audited_picture;
};

constexpr std::array<Kind, 6> kKinds = {{
    {"入库单", "RevBill", &Pictures::rev, &Pictures::rev_audited},
    {"采购单", "BuyBill", &Pictures::bill, &Pictures::bill_audited},
    {"出库单", "IssBill", &Pictures::iss, &Pictures::iss_audited},
    {"销售单", "SaleBill", &Pictures::bill, &Pictures::bill_audited},
    {"调拨单", "ShiftBill", &Pictures::shift, &Pictures::shift_audited},
    {nullptr, "Bill", &Pictures::bill, &Pictures::bill_audited},
}};

uint8_t KindOf(std::string_view bill_name) {
  const auto found =
      std::find_if(kKinds.begin(), kKinds.end() - 1, [&](const Kind& kind) { return kind.bill_name == bill_name; });
  return static_cast<uint8_t>(found - kKinds.begin());
}

bool IsSupplierBill(std::string_view bill_name) {
  return std::string_view(kSupplierBills).find(bill_name) != std::string_view::npos;
}

uint8_t IsFilled(std::string_view text) { return text.empty() ? 0 : 1; }

}  // namespace

std::string BillKinds::Text(int row, std::string_view key) const { return grid_.TextMatrix(row, grid_.ColIndex(key)); }

bool BillKinds::IsAudited(int row) const { return !Text(row, keys::kAuditor).empty(); }

platform::PictureRef BillKinds::BillKindPicture(int row, const platform::GridView& view) const {
  if (row < grid_.FixedRows() || row >= grid_.Rows()) row = view.Row();
  const Kind& kind = kKinds[KindOf(Text(row, keys::kBillName))];
  return pictures_.*(IsAudited(row) ? kind.host_audited_picture : kind.host_picture);
}

void BillKinds::Place(int row, std::string_view key, const platform::PictureRef& picture,
                      platform::PictureAlignment alignment) {
  const int column = grid_.ColIndex(key);
  if (column >= 0) grid_.SetCellPicture({row, column, row + 1, column + 1}, picture, alignment);
}

void BillKinds::DecorateRow(int row) {
  const std::string bill_name = Text(row, keys::kBillName);
  const std::string image = std::string(kKinds[KindOf(bill_name)].image) + (IsAudited(row) ? "1" : "");
  Place(row, outline_key_, images_.Find(image), kPicturePlace);
  if (grid_.ValueMatrix(row, grid_.ColIndex(keys::kPdID)) > 0)
    Place(row, keys::kProductName, images_.Find("Mtr"), kPicturePlace);
  if (grid_.ValueMatrix(row, grid_.ColIndex(keys::kOtherID)) != 0) {
    Place(row, keys::kQuantity, mark_, kMarkPlace);
    Place(row, keys::kIssQty, mark_, kMarkPlace);
  }
  if (!Text(row, keys::kDepot).empty()) Place(row, keys::kDepot, images_.Find("Depot"), kPicturePlace);
  if (!Text(row, keys::kEnterprise).empty()) {
    Place(row, keys::kEnterprise, images_.Find(IsSupplierBill(bill_name) ? "Supplier" : "Customer"), kPicturePlace);
  }
  if (!Text(row, keys::kProject).empty()) Place(row, keys::kProject, images_.Find("Project"), kPicturePlace);
}

void BillKinds::PlaceRecords(std::string_view key, std::vector<uint8_t> codes,
                             std::vector<platform::PictureRef> pictures, platform::PictureAlignment alignment) {
  const int column = grid_.ColIndex(key);
  const bool shows = std::any_of(pictures.begin(), pictures.end(),
                                 [](const platform::PictureRef& picture) { return picture != nullptr; });
  const bool used = std::any_of(codes.begin(), codes.end(), [](uint8_t code) { return code != 0; });
  if (column >= 0 && shows && used) grid_.SetLoadedPictures(column, std::move(codes), std::move(pictures), alignment);
}

void BillKinds::DecorateRecords() {
  const size_t records = grid_.RecordCount();
  std::vector<uint8_t> kinds = ClassifyTexts(Loaded(keys::kBillName), records, KindOf);
  const std::vector<uint8_t> audited = ClassifyTexts(Loaded(keys::kAuditor), records, IsFilled);
  const std::vector<uint8_t> from_supplier = ClassifyTexts(Loaded(keys::kBillName), records, IsSupplierBill);
  std::vector<uint8_t> partners = ClassifyTexts(Loaded(keys::kEnterprise), records, IsFilled);
  for (size_t record = 0; record < records; ++record) {
    kinds[record] = static_cast<uint8_t>(1 + 2 * kinds[record] + audited[record]);
    if (partners[record] != 0 && from_supplier[record] == 0) partners[record] = 2;
  }
  std::vector<platform::PictureRef> host_pictures = {nullptr};
  std::vector<platform::PictureRef> images = {nullptr};
  for (const Kind& kind : kKinds) {
    host_pictures.insert(host_pictures.end(), {pictures_.*kind.host_picture, pictures_.*kind.host_audited_picture});
    images.insert(images.end(), {images_.Find(kind.image), images_.Find(std::string(kind.image) + "1")});
  }
  PlaceRecords(keys::kBillKind, kinds, std::move(host_pictures), kPicturePlace);
  PlaceRecords(outline_key_, std::move(kinds), std::move(images), kPicturePlace);
  const auto positive = [](double number) -> uint8_t { return number > 0 ? 1 : 0; };
  PlaceRecords(keys::kProductName, ClassifyNumbers(Loaded(keys::kPdID), records, positive),
               {nullptr, images_.Find("Mtr")}, kPicturePlace);
  const auto not_zero = [](double number) -> uint8_t { return number != 0 ? 1 : 0; };
  const std::vector<uint8_t> marked = ClassifyNumbers(Loaded(keys::kOtherID), records, not_zero);
  PlaceRecords(keys::kQuantity, marked, {nullptr, mark_}, kMarkPlace);
  PlaceRecords(keys::kIssQty, marked, {nullptr, mark_}, kMarkPlace);
  PlaceRecords(keys::kDepot, ClassifyTexts(Loaded(keys::kDepot), records, IsFilled), {nullptr, images_.Find("Depot")},
               kPicturePlace);
  PlaceRecords(keys::kEnterprise, std::move(partners), {nullptr, images_.Find("Supplier"), images_.Find("Customer")},
               kPicturePlace);
  PlaceRecords(keys::kProject, ClassifyTexts(Loaded(keys::kProject), records, IsFilled),
               {nullptr, images_.Find("Project")}, kPicturePlace);
}

}  // namespace stockbook::grid
