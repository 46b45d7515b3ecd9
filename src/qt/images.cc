// SPDX-License-Identifier: MIT
#include "stockbook/qt/images.h"

#include <functional>

#include "qt/icons.h"
#include "stockbook/qt/picture.h"

namespace stockbook::qt {
namespace {

constexpr int kIconPx = 16;
constexpr int kMarkPx = 6;

platform::PictureRef Drawn(int units, std::function<void(QPainter&)> draw) {
  return std::make_shared<QtPicture>(QSize(units, units),
                                     [units, draw = std::move(draw)](QPainter& painter, QSizeF size) {
                                       painter.scale(size.width() / units, size.height() / units);
                                       draw(painter);
                                     });
}

platform::PictureRef Bill(BillIcon kind, Audit audit) {
  return Drawn(kIconPx, [=](QPainter& painter) { DrawBill(painter, kind, audit); });
}

platform::PictureRef Subject(SubjectIcon subject) {
  return Drawn(kIconPx, [=](QPainter& painter) { DrawSubject(painter, subject); });
}

platform::PictureRef Journal(SubjectIcon subject) {
  return Drawn(kIconPx, [=](QPainter& painter) { DrawJournal(painter, subject); });
}

}  // namespace

QtImages::QtImages() {
  const std::pair<const char*, BillIcon> bills[] = {
      {"RevBill", BillIcon::kReceipt}, {"BuyBill", BillIcon::kPurchase},   {"IssBill", BillIcon::kIssue},
      {"SaleBill", BillIcon::kSale},   {"ShiftBill", BillIcon::kTransfer}, {"Bill", BillIcon::kOther},
  };
  for (const auto& [key, kind] : bills) {
    pictures_[key] = Bill(kind, Audit::kOpen);
    pictures_[std::string(key) + "1"] = Bill(kind, Audit::kAudited);
  }
  pictures_["Mtr"] = Subject(SubjectIcon::kProduct);
  pictures_["Depot"] = Subject(SubjectIcon::kDepot);
  pictures_["Supplier"] = Subject(SubjectIcon::kSupplier);
  pictures_["Customer"] = Subject(SubjectIcon::kCustomer);
  pictures_["Project"] = Subject(SubjectIcon::kProject);
  pictures_["StkBk"] = Drawn(kIconPx, DrawStockBook);
  pictures_["SuppJnl"] = Journal(SubjectIcon::kSupplier);
  pictures_["CustJnl"] = Journal(SubjectIcon::kCustomer);
  pictures_["ProjJnl"] = Journal(SubjectIcon::kProject);
  pictures_["Mark"] = Drawn(kMarkPx, DrawMark);
}

platform::PictureRef QtImages::Find(std::string_view key) const {
  const auto found = pictures_.find(key);
  return found == pictures_.end() ? nullptr : found->second;
}

}  // namespace stockbook::qt
