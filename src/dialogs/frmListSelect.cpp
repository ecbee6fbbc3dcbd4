#include "dialogs/frmListSelect.h"

#include "dialogs/windowPlacement.h"
#include "ui/Desktop.h"

namespace vantrelix {

frmListSelect::frmListSelect() : Form("frmListSelect") {
  int tabIndex = 0;
  for (Widget* widget : {static_cast<Widget*>(&List1), static_cast<Widget*>(&cmdContinue),
                         static_cast<Widget*>(&cmdCancel), static_cast<Widget*>(&Label1)}) {
    add(*widget);
    widget->setTabIndex(tabIndex++);
  }
  cmdContinue.setCaption("Continue");
  cmdCancel.setCaption("Cancel");
  List1.setFixedPitch(true);
  List1.changed.listen([this] { followList(); });
  List1.click.listen([this] { ListClick(); });
  List1.doubleClick.listen([this] { leave(true); });
  cmdContinue.click.listen([this] { leave(true); });
  cmdCancel.click.listen([this] { leave(false); });
  activated.listen([this] { SetFormLoc(*this); });
  setDefaultButton(&cmdContinue);
  setCancelButton(&cmdCancel);
  setFocus(List1);
  followList();
}

bool frmListSelect::choose() {
  chosen_ = false;
  SetFormSize(*this, 0, 0);
  desktop().showModal(*this);
  SaveFormLoc(*this);
  SaveFormSize(*this);
  return chosen_;
}

void frmListSelect::leave(bool withChoice) {
  chosen_ = withChoice;
  hide();
}

}  // namespace vantrelix
