// SPDX-License-Identifier: MIT
#include "stockbook/window/file_drop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace stockbook::app {
namespace {

// The only file of a drag; empty for several, because one window shows one inventory.
QString FileOf(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  return urls.size() == 1 && urls.front().isLocalFile() ? urls.front().toLocalFile() : QString();
}

}  // namespace

FileDrop::FileDrop(QWidget& window) : QObject(&window) {
  window.setAcceptDrops(true);
  window.installEventFilter(this);
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event) {
  const bool enters = event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove;
  if (!enters && event->type() != QEvent::Drop) return QObject::eventFilter(watched, event);
  auto& drop = static_cast<QDropEvent&>(*event);
  const QString file = drop.mimeData() == nullptr ? QString() : FileOf(*drop.mimeData());
  if (file.isEmpty()) {
    drop.ignore();
    return true;
  }
  drop.setDropAction(Qt::CopyAction);
  drop.accept();
  // Whoever the file comes from waits for the end of the drop, and a load may take long.
  if (!enters)
    QMetaObject::invokeMethod(
        this, [this, file] { emit Dropped(file); }, Qt::QueuedConnection);
  return true;
}

}  // namespace stockbook::app
