// A person at the demo host, and what other programs then read from the table.
#include <gmock/gmock.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStandardPaths>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>

#include "antenna/hdWrtAntDBF.h"
#include "demo/DemoWindow.h"
#include "qt/FacilityFixture.h"
#include "qt/LookAnt.h"
#include "qt/otherProgram.h"

namespace vantrelix::demo {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

// The line that holds a text.
std::string lineWith(const std::string& all, const std::string& text) {
  const std::size_t at = all.find(text);
  if (at == std::string::npos) return "";
  const std::size_t start = all.rfind('\n', at) + 1;
  return all.substr(start, all.find('\n', at) - start);
}

class FacilityForm : public test::FacilityTest {
 protected:
  FacilityForm() {
    window = std::make_unique<DemoWindow>();
    window->show();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }

  template <class Kind>
  Kind& find(const char* name) {
    // The line controls have widgets of the same names.
    Kind* inAntenna = window->control().findChild<Kind*>(name);
    return inAntenna ? *inAntenna : *window->findChild<Kind*>(name);
  }
  QPushButton& button(const char* name) { return find<QPushButton>(name); }
  void click(const char* name) { QTest::mouseClick(&button(name), Qt::LeftButton); }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  // Enters a box by the keyboard, which selects what it holds, and types.
  void type(const char* box, const char* text) {
    find<QLineEdit>(box).setFocus(Qt::TabFocusReason);
    QTest::keyClicks(&find<QLineEdit>(box), text);
  }
  std::string position() { return find<QLabel>("positionLabel").text().toStdString(); }
  QString lastDetail() {
    const auto& tree = find<QTreeWidget>("eventList");
    return tree.topLevelItem(tree.topLevelItemCount() - 1)->text(3);
  }
  QString tablePath() { return QString::fromStdString(suite.folder().machine("FACILITY.DBF")); }

  std::unique_ptr<DemoWindow> window;
};

TEST_F(FacilityForm, WhatAPersonTypesAndSavesIsReadFromTheTableByOtherPrograms) {
  click("editButton");
  type("txtGain", "9.14");
  press(Qt::Key_Tab);
  ASSERT_EQ(QApplication::focusWidget()->objectName(), "cboUnit");
  press(Qt::Key_Down);  // dBi
  EXPECT_EQ(find<QLineEdit>("txtGain").text(), "11.29");
  screen.answers = {MsgAnswer::yes};
  click("nextButton");
  EXPECT_EQ(position(), "Record 2 of 5");
  EXPECT_EQ(find<QLineEdit>("txtDesc").text(), "Folded dipole");
  click("previousButton");
  EXPECT_EQ(find<QLineEdit>("txtGain").text(), "11.29");
  click("editButton");
  type("txtOrient", "95.5");
  click("saveButton");
  EXPECT_EQ(lastDetail(), "Record 1 of 5, Crestline Ridge");

  const std::string dump =
      vantrelix::test::runOther(VANTRELIX_BINARY_DIR "/bin/vantrelix", {"table", "dump", tablePath()});
  const std::string row = lineWith(dump, "Crestline Ridge");
  for (const char* value : {" 11.29 ", " dBi ", " 95.5 ", " Collinear, 4 elements "}) {
    EXPECT_THAT(row, HasSubstr(value));
  }
  const QString ogrinfo = QStandardPaths::findExecutable("ogrinfo");
  if (ogrinfo.isEmpty()) GTEST_SKIP() << "The reader ogrinfo is not installed.";
  const std::string read = vantrelix::test::runOther(ogrinfo, {"-ro", "-al", tablePath()});
  EXPECT_THAT(lineWith(read, "TX_A1GAIN (Real) ="), HasSubstr("= 11.29"));
  EXPECT_THAT(lineWith(read, "TX_A1GNUN (String) ="), HasSubstr("= dBi"));
  EXPECT_THAT(lineWith(read, "TX_A1ORIEN (Real) ="), HasSubstr("= 95.5"));
}

TEST_F(FacilityForm, TheKeyboardDoesItAll) {
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "editButton");
  press(Qt::Key_End, Qt::AltModifier);
  EXPECT_EQ(position(), "Record 5 of 5");
  press(Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(position(), "Record 4 of 5");
  press(Qt::Key_Home, Qt::AltModifier);
  press(Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(position(), "Record 2 of 5");
  press(Qt::Key_E, Qt::ControlModifier);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "SITE");
  type("txtGain", "3");
  press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(stored("TX_A1GAIN", 1), Value(3.0));
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "editButton");
  press(Qt::Key_E, Qt::ControlModifier);
  type("txtGain", "4");
  press(Qt::Key_Escape);
  EXPECT_EQ(find<QLineEdit>("txtGain").text(), "3.00");
  EXPECT_FALSE(button("saveButton").isEnabled());
}

TEST_F(FacilityForm, SavingByAKeyLeavesTheBoxThatIsTypedIntoFirst) {
  press(Qt::Key_E, Qt::ControlModifier);
  type("txtETilt", "200");  // refused when the box is left
  press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_THAT(told(), ElementsAre(HasSubstr("use the 'Inverted' checkbox")));
  EXPECT_TRUE(stored("TX_A1ETILT").isNull());
}

TEST_F(FacilityForm, EscapeIsTheFormsInAnEditAlone) {
  const auto escape = [this] {
    const auto shortcuts = window->findChildren<QShortcut*>();
    return std::any_of(shortcuts.begin(), shortcuts.end(), [](const QShortcut* shortcut) {
      return shortcut->key() == QKeySequence(Qt::Key_Escape) && shortcut->isEnabled();
    });
  };
  EXPECT_FALSE(escape());
  click("editButton");
  EXPECT_TRUE(escape());
}

TEST_F(FacilityForm, TheButtonsShowWhatIsPossibleAndTheirTipsTellTheKeys) {
  const std::pair<const char*, const char*> keys[] = {{"firstButton", "Alt+Home"}, {"previousButton", "Alt+Left"},
                                                      {"nextButton", "Alt+Right"}, {"lastButton", "Alt+End"},
                                                      {"editButton", "Ctrl+E"},    {"saveButton", "Ctrl+S"},
                                                      {"cancelButton", "Esc"}};
  for (const auto& [name, key] : keys) EXPECT_TRUE(button(name).toolTip().contains(key)) << name;
  const auto enabled = [this] {
    std::string names;
    for (const char* name : {"first", "previous", "next", "last", "edit", "save", "cancel"}) {
      if (button((std::string(name) + "Button").c_str()).isEnabled()) names += std::string(name) + " ";
    }
    return names;
  };
  EXPECT_EQ(enabled(), "next last edit ");
  click("editButton");
  EXPECT_EQ(enabled(), "next last save cancel ");
  click("lastButton");
  EXPECT_EQ(enabled(), "first previous edit ");
  find<QComboBox>("placeList").setFocus();
  press(Qt::Key_Down);
  EXPECT_EQ(position(), "INI file");
  EXPECT_EQ(enabled(), "edit ");
}

TEST_F(FacilityForm, OnlyAnEditOpensTheBoxesAndTheListOfAntennas) {
  const auto open = [this] {
    return std::vector<bool>{!find<QLineEdit>("SITE").isReadOnly(), !find<QLineEdit>("txtGain").isReadOnly(),
                             find<QLineEdit>("antennaFilter").isEnabled(), button("clearButton").isEnabled()};
  };
  EXPECT_THAT(open(), testing::Each(false));
  click("editButton");
  EXPECT_THAT(open(), testing::Each(true));
  click("cancelButton");
  EXPECT_THAT(open(), testing::Each(false));
}

TEST_F(FacilityForm, TheTitleNamesTheSiteAndMarksChanges) {
  EXPECT_THAT(window->windowTitle().toStdString(), StartsWith("Crestline Ridge[*]"));
  EXPECT_FALSE(window->isWindowModified());
  click("editButton");
  type("HEIGHT_M", "5");
  EXPECT_TRUE(window->isWindowModified());
  click("cancelButton");
  EXPECT_FALSE(window->isWindowModified());
  click("editButton");
  find<QLineEdit>("SITE").clear();
  QTest::keyClicks(&find<QLineEdit>("SITE"), "Elsewhere");
  EXPECT_THAT(window->windowTitle().toStdString(), StartsWith("Elsewhere[*]"));
}

TEST_F(FacilityForm, ClosingWithChangesAsks) {
  click("editButton");
  type("txtGain", "8");
  screen.answers = {MsgAnswer::cancel, MsgAnswer::yes};
  EXPECT_FALSE(window->close());
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(window->close());
  EXPECT_EQ(told().size(), 2U);
  EXPECT_EQ(stored("TX_A1GAIN"), Value(8.0));
}

TEST_F(FacilityForm, StayingWithTheChangesKeepsThePlaceShown) {
  click("editButton");
  type("txtGain", "8");
  screen.answers = {MsgAnswer::cancel};
  find<QComboBox>("placeList").setFocus();
  press(Qt::Key_Down);
  EXPECT_EQ(find<QComboBox>("placeList").currentText(), "Facility table");
  EXPECT_EQ(find<QLineEdit>("txtGain").text(), "8.00");
}

TEST_F(FacilityForm, ARefusedSavingIsShownAndListedAndTheFormStaysOpen) {
  const RecordsetPtr other = table();
  other->LockEdits(true);
  other->Edit();
  click("editButton");
  EXPECT_TRUE(lastDetail().contains("another program holds the row"));
  type("txtGain", "8");
  click("saveButton");
  EXPECT_THAT(told(), ElementsAre(HasSubstr("Error: 3211 ")));
  EXPECT_TRUE(lastDetail().contains("Error: 3211 "));
  EXPECT_TRUE(button("saveButton").isEnabled());
  EXPECT_EQ(find<QLineEdit>("txtGain").text(), "8.00");
}

TEST_F(FacilityForm, TheFrequencyIsTheHostsAndSavedWithTheRecord) {
  click("editButton");
  auto& spin = *find<QWidget>("frequencySpin").findChild<QLineEdit*>("qt_spinbox_lineedit");
  spin.setFocus();
  spin.selectAll();
  QTest::keyClicks(&spin, "460.125");
  click("saveButton");
  EXPECT_EQ(stored("TX_FREQMHZ"), Value(460.125));
}

TEST_F(FacilityForm, AnAntennaNamedAtTheStartStandsInTheRecordUnsaved) {
  const std::vector<double> angles = {0, 90, 180, 270}, values = {6, 0, -14, 0};
  ASSERT_EQ(HDwrtAntDBF("X0001", "Collinear", 6, "dBd", 4, angles, values, 4, angles, values, 450, 470), "");
  window = std::make_unique<DemoWindow>();
  EXPECT_FALSE(window->choose("AMSX0001", "nowhere"));
  EXPECT_FALSE(window->isWindowModified());
  EXPECT_TRUE(window->choose("AMSX0001", ""));
  EXPECT_EQ(window->control().sValueDesc(), "Collinear");
  EXPECT_TRUE(window->isWindowModified());
  EXPECT_TRUE(stored("TX_A1FNM").isNull());
  click("saveButton");
  EXPECT_EQ(text("TX_A1FNM"), "AMSX0001");
  // The list shows what the record names, and nothing for one without a library.
  EXPECT_TRUE(find<QTableView>("antennaList").selectionModel()->hasSelection());
  click("nextButton");
  EXPECT_FALSE(find<QTableView>("antennaList").selectionModel()->hasSelection());
  click("previousButton");
  EXPECT_TRUE(find<QTableView>("antennaList").selectionModel()->hasSelection());
}

}  // namespace
}  // namespace vantrelix::demo
