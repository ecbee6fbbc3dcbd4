#include "qt/PictureView.h"

#include <QPainter>
#include <QPolygonF>

namespace vantrelix::qt {

namespace {

constexpr double kPenWidth = 1.35;  // logical pixels
constexpr int kFrameShade = 168;

// User coordinates to the rectangle.
class UserScale {
 public:
  UserScale(const PictureBox::Scale& scale, const QRectF& into) : scale_(scale), into_(into) {}

  bool usable() const { return scale_.width != 0 && scale_.height != 0; }
  QPointF at(double x, double y) const {
    return {into_.left() + (x - scale_.left) / scale_.width * into_.width(),
            into_.top() + (y - scale_.top) / scale_.height * into_.height()};
  }

 private:
  const PictureBox::Scale& scale_;
  QRectF into_;
};

QColor inkOf(Color colour) { return isDesktopColour(colour) ? QColor(Qt::black) : toQt(colour, QPalette()); }

void stroke(QPainter& painter, const QPolygonF& points, Color colour, double penWidth) {
  if (points.size() < 2) return;
  QPen pen(inkOf(colour), penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  pen.setCosmetic(true);
  painter.setPen(pen);
  if (points.first() == points.last() && points.size() > 2) {
    painter.drawPolygon(points);
  } else {
    painter.drawPolyline(points);
  }
}

}  // namespace

void drawPicture(QPainter& painter, const QRectF& into, const PictureBox& picture, double penWidth) {
  const UserScale scale(picture.scale(), into);
  if (!scale.usable()) return;
  painter.save();
  painter.setClipRect(into, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  QPolygonF points;
  Color colour = 0;
  for (const PictureBox::Line& line : picture.lines()) {
    const QPointF from = scale.at(line.x1, line.y1);
    const bool goesOn = !points.isEmpty() && line.colour == colour && points.last() == from;
    if (!goesOn) {
      stroke(painter, points, colour, penWidth);
      points = {from};
      colour = line.colour;
    }
    points << scale.at(line.x2, line.y2);
  }
  stroke(painter, points, colour, penWidth);
  painter.restore();
}

void PictureView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::white);
  if (const PictureBox* picture = model())
    drawPicture(painter, QRectF(rect()).adjusted(1, 1, -1, -1), *picture, kPenWidth * devicePixelRatioF());
  painter.setPen(QColor(kFrameShade, kFrameShade, kFrameShade));
  // The middle of the line, so that it lies on the edge at any pixel density.
  painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

}  // namespace vantrelix::qt
