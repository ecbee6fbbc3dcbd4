#include "controls/scLookLine.h"

#include "controls/antennaValues.h"
#include "controls/shownText.h"
#include "foundation/numbers.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

using Row = FacilityValue;
using Kind = Row::Kind;

}  // namespace

// What saving reports stands under the antenna's name: hosts know these texts by heart.
scLookLine::scLookLine(std::string name) : LibraryBoxControl(std::move(name), "scLookLine", kAntennaTexts) {
  for (Widget* widget : std::initializer_list<Widget*>{&lblDesc, &txtDesc, &txtFile, &txtID, &lblLen, &txtLen, &cboUnit,
                                                       &cmdLook, &lblLoss, &txtLoss, &lblDb, &lblFreq, &Command1}) {
    add(*widget);
  }
  bindValues();
  setTexts();
  layOut();
  nMinWidth_ = width();
  figures_.startUnit();
  SetTabOrder();
  listen();
}

scLookLine::~scLookLine() { DisconnectDBF(); }

// The order is that of every read and write of the record.
void scLookLine::bindValues() {
  const auto bind = [this](const char* name, const char* field, const char* iniLabel, Kind kind, int passed, int step,
                           DBFSlot& dbf, INISlot& ini, std::function<Value()> get,
                           std::function<void(const Value&)> put) {
    constexpr int kFirstFile = 1000, kFirstKey = 3200;
    const Row::Flags flags{kFirstFile + 100 * step, kFirstFile + 200 * step, kFirstFile + 200 * step + 100,
                           kFirstKey + 100 * step};
    record_.add({name, field, field, iniLabel, kind, passed, flags, nullptr, nullptr, &dbf, &ini, std::move(get),
                 std::move(put)});
  };
  // clang-format off
  bind("File", "TX_L1FNM", "HookINIFIle", Kind::text, Row::none, 0, HookDBFFile, HookINIFile,
       [this] { return sValueFile(); }, [this](const Value& value) { sValueFile(value); });
  bind("ID", "TX_L1TID", "HookINIID", Kind::text, Row::none, 1, HookDBFID, HookINIID,
       [this] { return sValueID(); }, [this](const Value& value) { sValueID(value); });
  bind("Len", "TX_L1LEN", "HookINILen", Kind::number, Row::none, 2, HookDBFLen, HookINILen,
       [this] { return sValueLen(); }, [this](const Value& value) { sValueLen(value); });
  bind("Unit", "TX_L1LENUN", "HookINIUnit", Kind::text, Row::none, 3, HookDBFUnit, HookINIUnit,
       [this] { return sValueUnit(); }, [this](const Value& value) { sValueUnit(value); });
  bind("Loss", "TX_L1LOS", "HookINILoss", Kind::number, Row::none, 4, HookDBFLoss, HookINILoss,
       [this] { return sValueLoss(); }, [this](const Value& value) { sValueLoss(value); });
  bind("Desc", "TX_L1TYP", "HookINIDesc", Kind::text, Row::none, 5, HookDBFDesc, HookINIDesc,
       [this] { return sValueDesc(); }, [this](const Value& value) { sValueDesc(value); });
  bind("Freq", "TX_FREQMHZ", "", Kind::text, Row::bySave | Row::byHookArray, 6, HookDBFFreq, HookINIFreq,
       [this] { return sValueFreq(); }, [this](const Value& value) { sValueFreq(value); });
  // clang-format on
}

void scLookLine::HookDBF(const IOHooksDBFPtr& hook) {
  for (DBFSlot* slot : {&HookDBFFile, &HookDBFID, &HookDBFDesc, &HookDBFLen, &HookDBFUnit, &HookDBFLoss}) (*slot)(hook);
}

std::string scLookLine::sValueLen() const { return trim(txtLen.text()); }
void scLookLine::sValueLen(const Value& value) { txtLen.setText(shownText(value)); }

std::string scLookLine::sValueLoss() const { return trim(txtLoss.text()); }
void scLookLine::sValueLoss(const Value& value) { txtLoss.setText(numberShown(value)); }

void scLookLine::Freq(double megahertz) {
  figures_.setFrequency(megahertz);
  refreshUnlessLoading();
}

std::string scLookLine::sValueFreq() const { return generalText(figures_.frequency()); }

void scLookLine::sValueFreq(const Value& value) {
  figures_.showFrequency(value);
  refreshUnlessLoading();
}

std::string scLookLine::sValueUnit() const { return trim(cboUnit.text()); }

void scLookLine::sValueUnit(const Value& value) {
  if (figures_.selectUnit(value)) cboUnit_Click();
}

void scLookLine::cboUnit_Click() {
  if (!loading()) bDirty_ = true;
  figures_.unitChosen(loading());
  refreshUnlessLoading();
}

void scLookLine::refreshUnlessLoading() {
  if (!loading()) RefreshAlerts();
}

void scLookLine::RefreshAlerts() {
  figures_.refresh(watch(), [this](const std::string& text) { Alerts(text); });
}

void scLookLine::Clear(bool) {
  for (TextBox* box : {&txtDesc, &txtFile, &txtID, &txtLen, &txtLoss}) box->setText("");
}

std::string scLookLine::noRecordAdvice() const {
  return std::string("hookDBFFile not connected to database") + kBlankLine + supportAdvice();
}

// A length that stands already is brought to the user's unit.
void scLookLine::takeDefaults() {
  SetTabOrder();
  if (sValueLen().empty()) {
    figures_.startUnit();
  } else {
    sValueUnit("");
  }
}

}  // namespace vantrelix
