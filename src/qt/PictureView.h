// A picture box: its display list drawn anew at whatever size and pixel density it is shown.
#pragma once

#include <QWidget>

#include "qt/WidgetView.h"
#include "ui/widgets.h"

class QPainter;

namespace vantrelix::qt {

// Draws the lines of the picture into the rectangle, clipped to it; the pen has the width told, whatever the painter's
// scale. Lines of one colour that meet are one stroke, so that bends are smooth. A colour of the user's desktop is
// drawn in black: the ground of a picture is white.
void drawPicture(QPainter& painter, const QRectF& into, const PictureBox& picture, double penWidth);

class PictureView : public View<QWidget, PictureBox> {
  Q_OBJECT

 public:
  PictureView(PictureBox& model, QWidget* parent) : View(model, parent) { setAttribute(Qt::WA_OpaquePaintEvent); }

 protected:
  void showState(const PictureBox&) override { update(); }
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace vantrelix::qt
