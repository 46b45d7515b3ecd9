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

  // Progress of a load in percent, 0 to 100, then -1 at its end, also of one that failed or was cancelled. From 40 on
  // it comes once for every line: repaint for another number only.
  void Process(int Indicator);
  // A load has laid all rows and totals; heights of rows that are set here stay. One that failed or was cancelled does
  // not raise it.
  void AfterLoaded();
  // The columns were laid out anew, by a load, DefaultFormat, JournalType or the menu of the captions: order, widths,
  // formats and hidden columns are those of the layout again, and columns that a host added are gone.
  void AfterFormatted();
  // Before a load: "Load", which `Cancel.SetValue(true)` cancels. Also what the user wants from the host, "Bill",
  // "Find" or "Refresh", and, when it is done, "SetDefaultFormat" or "AfterFieldShow" (a column was shown or hidden);
  // nobody reads Cancel then.
  void CommandExecute(const QString& CommandName, const stockbook::qt::BooleanReference& Cancel);
  // A message for the user, in one sentence; nothing else shows it, but where no slot is connected the log has it, as
  // an information of the category "stockbook". Empty where a row that became the current one has nothing to say (only
  // issues that name the receipt they come from have a text): a status bar that keeps its text leaves empty ones out.
  void Notify(const QString& Msg);
  // The current cell is in another row, by the user or a setter; not raised by what a load does.
  void AfterRowChanged();
  // A mouse button was released and more than a cell is selected; MouseUp follows.
  void AfterRangeSelected();
  // A mouse button was released: its code (1 left, 2 right, 4 middle), the sum of 1 (Shift), 2 (Ctrl) and 4 (Alt), and
  // the place in twips from the grid's top left corner. What a slot writes is seen by the slots after it alone.
  void MouseUp(const stockbook::qt::IntegerReference& Button, const stockbook::qt::IntegerReference& Shift,
               const stockbook::qt::SingleReference& X, const stockbook::qt::SingleReference& Y);
  // A hit of Find as "text |row": the text of the outline's column, [无名称] where it has none, and the row of the
  // grid. All hits come between "#BEGIN#" and "#END#", their number by Notify.
  void FindMsg(const QString& rMsg);

  // A saved property was written, also with the value that it had. The key is that of the property bag: the name of the
  // property, but OutlineBar for Outlinebar. RestoreProperties raises AppearanceChanged alone.
  void PropertyChanged(const QString& Key);
};

}  // namespace stockbook::qt
