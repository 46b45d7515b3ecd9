// SPDX-License-Identifier: MIT
#include "qt/settings_bag.h"

#include <QVariant>
#include <limits>
#include <string>
#include <type_traits>

#include "qt/picture_file.h"
#include "qt/sheet/text.h"
#include "stockbook/platform/error.h"

namespace stockbook::qt {

QString SettingsBag::Place(std::string_view key) const {
  return group_.isEmpty() ? ToQString(key) : group_ + QLatin1Char('/') + ToQString(key);
}

void SettingsBag::FailToRead(std::string_view key, const QString& why) const {
  throw platform::Error("read " + std::string(key),
                        FromQString(QStringLiteral("外观设置“%1”无法读取：%2；请在“%3”中改正或删去它。")
                                        .arg(Place(key), why, settings_.fileName())));
}

void SettingsBag::FailToWrite(const QString& what, const QString& why) const {
  throw platform::Error(
      "write " + FromQString(what),
      FromQString(
          QStringLiteral("外观设置“%1”无法保存：%2；请检查“%3”能否写入。").arg(what, why, settings_.fileName())));
}

platform::BagValue SettingsBag::Read(std::string_view key, const platform::BagValue& fallback) {
  if (settings_.status() != QSettings::NoError) FailToRead(key, QStringLiteral("存储打不开或不是设置文件"));
  if (!settings_.contains(Place(key))) return fallback;
  if (std::holds_alternative<int16_t>(fallback)) return ReadInteger<int16_t>(key);
  if (std::holds_alternative<int32_t>(fallback)) return ReadInteger<int32_t>(key);
  return ReadPicture(key);
}

template <typename Integer>
Integer SettingsBag::ReadInteger(std::string_view key) const {
  const QVariant stored = settings_.value(Place(key));
  bool whole = false;
  // Through its text, which does not round.
  const qlonglong number = stored.toString().toLongLong(&whole);
  if (!whole) FailToRead(key, QStringLiteral("“%1”不是整数").arg(stored.toString()));
  if (number < std::numeric_limits<Integer>::min() || number > std::numeric_limits<Integer>::max()) {
    FailToRead(key, QStringLiteral("%1 超出了 %2 位整数的范围").arg(number).arg(sizeof(Integer) * 8));
  }
  return static_cast<Integer>(number);
}

platform::PictureRef SettingsBag::ReadPicture(std::string_view key) const {
  const QVariant stored = settings_.value(Place(key));
  if (!stored.isValid()) return nullptr;
  if (stored.typeId() == QMetaType::QByteArray) {
    const QByteArray bytes = stored.toByteArray();
    if (bytes.isEmpty()) return nullptr;
    if (platform::PictureRef picture = FromPng(bytes)) return picture;
  }
  FailToRead(key, QStringLiteral("它不是 PNG 图片"));
}

void SettingsBag::Write(std::string_view key, const platform::BagValue& value) {
  ExpectWritable(Place(key));
  const auto stored = [&](const auto& held) -> QVariant {
    if constexpr (std::is_integral_v<std::remove_cvref_t<decltype(held)>>) {
      return QVariant(static_cast<int>(held));
    } else {
      if (held == nullptr) return QByteArray();
      const std::optional<QByteArray> bytes = ToPng(*held);
      if (!bytes) FailToWrite(Place(key), QStringLiteral("这张图片不是本界面库的图片"));
      return *bytes;
    }
  };
  settings_.setValue(Place(key), std::visit(stored, value));
}

void SettingsBag::ExpectWritable(const QString& what) {
  if (!known_writable_ && !settings_.isWritable()) FailToWrite(what, QStringLiteral("存储不可写"));
  known_writable_ = true;
  if (settings_.status() != QSettings::NoError) FailToWrite(what, QStringLiteral("存储出错"));
}

void SettingsBag::Flush() {
  settings_.sync();
  const QString what = group_.isEmpty() ? QStringLiteral("*") : group_;
  if (settings_.status() != QSettings::NoError) FailToWrite(what, QStringLiteral("存储出错"));
}

}  // namespace stockbook::qt
