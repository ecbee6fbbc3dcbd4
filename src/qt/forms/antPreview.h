// The layout of the pattern preview: both pictures side by side, square, as large as the window has room for.
#pragma once

#include <QWidget>

#include "preview/frmAntPreview.h"

namespace vantrelix::qt {

class FormWindow;

void layOutAntPreview(FormWindow& window, frmAntPreview& form);

// Keeps a widget square in its middle.
class SquareRoom : public QWidget {
  Q_OBJECT

 public:
  SquareRoom(QWidget& content, QWidget* parent);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QSize square(int lines) const;

  QWidget& content_;
};

}  // namespace vantrelix::qt
