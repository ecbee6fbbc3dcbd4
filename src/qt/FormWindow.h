// The window of a form. A layout made for the kind of form (qt/formLayouts.h) places the views, so that the window
// follows fonts and texts; place, size, title, menu bar, focus, Enter and Escape follow the form, and the form follows
// the user: its own place and size, and those of its frames within it.
//
// Enter presses the button that has the keyboard, else the form's default button; in a form without one, the text box
// that has the keyboard hears it as a key press. Escape presses the form's cancel button and does nothing where there
// is none.
#pragma once

#include <vector>

#include <QDialog>
#include <QEventLoop>

#include "qt/FormFocus.h"
#include "ui/Form.h"
#include "ui/widgets.h"

namespace vantrelix::qt {

class FormTimer;

class FormWindow : public QDialog {
  Q_OBJECT

 public:
  explicit FormWindow(Form& form, QWidget* parent = nullptr);
  // Hides the form where it is shown still: the program ends, or the window that owns this one went.
  ~FormWindow() override;

  // The view of one of the form's widgets, made at the first call, for a layout to place.
  QWidget& view(Widget& model);

  // Shows the form over `parent` and returns once it is hidden or gone.
  static void runModal(Form& form, QWidget* parent);
  // Shows the form and goes on; the window ends with the form or its hiding. A form that is shown already comes to the
  // front. One that takes no focus, and one whose layout blocks the other windows, is painted when this returns, as its
  // owner may be about to work.
  static void showModeless(Form& form, QWidget* parent, bool takesFocus);

  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void present();
  void place();
  QRect roomFor(const QRect& box) const;
  void follow();
  void followGeometry(const Form& form);
  void tellFocus(const QWidget* now);
  void tellGeometry();
  TextBox* boxForEnter() const;
  void watchFrames();
  void tellFrames();
  void end();
  void leave();

  ModelLink<Form> link_;
  FormViews views_;
  FormFocus focus_{*this, views_};
  std::vector<FormTimer*> timers_;
  bool placing_ = false;
  bool showing_ = false;
  bool presented_ = false;
  bool ended_ = false;
  bool leavesFocus_ = false;
  QEventLoop* loop_ = nullptr;  // of a modal run
  bool modeless_ = false;
};

}  // namespace vantrelix::qt
