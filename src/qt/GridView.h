// A data grid model as a table. Keys, clicks and entries go to the model, which alone moves, selects and stores; the
// table shows what comes of it.
#pragma once

#include <QElapsedTimer>
#include <QTableView>

#include "qt/WidgetView.h"
#include "ui/DataGrid.h"

namespace vantrelix::qt {

class GridDelegate;
class GridItemModel;

class GridView : public View<QTableView, DataGrid> {
  Q_OBJECT

 public:
  GridView(DataGrid& model, QWidget* parent);

  // For the box in which a cell is edited.
  bool passesKey(const QKeyEvent& event);
  void finishEditAndMove(GridMove to);
  void dropEdit();
  void editorLeft();
  void editorGone();

 protected:
  void showState(const DataGrid& model) override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  // The toolkit would go to the first row as the keyboard comes in; the model may stand on none.
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override {
    return currentIndex().isValid() ? QTableView::moveCursor(action, modifiers) : QModelIndex();
  }
  // The model alone selects.
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex&, const QEvent*) const override {
    return QItemSelectionModel::NoUpdate;
  }

 private:
  void connectHeaders();
  void showColumns(const DataGrid& model);
  void showRowHeight(const DataGrid& model);
  void showSortMark(const DataGrid& model);
  void showPlace(const DataGrid& model);
  void tellView();
  QItemSelection selectionOf(const DataGrid& model) const;
  QItemSelection rowsAsSelection(std::vector<int> rows) const;
  QRect cellsBetween(GridCell a, GridCell b) const;
  bool openEditor();
  bool finishEdit();
  bool takeCommand(const QKeyEvent& event);
  bool takeShortcut(const QKeyEvent& event);
  bool type(const QKeyEvent& event);
  bool move(GridMove to, bool extend);
  bool editableGrid() const { return model() && model()->anyEditable(); }

  GridItemModel* items_;
  GridDelegate* delegate_;
  Connection heldChanged_;
  QElapsedTimer typed_;     // since the last key of a search
  bool showing_ = false;    // the table is being brought up to the model
  bool finishing_ = false;  // an edit is being ended
  bool inside_ = false;     // the grid or its box has the keyboard
  bool held_ = false;       // an entry was refused while a click was on its way
};

}  // namespace vantrelix::qt
