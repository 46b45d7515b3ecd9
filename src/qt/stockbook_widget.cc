// SPDX-License-Identifier: MIT
#include "stockbook/qt/stockbook_widget.h"

#include <QEvent>
#include <QPainter>
#include <QPointer>
#include <QSettings>
#include <QThread>
#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

#include "qt/pin.h"
#include "qt/settings_bag.h"
#include "qt/sheet/text.h"
#include "qt/widget_parts.h"
#include "stockbook/base/value.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/qt/colour.h"
#include "stockbook/qt/grid_printer.h"

namespace stockbook::qt {
namespace {

constexpr QSize kUsualSize(1000, 600);
constexpr QSize kLeastSize(240, 120);

base::Value ToValue(const QVariant& variant) {
  switch (variant.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
      return base::Value(static_cast<int64_t>(variant.toLongLong()));
    case QMetaType::Double:
    case QMetaType::Float:
      return base::Value(variant.toDouble());
    default:
      return variant.isNull() ? base::Value() : base::Value(FromQString(variant.toString()));
  }
}

// Whether the caller is on the widget's thread. Where not, nothing of the widget may be touched: its own thread says so
// through Notify.
bool IsOnOwnThread(const StockbookWidget& widget, const char* function) {
  if (QThread::currentThread() == widget.thread()) return true;
  const QString message = QStringLiteral(
                              "没有执行 %1：它在别的线程上被调用。请在控件所在的线程上调用；要在后台读取数据库，"
                              "请把 ThreadedConnection 交给 SetConn。")
                              .arg(QLatin1String(function));
  // Functions that change nothing may say something all the same.
  const_cast<StockbookWidget&>(widget).Prompt(message);
  return false;
}

}  // namespace

StockbookWidget::StockbookWidget(QWidget* parent) : AppearanceProperties(parent) {
  // Needed for connections by name only.
  qRegisterMetaType<BooleanReference>();
  qRegisterMetaType<IntegerReference>();
  qRegisterMetaType<SingleReference>();
  parts_ = std::make_shared<WidgetParts>(*this);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusProxy(&parts_->view());
  UpdateFrames();
}

StockbookWidget::~StockbookWidget() {
  setFocusProxy(nullptr);
  WidgetParts::Leave(std::move(parts_));
}

std::shared_ptr<platform::Connection> StockbookWidget::Conn() const { return control().Conn(); }

void StockbookWidget::SetConn(std::shared_ptr<platform::Connection> connection) {
  control().SetConn(std::move(connection));
}

platform::Grid& StockbookWidget::Grid() const { return control().Grid(); }

bool StockbookWidget::AllowView() const { return control().AllowView(); }

void StockbookWidget::SetAllowView(bool allow) { control().SetAllowView(allow); }

bool StockbookWidget::AllowPrint() const { return control().AllowPrint(); }

void StockbookWidget::SetAllowPrint(bool allow) { control().SetAllowPrint(allow); }

sheet::GridSheet& StockbookWidget::sheet() { return parts_->fg(); }

QWidget* StockbookWidget::viewport() const { return parts_->view().viewport(); }

double StockbookWidget::Zoom() const { return parts_->view().zoom(); }

void StockbookWidget::SetZoom(double zoom) { parts_->view().SetZoom(zoom); }

void StockbookWidget::SetMenuHints(std::map<std::string, QString> hints) { parts_->SetMenuHints(std::move(hints)); }

bool StockbookWidget::Load(int rKeyID, int rdpID, const QString& rdpCode) {
  if (!IsOnOwnThread(*this, "Load")) return false;
  const Pin pin(parts_);
  const std::shared_ptr<WidgetParts> parts = parts_;
  const bool loaded = control().Load(rKeyID, rdpID, FromQString(rdpCode));
  parts->TellRow();
  return loaded;
}

void StockbookWidget::Prompt(const QString& Msg) {
  if (QThread::currentThread() != thread()) {
    QMetaObject::invokeMethod(
        this, [this, Msg] { Prompt(Msg); }, Qt::QueuedConnection);
    return;
  }
  parts_->Attempt([&] { control().Prompt(FromQString(Msg)); });
}

bool StockbookWidget::Find(const QString& rSearchString, int StartRow) {
  if (!IsOnOwnThread(*this, "Find")) return false;
  bool found = false;
  parts_->Attempt([&] { found = control().Find(FromQString(rSearchString), StartRow); });
  return found;
}

bool StockbookWidget::IsRangeSelected() const {
  return IsOnOwnThread(*this, "IsRangeSelected") && control().IsRangeSelected();
}

void StockbookWidget::DefaultFormat() {
  if (!IsOnOwnThread(*this, "DefaultFormat")) return;
  parts_->Attempt([&] { control().DefaultFormat(); });
}

QString StockbookWidget::Statistics() {
  if (!IsOnOwnThread(*this, "Statistics")) return {};
  QString text;
  parts_->Attempt([&] { text = ToQString(control().Statistics()); });
  return text;
}

QVariant StockbookWidget::DoCommand(const QString& CmdName, const QVariantList& rParas) {
  if (!IsOnOwnThread(*this, "DoCommand")) return {};
  std::vector<base::Value> paras;
  for (const QVariant& para : rParas) paras.push_back(ToValue(para));
  parts_->Attempt([&] {
    try {
      control().DoCommand(FromQString(CmdName), paras);
    } catch (const std::out_of_range&) {
      control().Prompt(FromQString(QStringLiteral("命令“%1”缺少第一个参数：请给出列的键。").arg(CmdName)));
    }
  });
  return {};
}

void StockbookWidget::FitColumns() {
  if (!IsOnOwnThread(*this, "FitColumns")) return;
  parts_->Attempt([&] { parts_->view().FitColumns(); });
}

void StockbookWidget::SaveProperties(QSettings& settings, const QString& group) const {
  if (!IsOnOwnThread(*this, "SaveProperties")) return;
  SettingsBag bag(settings, group);
  control().WriteProperties(bag);
  bag.Flush();
}

void StockbookWidget::RestoreProperties(QSettings& settings, const QString& group) {
  if (!IsOnOwnThread(*this, "RestoreProperties")) return;
  SettingsBag bag(settings, group);
  control().ReadProperties(bag);
}

void StockbookWidget::SaveLayout(QSettings& settings, const QString& group) {
  if (!IsOnOwnThread(*this, "SaveLayout")) return;
  parts_->layouts().Save(settings, group);
  SaveProperties(settings, group);
}

void StockbookWidget::RestoreLayout(QSettings& settings, const QString& group) {
  if (!IsOnOwnThread(*this, "RestoreLayout")) return;
  RestoreProperties(settings, group);
  parts_->layouts().Restore(settings, group);
}

platform::Colour StockbookWidget::HeaderColor() const {
  return parts_->header_colour().value_or(control().C1EHeader().back_color);
}

void StockbookWidget::SetHeaderColor(platform::Colour colour) {
  parts_->header_colour() = colour;
  UpdateFrames();
}

bool StockbookWidget::Print(QPagedPaintDevice& device) {
  if (!IsOnOwnThread(*this, "Print")) return false;
  bool printed = false;
  {
    const auto aside = control().SetHotRowAside();
    printed = PrintSheet(sheet(), ToQString(control().Caption()), device);
  }
  // The last of all: a slot may delete the widget.
  if (!printed) {
    Prompt(QStringLiteral("没有打印完：%1。打印机或文件不接受；请检查打印机是否就绪，文件所在的文件夹是否可以写入、"
                          "是否还有空间，然后再打印。")
               .arg(ToQString(control().Caption())));
  }
  return printed;
}

QSize StockbookWidget::sizeHint() const { return kUsualSize; }

QSize StockbookWidget::minimumSizeHint() const { return kLeastSize; }

void StockbookWidget::UpdateFrames() {
  const control::Stockbook& stockbook = control();
  control::Container header = stockbook.C1EHeader();
  header.back_color = HeaderColor();
  parts_->header_band().Show(header, stockbook.imgMark());
  parts_->view().setAccessibleName(ToQString(stockbook.Caption()));
  const int margin = std::max<int>(stockbook.C1EDesk().border_width, 0);
  parts_->header_band().setGeometry(margin, margin, std::max(0, width() - 2 * margin),
                                    parts_->header_band().sizeHint().height());
  const int border = std::max<int>(stockbook.C1EBody().border_width, 0);
  parts_->view().setGeometry(BodyRect().adjusted(border, border, -border, -border));
  update();
}

QRect StockbookWidget::BodyRect() const {
  const control::Stockbook& stockbook = control();
  const int margin = std::max<int>(stockbook.C1EDesk().border_width, 0);
  const int top = parts_->header_band().geometry().bottom() + 1 + std::max<int>(stockbook.C1EDesk().child_spacing, 0);
  return {margin, top, std::max(0, width() - 2 * margin), std::max(0, height() - top - margin)};
}

void StockbookWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Window));
  painter.fillRect(BodyRect(), ToQColor(control().C1EBody().back_color));
}

void StockbookWidget::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  UpdateFrames();
}

void StockbookWidget::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (parts_ == nullptr) return;
  // A slot that hears of other heights may delete the widget.
  const QPointer<StockbookWidget> widget(this);
  const Pin pin(parts_);
  if (event->type() == QEvent::FontChange) parts_->FollowFont();
  if (widget == nullptr) return;
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange ||
      event->type() == QEvent::LayoutDirectionChange)
    UpdateFrames();
}

}  // namespace stockbook::qt
