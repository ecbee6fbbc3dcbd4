#include "controls/LibraryBoxControl.h"

#include "controls/reporting.h"
#include "foundation/numbers.h"

namespace vantrelix {

LibraryBoxControl::LibraryBoxControl(std::string name, const char* className, FacilityRecord::Texts texts)
    : LookupControl(std::move(name), className, texts) {
  closeBoxes();
  for (TextBox* box : {&txtFile, &txtID}) {
    box->gotFocus.listen([box] { box->setAllText(); });
  }
  Command1.setVisible(false);
  Command1.click.listen([this] { nextRow(); });
}

void LibraryBoxControl::closeBoxes() {
  for (TextBox* box : {&txtFile, &txtID}) {
    box->setLocked(true);
    box->setEnabled(false);
  }
}

void LibraryBoxControl::lock(bool) { closeBoxes(); }

void LibraryBoxControl::takeNumbers(TextBox& box, std::function<void()> typed) {
  box.gotFocus.listen([&box] { box.setAllText(); });
  box.keyPress.listen([this, typed = std::move(typed)](int& key) {
    chkNumeric(key, true, true, true, false, false, false, false);
    if (key == 0) return;
    bDirty_ = true;
    if (typed) typed();
  });
}

void LibraryBoxControl::nextRow() {
  try {
    const IOHooksDBFPtr file = record_.fileHook();
    if (!file) return;
    const auto alive = watch();
    file->DBFRS()->MoveNext();
    Update();
    if (alive()) Command1.setCaption(generalText(static_cast<double>(file->DBFRS()->AbsolutePosition())));
  } catch (const std::exception& failure) {
    report(failure);
  }
}

}  // namespace vantrelix
