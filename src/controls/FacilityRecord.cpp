#include "controls/FacilityRecord.h"

#include "controls/reporting.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

using Kind = FacilityValue::Kind;

std::string numberAndText(const RunTimeFailure& failure) {
  return std::to_string(failure.number()) + " " + failure.description();
}

// The unit of a write as a failure tells it.
std::string failedWrite(const std::string& where, const std::string& field, const std::string& value,
                        const RunTimeFailure& failure) {
  return where + kLineBreak + "Field: " + field + " Value: " + value + " Error: " + numberAndText(failure);
}

Value flagOf(const std::string& text) { return getLenTrim(text) == 0 ? Value(false) : Value(Value(text).asBoolean()); }

// One edit of one field. What fails leaves the record as it stands in the table.
void writeField(Recordset& record, const std::string& field, const Value& value) {
  record.Edit();
  try {
    record.put(field, value);
    record.Update();
  } catch (...) {
    record.CancelUpdate();
    throw;
  }
}

// A character field comes with the blanks that fill it.
std::string fieldText(IOHooksDBF& hook) { return trimRight(hook.DBFSValue()); }

std::string shown(const FacilityValue& value, const std::string& stored) {
  return value.fromStored ? value.fromStored(stored) : stored;
}

void requireSaved(const IOHooksINI& hook) {
  if (hook.INISave()) return;
  const bool unbound =
      getLenTrim(hook.iniFile()) == 0 || getLenTrim(hook.INISection()) == 0 || getLenTrim(hook.INIVariable()) == 0;
  // A hook that is bound to nothing has nothing to write.
  if (unbound) return;
  throw RunTimeFailure(failure::pathAccess, "The file " + displayPath(trim(hook.iniFile())) +
                                                " cannot be written. Check that it is not read-only.");
}

}  // namespace

FacilityRecord::FacilityRecord(INIMaster& master, Texts texts) : master_(master), texts_(texts) {
  master_.onNull = [this] {
    for (const FacilityValue& value : values_) {
      if (!(value.passed & FacilityValue::byRelease)) (*value.ini)(nullptr);
    }
  };
}

void FacilityRecord::add(FacilityValue value) {
  value.ini->bind(master_, value.variable);
  values_.push_back(std::move(value));
}

IOHooksDBF& FacilityRecord::hookOf(const FacilityValue& value) {
  const IOHooksDBFPtr& hook = (*value.dbf)();
  if (!hook) {
    throw RunTimeFailure(failure::objectNotSet,
                         std::string("HookDBF") + value.name + " is not set. Put a hook there first.");
  }
  return *hook;
}

void FacilityRecord::readDBF() {
  for (const FacilityValue& value : values_) {
    SetFlag(value.flags.table);
    IOHooksDBF& hook = hookOf(value);
    value.put(value.kind == Kind::flag ? Value(hook.DBFBValue()) : Value(shown(value, fieldText(hook))));
  }
}

void FacilityRecord::readINI() {
  const IOHooksINIPtr master = master_();
  for (const FacilityValue& value : values_) {
    SetFlag(value.flags.file);
    IOHooksINI& hook = *(*value.ini)();
    hook.iniFile(master->iniFile());
    SetFlag(value.flags.section);
    hook.INISection(master->INISection());
  }
  for (const FacilityValue& value : values_) {
    SetFlag(value.flags.key);
    const std::string text = (*value.ini)()->INIShow();
    value.put(value.kind == Kind::flag ? flagOf(text) : Value(shown(value, text)));
  }
}

std::string FacilityRecord::stored(const FacilityValue& value) {
  if (value.kind == Kind::flag) return value.get().asBoolean() ? "-1" : "0";
  const std::string text = value.get().asText();
  return value.toStored ? value.toStored(text) : text;
}

std::string FacilityRecord::Save() {
  std::string errors;
  try {
    if ((*id().dbf)()) errors = SaveDBF();
    if (!master_.isSet() || getLenTrim(master_()->iniFile()) == 0) return errors;
    // A host finds all hooks afterwards, also where saving stops half-way; the frequency's as well.
    for (const FacilityValue& value : values_) (*value.ini)();
    errors = AddALine(errors, SaveINI(), kBlankLine);
  } catch (const std::exception& failure) {
    errors = AddALine(errors, modErrStr(asRunTimeFailure(failure), texts_.save), kBlankLine);
  }
  return errors;
}

std::string FacilityRecord::SaveDBF() {
  std::string field, text;
  try {
    for (const FacilityValue& value : values_) {
      if (value.passed & FacilityValue::bySave) continue;
      field.clear();
      text = stored(value);
      IOHooksDBF& hook = hookOf(value);
      field = hook.DBFField();
      const RecordsetPtr record = hook.DBFRS();
      const Value given = value.kind == Kind::number && !isNumeric(text) ? Value() : Value(text);
      if (bEditActive_) {
        record->put(field, given);
        record->Update();
      } else {
        writeField(*record, field, given);
      }
    }
  } catch (const RunTimeFailure& failure) {
    return failedWrite(texts_.saveDBF, field, text, failure);
  }
  return "";
}

std::string FacilityRecord::SaveINI() {
  std::string label, text;
  try {
    for (const FacilityValue& value : values_) {
      if (value.passed & FacilityValue::bySave) continue;
      label = value.iniLabel;
      IOHooksINI& hook = *(*value.ini)();
      text = stored(value);
      // What is no number is not written, and the key keeps what it holds. A failure before the next text shows it.
      if (value.kind == Kind::number && !isNumeric(text)) {
        text += " Non-Numeric Value";
        continue;
      }
      hook.INIValue(text);
      requireSaved(hook);
    }
  } catch (const RunTimeFailure& failure) {
    return failedWrite(texts_.saveINI, label, text, failure);
  }
  return "";
}

IOHooksDBFPtr FacilityRecord::HookArray(const std::string& sKey) {
  if (hookArray_.empty()) {
    for (const FacilityValue& value : values_) {
      if (!(value.passed & FacilityValue::byHookArray)) hookArray_.push_back((*value.dbf)());
    }
  }
  IOHooksDBFPtr found;
  for (const IOHooksDBFPtr& hook : hookArray_) {
    if (!hook) {
      throw RunTimeFailure(failure::objectNotSet,
                           "A hook was not set when HookArray was first asked. All of its hooks must be set before.");
    }
    if (hook->DBFField() == sKey) found = hook;
  }
  return found;
}

std::string FacilityRecord::sHookDBFValue(const std::string& sKey) const {
  std::string found;
  for (const FacilityValue& value : values_) {
    const bool listed = !(value.passed & FacilityValue::byHookArray) && (*value.dbf)();
    if (listed && equalIgnoringCase((*value.dbf)()->DBFField(), sKey)) found = value.get().asText();
  }
  return found;
}

void FacilityRecord::sHookDBFValue(const std::string& sKey, const std::string& text) {
  for (const FacilityValue& value : values_) {
    const bool listed = !(value.passed & FacilityValue::byHookArray) && (*value.dbf)();
    if (!listed || !equalIgnoringCase((*value.dbf)()->DBFField(), sKey)) continue;
    value.put(value.kind == Kind::flag ? Value(Value(text).asBoolean()) : Value(text));
  }
}

void FacilityRecord::DisconnectDBF() {
  for (const FacilityValue& value : values_) {
    if (value.passed & FacilityValue::byRelease) continue;
    if ((*value.dbf)()) (*value.dbf)()->Disconnect();
    (*value.dbf)(nullptr);
  }
}

void FacilityRecord::bindTo(const std::string& table) {
  const auto hookFor = [](const FacilityValue& value) -> IOHooksDBF& {
    if (!(*value.dbf)()) (*value.dbf)(std::make_shared<IOHooksDBF>());
    return *(*value.dbf)();
  };
  IOHooksDBF& first = hookFor(file());
  first.DBFPathName(table);
  const RecordsetPtr record = first.DBFRS();
  for (const FacilityValue& value : values_) {
    if (value.passed & FacilityValue::byBinding) continue;
    IOHooksDBF& hook = hookFor(value);
    hook.DBFRS(record);
    hook.DBFField(value.field);
  }
}

bool FacilityRecord::standsOnRow() const {
  const IOHooksDBFPtr hook = (*file().dbf)();
  if (!hook) return false;
  const RecordsetPtr record = hook->DBFRS();
  return record->RecordCount() >= 1 && !record->Bof() && !record->Eof();
}

bool FacilityRecord::bEdit(const std::string& advice, bool bSilent, Value* vReturn) {
  if ((*file().dbf)()) {
    if (standsOnRow()) bEditActive_ = true;
    return bEditActive_;
  }
  bEditActive_ = false;
  if (!bSilent) showInformation("No Access", advice);
  // The message lets the host act, and the control may be gone.
  if (vReturn) *vReturn = advice;
  return false;
}

void FacilityRecord::Edit() {
  if (standsOnRow()) bEditActive_ = true;
}

void FacilityRecord::EditUpdate() {
  if (standsOnRow()) bEditActive_ = false;
}

void FacilityRecord::CancelEdit() {
  if (bEditActive_ && standsOnRow()) bEditActive_ = false;
}

std::string supportAdvice() { return "Please contact " + supportAddress() + " for help with this record."; }

}  // namespace vantrelix
