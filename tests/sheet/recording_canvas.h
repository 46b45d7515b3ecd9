// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "sheet/paint/canvas.h"

namespace stockbook::sheet::test {

// A canvas that records what is drawn, together with the clip in effect. Every character is `kCharacterWidth` wide and
// every line `kLineHeight` high, so that tests can compute positions.
class RecordingCanvas : public Canvas {
 public:
  static constexpr int kCharacterWidth = 7;
  static constexpr int kLineHeight = 14;

  struct Fill {
    platform::Colour colour;
    Rect rect;
    Rect clip;
  };
  struct Text {
    std::string text;
    Rect rect;
    Rect clip;
    HorizontalAlign align;
    TextOverflow overflow;
    bool cut;
    std::string font;
    platform::Colour colour;
  };
  struct Drawn {
    PictureItem item;
    Rect clip;
  };

  void PushClip(const Rect& rect) override {
    clips_.push_back(clips_.empty() ? rect : clips_.back().Intersected(rect));
  }
  void PopClip() override { clips_.pop_back(); }
  void FillRects(platform::Colour colour, std::span<const Rect> rects) override {
    ++calls;
    for (const Rect& rect : rects) fills.push_back({colour, rect, ClipNow()});
  }
  void DrawTexts(const platform::Font& font, platform::Colour colour, std::span<const TextItem> items) override {
    ++calls;
    for (const TextItem& item : items) {
      texts.push_back(
          {std::string(item.text), item.rect, ClipNow(), item.align, item.overflow, item.clip, font.name, colour});
    }
  }
  void DrawPictures(std::span<const PictureItem> items) override {
    ++calls;
    for (const PictureItem& item : items) pictures.push_back({item, ClipNow()});
  }
  int TextWidth(const platform::Font&, std::string_view line) override {
    ++measured;
    int characters = 0;
    for (const char c : line) characters += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
    return characters * kCharacterWidth;
  }
  int LineHeight(const platform::Font&) override { return kLineHeight; }

  bool IsBalanced() const { return clips_.empty(); }
  // The colour of a pixel after all fills.
  platform::Colour ColourAt(int x, int y) const {
    platform::Colour colour = 0xFFFFFFFF;
    for (const Fill& fill : fills) {
      if (fill.rect.Contains(Point{x, y}) && fill.clip.Contains(Point{x, y})) colour = fill.colour;
    }
    return colour;
  }
  const Text* Find(std::string_view text) const {
    for (const Text& drawn : texts) {
      if (drawn.text == text) return &drawn;
    }
    return nullptr;
  }

  std::vector<Fill> fills;
  std::vector<Text> texts;
  std::vector<Drawn> pictures;
  int calls = 0;
  int measured = 0;

 private:
  Rect ClipNow() const { return clips_.empty() ? Rect{-100000, -100000, 200000, 200000} : clips_.back(); }
  std::vector<Rect> clips_;
};

}  // namespace stockbook::sheet::test
