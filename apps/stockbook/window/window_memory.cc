// SPDX-License-Identifier: MIT
#include "stockbook/window/window_memory.h"

#include <QCryptographicHash>
#include <QVariantList>
#include <QVariantMap>
#include <algorithm>
#include <cmath>
#include <map>

#include "qt/sheet/text.h"

namespace stockbook::app {
namespace {

constexpr int kDigits = 16;  // of a digest: no user has so many inventories that two of them meet
constexpr const char* kSubject = "/subject";
constexpr int kLastJournalType = 3;
constexpr int kMostTwips = 1'000'000;  // no column is that wide, whatever the settings say

constexpr qsizetype kMostPlaces = 50;

QString PlacesName() { return QStringLiteral("places"); }

QString SubjectText(const JournalOptions& options) {
  return QStringLiteral("%1/%2/").arg(options.key_id).arg(options.dp_id) + qt::ToQString(options.dp_code);
}

// Settings may hold anything, infinities included.
double LengthFrom(const QVariant& stored) {
  const double length = stored.toDouble();
  return std::isfinite(length) ? length : 0;
}

QVariantMap ToMap(const std::map<std::string, int>& values) {
  QVariantMap map;
  for (const auto& [key, value] : values) map.insert(qt::ToQString(key), value);
  return map;
}

std::map<std::string, int> FromMap(const QVariant& stored) {
  std::map<std::string, int> values;
  const QVariantMap map = stored.toMap();
  for (auto at = map.begin(); at != map.end(); ++at) values[qt::FromQString(at.key())] = at.value().toInt();
  return values;
}

}  // namespace

// The settings write all they hold, with locks, whenever something was set, be it what it was.
void WindowMemory::Put(const QString& key, const QVariant& value) {
  if (settings_.value(key) != value) settings_.setValue(key, value);
}

void WindowMemory::SetOfWindow(const QString& name, const QVariant& value) {
  Put(QStringLiteral("window/") + name, value);
}

void WindowMemory::SetInventory(const std::string& name) {
  group_.clear();
  if (name.empty()) return;
  const QByteArray digest = QCryptographicHash::hash(QByteArray::fromStdString(name), QCryptographicHash::Sha256);
  group_ = QStringLiteral("inventories/") + QString::fromLatin1(digest.toHex().left(kDigits));
}

std::optional<JournalOptions> WindowMemory::LastSubject() const {
  const QVariantMap stored = settings_.value(group_ + QLatin1String(kSubject)).toMap();
  const int type = stored.value(QStringLiteral("type"), -1).toInt();
  if (group_.isEmpty() || type < 0 || type > kLastJournalType) return std::nullopt;
  JournalOptions options;
  options.journal_type = type;
  options.key_id = stored.value(QStringLiteral("key")).toInt();
  options.dp_id = stored.value(QStringLiteral("second")).toInt();
  options.dp_code = qt::FromQString(stored.value(QStringLiteral("class")).toString());
  options.allow_qty2 = stored.value(QStringLiteral("qty2")).toBool();
  options.allow_inv = stored.value(QStringLiteral("tax")).toBool();
  options.acc_restrict = stored.value(QStringLiteral("restrict")).toBool();
  return options;
}

void WindowMemory::SetLastSubject(const JournalOptions& options) {
  if (group_.isEmpty()) return;
  Put(group_ + QLatin1String(kSubject), QVariantMap{{QStringLiteral("type"), options.journal_type},
                                                    {QStringLiteral("key"), options.key_id},
                                                    {QStringLiteral("second"), options.dp_id},
                                                    {QStringLiteral("class"), qt::ToQString(options.dp_code)},
                                                    {QStringLiteral("qty2"), options.allow_qty2},
                                                    {QStringLiteral("tax"), options.allow_inv},
                                                    {QStringLiteral("restrict"), options.acc_restrict}});
}

QString WindowMemory::KeyOfJournals(int journal_type, const QString& name) const {
  return group_ + QStringLiteral("/journal%1/").arg(journal_type) + name;
}

QVariant WindowMemory::OfJournals(int journal_type, const QString& name) const {
  return group_.isEmpty() ? QVariant() : settings_.value(KeyOfJournals(journal_type, name));
}

void WindowMemory::SetOfJournals(int journal_type, const QString& name, const QVariant& value) {
  if (!group_.isEmpty()) Put(KeyOfJournals(journal_type, name), value);
}

std::optional<ColumnChanges> WindowMemory::Columns(int journal_type) const {
  const QVariant stored = OfJournals(journal_type, QStringLiteral("columns"));
  if (!stored.isValid()) return std::nullopt;
  const QVariantMap map = stored.toMap();
  ColumnChanges changes;
  changes.widths = FromMap(map.value(QStringLiteral("widths")));
  std::erase_if(changes.widths, [](const auto& width) { return width.second < 0 || width.second > kMostTwips; });
  changes.hidden = FromMap(map.value(QStringLiteral("hidden")));
  for (const QString& key : map.value(QStringLiteral("order")).toStringList())
    if (const std::string name = qt::FromQString(key);
        std::find(changes.order.begin(), changes.order.end(), name) == changes.order.end())
      changes.order.push_back(name);
  changes.frozen = std::max(0, map.value(QStringLiteral("frozen")).toInt());
  return changes;
}

void WindowMemory::SetColumns(int journal_type, const ColumnChanges& changes) {
  QStringList order;
  for (const std::string& key : changes.order) order.append(qt::ToQString(key));
  SetOfJournals(journal_type, QStringLiteral("columns"),
                QVariantMap{{QStringLiteral("widths"), ToMap(changes.widths)},
                            {QStringLiteral("hidden"), ToMap(changes.hidden)},
                            {QStringLiteral("order"), order},
                            {QStringLiteral("frozen"), changes.frozen}});
}

std::optional<KeptPlace> WindowMemory::Place(const JournalOptions& options) const {
  for (const QVariant& each : OfJournals(options.journal_type, PlacesName()).toList()) {
    const QVariantMap map = each.toMap();
    if (map.value(QStringLiteral("subject")).toString() != SubjectText(options)) continue;
    KeptPlace place;
    place.row = map.value(QStringLiteral("row"), -1).toInt();
    place.column = qt::FromQString(map.value(QStringLiteral("column")).toString());
    place.line = qt::FromQString(map.value(QStringLiteral("line")).toString());
    place.left = LengthFrom(map.value(QStringLiteral("left")));
    place.height = LengthFrom(map.value(QStringLiteral("height")));
    place.in_sight = map.value(QStringLiteral("seen")).toBool();
    return place;
  }
  return std::nullopt;
}

void WindowMemory::SetPlace(const JournalOptions& options, const KeptPlace& place) {
  const QString subject = SubjectText(options);
  QVariantList places{QVariantMap{{QStringLiteral("subject"), subject},
                                  {QStringLiteral("row"), place.row},
                                  {QStringLiteral("column"), qt::ToQString(place.column)},
                                  {QStringLiteral("line"), qt::ToQString(place.line)},
                                  {QStringLiteral("left"), place.left},
                                  {QStringLiteral("height"), place.height},
                                  {QStringLiteral("seen"), place.in_sight}}};
  for (const QVariant& each : OfJournals(options.journal_type, PlacesName()).toList()) {
    if (places.size() < kMostPlaces && each.toMap().value(QStringLiteral("subject")).toString() != subject)
      places.append(each);
  }
  SetOfJournals(options.journal_type, PlacesName(), places);
}

void WindowMemory::Forget() { settings_.clear(); }

}  // namespace stockbook::app
