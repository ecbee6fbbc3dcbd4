// What the lookup controls of a facility share: library file, ID and description, the colours, locks and alerts, and
// the host's record behind them.
//
// Every value lives in its widget and nowhere else. A control never validates on behalf of the host; what is typed is
// kept as typed. Text getters give the widget's text without outer blanks; a null value shows as "NULL" in the file and
// as blank everywhere else.
#pragma once

#include <string>
#include <vector>

#include "controls/AlertingControl.h"
#include "controls/FacilityRecord.h"
#include "foundation/Value.h"
#include "ui/widgets.h"

namespace vantrelix {

class LookupControl : public AlertingControl {
 public:
  // A kind of control calls DisconnectDBF in its own end, while its hooks still are.
  ~LookupControl() override;

  std::string sValueFile() const;
  void sValueFile(const Value& value);
  std::string sValueID() const;
  void sValueID(const Value& value);
  std::string sValueDesc() const;
  void sValueDesc(const Value& value);

  // Colours of the boxes. Each is read off the description's; putting false does nothing.
  bool BackWhite() const;
  void BackWhite(bool on);
  bool BackRed() const;
  void BackRed(bool on);
  bool BackLtGray() const;
  void BackLtGray(bool on);
  // Whether the description is locked.
  bool Locked() const;
  void Locked(bool locked);
  bool Valid() const { return true; }

  // Whether a value has changed since the host's last update.
  bool bDirty() const { return bDirty_; }
  // The user, whose own defaults file is used from now on.
  void ZORUserLogin(const std::string& login);

  // The facility record. A host binds each value to a field of a table (HookDBF...) or a key of an INI file
  // (HookINI...), fills the control by Update, after each move of its record too, and writes it back by Save. UpdateDBF
  // needs all DBF hooks. A read that fails leaves the control silent, raising no event, until a good one has run:
  // UpdateDBF tells it in the support log, UpdateINI in a message.
  void Update();
  void UpdateINI();  // nothing while HookINI is not set
  void UpdateDBF();
  // "" or what failed; the values before it are written. Numbers that are none become null in a table and leave an INI
  // key alone; the frequency is the host's and never written.
  std::string Save() { return record_.Save(); }
  std::string SaveDBF() { return record_.SaveDBF(); }
  std::string SaveINI() { return record_.SaveINI(); }
  // A value by its field's name, case aside. Putting raises no event, leaves bDirty, and does nothing while Locked.
  std::string sHookDBFValue(const std::string& sKey) const { return record_.sHookDBFValue(sKey); }
  void sHookDBFValue(const std::string& sKey, const std::string& text);
  // Disconnects and lets go of the DBF hooks; the control's end does it too. Gives null.
  Value DisconnectDBF();
  // For developers: binds the values to the fields of "FACILITY.DBF" in the installation folder; the frequency of a
  // scLookAnt_Desc is left to the host.
  void TestInit();

  // Whether the host's record, the one under HookDBFFile, can be edited; true marks it as being edited by the host. A
  // refusal is shown unless silent, and put into `vReturn`.
  Value bEdit(bool bSilent = false, Value* vReturn = nullptr);
  // Marks, while the record stands on a row: Save then begins no edit of its own and leaves that to the host.
  void Edit() { record_.Edit(); }
  void EditUpdate() { record_.EditUpdate(); }
  void CancelEdit() { record_.CancelEdit(); }

  // Holds file and section for the INI hooks, which come to be when they are read.
  INIMaster HookINI;

  TextBox txtDesc{"txtDesc"};
  CommandButton cmdLook{"cmdLook"};

 protected:
  using Widgets = std::vector<Widget*>;

  // `className` names the control in failure texts, `texts` what its saving is called there.
  LookupControl(std::string name, const char* className, FacilityRecord::Texts texts);

  // Where the library file and the ID stand.
  virtual const std::string& heldFile() const = 0;
  virtual void holdFile(std::string text) = 0;
  virtual const std::string& heldID() const = 0;
  virtual void holdID(std::string text) = 0;
  // The boxes that take the control's colour, and those of them that a library owns for now.
  virtual Widgets paintedBoxes() = 0;
  virtual Widgets libraryBoxes() { return {}; }
  // Locks what the user may change.
  virtual void lock(bool locked) = 0;
  // What the user's login decides.
  virtual void takeDefaults() = 0;
  // The values of the record stand in their widgets.
  virtual void takeRecord() {}
  // Whether a failure at this progress flag came behind the values, which all stand then.
  virtual bool isBehindValues(long) const { return false; }
  // The last step of a fill from a table.
  virtual void settleTableRecord() {}
  // What is told where the record cannot be edited because there is none.
  virtual std::string noRecordAdvice() const;

  static void paint(const Widgets& boxes, Color colour);

  FacilityRecord record_;
  bool bDirty_ = false;

 private:
  const char* className_;
};

}  // namespace vantrelix
