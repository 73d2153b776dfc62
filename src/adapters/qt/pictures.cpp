#include "adapters/qt/pictures.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <utility>

namespace mirelo::qt {

namespace {

// All pictures are drawn on a field of 16 by 16.
constexpr double kField = 16;

struct Inks {
  QColor line;  // the ink of words
  QColor good;  // and those that say something
  QColor bad;
  QColor accent;
};

Inks InksOf(QIcon::Mode mode) {
  const QPalette palette = QGuiApplication::palette();
  if (mode == QIcon::Disabled) {
    const QColor faint = palette.color(QPalette::Disabled, QPalette::ButtonText);
    return {faint, faint, faint, faint};
  }
  return {palette.color(QPalette::ButtonText), QColor(0x2e, 0x7d, 0x32), QColor(0xc6, 0x28, 0x28),
          QColor(0x1e, 0x66, 0xc0)};
}

QPen Stroke(const QColor& ink, double width) {
  return QPen(ink, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

// A chevron that points right, its tip at `tip`.
void DrawChevron(QPainter& painter, double tip) {
  const QPointF points[] = {{tip - 4.5, 3.5}, {tip, 8}, {tip - 4.5, 12.5}};
  painter.drawPolyline(points, 3);
}

// Points right before it is turned.
void DrawArrow(QPainter& painter, const Inks& inks, int turn, bool twice) {
  painter.translate(8, 8);
  painter.rotate(turn);
  painter.translate(-8, -8);
  painter.setPen(Stroke(inks.line, 2));
  DrawChevron(painter, twice ? 8 : 10.25);
  if (twice) DrawChevron(painter, 13);
}

void DrawLeft(QPainter& painter, const Inks& inks) { DrawArrow(painter, inks, 180, false); }
void DrawAllLeft(QPainter& painter, const Inks& inks) { DrawArrow(painter, inks, 180, true); }
void DrawRight(QPainter& painter, const Inks& inks) { DrawArrow(painter, inks, 0, false); }
void DrawAllRight(QPainter& painter, const Inks& inks) { DrawArrow(painter, inks, 0, true); }
void DrawUp(QPainter& painter, const Inks& inks) { DrawArrow(painter, inks, 270, false); }
void DrawDown(QPainter& painter, const Inks& inks) { DrawArrow(painter, inks, 90, false); }

void DrawCross(QPainter& painter, double from, double to) {
  painter.drawLine(QPointF(from, from), QPointF(to, to));
  painter.drawLine(QPointF(from, to), QPointF(to, from));
}

void DrawDelete(QPainter& painter, const Inks& inks) {
  painter.setPen(Stroke(inks.bad, 2.2));
  DrawCross(painter, 4, 12);
}

// Columns of volume under a line of prices.
void DrawChart(QPainter& painter, const Inks& inks) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(inks.good);
  const double heights[] = {3, 5, 4, 6};
  for (int column = 0; column < 4; ++column) {
    painter.drawRect(QRectF(3 + 3 * column, 14 - heights[column], 2, heights[column]));
  }
  painter.setBrush(Qt::NoBrush);
  painter.setPen(Stroke(inks.accent, 1.6));
  const QPointF prices[] = {{3.5, 8}, {7, 4.5}, {10, 6}, {14, 2}};
  painter.drawPolyline(prices, 4);
  painter.setPen(Stroke(inks.line, 1.2));
  const QPointF axes[] = {{1.5, 1.5}, {1.5, 14.5}, {14.5, 14.5}};
  painter.drawPolyline(axes, 3);
}

void DrawError(QPainter& painter, const Inks& inks) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(inks.bad);
  painter.drawEllipse(QRectF(1, 1, 14, 14));
  painter.setPen(Stroke(Qt::white, 2));
  DrawCross(painter, 5.5, 10.5);
}

// An envelope.
void DrawSend(QPainter& painter, const Inks& inks) {
  painter.setPen(Stroke(inks.line, 1.3));
  painter.drawRoundedRect(QRectF(1.5, 3.5, 13, 9.5), 1, 1);
  const QPointF flap[] = {{2, 4.2}, {8, 9}, {14, 4.2}};
  painter.drawPolyline(flap, 3);
}

// On to the next.
void DrawIgnore(QPainter& painter, const Inks& inks) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(inks.accent);
  const QPointF triangle[] = {{3, 3}, {11, 8}, {3, 13}};
  painter.drawPolygon(triangle, 3);
  painter.drawRect(QRectF(11.5, 3, 2, 10));
}

// Round again.
void DrawRetry(QPainter& painter, const Inks& inks) {
  painter.setPen(Stroke(inks.good, 2));
  painter.drawArc(QRectF(3, 3, 10, 10), 30 * 16, 285 * 16);
  painter.setPen(Qt::NoPen);
  painter.setBrush(inks.good);
  const QPointF tip[] = {{14.8, 2.2}, {14.2, 8.2}, {9.2, 5.2}};
  painter.drawPolygon(tip, 3);
}

// A stop sign.
void DrawAbort(QPainter& painter, const Inks& inks) {
  constexpr double kNear = 5.1, kFar = 10.9, kLow = 1, kHigh = 15;
  const QPointF sign[] = {{kNear, kLow}, {kFar, kLow},   {kHigh, kNear}, {kHigh, kFar},
                          {kFar, kHigh}, {kNear, kHigh}, {kLow, kFar},   {kLow, kNear}};
  painter.setPen(Qt::NoPen);
  painter.setBrush(inks.bad);
  painter.drawPolygon(sign, 8);
  painter.setPen(Stroke(Qt::white, 1.8));
  DrawCross(painter, 5.8, 10.2);
}

using Draw = void (*)(QPainter&, const Inks&);

constexpr std::pair<const char*, Draw> kPictures[] = {
    {"left", DrawLeft},   {"all-left", DrawAllLeft}, {"right", DrawRight},   {"all-right", DrawAllRight},
    {"up", DrawUp},       {"down", DrawDown},        {"delete", DrawDelete}, {"chart", DrawChart},
    {"error", DrawError}, {"send", DrawSend},        {"ignore", DrawIgnore}, {"retry", DrawRetry},
    {"abort", DrawAbort},
};

// Draws a picture anew in each size, so that it is sharp in all of them.
class PictureEngine final : public QIconEngine {
 public:
  explicit PictureEngine(Draw draw) : draw_(draw) {}

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const double side = std::min(place.width(), place.height());
    const QRectF square(place.center().x() + 0.5 - side / 2, place.center().y() + 0.5 - side / 2, side, side);
    painter->translate(square.topLeft());
    painter->scale(side / kField, side / kField);
    painter->setBrush(Qt::NoBrush);
    draw_(*painter, InksOf(mode));
    painter->restore();
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return pixmap;
  }
  QIconEngine* clone() const override { return new PictureEngine(draw_); }

 private:
  Draw draw_;
};

}  // namespace

QIcon Picture(const std::string& name) {
  for (const auto& [known, draw] : kPictures) {
    if (name == known) return QIcon(new PictureEngine(draw));
  }
  return {};
}

}  // namespace mirelo::qt
