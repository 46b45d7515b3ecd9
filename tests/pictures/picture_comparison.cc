// SPDX-License-Identifier: MIT
#include "pictures/picture_comparison.h"

#include <QColor>
#include <algorithm>
#include <cstdlib>
#include <map>

namespace stockbook::pictures {
namespace {

constexpr int kSameColour = 1;      // steps of a channel that do not count
constexpr int kEdgeShare = 4;       // one part in so many of the contrast around an edge
constexpr int kMostUnlike = 12;     // pixels
constexpr int kMuchOfAColour = 60;  // pixels; rarer colours are not counted
constexpr int kRun = 24;            // pixels of one colour in a row; longer than in any text
constexpr double kMostChange = 0.35;

using Channel = int (*)(QRgb);
constexpr Channel kChannels[] = {qRed, qGreen, qBlue};

// The range of the channel in the reference around a pixel.
int ContrastAround(const QImage& image, int x, int y, Channel channel) {
  int least = 255;
  int most = 0;
  for (int row = std::max(y - 1, 0); row <= std::min(y + 1, image.height() - 1); ++row) {
    for (int column = std::max(x - 1, 0); column <= std::min(x + 1, image.width() - 1); ++column) {
      const int value = channel(image.pixel(column, row));
      least = std::min(least, value);
      most = std::max(most, value);
    }
  }
  return most - least;
}

bool IsAlike(const QImage& reference, const QImage& picture, int x, int y) {
  const QRgb wanted = reference.pixel(x, y);
  const QRgb found = picture.pixel(x, y);
  if ((wanted ^ found) << 8 == 0) return true;
  return std::all_of(std::begin(kChannels), std::end(kChannels), [&](Channel channel) {
    const int off = std::abs(channel(wanted) - channel(found));
    return off <= kSameColour || off <= ContrastAround(reference, x, y, channel) / kEdgeShare;
  });
}

using ColourCounts = std::map<QRgb, int>;

ColourCounts CountColours(const QImage& image) {
  ColourCounts counts;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) ++counts[image.pixel(x, y) | 0xFF000000u];
  }
  return counts;
}

// Between two other colours, as the antialiased edges of texts are between the text colour and the background.
bool IsMixture(QRgb colour, QRgb first, QRgb second) {
  if (colour == first || colour == second) return false;
  const double ink = qGreen(second) - qGreen(first);
  if (ink == 0) return false;
  const double share = (qGreen(colour) - qGreen(first)) / ink;
  return share > 0 && share < 1 && std::all_of(std::begin(kChannels), std::end(kChannels), [&](Channel channel) {
           const double mixed = channel(first) + share * (channel(second) - channel(first));
           return std::abs(mixed - channel(colour)) <= 2;
         });
}

// The colours of texts: frequent colours that are not mixtures.
ColourCounts Inks(const ColourCounts& all) {
  ColourCounts frequent = all;
  std::erase_if(frequent, [](const auto& counted) { return counted.second < kMuchOfAColour; });
  ColourCounts inks;
  for (const auto& [colour, count] : frequent) {
    bool mixture = false;
    for (const auto& [first, first_count] : frequent) {
      for (const auto& [second, second_count] : frequent) mixture = mixture || IsMixture(colour, first, second);
    }
    if (!mixture) inks[colour] = count;
  }
  return inks;
}

// The colours of lines and backgrounds, by the pixels in long horizontal or vertical runs of them.
ColourCounts CountRuns(const QImage& image) {
  ColourCounts counts;
  const auto scan = [&](int lines, int length, auto colour_at) {
    for (int line = 0; line < lines; ++line) {
      for (int first = 0, last = 0; first < length; first = last) {
        const QRgb colour = colour_at(line, first);
        while (last < length && colour_at(line, last) == colour) ++last;
        if (last - first >= kRun) counts[colour | 0xFF000000u] += last - first;
      }
    }
  };
  scan(image.height(), image.width(), [&](int y, int x) { return image.pixel(x, y); });
  scan(image.width(), image.height(), [&](int x, int y) { return image.pixel(x, y); });
  return counts;
}

std::string ColoursOff(const ColourCounts& wanted, const ColourCounts& found) {
  std::string off;
  for (const auto& [colour, count] : wanted) {
    const auto at = found.find(colour);
    const int now = at == found.end() ? 0 : at->second;
    if (std::abs(now - count) <= count * kMostChange) continue;
    off +=
        QColor(colour).name().toStdString() + " " + std::to_string(now) + " instead of " + std::to_string(count) + " ";
  }
  return off;
}

}  // namespace

bool Difference::IsSmall() const { return unlike_pixels <= kMostUnlike && colours.empty(); }

Difference Compare(const QImage& reference, const QImage& picture) {
  if (reference.size() != picture.size()) return {reference.width() * reference.height(), reference.rect(), "size"};
  const QImage wanted = reference.convertToFormat(QImage::Format_RGB32);
  const QImage found = picture.convertToFormat(QImage::Format_RGB32);
  Difference difference;
  for (int y = 0; y < wanted.height(); ++y) {
    for (int x = 0; x < wanted.width(); ++x) {
      if (IsAlike(wanted, found, x, y)) continue;
      ++difference.unlike_pixels;
      difference.where |= QRect(x, y, 1, 1);
    }
  }
  difference.colours =
      ColoursOff(Inks(CountColours(wanted)), CountColours(found)) + ColoursOff(CountRuns(wanted), CountRuns(found));
  return difference;
}

}  // namespace stockbook::pictures
