#include "controls/scLookAnt_Desc.h"

#include "controls/antennaValues.h"
#include "controls/widgetPlaces.h"
#include "foundation/errHand.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

// The columns of the larger antenna control: a host may put both on one form.
constexpr int kWidth = 6600, kHeight = 495;
constexpr int kMargin = 60, kGap = 60;
constexpr int kTop = 60, kLineHeight = 375, kLookWidth = 495, kClearWidth = 795;

}  // namespace

scLookAnt_Desc::scLookAnt_Desc(std::string name) : LookupControl(std::move(name), "scLookAnt_Desc", kAntennaTexts) {
  bindValues();
  for (Widget* widget : std::initializer_list<Widget*>{&txtDesc, &cmdClear, &cmdLook}) add(*widget);
  setTexts();
  setSize(kWidth, kHeight);
  nMinWidth_ = kWidth;
  SetTabOrder();
  cmdLook.click.listen([this] { cmdLook_Click(); });
  cmdClear.click.listen([this] { cmdClear_Click(); });
  guardRegionalSettings();
}

scLookAnt_Desc::~scLookAnt_Desc() { DisconnectDBF(); }

void scLookAnt_Desc::bindValues() {
  const auto bind = [this](AntennaField field, DBFSlot& dbf, INISlot& ini, std::function<Value()> get,
                           std::function<void(const Value&)> put) {
    FacilityValue value = antennaValue(field);
    // The frequency's hook is looked through like the others here, and never a developer's binding.
    value.passed &= ~FacilityValue::byHookArray;
    if (field == AntennaField::freq) value.passed |= FacilityValue::byBinding;
    value.dbf = &dbf;
    value.ini = &ini;
    value.get = std::move(get);
    value.put = std::move(put);
    record_.add(std::move(value));
  };
  bind(
      AntennaField::file, HookDBFFile, HookINIFile, [this] { return sValueFile(); },
      [this](const Value& value) { sValueFile(value); });
  bind(
      AntennaField::id, HookDBFID, HookINIID, [this] { return sValueID(); },
      [this](const Value& value) { sValueID(value); });
  bind(
      AntennaField::desc, HookDBFDesc, HookINIDesc, [this] { return sValueDesc(); },
      [this](const Value& value) { sValueDesc(value); });
  bind(
      AntennaField::freq, HookDBFFreq, HookINIFreq, [this] { return generalText(look_.dFreq); },
      [this](const Value& value) { sValueFreq(CValP(value)); });
}

void scLookAnt_Desc::setTexts() {
  cmdLook.setCaption("...");
  cmdClear.setCaption("Clear");
  txtDesc.setToolTip("Antenna Description");
  cmdLook.setToolTip("Lookup Antenna from Libraries");
  cmdClear.setToolTip("Clear antenna pattern");
  setBackColor(color::buttonFace);
  for (Widget* button : std::initializer_list<Widget*>{&cmdLook, &cmdClear}) button->setBackColor(color::buttonFace);
  txtDesc.setBackColor(color::windowBackground);
}

void scLookAnt_Desc::SetTabOrder() {
  int index = 0;
  for (Widget* widget : std::initializer_list<Widget*>{&txtDesc, &cmdClear, &cmdLook}) widget->setTabIndex(index++);
}

void scLookAnt_Desc::resize() {
  if (width() < nMinWidth_) setSize(nMinWidth_, height());
  layOut();
}

// From the right edge to the left; the description takes the rest.
void scLookAnt_Desc::layOut() {
  const int look = width() - kMargin - kLookWidth;
  const int clear = look - kGap - kClearWidth;
  placeWidgets({{&cmdLook, {look, kTop, kLookWidth, kLineHeight}},
                {&cmdClear, {clear, kTop, kClearWidth, kLineHeight}},
                {&txtDesc, {kMargin, kTop, clear - kGap - kMargin, kLineHeight}}});
}

void scLookAnt_Desc::lock(bool locked) {
  txtDesc.setLocked(locked || bLookupOnly_);
  cmdClear.setEnabled(!locked);
}

void scLookAnt_Desc::LookupOnly(bool only) {
  bLookupOnly_ = only;
  if (loading()) return;
  txtDesc.setLocked(only);
  paint(paintedBoxes(), only ? color::buttonFace : color::white);
}

void scLookAnt_Desc::settleTableRecord() { LookupOnly(!sValueFile().empty() && !sValueID().empty()); }

void scLookAnt_Desc::Clear(bool) {
  sValueFile("");
  sValueID("");
  txtDesc.setText("");
}

void scLookAnt_Desc::cmdLook_Click() {
  const Procedure guard(procedure::scLookAnt_Desc_cmdLook);
  const auto alive = watch();
  if (!look_.choose(*this, alive)) return;
  bDirty_ = true;
  desktop().doEvents();
  if (alive()) raise(ChangeAntenna);
}

void scLookAnt_Desc::cmdClear_Click() {
  const auto alive = watch();
  if (!confirmsRemoval() || !alive()) return;
  Clear();
  desktop().doEvents();
  if (!alive()) return;
  // Without a library the description is the user's to type again.
  if (bLookupOnly_) LookupOnly(false);
  raise(ChangeAntenna);
}

}  // namespace vantrelix
