// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QMetaProperty>
#include <QSignalSpy>
#include <QXmlStreamReader>
#include <memory>
#include <set>
#include <string>

#include "designer/journal_in_designer.h"
#include "designer/property_texts.h"
#include "designer/sample_journal.h"
#include "designer/stockbook_plugin.h"
#include "qt/application.h"
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

TEST_F(InDesigner, LeavesWhatIsEditedAsItIs) {
  const std::unique_ptr<StockbookWidget> widget = Create(journal_);
  QSignalSpy loaded(widget.get(), &StockbookWidget::AfterLoaded);
  widget->SetCaption(QStringLiteral("我的账"));
  widget->SetBackColor(Qt::yellow);
  EXPECT_EQ(loaded.size(), 0);
  EXPECT_EQ(widget->Caption(), QStringLiteral("我的账"));
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
