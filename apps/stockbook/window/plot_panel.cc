// SPDX-License-Identifier: MIT
#include "stockbook/window/plot_panel.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QPageLayout>
#include <QPrintDialog>
#include <QPrinter>
#include <QVBoxLayout>

#include "qt/sheet/text.h"
#include "stockbook/platform/error.h"
#include "stockbook/window/bar_layout.h"
#include "stockbook/window/host_translator.h"
#include "stockbook/window/plot_paper.h"

namespace stockbook::app {
namespace {

constexpr int kLeastHeightWithButtons = 150;

QToolButton* PlotButton(const QString& text) {
  auto* button = new QToolButton;
  button->setText(text);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

}  // namespace

PlotPanel::PlotPanel(QWidget* parent) : QDockWidget(HostText("走势图"), parent) {
  setObjectName(QStringLiteral("PlotPanel"));
}

PlotView& PlotPanel::view() {
  if (view_ == nullptr) Build();
  return *view_;
}

void PlotPanel::setVisible(bool visible) {
  if (visible && view_ == nullptr) Build();
  QDockWidget::setVisible(visible);
}

void PlotPanel::Build() {
  view_ = new PlotView;
  print_ = PlotButton(HostText("打印图(&C)..."));
  save_ = PlotButton(HostText("另存图(&X)..."));
  auto* body = new QWidget;
  auto* rows = new QVBoxLayout(body);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  auto* buttons = new QHBoxLayout;
  buttons->setContentsMargins(kBarMargin, 0, kBarMargin, 0);
  buttons->addStretch(1);
  buttons->addWidget(print_);
  buttons->addWidget(save_);
  rows->addLayout(buttons);
  rows->addWidget(view_, 1);
  setWidget(body);
  connect(print_, &QToolButton::clicked, this, &PlotPanel::Print);
  connect(save_, &QToolButton::clicked, this, &PlotPanel::Save);
  connect(view_, &PlotView::PointChosen, this, &PlotPanel::PointChosen);
  connect(view_, &PlotView::MoveWanted, this, &PlotPanel::MoveWanted);
  connect(view_, &PlotView::Left, this, &PlotPanel::Left);
}

void PlotPanel::showEvent(QShowEvent* event) {
  for (QToolButton* button : {print_, save_}) button->setEnabled(CanDrawPlots());
  QDockWidget::showEvent(event);
}

// In a low window the plot comes before what is done with it.
void PlotPanel::resizeEvent(QResizeEvent* event) {
  QDockWidget::resizeEvent(event);
  if (view_ == nullptr) return;
  for (QToolButton* button : {print_, save_}) button->setVisible(height() >= kLeastHeightWithButtons);
}

void PlotPanel::Print() {
  QPrinter printer(QPrinter::HighResolution);
  printer.setPageOrientation(QPageLayout::Landscape);
  QPrintDialog dialog(&printer, this);
  dialog.setWindowTitle(HostText("打印走势图"));
  if (dialog.exec() != QDialog::Accepted) return;
  emit Told(PrintPlot(view().plot(), printer) ? HostText("已打印走势图。")
                                              : HostText("打印机没有接受走势图：请检查打印机，或另存为 PDF。"));
}

void PlotPanel::Save() {
  const QString path = QFileDialog::getSaveFileName(this, HostText("另存走势图"), HostText("走势图.png"),
                                                    HostText("图片 (*.png);;PDF 文件 (*.pdf);;矢量图 (*.svg)"));
  if (path.isEmpty()) return;
  try {
    SavePlot(view().plot(), path);
    emit Told(HostText("已写入 %1。").arg(path));
  } catch (const platform::Error& error) {
    emit Told(qt::ToQString(error.what()));
  }
}

}  // namespace stockbook::app
