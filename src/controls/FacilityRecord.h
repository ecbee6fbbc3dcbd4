// A control's values as one facility record: bound value by value to fields of a table and to keys of an INI file, read
// from them and written back.
//
// The values are rows of a table that the control fills once, in the order in which they are visited. A read stops at
// the first failure, which passes to the caller with the progress flag of the value that failed; a write stops too, and
// what was written stays written.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/hookSlots.h"
#include "foundation/Value.h"

namespace vantrelix {

struct FacilityValue {
  // What a value is when it is stored: text as it stands; a number, or nothing where the text is none; a flag as "-1"
  // or "0".
  enum class Kind { text, number, flag };
  // The operations that leave a value out.
  enum Passed { none = 0, byHookArray = 1, bySave = 2, byRelease = 4, byBinding = 8 };
  // Progress flags: while the table is read, the INI file and the section are handed on, the INI key is read.
  struct Flags {
    int table, file, section, key;
  };

  const char* name;      // of its hooks: "Gain" of HookDBFGain
  const char* field;     // in the suite's facility tables
  const char* variable;  // key of an INI hook that is made by itself
  const char* iniLabel;  // under which a failure of the INI file is told
  Kind kind;
  int passed;  // of Passed
  Flags flags;
  // Between what is stored and what is shown; null where the two are the same.
  std::string (*fromStored)(std::string_view);
  std::string (*toStored)(std::string_view);
  DBFSlot* dbf;
  INISlot* ini;
  std::function<Value()> get;
  std::function<void(const Value&)> put;
};

class FacilityRecord {
 public:
  // How the control names itself in failure texts: before "SaveDBF" and "SaveINI", and in what Save itself reports.
  struct Texts {
    const char* saveDBF;
    const char* saveINI;
    const char* save;
  };
  FacilityRecord(INIMaster& master, Texts texts);
  FacilityRecord(const FacilityRecord&) = delete;
  FacilityRecord& operator=(const FacilityRecord&) = delete;

  // The first is the library file, whose recordset stands for the host's record; the second the ID, whose DBF hook
  // decides whether Save writes to tables.
  const std::vector<FacilityValue>& values() const { return values_; }
  void add(FacilityValue value);
  // The hook of the library file, whose recordset stands for the host's record; null where none was put.
  const IOHooksDBFPtr& fileHook() const { return (*file().dbf)(); }

  // Every value from its DBF hook; all hooks must be set (91).
  void readDBF();
  // The master's file and section to every INI hook, then every value from its own.
  void readINI();

  // "" or what failed. Where Save writes a file, it first makes the INI hooks that are missing.
  std::string Save();
  std::string SaveDBF();
  std::string SaveINI();

  // The last DBF hook whose field is exactly that; null where none is. 91 where a hook of those looked through is
  // missing. Which hooks are looked through is settled at the first call.
  IOHooksDBFPtr HookArray(const std::string& sKey);
  // By field name, case aside; "" where no hook has the field.
  std::string sHookDBFValue(const std::string& sKey) const;
  void sHookDBFValue(const std::string& sKey, const std::string& text);

  // Disconnects and lets go of the DBF hooks.
  void DisconnectDBF();
  // Gives each value without a DBF hook a new one, hands all of them the recordset of the first, which opens `table`,
  // and binds each to its field; without those that pass it over.
  void bindTo(const std::string& table);

  // Whether the host has the record in edit mode: SaveDBF then begins no edit of its own.
  bool editActive() const { return bEditActive_; }
  // The answer of bEdit: true once the host's record stands on a row. Without the hook of the file false, and `advice`
  // is the message.
  bool bEdit(const std::string& advice, bool bSilent, Value* vReturn);
  void Edit();
  void EditUpdate();
  void CancelEdit();

 private:
  const FacilityValue& file() const { return values_[0]; }
  const FacilityValue& id() const { return values_[1]; }
  bool standsOnRow() const;
  static IOHooksDBF& hookOf(const FacilityValue& value);
  static std::string stored(const FacilityValue& value);

  INIMaster& master_;
  Texts texts_;
  std::vector<FacilityValue> values_;
  std::vector<IOHooksDBFPtr> hookArray_;
  bool bEditActive_ = false;
};

// The line of a refused edit that tells where to turn.
std::string supportAdvice();

}  // namespace vantrelix
