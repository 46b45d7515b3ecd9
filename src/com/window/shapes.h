// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "com/automation/pixel_picture.h"

namespace stockbook::com {

struct ShapePoint {
  double x = 0;
  double y = 0;
};

using ShapePoints = std::vector<ShapePoint>;

// What is done along the points: the polygon is filled, or its outline or the open line through them is drawn as broad
// as `width`, with round joints.
enum class ShapeKind { kFill, kOutline, kLine };

// A drawing of one colour, 0xRRGGBB and opaque.
struct Shape {
  ShapeKind kind = ShapeKind::kFill;
  uint32_t colour = 0;
  ShapePoints points;
  double width = 1;
};

// Polygons for the round forms.
ShapePoints CirclePoints(ShapePoint centre, double radius);
ShapePoints RectPoints(ShapePoint corner, double width, double height);
ShapePoints RoundedPoints(ShapePoint corner, double width, double height, double radius);
// From the last point on, along a cubic curve.
void AddCurve(ShapePoints& points, ShapePoint control1, ShapePoint control2, ShapePoint end);
// From the angle on over the sweep, in degrees; 0 is to the right, and a positive sweep goes down from there.
void AddArc(ShapePoints& points, ShapePoint centre, double radius, double from, double sweep);

// Draws the shapes one upon the other, from a field of `units` by `units` onto `width` by `height` pixels, with
// smooth edges.
Pixels DrawShapes(std::span<const Shape> shapes, double units, int width, int height);

}  // namespace stockbook::com
