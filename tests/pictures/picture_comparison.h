// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <string>

namespace stockbook::pictures {

// The differences between a picture and its reference.
struct Difference {
  int unlike_pixels = 0;  // colours that no antialiasing of an edge explains
  QRect where;            // the rectangle around them
  std::string colours;    // the colours of the reference that are too rare or too frequent

  bool IsSmall() const;
};

// Compares pixel by pixel. In flat areas of the reference only the same colour matches; at its edges a pixel may differ
// by a quarter of the contrast around it, because other machines antialias fonts slightly differently. A line or a text
// shifted by one pixel changes its pixels by far more. Antialiasing does not change the colours of texts, lines and
// backgrounds, so each of these colours must occur exactly and about as often, which finds small errors. Pictures of
// different sizes never match.
Difference Compare(const QImage& reference, const QImage& picture);

}  // namespace stockbook::pictures
