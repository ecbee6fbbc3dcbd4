#include "qt/forms/antPreview.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "qt/FormWindow.h"
#include "qt/forms/MessageText.h"
#include "qt/plainViews.h"

namespace vantrelix::qt {

namespace {

constexpr int kNarrowestText = 320;
// Sides of a picture, in heights of a line of text.
constexpr int kSmallest = 10;
constexpr int kUsual = 20;

void fillText(FormWindow& window, frmAntPreview& form) {
  auto& text = dynamic_cast<LabelView&>(window.view(form.lblAnt));
  text.makeSelectable();
  auto* room = new MessageText(text, kNarrowestText);
  room->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  (new QVBoxLayout(&window.view(form.fraAnt)))->addWidget(room);
  copyWithoutSelection(window, text);
}

QWidget& framed(FormWindow& window, Frame& frame, PictureBox& picture) {
  QWidget& box = window.view(frame);
  QWidget& shown = window.view(picture);
  shown.setAccessibleName(toQt(frame.caption()));
  (new QVBoxLayout(&box))->addWidget(new SquareRoom(shown, &box));
  return box;
}

// Alt and the first letter of its caption press a button.
void addButtons(FormWindow& window, frmAntPreview& form, QHBoxLayout& row) {
  row.addStretch(1);
  for (CommandButton& model : form.Command1) {
    auto& button = dynamic_cast<CommandButtonView&>(window.view(model));
    button.setMnemonic(toQt(model.caption()).front());
    row.addWidget(&button);
  }
}

}  // namespace

SquareRoom::SquareRoom(QWidget& content, QWidget* parent) : QWidget(parent), content_(content) {
  content.setParent(this);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize SquareRoom::square(int lines) const {
  const int side = lines * fontMetrics().height();
  return {side, side};
}

QSize SquareRoom::sizeHint() const { return square(kUsual); }

QSize SquareRoom::minimumSizeHint() const { return square(kSmallest); }

void SquareRoom::resizeEvent(QResizeEvent*) {
  const int side = std::min(width(), height());
  content_.setGeometry((width() - side) / 2, (height() - side) / 2, side, side);
}

void layOutAntPreview(FormWindow& window, frmAntPreview& form) {
  auto* column = new QVBoxLayout(&window);
  fillText(window, form);
  column->addWidget(&window.view(form.fraAnt));
  auto* pictures = new QHBoxLayout;
  pictures->addWidget(&framed(window, form.fraHor, form.picHor), 1);
  pictures->addWidget(&framed(window, form.fraVer, form.picVer), 1);
  column->addLayout(pictures, 1);
  auto* buttons = new QHBoxLayout;
  addButtons(window, form, *buttons);
  column->addLayout(buttons);
}

}  // namespace vantrelix::qt
