// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "qt/sheet/pdf_file.h"
#include "qt/sheet/pdf_font.h"
#include "sheet/paint/canvas.h"
#include "sheet/print/page_target.h"
#include "stockbook/platform/picture.h"

namespace stockbook::qt {

// What the pages of a PDF share: fonts and pictures. Pictures are written when they are first shown, fonts at the end,
// when all of their glyphs are known.
class PdfResources {
 public:
  explicit PdfResources(PdfFile& file) : file_(file) {}

  PdfFaces& faces() { return faces_; }
  PdfFont& FontOf(const platform::Font& font);
  // The name of the picture at the size in pixels; "" for one of another toolkit.
  std::string PictureOf(const platform::Picture& picture, sheet::Size size);
  // Writes the fonts, after which no page may follow; returns the dictionary of all resources.
  std::string Write();

 private:
  struct Picture {
    const platform::Picture* picture = nullptr;
    sheet::Size size;
    int object = 0;
  };

  PdfFile& file_;
  PdfFaces faces_;
  std::vector<std::unique_ptr<PdfFont>> fonts_;
  std::vector<Picture> pictures_;
};

// A page of a PDF: the commands that paint it. Texts are texts, whose letters a reader can find and copy. The whole of
// a page costs a fraction of what the toolkit's painter takes for it, because a text is shaped and written as one
// piece.
class PdfPage : public sheet::PageTarget {
 public:
  // `left` and `top` are the margins, and `height` is that of the paper, in points.
  struct Frame {
    double left = 0;
    double top = 0;
    double height = 0;
  };

  PdfPage(PdfResources& resources, const Frame& frame) : resources_(resources), frame_(frame) {}

  void Paint(const sheet::PagePlace& place, const sheet::PageRoom& room,
             const std::function<void(sheet::Canvas&)>& paint) override;
  const QByteArray& commands() const { return commands_; }

 private:
  PdfResources& resources_;
  Frame frame_;
  QByteArray commands_;
};

// The canvas of a part of a page. Its pixels are those of the part; the commands before have placed it.
class PdfCanvas : public sheet::Canvas {
 public:
  PdfCanvas(PdfResources& resources, QByteArray& commands) : resources_(resources), commands_(commands) {}

  void PushClip(const sheet::Rect& rect) override;
  void PopClip() override;
  void FillRects(platform::Colour colour, std::span<const sheet::Rect> rects) override;
  void DrawTexts(const platform::Font& font, platform::Colour colour, std::span<const sheet::TextItem> items) override;
  void DrawPictures(std::span<const sheet::PictureItem> items) override;
  int TextWidth(const platform::Font& font, std::string_view line) override;
  int LineHeight(const platform::Font& font) override;

 private:
  void SetColour(platform::Colour colour);
  void AddRect(const sheet::Rect& rect);
  void DrawLine(PdfFont& font, const sheet::TextItem& item);
  void Shorten(PdfFont& font, double& width, double most);
  void ShowGlyphs(const PdfFont& font, double x, double baseline);
  void ShowRun(size_t first, size_t last, double x, double baseline);
  void DrawShapes(const PdfFont& font, const PdfGlyph& glyph, double x, double baseline);

  PdfResources& resources_;
  QByteArray& commands_;
  std::vector<PdfGlyph> glyphs_;  // of the line being drawn
  int face_ = -1;                 // the one that the commands have set
};

}  // namespace stockbook::qt
