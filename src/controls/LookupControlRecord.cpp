// The lookup controls and their host's facility record.
#include "controls/LookupControl.h"
#include "controls/reporting.h"
#include "foundation/errHand.h"
#include "foundation/hostProgram.h"
#include "foundation/messages.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr const char* kDeveloperTable = "FACILITY.DBF";

}  // namespace

void LookupControl::Update() {
  const auto alive = watch();
  UpdateDBF();
  if (alive()) UpdateINI();
}

void LookupControl::UpdateDBF() {
  const Procedure guard(procedure::lookup_UpdateDBF);
  const auto alive = watch();
  const std::string ownName = className_;
  ControlLoading loading(*this);
  try {
    Alerts("");
    record_.readDBF();
    takeRecord();
    if (!alive()) return loading.stay();
    settleTableRecord();
    bDirty_ = false;
  } catch (const std::exception& failure) {
    loading.stay();
    const RunTimeFailure told = asRunTimeFailure(failure);
    logQuietly("Error in " + ownName + ".Update at flag " + std::to_string(GetFlag()) + kLineBreak +
               std::to_string(told.number()) + " " + told.description());
  }
}

void LookupControl::UpdateINI() {
  if (!HookINI.isSet()) return;
  const Procedure guard(procedure::lookup_UpdateINI);
  const auto alive = watch();
  const std::string ownName = className_;
  ControlLoading loading(*this);
  try {
    record_.readINI();
    takeRecord();
    if (!alive()) loading.stay();
  } catch (const std::exception&) {
    if (!alive() || !isBehindValues(GetFlag())) loading.stay();
    MsgBox({hostProgram().name, std::to_string(GetFlag()) + " " + ownName + ":UPdateINI", MsgButtons::ok, MsgIcon::none,
            1});
  }
}

void LookupControl::sHookDBFValue(const std::string& sKey, const std::string& text) {
  if (Locked()) return;
  const bool dirty = bDirty_;
  const Silence silence(*this);
  record_.sHookDBFValue(sKey, text);
  bDirty_ = dirty;
}

Value LookupControl::DisconnectDBF() {
  record_.DisconnectDBF();
  return {};
}

void LookupControl::TestInit() { record_.bindTo(getSuiteDir() + "\\" + kDeveloperTable); }

Value LookupControl::bEdit(bool bSilent, Value* vReturn) {
  return Value(record_.bEdit(noRecordAdvice(), bSilent, vReturn));
}

std::string LookupControl::noRecordAdvice() const { return name() + kLineBreak + supportAdvice(); }

}  // namespace vantrelix
