// Views of the widget models that need little more than their state shown and their click forwarded.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>

#include "qt/WidgetView.h"
#include "ui/ListBox.h"
#include "ui/ProgressBar.h"
#include "ui/widgets.h"

namespace vantrelix::qt {

// A locked list stays readable and within reach of the keyboard, and cannot be changed.
class DropDownListView : public View<QComboBox, DropDownList> {
  Q_OBJECT

 public:
  DropDownListView(DropDownList& model, QWidget* parent);
  void showPopup() override;

 protected:
  void showState(const DropDownList& model) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  bool locked() const { return !model() || model()->locked(); }
  void choose(int index);
};

class CheckBoxView : public View<QCheckBox, CheckBox> {
  Q_OBJECT

 public:
  CheckBoxView(CheckBox& model, QWidget* parent) : View(model, parent) {}

 protected:
  void showState(const CheckBox& model) override;
  // The model alone says what a click makes of the value.
  void nextCheckState() override;
};

class CommandButtonView : public View<QPushButton, CommandButton> {
  Q_OBJECT

 public:
  CommandButtonView(CommandButton& model, QWidget* parent);
  // Alt and this letter, underlined at its first place in the caption, press it.
  void setMnemonic(QChar letter);

 protected:
  void showState(const CommandButton& model) override;

 private:
  QChar mnemonic_;
};

// A clickable label looks and acts as a link, for the keyboard too.
class LabelView : public View<QLabel, Label> {
  Q_OBJECT

 public:
  LabelView(Label& model, QWidget* parent) : View(model, parent) { setTextFormat(Qt::PlainText); }
  // Makes it a text that wraps, and that the user can mark and copy, by keyboard too.
  void makeSelectable();
  // Lets it be narrower than its text, each line of which is then shortened in the middle.
  void makeElided();

 protected:
  void showState(const Label& model) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void click();
  void paintElided();

  bool elided_ = false;
};

class ListBoxView : public View<QListWidget, ListBox> {
  Q_OBJECT

 public:
  ListBoxView(ListBox& model, QWidget* parent);
  QSize sizeHint() const override;

 protected:
  void showState(const ListBox& model) override;
  void focusInEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  QFont fontFor(const ListBox& model) const;

  std::vector<std::string> shown_;
  bool showing_ = false;
};

// Only the title and the box; a layout of the window puts the other views into it.
class FrameView : public View<QGroupBox, Frame> {
  Q_OBJECT

 public:
  FrameView(Frame& model, QWidget* parent) : View(model, parent) {}

 protected:
  void showState(const Frame& model) override;
  // A caption that does not fit ends in dots; the pointer shows it whole.
  void resizeEvent(QResizeEvent* event) override;

 private:
  void fitTitle();

  QString caption_;
  QString ownTip_;
};

class ProgressBarView : public View<QProgressBar, ProgressBar> {
  Q_OBJECT

 public:
  ProgressBarView(ProgressBar& model, QWidget* parent) : View(model, parent) {}

 protected:
  void showState(const ProgressBar& model) override;
};

class LineShapeView : public View<QFrame, LineShape> {
  Q_OBJECT

 public:
  LineShapeView(LineShape& model, QWidget* parent) : View(model, parent) {}

 protected:
  void showState(const LineShape& model) override;
};

}  // namespace vantrelix::qt
