// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <string>

namespace stockbook::pictures {

// What tells a picture from its reference.
struct Difference {
  int unlike_pixels = 0;  // of another colour than any blurring of an edge gives
  QRect where;            // that they lie in
  std::string colours;    // the colours of the reference that are too rare or too frequent

  bool IsSmall() const;
};

// Compares pixel by pixel. Where the reference is flat, nothing but the same colour is alike; at its edges a pixel may
// lie off by a quarter of the contrast around it, as fonts are smoothed a little differently elsewhere. A line or a
// text that is shifted by one pixel changes its pixels by far more. Smoothing leaves the inks of texts, the lines and
// the grounds alone, so each of these colours must be there, exactly and about as often: that finds what is only a
// little wrong. Pictures of different sizes are unlike altogether.
Difference Compare(const QImage& reference, const QImage& picture);

}  // namespace stockbook::pictures
