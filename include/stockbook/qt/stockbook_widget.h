// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>
#include <map>
#include <memory>
#include <string>

#include "stockbook/base/api.h"
#include "stockbook/platform/grid_types.h"
#include "stockbook/qt/appearance_properties.h"

class QPagedPaintDevice;
class QSettings;

namespace stockbook::platform {
class Connection;
class Grid;
}  // namespace stockbook::platform

namespace stockbook::sheet {
class GridSheet;
}

namespace stockbook::qt {

// The stock journal as a widget: create it, give it a connection by SetConn, set JournalType, call Load. It composes
// the control with a sheet and the toolkit's services, draws the frames around the grid and raises the control's nine
// events as signals (qt/journal_events.h); its properties are those of the control (qt/journal_properties.h,
// qt/appearance_properties.h). It has no logic of its own for either. Everything runs on the user-interface thread:
// called on another one, the methods, Print and what saves and restores do nothing, and Notify says so; Prompt alone
// may be called on any. Nothing else of the widget looks who calls. Load does not return to the event loop, so a host
// that shows progress must repaint its bar itself when Process reports a new value. A slot may call any function of the
// widget, and may delete it.
class STOCKBOOK_API StockbookWidget : public AppearanceProperties {
  Q_OBJECT
  // Both are false unless set, and plain flags: the control reads neither.
  Q_PROPERTY(bool AllowView READ AllowView WRITE SetAllowView NOTIFY JournalChanged)
  Q_PROPERTY(bool AllowPrint READ AllowPrint WRITE SetAllowPrint NOTIFY JournalChanged)

 public:
  // Shows a product's journal without rows, in the font of the application; nothing is read before SetConn and Load.
  explicit StockbookWidget(QWidget* parent = nullptr);
  ~StockbookWidget() override;

  // The connection that every query uses, shared with the host; nullptr unless set. A load that is under way keeps the
  // one that it began with.
  std::shared_ptr<platform::Connection> Conn() const;
  void SetConn(std::shared_ptr<platform::Connection> connection);
  // The grid as the control sees it: sheet() by its port.
  platform::Grid& Grid() const;
  bool AllowView() const;
  void SetAllowView(bool allow);
  bool AllowPrint() const;
  void SetAllowPrint(bool allow);

  // The grid engine, for looks beyond the control's properties. It goes with the widget.
  sheet::GridSheet& sheet();
  // The part of the widget that shows the cells; its top left corner is the sheet's origin.
  QWidget* viewport() const;

  // How large the journal is shown, 1 being its own size, from 0.5 to 3; other values become the nearest of these, and
  // NaN changes nothing. Widths and heights stay what they are.
  double Zoom() const;
  void SetZoom(double zoom);

  // Texts that the control's menus show beside their items, such as the keys by which the host offers the same, by the
  // names of the items (mnuCopy, mnuFind, mnuBill, mnuRefresh).
  void SetMenuHints(std::map<std::string, QString> hints);

  // Both take the appearance, each property by its key in the group (an empty one: without a group): SaveProperties
  // writes it, RestoreProperties sets what was saved, and properties that never were keep their values. If the settings
  // fail, they throw platform::Error with a message for the user; what was read before that stays.
  void SaveProperties(QSettings& settings, const QString& group) const;
  void RestoreProperties(QSettings& settings, const QString& group);

  // Both take how the user has arranged the journals, and the appearance, by keys in the group: of each journal type
  // the order, widths and visibility of the columns, how many are frozen, and heights of rows that are not the font's.
  // RestoreLayout is called once, before the first load, also where nothing was saved: every load lays the columns out
  // anew, and from then on it ends with what was arranged before it, when AfterLoaded is raised. Columns that
  // FieldsFilter or a right hides stay hidden, and a slot of AfterFormatted has the last word on what is shown: what
  // the user has hidden and shown is put back before it. Errors are those of SaveProperties.
  void SaveLayout(QSettings& settings, const QString& group);
  void RestoreLayout(QSettings& settings, const QString& group);

  // The colour of the band above the grid as 0x00BBGGRR, for which the control has no property: white unless set, and
  // not saved.
  platform::Colour HeaderColor() const;
  void SetHeaderColor(platform::Colour colour);

  // Prints the journal as shown, without folded periods and hidden columns, to a printer or a PDF. Each page has the
  // caption and the column captions, and its number at the foot (第 1 页 共 13 页). Returns false if the device does
  // not accept it, also in the midst of it; Notify says so. For other painters, single pages or words of your own on
  // them, use GridPrinter with sheet().
  bool Print(QPagedPaintDevice& device);

  // 1000 by 600 logical pixels.
  QSize sizeHint() const override;
  // 240 by 120 logical pixels.
  QSize minimumSizeHint() const override;

 public Q_SLOTS:
  // The methods of the control, in their order.

  // Loads the journal; -1 or an empty code keeps the current setting. Returns true if it was loaded; false if it was
  // cancelled, or failed, which Notify tells, or if it is called inside of a load.
  bool Load(int rKeyID = -1, int rdpID = -1, const QString& rdpCode = {});
  // Raises Notify and nothing else; called on another thread, as soon as the widget's own returns to the event loop.
  void Prompt(const QString& Msg);
  // Reports every row that holds all words through FindMsg, and the count through Notify. A text without words does
  // nothing. Always returns false; StartRow is not used.
  bool Find(const QString& rSearchString, int StartRow = -1);
  // Whether the selection is more than the current cell.
  bool IsRangeSelected() const;
  // Lays the columns out anew, as the settings say, and sizes the rows by the font. Raises AfterFormatted.
  void DefaultFormat();
  // How many rows are bills, by kind (入库单, 出库单, 调拨单), as lines of text. Empty where they are more than 32767;
  // Notify says so.
  QString Statistics();
  // "ColChanged" with a column key as the first element, "SetColFont"; others do nothing. The result is always invalid.
  // Where the element is missing, Notify says so.
  QVariant DoCommand(const QString& CmdName, const QVariantList& rParas = {});

  // What the widget does beyond the control.

  // Gives every shown column the width that its texts need, rows out of view included, but at most the width of the
  // grid: call it when the widget has its size. Each layout, and so each load, gives the columns their usual widths
  // again: call it after a load or in a slot of AfterLoaded, and in one of AfterFormatted if it is to hold after
  // DefaultFormat too (a load raises that one before there are stocks and totals). Of a long journal it asks rows
  // spread over the whole of it, some ten thousand at most, so that the cost does not grow with their number.
  void FitColumns();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  friend class SignalRaiser;
  friend class WidgetParts;

  // Updates the band and the frames from the control's properties.
  void UpdateFrames();
  QRect BodyRect() const;
};

}  // namespace stockbook::qt
