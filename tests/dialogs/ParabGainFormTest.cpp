#include <functional>
#include <gtest/gtest.h>

#include "dialogs/PlacementFixture.h"
#include "dialogs/frmParabGain.h"
#include "dialogs/getParabolaGain.h"
#include "foundation/regional.h"
#include "platform/Platform.h"
#include "support/Processes.h"

namespace vantrelix {
namespace {

using test::PlacementFixture;

constexpr const char* kSection = "HDAntenna";
constexpr const char* kKey = "Parabola";

class ParabGainForm : public PlacementFixture {
 protected:
  using User = std::function<void(frmParabGain&)>;

  ParabGainForm() { regionalCharacters() = {}; }
  ~ParabGainForm() override { regionalCharacters() = {}; }

  // The dialog at a frequency, in which the user does that.
  void ask(double freq, const User& user) {
    screen.onModal["frmParabGain"] = [user](Form& form) { user(dynamic_cast<frmParabGain&>(form)); };
    getParabolaGain(freq, gain, diameter, unit, ok);
  }
  static void enter(frmParabGain& form, const char* diameter, const char* unit) {
    form.Text1[frmParabGain::diameter].userType(diameter);
    modSetComboBox(form.Combo1, unit, false);
    form.Combo1.userSelect(form.Combo1.listIndex());
  }
  static void goOn(frmParabGain& form) { form.Command1[frmParabGain::continuing].userClick(); }
  static void cancel(frmParabGain& form) { form.Command1[frmParabGain::cancelling].userClick(); }
  static std::string shownGain(const frmParabGain& form) { return form.Text1[frmParabGain::gain].text(); }
  void remember(const std::string& value) { store(kKey, value, kSection); }
  std::string remembered() const { return stored(kKey, kSection); }
  // What the dialog shows when it comes up over that memory.
  std::string loadedFrom(const std::string& value) {
    remember(value);
    const frmParabGain form;
    return form.Text1[frmParabGain::diameter].text() + " " + form.Combo1.text();
  }

  double gain = -1, diameter = -1;
  std::string unit = "untouched";
  std::int16_t ok = 1;
};

TEST_F(ParabGainForm, ComesWithItsDesignedTexts) {
  const frmParabGain form;
  EXPECT_EQ(form.name(), "frmParabGain");
  EXPECT_EQ(form.caption(), "Compute Parabolic Gain");
  EXPECT_EQ(form.Frame1.caption(), "Parabolic Antenna");
  EXPECT_EQ(form.Label1[0].caption(), "Frequency (MHz)");
  EXPECT_EQ(form.Label1[1].caption(), "Diameter");
  EXPECT_EQ(form.Label1[2].caption(), "Gain (dBi)");
  EXPECT_EQ(form.Command1[0].caption(), "Continue");
  EXPECT_EQ(form.Command1[1].caption(), "Cancel");
  EXPECT_EQ(form.Combo1.entries(), (std::vector<std::string>{"cm", "ft", "in", "m"}));
  EXPECT_EQ(form.Text1[2].name(), "Text1_2");
  EXPECT_EQ(form.Command1[1].name(), "Command1_1");
}

TEST_F(ParabGainForm, WithoutAMemoryItShowsOneMetreAtTheFrequencyGiven) {
  ask(1000, [](frmParabGain& form) {
    EXPECT_EQ(form.Text1[0].text(), "1000.00");
    EXPECT_EQ(form.Text1[1].text(), "1.00");
    EXPECT_EQ(form.Combo1.text(), "m");
    EXPECT_EQ(shownGain(form), "17.80");
  });
  EXPECT_EQ(screen.formsShown(), std::vector<std::string>{"frmParabGain"});
}

TEST_F(ParabGainForm, TheFrequencyComesWithTwoDecimals) {
  const std::pair<double, const char*> rows[] = {{451.25, "451.25"},      {899.995, "900.00"}, {0.5, "0.50"},
                                                 {12750.126, "12750.13"}, {0, "0.00"},         {-5, "-5.00"}};
  for (const auto& [freq, text] : rows) {
    ask(freq, [text = text](const frmParabGain& form) { EXPECT_EQ(form.Text1[0].text(), text); });
  }
}

TEST_F(ParabGainForm, ContinueGivesGainDiameterAndUnitAndKeepsTheInputs) {
  ask(6000, [](frmParabGain& form) {
    enter(form, "10", "ft");
    EXPECT_EQ(shownGain(form), "43.04");
    goOn(form);
    EXPECT_FALSE(form.visible());
  });
  EXPECT_EQ(ok, -1);
  EXPECT_DOUBLE_EQ(gain, 43.04);
  EXPECT_EQ(diameter, 10);
  EXPECT_EQ(unit, "ft");
  EXPECT_EQ(remembered(), "10.00|ft");
  ask(1000, [](const frmParabGain& form) {
    EXPECT_EQ(form.Text1[1].text(), "10.00");
    EXPECT_EQ(form.Combo1.text(), "ft");
    EXPECT_EQ(shownGain(form), "27.48");
  });
}

TEST_F(ParabGainForm, AnyChangeRecalculatesAtOnce) {
  frmParabGain form;
  form.setVisible(true);
  EXPECT_EQ(shownGain(form), " ");
  form.Text1[0].userType("1000");
  EXPECT_EQ(shownGain(form), "17.80");
  form.Text1[1].userType("2.5");
  EXPECT_EQ(shownGain(form), "25.76");
  form.Combo1.userSelect(1);
  EXPECT_EQ(shownGain(form), "15.44");
  form.Text1[1].setText("10");
  EXPECT_EQ(shownGain(form), "27.48");
  form.Combo1.setListIndex(0);
  EXPECT_EQ(shownGain(form), "-2.20");
  form.Text1[0].setText("6000");
  EXPECT_EQ(shownGain(form), "13.36");
}

TEST_F(ParabGainForm, ADiameterOfZeroShowsABlankGain) {
  ask(1000, [](frmParabGain& form) {
    enter(form, "0", "m");
    EXPECT_EQ(shownGain(form), " ");
    enter(form, "2", "m");
    EXPECT_EQ(shownGain(form), "23.82");
    enter(form, "", "m");
    EXPECT_EQ(form.Text1[1].text(), "");
    EXPECT_EQ(shownGain(form), " ");
  });
}

TEST_F(ParabGainForm, ContinuingWithoutAGainIsNotOkButKeepsTheInputs) {
  ask(1000, [](frmParabGain& form) {
    enter(form, "0", "in");
    goOn(form);
    EXPECT_FALSE(form.visible());
  });
  EXPECT_EQ(ok, 0);
  EXPECT_EQ(gain, 0);
  EXPECT_EQ(diameter, 0);
  EXPECT_EQ(unit, "in");
  EXPECT_EQ(remembered(), "0.00|in");
}

TEST_F(ParabGainForm, AGainOfZeroOrBelowInTheBoxIsNotOk) {
  ask(1000, [](frmParabGain& form) {
    enter(form, "10", "cm");
    goOn(form);
  });
  EXPECT_EQ(ok, 0);
  EXPECT_DOUBLE_EQ(gain, -2.2);
  // 0.0024 dBi, which the box shows as 0.00.
  ask(1000, [](frmParabGain& form) {
    enter(form, "0.12886", "m");
    EXPECT_EQ(shownGain(form), "0.00");
    goOn(form);
  });
  EXPECT_EQ(ok, 0);
  ask(1000, [](frmParabGain& form) {
    enter(form, "0.129", "m");
    EXPECT_EQ(shownGain(form), "0.01");
    goOn(form);
  });
  EXPECT_EQ(ok, -1);
}

TEST_F(ParabGainForm, CancelIsNotOkAndKeepsNothing) {
  remember("3|ft");
  ask(6000, [](frmParabGain& form) {
    enter(form, "10", "in");
    cancel(form);
    EXPECT_FALSE(form.visible());
    EXPECT_TRUE(form.cancelled());
  });
  EXPECT_EQ(ok, 0);
  EXPECT_EQ(remembered(), "3|ft");
}

TEST_F(ParabGainForm, ClosingByTheFrameCancels) {
  ask(6000, [](frmParabGain& form) { enter(form, "10", "ft"); });
  EXPECT_EQ(ok, 0);
  EXPECT_EQ(remembered(), "nothing");
}

TEST_F(ParabGainForm, EnterContinuesAndEscapeCancels) {
  const frmParabGain form;
  EXPECT_EQ(form.defaultButton(), &form.Command1[0]);
  EXPECT_EQ(form.cancelButton(), &form.Command1[1]);
}

TEST_F(ParabGainForm, TheTabKeyGoesFromFrequencyToCancel) {
  const frmParabGain form;
  const Widget* order[] = {&form.Text1[0], &form.Text1[1],    &form.Combo1,
                           &form.Text1[2], &form.Command1[0], &form.Command1[1]};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(order[i]->tabIndex(), i);
  EXPECT_EQ(form.activeWidget(), &form.Text1[1]);
}

TEST_F(ParabGainForm, ABoxMarksAllItsTextWhenItGetsTheFocusAndTheDiameterWhenTheDialogComesUp) {
  std::vector<int> marked(3);
  frmParabGain form;
  for (std::size_t i = 0; i < 3; ++i) form.Text1[i].selectAll.listen([&marked, i] { ++marked[i]; });
  form.userActivated();
  EXPECT_EQ(marked, (std::vector<int>{0, 1, 0}));
  for (TextBox& box : form.Text1) box.userFocus();
  EXPECT_EQ(marked, (std::vector<int>{1, 2, 1}));
}

TEST_F(ParabGainForm, TheTipOfTheGainSaysWhatIsMissing) {
  frmParabGain form;
  EXPECT_NE(form.Text1[2].toolTip().find("above 0"), std::string::npos);
  form.Text1[0].setText("1000");
  EXPECT_NE(form.Text1[2].toolTip().find("in dBi"), std::string::npos);
}

// Bad input.

TEST_F(ParabGainForm, LettersAndSignsDoNotEnterTheBoxes) {
  ask(1000, [](frmParabGain& form) {
    enter(form, "abc", "m");
    EXPECT_EQ(form.Text1[1].text(), "1.00");
    enter(form, "-+1e. 2x,", "m");
    EXPECT_EQ(form.Text1[1].text(), "1.2");
    form.Text1[0].userType("9k00 MHz");
    EXPECT_EQ(form.Text1[0].text(), "900");
    EXPECT_EQ(shownGain(form), "18.47");
  });
}

TEST_F(ParabGainForm, TheGainIsReadOnly) {
  ask(1000, [](frmParabGain& form) {
    form.Text1[2].userType("99");
    EXPECT_EQ(shownGain(form), "17.80");
    EXPECT_FALSE(form.Text1[2].userKey('9'));
    EXPECT_TRUE(form.Text1[2].enabled());
    EXPECT_EQ(form.Text1[2].backColor(), color::buttonFace);
    goOn(form);
  });
  EXPECT_DOUBLE_EQ(gain, 17.8);
}

TEST_F(ParabGainForm, ATextThatIsNoNumberCountsAsFarAsItIsOne) {
  const std::pair<const char*, const char*> rows[] = {
      {"2.5 m dish", "25.76"}, {"dish", " "}, {"-3", " "}, {"1.2.3", " "}, {"", " "}, {".", " "}, {"1E3", "77.80"}};
  frmParabGain form;
  form.Text1[0].setText("1000");
  for (const auto& [text, shown] : rows) {
    form.Text1[1].setText(text);
    EXPECT_EQ(shownGain(form), shown) << text;
  }
}

TEST_F(ParabGainForm, NumbersTooLargeForANumberHaveNoGainAndDoNoHarm) {
  const std::string digits(400, '9');
  ask(1000, [&](frmParabGain& form) {
    form.Text1[1].userType(digits);
    EXPECT_EQ(shownGain(form), " ");
    form.Text1[1].userType("1");
    form.Text1[0].userType(digits);
    EXPECT_EQ(shownGain(form), " ");
    form.Text1[1].setText("1E999");
    form.Text1[0].setText("1000");
    EXPECT_EQ(shownGain(form), " ");
    goOn(form);
  });
  EXPECT_EQ(ok, 0);
  EXPECT_EQ(remembered(), "0.00|m");
  const std::string large(300, '9');
  ask(1000, [&](frmParabGain& form) {
    form.Text1[1].userType(large);
    goOn(form);
  });
  EXPECT_EQ(ok, -1);
  EXPECT_DOUBLE_EQ(gain, 6017.8);
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(ParabGainForm, ACommaSettingIsTypedShownAndRememberedWithCommas) {
  regionalCharacters() = {",", "."};
  ask(1234.5, [](frmParabGain& form) {
    EXPECT_EQ(form.Text1[0].text(), "1234,50");
    EXPECT_EQ(form.Text1[1].text(), "1,00");
    EXPECT_EQ(shownGain(form), "19,63");
    enter(form, "2.,5", "m");
    EXPECT_EQ(form.Text1[1].text(), "2,5");
    EXPECT_EQ(shownGain(form), "27,59");
    goOn(form);
  });
  EXPECT_EQ(ok, -1);
  EXPECT_DOUBLE_EQ(gain, 27.59);
  EXPECT_DOUBLE_EQ(diameter, 2.5);
  EXPECT_EQ(remembered(), "2,50|m");
  const frmParabGain again;
  EXPECT_EQ(again.Text1[1].text(), "2,50");
}

TEST_F(ParabGainForm, AMemoryWithFewerFieldsGivesTheDefaultsForTheRest) {
  EXPECT_EQ(loadedFrom(""), "1.00 m");
  EXPECT_EQ(loadedFrom("3"), "3.00 m");
  EXPECT_EQ(loadedFrom("4.567|in"), "4.57 in");
  EXPECT_EQ(loadedFrom("4|in|more"), "4.00 in");
}

TEST_F(ParabGainForm, AMemoryThatIsGarbageGivesTheDefaultsWhereItIsOfNoUse) {
  EXPECT_EQ(loadedFrom("abc|xyz"), "1.00 m");
  EXPECT_EQ(loadedFrom("|"), "1.00 m");
  EXPECT_EQ(loadedFrom("|ft"), "1.00 ft");
  EXPECT_EQ(loadedFrom("5|furlong"), "5.00 m");
  EXPECT_EQ(loadedFrom("5|"), "5.00 m");
  EXPECT_EQ(loadedFrom("1E999|cm"), "1.00 cm");
  EXPECT_EQ(loadedFrom("0.00|cm"), "0.00 cm");
  EXPECT_EQ(loadedFrom("7 ft| FT "), "7.00 ft");
  EXPECT_EQ(loadedFrom("\x01\xFF|||\x80"), "1.00 m");
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(ParabGainForm, InputsThatCannotBeKeptDoNotHoldBackTheGainEvenWithoutALog) {
  remember("3|ft");
  EXPECT_EQ(std::system(("chmod a-w '" + suite.folder().machine() + "'").c_str()), 0);
  const int code = test::runWithoutPrivilege([&] {
    ask(6000, [](frmParabGain& form) {
      enter(form, "10", "ft");
      goOn(form);
    });
    return ok == -1 && gain > 43 && remembered() == "3|ft" && screen.shown().empty();
  });
  EXPECT_EQ(std::system(("chmod u+w '" + suite.folder().machine() + "'").c_str()), 0);
  EXPECT_EQ(code, 0);
}

TEST_F(ParabGainForm, InputsThatCannotBeKeptAreLogged) {
  platform::current().makeFolder(suite.file("QVDEFAULTS.INI"));
  ask(6000, [](frmParabGain& form) { goOn(form); });
  EXPECT_EQ(ok, -1);
  EXPECT_NE(suite.log().find("parabolic gain could not be kept"), std::string::npos);
  EXPECT_NE(suite.log().find(suite.folder().machine("QVDEFAULTS.INI")), std::string::npos);
}

TEST_F(ParabGainForm, InputsThatAreKeptAreNoMatterForTheLog) {
  ask(6000, [](frmParabGain& form) { goOn(form); });
  EXPECT_EQ(remembered(), "1.00|m");
  EXPECT_FALSE(suite.folder().exists("QVTECSUP.TXT"));
}

// The window.

TEST_F(ParabGainForm, ComesBackWhereItWasLeftHoweverItWasLeft) {
  ask(1000, [](frmParabGain& form) {
    form.moveTo(3000, 4500);
    goOn(form);
  });
  ask(1000, [](frmParabGain& form) {
    EXPECT_EQ(form.geometry().left, 3000);
    EXPECT_EQ(form.geometry().top, 4500);
    form.moveTo(600, 900);
    cancel(form);
  });
  EXPECT_EQ(stored("frmParabGain-X"), "600");
  EXPECT_EQ(stored("frmParabGain-Y"), "900");
}

TEST_F(ParabGainForm, ComesUpCentredTheFirstTime) {
  ask(1000, [](const frmParabGain& form) {
    EXPECT_EQ(form.geometry().left, 28800 / 2);
    EXPECT_EQ(form.geometry().top, 16200 / 2);
  });
}

}  // namespace
}  // namespace vantrelix
