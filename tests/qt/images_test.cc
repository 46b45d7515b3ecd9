// SPDX-License-Identifier: MIT
#include "stockbook/qt/images.h"

#include <gtest/gtest.h>

#include <QPixmap>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "qt/application.h"
#include "qt/icons.h"
#include "stockbook/qt/picture.h"

namespace stockbook::qt {
namespace {

using Images = WithApplication;

std::vector<std::string> Keys() {
  std::vector<std::string> keys{"Mtr",   "Depot",   "Supplier", "Customer", "Project",
                                "StkBk", "SuppJnl", "CustJnl",  "ProjJnl"};
  for (const char* bill : {"RevBill", "BuyBill", "IssBill", "SaleBill", "ShiftBill", "Bill"}) {
    keys.emplace_back(bill);
    keys.push_back(std::string(bill) + "1");
  }
  return keys;
}

TEST_F(Images, HasADifferentPictureForEveryKey) {
  const QtImages images;
  std::vector<QImage> seen;
  for (const std::string& key : Keys()) {
    const platform::PictureRef picture = images.Find(key);
    ASSERT_NE(picture, nullptr) << key;
    EXPECT_EQ(picture->WidthPx(), 16) << key;
    EXPECT_EQ(picture->HeightPx(), 16) << key;
    const QImage image = ImageOf(*picture, {16, 16});
    EXPECT_GT(PixelsUnlike(image, image.rect(), 0), 60) << key;
    for (const QImage& other : seen) EXPECT_NE(image, other) << key;
    seen.push_back(image);
  }
  EXPECT_NE(images.Find("Mark"), nullptr);
}

TEST_F(Images, HasTheDrawingOfItsKindUnderEachKey) {
  const QtImages images;
  const auto drawn = [](const std::function<void(QPainter&)>& draw) {
    return ImageOf(QtPicture(QSize(16, 16), [&](QPainter& painter, QSizeF) { draw(painter); }), {16, 16});
  };
  const std::pair<std::string, BillIcon> bills[] = {
      {"RevBill", BillIcon::kReceipt}, {"BuyBill", BillIcon::kPurchase},   {"IssBill", BillIcon::kIssue},
      {"SaleBill", BillIcon::kSale},   {"ShiftBill", BillIcon::kTransfer}, {"Bill", BillIcon::kOther}};
  for (const auto& [key, kind] : bills) {
    EXPECT_EQ(ImageOf(*images.Find(key), {16, 16}),
              drawn([kind = kind](QPainter& painter) { DrawBill(painter, kind, Audit::kOpen); }))
        << key;
    EXPECT_EQ(ImageOf(*images.Find(key + "1"), {16, 16}),
              drawn([kind = kind](QPainter& painter) { DrawBill(painter, kind, Audit::kAudited); }))
        << key;
  }
  const std::pair<const char*, SubjectIcon> subjects[] = {{"Mtr", SubjectIcon::kProduct},
                                                          {"Depot", SubjectIcon::kDepot},
                                                          {"Supplier", SubjectIcon::kSupplier},
                                                          {"Customer", SubjectIcon::kCustomer},
                                                          {"Project", SubjectIcon::kProject}};
  for (const auto& [key, subject] : subjects) {
    EXPECT_EQ(ImageOf(*images.Find(key), {16, 16}),
              drawn([subject = subject](QPainter& painter) { DrawSubject(painter, subject); }))
        << key;
  }
  const std::pair<const char*, SubjectIcon> journals[] = {
      {"SuppJnl", SubjectIcon::kSupplier}, {"CustJnl", SubjectIcon::kCustomer}, {"ProjJnl", SubjectIcon::kProject}};
  for (const auto& [key, subject] : journals) {
    EXPECT_EQ(ImageOf(*images.Find(key), {16, 16}),
              drawn([subject = subject](QPainter& painter) { DrawJournal(painter, subject); }))
        << key;
  }
}

TEST_F(Images, HasNoPictureForOtherKeys) {
  const QtImages images;
  for (const char* key : {"", "revbill", "RevBill2", "Bill11"}) EXPECT_EQ(images.Find(key), nullptr) << key;
}

TEST_F(Images, DrawsAPictureAnewForEverySize) {
  const platform::PictureRef picture = QtImages().Find("RevBill");
  const QImage large = ImageOf(*picture, {32, 32});
  EXPECT_EQ(large.size(), QSize(32, 32));
  EXPECT_NE(large, ImageOf(*picture, {16, 16}).scaled(32, 32));
}

TEST_F(Images, TakesPixmapsAtTheirLogicalSize) {
  QPixmap pixmap(40, 20);
  pixmap.fill(Qt::red);
  pixmap.setDevicePixelRatio(2);
  const platform::PictureRef picture = MakePicture(pixmap);
  EXPECT_EQ(picture->WidthPx(), 20);
  EXPECT_EQ(picture->HeightPx(), 10);
  EXPECT_EQ(ImageOf(*picture, {40, 20}).pixel(39, 19), 0xFFFF0000);
  EXPECT_EQ(MakePicture(QPixmap()), nullptr);
  EXPECT_EQ(MakePicture(QIcon(), {16, 16}), nullptr);
}

}  // namespace
}  // namespace stockbook::qt
