// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QMetaProperty>
#include <QPixmap>
#include <QSignalSpy>
#include <QXmlStreamReader>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "designer/journal_in_designer.h"
#include "designer/property_texts.h"
#include "designer/sample_journal.h"
#include "designer/stockbook_plugin.h"
#include "qt/application.h"
#include "qt/logged_notices.h"
#include "stockbook/platform/grid.h"
#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::designer {
namespace {

using qt::StockbookWidget;

class InDesigner : public qt::WithApplication {
 protected:
  InDesigner() {
    // Never followed: the plugin only asks whether there is one.
    static int editor = 0;
    journal_.initialize(reinterpret_cast<QDesignerFormEditorInterface*>(&editor));
  }

  std::unique_ptr<StockbookWidget> Create(QDesignerCustomWidgetInterface& from) {
    return std::unique_ptr<StockbookWidget>(dynamic_cast<StockbookWidget*>(from.createWidget(nullptr)));
  }

  JournalInDesigner journal_;
};

// What a form can save of a widget, but for the type of its journal.
std::vector<QMetaProperty> SavedProperties() {
  std::vector<QMetaProperty> properties;
  const QMetaObject& meta = StockbookWidget::staticMetaObject;
  for (int index = QWidget::staticMetaObject.propertyCount(); index < meta.propertyCount(); ++index) {
    const QMetaProperty property = meta.property(index);
    const bool is_edited = property.isWritable() && property.isStored() && property.isDesignable();
    if (is_edited && std::string(property.name()) != "JournalType") properties.push_back(property);
  }
  return properties;
}

// Pictures are told apart by what they show.
std::string TextOf(const QVariant& value) {
  if (value.metaType() != QMetaType::fromType<QPixmap>()) return value.toString().toStdString();
  const QImage image = value.value<QPixmap>().toImage().convertToFormat(QImage::Format_ARGB32);
  return QString::asprintf("%dx%d %zx", image.width(), image.height(),
                           qHashBits(image.constBits(), static_cast<size_t>(image.sizeInBytes())))
      .toStdString();
}

std::string TextOf(const QMetaProperty& property, const StockbookWidget& widget) {
  return TextOf(property.read(&widget));
}

std::map<std::string, std::string> ValuesOf(const StockbookWidget& widget) {
  std::map<std::string, std::string> values;
  for (const QMetaProperty& property : SavedProperties()) values[property.name()] = TextOf(property, widget);
  return values;
}

// A value that the property takes and does not have yet.
QVariant Another(const QMetaProperty& property, const QVariant& value) {
  if (property.isEnumType()) return value.toInt() == 1 ? 2 : 1;
  if (std::string(property.name()) == "AccRestrict") return QStringLiteral("true");
  switch (value.typeId()) {
    case QMetaType::Bool:
      return !value.toBool();
    case QMetaType::Int:
      return value.toInt() + 5;
    case QMetaType::Double:
      return value.toDouble() + 333;
    case QMetaType::QColor:
      return QColor(1, 2, 3);
    case QMetaType::QPixmap: {
      QPixmap pixmap(3, 3);
      pixmap.fill(Qt::red);
      return pixmap;
    }
    default:
      return QStringLiteral("我的0101");
  }
}

std::vector<int> HeightsOf(const StockbookWidget& widget) {
  std::vector<int> heights;
  for (int row = 0; row < widget.Grid().Rows(); ++row) heights.push_back(widget.Grid().RowHeight(row));
  return heights;
}

TEST_F(InDesigner, ShowsAMadeUpJournalInTheFormEditorAlone) {
  EXPECT_GT(Create(journal_)->Rows(), 10);
  JournalInDesigner outside;
  const std::unique_ptr<StockbookWidget> widget = Create(outside);
  EXPECT_EQ(widget->Rows(), 1);
  EXPECT_EQ(widget->Conn(), nullptr);
}

TEST_F(InDesigner, ShowsTheJournalOfEveryTypeThatIsChosen) {
  const std::unique_ptr<StockbookWidget> widget = Create(journal_);
  for (const auto type : {StockbookWidget::SupplierJournal, StockbookWidget::CustomerJournal,
                          StockbookWidget::ProjectJournal, StockbookWidget::MaterialJournal}) {
    QSignalSpy loaded(widget.get(), &StockbookWidget::AfterLoaded);
    widget->SetJournalType(type);
    EXPECT_EQ(loaded.size(), 1) << type;
    EXPECT_GT(widget->Rows(), 10) << type;
  }
}

TEST_F(InDesigner, SaysNothingOfTheMadeUpJournalInTheLog) {
  const qt::LoggedNotices log;
  const std::unique_ptr<StockbookWidget> widget = Create(journal_);
  widget->SetJournalType(StockbookWidget::SupplierJournal);
  EXPECT_EQ(log.Texts(), QStringList());
}

TEST_F(InDesigner, LeavesWhatIsEditedAsItIs) {
  const std::unique_ptr<StockbookWidget> widget = Create(journal_);
  for (const QMetaProperty& property : SavedProperties()) {
    const QVariant before = property.read(widget.get());
    EXPECT_TRUE(property.write(widget.get(), Another(property, before))) << property.name();
    EXPECT_NE(TextOf(property, *widget), TextOf(before)) << property.name();
  }
  const std::map<std::string, std::string> edited = ValuesOf(*widget);
  for (const auto type : {StockbookWidget::SupplierJournal, StockbookWidget::CustomerJournal,
                          StockbookWidget::ProjectJournal, StockbookWidget::MaterialJournal}) {
    widget->SetJournalType(type);
    EXPECT_EQ(ValuesOf(*widget), edited) << type;
    EXPECT_GT(widget->Rows(), 10) << type;
  }
}

TEST_F(InDesigner, HasThePropertiesOfAWidgetThatShowsNothing) {
  const StockbookWidget empty;
  EXPECT_EQ(ValuesOf(*Create(journal_)), ValuesOf(empty));
}

TEST_F(InDesigner, SizesRowsAsALoadInAProgramDoes) {
  const std::unique_ptr<StockbookWidget> widget = Create(journal_);
  StockbookWidget of_a_program;
  of_a_program.SetConn(SampleJournal());
  for (const auto type : {StockbookWidget::MaterialJournal, StockbookWidget::SupplierJournal}) {
    widget->SetJournalType(type);
    of_a_program.SetJournalType(type);
    ASSERT_TRUE(of_a_program.Load(1, 0));
    EXPECT_EQ(HeightsOf(*widget), HeightsOf(of_a_program));
  }
}

TEST_F(InDesigner, ShowsFormatsAndCaptionsAtOnce) {
  const std::unique_ptr<StockbookWidget> widget = Create(journal_);
  const auto shown = [&widget](const char* key, int row) {
    return widget->Grid().DisplayText(row, widget->Grid().ColIndex(key));
  };
  int line = 1;
  while (shown("StoQty", line).empty()) ++line;
  const std::string before = shown("StoQty", line);
  widget->setProperty("QuantityFormat", QStringLiteral("0.0000"));
  EXPECT_EQ(shown("StoQty", line), before + "00");
  widget->setProperty("AllowQty2", true);
  EXPECT_FALSE(widget->Grid().ColHidden(widget->Grid().ColIndex("StoQty2")));
  widget->setProperty("FieldsFilter", QStringLiteral("Price|"));
  EXPECT_TRUE(widget->Grid().ColHidden(widget->Grid().ColIndex("Price")));
}

TEST_F(InDesigner, SaysWhatEveryPropertyOfTheFormIs) {
  std::set<std::string> edited;
  const QMetaObject& meta = StockbookWidget::staticMetaObject;
  for (int index = QWidget::staticMetaObject.propertyCount(); index < meta.propertyCount(); ++index) {
    if (meta.property(index).isWritable() && meta.property(index).isDesignable())
      edited.insert(meta.property(index).name());
  }
  std::set<std::string> said;
  for (const PropertyText& text : PropertyTexts()) {
    EXPECT_TRUE(said.insert(text.name).second) << text.name;
    EXPECT_GT(std::string(text.tool_tip).size(), 10u) << text.name;
  }
  EXPECT_EQ(said, edited);
  EXPECT_FALSE(edited.contains("Row")) << "there are no rows in a form";
  EXPECT_FALSE(edited.contains("KeyID")) << "there is no inventory in a form";
}

TEST_F(InDesigner, IsDescribedByAFormThatCanBeRead) {
  QXmlStreamReader xml(journal_.domXml());
  std::set<std::string> elements;
  while (!xml.atEnd()) {
    if (xml.readNext() == QXmlStreamReader::StartElement) elements.insert(xml.name().toString().toStdString());
  }
  EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
  EXPECT_TRUE(elements.contains("tooltip"));
  EXPECT_EQ(journal_.name().toStdString(), StockbookWidget::staticMetaObject.className());
  EXPECT_FALSE(journal_.icon().isNull());
  EXPECT_FALSE(journal_.isContainer());
}

TEST_F(InDesigner, IsTheOneWidgetOfThePlugin) {
  const StockbookPlugin plugin;
  ASSERT_EQ(plugin.customWidgets().size(), 1);
  EXPECT_EQ(plugin.customWidgets()[0]->name(), journal_.name());
}

}  // namespace
}  // namespace stockbook::designer
