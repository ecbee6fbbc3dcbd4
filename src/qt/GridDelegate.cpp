#include "qt/GridDelegate.h"

#include <QKeyEvent>

#include "qt/GridView.h"
#include "qt/gridKeys.h"
#include "qt/typing.h"

namespace vantrelix::qt {

GridDelegate::GridDelegate(GridView& view) : QStyledItemDelegate(&view), view_(view) {}

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const {
  auto* editor = new QLineEdit(parent);
  editor_ = editor;
  cell_ = index;
  editor->setFrame(false);
  editor->setAlignment(index.data(Qt::TextAlignmentRole).value<Qt::Alignment>());
  editor->setAccessibleName(index.model()->headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString());
  return editor;
}

// Only once: a cell shown anew in the middle of an edit must not undo what the user typed.
void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  if (editor->property("filled").toBool()) return;
  editor->setProperty("filled", true);
  static_cast<QLineEdit*>(editor)->setText(index.data(Qt::EditRole).toString());
}

void GridDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const {
  view_.editorGone();
  editor_ = nullptr;
  QStyledItemDelegate::destroyEditor(editor, index);
}

bool GridDelegate::eventFilter(QObject* object, QEvent* event) {
  if (object != editor_) return false;
  switch (event->type()) {
    case QEvent::ShortcutOverride:
      // Escape is the box's before it is the window's.
      if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) event->accept();
      return false;
    case QEvent::KeyPress:
      return takeKey(static_cast<QKeyEvent&>(*event));
    case QEvent::FocusOut:
      if (movesFocus(static_cast<QFocusEvent*>(event)->reason())) view_.editorLeft();
      return false;
    default:
      return false;
  }
}

bool GridDelegate::takeKey(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Escape) {
    view_.dropEdit();
    return true;
  }
  if (const std::optional<GridMove> move = moveEndingEdit(event)) {
    view_.finishEditAndMove(*move);
    return true;
  }
  return isTyping(event) && !view_.passesKey(event);
}

}  // namespace vantrelix::qt
