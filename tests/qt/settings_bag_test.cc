// SPDX-License-Identifier: MIT
#include "qt/settings_bag.h"

#include <gtest/gtest.h>
#include <QSettings>

#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QTemporaryDir>
#include <limits>
#include <memory>
#include <string>

#include "qt/application.h"
#include "qt/picture_file.h"
#include "qt/sheet/text.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/property_bag.h"
#include "stockbook/qt/images.h"
#include "stockbook/qt/picture.h"
#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::qt {
namespace {

using platform::BagValue;
using platform::PictureRef;

class Bag : public WithApplication {
 protected:
  Bag() { Open(); }

  // As the next run of the program finds it.
  void Open() {
    settings_ = std::make_unique<QSettings>(Path(), QSettings::IniFormat);
    bag_ = std::make_unique<SettingsBag>(*settings_, QStringLiteral("台账/外观"));
  }
  void Reopen() {
    bag_->Flush();
    Open();
  }
  void OpenText(const QByteArray& text) {
    settings_.reset();
    QFile file(Path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    settings_ = std::make_unique<QSettings>(Path(), QSettings::IniFormat);
    bag_ = std::make_unique<SettingsBag>(*settings_, QStringLiteral("Look"));
  }
  QString Path() const { return folder_.filePath(QStringLiteral("look.ini")); }
  std::string WhyNot(const char* key, const BagValue& fallback) {
    try {
      bag_->Read(key, fallback);
    } catch (const platform::Error& error) {
      return error.what();
    }
    return "read";
  }

  QTemporaryDir folder_;
  std::unique_ptr<QSettings> settings_;
  std::unique_ptr<SettingsBag> bag_;
};

PictureRef SomePicture(double scale = 1) {
  QPixmap pixmap(QSize(6, 4) * static_cast<int>(scale));
  pixmap.fill(Qt::transparent);
  QPainter(&pixmap).fillRect(QRect(1, 1, 2, 2), QColor(200, 10, 20, 128));
  pixmap.setDevicePixelRatio(scale);
  return MakePicture(pixmap);
}

QImage Shown(const PictureRef& picture, int scale = 1) {
  return ImageOf(*picture, QSize(picture->WidthPx(), picture->HeightPx()) * scale);
}

TEST_F(Bag, GivesBackEveryKindOfValue) {
  bag_->Write("BorderWidth", int16_t{-3});
  bag_->Write("BackColor", int32_t{0x00E2D2C7});
  bag_->Write("Least", std::numeric_limits<int32_t>::min());
  bag_->Write("BillPicture", SomePicture());
  Reopen();
  EXPECT_EQ(bag_->Read("BorderWidth", int16_t{0}), BagValue(int16_t{-3}));
  EXPECT_EQ(bag_->Read("BackColor", int32_t{0}), BagValue(int32_t{0x00E2D2C7}));
  EXPECT_EQ(bag_->Read("Least", int32_t{0}), BagValue(std::numeric_limits<int32_t>::min()));
  const auto picture = std::get<PictureRef>(bag_->Read("BillPicture", PictureRef()));
  ASSERT_NE(picture, nullptr);
  EXPECT_EQ(Shown(picture), Shown(SomePicture()));
}

TEST_F(Bag, GivesTheFallbackForAKeyThatIsNotThere) {
  const PictureRef picture = SomePicture();
  EXPECT_EQ(bag_->Read("BorderWidth", int16_t{7}), BagValue(int16_t{7}));
  EXPECT_EQ(bag_->Read("BackColor", int32_t{70000}), BagValue(int32_t{70000}));
  EXPECT_EQ(bag_->Read("BillPicture", picture), BagValue(picture));
}

TEST_F(Bag, KeepsThatThereIsNoPicture) {
  bag_->Write("BillPicture", PictureRef());
  Reopen();
  EXPECT_TRUE(settings_->contains(QStringLiteral("台账/外观/BillPicture")));
  EXPECT_EQ(bag_->Read("BillPicture", SomePicture()), BagValue(PictureRef()));
}

TEST_F(Bag, KeepsTheScaleOfAPicture) {
  bag_->Write("BillPicture", SomePicture(3));
  Reopen();
  const auto picture = std::get<PictureRef>(bag_->Read("BillPicture", PictureRef()));
  EXPECT_EQ(picture->WidthPx(), 6);
  EXPECT_EQ(picture->HeightPx(), 4);
  EXPECT_EQ(Shown(picture, 3), Shown(SomePicture(3), 3));
}

TEST_F(Bag, KeepsADrawnPictureSharpForScreensOfAnyScale) {
  const PictureRef drawn = QtImages().Find("RevBill");
  bag_->Write("RevPicture", drawn);
  Reopen();
  const auto picture = std::get<PictureRef>(bag_->Read("RevPicture", PictureRef()));
  EXPECT_EQ(picture->WidthPx(), drawn->WidthPx());
  EXPECT_EQ(Shown(picture, 4), Shown(drawn, 4));
}

TEST_F(Bag, WritesTheSameBytesEveryTime) {
  const PictureRef drawn = QtImages().Find("Bill");
  EXPECT_EQ(ToPng(*drawn), ToPng(*drawn));
  EXPECT_EQ(ToPng(*FromPng(*ToPng(*drawn))), ToPng(*drawn));
}

TEST_F(Bag, RefusesNumbersThatDoNotFit) {
  OpenText("[Look]\nBorderWidth=32768\nBackColor=2147483648\nLeast=-32768\n");
  EXPECT_EQ(WhyNot("BorderWidth", int16_t{0}),
            "外观设置“Look/BorderWidth”无法读取：32768 超出了 16 位整数的范围；请在“" + FromQString(Path()) +
                "”中改正或删去它。");
  EXPECT_EQ(WhyNot("BackColor", int32_t{0}).find("2147483648 超出了 32 位整数的范围") == std::string::npos, false);
  EXPECT_EQ(bag_->Read("Least", int16_t{0}), BagValue(int16_t{-32768}));
}

TEST_F(Bag, RefusesValuesOfAnotherKind) {
  OpenText("[Look]\nText=blue\nHalf=2.5\nEmpty=\nMany=1, 2\nPicture=blue\nBytes=@ByteArray(no picture)\nNumber=5\n");
  for (const char* key : {"Text", "Half", "Empty", "Many", "Picture"}) {
    EXPECT_NE(WhyNot(key, int32_t{1}).find("不是整数"), std::string::npos) << key;
  }
  for (const char* key : {"Picture", "Bytes", "Number", "Many"}) {
    EXPECT_NE(WhyNot(key, PictureRef()).find("不是 PNG 图片"), std::string::npos) << key;
  }
}

TEST_F(Bag, SaysThatAStoreIsNone) {
  OpenText("this is no settings file\n[[[\n=\n");
  EXPECT_NE(WhyNot("BackColor", int32_t{0}).find("存储打不开或不是设置文件"), std::string::npos);
}

TEST_F(Bag, SaysThatAStoreCannotBeWritten) {
  OpenText("[Look]\n");
  // A file cannot be used as a folder.
  QSettings settings(Path() + QStringLiteral("/below.ini"), QSettings::IniFormat);
  SettingsBag bag(settings, QStringLiteral("Look"));
  EXPECT_EQ(bag.Read("BackColor", int32_t{5}), BagValue(int32_t{5}));
  try {
    bag.Write("BackColor", int32_t{1});
    FAIL() << "written";
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.operation(), "write Look/BackColor");
    EXPECT_EQ(std::string(error.what()),
              "外观设置“Look/BackColor”无法保存：存储不可写；请检查“" + FromQString(Path()) + "/below.ini”能否写入。");
  }
}

TEST_F(Bag, RefusesAPictureOfAnotherToolkit) {
  class Foreign : public platform::Picture {
    int WidthPx() const override { return 4; }
    int HeightPx() const override { return 4; }
  };
  EXPECT_THROW(bag_->Write("BillPicture", PictureRef(std::make_shared<Foreign>())), platform::Error);
}

TEST_F(Bag, WithoutAGroupWritesAtTheTop) {
  SettingsBag bag(*settings_, QString());
  bag.Write("GridLines", int32_t{2});
  EXPECT_EQ(settings_->value(QStringLiteral("GridLines")).toInt(), 2);
}

TEST_F(Bag, CarriesAllLooksOfAWidgetToAnother) {
  StockbookWidget first;
  first.SetBorderWidth(4);
  first.SetBackColor(QColor(1, 2, 3));
  first.SetGridLines(AppearanceProperties::GridRaised);
  first.SetRevPicture(PixmapOf(SomePicture()));
  first.SetMarkBackPicture(PixmapOf(SomePicture(2)));
  first.SetIssPicture(QPixmap());
  first.SetRowHeightMin(120.75F);
  first.SaveProperties(*settings_, QStringLiteral("台账/外观"));
  Open();
  settings_->beginGroup(QStringLiteral("台账/外观"));
  EXPECT_EQ(settings_->childKeys().size(), 35);
  settings_->endGroup();
  StockbookWidget second;
  second.RestoreProperties(*settings_, QStringLiteral("台账/外观"));
  EXPECT_EQ(second.BorderWidth(), 4);
  EXPECT_EQ(second.BackColor(), QColor(1, 2, 3));
  EXPECT_EQ(second.GridLines(), AppearanceProperties::GridRaised);
  EXPECT_EQ(second.RevPicture().toImage(), first.RevPicture().toImage());
  EXPECT_EQ(second.MarkBackPicture().deviceIndependentSize(), QSizeF(6, 4));
  EXPECT_TRUE(second.IssPicture().isNull());
  EXPECT_EQ(second.RowHeightMin(), 120.0F) << "saved in whole twips";
  QSettings again(folder_.filePath(QStringLiteral("again.ini")), QSettings::IniFormat);
  second.SaveProperties(again, QStringLiteral("台账/外观"));
  for (const QString& key : settings_->allKeys())
    EXPECT_EQ(again.value(key), settings_->value(key)) << key.toStdString();
}

TEST_F(Bag, LeavesAWidgetAsItIsWhenNothingWasSaved) {
  StockbookWidget widget;
  const QColor back = widget.BackColor();
  const platform::PictureRef picture = widget.control().BillPicture();
  widget.RestoreProperties(*settings_, QStringLiteral("台账/外观"));
  EXPECT_EQ(widget.BackColor(), back);
  EXPECT_EQ(widget.control().BillPicture(), picture);
}

TEST_F(Bag, FrameTheWidgetAsTheyWereSaved) {
  OpenText("[Look]\nBorderWidth=9\nChildSpacing=5\n");
  StockbookWidget widget;
  widget.resize(400, 300);
  widget.show();
  widget.RestoreProperties(*settings_, QStringLiteral("Look"));
  EXPECT_EQ(widget.viewport()->mapTo(&widget, QPoint()).x(), 9);
}

TEST_F(Bag, StopsARestoreAtTheFirstKeyThatIsWrong) {
  OpenText("[Look]\nBorderWidth=9\nChildSpacing=much\nBackColor=255\n");
  StockbookWidget widget;
  const QColor back = widget.BackColor();
  EXPECT_THROW(widget.RestoreProperties(*settings_, QStringLiteral("Look")), platform::Error);
  EXPECT_EQ(widget.BorderWidth(), 9);
  EXPECT_EQ(widget.BackColor(), back);
}

}  // namespace
}  // namespace stockbook::qt
