// SPDX-License-Identifier: MIT
#pragma once

#include <QPagedPaintDevice>
#include <QSettings>
#include <QString>
#include <QVariant>
#include <memory>
#include <utility>

#include "control/stockbook.h"
#include "qt/appearance_properties.h"
#include "qt/by_reference.h"

namespace stockbook::sheet {
class Sheet;
}

namespace stockbook::qt {

class WidgetParts;

// The stock journal as a widget: create it, give it a connection by SetConn, set JournalType, call Load. It composes
// the control with a sheet and the toolkit's services, draws the frames around the grid and raises the control's nine
// events as signals; its properties are those of the control (qt/journal_properties.h, qt/appearance_properties.h). It
// holds no logic of either. Everything runs on the thread of the user interface; Load does not come back to the event
// loop, so a host that shows progress repaints its bar when Process tells of a new value. A slot may call anything of
// the widget, and may delete it.
class StockbookWidget : public AppearanceProperties {
  Q_OBJECT
  // Plain flags for the host's use.
  Q_PROPERTY(bool AllowView READ AllowView WRITE SetAllowView)
  Q_PROPERTY(bool AllowPrint READ AllowPrint WRITE SetAllowPrint)

 public:
  explicit StockbookWidget(QWidget* parent = nullptr);
  ~StockbookWidget() override;

  control::Stockbook& control() override;
  const control::Stockbook& control() const override;
  // The connection that every query uses, shared with the host.
  std::shared_ptr<platform::Connection> Conn() const { return control().Conn(); }
  void SetConn(std::shared_ptr<platform::Connection> connection) { control().SetConn(std::move(connection)); }
  platform::Grid& Grid() const { return control().Grid(); }
  bool AllowView() const { return control().AllowView(); }
  void SetAllowView(bool allow) { control().SetAllowView(allow); }
  bool AllowPrint() const { return control().AllowPrint(); }
  void SetAllowPrint(bool allow) { control().SetAllowPrint(allow); }

  // The grid engine, for looks beyond the control's properties.
  sheet::Sheet& sheet();
  // The part of the widget that shows the cells; the sheet's origin is its left top corner.
  QWidget* viewport() const;

  // Keep the looks in the settings, each under its key in the group, and bring them back; what was never saved stays as
  // it is. Throw platform::Error, with a message for the user, where the settings fail.
  void SaveProperties(QSettings& settings, const QString& group) const;
  void RestoreProperties(QSettings& settings, const QString& group);

  // The colour of the band over the grid, for which the control has no property.
  platform::Colour HeaderColor() const;
  void SetHeaderColor(platform::Colour colour);

  // Prints the journal as it is shown, folded periods and hidden columns left out, onto a printer or a PDF, page by
  // page with its caption and the captions of the columns on each. False where the device does not take it. For other
  // painters, or single pages, use GridPrinter with sheet().
  bool Print(QPagedPaintDevice& device);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 public slots:
  // The methods of the control, in their order.
  // Loads the journal; -1 or no code keeps what is set. True when it was loaded.
  bool Load(int rKeyID = -1, int rdpID = -1, const QString& rdpCode = {});
  // Raises Notify and nothing else.
  void Prompt(const QString& Msg);
  // Tells of every hit and the count through FindMsg; always false, and StartRow is not used.
  bool Find(const QString& rSearchString, int StartRow = -1);
  // Whether the selection is more than the current cell.
  bool IsRangeSelected() const;
  void DefaultFormat();
  // Empty, and Notify says why, where there are too many bills to count.
  QString Statistics();
  // "ColChanged" with a column key as the first element, "SetColFont"; others do nothing. The result is always invalid.
  // Where the element is missing, Notify says so.
  QVariant DoCommand(const QString& CmdName, const QVariantList& rParas = {});

 signals:
  // The events of the control, in their order and with their arguments. What is passed by reference may be written.
  void Process(int Indicator);
  void AfterLoaded();
  void AfterFormatted();
  void CommandExecute(const QString& CommandName, const stockbook::qt::BooleanReference& Cancel);
  void Notify(const QString& Msg);
  void AfterRowChanged();
  void AfterRangeSelected();
  void MouseUp(const stockbook::qt::IntegerReference& Button, const stockbook::qt::IntegerReference& Shift,
               const stockbook::qt::SingleReference& X, const stockbook::qt::SingleReference& Y);
  void FindMsg(const QString& rMsg);

  // A saved property was changed; named by its key in the property bag.
  void PropertyChanged(const QString& Key);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  friend class WidgetParts;

  // Brings the band and the frames to what the control says of them.
  void UpdateFrames();
  QRect BodyRect() const;

  std::unique_ptr<WidgetParts> parts_;
};

}  // namespace stockbook::qt
