// SPDX-License-Identifier: MIT
#include "com/window/images.h"

#include <memory>
#include <utility>
#include <vector>

#include "com/window/drawn_picture.h"
#include "com/window/icons.h"

namespace stockbook::com {
namespace {

platform::PictureRef DrawnIcon(std::vector<Shape> shapes) {
  return std::make_shared<DrawnPicture>(kIconUnits, std::move(shapes));
}

}  // namespace

WindowImages::WindowImages() {
  const std::pair<const char*, BillIcon> bills[] = {
      {"RevBill", BillIcon::kReceipt}, {"BuyBill", BillIcon::kPurchase},   {"IssBill", BillIcon::kIssue},
      {"SaleBill", BillIcon::kSale},   {"ShiftBill", BillIcon::kTransfer}, {"Bill", BillIcon::kOther},
  };
  for (const auto& [key, kind] : bills) {
    pictures_[key] = DrawnIcon(BillShapes(kind, Audit::kOpen));
    pictures_[std::string(key) + "1"] = DrawnIcon(BillShapes(kind, Audit::kAudited));
  }
  pictures_["Mtr"] = DrawnIcon(SubjectShapes(SubjectIcon::kProduct));
  pictures_["Depot"] = DrawnIcon(SubjectShapes(SubjectIcon::kDepot));
  pictures_["Supplier"] = DrawnIcon(SubjectShapes(SubjectIcon::kSupplier));
  pictures_["Customer"] = DrawnIcon(SubjectShapes(SubjectIcon::kCustomer));
  pictures_["Project"] = DrawnIcon(SubjectShapes(SubjectIcon::kProject));
  pictures_["StkBk"] = DrawnIcon(StockBookShapes());
  pictures_["SuppJnl"] = DrawnIcon(JournalShapes(SubjectIcon::kSupplier));
  pictures_["CustJnl"] = DrawnIcon(JournalShapes(SubjectIcon::kCustomer));
  pictures_["ProjJnl"] = DrawnIcon(JournalShapes(SubjectIcon::kProject));
  pictures_["Mark"] = std::make_shared<DrawnPicture>(kMarkUnits, MarkShapes());
}

platform::PictureRef WindowImages::Find(std::string_view key) const {
  const auto found = pictures_.find(key);
  return found == pictures_.end() ? nullptr : found->second;
}

}  // namespace stockbook::com
