// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace stockbook::app {

// One line of plain text that never asks for room: what does not fit ends in an ellipsis, and the tooltip tells the
// whole. A message stays until the next one; descriptions of where the user is come over it and go again.
class MessageLine : public QWidget {
  Q_OBJECT

 public:
  explicit MessageLine(QWidget* parent = nullptr);

  void Show(const QString& message);
  // An empty one shows the last message again.
  void Describe(const QString& description);
  const QString& Message() const { return message_; }
  const QString& Description() const { return description_; }
  // What the line says now.
  const QString& Text() const { return description_.isEmpty() ? message_ : description_; }
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QString Shown() const;
  void UpdateToolTip();
  void TextChanged();

  QString message_;
  QString description_;
};

}  // namespace stockbook::app
