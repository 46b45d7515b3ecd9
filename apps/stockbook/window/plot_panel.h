// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>
#include <QToolButton>

#include "stockbook/window/plot_view.h"

namespace stockbook::app {

// The panel with the plot of the journal, and the buttons that print it and save it as PNG, PDF or SVG. What is in it
// is built when it is first shown or asked for: the start of the program does not wait for it.
class PlotPanel : public QDockWidget {
  Q_OBJECT

 public:
  explicit PlotPanel(QWidget* parent = nullptr);

  PlotView& view();
  // By dialogs that ask where to.
  void Print();
  void Save();
  void setVisible(bool visible) override;

 signals:
  // What could not be done, or was; a message for the user.
  void Told(const QString& message);
  // Of the plot.
  void PointChosen(double day, const std::optional<double>& quantity);
  void MoveWanted(stockbook::app::PlotView::Move move);
  void Left();

 protected:
  // The library reads its drivers the first time it is asked what it can draw, which no start of the program waits for.
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Build();

  PlotView* view_ = nullptr;
  QToolButton* print_ = nullptr;
  QToolButton* save_ = nullptr;
};

}  // namespace stockbook::app
