// SPDX-License-Identifier: MIT
#include "qt/pin.h"

#include <QCoreApplication>
#include <QObject>

namespace stockbook::qt {
namespace {

constexpr QLatin1String kReceiverName("stockbook pin receiver");

QObject* FindReceiver() { return qApp->findChild<QObject*>(kReceiverName, Qt::FindDirectChildrenOnly); }

// A child of the application that goes as soon as the application ends, not with the other children: what it keeps
// owns widgets, and those need the windowing system.
QObject* NewReceiver() {
  auto* receiver = new QObject(qApp);
  receiver->setObjectName(kReceiverName);
  qAddPostRoutine([] { delete FindReceiver(); });
  return receiver;
}

}  // namespace

void Pin::FreeLater(std::shared_ptr<void> kept) {
  QObject* receiver = FindReceiver();
  // The queued call owns what is to be freed. Calls still pending go with their receiver.
  QMetaObject::invokeMethod(
      receiver != nullptr ? receiver : NewReceiver(), [kept = std::move(kept)] {}, Qt::QueuedConnection);
}

}  // namespace stockbook::qt
