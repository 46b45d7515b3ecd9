// SPDX-License-Identifier: MIT
#include "qt/widget_parts.h"

#include <exception>
#include <utility>

#include "control/default_pictures.h"
#include "qt/pin.h"
#include "qt/sheet/text.h"
#include "stockbook/qt/fonts.h"
#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::qt {
namespace {

// The view whose events may end with the widget deleted.
class PinnedView : public SheetWidget {
 public:
  PinnedView(WidgetParts& parts, sheet::View& view, QWidget& parent) : SheetWidget(view, &parent), parts_(parts) {}

 protected:
  bool event(QEvent* event) override {
    const Pin pin(parts_.weak_from_this().lock());
    return SheetWidget::event(event);
  }
  bool viewportEvent(QEvent* event) override {
    const Pin pin(parts_.weak_from_this().lock());
    return SheetWidget::viewportEvent(event);
  }

 private:
  WidgetParts& parts_;
};

void Detach(QWidget& child) {
  child.hide();
  child.setParent(nullptr);
}

}  // namespace

WidgetParts::WidgetParts(StockbookWidget& widget)
    : widget_(&widget),
      menu_(&widget),
      raiser_(widget),
      header_band_(std::make_unique<HeaderBand>(&widget)),
      view_(std::make_unique<PinnedView>(*this, fg_.view(), widget)),
      control_(Surroundings()) {
  menu_.SetPlace([this] { return view_->MenuPlace(); });
  control::ShowDefaultPictures(control_, images_);
  control_.AddListener(&raiser_);
  told_row_ = ReadRow();
}

WidgetParts::~WidgetParts() = default;

void WidgetParts::Leave(std::shared_ptr<WidgetParts> parts) {
  parts->widget_ = nullptr;
  parts->raiser_.Silence();
  // A listener added to the control itself receives events without a pin.
  if (parts.use_count() == 1 && !parts->control_.IsRaising()) return;
  Detach(*parts->header_band_);
  Detach(*parts->view_);
  const Pin pin(std::move(parts));
}

void WidgetParts::Attempt(const std::function<void()>& call) {
  const Pin pin(shared_from_this());
  try {
    call();
    TellRow();
  } catch (const std::exception& error) {
    if (widget_ == nullptr) return;
    try {
      control_.Prompt(error.what());
    } catch (const std::exception&) {
      // Errors of a listener of Notify are not reported again.
    }
  }
}

template <typename Signal>
void WidgetParts::Raise(Signal signal) {
  if (widget_ == nullptr || widget_->parts_ == nullptr) return;
  const Pin pin(weak_from_this().lock());
  signal(*widget_);
}

void WidgetParts::PropertyChanged(std::string_view key) {
  FrameChanged();
  Raise([&](StockbookWidget& widget) { Q_EMIT widget.PropertyChanged(ToQString(key)); });
}

void WidgetParts::AppearanceChanged() {
  Raise([](StockbookWidget& widget) { Q_EMIT widget.AppearanceChanged(); });
}

void WidgetParts::JournalChanged() {
  Raise([](StockbookWidget& widget) { Q_EMIT widget.JournalChanged(); });
}

WidgetParts::RowValues WidgetParts::ReadRow() const {
  return {.row = control_.Row(), .rows = control_.Rows(), .flag = control_.Flag()};
}

void WidgetParts::TellRow() {
  const RowValues now = ReadRow();
  if (now == told_row_) return;
  told_row_ = now;
  Raise([](StockbookWidget& widget) { Q_EMIT widget.RowChanged(); });
}

// The control already calls this while it is being constructed.
void WidgetParts::FrameChanged() {
  if (widget_ != nullptr && widget_->parts_ != nullptr) widget_->UpdateFrames();
}

platform::MenuChoice WidgetParts::PopUp(const platform::MenuItem& menu) {
  const Pin pin(weak_from_this().lock());
  return menu_.PopUp(menu);
}

platform::MenuChoice WidgetParts::PopUpToTick(const platform::MenuItem& menu, const platform::MenuTick& tick) {
  const Pin pin(weak_from_this().lock());
  return menu_.PopUpToTick(menu, tick);
}

void WidgetParts::FollowFont() {
  if (fg_.GridFont() != followed_font_) return;
  followed_font_ = GridFontFor(widget_->font());
  layouts_.ChangeFont([this] { control_.FollowFont(followed_font_); });
}

control::Surroundings WidgetParts::Surroundings() {
  followed_font_ = DefaultGridFont();
  fg_.SetGridFont(followed_font_);
  return {fg_, fg1_, text_metrics_, images_, *this, clipboard_, *this};
}

}  // namespace stockbook::qt
