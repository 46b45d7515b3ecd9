// SPDX-License-Identifier: MIT
#include "qt/widget_parts.h"

#include <QBasicTimer>
#include <QCoreApplication>
#include <QTimerEvent>
#include <utility>

#include "qt/counting.h"
#include "qt/fonts.h"
#include "qt/stockbook_widget.h"
#include "qt/text.h"

namespace stockbook::qt {
namespace {

constexpr int kLookAgainMs = 20;

// Keeps what a widget left behind until its calls have come back. While they are under way only an event loop inside of
// them can ask, so whoever finds nothing in use is outside of all of them. Qt's own deferred deletion does not serve:
// asked for where no event loop runs, it comes in the first one, and that may be inside.
class Remains : public QObject {
 public:
  explicit Remains(std::unique_ptr<WidgetParts> parts)
      : QObject(QCoreApplication::instance()), parts_(std::move(parts)) {
    timer_.start(0, this);
    // The application's children go when it is no application for widgets any more. Once is enough for all.
    qRemovePostRoutine(&Remains::FreeAll);
    qAddPostRoutine(&Remains::FreeAll);
  }

 protected:
  void timerEvent(QTimerEvent* /*event*/) override {
    if (parts_->IsInUse()) {
      timer_.start(kLookAgainMs, this);
      return;
    }
    timer_.stop();
    parts_.reset();
    deleteLater();
  }

 private:
  static void FreeAll() {
    const QObjectList children = QCoreApplication::instance()->children();
    for (QObject* child : children) {
      if (auto* remains = dynamic_cast<Remains*>(child)) delete remains;
    }
  }

  std::unique_ptr<WidgetParts> parts_;
  QBasicTimer timer_;
};

void Detach(QWidget& child) {
  child.hide();
  child.setParent(nullptr);
}

}  // namespace

void SignalRaiser::Process(int16_t Indicator) {
  if (widget_ != nullptr) emit widget_->Process(Indicator);
}

void SignalRaiser::AfterLoaded() {
  if (widget_ != nullptr) emit widget_->AfterLoaded();
}

void SignalRaiser::AfterFormatted() {
  if (widget_ != nullptr) emit widget_->AfterFormatted();
}

void SignalRaiser::CommandExecute(const std::string& CommandName, bool& Cancel) {
  if (widget_ == nullptr) return;
  const BooleanReference cancel(Cancel);
  emit widget_->CommandExecute(ToQString(CommandName), cancel);
  Cancel = cancel.Value();
}

void SignalRaiser::Notify(const std::string& Msg) {
  if (widget_ != nullptr) emit widget_->Notify(ToQString(Msg));
}

void SignalRaiser::AfterRowChanged() {
  if (widget_ != nullptr) emit widget_->AfterRowChanged();
}

void SignalRaiser::AfterRangeSelected() {
  if (widget_ != nullptr) emit widget_->AfterRangeSelected();
}

void SignalRaiser::MouseUp(int16_t& Button, int16_t& Shift, float& X, float& Y) {
  if (widget_ == nullptr) return;
  const IntegerReference button(Button);
  const IntegerReference shift(Shift);
  const SingleReference x(X);
  const SingleReference y(Y);
  emit widget_->MouseUp(button, shift, x, y);
  Button = button.Value();
  Shift = shift.Value();
  X = x.Value();
  Y = y.Value();
}

void SignalRaiser::FindMsg(const std::string& rMsg) {
  if (widget_ != nullptr) emit widget_->FindMsg(ToQString(rMsg));
}

WidgetParts::WidgetParts(StockbookWidget& widget)
    : widget_(&widget),
      menu_(&widget),
      raiser_(widget),
      header_band_(std::make_unique<HeaderBand>(&widget)),
      view_(std::make_unique<GridView>(fg_, &widget)),
      control_(Surroundings()) {
  menu_.SetPlace([this] { return view_->MenuPlace(); });
  SetDefaultPictures();
  control_.AddListener(&raiser_);
}

WidgetParts::~WidgetParts() = default;

void WidgetParts::Leave(std::unique_ptr<WidgetParts> parts) {
  parts->widget_ = nullptr;
  parts->raiser_.Silence();
  if (!parts->IsInUse()) return;
  Detach(*parts->header_band_);
  Detach(*parts->view_);
  new Remains(std::move(parts));
}

bool WidgetParts::IsInUse() const {
  return telling_ > 0 || control_.IsRaising() || menu_.IsOpen() || view_->IsHandlingEvent();
}

void WidgetParts::PropertyChanged(std::string_view key) {
  FrameChanged();
  if (widget_ == nullptr) return;
  const Counting telling(telling_);
  emit widget_->PropertyChanged(ToQString(key));
}

// The control speaks up while it is being made already.
void WidgetParts::FrameChanged() {
  if (widget_ != nullptr && widget_->parts_ != nullptr) widget_->UpdateFrames();
}

void WidgetParts::FollowFont() {
  if (fg_.GridFont() != followed_font_) return;
  followed_font_ = GridFontFor(widget_->font());
  control_.FollowFont(followed_font_);
}

control::Surroundings WidgetParts::Surroundings() {
  followed_font_ = DefaultGridFont();
  fg_.SetGridFont(followed_font_);
  return {fg_, fg1_, text_metrics_, images_, menu_, clipboard_, *this};
}

void WidgetParts::SetDefaultPictures() {
  control_.SetBillPicture(images_.Find("Bill"));
  control_.SetBillAuditedPicture(images_.Find("Bill1"));
  control_.SetRevPicture(images_.Find("RevBill"));
  control_.SetRevAuditedPicture(images_.Find("RevBill1"));
  control_.SetIssPicture(images_.Find("IssBill"));
  control_.SetIssAuditedPicture(images_.Find("IssBill1"));
  control_.SetShiftPicture(images_.Find("ShiftBill"));
  control_.SetShiftAuditedPicture(images_.Find("ShiftBill1"));
}

}  // namespace stockbook::qt
