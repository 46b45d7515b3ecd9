// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "stockbook/platform/clipboard.h"
#include "stockbook/platform/control_site.h"
#include "stockbook/platform/images.h"
#include "stockbook/platform/menu.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::testing {

class FakePicture : public platform::Picture {
 public:
  explicit FakePicture(std::string picture_name) : name(std::move(picture_name)) {}
  int WidthPx() const override { return 16; }
  int HeightPx() const override { return 16; }
  std::string name;
};

inline platform::PictureRef MakePicture(const std::string& name) { return std::make_shared<FakePicture>(name); }
inline std::string NameOf(const platform::PictureRef& picture) {
  return picture ? static_cast<const FakePicture&>(*picture).name : std::string();
}

// Has a picture for every key.
class FakeImages : public platform::Images {
 public:
  platform::PictureRef Find(std::string_view key) const override {
    auto& picture = pictures_[std::string(key)];
    if (!picture) picture = MakePicture(std::string(key));
    return picture;
  }

 private:
  mutable std::map<std::string, platform::PictureRef> pictures_;
};

// Lines of `line_height_twips` whatever the text; 15 twips a pixel.
class FakeTextMetrics : public platform::TextMetrics {
 public:
  double TextHeightTwips(std::string_view /*text*/, const platform::Font& font) const override {
    return line_height_twips * font.size_pt / 9.0;
  }
  double TwipsPerPixelY() const override { return 15; }
  double line_height_twips = 210.5;
};

// Keeps the menus that were opened and chooses as told; nothing by default.
class FakeMenu : public platform::Menu {
 public:
  platform::MenuChoice PopUp(const platform::MenuItem& menu) override {
    shown.push_back(menu);
    return choose ? choose(menu) : platform::MenuChoice();
  }
  platform::MenuChoice PopUpToTick(const platform::MenuItem& menu, const platform::MenuTick& tick) override {
    if (while_open) while_open(menu, tick);
    return PopUp(menu);
  }
  void Choose(const std::string& name, int index = 0) {
    choose = [name, index](const platform::MenuItem&) { return platform::MenuChoice{name, index}; };
  }

  std::vector<platform::MenuItem> shown;
  std::function<platform::MenuChoice(const platform::MenuItem&)> choose;
  // Ticks before it chooses.
  std::function<void(const platform::MenuItem&, const platform::MenuTick&)> while_open;
};

class FakeClipboard : public platform::Clipboard {
 public:
  void Clear() override {
    text.clear();
    ++cleared;
    if (on_clear) on_clear();
  }
  void SetText(std::string new_text) override { text = std::move(new_text); }
  std::string text;
  int cleared = 0;
  std::function<void()> on_clear;
};

class FakeSite : public platform::ControlSite {
 public:
  void PropertyChanged(std::string_view key) override { changed.emplace_back(key); }
  void FrameChanged() override { ++frames; }
  std::vector<std::string> changed;
  int frames = 0;
};

}  // namespace stockbook::testing
