// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QString>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

namespace stockbook::designer {

// The journal's widget for Qt Designer and QUiLoader: its place in the box of widgets, its texts, and the widgets
// themselves. In the form editor, and nowhere else, they show a made-up journal.
class JournalInDesigner : public QDesignerCustomWidgetInterface {
 public:
  QString name() const override;
  QString group() const override;
  QString toolTip() const override;
  QString whatsThis() const override;
  QString includeFile() const override;
  QIcon icon() const override;
  bool isContainer() const override { return false; }
  QWidget* createWidget(QWidget* parent) override;
  bool isInitialized() const override { return in_form_editor_; }
  void initialize(QDesignerFormEditorInterface* core) override { in_form_editor_ = core != nullptr; }
  QString domXml() const override;

 private:
  bool in_form_editor_ = false;
};

}  // namespace stockbook::designer
