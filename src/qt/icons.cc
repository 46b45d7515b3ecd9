// SPDX-License-Identifier: MIT
#include "qt/icons.h"

#include <QColor>
#include <QPainterPath>
#include <QPolygonF>

namespace stockbook::qt {
namespace {

struct BillColours {
  QRgb line;
  QRgb sheet;
};

// By BillIcon.
constexpr BillColours kBillColours[] = {
    {0xFF2E8B57, 0xFFE6F5EB}, {0xFF1F6FB5, 0xFFE4F0FA}, {0xFFD2691E, 0xFFFDF0E3},
    {0xFFBE3455, 0xFFFBE8EC}, {0xFF7A4FB0, 0xFFF1EAF9}, {0xFF6B7680, 0xFFF2F4F6},
};

void Fill(QPainter& painter, QRgb colour, const QPainterPath& path) { painter.fillPath(path, QColor(colour)); }

void FillRect(QPainter& painter, QRgb colour, const QRectF& rect) { painter.fillRect(rect, QColor(colour)); }

void Stroke(QPainter& painter, QRgb colour, double width, const QPainterPath& path) {
  painter.strokePath(path, QPen(QColor(colour), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

QPainterPath Polygon(std::initializer_list<QPointF> points) {
  QPainterPath path;
  path.addPolygon(QPolygonF(QList<QPointF>(points)));
  path.closeSubpath();
  return path;
}

QPainterPath Rounded(const QRectF& rect, double radius) {
  QPainterPath path;
  path.addRoundedRect(rect, radius, radius);
  return path;
}

QPainterPath Circle(QPointF centre, double radius) {
  QPainterPath path;
  path.addEllipse(centre, radius, radius);
  return path;
}

QPainterPath Line(std::initializer_list<QPointF> points) {
  QPainterPath path;
  path.addPolygon(QPolygonF(QList<QPointF>(points)));
  return path;
}

// A sheet of paper with a folded corner.
void DrawSheet(QPainter& painter, const BillColours& colours, BillIcon kind) {
  const QPainterPath outline = Polygon({{2.5, 0.5}, {9.5, 0.5}, {13.5, 4.5}, {13.5, 15.5}, {2.5, 15.5}});
  Fill(painter, colours.sheet, outline);
  if (kind == BillIcon::kPurchase || kind == BillIcon::kSale) FillRect(painter, colours.line, {3, 1, 6, 3});
  Stroke(painter, colours.line, 1.0, outline);
  Fill(painter, colours.line, Polygon({{9, 0.5}, {13.5, 5}, {9, 5}}));
}

void DrawArrow(QPainter& painter, BillIcon kind, QRgb colour) {
  switch (kind) {
    case BillIcon::kReceipt:
    case BillIcon::kPurchase:
      FillRect(painter, colour, {7, 6, 2, 4});
      Fill(painter, colour, Polygon({{4, 9.5}, {12, 9.5}, {8, 13.5}}));
      break;
    case BillIcon::kIssue:
    case BillIcon::kSale:
      FillRect(painter, colour, {7, 9.5, 2, 4});
      Fill(painter, colour, Polygon({{4, 10}, {12, 10}, {8, 6}}));
      break;
    case BillIcon::kTransfer:
      FillRect(painter, colour, {4, 7, 5, 1.5});
      Fill(painter, colour, Polygon({{8.5, 5.2}, {12, 7.75}, {8.5, 10.3}}));
      FillRect(painter, colour, {7, 11.5, 5, 1.5});
      Fill(painter, colour, Polygon({{7.5, 9.7}, {4, 12.25}, {7.5, 14.8}}));
      break;
    case BillIcon::kOther:
      for (const double y : {7.0, 9.0, 11.0}) FillRect(painter, colour, {5, y, 6, 1});
      break;
  }
}

void DrawStamp(QPainter& painter) {
  Fill(painter, 0xFFFFFFFF, Circle({11.5, 11.5}, 4.5));
  Fill(painter, 0xFF178A3E, Circle({11.5, 11.5}, 3.9));
  Stroke(painter, 0xFFFFFFFF, 1.3, Line({{9.6, 11.7}, {11, 13}, {13.4, 10.2}}));
}

void DrawBox(QPainter& painter) {
  Fill(painter, 0xFFF3D19C, Polygon({{8, 1}, {15, 4.5}, {8, 8}, {1, 4.5}}));
  Fill(painter, 0xFFD9A14E, Polygon({{1, 4.5}, {8, 8}, {8, 15.5}, {1, 12}}));
  Fill(painter, 0xFFB97F2C, Polygon({{15, 4.5}, {8, 8}, {8, 15.5}, {15, 12}}));
  Fill(painter, 0xFFFFF4DC, Polygon({{4, 3}, {11, 6.5}, {11, 9}, {9.5, 9.7}, {9.5, 7.2}, {2.6, 3.7}}));
}

void DrawDepot(QPainter& painter) {
  Fill(painter, 0xFF4A6FA5, Polygon({{8, 1}, {16, 5.5}, {16, 7.5}, {0, 7.5}, {0, 5.5}}));
  FillRect(painter, 0xFFDCE6F2, {1, 7, 14, 8});
  FillRect(painter, 0xFF34527D, {1, 14, 14, 1});
  for (const double y : {9.0, 11.0, 13.0}) FillRect(painter, 0xFF6F8FBF, {4, y, 8, 1});
  FillRect(painter, 0xFFFFFFFF, {6, 4.5, 4, 1.5});
}

void DrawTruck(QPainter& painter) {
  FillRect(painter, 0xFF178F8B, {0, 3, 9, 8});
  FillRect(painter, 0xFF0F6D6A, {0, 10, 16, 1.5});
  Fill(painter, 0xFF3FB5B0, Polygon({{10, 5}, {13, 5}, {16, 8.5}, {16, 11}, {10, 11}}));
  Fill(painter, 0xFFE4F7F6, Polygon({{11, 6}, {12.7, 6}, {14.6, 8.5}, {11, 8.5}}));
  for (const double x : {4.0, 12.5}) {
    Fill(painter, 0xFF2B3A42, Circle({x, 12.3}, 2.2));
    Fill(painter, 0xFFFFFFFF, Circle({x, 12.3}, 0.9));
  }
}

void DrawPerson(QPainter& painter) {
  Fill(painter, 0xFFF0C8A4, Circle({8, 5}, 3.6));
  QPainterPath hair;
  hair.moveTo(4.4, 5);
  hair.arcTo(QRectF(4.4, 1.4, 7.2, 7.2), 180, -180);
  hair.quadTo(8, 2.6, 4.4, 5);
  Fill(painter, 0xFF4A3B52, hair);
  QPainterPath body;
  body.moveTo(1.5, 15.5);
  body.cubicTo(1.5, 11, 4.5, 9.5, 8, 9.5);
  body.cubicTo(11.5, 9.5, 14.5, 11, 14.5, 15.5);
  body.closeSubpath();
  Fill(painter, 0xFF5A5FBF, body);
  Fill(painter, 0xFFFFFFFF, Polygon({{6.3, 9.6}, {9.7, 9.6}, {8, 12.4}}));
}

// Bars along a timeline.
void DrawPlan(QPainter& painter) {
  Fill(painter, 0xFFFBF6EA, Rounded({0.5, 1, 15, 14}, 1.5));
  Stroke(painter, 0xFF8A6D3B, 1.0, Rounded({0.5, 1.5, 15, 13}, 1.5));
  FillRect(painter, 0xFF2F80C2, {2.5, 4, 6, 2});
  FillRect(painter, 0xFF3FA25A, {5.5, 7, 6, 2});
  FillRect(painter, 0xFFD9822B, {8.5, 10, 5, 2});
}

void DrawBook(QPainter& painter) {
  Fill(painter, 0xFF8C2F39, Rounded({1.5, 0.5, 12.5, 15}, 1.5));
  FillRect(painter, 0xFFFFFFFF, {4, 12.5, 10, 2});
  FillRect(painter, 0xFFC9CED6, {4, 13.25, 10, 0.5});
  FillRect(painter, 0xFF6B1F2A, {1.5, 1.5, 2.5, 13});
  FillRect(painter, 0xFFF7E7C6, {5.5, 3, 6.5, 4});
  for (const double y : {4.0, 5.5}) FillRect(painter, 0xFF8C2F39, {6.5, y, 4.5, 0.7});
}

}  // namespace

void DrawBill(QPainter& painter, BillIcon kind, Audit audit) {
  const BillColours& colours = kBillColours[static_cast<size_t>(kind)];
  DrawSheet(painter, colours, kind);
  DrawArrow(painter, kind, colours.line);
  if (audit == Audit::kAudited) DrawStamp(painter);
}

void DrawSubject(QPainter& painter, SubjectIcon subject) {
  using Draw = void (*)(QPainter&);
  static constexpr Draw kDrawings[] = {DrawBox, DrawDepot, DrawTruck, DrawPerson, DrawPlan};  // by SubjectIcon
  kDrawings[static_cast<size_t>(subject)](painter);
}

void DrawStockBook(QPainter& painter) { DrawBook(painter); }

void DrawJournal(QPainter& painter, SubjectIcon subject) {
  DrawBook(painter);
  Fill(painter, 0xFFFFFFFF, Rounded({5.5, 5.5, 10.5, 10.5}, 2));
  painter.save();
  painter.translate(6.2, 6.2);
  painter.scale(9.2 / 16, 9.2 / 16);
  DrawSubject(painter, subject);
  painter.restore();
}

// A quiet dot: it only tells that the row knows where its stock came from.
void DrawMark(QPainter& painter) { Fill(painter, 0xFF4A86C0, Circle({3.6, 2.4}, 1.9)); }

}  // namespace stockbook::qt
