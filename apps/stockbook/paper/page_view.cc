// SPDX-License-Identifier: MIT
#include "stockbook/paper/page_view.h"

#include <QImage>
#include <QPaintEvent>
#include <QPainter>

namespace stockbook::app {
namespace {

constexpr double kUnitsPerInch = 96;
constexpr int kEdge = 12;  // around the paper, in logical pixels

}  // namespace

PageView::PageView(QWidget* parent) : QWidget(parent) { setBackgroundRole(QPalette::Dark); }

void PageView::SetPrinter(qt::GridPrinter* printer, const QPageLayout& page) {
  printer_ = printer;
  paper_ = page.fullRect(QPageLayout::Inch).size() * kUnitsPerInch;
  Refresh();
}

void PageView::SetPage(int page) {
  page_ = page;
  setAccessibleName(tr("第 %1 页").arg(page + 1));
  Refresh();
}

void PageView::SetScale(double scale) {
  if (scale == scale_) return;
  scale_ = scale;
  Refresh();
}

void PageView::Refresh() {
  picture_ = {};
  updateGeometry();
  resize(sizeHint());
  update();
}

QSize PageView::sizeHint() const { return (paper_ * scale_).toSize() + QSize(2 * kEdge, 2 * kEdge); }

void PageView::MakePicture() {
  if (!picture_.isNull()) return;
  const double ratio = devicePixelRatioF();
  QImage image((paper_ * scale_ * ratio).toSize().expandedTo({1, 1}), QImage::Format_RGB32);
  image.fill(Qt::white);
  if (printer_ != nullptr) {
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    painter.scale(scale_ * ratio, scale_ * ratio);
    printer_->PaintPage(painter, page_);
  }
  picture_ = QPixmap::fromImage(image);
  picture_.setDevicePixelRatio(ratio);
}

void PageView::paintEvent(QPaintEvent* /*event*/) {
  MakePicture();
  QPainter painter(this);
  const QRect paper(QPoint(kEdge, kEdge), (paper_ * scale_).toSize());
  painter.drawPixmap(paper.topLeft(), picture_);
  painter.setPen(palette().color(QPalette::Shadow));
  painter.drawRect(paper.adjusted(-1, -1, 0, 0));
}

}  // namespace stockbook::app
