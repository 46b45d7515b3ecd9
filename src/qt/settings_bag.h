// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>
#include <QString>

#include "platform/property_bag.h"

namespace stockbook::qt {

// A property bag in a store of the toolkit's settings (an ini file, the registry), each key under the group. Numbers
// are numbers there, pictures the bytes of PNG files, no picture no bytes. What cannot be read as it should, a number
// beyond its 16 or 32 bits included, and a store that cannot be written throw platform::Error with a message for the
// user. The settings are the host's and outlive the bag.
class SettingsBag : public platform::PropertyBag {
 public:
  SettingsBag(QSettings& settings, const QString& group) : settings_(settings), group_(group) {}

  platform::BagValue Read(std::string_view key, const platform::BagValue& fallback) override;
  void Write(std::string_view key, const platform::BagValue& value) override;
  // Takes what was written to the store now, where it may fail too; else the settings do it in their own time,
  // silently.
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
