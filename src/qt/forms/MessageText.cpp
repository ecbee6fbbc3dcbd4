#include "qt/forms/MessageText.h"

#include <algorithm>

#include <QApplication>
#include <QClipboard>
#include <QEvent>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>

namespace vantrelix::qt {

namespace {

constexpr int kLineLength = 72;  // characters of a line that reads well
// Of the screen's width and height; the height leaves room for what stands below the text.
constexpr double kWidestShare = 0.85;
constexpr double kHighestShare = 0.6;

// Marked text comes with the toolkit's own line breaks.
QString linesOf(QString marked) {
  return marked.replace(QChar::ParagraphSeparator, u'\n').replace(QChar::LineSeparator, u'\n');
}

// The width of the text with its own line breaks alone.
int naturalWidth(const QLabel& text) {
  const QRect all = text.fontMetrics().boundingRect(QRect(), Qt::AlignLeft | Qt::TextExpandTabs, text.text());
  return all.width() + 2 * (text.margin() + 1);
}

}  // namespace

MessageText::MessageText(QLabel& text, int narrowest) : text_(text), narrowest_(narrowest) {
  setFrameShape(NoFrame);
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  text.setAlignment(Qt::AlignLeft | Qt::AlignTop);
  setWidget(&text);
  // The window's own ground, which the viewport would paint over.
  text.setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
}

QSize MessageText::sizeHint() const {
  const QSize whole = screen()->availableGeometry().size();
  const QSize room(qRound(whole.width() * kWidestShare), qRound(whole.height() * kHighestShare));
  const int line = kLineLength * text_.fontMetrics().averageCharWidth();
  const int wanted = std::clamp(naturalWidth(text_), narrowest_, std::max(line, narrowest_));
  const int width = std::min(std::max(wanted, text_.minimumSizeHint().width()), room.width());
  const int height = text_.heightForWidth(width);
  if (height <= room.height()) return {width, height};
  return {width + verticalScrollBar()->sizeHint().width(), room.height()};
}

bool MessageText::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) updateGeometry();
  return QScrollArea::viewportEvent(event);
}

void copyWithoutSelection(QWidget& window, QLabel& text) {
  auto* copy = new QShortcut(QKeySequence::Copy, &window);
  QObject::connect(copy, &QShortcut::activated, &text, [&window, &text] {
    for (const QLabel* label : window.findChildren<QLabel*>()) {
      if (label->hasSelectedText()) return QApplication::clipboard()->setText(linesOf(label->selectedText()));
    }
    QApplication::clipboard()->setText(window.windowTitle() + "\n\n" + text.text());
  });
}

}  // namespace vantrelix::qt
