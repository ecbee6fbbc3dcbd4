#include <gmock/gmock.h>

#include "dialogs/PlacementFixture.h"
#include "dialogs/windowPlacement.h"

namespace vantrelix {
namespace {

using test::PlacedForm;
using testing::HasSubstr;
using testing::Not;

constexpr Rectangle kSize{0, 0, 6000, 3000};
// The place of a form of that size centred on the first screen.
constexpr Rectangle kCentre{11400, 6600, 6000, 3000};

class WindowPlacement : public test::PlacementFixture {
 protected:
  Rectangle placed(const std::string& x, const std::string& y) {
    store("frmTest-X", x);
    store("frmTest-Y", y);
    PlacedForm form(kSize);
    SetFormLoc(form, 300, 450);
    return form.geometry();
  }
  Rectangle sized(const std::string& height, const std::string& width) {
    store("frmTest-H", height);
    store("frmTest-W", width);
    PlacedForm form(kSize);
    SetFormSize(form, 2000, 4000);
    return form.geometry();
  }
};

TEST_F(WindowPlacement, AFormComesBackWhereItWas) {
  const PlacedForm left({1234, 5678, 7000, 4000});
  SaveFormLoc(left);
  SaveFormSize(left);
  PlacedForm again(kSize);
  SetFormSize(again, 100, 200);
  SetFormLoc(again, 100, 200);
  EXPECT_EQ(again.geometry(), left.geometry());
  EXPECT_TRUE(again.placed());
}

TEST_F(WindowPlacement, PlaceAndSizeStandUnderTheFormsNameInSectionConfigOfTheDefaultsFile) {
  const PlacedForm form({-10, 20, 7000, 4000});
  SaveFormLoc(form);
  EXPECT_EQ(defaultsFile(), "[CONFIG]\r\nfrmTest-X=-10\r\nfrmTest-Y=20\r\n");
  SaveFormSize(form);
  EXPECT_EQ(stored("frmTest-H"), "4000");
  EXPECT_EQ(stored("frmTest-W"), "7000");
}

TEST_F(WindowPlacement, APrefixStandsBeforeTheName) {
  const PlacedForm form({10, 20, 7000, 4000});
  SaveFormLoc(form, "Az ");
  SaveFormSize(form, "Az ");
  EXPECT_EQ(stored("Az frmTest-X"), "10");
  EXPECT_EQ(stored("Az frmTest-W"), "7000");
  EXPECT_THAT(defaultsFile(), Not(HasSubstr("\nfrmTest")));
  PlacedForm again(kSize);
  SetFormLoc(again, 300, 450, "Az ");
  SetFormSize(again, 2000, 4000, "Az ");
  EXPECT_EQ(again.geometry(), form.geometry());
}

TEST_F(WindowPlacement, ANamedFileTakesThePlaceOfTheDefaultsFile) {
  const PlacedForm form({10, 20, 7000, 4000});
  const std::string file = suite.file("OTHER.INI");
  SaveFormLoc(form, "", file);
  SaveFormSize(form, "", file);
  EXPECT_EQ(defaultsFile(), "");
  PlacedForm again(kSize);
  SetFormLoc(again, 300, 450, "", file);
  SetFormSize(again, 2000, 4000, "", file);
  EXPECT_EQ(again.geometry(), form.geometry());
}

TEST_F(WindowPlacement, WithNothingStoredTheDefaultsHold) {
  PlacedForm form(kSize);
  SetFormLoc(form, 300, 450);
  SetFormSize(form, 2000, 4000);
  EXPECT_EQ(form.geometry(), (Rectangle{300, 450, 4000, 2000}));
  EXPECT_EQ(defaultsFile(), "");
}

TEST_F(WindowPlacement, EachSideThatIsNotStoredTakesItsDefault) {
  store("frmTest-Y", "700");
  store("frmTest-W", "5000");
  PlacedForm form(kSize);
  SetFormLoc(form, 300, 450);
  SetFormSize(form, 2000, 4000);
  EXPECT_EQ(form.geometry(), (Rectangle{300, 700, 5000, 2000}));
}

TEST_F(WindowPlacement, ClosingAMaximisedOrMinimisedFormDoesNotChangeItsStoredPlace) {
  PlacedForm form({10, 20, 7000, 4000});
  SaveFormLoc(form);
  SaveFormSize(form);
  const std::string before = defaultsFile();
  form.setGeometry({0, 0, 28800, 16200});
  for (const auto state : {Form::WindowState::maximised, Form::WindowState::minimised}) {
    form.setWindowState(state);
    SaveFormLoc(form);
    SaveFormSize(form);
    EXPECT_EQ(defaultsFile(), before);
  }
}

TEST_F(WindowPlacement, ADefaultOfMinus88CentresWhateverIsStored) {
  store("frmTest-X", "100");
  store("frmTest-Y", "200");
  for (const auto& [x, y] : {std::pair{kCentred, kCentred}, {kCentred, 0}, {0, kCentred}}) {
    PlacedForm form(kSize);
    SetFormLoc(form, x, y);
    EXPECT_EQ(form.geometry(), kCentre) << x << ' ' << y;
  }
}

TEST_F(WindowPlacement, WithoutADefaultPlaceAFormIsCentredUntilItHasAWholeStoredOne) {
  PlacedForm form(kSize);
  SetFormLoc(form);
  EXPECT_EQ(form.geometry(), kCentre);
  store("Az frmTest-X", "100");
  form.moveTo(0, 0);
  SetFormLoc(form, "Az ");
  EXPECT_EQ(form.geometry(), kCentre);
  store("Az frmTest-Y", "200");
  store("El frmTest-Y", "200");
  SetFormLoc(form, "El ");
  EXPECT_EQ(form.geometry(), kCentre);
  SetFormLoc(form, "Az ");
  EXPECT_EQ(form.geometry(), (Rectangle{100, 200, 6000, 3000}));
}

TEST_F(WindowPlacement, AFormOnASecondScreenStaysThere) {
  addScreen(1920);
  EXPECT_EQ(placed("30000", "450"), (Rectangle{30000, 450, 6000, 3000}));
}

TEST_F(WindowPlacement, AFormOfASecondScreenThatIsGoneComesBackCentred) { EXPECT_EQ(placed("30000", "450"), kCentre); }

TEST_F(WindowPlacement, AFormOnAScreenLeftOfOrAboveTheFirstStaysThere) {
  addScreen(-1920, -1080);
  EXPECT_EQ(placed("-28000", "-16000"), (Rectangle{-28000, -16000, 6000, 3000}));
}

TEST_F(WindowPlacement, AFormLeftOfOrAboveTheDesktopIsMovedToItsEdge) {
  EXPECT_EQ(placed("-28000", "450"), (Rectangle{0, 450, 6000, 3000}));
  EXPECT_EQ(placed("300", "-1"), (Rectangle{300, 0, 6000, 3000}));
  addScreen(-1920);
  EXPECT_EQ(placed("-28801", "450"), (Rectangle{-28800, 450, 6000, 3000}));
}

TEST_F(WindowPlacement, AFormOfWhichMoreThanATenthShowsStays) {
  EXPECT_EQ(placed("28200", "15900"), (Rectangle{28200, 15900, 6000, 3000}));
  EXPECT_EQ(placed("28201", "15900"), kCentre);
  EXPECT_EQ(placed("28200", "15901"), kCentre);
}

TEST_F(WindowPlacement, TheFirstScreenAloneCountsWhereMultipleMonitorsIsOff) {
  addScreen(1920);
  addScreen(-1920);
  store("MultipleMonitors", "0");
  EXPECT_EQ(placed("30000", "450"), kCentre);
  EXPECT_EQ(placed("300", "16000"), kCentre);
  EXPECT_EQ(placed("28200", "15900"), (Rectangle{28200, 15900, 6000, 3000}));
  EXPECT_EQ(placed("28201", "15900"), kCentre);
  EXPECT_EQ(placed("-1", "450"), (Rectangle{2880, 450, 6000, 3000}));
  EXPECT_EQ(placed("300", "-1"), (Rectangle{300, 1620, 6000, 3000}));
  EXPECT_EQ(placed("0", "0"), kSize);
}

TEST_F(WindowPlacement, TheSwitchOfTheScreensStandsInTheDefaultsFileWhereverThePlacesStand) {
  addScreen(1920);
  const std::string file = suite.file("OTHER.INI");
  setINI("CONFIG", "frmTest-X", file, "30000");
  setINI("CONFIG", "MultipleMonitors", file, "0");
  PlacedForm form(kSize);
  SetFormLoc(form, 300, 450, "", file);
  EXPECT_EQ(form.geometry().left, 30000);
  store("MultipleMonitors", "0");
  SetFormLoc(form, 300, 450, "", file);
  EXPECT_EQ(form.geometry(), kCentre);
}

TEST_F(WindowPlacement, ACornerOfTheDesktopThatNoScreenShowsIsNoPlace) {
  addScreen(1920, 1080);
  EXPECT_EQ(placed("30000", "450"), kCentre);
  EXPECT_EQ(placed("300", "17000"), kCentre);
  EXPECT_EQ(placed("30000", "17000"), (Rectangle{30000, 17000, 6000, 3000}));
}

TEST_F(WindowPlacement, AFormWithoutASizeHasAPlaceAllTheSame) {
  PlacedForm form({0, 0, 0, 0});
  SetFormLoc(form, 300, 450);
  EXPECT_EQ(form.geometry(), (Rectangle{300, 450, 0, 0}));
}

TEST_F(WindowPlacement, AnotherScaleMakesTheScreenAnotherNumberOfTwips) {
  screen.screens.scale = 10;
  EXPECT_EQ(placed("19000", "450"), (Rectangle{6600, 3900, 6000, 3000}));
  EXPECT_EQ(placed("18000", "450"), (Rectangle{18000, 450, 6000, 3000}));
  screen.screens.scale = 20;
  EXPECT_EQ(placed("30000", "450"), (Rectangle{30000, 450, 6000, 3000}));
}

TEST_F(WindowPlacement, AFirstScreenThatDoesNotBeginAtTheOriginIsMeantWhole) {
  screen.screens.monitors = {{{100, 40, 1920, 1080}, {100, 40, 1920, 1080}}};
  PlacedForm form(kSize);
  setFormCenter(form);
  EXPECT_EQ(form.geometry(), (Rectangle{1500 + 11400, 600 + 6600, 6000, 3000}));
  store("MultipleMonitors", "0");
  EXPECT_EQ(placed("1499", "599"), (Rectangle{1500 + 2880, 600 + 1620, 6000, 3000}));
}

TEST_F(WindowPlacement, WithoutAnyScreenAFormIsPlacedAsStoredAndCentredNowhere) {
  screen.screens.monitors.clear();
  EXPECT_EQ(placed("30000", "450"), (Rectangle{30000, 450, 6000, 3000}));
  EXPECT_EQ(sized("3000", "50000"), (Rectangle{0, 0, 50000, 3000}));
  PlacedForm form({1, 2, 6000, 3000});
  setFormCenter(form);
  EXPECT_EQ(form.geometry(), (Rectangle{1, 2, 6000, 3000}));
}

TEST_F(WindowPlacement, APlaceThatIsNoNumberCountsAsNoneAndStaysInTheFile) {
  for (const char* text : {"abc", "", "1E999", "0x10", "12,x,7z!9", "nan", "inf", "\xC3\xA4"}) {
    EXPECT_EQ(placed(text, text), (Rectangle{300, 450, 6000, 3000})) << text;
    PlacedForm form(kSize);
    SetFormLoc(form);
    EXPECT_EQ(form.geometry(), kCentre) << text;
    EXPECT_THAT(defaultsFile(), HasSubstr(std::string("frmTest-X=") + text)) << text;
  }
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(WindowPlacement, APlaceIsReadAsLenientlyAsAnyNumber) {
  EXPECT_EQ(placed(" 600 ", "700 twips"), (Rectangle{600, 700, 6000, 3000}));
  EXPECT_EQ(placed("600.4", "7E2"), (Rectangle{600, 700, 6000, 3000}));
  EXPECT_EQ(placed("0", "0"), kSize);
}

TEST_F(WindowPlacement, APlaceBeyondAllNumbersIsOffTheScreen) {
  for (const char* text : {"1E300", "99999999999999999999", "2147483647", "2147483648"}) {
    EXPECT_EQ(placed(text, "450"), kCentre) << text;
    EXPECT_EQ(placed("300", text), kCentre) << text;
  }
  for (const char* text : {"-1E300", "-99999999999999999999", "-2147483648"}) {
    EXPECT_EQ(placed(text, text), kSize) << text;
  }
  store("MultipleMonitors", "0");
  EXPECT_EQ(placed("1E300", "1E300"), kCentre);
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(WindowPlacement, AStoredSideOfZeroOrLessLeavesTheDesignedOne) {
  EXPECT_EQ(sized("0", "0"), kSize);
  EXPECT_EQ(sized("0", "5000"), (Rectangle{0, 0, 5000, 3000}));
  EXPECT_EQ(sized("2500", "0"), (Rectangle{0, 0, 6000, 2500}));
  EXPECT_EQ(sized("-5", "-1E300"), kSize);
}

TEST_F(WindowPlacement, ADefaultSizeOfZeroLeavesTheDesignedOne) {
  PlacedForm form(kSize);
  SetFormSize(form, 0, 0);
  EXPECT_EQ(form.geometry(), kSize);
}

TEST_F(WindowPlacement, ASizeThatIsNoNumberCountsAsNone) { EXPECT_EQ(sized("abc", ""), (Rectangle{0, 0, 4000, 2000})); }

TEST_F(WindowPlacement, NoStoredSideIsLongerThanTheDesktops) {
  EXPECT_EQ(sized("1E300", "28801"), (Rectangle{0, 0, 28800, 16200}));
  addScreen(1920);
  EXPECT_EQ(sized("16200", "40000"), (Rectangle{0, 0, 40000, 16200}));
}

TEST_F(WindowPlacement, ATakenSizeReachesTheFormsOwnLayout) {
  struct Resized : PlacedForm {
    int times = 0;
    void resize() override { ++times; }
  } form;
  SetFormSize(form, 2000, 4000);
  EXPECT_EQ(form.times, 1);
}

TEST_F(WindowPlacement, WhatElseStandsInTheFileStays) {
  const std::string before = "; mine\r\n[Other]\r\na=b\r\n[CONFIG]\r\nfrmOther-X=abc\r\n";
  suite.folder().write("QVDEFAULTS.INI", before);
  const PlacedForm form({10, 20, 7000, 4000});
  SaveFormLoc(form);
  EXPECT_EQ(defaultsFile(), before + "frmTest-X=10\r\nfrmTest-Y=20\r\n");
}

TEST_F(WindowPlacement, AFormIsCentredOnItsOwner) {
  const PlacedForm owner({-3000, 500, 10000, 5000}, "frmOwner");
  PlacedForm form(kSize);
  setFormCenterOn(form, owner);
  EXPECT_EQ(form.geometry(), (Rectangle{-1000, 1500, 6000, 3000}));
}

TEST_F(WindowPlacement, AFormIsCentredOnTheFirstScreenAmongSeveral) {
  addScreen(-1920);
  PlacedForm form({-20000, 0, 6000, 3000});
  setFormCenter(form);
  EXPECT_EQ(form.geometry(), kCentre);
}

}  // namespace
}  // namespace vantrelix
