// SPDX-License-Identifier: MIT
#pragma once

#include <QPageLayout>
#include <QPixmap>
#include <QWidget>

#include "stockbook/qt/grid_printer.h"

namespace stockbook::app {

// One page of paper as it will be printed, at any scale. It keeps the picture of the page that it shows, and no other.
class PageView : public QWidget {
  Q_OBJECT

 public:
  explicit PageView(QWidget* parent = nullptr);

  // Shows pages of the printer, which is for `page` at 96 units an inch and outlives the view; null for none.
  void SetPrinter(qt::GridPrinter* printer, const QPageLayout& page);
  void SetPage(int page);
  // Pixels of the screen for one of 96 to the inch.
  void SetScale(double scale);
  double scale() const { return scale_; }
  // The size of the paper at scale 1.
  QSizeF PaperSize() const { return paper_; }
  // Paints the page now, and not when the widget is painted the next time.
  void MakePicture();
  // The page that is shown, in device pixels.
  const QPixmap& picture() const { return picture_; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Refresh();

  qt::GridPrinter* printer_ = nullptr;
  QSizeF paper_;
  int page_ = 0;
  double scale_ = 1;
  QPixmap picture_;
};

}  // namespace stockbook::app
