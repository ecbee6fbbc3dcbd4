#include "qt/forms/messageForms.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "qt/FormWindow.h"
#include "qt/forms/MessageText.h"
#include "qt/plainViews.h"

namespace vantrelix::qt {

namespace {

constexpr int kMargin = 16;
constexpr int kGap = 12;
constexpr int kNarrowestNote = 320;  // room for the text to grow
constexpr int kNarrowestMessage = 240;

LabelView& selectable(FormWindow& window, Label& label) {
  auto& view = dynamic_cast<LabelView&>(window.view(label));
  view.makeSelectable();
  return view;
}

QVBoxLayout& columnOf(FormWindow& window) {
  auto* column = new QVBoxLayout(&window);
  column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  column->setSpacing(kGap);
  return *column;
}

QHBoxLayout& rowOfButtons(QVBoxLayout& column) {
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  column.addLayout(row);
  return *row;
}

}  // namespace

void layOutMsgBoxChk(FormWindow& window, frmMsgBoxChk& form) {
  QVBoxLayout& column = columnOf(window);
  LabelView& text = selectable(window, form.Label1);
  column.addWidget(new MessageText(text, kNarrowestMessage));
  column.addWidget(&window.view(form.Check1));
  column.addWidget(&selectable(window, form.lblRestore));
  QHBoxLayout& row = rowOfButtons(column);
  for (CommandButton& button : form.Command1) row.addWidget(&window.view(button));
  // The size follows the text, also that of the line which comes and goes with the tick.
  column.setSizeConstraint(QLayout::SetFixedSize);
  copyWithoutSelection(window, text);
}

void layOutMsgFloat(FormWindow& window, frmMsgFloat& form) {
  window.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
  QVBoxLayout& column = columnOf(window);
  auto& text = dynamic_cast<LabelView&>(window.view(form.Label1));
  text.setWordWrap(true);
  column.addWidget(new MessageText(text, kNarrowestNote));
  column.setSizeConstraint(QLayout::SetFixedSize);
}

void layOutListSelect(FormWindow& window, frmListSelect& form) {
  QVBoxLayout& column = columnOf(window);
  column.addWidget(&window.view(form.List1), 1);
  column.addWidget(&selectable(window, form.Label1));
  QHBoxLayout& row = rowOfButtons(column);
  row.addWidget(&window.view(form.cmdContinue));
  row.addWidget(&window.view(form.cmdCancel));
}

}  // namespace vantrelix::qt
