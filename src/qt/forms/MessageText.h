// The text of a message: wrapped at a width that reads well, and in a box that scrolls where the screen is too small
// for it.
#pragma once

#include <QLabel>
#include <QScrollArea>

namespace vantrelix::qt {

class MessageText : public QScrollArea {
  Q_OBJECT

 public:
  // Takes the label, which must wrap its text. `narrowest` is in pixels.
  MessageText(QLabel& text, int narrowest);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool viewportEvent(QEvent* event) override;

 private:
  QLabel& text_;
  int narrowest_;
};

// Lets Copy, where nothing is marked, copy the window's title and the whole text.
void copyWithoutSelection(QWidget& window, QLabel& text);

}  // namespace vantrelix::qt
