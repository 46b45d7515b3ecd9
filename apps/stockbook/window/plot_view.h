// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QWidget>
#include <optional>

#include "stockbook/plot/plot_drawing.h"

namespace stockbook::app {

// Shows a plot as large as it is itself, light or dark like the desktop, with a mark where the current line is. A click
// chooses a point; the arrows, Home and End ask for the next line in that direction. The picture is drawn again only
// when plot, size or colours change.
class PlotView : public QWidget {
  Q_OBJECT

 public:
  enum class Move { kPrevious, kNext, kFirst, kLast };
  Q_ENUM(Move)

  explicit PlotView(QWidget* parent = nullptr);

  void SetPlot(JournalPlot plot);
  const JournalPlot& plot() const { return plot_; }
  // Where the current line is; nothing for none.
  void SetMark(const std::optional<PlotStep>& mark);
  const std::optional<PlotStep>& mark() const { return mark_; }
  // Where everything is, in pixels of the widget.
  const PlotLayout& plot_layout() const { return layout_; }
  // The place of the mark in the pane of the quantity; nothing if it is not in view.
  std::optional<QPointF> MarkPlace() const;

  QSize sizeHint() const override { return {640, 360}; }
  QSize minimumSizeHint() const override { return {160, 84}; }

 signals:
  // A day, and the quantity there if the point is in the pane of the quantity.
  void PointChosen(double day, const std::optional<double>& quantity);
  void MoveWanted(stockbook::app::PlotView::Move move);
  void Left();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  PlotLook Look() const;
  // Empty where there are panes to look at.
  QString WhyBlank() const;
  void Redraw();
  void Describe();
  void PaintMark(QPainter& painter) const;

  JournalPlot plot_;
  PlotLayout layout_;
  QImage picture_;  // null when it has to be drawn
  std::optional<PlotStep> mark_;
};

}  // namespace stockbook::app
