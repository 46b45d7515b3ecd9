// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>
#include <QString>

#include "stockbook/platform/property_bag.h"

namespace stockbook::qt {

// A property bag in the toolkit's settings (an ini file or the registry), with all keys in one group. Numbers are
// stored as numbers, pictures as the bytes of a PNG file, and an empty picture as no bytes. A value that cannot be
// read, a number beyond 16 or 32 bits, and settings that cannot be written throw platform::Error with a message for the
// user. The host owns the settings, which outlive the bag.
class SettingsBag : public platform::PropertyBag {
 public:
  SettingsBag(QSettings& settings, const QString& group) : settings_(settings), group_(group) {}

  platform::BagValue Read(std::string_view key, const platform::BagValue& fallback) override;
  void Write(std::string_view key, const platform::BagValue& value) override;
  // Writes the values to the store now and reports failures; otherwise the settings are written later and failures are
  // silent.
  void Flush();

 private:
  QString Place(std::string_view key) const;
  template <typename Integer>
  Integer ReadInteger(std::string_view key) const;
  platform::PictureRef ReadPicture(std::string_view key) const;
  [[noreturn]] void FailToRead(std::string_view key, const QString& why) const;
  [[noreturn]] void FailToWrite(const QString& what, const QString& why) const;
  void ExpectWritable(const QString& what);

  QSettings& settings_;
  QString group_;
  bool known_writable_ = false;
};

}  // namespace stockbook::qt
