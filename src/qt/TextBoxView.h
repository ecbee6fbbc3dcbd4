// A text box model as a line edit. Every change of the user's passes the model's key filter, whichever way it came:
// typed, pasted, dropped, composed by an input method, undone or removed.
#pragma once

#include <QLineEdit>
#include <QPointer>

#include "qt/WidgetView.h"
#include "ui/widgets.h"

namespace vantrelix::qt {

class TextBoxView : public View<QLineEdit, TextBox> {
  Q_OBJECT

 public:
  TextBoxView(TextBox& model, QWidget* parent);

 protected:
  void showState(const TextBox& model) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  void letGo(const QMouseEvent& event);
  void popUpOwnMenu(const QPoint& at);
  void followEnabled();
  void takeEdit(const QString& edited);
  void filterEdit(TextBox& box, const QString& edited);
  void showText(const QString& wanted, int cursor);
  void selectAllText();

  Connection selectAll_;
  bool passed_ = false;   // the edit under way has passed the key filter
  bool editing_ = false;  // what is shown is ahead of the model
  bool clicked_ = false;  // the focus is coming by a click
  bool allOnRelease_ = false;
  bool ownMenu_ = false;     // the box's own menu is due
  bool keepsFocus_ = false;  // the keyboard is here while a button's release is told
  QPointer<QWidget> focusWentTo_;
};

}  // namespace vantrelix::qt
