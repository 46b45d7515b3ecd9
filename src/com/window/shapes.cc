// SPDX-License-Identifier: MIT
#include "com/window/shapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace stockbook::com {
namespace {

constexpr int kSamples = 6;  // a pixel, in each direction
constexpr int kCurveSteps = 12;

struct ShapeBox {
  double left = 1e9;
  double top = 1e9;
  double right = -1e9;
  double bottom = -1e9;
};

ShapeBox BoxOf(const Shape& shape) {
  ShapeBox box;
  const double margin = shape.kind == ShapeKind::kFill ? 0 : shape.width / 2;
  for (const ShapePoint& point : shape.points) {
    box.left = std::min(box.left, point.x - margin);
    box.top = std::min(box.top, point.y - margin);
    box.right = std::max(box.right, point.x + margin);
    box.bottom = std::max(box.bottom, point.y + margin);
  }
  return box;
}

// By the number of edges to the right of the point.
bool IsInside(const ShapePoints& points, ShapePoint at) {
  bool inside = false;
  for (size_t index = 0, last = points.size() - 1; index < points.size(); last = index++) {
    const ShapePoint& a = points[index];
    const ShapePoint& b = points[last];
    if ((a.y > at.y) != (b.y > at.y) && at.x < (b.x - a.x) * (at.y - a.y) / (b.y - a.y) + a.x) inside = !inside;
  }
  return inside;
}

double DistanceSquared(ShapePoint at, ShapePoint a, ShapePoint b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double length = dx * dx + dy * dy;
  const double along = length == 0 ? 0 : std::clamp(((at.x - a.x) * dx + (at.y - a.y) * dy) / length, 0.0, 1.0);
  const double off_x = at.x - (a.x + along * dx);
  const double off_y = at.y - (a.y + along * dy);
  return off_x * off_x + off_y * off_y;
}

bool IsOnLine(const Shape& shape, ShapePoint at) {
  const double reach = shape.width * shape.width / 4;
  for (size_t index = 1; index < shape.points.size(); ++index) {
    if (DistanceSquared(at, shape.points[index - 1], shape.points[index]) <= reach) return true;
  }
  return shape.kind == ShapeKind::kOutline && DistanceSquared(at, shape.points.back(), shape.points.front()) <= reach;
}

bool Covers(const Shape& shape, ShapePoint at) {
  return shape.kind == ShapeKind::kFill ? IsInside(shape.points, at) : IsOnLine(shape, at);
}

uint32_t BlendedOver(uint32_t below, uint32_t colour, double coverage) {
  const auto channel = [&](int shift, uint32_t above) {
    const double old_value = static_cast<double>(below >> shift & 0xFFu);
    return static_cast<uint32_t>(std::lround(above * coverage + old_value * (1 - coverage))) << shift;
  };
  return channel(24, 0xFF) | channel(16, colour >> 16 & 0xFFu) | channel(8, colour >> 8 & 0xFFu) |
         channel(0, colour & 0xFFu);
}

// How much of the pixel is covered, 0 to 1.
double CoverageAt(const Shape& shape, int x, int y, ShapePoint unit) {
  int hits = 0;
  for (int sample = 0; sample < kSamples * kSamples; ++sample) {
    const double dx = (sample % kSamples + 0.5) / kSamples;
    const double dy = (static_cast<double>(sample / kSamples) + 0.5) / kSamples;
    if (Covers(shape, {(x + dx) * unit.x, (y + dy) * unit.y})) ++hits;
  }
  return static_cast<double>(hits) / (kSamples * kSamples);
}

void DrawShape(const Shape& shape, ShapePoint unit, Pixels& pixels) {
  if (shape.points.empty()) return;
  const ShapeBox box = BoxOf(shape);
  const auto within = [](double value, int most) { return static_cast<int>(std::clamp(value, 0.0, double(most))); };
  const int right = within(std::ceil(box.right / unit.x), pixels.width);
  const int bottom = within(std::ceil(box.bottom / unit.y), pixels.height);
  for (int y = within(std::floor(box.top / unit.y), pixels.height); y < bottom; ++y) {
    for (int x = within(std::floor(box.left / unit.x), pixels.width); x < right; ++x) {
      const double coverage = CoverageAt(shape, x, y, unit);
      if (coverage == 0) continue;
      uint32_t& value =
          pixels.values[static_cast<size_t>(y) * static_cast<size_t>(pixels.width) + static_cast<size_t>(x)];
      value = BlendedOver(value, shape.colour, coverage);
    }
  }
}

}  // namespace

void AddArc(ShapePoints& points, ShapePoint centre, double radius, double from, double sweep) {
  for (int step = 0; step <= kCurveSteps; ++step) {
    const double angle = (from + sweep * step / kCurveSteps) * std::numbers::pi / 180;
    points.push_back({centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)});
  }
}

ShapePoints CirclePoints(ShapePoint centre, double radius) {
  ShapePoints points;
  AddArc(points, centre, radius, 0, 180);
  AddArc(points, centre, radius, 180, 180);
  return points;
}

ShapePoints RectPoints(ShapePoint corner, double width, double height) {
  return {corner, {corner.x + width, corner.y}, {corner.x + width, corner.y + height}, {corner.x, corner.y + height}};
}

ShapePoints RoundedPoints(ShapePoint corner, double width, double height, double radius) {
  const double left = corner.x + radius;
  const double top = corner.y + radius;
  const double right = corner.x + width - radius;
  const double bottom = corner.y + height - radius;
  ShapePoints points;
  AddArc(points, {left, top}, radius, 180, 90);
  AddArc(points, {right, top}, radius, 270, 90);
  AddArc(points, {right, bottom}, radius, 0, 90);
  AddArc(points, {left, bottom}, radius, 90, 90);
  return points;
}

void AddCurve(ShapePoints& points, ShapePoint control1, ShapePoint control2, ShapePoint end) {
  const ShapePoint start = points.empty() ? ShapePoint() : points.back();
  for (int step = 1; step <= kCurveSteps; ++step) {
    const double t = static_cast<double>(step) / kCurveSteps;
    const double u = 1 - t;
    const auto mix = [&](double a, double b, double c, double d) {
      return u * u * u * a + 3 * u * u * t * b + 3 * u * t * t * c + t * t * t * d;
    };
    points.push_back({mix(start.x, control1.x, control2.x, end.x), mix(start.y, control1.y, control2.y, end.y)});
  }
}

Pixels DrawShapes(std::span<const Shape> shapes, double units, int width, int height) {
  Pixels pixels{std::max(width, 0), std::max(height, 0), {}};
  pixels.values.resize(static_cast<size_t>(pixels.width) * static_cast<size_t>(pixels.height));
  if (pixels.IsEmpty()) return pixels;
  const ShapePoint unit{units / pixels.width, units / pixels.height};
  for (const Shape& shape : shapes) DrawShape(shape, unit, pixels);
  return pixels;
}

}  // namespace stockbook::com
