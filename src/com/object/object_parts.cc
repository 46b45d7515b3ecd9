// SPDX-License-Identifier: MIT
#include "com/object/object_parts.h"

#include "com/window/fonts.h"
#include "control/default_pictures.h"

namespace stockbook::com {

ObjectParts::ObjectParts(IUnknown& object)
    : object_(object),
      control_(Surroundings()),
      link_(std::make_shared<ControlLink>(ControlLink{&object, &control_, &fg_, &pictures_})) {
  control::ShowDefaultPictures(control_, images_);
}

control::Surroundings ObjectParts::Surroundings() {
  followed_font_ = DefaultGridFont();
  fg_.SetGridFont(followed_font_);
  return {fg_, fg1_, text_metrics_, images_, *this, clipboard_, *this};
}

ObjectParts::~ObjectParts() { *link_ = {}; }

void ObjectParts::FollowFont(const platform::Font& font) {
  if (fg_.GridFont() != followed_font_ || font == followed_font_) return;
  followed_font_ = font;
  control_.FollowFont(font);
}

void ObjectParts::PropertyChanged(std::string_view key) {
  if (sites_.empty()) return;
  const auto pin = Pin();
  for (platform::ControlSite* site : sites_) site->PropertyChanged(key);
}

void ObjectParts::FrameChanged() {
  if (sites_.empty()) return;
  const auto pin = Pin();
  for (platform::ControlSite* site : sites_) site->FrameChanged();
}

platform::MenuChoice ObjectParts::PopUp(const platform::MenuItem& menu) {
  const auto pin = Pin();
  return menu_.PopUp(menu);
}

}  // namespace stockbook::com
