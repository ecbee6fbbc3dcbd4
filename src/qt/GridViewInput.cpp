// What the user does at a grid: keys, clicks, edits, focus.
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QTimer>

#include "qt/GridDelegate.h"
#include "qt/GridItemModel.h"
#include "qt/GridView.h"
#include "qt/gridKeys.h"
#include "qt/typing.h"

namespace vantrelix::qt {

// --- Editing a cell.

bool GridView::openEditor() {
  const QModelIndex cell = currentIndex();
  if (!cell.isValid() || delegate_->editor()) return false;
  bool opens = false;
  const bool stands = handOver([&](DataGrid& grid) { opens = grid.userBeginEdit(cell.row(), cell.column()); });
  if (!stands || !opens || currentIndex() != cell) return false;
  edit(cell);
  return delegate_->editor() != nullptr;
}

// Ends the edit before the entry is handed over: what that sets off, a message or another row, finds no box open.
bool GridView::finishEdit() {
  QLineEdit* editor = delegate_->editor();
  if (!editor || finishing_) return false;
  const QPersistentModelIndex cell = delegate_->cell();
  const QString text = editor->text();
  {
    const QScopedValueRollback<bool> finishing(finishing_, true);
    if (editor->hasFocus()) setFocus();
    closeEditor(editor, QAbstractItemDelegate::NoHint);
  }
  return cell.isValid() && items_->setData(cell, text);
}

void GridView::finishEditAndMove(GridMove to) {
  const QPointer<QWidget> self(this);
  if (finishEdit() && self) move(to, false);
}

void GridView::dropEdit() {
  const QScopedValueRollback<bool> finishing(finishing_, true);
  QLineEdit* editor = delegate_->editor();
  setFocus();
  closeEditor(editor, QAbstractItemDelegate::RevertModelCache);
  if (model()) model()->userEndEdit();
}

void GridView::editorGone() {
  if (!finishing_ && model()) model()->userEndEdit();
}

void GridView::editorLeft() {
  if (finishing_) return;
  const QPointer<QWidget> self(this);
  const QWidget* now = QApplication::focusWidget();
  const bool stays = now && (now == this || isAncestorOf(now));
  const bool taken = finishEdit();
  if (!self) return;
  if (stays) {
    // The click that took the focus is still on its way; after a refusal it must not leave the cell.
    held_ = !taken;
    QTimer::singleShot(0, this, [this] { held_ = false; });
    return;
  }
  inside_ = false;
  handOver([](DataGrid& grid) { grid.userBlur(); });
}

// --- Keys.

bool GridView::passesKey(const QKeyEvent& event) {
  bool passes = true;
  const auto keys = event.text().toStdU32String();
  const bool stands = handOver([&](DataGrid& grid) {
    for (const char32_t key : keys) passes = passes && grid.userKey(static_cast<int>(key));
  });
  return stands && passes;
}

bool GridView::move(GridMove to, bool extend) {
  bool moved = false;
  handOver([&](DataGrid& grid) { moved = grid.userMove(to, extend); });
  return moved;
}

void GridView::keyPressEvent(QKeyEvent* event) {
  const QPointer<QWidget> self(this);
  const bool taken = takeShortcut(*event) || (self && takeCommand(*event)) || (self && type(*event));
  event->setAccepted(taken);
}

bool GridView::takeShortcut(const QKeyEvent& event) {
  if (event.matches(QKeySequence::Copy)) {
    // Where there is nothing to copy, what was copied before stays.
    handOver([](DataGrid& grid) {
      if (const QString text = toQt(grid.copyText()); !text.isEmpty()) QApplication::clipboard()->setText(text);
    });
    return true;
  }
  if (event.matches(QKeySequence::SelectAll)) {
    handOver([](DataGrid& grid) { grid.userSelectAll(); });
    return true;
  }
  if (event.key() == Qt::Key_Space && event.modifiers() == Qt::ShiftModifier) {
    handOver([](DataGrid& grid) { grid.userSelectRow(grid.currentRow()); });
    return true;
  }
  const std::optional<GridMove> wanted = moveOf(event);
  if (wanted) move(*wanted, event.modifiers().testFlag(Qt::ShiftModifier));
  return wanted.has_value();
}

// Enter, Escape and Delete are the window's where the grid has no use for them.
bool GridView::takeCommand(const QKeyEvent& event) {
  bool taken = false;
  switch (event.key()) {
    case Qt::Key_F2:
      openEditor();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!editableGrid()) return false;
      move(event.modifiers().testFlag(Qt::ShiftModifier) ? GridMove::up : GridMove::down, false);
      return true;
    case Qt::Key_Escape:
      handOver([&](DataGrid& grid) { taken = grid.userCancelRow(); });
      return taken;
    case Qt::Key_Delete:
      handOver([&](DataGrid& grid) {
        taken = grid.selBookmarks().count() > 0;
        grid.userDeleteRows();
      });
      return taken;
    default:
      return false;
  }
}

// A key types into the current cell, or seeks a row where nothing can be edited.
bool GridView::type(const QKeyEvent& event) {
  if (!isTyping(event)) return false;
  const QModelIndex cell = currentIndex();
  const QString text = event.text();
  if (cell.isValid() && cell.flags().testFlag(Qt::ItemIsEditable)) {
    QKeyEvent typed(QEvent::KeyPress, event.key(), event.modifiers(), text);
    if (openEditor()) QApplication::sendEvent(delegate_->editor(), &typed);
    return true;
  }
  if (editableGrid()) {
    passesKey(event);
    return true;
  }
  const bool goesOn = typed_.isValid() && typed_.elapsed() < QApplication::keyboardInputInterval();
  typed_.start();
  if (passesKey(event)) handOver([&](DataGrid& grid) { grid.userFind(fromQt(text), goesOn); });
  return true;
}

void GridView::inputMethodEvent(QInputMethodEvent* event) {
  const bool types = !event->commitString().isEmpty() || !event->preeditString().isEmpty();
  if (types && openEditor()) QApplication::sendEvent(delegate_->editor(), event);
  event->accept();
}

// The tab key goes from cell to cell where cells can be edited, and out of the grid behind the last.
bool GridView::focusNextPrevChild(bool next) {
  const QPointer<QWidget> self(this);
  const bool inCells = !delegate_->editor() && editableGrid();
  if (inCells && move(next ? GridMove::next : GridMove::previous, false)) return true;
  return self && QTableView::focusNextPrevChild(next);
}

// --- Clicks.

void GridView::mousePressEvent(QMouseEvent* event) {
  const QModelIndex cell = indexAt(event->position().toPoint());
  if (event->button() != Qt::LeftButton || !cell.isValid() || held_) return;
  const bool extend = event->modifiers().testFlag(Qt::ShiftModifier);
  handOver([&](DataGrid& grid) { grid.userClick(cell.row(), cell.column(), extend); });
}

void GridView::mouseMoveEvent(QMouseEvent* event) {
  const QModelIndex cell = indexAt(event->position().toPoint());
  if (!event->buttons().testFlag(Qt::LeftButton) || !cell.isValid() || cell == currentIndex() || held_) return;
  handOver([&](DataGrid& grid) { grid.userMoveTo(cell.row(), cell.column(), true); });
}

// A press has done all there is to do.
void GridView::mouseReleaseEvent(QMouseEvent* event) { event->accept(); }

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
  const QModelIndex cell = indexAt(event->position().toPoint());
  if (event->button() != Qt::LeftButton || !cell.isValid() || held_) return;
  if (handOver([&](DataGrid& grid) { grid.userDoubleClick(cell.row(), cell.column()); })) openEditor();
}

// --- Focus. The box in a cell is the grid's own: going into it and back is no move of the focus, and View, which tells
// the model of it, is passed over.

void GridView::focusInEvent(QFocusEvent* event) {
  if (!std::exchange(inside_, true)) return View::focusInEvent(event);
  QTableView::focusInEvent(event);  // NOLINT(bugprone-parent-virtual-call)
}

void GridView::focusOutEvent(QFocusEvent* event) {
  const QWidget* now = QApplication::focusWidget();
  if (now && now != this && isAncestorOf(now)) {
    QTableView::focusOutEvent(event);  // NOLINT(bugprone-parent-virtual-call)
    return;
  }
  if (movesFocus(event->reason())) inside_ = false;
  View::focusOutEvent(event);
}

}  // namespace vantrelix::qt
