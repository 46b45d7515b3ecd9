// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include "designer/journal_in_designer.h"

namespace stockbook::designer {

// What Qt Designer and QUiLoader find in the plugin.
class StockbookPlugin : public QObject, public QDesignerCustomWidgetCollectionInterface {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
  Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

 public:
  using QObject::QObject;

  QList<QDesignerCustomWidgetInterface*> customWidgets() const override;

 private:
  mutable JournalInDesigner journal_;
};

}  // namespace stockbook::designer
