// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QColor>
#include <QMetaProperty>
#include <QPixmap>
#include <QSignalSpy>
#include <set>
#include <string>
#include <vector>

#include "qt/application.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/grid_appearance.h"
#include "stockbook/qt/picture.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::qt {
namespace {

enum class Access { kRead, kReadWrite };

struct Told {
  const char* name;
  const char* type;
  Access access;
};

constexpr Access kR = Access::kRead;
constexpr Access kRW = Access::kReadWrite;

// The values of the control's interface, in its order.
const std::vector<Told>& Interface() {
  static const std::vector<Told> kInterface = {
      {"JournalType", "stockbook::qt::JournalProperties::tqJournalTypeContants", kRW},
      {"FmtName", "QString", kR},
      {"AllowQty2", "bool", kRW},
      {"AllowInv", "bool", kRW},
      {"dpID", "int", kRW},
      {"dpCode", "QString", kRW},
      {"AccPeriod", "QString", kR},
      {"DepotName", "QString", kR},
      {"KeyID", "int", kRW},
      {"KeyName", "QString", kR},
      {"ProductNo", "QString", kR},
      {"Model", "QString", kR},
      {"Standard", "QString", kR},
      {"Measure", "QString", kR},
      {"MaterielTitle", "QString", kRW},
      {"SupplierTitle", "QString", kRW},
      {"CustomerTitle", "QString", kRW},
      {"ProjectTitle", "QString", kRW},
      {"Field00", "QString", kRW},
      {"Field01", "QString", kRW},
      {"Field02", "QString", kRW},
      {"Field03", "QString", kRW},
      {"Field04", "QString", kRW},
      {"Field05", "QString", kRW},
      {"Field06", "QString", kRW},
      {"Field10", "QString", kRW},
      {"Field11", "QString", kRW},
      {"Field12", "QString", kRW},
      {"Field13", "QString", kRW},
      {"Field14", "QString", kRW},
      {"Field15", "QString", kRW},
      {"Field16", "QString", kRW},
      {"Caption", "QString", kRW},
      {"FieldsFilter", "QString", kRW},
      {"ColsFilter", "QString", kR},
      {"AccRestrict", "QString", kRW},
      {"PriceFormat", "QString", kRW},
      {"QuantityFormat", "QString", kRW},
      {"AccountFormat", "QString", kRW},
      {"FlagName", "QString", kR},
      {"Row", "int", kRW},
      {"Rows", "int", kR},
      {"OutlineColKey", "QString", kR},
      {"RowHeight", "double", kRW},
      {"RowHeightTitle", "double", kRW},
      {"RowHeightSum", "double", kRW},
      {"BackColor", "QColor", kRW},
      {"BackColorBkg", "QColor", kRW},
      {"BackColorFixed", "QColor", kRW},
      {"BackColorFrozen", "QColor", kRW},
      {"BackColorSel", "QColor", kRW},
      {"ForeColor", "QColor", kRW},
      {"ForeColorFixed", "QColor", kRW},
      {"ForeColorFrozen", "QColor", kRW},
      {"ForeColorSel", "QColor", kRW},
      {"GridColor", "QColor", kRW},
      {"GridColorFixed", "QColor", kRW},
      {"GridLines", "stockbook::qt::AppearanceProperties::GridLineStyle", kRW},
      {"GridLinesFixed", "stockbook::qt::AppearanceProperties::GridLineStyle", kRW},
      {"Outlinebar", "stockbook::qt::AppearanceProperties::OutlineBarStyle", kRW},
      {"RowHeightMin", "double", kRW},
      {"RowHeightMax", "double", kRW},
      {"ScrollBars", "stockbook::qt::AppearanceProperties::ScrollBarsSetting", kRW},
      {"BillPicture", "QPixmap", kRW},
      {"BillAuditedPicture", "QPixmap", kRW},
      {"RevPicture", "QPixmap", kRW},
      {"RevAuditedPicture", "QPixmap", kRW},
      {"IssPicture", "QPixmap", kRW},
      {"IssAuditedPicture", "QPixmap", kRW},
      {"ShiftPicture", "QPixmap", kRW},
      {"ShiftAuditedPicture", "QPixmap", kRW},
      {"NodeClosedPicture", "QPixmap", kRW},
      {"NodeOpenPicture", "QPixmap", kRW},
      {"BackColorHot", "QColor", kRW},
      {"ForeColorHot", "QColor", kRW},
      {"TitleBackPicture", "QPixmap", kRW},
      {"MarkBackPicture", "QPixmap", kRW},
      {"BorderWidth", "int", kRW},
      {"ChildSpacing", "int", kRW},
      {"BorderColor", "QColor", kRW},
      {"SheetBorderColor", "QColor", kRW},
      {"AllowView", "bool", kRW},
      {"AllowPrint", "bool", kRW},
  };
  return kInterface;
}

QPixmap SomePixmap(QRgb colour) {
  QPixmap pixmap(8, 8);
  pixmap.fill(QColor(colour));
  return pixmap;
}

// A value of the property's type, different for every property.
QVariant SomeValue(const QMetaProperty& property, int index) {
  const QString type = QString::fromLatin1(property.typeName());
  if (property.isEnumType()) return property.enumerator().value(2);
  if (type == QLatin1String("QString")) return QStringLiteral("值 %1").arg(index);
  if (type == QLatin1String("QColor")) return QColor(index, 255 - index, 7);
  if (type == QLatin1String("QPixmap")) return SomePixmap(static_cast<QRgb>(index * 1000));
  if (type == QLatin1String("bool")) return true;
  if (type == QLatin1String("double")) return 300.0 + index;
  return index;
}

class Properties : public WithApplication {
 protected:
  Properties() {
    QObject::connect(&widget_, &StockbookWidget::Notify, [this](const QString& text) { said_ += text; });
  }

  const QMetaObject& Meta() const { return *widget_.metaObject(); }
  QMetaProperty Property(const char* name) const { return Meta().property(Meta().indexOfProperty(name)); }

  StockbookWidget widget_;
  QStringList said_;
};

TEST_F(Properties, AreThoseOfTheInterfaceInItsOrderWithItsTypesAndAccess) {
  const int inherited = QWidget::staticMetaObject.propertyCount();
  ASSERT_EQ(Meta().propertyCount() - inherited, static_cast<int>(Interface().size()));
  for (size_t index = 0; index < Interface().size(); ++index) {
    const Told& told = Interface()[index];
    const QMetaProperty property = Meta().property(inherited + static_cast<int>(index));
    EXPECT_STREQ(property.name(), told.name);
    EXPECT_STREQ(property.metaType().name(), told.type) << told.name;
    EXPECT_TRUE(property.isReadable()) << told.name;
    EXPECT_EQ(property.isWritable(), told.access == kRW) << told.name;
    EXPECT_TRUE(widget_.property(told.name).isValid()) << told.name;
  }
}

// Properties that read back differently from the value written.
const std::set<std::string>& Exceptions() {
  static const std::set<std::string> kExceptions = {"AccRestrict", "Row"};
  return kExceptions;
}

TEST_F(Properties, ReadBackWhatIsWrittenThroughTheMetaObject) {
  int index = 0;
  for (const Told& told : Interface()) {
    ++index;
    if (told.access == kR || Exceptions().contains(told.name)) continue;
    const QVariant before = widget_.property(told.name);
    QVariant value = SomeValue(Property(told.name), index);
    ASSERT_TRUE(widget_.setProperty(told.name, value)) << told.name;
    const QVariant after = widget_.property(told.name);
    if (after.userType() == QMetaType::QPixmap) {
      EXPECT_EQ(after.value<QPixmap>().cacheKey(), value.value<QPixmap>().cacheKey()) << told.name;
      continue;
    }
    if (Property(told.name).isEnumType()) {
      EXPECT_EQ(after.toInt(), value.toInt()) << told.name;
    } else {
      EXPECT_EQ(after, value) << told.name;
    }
    EXPECT_NE(after, before) << told.name << " had the value already";
  }
  EXPECT_TRUE(said_.isEmpty());
}

TEST_F(Properties, RefuseToBeWrittenWhereTheyAreOnlyRead) {
  for (const Told& told : Interface()) {
    if (told.access == kRW) continue;
    const QVariant before = widget_.property(told.name);
    EXPECT_FALSE(Property(told.name).write(&widget_, SomeValue(Property(told.name), 5))) << told.name;
    EXPECT_EQ(widget_.property(told.name), before) << told.name;
  }
}

TEST_F(Properties, OfAKindAreChosenByTheirNamesToo) {
  EXPECT_TRUE(widget_.setProperty("JournalType", "CustomerJournal"));
  EXPECT_EQ(widget_.control().JournalType(), base::CustomerJournal);
  EXPECT_EQ(widget_.property("FmtName").toString().toStdString(), "CustomerJournal");
  EXPECT_TRUE(widget_.setProperty("GridLines", "GridRaised"));
  EXPECT_EQ(widget_.control().GridLines(), platform::GridLineStyle::kRaised);
  EXPECT_FALSE(widget_.setProperty("JournalType", "NoJournal"));
  EXPECT_EQ(widget_.control().JournalType(), base::CustomerJournal);
}

TEST_F(Properties, JournalTypesBeyondTheFourHaveNoFormatName) {
  widget_.setProperty("JournalType", 7);
  EXPECT_EQ(widget_.property("JournalType").toInt(), 7);
  EXPECT_EQ(widget_.property("FmtName").toString().toStdString(), "");
}

TEST_F(Properties, KeepTheOldValueAndSayWhyWhereTheControlRefuses) {
  widget_.SetdpID(12);
  widget_.setProperty("dpID", 40000);
  EXPECT_EQ(widget_.dpID(), 12);
  ASSERT_EQ(said_.size(), 1);
  EXPECT_TRUE(said_[0].contains(QStringLiteral("40000"))) << said_[0].toStdString();
  widget_.SetAccRestrict(QStringLiteral("True"));
  widget_.SetAccRestrict(QStringLiteral("也许"));
  EXPECT_EQ(widget_.property("AccRestrict").toString().toStdString(), "True");
  ASSERT_EQ(said_.size(), 2);
  EXPECT_TRUE(said_[1].contains(QStringLiteral("也许"))) << said_[1].toStdString();
  widget_.SetBorderWidth(3);
  widget_.setProperty("BorderWidth", 70000);
  widget_.setProperty("ChildSpacing", -70000);
  EXPECT_EQ(widget_.BorderWidth(), 3);
  ASSERT_EQ(said_.size(), 4);
  EXPECT_TRUE(said_[3].contains(QStringLiteral("ChildSpacing"))) << said_[3].toStdString();
  const double height = widget_.RowHeightSum();
  widget_.setProperty("RowHeightSum", -20);
  EXPECT_EQ(widget_.RowHeightSum(), height);
  ASSERT_EQ(said_.size(), 5);
  EXPECT_TRUE(said_[4].contains(QStringLiteral("RowHeightSum 收到的是 -20"))) << said_[4].toStdString();
  EXPECT_THROW(widget_.control().SetdpID(40000), platform::Error) << "the control itself tells by the error";
}

TEST_F(Properties, TakeNothingThatIsOfAnotherKind) {
  widget_.SetKeyID(5);
  EXPECT_FALSE(widget_.setProperty("KeyID", "five"));
  EXPECT_FALSE(widget_.setProperty("BackColor", QVariantList{1}));
  EXPECT_EQ(widget_.KeyID(), 5);
}

TEST_F(Properties, ThatAreSavedTellOfEveryWriteByTheirKeys) {
  QSignalSpy told(&widget_, &StockbookWidget::PropertyChanged);
  QStringList keys;
  for (int index = Meta().indexOfProperty("BackColor"); index <= Meta().indexOfProperty("SheetBorderColor"); ++index) {
    const QMetaProperty property = Meta().property(index);
    property.write(&widget_, SomeValue(property, index));
    keys += QString::fromLatin1(property.name()).replace(QLatin1String("Outlinebar"), QLatin1String("OutlineBar"));
  }
  QStringList heard;
  for (const auto& arguments : told) heard += arguments.at(0).toString();
  EXPECT_EQ(heard, keys);
  EXPECT_EQ(keys.size(), 35);
}

TEST_F(Properties, APictureThatIsWrittenBackStaysTheSharpOneItIs) {
  const platform::PictureRef drawn = widget_.control().BillPicture();
  const QPixmap read = widget_.BillPicture();
  EXPECT_EQ(read.size(), QSize(16, 16));
  widget_.SetBillPicture(read);
  EXPECT_EQ(widget_.control().BillPicture(), drawn);
  widget_.SetBillPicture(QPixmap());
  EXPECT_EQ(widget_.control().BillPicture(), nullptr);
  EXPECT_TRUE(widget_.BillPicture().isNull());
}

TEST_F(Properties, APictureOfAnotherToolkitReadsAsNone) {
  class Foreign : public platform::Picture {
    int WidthPx() const override { return 4; }
    int HeightPx() const override { return 4; }
  };
  widget_.control().SetRevPicture(std::make_shared<Foreign>());
  EXPECT_TRUE(widget_.RevPicture().isNull());
}

TEST_F(Properties, OfARowAreMethodsWithTheCurrentRowAsTheDefault) {
  sheet::GridSheet& sheet = widget_.sheet();
  sheet.SetRows(3);
  sheet.SetTextMatrix(1, sheet.ColIndex("BillID"), "1203");
  sheet.SetTextMatrix(2, sheet.ColIndex("BillID"), "1204");
  sheet.SetTextMatrix(2, sheet.ColIndex("BillName"), "出库单");
  sheet.SetTextMatrix(2, sheet.ColIndex("Flag"), "1");
  sheet.Select(2, 1);
  int id = 0;
  ASSERT_TRUE(QMetaObject::invokeMethod(&widget_, "BillID", Q_RETURN_ARG(int, id), Q_ARG(int, 1)));
  EXPECT_EQ(id, 1203);
  ASSERT_TRUE(QMetaObject::invokeMethod(&widget_, "BillID", Q_RETURN_ARG(int, id)));
  EXPECT_EQ(id, 1204);
  QString name;
  ASSERT_TRUE(QMetaObject::invokeMethod(&widget_, "BillName", Q_RETURN_ARG(QString, name)));
  EXPECT_EQ(name.toStdString(), "出库单");
  int flag = 0;
  ASSERT_TRUE(QMetaObject::invokeMethod(&widget_, "Flag", Q_RETURN_ARG(int, flag)));
  EXPECT_EQ(flag, 1);
  EXPECT_EQ(widget_.property("FlagName").toString().toStdString(), "出库");
  EXPECT_EQ(widget_.BillID(99), 0) << "there is no such row";
}

TEST_F(Properties, SetTheRowThatCanBeTheCurrentOne) {
  widget_.sheet().SetRows(4);
  widget_.setProperty("Row", 2);
  EXPECT_EQ(widget_.property("Row").toInt(), 2);
  widget_.setProperty("Row", 0);
  widget_.setProperty("Row", widget_.property("Rows").toInt());
  EXPECT_EQ(widget_.property("Row").toInt(), 2);
}

TEST_F(Properties, ACaptionLosesItsOuterBlanks) {
  widget_.setProperty("Caption", QStringLiteral("  台账  "));
  EXPECT_EQ(widget_.property("Caption").toString().toStdString(), "台账");
}

}  // namespace
}  // namespace stockbook::qt
