// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>
#include <QObject>
#include <QSize>
#include <QVector>
#include <QWidget>

namespace stockbook::app {

// Keeps a window as large as it is when more of its parts are opened than it has room for, so that it never grows
// beyond the screen: a bar gives way first, until there is room for it again, then of the parts that the user opens
// those that he opened before the last one, which are closed. Belongs to the window.
class RoomKeeper : public QObject {
  Q_OBJECT

 public:
  RoomKeeper(QMainWindow& window, QWidget& bar, const QVector<QWidget*>& parts);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  int NeededHeight() const;
  void YieldBar();
  void CloseEarlierParts();
  void HoldSize();

  QMainWindow& window_;
  QWidget& bar_;
  QVector<QWidget*> opened_;  // in this order
  QSize least_;               // what the parts beside the bar took when it was last looked at
};

}  // namespace stockbook::app
