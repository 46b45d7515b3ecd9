// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QWidget>
#include <functional>

namespace stockbook::app {

// A bar that tells something that must not be overlooked, and offers what can be done about it. It stays until that is
// done, until it is closed by its button or Esc, or until it is dismissed. It never takes the focus by itself.
class NoticeBar : public QWidget {
  Q_OBJECT

 public:
  explicit NoticeBar(QWidget* parent = nullptr);

  struct Offer {
    QString caption;  // with the letter of its key
    std::function<void()> act;
  };
  // The bar disappears before `act` is called.
  void Tell(const QString& text, Offer offer);
  void Dismiss() { hide(); }

  QString Text() const { return text_->text(); }
  QPushButton& action() { return *action_; }

 signals:
  // The user closed it.
  void Closed();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Close();

  QLabel* text_;
  QPushButton* action_;
  QToolButton* close_;
  std::function<void()> act_;
};

}  // namespace stockbook::app
