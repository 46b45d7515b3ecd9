// SPDX-License-Identifier: MIT
#include "com/window/icons.h"

#include <utility>

namespace stockbook::com {
namespace {

using Shapes = std::vector<Shape>;

struct BillColours {
  uint32_t line;
  uint32_t sheet;
};

// By BillIcon.
constexpr BillColours kBillColours[] = {
    {0x2E8B57, 0xE6F5EB}, {0x1F6FB5, 0xE4F0FA}, {0xD2691E, 0xFDF0E3},
    {0xBE3455, 0xFBE8EC}, {0x7A4FB0, 0xF1EAF9}, {0x6B7680, 0xF2F4F6},
};

void AddFill(Shapes& shapes, uint32_t colour, ShapePoints points) {
  shapes.push_back({ShapeKind::kFill, colour, std::move(points), 0});
}

void AddBar(Shapes& shapes, uint32_t colour, ShapePoint corner, double width, double height) {
  AddFill(shapes, colour, RectPoints(corner, width, height));
}

// A sheet of paper with a folded corner.
void AddSheet(Shapes& shapes, const BillColours& colours, BillIcon kind) {
  const ShapePoints outline{{2.5, 0.5}, {9.5, 0.5}, {13.5, 4.5}, {13.5, 15.5}, {2.5, 15.5}};
  AddFill(shapes, colours.sheet, outline);
  if (kind == BillIcon::kPurchase || kind == BillIcon::kSale) AddBar(shapes, colours.line, {3, 1}, 6, 3);
  shapes.push_back({ShapeKind::kOutline, colours.line, outline, 1});
  AddFill(shapes, colours.line, {{9, 0.5}, {13.5, 5}, {9, 5}});
}

void AddArrow(Shapes& shapes, BillIcon kind, uint32_t colour) {
  switch (kind) {
    case BillIcon::kReceipt:
    case BillIcon::kPurchase:
      AddBar(shapes, colour, {7, 6}, 2, 4);
      AddFill(shapes, colour, {{4, 9.5}, {12, 9.5}, {8, 13.5}});
      break;
    case BillIcon::kIssue:
    case BillIcon::kSale:
      AddBar(shapes, colour, {7, 9.5}, 2, 4);
      AddFill(shapes, colour, {{4, 10}, {12, 10}, {8, 6}});
      break;
    case BillIcon::kTransfer:
      AddBar(shapes, colour, {4, 7}, 5, 1.5);
      AddFill(shapes, colour, {{8.5, 5.2}, {12, 7.75}, {8.5, 10.3}});
      AddBar(shapes, colour, {7, 11.5}, 5, 1.5);
      AddFill(shapes, colour, {{7.5, 9.7}, {4, 12.25}, {7.5, 14.8}});
      break;
    case BillIcon::kOther:
      for (const double y : {7.0, 9.0, 11.0}) AddBar(shapes, colour, {5, y}, 6, 1);
      break;
  }
}

void AddStamp(Shapes& shapes) {
  AddFill(shapes, 0xFFFFFF, CirclePoints({11.5, 11.5}, 4.5));
  AddFill(shapes, 0x178A3E, CirclePoints({11.5, 11.5}, 3.9));
  shapes.push_back({ShapeKind::kLine, 0xFFFFFF, {{9.6, 11.7}, {11, 13}, {13.4, 10.2}}, 1.3});
}

void AddBox(Shapes& shapes) {
  AddFill(shapes, 0xF3D19C, {{8, 1}, {15, 4.5}, {8, 8}, {1, 4.5}});
  AddFill(shapes, 0xD9A14E, {{1, 4.5}, {8, 8}, {8, 15.5}, {1, 12}});
  AddFill(shapes, 0xB97F2C, {{15, 4.5}, {8, 8}, {8, 15.5}, {15, 12}});
  AddFill(shapes, 0xFFF4DC, {{4, 3}, {11, 6.5}, {11, 9}, {9.5, 9.7}, {9.5, 7.2}, {2.6, 3.7}});
}

void AddDepot(Shapes& shapes) {
  AddFill(shapes, 0x4A6FA5, {{8, 1}, {16, 5.5}, {16, 7.5}, {0, 7.5}, {0, 5.5}});
  AddBar(shapes, 0xDCE6F2, {1, 7}, 14, 8);
  AddBar(shapes, 0x34527D, {1, 14}, 14, 1);
  for (const double y : {9.0, 11.0, 13.0}) AddBar(shapes, 0x6F8FBF, {4, y}, 8, 1);
  AddBar(shapes, 0xFFFFFF, {6, 4.5}, 4, 1.5);
}

void AddTruck(Shapes& shapes) {
  AddBar(shapes, 0x178F8B, {0, 3}, 9, 8);
  AddBar(shapes, 0x0F6D6A, {0, 10}, 16, 1.5);
  AddFill(shapes, 0x3FB5B0, {{10, 5}, {13, 5}, {16, 8.5}, {16, 11}, {10, 11}});
  AddFill(shapes, 0xE4F7F6, {{11, 6}, {12.7, 6}, {14.6, 8.5}, {11, 8.5}});
  for (const double x : {4.0, 12.5}) {
    AddFill(shapes, 0x2B3A42, CirclePoints({x, 12.3}, 2.2));
    AddFill(shapes, 0xFFFFFF, CirclePoints({x, 12.3}, 0.9));
  }
}

void AddPerson(Shapes& shapes) {
  AddFill(shapes, 0xF0C8A4, CirclePoints({8, 5}, 3.6));
  ShapePoints hair;
  AddArc(hair, {8, 5}, 3.6, 180, 180);
  AddCurve(hair, {9.2, 3.4}, {6.8, 3.4}, {4.4, 5});
  AddFill(shapes, 0x4A3B52, std::move(hair));
  ShapePoints body{{1.5, 15.5}};
  AddCurve(body, {1.5, 11}, {4.5, 9.5}, {8, 9.5});
  AddCurve(body, {11.5, 9.5}, {14.5, 11}, {14.5, 15.5});
  AddFill(shapes, 0x5A5FBF, std::move(body));
  AddFill(shapes, 0xFFFFFF, {{6.3, 9.6}, {9.7, 9.6}, {8, 12.4}});
}

// Bars along a timeline.
void AddPlan(Shapes& shapes) {
  AddFill(shapes, 0xFBF6EA, RoundedPoints({0.5, 1}, 15, 14, 1.5));
  shapes.push_back({ShapeKind::kOutline, 0x8A6D3B, RoundedPoints({0.5, 1.5}, 15, 13, 1.5), 1});
  AddBar(shapes, 0x2F80C2, {2.5, 4}, 6, 2);
  AddBar(shapes, 0x3FA25A, {5.5, 7}, 6, 2);
  AddBar(shapes, 0xD9822B, {8.5, 10}, 5, 2);
}

}  // namespace

std::vector<Shape> BillShapes(BillIcon kind, Audit audit) {
  const BillColours& colours = kBillColours[static_cast<size_t>(kind)];
  Shapes shapes;
  AddSheet(shapes, colours, kind);
  AddArrow(shapes, kind, colours.line);
  if (audit == Audit::kAudited) AddStamp(shapes);
  return shapes;
}

std::vector<Shape> SubjectShapes(SubjectIcon subject) {
  using Add = void (*)(Shapes&);
  static constexpr Add kDrawings[] = {AddBox, AddDepot, AddTruck, AddPerson, AddPlan};  // by SubjectIcon
  Shapes shapes;
  kDrawings[static_cast<size_t>(subject)](shapes);
  return shapes;
}

std::vector<Shape> StockBookShapes() {
  Shapes shapes;
  AddFill(shapes, 0x8C2F39, RoundedPoints({1.5, 0.5}, 12.5, 15, 1.5));
  AddBar(shapes, 0xFFFFFF, {4, 12.5}, 10, 2);
  AddBar(shapes, 0xC9CED6, {4, 13.25}, 10, 0.5);
  AddBar(shapes, 0x6B1F2A, {1.5, 1.5}, 2.5, 13);
  AddBar(shapes, 0xF7E7C6, {5.5, 3}, 6.5, 4);
  for (const double y : {4.0, 5.5}) AddBar(shapes, 0x8C2F39, {6.5, y}, 4.5, 0.7);
  return shapes;
}

std::vector<Shape> JournalShapes(SubjectIcon subject) {
  constexpr double kCorner = 6.2;
  constexpr double kReduced = 9.2 / 16;
  Shapes shapes = StockBookShapes();
  AddFill(shapes, 0xFFFFFF, RoundedPoints({5.5, 5.5}, 10.5, 10.5, 2));
  for (Shape& shape : SubjectShapes(subject)) {
    for (ShapePoint& point : shape.points) point = {kCorner + point.x * kReduced, kCorner + point.y * kReduced};
    shape.width *= kReduced;
    shapes.push_back(std::move(shape));
  }
  return shapes;
}

std::vector<Shape> MarkShapes() { return {{ShapeKind::kFill, 0xD93025, {{0, 0}, {6, 0}, {6, 6}}, 0}}; }

}  // namespace stockbook::com
