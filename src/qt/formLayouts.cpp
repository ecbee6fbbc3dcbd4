#include "qt/formLayouts.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "qt/FormWindow.h"
#include "qt/forms/antPreview.h"
#include "qt/forms/antennaEditor.h"
#include "qt/forms/fileAlias.h"
#include "qt/forms/messageForms.h"
#include "qt/forms/parabGain.h"
#include "qt/forms/progress.h"
#include "qt/forms/sequentialValues.h"
#include "ui/Timer.h"
#include "ui/widgets.h"

namespace vantrelix::qt {

namespace {

// One kind of form and its layout: tries, and gives whether the form is of its kind.
using Layout = bool (*)(FormWindow&, Form&);

template <class Kind, void (*LayOut)(FormWindow&, Kind&)>
bool layoutFor(FormWindow& window, Form& form) {
  auto* own = dynamic_cast<Kind*>(&form);
  if (own) LayOut(window, *own);
  return own != nullptr;
}

void layOutPlainly(FormWindow& window, Form& form) {
  auto* column = new QVBoxLayout(&window);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  for (Widget* widget : form.widgets()) {
    if (dynamic_cast<Timer*>(widget) || dynamic_cast<MenuItem*>(widget) || dynamic_cast<Menu*>(widget)) continue;
    if (dynamic_cast<CommandButton*>(widget)) {
      buttons->addWidget(&window.view(*widget));
    } else {
      column->addWidget(&window.view(*widget));
    }
  }
  column->addLayout(buttons);
}

bool anyForm(FormWindow& window, Form& form) {
  layOutPlainly(window, form);
  return true;
}

constexpr Layout kLayouts[] = {
    layoutFor<frmMsgBoxChk, layOutMsgBoxChk>,
    layoutFor<frmMsgFloat, layOutMsgFloat>,
    layoutFor<frmListSelect, layOutListSelect>,
    layoutFor<frmParabGain, layOutParabGain>,
    layoutFor<frmFileAlias, layOutFileAlias>,
    layoutFor<frmProgress, layOutProgress>,
    layoutFor<frmGetSequentialValues, layOutSequentialValues>,
    layoutFor<frmAntPreview, layOutAntPreview>,
    layoutFor<frmHDAntEditor, layOutAntennaEditor>,
    anyForm,
};

}  // namespace

void layOut(FormWindow& window, Form& form) {
  for (const Layout layout : kLayouts) {
    if (layout(window, form)) return;
  }
}

}  // namespace vantrelix::qt
