// SPDX-License-Identifier: MIT
#include "qt/stockbook_widget.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>
#include <optional>

#include "platform/control_site.h"
#include "qt/clipboard.h"
#include "qt/colour.h"
#include "qt/fonts.h"
#include "qt/grid_printer.h"
#include "qt/grid_view.h"
#include "qt/header_band.h"
#include "qt/images.h"
#include "qt/menu.h"
#include "qt/text.h"
#include "qt/text_metrics.h"
#include "sheet/sheet.h"

namespace stockbook::qt {
namespace {

constexpr QSize kUsualSize(1000, 600);
constexpr QSize kLeastSize(240, 120);

// Raises the control's events as signals.
class SignalRaiser : public interaction::EventListener {
 public:
  explicit SignalRaiser(StockbookWidget& widget) : widget_(widget) {}

  void Process(int16_t Indicator) override { emit widget_.Process(Indicator); }
  void AfterLoaded() override { emit widget_.AfterLoaded(); }
  void AfterFormatted() override { emit widget_.AfterFormatted(); }
  void CommandExecute(const std::string& CommandName, bool& Cancel) override {
    emit widget_.CommandExecute(ToQString(CommandName), &Cancel);
  }
  void Notify(const std::string& Msg) override { emit widget_.Notify(ToQString(Msg)); }
  void AfterRowChanged() override { emit widget_.AfterRowChanged(); }
  void AfterRangeSelected() override { emit widget_.AfterRangeSelected(); }
  void MouseUp(int16_t& Button, int16_t& Shift, float& X, float& Y) override {
    emit widget_.MouseUp(&Button, &Shift, &X, &Y);
  }
  void FindMsg(const std::string& rMsg) override { emit widget_.FindMsg(ToQString(rMsg)); }

 private:
  StockbookWidget& widget_;
};

}  // namespace

// Everything that the widget composes, in the order in which it needs each other.
class StockbookWidget::Parts : public platform::ControlSite {
 public:
  explicit Parts(StockbookWidget& widget)
      : widget_(widget),
        menu_(&widget),
        raiser_(widget),
        header_band_(std::make_unique<HeaderBand>(&widget)),
        view_(std::make_unique<GridView>(fg_, &widget)),
        control_(Surroundings()) {
    fg_.SetClipboard(&clipboard_);
    SetDefaultPictures();
    control_.AddListener(&raiser_);
  }

  void PropertyChanged(std::string_view key) override {
    FrameChanged();
    emit widget_.PropertyChanged(ToQString(key));
  }

  // The control speaks up while it is being made already.
  void FrameChanged() override {
    if (widget_.parts_ != nullptr) widget_.UpdateFrames();
  }

  // The grid has the widget's font as long as nobody gives it another one.
  void FollowFont() {
    if (fg_.GridFont() != followed_font_) return;
    followed_font_ = GridFontFor(widget_.font());
    control_.FollowFont(followed_font_);
  }

  sheet::Sheet& fg() { return fg_; }
  control::Stockbook& control() { return control_; }
  HeaderBand& header_band() { return *header_band_; }
  GridView& view() { return *view_; }
  std::optional<platform::Colour>& header_colour() { return header_colour_; }

 private:
  // The layout that the control makes at once measures the grid's font.
  control::Surroundings Surroundings() {
    followed_font_ = DefaultGridFont();
    fg_.SetGridFont(followed_font_);
    return {fg_, fg1_, text_metrics_, images_, menu_, clipboard_, *this};
  }

  void SetDefaultPictures() {
    control_.SetBillPicture(images_.Find("Bill"));
    control_.SetBillAuditedPicture(images_.Find("Bill1"));
    control_.SetRevPicture(images_.Find("RevBill"));
    control_.SetRevAuditedPicture(images_.Find("RevBill1"));
    control_.SetIssPicture(images_.Find("IssBill"));
    control_.SetIssAuditedPicture(images_.Find("IssBill1"));
    control_.SetShiftPicture(images_.Find("ShiftBill"));
    control_.SetShiftAuditedPicture(images_.Find("ShiftBill1"));
  }

  StockbookWidget& widget_;
  sheet::Sheet fg_;
  sheet::Sheet fg1_;
  platform::Font followed_font_;
  std::optional<platform::Colour> header_colour_;
  QtTextMetrics text_metrics_;
  QtImages images_;
  QtMenu menu_;
  QtClipboard clipboard_;
  SignalRaiser raiser_;
  // Children of the widget, but they go first: the view borrows the sheet.
  std::unique_ptr<HeaderBand> header_band_;
  std::unique_ptr<GridView> view_;
  control::Stockbook control_;
};

StockbookWidget::StockbookWidget(QWidget* parent) : QWidget(parent) {
  parts_ = std::make_unique<Parts>(*this);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusProxy(&parts_->view());
  UpdateFrames();
}

StockbookWidget::~StockbookWidget() = default;

control::Stockbook& StockbookWidget::control() { return parts_->control(); }

const control::Stockbook& StockbookWidget::control() const { return parts_->control(); }

sheet::Sheet& StockbookWidget::sheet() { return parts_->fg(); }

QWidget* StockbookWidget::viewport() const { return parts_->view().viewport(); }

bool StockbookWidget::Load(int KeyID, int dpID, const QString& dpCode) {
  return control().Load(KeyID, dpID, FromQString(dpCode));
}

platform::Colour StockbookWidget::HeaderColor() const {
  return parts_->header_colour().value_or(control().C1EHeader().back_color);
}

void StockbookWidget::SetHeaderColor(platform::Colour colour) {
  parts_->header_colour() = colour;
  UpdateFrames();
}

bool StockbookWidget::Print(QPagedPaintDevice& device) {
  return PrintSheet(sheet(), ToQString(control().Caption()), device);
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
  if (event->type() == QEvent::FontChange) parts_->FollowFont();
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange ||
      event->type() == QEvent::LayoutDirectionChange)
    UpdateFrames();
}

}  // namespace stockbook::qt
