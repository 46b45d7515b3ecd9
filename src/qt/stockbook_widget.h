// SPDX-License-Identifier: MIT
#pragma once

#include <QPagedPaintDevice>
#include <QString>
#include <QWidget>
#include <memory>

#include "control/stockbook.h"

namespace stockbook::sheet {
class Sheet;
}

namespace stockbook::qt {

// The stock journal as a widget: create it, set control().SetConn and SetJournalType, call Load. It composes the
// control with a sheet and the toolkit's services, draws the frames around the grid and raises the control's nine
// events as signals. It holds no logic of either. Everything runs on the thread of the user interface; Load does not
// come back to the event loop, so a host that shows progress repaints its bar when Process tells of a new value.
class StockbookWidget : public QWidget {
  Q_OBJECT

 public:
  explicit StockbookWidget(QWidget* parent = nullptr);
  ~StockbookWidget() override;

  // The public interface of the control.
  control::Stockbook& control();
  const control::Stockbook& control() const;
  // The grid engine, for looks beyond the control's properties.
  sheet::Sheet& sheet();
  // The part of the widget that shows the cells; the sheet's origin is its left top corner.
  QWidget* viewport() const;

  // Loads the journal; -1 or no code keeps what is set. True when it was loaded.
  bool Load(int KeyID = -1, int dpID = -1, const QString& dpCode = {});

  // The colour of the band over the grid, for which the control has no property.
  platform::Colour HeaderColor() const;
  void SetHeaderColor(platform::Colour colour);

  // Prints the journal as it is shown, folded periods and hidden columns left out, onto a printer or a PDF, page by
  // page with its caption and the captions of the columns on each. False where the device does not take it. For other
  // painters, or single pages, use GridPrinter with sheet().
  bool Print(QPagedPaintDevice& device);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  // The events of the control, in their order and with their arguments; what is passed by pointer may be written.
  void Process(int Indicator);
  void AfterLoaded();
  void AfterFormatted();
  void CommandExecute(const QString& CommandName, bool* Cancel);
  void Notify(const QString& Msg);
  void AfterRowChanged();
  void AfterRangeSelected();
  void MouseUp(short* Button, short* Shift, float* X, float* Y);
  void FindMsg(const QString& rMsg);

  // A saved property was changed; named by its key in the property bag.
  void PropertyChanged(const QString& Key);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  class Parts;

  // Brings the band and the frames to what the control says of them.
  void UpdateFrames();
  QRect BodyRect() const;

  std::unique_ptr<Parts> parts_;
};

}  // namespace stockbook::qt
