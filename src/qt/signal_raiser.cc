// SPDX-License-Identifier: MIT
#include "qt/signal_raiser.h"

#include <QLoggingCategory>
#include <QMetaMethod>

#include "qt/pin.h"
#include "qt/sheet/text.h"
#include "qt/widget_parts.h"
#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::qt {
namespace {

Q_LOGGING_CATEGORY(UnheardNotices, "stockbook")

}  // namespace

template <typename Call>
void SignalRaiser::Raise(Call call) {
  if (widget_ == nullptr) return;
  const Pin pin(widget_->parts_);
  call(*widget_);
}

void SignalRaiser::Process(int16_t Indicator) {
  Raise([&](StockbookWidget& widget) {
    // The last that a load raises, however it ends.
    if (Indicator < 0) widget.parts_->layouts().LoadEnded();
    Q_EMIT widget.Process(Indicator);
  });
}

void SignalRaiser::AfterLoaded() {
  Raise([](StockbookWidget& widget) {
    const std::shared_ptr<WidgetParts> parts = widget.parts_;
    parts->layouts().AfterLoaded();
    Q_EMIT widget.AfterLoaded();
    parts->TellRow();
  });
}

void SignalRaiser::AfterFormatted() {
  Raise([](StockbookWidget& widget) {
    const std::shared_ptr<WidgetParts> parts = widget.parts_;
    parts->layouts().AfterFormatted([&widget] { Q_EMIT widget.AfterFormatted(); });
  });
}

void SignalRaiser::CommandExecute(const std::string& CommandName, bool& Cancel) {
  Raise([&](StockbookWidget& widget) {
    if (CommandName == "Load") widget.parts_->layouts().BeforeLoad();
    const BooleanReference cancel(Cancel);
    Q_EMIT widget.CommandExecute(ToQString(CommandName), cancel);
    Cancel = cancel.Value();
  });
}

void SignalRaiser::Notify(const std::string& Msg) {
  Raise([&](StockbookWidget& widget) {
    const QString message = ToQString(Msg);
    static const QMetaMethod notify = QMetaMethod::fromSignal(&StockbookWidget::Notify);
    // Who forgot to connect it looks for the reason in the log.
    if (!message.isEmpty() && !widget.isSignalConnected(notify)) qCInfo(UnheardNotices).noquote() << message;
    Q_EMIT widget.Notify(message);
  });
}

void SignalRaiser::AfterRowChanged() {
  Raise([](StockbookWidget& widget) {
    const std::shared_ptr<WidgetParts> parts = widget.parts_;
    Q_EMIT widget.AfterRowChanged();
    parts->TellRow();
  });
}

void SignalRaiser::AfterRangeSelected() {
  Raise([](StockbookWidget& widget) { Q_EMIT widget.AfterRangeSelected(); });
}

void SignalRaiser::MouseUp(int16_t& Button, int16_t& Shift, float& X, float& Y) {
  Raise([&](StockbookWidget& widget) {
    const IntegerReference button(Button);
    const IntegerReference shift(Shift);
    const SingleReference x(X);
    const SingleReference y(Y);
    Q_EMIT widget.MouseUp(button, shift, x, y);
    Button = button.Value();
    Shift = shift.Value();
    X = x.Value();
    Y = y.Value();
  });
}

void SignalRaiser::FindMsg(const std::string& rMsg) {
  Raise([&](StockbookWidget& widget) { Q_EMIT widget.FindMsg(ToQString(rMsg)); });
}

}  // namespace stockbook::qt
