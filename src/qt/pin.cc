// SPDX-License-Identifier: MIT
#include "qt/pin.h"

#include <QCoreApplication>
#include <QObject>
#include <QPointer>

namespace stockbook::qt {

void Pin::FreeLater(std::shared_ptr<void> kept) {
  // Its events own what is to be freed. Events still pending when the application ends are destroyed with it.
  static QPointer<QObject> receiver;
  if (receiver == nullptr) {
    receiver = new QObject;
    qAddPostRoutine([] { delete receiver; });
  }
  QMetaObject::invokeMethod(
      receiver, [kept = std::move(kept)] {}, Qt::QueuedConnection);
}

}  // namespace stockbook::qt
