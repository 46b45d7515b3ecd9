// SPDX-License-Identifier: MIT
#include "stockbook/window/panel_height.h"

#include <QEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace stockbook::app {
namespace {

constexpr double kFirstShare = 0.4;
constexpr double kLeastShare = 0.1;
constexpr double kMostShare = 0.9;

}  // namespace

PanelHeight::PanelHeight(QMainWindow& window, QVector<QDockWidget*> panels)
    : QObject(&window), window_(window), panels_(std::move(panels)) {
  window_.installEventFilter(this);
  for (QDockWidget* panel : panels_) panel->installEventFilter(this);
}

void PanelHeight::Choose(std::optional<double> share) {
  chosen_ = share;
  if (chosen_) chosen_ = std::clamp(*chosen_, kLeastShare, kMostShare);
}

QDockWidget* PanelHeight::Open(const QDockWidget* except) const {
  const auto found = std::find_if(panels_.begin(), panels_.end(), [except](const QDockWidget* panel) {
    return panel != except && !panel->isHidden() && !panel->isFloating();
  });
  return found == panels_.end() ? nullptr : *found;
}

void PanelHeight::GiveHeight(QDockWidget& panel) const {
  const double share = chosen_.value_or(kFirstShare);
  window_.resizeDocks({&panel}, {static_cast<int>(std::lround(window_.height() * share))}, Qt::Vertical);
}

// The line between the journal and the panels belongs to the window, which gets what the mouse does on it.
bool PanelHeight::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (watched != &window_) {
    // What comes while a panel is deleted comes from something that is none any more.
    if (type != QEvent::Show || event->spontaneous()) return false;
    auto* panel = static_cast<QDockWidget*>(watched);
    if (!panel->isFloating() && Open(panel) == nullptr) GiveHeight(*panel);
    return false;
  }
  if (type != QEvent::MouseButtonPress && type != QEvent::MouseButtonRelease) return false;
  const QDockWidget* open = Open();
  if (type == QEvent::MouseButtonPress) {
    if (open != nullptr) pressed_ = open->height();
    return false;
  }
  const auto before = std::exchange(pressed_, std::nullopt);
  if (before && open != nullptr && *before != open->height() && window_.height() > 0) {
    Choose(static_cast<double>(open->height()) / window_.height());
    emit Changed(*chosen_);
  }
  return false;
}

}  // namespace stockbook::app
