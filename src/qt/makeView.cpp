#include "qt/makeView.h"

#include "qt/GridView.h"
#include "qt/PictureView.h"
#include "qt/TextBoxView.h"
#include "qt/plainViews.h"
#include "ui/widgets.h"

namespace vantrelix::qt {

namespace {

template <class ViewType, class Model>
WidgetView* makeFor(Widget& model, QWidget* parent) {
  auto* own = dynamic_cast<Model*>(&model);
  return own ? new ViewType(*own, parent) : nullptr;
}

using Maker = WidgetView* (*)(Widget&, QWidget*);
constexpr Maker kMakers[] = {
    makeFor<TextBoxView, TextBox>,
    makeFor<DropDownListView, DropDownList>,
    makeFor<CheckBoxView, CheckBox>,
    makeFor<LabelView, Label>,
    makeFor<CommandButtonView, CommandButton>,
    makeFor<PictureView, PictureBox>,
    makeFor<ProgressBarView, ProgressBar>,
    makeFor<LineShapeView, LineShape>,
    makeFor<ListBoxView, ListBox>,
    makeFor<FrameView, Frame>,
    makeFor<GridView, DataGrid>,
};

}  // namespace

WidgetView* makeView(Widget& model, QWidget* parent) {
  for (const Maker make : kMakers) {
    if (WidgetView* view = make(model, parent)) return view;
  }
  return nullptr;
}

}  // namespace vantrelix::qt
