// The box in which a cell of a grid is edited. It takes keys and loss of focus to the view, which ends the edit.
#pragma once

#include <QLineEdit>
#include <QPointer>
#include <QStyledItemDelegate>

namespace vantrelix::qt {

class GridView;

class GridDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit GridDelegate(GridView& view);

  // The box in use, and its cell; null where no cell is being edited.
  QLineEdit* editor() const { return qobject_cast<QLineEdit*>(editor_.data()); }
  QModelIndex cell() const { return cell_; }

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  // Nothing: what the box holds is the grid's only when the view ends the edit.
  void setModelData(QWidget*, QAbstractItemModel*, const QModelIndex&) const override {}
  void destroyEditor(QWidget* editor, const QModelIndex& index) const override;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  bool takeKey(const QKeyEvent& event);

  GridView& view_;
  mutable QPointer<QWidget> editor_;  // compared while it ends, when it is no line edit any more
  mutable QPersistentModelIndex cell_;
};

}  // namespace vantrelix::qt
