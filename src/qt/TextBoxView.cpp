#include "qt/TextBoxView.h"

#include <algorithm>

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScopedValueRollback>

#include "qt/typing.h"

namespace vantrelix::qt {

namespace {

constexpr QKeySequence::StandardKey kRemovals[] = {
    QKeySequence::Cut,
    QKeySequence::Delete,
    QKeySequence::Undo,
    QKeySequence::Redo,
    QKeySequence::DeleteStartOfWord,
    QKeySequence::DeleteEndOfWord,
    QKeySequence::DeleteCompleteLine,
    QKeySequence::DeleteEndOfLine,
    QKeySequence::Backspace,
};

bool isRemoval(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Backspace) return true;
  return std::any_of(std::begin(kRemovals), std::end(kRemovals), [&](auto key) { return event.matches(key); });
}

// The one place where two texts differ: `removed` characters at `at` gave way to `inserted`.
struct Difference {
  int at = 0;
  int removed = 0;
  QString inserted;
};

Difference differenceOf(const QString& before, const QString& after) {
  const auto shorter = std::min(before.size(), after.size());
  qsizetype front = 0;
  while (front < shorter && before[front] == after[front]) ++front;
  qsizetype back = 0;
  while (back < shorter - front && before[before.size() - 1 - back] == after[after.size() - 1 - back]) ++back;
  return {static_cast<int>(front), static_cast<int>(before.size() - front - back),
          after.mid(front, after.size() - front - back)};
}

// Line breaks and other control characters become blanks: the box has one line.
QString onOneLine(QString text) {
  for (QChar& character : text) {
    const bool breaks = character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
    if (breaks || character.category() == QChar::Other_Control) character = u' ';
  }
  return text;
}

}  // namespace

TextBoxView::TextBoxView(TextBox& model, QWidget* parent)
    : View(model, parent), selectAll_(model.selectAll.connect([this] { selectAllText(); })) {
  connect(this, &QLineEdit::textEdited, this, &TextBoxView::takeEdit);
}

void TextBoxView::showState(const TextBox& model) {
  setPalette(coloursOf(model));
  setReadOnly(model.locked());
  // While an edit is on its way to the model, the model is behind and not ahead.
  if (!editing_) showText(toQt(model.text()), hasFocus() ? cursorPosition() : 0);
}

void TextBoxView::showText(const QString& wanted, int cursor) {
  if (wanted == text()) return;
  setText(wanted);
  setCursorPosition(std::clamp(cursor, 0, static_cast<int>(wanted.size())));
}

void TextBoxView::selectAllText() {
  selectAll();
  // A click brings the focus first and puts the cursor then; what the model marked must outlive the click.
  allOnRelease_ = clicked_;
}

void TextBoxView::keyPressEvent(QKeyEvent* event) {
  const bool removes = isRemoval(*event);
  if (!model() || isReadOnly() || !(isTyping(*event) || removes)) return QLineEdit::keyPressEvent(event);
  const std::u32string keys = removes ? std::u32string(1, kBackspaceKey) : event->text().toStdU32String();
  bool passes = false;
  handOver([&](TextBox& box) {
    passes = std::all_of(keys.begin(), keys.end(), [&box](char32_t key) { return box.userKey(static_cast<int>(key)); });
  });
  if (!passes) return event->accept();
  const QScopedValueRollback<bool> rollback(passed_, true);
  QLineEdit::keyPressEvent(event);
}

void TextBoxView::takeEdit(const QString& edited) {
  {
    const QScopedValueRollback<bool> rollback(editing_, true);
    handOver([&](TextBox& box) {
      if (!passed_) filterEdit(box, edited);
      box.userText(fromQt(text()));
    });
  }
  refresh();
}

// The edit is made on screen already and the model knows nothing of it: what the filter refuses is taken back.
void TextBoxView::filterEdit(TextBox& box, const QString& edited) {
  const QString before = toQt(box.text());
  const Difference edit = differenceOf(before, edited);
  if (edit.inserted.isEmpty()) {
    if (edit.removed > 0 && !box.userKey(kBackspaceKey)) showText(before, edit.at);
    return;
  }
  const QString passing = toQt(box.userPaste(fromQt(onOneLine(edit.inserted))));
  if (passing == edit.inserted) return;
  const int cursor = edit.at + static_cast<int>(passing.size());
  // Where nothing passes, what was to give way to it stays.
  if (passing.isEmpty()) return showText(before, edit.at);
  showText(QString(before).replace(edit.at, edit.removed, passing), cursor);
}

void TextBoxView::mouseReleaseEvent(QMouseEvent* event) {
  QLineEdit::mouseReleaseEvent(event);
  if (std::exchange(allOnRelease_, false) && !hasSelectedText()) selectAll();
  letGo(*event);
}

// The model hears of the button before the box's own menu comes up. It drops that menu by disabling the box.
void TextBoxView::letGo(const QMouseEvent& event) {
  const int button = event.button() == Qt::LeftButton ? 1 : event.button() == Qt::RightButton ? 2 : 4;
  const QPoint at = event.position().toPoint(), onScreen = event.globalPosition().toPoint();
  ownMenu_ = event.button() == Qt::RightButton;
  keepsFocus_ = hasFocus();
  const bool stands = handOver(
      [&](TextBox& box) { box.userMouseUp(button, twipsOf(at.x(), logicalDpiX()), twipsOf(at.y(), logicalDpiY())); });
  if (!stands) return;
  keepsFocus_ = false;
  if (std::exchange(ownMenu_, false)) popUpOwnMenu(onScreen);
}

// The keyboard, which leaves a disabled box, comes back to it unless somebody has put it elsewhere meanwhile.
void TextBoxView::followEnabled() {
  QWidget* focus = window()->focusWidget();
  if (!isEnabled()) {
    ownMenu_ = false;
    focusWentTo_ = keepsFocus_ ? focus : nullptr;
  } else if (focusWentTo_ && std::exchange(focusWentTo_, nullptr) == focus) {
    setFocus(Qt::OtherFocusReason);
  }
}

void TextBoxView::popUpOwnMenu(const QPoint& at) {
  QMenu* menu = createStandardContextMenu();
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->popup(at);
}

// By the mouse the menu comes with the release of the button, whenever the platform asks for it: on the press it would
// take the release away.
void TextBoxView::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() != QContextMenuEvent::Mouse) return QLineEdit::contextMenuEvent(event);
  event->accept();
}

void TextBoxView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::EnabledChange) followEnabled();
  View::changeEvent(event);
}

void TextBoxView::focusInEvent(QFocusEvent* event) {
  const QScopedValueRollback<bool> rollback(clicked_, event->reason() == Qt::MouseFocusReason);
  View::focusInEvent(event);
}

}  // namespace vantrelix::qt
