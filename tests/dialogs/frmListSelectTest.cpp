#include <functional>
#include <gtest/gtest.h>

#include "dialogs/PlacementFixture.h"
#include "dialogs/frmListSelect.h"

namespace vantrelix {
namespace {

using test::PlacementFixture;

class frmListSelectTest : public PlacementFixture {
 protected:
  frmListSelectTest() {
    form.List1.setEntries({"LDF4-50  7.2", "LDF5-50  4.0", "EW63     4.5"});
    form.ListClick.listen([this] { ++clicks; });
  }
  // Whether the user leaves with a choice.
  bool chooses(const std::function<void()>& user) {
    screen.onModal["frmListSelect"] = [user](Form&) { user(); };
    return form.choose();
  }

  frmListSelect form;
  int clicks = 0;
};

TEST_F(frmListSelectTest, ContinueLeavesWithTheLineSelected) {
  EXPECT_TRUE(chooses([this] {
    form.List1.userSelect(1);
    form.cmdContinue.userClick();
  }));
  EXPECT_TRUE(form.chosen());
  EXPECT_EQ(form.choice(), "LDF5-50  4.0");
  EXPECT_FALSE(form.visible());
  EXPECT_EQ(form.cmdContinue.caption(), "Continue");
  EXPECT_EQ(form.cmdCancel.caption(), "Cancel");
  EXPECT_TRUE(form.List1.fixedPitch());
}

TEST_F(frmListSelectTest, CancelAndTheFrameLeaveWithoutAChoice) {
  EXPECT_FALSE(chooses([this] {
    form.List1.userSelect(1);
    form.cmdCancel.userClick();
  }));
  EXPECT_EQ(form.choice(), "");
  EXPECT_FALSE(chooses([] {}));  // the desktop then closes it by the frame
  EXPECT_FALSE(form.chosen());
}

TEST_F(frmListSelectTest, ADoubleClickIsAChoice) {
  EXPECT_TRUE(chooses([this] { form.List1.userDoubleClick(2); }));
  EXPECT_EQ(form.choice(), "EW63     4.5");
}

TEST_F(frmListSelectTest, WithoutALineThereIsNothingToContinueWith) {
  const frmListSelect empty;
  EXPECT_FALSE(empty.cmdContinue.enabled());
  EXPECT_FALSE(form.cmdContinue.enabled());
  EXPECT_FALSE(chooses([this] { form.cmdContinue.userClick(); }));
  form.List1.setListIndex(0);
  EXPECT_TRUE(form.cmdContinue.enabled());
  form.List1.clear();
  EXPECT_FALSE(form.cmdContinue.enabled());
}

TEST_F(frmListSelectTest, ALineThatTheCallerSelectedIsTheChoiceAtOnceAndRaisesNothing) {
  form.List1.setListIndex(2);
  EXPECT_TRUE(chooses([this] { form.cmdContinue.userClick(); }));
  EXPECT_EQ(form.choice(), "EW63     4.5");
  EXPECT_EQ(clicks, 0);
}

TEST_F(frmListSelectTest, EachClickOnALineIsHandedToTheCallerWhileTheWindowIsOpen) {
  std::string seen;
  form.ListClick.listen([&] {
    seen += form.List1.text().substr(0, 4) + (form.visible() ? "+" : "-");
    form.Label1.setCaption("30 MHz to 2700 MHz");
  });
  chooses([this] {
    form.List1.userSelect(2);
    form.List1.userSelect(0);
    form.List1.userSelect(0);
    form.List1.userSelect(9);
  });
  EXPECT_EQ(seen, "EW63+LDF4+LDF4+");
  EXPECT_EQ(form.Label1.caption(), "30 MHz to 2700 MHz");
}

TEST_F(frmListSelectTest, AnEarlierChoiceDoesNotOutliveALaterCancel) {
  EXPECT_TRUE(chooses([this] { form.List1.userDoubleClick(0); }));
  EXPECT_FALSE(chooses([this] { form.cmdCancel.userClick(); }));
  EXPECT_EQ(form.choice(), "");
  EXPECT_TRUE(chooses([this] { form.List1.userDoubleClick(0); }));
  EXPECT_FALSE(chooses([this] { form.hide(); }));  // the program takes the window away
}

TEST_F(frmListSelectTest, EnterContinuesEscapeCancelsAndTheListHasTheKeyboard) {
  EXPECT_EQ(form.defaultButton(), &form.cmdContinue);
  EXPECT_EQ(form.cancelButton(), &form.cmdCancel);
  EXPECT_EQ(form.activeWidget(), &form.List1);
}

TEST_F(frmListSelectTest, ComesBackWhereItWasLeftAndAsLargeHoweverItWasLeft) {
  chooses([this] {
    form.setSize(5000, 4000);
    form.moveTo(1500, 900);
    form.cmdCancel.userClick();
  });
  EXPECT_EQ(stored("frmListSelect-X") + " " + stored("frmListSelect-Y"), "1500 900");
  EXPECT_EQ(stored("frmListSelect-H") + " " + stored("frmListSelect-W"), "4000 5000");
  Rectangle place;
  screen.onModal["frmListSelect"] = [&place](const Form& later) { place = later.geometry(); };
  frmListSelect later;
  later.choose();
  EXPECT_EQ(place, (Rectangle{1500, 900, 5000, 4000}));
}

TEST_F(frmListSelectTest, ComesUpCentredTheFirstTimeInTheSizeOfItsLines) {
  Rectangle place;
  screen.onModal["frmListSelect"] = [&place](const Form& shown) { place = shown.geometry(); };
  // What shows a window without a size gives it one before it is activated.
  form.activated.listen([&] { EXPECT_EQ(form.width(), 0); });
  form.choose();
  EXPECT_EQ(place, (Rectangle{14400, 8100, 0, 0}));
}

TEST_F(frmListSelectTest, StoredPlacesThatAreNoNumbersGiveWayToTheMiddleAndToItsOwnSize) {
  for (const char* key : {"-X", "-Y", "-H", "-W"}) store(std::string("frmListSelect") + key, "wide");
  Rectangle place;
  screen.onModal["frmListSelect"] = [&place](const Form& shown) { place = shown.geometry(); };
  form.choose();
  EXPECT_EQ(place, (Rectangle{14400, 8100, 0, 0}));
  EXPECT_TRUE(screen.shown().empty());
}

}  // namespace
}  // namespace vantrelix
