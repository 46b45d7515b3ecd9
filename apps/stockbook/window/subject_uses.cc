// SPDX-License-Identifier: MIT
#include "stockbook/window/subject_uses.h"

#include <algorithm>

#include "qt/sheet/text.h"

namespace stockbook::app {
namespace {

constexpr int kMostUses = 1'000'000'000;

}  // namespace

void SubjectUses::KeepIn(QSettings* settings, const QString& group) {
  settings_ = settings;
  group_ = group;
}

QString SubjectUses::KeyOf(const QString& kind, const CatalogEntry& entry) const {
  const QString name = entry.key != 0 ? QString::number(entry.key) : QLatin1Char('c') + qt::ToQString(entry.class_code);
  return group_ + QStringLiteral("/uses/") + kind + QLatin1Char('/') + name;
}

int SubjectUses::Of(const QString& kind, const CatalogEntry& entry) const {
  return settings_ == nullptr ? 0 : settings_->value(KeyOf(kind, entry)).toInt();
}

void SubjectUses::Count(const QString& kind, const CatalogEntry& entry) {
  if (settings_ != nullptr) settings_->setValue(KeyOf(kind, entry), std::clamp(Of(kind, entry), 0, kMostUses) + 1);
}

}  // namespace stockbook::app
