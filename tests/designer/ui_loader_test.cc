// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QBuffer>
#include <QColor>
#include <QUiLoader>
#include <QWidget>
#include <memory>

#include "qt/application.h"
#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::designer {
namespace {

constexpr const char* kForm = R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <class>Form</class>
 <widget class="QWidget" name="Form">
  <layout class="QVBoxLayout">
   <item>
    <widget class="stockbook::qt::StockbookWidget" name="journal">
     <property name="JournalType" stdset="0"><enum>stockbook::qt::JournalProperties::CustomerJournal</enum></property>
     <property name="AllowQty2" stdset="0"><bool>true</bool></property>
     <property name="CustomerTitle" stdset="0"><string>客户</string></property>
     <property name="BackColor" stdset="0"><color><red>10</red><green>20</green><blue>30</blue></color></property>
     <property name="GridLines" stdset="0"><enum>stockbook::qt::AppearanceProperties::GridRaised</enum></property>
     <property name="RowHeight" stdset="0"><double>310.5</double></property>
     <property name="RowHeightMin" stdset="0"><double>200.25</double></property>
     <property name="ChildSpacing" stdset="0"><number>4</number></property>
    </widget>
   </item>
  </layout>
 </widget>
 <customwidgets>
  <customwidget>
   <class>stockbook::qt::StockbookWidget</class>
   <extends>QWidget</extends>
   <header location="global">stockbook/qt/stockbook_widget.h</header>
  </customwidget>
 </customwidgets>
</ui>
)";

class Forms : public qt::WithApplication {
 protected:
  std::unique_ptr<QWidget> Load(QUiLoader& loader) {
    QBuffer form;
    form.setData(kForm);
    form.open(QIODevice::ReadOnly);
    std::unique_ptr<QWidget> widget(loader.load(&form));
    EXPECT_NE(widget, nullptr) << loader.errorString().toStdString();
    return widget;
  }

  // The widget of a plugin may have a meta object of its own, so that it is asked by names alone.
  static void ExpectAsInTheForm(const QWidget& form) {
    const auto* journal = form.findChild<QWidget*>(QStringLiteral("journal"));
    ASSERT_NE(journal, nullptr);
    EXPECT_STREQ(journal->metaObject()->className(), "stockbook::qt::StockbookWidget");
    EXPECT_EQ(journal->property("JournalType").toInt(), qt::StockbookWidget::CustomerJournal);
    EXPECT_TRUE(journal->property("AllowQty2").toBool());
    EXPECT_EQ(journal->property("CustomerTitle").toString(), QStringLiteral("客户"));
    EXPECT_EQ(journal->property("BackColor").value<QColor>(), QColor(10, 20, 30));
    EXPECT_EQ(journal->property("GridLines").toInt(), qt::StockbookWidget::GridRaised);
    EXPECT_EQ(journal->property("RowHeight").toDouble(), 310.5);
    EXPECT_EQ(journal->property("RowHeightMin").toDouble(), 200.25);
    EXPECT_EQ(journal->property("ChildSpacing").toInt(), 4);
    EXPECT_EQ(journal->property("Rows").toInt(), 1) << "made-up rows are for the form editor";
  }
};

TEST_F(Forms, AreLoadedAtRunTimeByThePlugin) {
  QUiLoader loader;
  loader.clearPluginPaths();
  loader.addPluginPath(QStringLiteral(STOCKBOOK_DESIGNER_FOLDER));
  ASSERT_TRUE(loader.availableWidgets().contains(QStringLiteral("stockbook::qt::StockbookWidget")));
  const std::unique_ptr<QWidget> form = Load(loader);
  ASSERT_NE(form, nullptr);
  ExpectAsInTheForm(*form);
}

TEST_F(Forms, AreLoadedAtRunTimeByALoaderThatKnowsTheWidget) {
  class Loader : public QUiLoader {
   public:
    QWidget* createWidget(const QString& class_name, QWidget* parent, const QString& name) override {
      if (class_name != QLatin1String("stockbook::qt::StockbookWidget"))
        return QUiLoader::createWidget(class_name, parent, name);
      auto* journal = new qt::StockbookWidget(parent);
      journal->setObjectName(name);
      return journal;
    }
  };
  Loader loader;
  loader.clearPluginPaths();
  const std::unique_ptr<QWidget> form = Load(loader);
  ASSERT_NE(form, nullptr);
  ExpectAsInTheForm(*form);
}

}  // namespace
}  // namespace stockbook::designer
