// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QWidget>

namespace stockbook::app {

// Lets files be dropped onto a window.
class FileDrop : public QObject {
  Q_OBJECT

 public:
  explicit FileDrop(QWidget& window);

 signals:
  void Dropped(const QString& file);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace stockbook::app
