// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>
#include <QMainWindow>
#include <QObject>
#include <QVector>
#include <optional>

namespace stockbook::app {

// The height of the panels below the journal, which share it: the journal keeps most of the window when the first of
// them opens, until the user has moved the line between them. It listens to its window and its panels, and moves
// nothing while one of them is open.
class PanelHeight : public QObject {
  Q_OBJECT

 public:
  // The panels stand below each other or side by side in the same area of the window, which owns this.
  PanelHeight(QMainWindow& window, QVector<QDockWidget*> panels);

  // The share of the window's height that the user gave them, of 1; nothing while it is the first one.
  std::optional<double> Chosen() const { return chosen_; }
  void Choose(std::optional<double> share);

 signals:
  // The user has moved the line.
  void Changed(double share);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // The open one whose height is that of all, nullptr where there is none.
  QDockWidget* Open(const QDockWidget* except = nullptr) const;
  void GiveHeight(QDockWidget& panel) const;

  QMainWindow& window_;
  QVector<QDockWidget*> panels_;
  std::optional<double> chosen_;
  std::optional<int> pressed_;  // the panels' height when the mouse was pressed on the window itself
};

}  // namespace stockbook::app
