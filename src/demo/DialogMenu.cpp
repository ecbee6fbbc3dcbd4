#include "demo/DialogMenu.h"

#include <QFileDialog>
#include <QMainWindow>
#include <QMenuBar>

#include "aliases/modGetOpenFileAlias.h"
#include "demo/EventList.h"
#include "demo/LibraryPanel.h"
#include "dialogs/MsgBoxChk.h"
#include "dialogs/PrtOutUtils.h"
#include "dialogs/frmListSelect.h"
#include "dialogs/getParabolaGain.h"
#include "editor/AntLibLook.h"
#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "platform/Platform.h"
#include "qt/failures.h"
#include "qt/qtText.h"

namespace vantrelix::demo {

using qt::fromQt;
using qt::toQt;

namespace {

constexpr int kWork = 4000;              // milliseconds
constexpr double kDishFrequency = 6000;  // MHz

const std::vector<MsgBoxChkButton> kMessageButtons = {
    {"Move", "Answers 6, and silenced it is the answer"}, {"Stay", "Answers 7"}, {"Cancel", "Answers 2"}};

struct SampleLine {
  const char* name;
  const char* band;
};
constexpr SampleLine kSampleLines[] = {
    {"Foam coaxial    7/8 in", "Up to 5000 MHz"},
    {"Foam coaxial  1 5/8 in", "Up to 2500 MHz"},
    {"Air coaxial       3 in", "Up to 1600 MHz"},
    {"Elliptical guide 6 GHz", "5600 MHz to 6400 MHz"},
};

void fill(frmListSelect& form) {
  form.setCaption("Select a Transmission Line");
  for (const SampleLine& line : kSampleLines) form.List1.addItem(line.name);
  form.ListClick.listen(
      [&form] { form.Label1.setCaption(kSampleLines[static_cast<std::size_t>(form.List1.listIndex())].band); });
  form.Label1.setCaption("The band of each line shows here.");
}

}  // namespace

struct DialogMenu::Entry {
  const char* name;
  const char* caption;
  Act act;
};

DialogMenu::DialogMenu(QMainWindow& window) : QMenu("&Dialogs", window.menuBar()), window_(window) {
  constexpr Entry kEntries[] = {
      {"messageAction", "&Message with check box...", &DialogMenu::showMessage},
      {"noteAction", "&Floating note", &DialogMenu::turnNote},
      {"listAction", "&Select from a list...", &DialogMenu::selectLine},
      {"printAction", "&Print a text file...", &DialogMenu::printFile},
      {"antennasAction", "&Antenna library by name...", &DialogMenu::chooseAntennas},
      {"linesAction", "&Line library by name...", &DialogMenu::chooseLines},
      {"parabolaAction", "Parabolic &gain...", &DialogMenu::computeGain},
      {"editorAction", "Antenna &Editor...", &DialogMenu::editAntennas},
  };
  setObjectName("dialogMenu");
  for (const Entry& entry : kEntries) addEntry(entry);
  noteAction_ = findChild<QAction*>("noteAction");
  noteAction_->setCheckable(true);
  work_.setObjectName("noteWork");
  work_.setParent(this);
  work_.setSingleShot(true);
  work_.setInterval(kWork);
  connect(&work_, &QTimer::timeout, this, &DialogMenu::endNote);
  window.menuBar()->addMenu(this);
}

void DialogMenu::addEntry(const Entry& entry) {
  QAction* action = addAction(entry.caption);
  action->setObjectName(entry.name);
  connect(action, &QAction::triggered, this, [this, act = entry.act] { qt::runGuarded([&] { (this->*act)(); }); });
}

void DialogMenu::showMessage() {
  MsgAnswer answer{};
  MsgBoxChk("Demo Message",
            "The site lies 120 m from the place in its licence.\r\n\r\nMove it there?\r\n\r\nOnce this message is "
            "silenced, it is not shown, and \"Move\" is the answer.",
            "Site Coordinates", answer, kMessageButtons);
  report("MsgBoxChk", QString("answered %1").arg(static_cast<int>(answer)));
}

void DialogMenu::turnNote() {
  if (note_.visible()) return endNote();
  note_.show("Computing the coverage", "Coverage Study");
  noteAction_->setChecked(true);
  work_.start();
  report("frmMsgFloat", "shown");
}

void DialogMenu::endNote() {
  work_.stop();
  const QString text = toQt(note_.Label1.caption());
  note_.unload();
  noteAction_->setChecked(false);
  report("frmMsgFloat", "unloaded: " + text);
}

void DialogMenu::selectLine() {
  frmListSelect form;
  fill(form);
  const bool chosen = form.choose();
  report("frmListSelect", chosen ? toQt(form.choice()) : "cancelled");
}

void DialogMenu::printFile() {
  const QString file = QFileDialog::getOpenFileName(&window_, "Print a Text File", toQt(displayPath(getSuiteDir())),
                                                    "Text files (*.txt *.TXT);;All files (*)");
  if (file.isEmpty()) return report("PrtOutUtils", "cancelled");
  PrtOutUtils(platform::current().fromMachine(fromQt(file)), "FILE");
  report("PrtOutUtils", file);
}

void DialogMenu::chooseAntennas() { chooseLibrary("AMS", "Select Antenna Library", antennas_); }

void DialogMenu::chooseLines() { chooseLibrary("LMS", "Select Transmission Line Library", lines_); }

void DialogMenu::chooseLibrary(const char* prefix, const char* title, QString& file) {
  OpenFileAlias choice;
  choice.sPrefix = prefix;
  choice.sTitle = title;
  choice.sFile = fromQt(file);
  modGetOpenFileAliasNoDBClass(choice);
  file = toQt(choice.sFile);
  report("modGetOpenFileAliasNoDBClass", choice.bCancel ? "cancelled" : file + ", " + toQt(choice.vAlias));
}

void DialogMenu::computeGain() {
  double gain = 0, diameter = 0;
  std::string unit;
  std::int16_t ok = 0;
  getParabolaGain(kDishFrequency, gain, diameter, unit, ok);
  const std::string result =
      formatNumber(gain, "0.00") + " dBi, " + formatNumber(diameter, "0.00") + " " + unit + " parabola";
  report("getParabolaGain", ok != 0 ? toQt(result) : "no gain");
}

// The panel in the window may show the library that was edited.
void DialogMenu::editAntennas() {
  std::string description;
  const bool chosen = AntLibLook(0, edited_, antenna_, description, " ");
  if (auto* panel = window_.findChild<LibraryPanel*>()) panel->reload();
  report("AntLibLook", chosen ? toQt(edited_ + ", " + antenna_ + ", " + description) : "cancelled");
}

void DialogMenu::report(const QString& call, const QString& result) {
  if (auto* events = window_.findChild<EventList*>()) events->addCall(call, result);
}

}  // namespace vantrelix::demo
