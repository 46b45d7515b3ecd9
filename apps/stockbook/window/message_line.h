// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace stockbook::app {

// One line of plain text that never demands room: a text that does not fit ends in an ellipsis, and the tooltip shows
// all of it. A message stays until the next one; descriptions of the user's place temporarily cover it. It paints
// itself; it is a label for screen readers, which read its accessible name.
class MessageLine : public QLabel {
  Q_OBJECT

 public:
  explicit MessageLine(QWidget* parent = nullptr);

  void Show(const QString& message);
  // An empty text shows the last message again.
  void Describe(const QString& description);
  const QString& Message() const { return message_; }
  const QString& Description() const { return description_; }
  // The text on the line now.
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
