// SPDX-License-Identifier: MIT
// The least that a program of the toolkit does for Chinese text: a window of the host's size with one line in it.
#include <QApplication>
#include <QPainter>
#include <QWidget>

namespace {

constexpr QSize kSize(1280, 800);

class BareWindow : public QWidget {
 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter(this).drawText(rect(), Qt::AlignCenter, QStringLiteral("库存台账：入库、出库与结存"));
  }
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  BareWindow window;
  window.resize(kSize);
  window.show();
  return QApplication::exec();
}
