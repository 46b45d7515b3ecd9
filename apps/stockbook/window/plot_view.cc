// SPDX-License-Identifier: MIT
#include "stockbook/window/plot_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>
#include <utility>

#include "base/number.h"
#include "qt/sheet/text.h"
#include "stockbook/base/date.h"
#include "stockbook/qt/colour.h"
#include "stockbook/window/host_translator.h"

namespace stockbook::app {

PlotView::PlotView(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(HostText("走势图"));
  Describe();
}

void PlotView::SetPlot(JournalPlot plot) {
  plot_ = std::move(plot);
  Redraw();
}

void PlotView::SetMark(const std::optional<PlotStep>& mark) {
  if (mark_ == mark) return;
  mark_ = mark;
  Describe();
  update();
}

// A new description is spoken while the plot has the focus.
void PlotView::Describe() {
  if (!mark_) {
    setAccessibleDescription(HostText("结存数量和单价随时间的变化；按左右键移到前一行或后一行，Enter 回到台账"));
    return;
  }
  const int64_t seconds = std::llround(mark_->day * static_cast<double>(base::Date::kSecondsPerDay));
  QString text = HostText("%1　结存 %2")
                     .arg(qt::ToQString(base::Date::FromSeconds(seconds).Text()),
                          qt::ToQString(base::NumberText(mark_->quantity)));
  if (plot_.has_price) text += HostText("　单价 %1").arg(qt::ToQString(base::NumberText(mark_->price)));
  setAccessibleDescription(text);
}

PlotLook PlotView::Look() const {
  return qt::IsDark(palette().color(QPalette::Window)) ? PlotLook::kDark : PlotLook::kLight;
}

void PlotView::Redraw() {
  // The band above the journal tells what the title does.
  layout_ = LayOutPlot(plot_, {width(), height(), 1, false});
  picture_ = {};
  update();
}

std::optional<QPointF> PlotView::MarkPlace() const {
  if (!mark_ || layout_.frames.empty() || mark_->day < layout_.from || mark_->day > layout_.to) return std::nullopt;
  return QPointF(layout_.XOf(mark_->day), layout_.frames.front().YOf(mark_->quantity));
}

QString PlotView::WhyBlank() const {
  if (!layout_.frames.empty()) return {};
  return plot_.IsEmpty() ? HostText("没有可画的行") : HostText("地方太小，画不下：请把走势图拉大");
}

void PlotView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (picture_.isNull() && CanDrawPlots()) {
    const double ratio = devicePixelRatioF();
    const PlotPage page{static_cast<int>(std::lround(width() * ratio)), static_cast<int>(std::lround(height() * ratio)),
                        ratio, false};
    picture_ = PlotPicture(plot_, page, Look());
    picture_.setDevicePixelRatio(ratio);
  }
  if (picture_.isNull()) {
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, HostText(std::string(WhyNoPlots())));
    return;
  }
  painter.drawImage(QPointF(0, 0), picture_);
  painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, WhyBlank());
  PaintMark(painter);
}

void PlotView::PaintMark(QPainter& painter) const {
  const auto place = MarkPlace();
  if (!place) return;
  constexpr double kRadius = 4;
  QColor colour = palette().color(QPalette::Highlight);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour, 1, Qt::DashLine));
  painter.drawLine(QPointF(place->x(), layout_.frames.front().top), QPointF(place->x(), layout_.frames.back().bottom));
  painter.setPen(QPen(colour, 1));
  painter.setBrush(colour);
  painter.drawEllipse(*place, kRadius, kRadius);
}

void PlotView::resizeEvent(QResizeEvent*) { Redraw(); }

void PlotView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) Redraw();
}

void PlotView::mousePressEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  const auto day = layout_.DayAt(at.x(), at.y());
  if (event->button() != Qt::LeftButton || !day) {
    QWidget::mousePressEvent(event);
    return;
  }
  const PlotFrame* frame = layout_.FrameAt(at.x(), at.y());
  std::optional<double> quantity;
  if (frame != nullptr && frame->pane == PlotPane::kQuantity) quantity = frame->NumberAt(at.y());
  emit PointChosen(*day, quantity);
}

void PlotView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
      emit MoveWanted(Move::kPrevious);
      break;
    case Qt::Key_Right:
      emit MoveWanted(Move::kNext);
      break;
    case Qt::Key_Home:
      emit MoveWanted(Move::kFirst);
      break;
    case Qt::Key_End:
      emit MoveWanted(Move::kLast);
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
      emit Left();
      break;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace stockbook::app
