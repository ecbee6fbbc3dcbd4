// The host's side of a facility record: which record is shown, and its edit, save and cancel.
//
// The record is a row of the facility table or the one of the INI file. It is shown locked. An edit opens the controls
// and the host's own boxes; the row is then held, so that no other program writes it
// meanwhile. What fails is told to the user in a message; nothing typed is lost by it.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "controls/scLookAnt.h"
#include "controls/scLookAnt_Desc.h"
#include "controls/scLookLine.h"
#include "demo/FacilityTable.h"
#include "demo/SiteValues.h"

namespace vantrelix::demo {

class FacilityHost {
 public:
  static constexpr const char* kMessageTitle = "Facility record";
  enum class Place { table, file };
  enum class Move { first, previous, next, last };

  // The controls must live longer. Nothing is shown before open().
  // `name` shows the antenna in one line: what is typed in it reaches the antenna control, and the other
  // way round.
  FacilityHost(scLookAnt& antenna, scLookLine& line, scLookAnt_Desc& name);

  // Binds the controls to the place in use, made where it is not there, and shows its first record.
  void open();
  // Goes to the first record of a place. False where the user stays with the changes he has not saved.
  bool use(Place place);
  bool move(Move where);

  // Opens the record for its user. False where it cannot be edited.
  bool edit();
  // Writes the record and locks it. On a failure the edit goes on.
  bool save();
  // Drops what was typed and shows the record as it is stored.
  void cancel();
  // Ends an edit before the record is left, asking first where there are changes. False where the user stays.
  bool leave();

  Place place() const { return place_; }
  bool editing() const { return editing_; }
  // Whether the form differs from the record as it was when the edit began.
  bool dirty() const;
  bool canMove(Move where) const;
  std::string position() const;  // "Record 2 of 5"
  std::string siteName() const;

  // The antenna control closes its mounting boxes when its user clears the antenna and opens them on its own look-up.
  // Another record opens them too, and so does a look-up of this host.
  void openMounting();
  // What the user did in the one-line control, of its ChangeAntenna.
  void takeNamed();

  const SiteValues& site() const { return site_; }
  void siteText(const std::string& name, const std::string& text);

  // Another record is shown, or the same one as it is stored.
  Signal<> recordShown;
  // Anything else that is asked above.
  Signal<> changed;
  // What the host did to the controls in the members' names, and what came of it.
  Signal<std::string, std::string> did;

 private:
  void bind();
  void show(const std::string& call);
  void readSite();
  void lock(bool locked);
  bool takeRow(std::string& detail);
  bool hold();
  void holdAgain();
  std::string writeRecord();
  void finish();
  std::vector<std::string> values() const;
  void noteChange();
  void showName();
  void tell(const std::string& text) const;
  bool attempt(const std::function<void()>& act) const;

  scLookAnt& antenna_;
  scLookLine& line_;
  scLookAnt_Desc& name_;
  const std::array<LookupControl*, 2> controls_;  // those that write the record
  // All; what the antenna control reads goes over what the one-line control has read.
  const std::array<LookupControl*, 3> shown_;
  SiteValues site_;
  Place place_ = Place::table;
  std::unique_ptr<FacilityTable> table_;  // null where it could not be opened, and while the INI file is used
  bool editing_ = false;
  bool wasDirty_ = false;
  std::vector<std::string> before_;  // values() when the edit began
  std::vector<Connection> connections_;
};

}  // namespace vantrelix::demo
