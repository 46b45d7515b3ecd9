// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

#include "stockbook/base/api.h"
#include "stockbook/qt/by_reference.h"

namespace stockbook::qt {

// The control's events as signals. They are raised in the thread of the user interface, while the control is at work: a
// slot may call any function of the widget, and may delete it.
class STOCKBOOK_API JournalEvents : public QWidget {
  Q_OBJECT

 public:
  using QWidget::QWidget;

 Q_SIGNALS:
  // The events of the control, in their order and with their arguments. Slots may write the arguments passed by
  // reference.
  void Process(int Indicator);
  // A load has laid all rows and totals.
  void AfterLoaded();
  // The columns were laid out anew.
  void AfterFormatted();
  // Before a named command. Only "Load" reads Cancel.
  void CommandExecute(const QString& CommandName, const stockbook::qt::BooleanReference& Cancel);
  // A message for the user, in one sentence; nothing else shows it.
  void Notify(const QString& Msg);
  // The current cell is in another row.
  void AfterRowChanged();
  // A button was released and more than a cell is selected.
  void AfterRangeSelected();
  // A button was released: its code, the sum of 1 (Shift), 2 (Ctrl) and 4 (Alt), and the place in twips.
  void MouseUp(const stockbook::qt::IntegerReference& Button, const stockbook::qt::IntegerReference& Shift,
               const stockbook::qt::SingleReference& X, const stockbook::qt::SingleReference& Y);
  // A hit of Find as "text |row", between "#BEGIN#" and "#END#".
  void FindMsg(const QString& rMsg);

  // A saved property has changed, given by its key in the property bag.
  void PropertyChanged(const QString& Key);
};

}  // namespace stockbook::qt
