// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace stockbook::app {

// One line of plain text that never asks for room: what does not fit ends in an ellipsis, and the tooltip tells the
// whole.
class MessageLine : public QWidget {
  Q_OBJECT

 public:
  explicit MessageLine(QWidget* parent = nullptr);

  void Show(const QString& message);
  const QString& Message() const { return message_; }
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QString Shown() const;
  void UpdateToolTip();

  QString message_;
};

}  // namespace stockbook::app
