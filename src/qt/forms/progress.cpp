#include "qt/forms/progress.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QScreen>
#include <QVBoxLayout>

#include "qt/FormWindow.h"
#include "qt/plainViews.h"

namespace vantrelix::qt {

namespace {

constexpr int kLineLength = 56;        // characters of the text that mostly have room
constexpr int kFrameButtons = 8;       // what the frame needs beside its title, in heights of a line
constexpr double kWidestShare = 0.85;  // of the screen

// Room for the title, which the frame shows in a font that nobody tells.
int widthFor(const QWidget& window, const QString& caption) {
  QFont bold = window.font();
  bold.setBold(true);
  const QFontMetrics metrics(bold);
  const int title = metrics.horizontalAdvance(caption) + kFrameButtons * metrics.lineSpacing();
  const int text = kLineLength * window.fontMetrics().averageCharWidth();
  return std::min(std::max(title, text), qRound(window.screen()->availableGeometry().width() * kWidestShare));
}

}  // namespace

void layOutProgress(FormWindow& window, frmProgress& form) {
  // The windows behind take no input, as behind a dialog.
  window.setWindowModality(Qt::ApplicationModal);
  auto* column = new QVBoxLayout(&window);
  auto& text = dynamic_cast<LabelView&>(window.view(form.lblProgress));
  text.makeElided();
  column->addWidget(&text);
  column->addWidget(&window.view(form.ProgressBar1));
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(&window.view(form.cmdCancel));
  column->addLayout(buttons);
  window.setMinimumWidth(widthFor(window, toQt(form.caption())));
}

}  // namespace vantrelix::qt
