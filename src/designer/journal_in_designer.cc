// SPDX-License-Identifier: MIT
#include "designer/journal_in_designer.h"

#include <QColor>
#include <QPainter>
#include <QPixmap>
#include <memory>

#include "designer/property_texts.h"
#include "designer/sample_in_form.h"
#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::designer {
namespace {

constexpr int kIconSizes[] = {16, 22, 32, 64};

// An open ledger: a band, two columns of lines, one of them a total.
QPixmap DrawIcon(int size) {
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(size / 32.0, size / 32.0);
  painter.setPen(QPen(QColor(0x3B, 0x5B, 0x7A), 1.5));
  painter.setBrush(Qt::white);
  painter.drawRoundedRect(QRectF(2, 4, 28, 24), 2, 2);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0x3B, 0x5B, 0x7A));
  painter.drawRect(QRectF(2.5, 4.5, 27, 6));
  for (int line = 0; line < 3; ++line) {
    const bool is_total = line == 2;
    painter.setBrush(is_total ? QColor(0xD9, 0x8E, 0x2B) : QColor(0x9A, 0xA7, 0xB4));
    const double top = 14 + line * 4.5;
    painter.drawRect(QRectF(5, top, 12, 2));
    painter.drawRect(QRectF(20, top, 7, 2));
  }
  return pixmap;
}

}  // namespace

QString JournalInDesigner::name() const { return QStringLiteral("stockbook::qt::StockbookWidget"); }

QString JournalInDesigner::group() const { return QStringLiteral("库存 Stockbook"); }

QString JournalInDesigner::toolTip() const { return QStringLiteral("库存明细账: the journal of a stock"); }

QString JournalInDesigner::whatsThis() const {
  return QStringLiteral(
      "The stock journal: one row a bill line with running quantity, amount and price, grouped by accounting periods. "
      "The rows in this form are made up. In your program give it a connection by SetConn and call Load.");
}

QString JournalInDesigner::includeFile() const { return QStringLiteral("stockbook/qt/stockbook_widget.h"); }

QIcon JournalInDesigner::icon() const {
  QIcon icon;
  for (const int size : kIconSizes) icon.addPixmap(DrawIcon(size));
  return icon;
}

QWidget* JournalInDesigner::createWidget(QWidget* parent) {
  auto* widget = new qt::StockbookWidget(parent);
  if (in_form_editor_) {
    // What is said of a journal that is made up is for nobody, the log included.
    QObject::connect(widget, &qt::StockbookWidget::Notify, widget, [] {});
    const auto sample = std::make_shared<SampleInForm>(*widget);
    QObject::connect(widget, &qt::StockbookWidget::JournalChanged, widget, [sample] { sample->Follow(); });
  }
  return widget;
}

QString JournalInDesigner::domXml() const {
  return QStringLiteral(R"(<ui language="c++" displayname="StockbookWidget">
 <widget class="%1" name="stockbook">
  <property name="geometry"><rect><x>0</x><y>0</y><width>640</width><height>320</height></rect></property>
 </widget>
 <customwidgets>
  <customwidget>
   <class>%1</class>
   <extends>QWidget</extends>
   <header location="global">%2</header>
   <propertyspecifications>
%3   </propertyspecifications>
  </customwidget>
 </customwidgets>
</ui>
)")
      .arg(name(), includeFile(), PropertySpecifications());
}

}  // namespace stockbook::designer
