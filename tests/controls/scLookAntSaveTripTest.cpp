// A facility record on its way through the antenna lookup control, a table and an INI file.
#include "controls/RecordFixture.h"

namespace vantrelix {
namespace {

using test::BoundValue;
using test::kBoundValues;
using test::shownIn;

// A row as it may stand in a table, and what is left of it after a way through the control: as the control shows it,
// and as it is stored again. "-" is a null.
struct Trip {
  const char* what;
  std::vector<Value> row;  // in the order of kBoundValues
  std::vector<std::string> shown;
  std::vector<std::string> stored;
};

std::vector<Trip> trips() {
  const Value null;
  return {
      {"full",
       {"AMSN0001", "ID1", "Whip", 6.5, "REL", 120, -2, 1.5, 90, true, "ver", 451.25},
       {"AMSN0001", "ID1", "Whip", "6.50", "REL", "120", "-2", "1.5", "90", "True", "Vertical", "451.25"},
       {"AMSN0001", "ID1", "Whip", "6.5", "REL", "120", "-2", "1.5", "90", "True", "ver", "451.25"}},
      {"nulls",
       {null, null, null, null, null, null, null, null, null, null, null, null},
       {"", "", "", "", "dBd", "", "", "", "", "False", "None", "0"},
       {"-", "-", "-", "-", "dBd", "-", "-", "-", "-", "False", "none", "-"}},
      {"unit and polarisation in capitals",
       {"A", "B", "C", 0, "DBI", 0, 0, 0, 0, false, "HOR", 0},
       {"A", "B", "C", "0.00", "dBi", "0", "0", "0", "0", "False", "None", "0"},
       {"A", "B", "C", "0", "dBi", "0", "0", "0", "0", "False", "none", "0"}},
      {"unknown unit and blanks inside",
       {"A B", " B", " two  words ", -3.25, "watt", 359.99, -179.5, 179, 0.01, false, "other", 5925.75},
       {"A B", "B", "two  words", "-3.25", "dBd", "359.99", "-179.5", "179", "0.01", "False", "Other", "5925.75"},
       {"A B", "B", "two  words", "-3.25", "dBd", "359.99", "-179.5", "179", "0.01", "False", "other", "5925.75"}},
      {"letters beyond the basic ones",
       {"F\xc3\xbc", "\xc3\x85", "\xc3\x85ngstr\xc3\xb6m", 1, "dBd", 1, 1, 1, 1, true, "hel", 1},
       {"F\xc3\xbc", "\xc3\x85", "\xc3\x85ngstr\xc3\xb6m", "1.00", "dBd", "1", "1", "1", "1", "True", "Helical", "1"},
       {"F\xc3\xbc", "\xc3\x85", "\xc3\x85ngstr\xc3\xb6m", "1", "dBd", "1", "1", "1", "1", "True", "hel", "1"}},
  };
}

class LookAntTrip : public test::RecordTest {};

TEST_F(LookAntTrip, ARecordComesBackThroughControlTableAndFile) {
  const std::vector<Trip> all = trips();
  control.SeePreview(false);
  std::size_t column = 0;
  for (const Trip& trip : all) {
    column = 0;
    addRow([&](const BoundValue&) { return trip.row[column++]; });
  }
  bind();
  record->MoveNext();
  for (const Trip& trip : all) {
    record->MoveNext();
    control.HookINI(nullptr);
    control.HookINIPol(nullptr);
    suite.folder().write("FACILITY.INI", "");
    control.UpdateDBF();
    EXPECT_EQ(shownIn(control), trip.shown) << trip.what;
    bindINI();
    EXPECT_EQ(control.Save(), "") << trip.what;
    for (std::size_t i = 0; i < kBoundValues.size(); ++i) {
      const Value value = record->value(kBoundValues[i].field);
      EXPECT_EQ(value.isNull() ? "-" : trimRight(value.asText()), trip.stored[i]) << trip.what << kBoundValues[i].name;
    }
    control.UpdateDBF();
    EXPECT_EQ(shownIn(control), trip.shown) << trip.what;

    scLookAnt other;
    other.SeePreview(false);
    other.HookINI(masterHook());
    setINI("Site", "TX_FREQMHZ", ini, trip.shown.back());
    other.UpdateINI();
    EXPECT_EQ(shownIn(other), trip.shown) << trip.what;
  }
  EXPECT_TRUE(screen.shown().empty());
  EXPECT_FALSE(suite.folder().exists("QVTECSUP.TXT"));
}

}  // namespace
}  // namespace vantrelix
