// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>
#include <QToolButton>

#include "stockbook/window/plot_view.h"

namespace stockbook::app {

// The panel with the plot of the journal, and the buttons that print it and save it as PNG, PDF or SVG.
class PlotPanel : public QDockWidget {
  Q_OBJECT

 public:
  explicit PlotPanel(QWidget* parent = nullptr);

  PlotView& view() { return *view_; }
  // By dialogs that ask where to.
  void Print();
  void Save();

 signals:
  // What could not be done, or was; a message for the user.
  void Told(const QString& message);

 protected:
  // The library reads its drivers the first time it is asked what it can draw, which no start of the program waits for.
  void showEvent(QShowEvent* event) override;

 private:
  PlotView* view_;
  QToolButton* print_ = nullptr;
  QToolButton* save_ = nullptr;
};

}  // namespace stockbook::app
