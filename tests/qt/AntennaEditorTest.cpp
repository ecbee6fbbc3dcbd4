// The antenna editor by the keyboard: moving, editing, sorting, ending.
#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>

#include "AntennaEditorFixture.h"
#include "qt/GridView.h"

namespace vantrelix::qt {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// --- Moving.

TEST_F(AntennaEditorTest, TheListHasTheKeyboardAndArrowsSelectAntennaByAntenna) {
  edit([this] {
    EXPECT_EQ(focused(), "TDBGridAMS");
    press(Qt::Key_Down);
    EXPECT_EQ(find<QLineEdit>("txtID").text(), "Ant ID: T00010000002");
    EXPECT_EQ(form().selectedRow(), 0);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(find<QLineEdit>("txtID").text(), "Ant ID: T00010000001");
    EXPECT_EQ(form().selectedRow(), 2);
    EXPECT_TRUE(list().selectionModel()->isRowSelected(2));
    press(Qt::Key_Up);
    EXPECT_EQ(find<QLineEdit>("txtID").text(), "Ant ID: T00010000003");
    EXPECT_EQ(form().azimuth.grid.dataRowCount(), 4);
    EXPECT_EQ(form().elevation.grid.dataRowCount(), 3);
  });
  EXPECT_THAT(desktop_.shown, IsEmpty());
}

TEST_F(AntennaEditorTest, TabRunsFromTheListThroughTheCutsToContinueAndCancel) {
  run("LOOKUP", 850, [this] {
    QStringList stops;
    find("txtFreqDelta").setFocus(Qt::TabFocusReason);
    for (int i = 0; i < 8; ++i) {
      stops << focused();
      press(Qt::Key_Tab);
    }
    EXPECT_EQ(stops, QStringList({"txtFreqDelta", "cboFreqDelta", "TDBGridAMS", "TDBGridAHD", "TDBGridAVD",
                                  "Command1_11", "Command1_12", "txtFreqDelta"}));
  });
}

TEST_F(AntennaEditorTest, TheEditorsButtonsFollowTheGridTheyActOn) {
  edit([this] {
    QStringList stops;
    find("Command1_0").setFocus(Qt::TabFocusReason);
    for (int i = 0; i < 3; ++i) {
      stops << focused();
      press(Qt::Key_Tab);
    }
    EXPECT_EQ(stops, QStringList({"Command1_0", "Command1_8", "Command1_7"}));
    EXPECT_EQ(focused(), "TDBGridAHD");
    stops.clear();
    find("Command1_9").setFocus(Qt::TabFocusReason);
    for (int i = 0; i < 3; ++i) {
      stops << focused();
      press(Qt::Key_Tab);
    }
    EXPECT_EQ(stops, QStringList({"Command1_9", "Command1_1", "Command1_5"}));
    EXPECT_EQ(focused(), "TDBGridAVD");
  });
}

TEST_F(AntennaEditorTest, InALookUpTypingFindsAnAntenna) {
  run("LOOKUP", 0, [this] {
    list().setFocus();
    type("pa");
    EXPECT_EQ(form().TDBGridAMS.currentRow(), 2);
    EXPECT_EQ(find<QLineEdit>("txtID").text(), "Ant ID: T00010000001");
    EXPECT_EQ(form().azimuth.grid.dataRowCount(), 4);
  });
}

TEST_F(AntennaEditorTest, CopyTakesTheSelectedRowToOtherPrograms) {
  edit([this] {
    press(Qt::Key_Down);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "Corner\t9.000\t824.000\t896.000");
  });
}

// --- Editing.

TEST_F(AntennaEditorTest, F2EditsAGainAndEnterStoresIt) {
  edit([this] {
    goTo(0, "GAIN");
    press(Qt::Key_F2);
    EXPECT_EQ(qobject_cast<QLineEdit*>(QApplication::focusWidget())->text(), "9.000");
    press(Qt::Key_A, Qt::ControlModifier);
    type("8.25");
    press(Qt::Key_Return);
    EXPECT_EQ(cell(0, "GAIN"), "8.250");
    EXPECT_EQ(form().TDBGridAMS.currentRow(), 1);
    EXPECT_THAT(rows("AMST0001", {"ANTENNA", "GAIN"}), ElementsAre("Panel|12.5", "Corner|8.25", "Dish|18"));
  });
  EXPECT_THAT(desktop_.shown, IsEmpty());
}

TEST_F(AntennaEditorTest, EscapeGivesUpTheCellThenTheRowThenTheEditor) {
  edit([this] {
    goTo(0, "GAIN");
    press(Qt::Key_F2);
    type("7");
    press(Qt::Key_Escape);
    EXPECT_EQ(cell(0, "GAIN"), "9.000");
    EXPECT_EQ(focused(), "TDBGridAMS");
    type("7");
    press(Qt::Key_Tab);
    EXPECT_EQ(cell(0, "GAIN"), "7.000");
    press(Qt::Key_Escape);
    EXPECT_EQ(cell(0, "GAIN"), "9.000");
    EXPECT_TRUE(form().visible());
    press(Qt::Key_Escape);
    EXPECT_FALSE(form().visible());
  });
  EXPECT_EQ(form().SessionResult, sessionResult::cancelled);
  EXPECT_THAT(rows("AMST0001", {"GAIN"}), ElementsAre("12.5", "9", "18"));
}

TEST_F(AntennaEditorTest, AWordForAGainStaysInTheCellAndTheReasonIsShownOnce) {
  edit([this] {
    goTo(0, "GAIN");
    press(Qt::Key_F2);
    press(Qt::Key_A, Qt::ControlModifier);
    type("loud");
    press(Qt::Key_Return);
    EXPECT_EQ(desktop_.shown.size(), 1U);
    EXPECT_EQ(cell(0, "GAIN"), "loud");
    EXPECT_EQ(form().TDBGridAMS.currentRow(), 0);
    EXPECT_EQ(focused(), "TDBGridAMS");
    EXPECT_THAT(rows("AMST0001", {"GAIN"}), ElementsAre("12.5", "9", "18"));
    // Mended, it goes through.
    press(Qt::Key_F2);
    press(Qt::Key_A, Qt::ControlModifier);
    type("8");
    press(Qt::Key_Return);
    EXPECT_EQ(cell(0, "GAIN"), "8.000");
    EXPECT_EQ(form().TDBGridAMS.currentRow(), 1);
  });
  EXPECT_EQ(desktop_.shown.size(), 1U);
}

TEST_F(AntennaEditorTest, AnEntryThatTheTableRefusesStaysInTheCellUntilItIsGivenUp) {
  edit([this] {
    goTo(1, "ANTENNA");
    const std::string tooWide(90, 'w');
    press(Qt::Key_F2);
    press(Qt::Key_A, Qt::ControlModifier);
    type(tooWide.c_str());
    press(Qt::Key_Up);
    EXPECT_EQ(desktop_.shown.size(), 1U);
    EXPECT_EQ(fromQt(cell(1, "ANTENNA")), tooWide);
    EXPECT_EQ(form().TDBGridAMS.currentRow(), 1);
    press(Qt::Key_Escape);
    EXPECT_EQ(cell(1, "ANTENNA"), "Dish");
    press(Qt::Key_Up);
    EXPECT_EQ(form().TDBGridAMS.currentRow(), 0);
  });
  EXPECT_EQ(desktop_.shown.size(), 1U);
}

TEST_F(AntennaEditorTest, AnAntennaTypedIntoTheBlankRowGetsItsIDAndIsSelected) {
  edit([this] {
    press(Qt::Key_Down);
    press(Qt::Key_End, Qt::ControlModifier);
    press(Qt::Key_Down);
    press(Qt::Key_Home);
    type("Yagi");
    press(Qt::Key_Return);
    EXPECT_THAT(descriptions(), ElementsAre("Corner", "Dish", "Panel", "Yagi"));
    EXPECT_EQ(window().windowTitle(), "Antenna Database Editor: Test Library (AMST0001)  4 records");
    EXPECT_TRUE(form().TDBGridAMS.isAddRow(4));
  });
  EXPECT_THAT(rows("AMST0001", {"ATYPE_ID", "ANTENNA"}).back(), "T00010000005|Yagi");
  EXPECT_THAT(desktop_.shown, IsEmpty());
}

TEST_F(AntennaEditorTest, InALookUpNothingCanBeEdited) {
  run("LOOKUP", 0, [this] {
    goTo(0, "GAIN");
    press(Qt::Key_F2);
    EXPECT_EQ(focused(), "TDBGridAMS");
    for (const int index : {0, 1, 4, 5, 6, 7, 8, 9, 10}) {
      EXPECT_FALSE(find("Command1_" + std::to_string(index)).isEnabled()) << index;
    }
  });
}

// --- Order.

TEST_F(AntennaEditorTest, AHeadingSortsTheListUpThenDown) {
  edit([this] {
    QHeaderView& head = *list().horizontalHeader();
    const int gain = form().TDBGridAMS.columnOf("GAIN");
    const auto click = [&] {
      QTest::mouseClick(head.viewport(), Qt::LeftButton, {}, {head.sectionViewportPosition(gain) + 15, 5});
    };
    click();
    EXPECT_THAT(descriptions(), ElementsAre("Corner", "Panel", "Dish"));
    EXPECT_EQ(head.sortIndicatorSection(), gain);
    EXPECT_EQ(head.sortIndicatorOrder(), Qt::AscendingOrder);
    click();
    EXPECT_THAT(descriptions(), ElementsAre("Dish", "Panel", "Corner"));
    EXPECT_EQ(head.sortIndicatorOrder(), Qt::DescendingOrder);
    list().setFocus();
    press(Qt::Key_Down);
    EXPECT_EQ(find<QLineEdit>("txtID").text(), "Ant ID: T00010000003");
  });
}

TEST_F(AntennaEditorTest, TheMenuBarTurnsTheOrderOfTheElevations) {
  edit([this] {
    auto* bar = window().findChild<QMenuBar*>();
    ASSERT_NE(bar, nullptr);
    EXPECT_TRUE(bar->isVisible());
    ASSERT_EQ(bar->actions().size(), 1);
    EXPECT_EQ(bar->actions()[0]->text(), "&Configure");
    const auto* sort = bar->actions()[0]->menu()->actions()[0]->menu();
    ASSERT_NE(sort, nullptr);
    QAction& up = *sort->actions()[0];
    QAction& down = *sort->actions()[1];
    EXPECT_EQ(up.text(), "Ascending");
    EXPECT_TRUE(up.isChecked());
    EXPECT_FALSE(down.isChecked());
    down.trigger();
    EXPECT_EQ(form().VertSort, "DESC");
  });
}

// --- Ending.

TEST_F(AntennaEditorTest, ContinueTakesTheSelectedAntenna) {
  edit([this] {
    press(Qt::Key_Down);
    press(Qt::Key_N, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !form().visible(); }));
  });
  EXPECT_EQ(form().SessionResult, sessionResult::ended);
  EXPECT_EQ(form().SelID, "T00010000002");
  EXPECT_EQ(form().SelAntenna, "CORNER");
}

TEST_F(AntennaEditorTest, EnterInTheListOfALookUpContinues) {
  run("LOOKUP", 0, [this] {
    press(Qt::Key_Down);
    press(Qt::Key_Return);
  });
  EXPECT_EQ(form().SelID, "T00010000002");
}

TEST_F(AntennaEditorTest, AltPressesEachButtonThatCanBePressed) {
  edit([this] {
    QStringList keys;
    for (const auto* button : window().findChildren<QPushButton*>()) {
      if (!button->isVisible()) continue;
      keys << QKeySequence::mnemonic(button->text()).toString();
      EXPECT_FALSE(keys.last().isEmpty()) << button->objectName().toStdString();
      EXPECT_FALSE(button->toolTip().isEmpty()) << button->objectName().toStdString();
    }
    EXPECT_EQ(keys.size(), 11);
    keys << QKeySequence::mnemonic(window().findChild<QMenuBar*>()->actions()[0]->text()).toString();
    EXPECT_EQ(keys.removeDuplicates(), 0);
  });
}

TEST_F(AntennaEditorTest, TheCloseBoxOfALookUpAsksAndNoKeepsItOpen) {
  run("LOOKUP", 0, [this] {
    desktop_.answers = {MsgAnswer::no, MsgAnswer::yes};
    window().close();
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(form().SessionResult, sessionResult::lookingUp);
    window().close();
    EXPECT_FALSE(form().visible());
  });
  EXPECT_EQ(form().SessionResult, sessionResult::cancelled);
  const std::string question = "CANCEL Lookup?: Do you want to CANCEL this antenna lookup?";
  EXPECT_THAT(desktop_.shown, ElementsAre(question, question));
}

TEST_F(AntennaEditorTest, TheCancelButtonAndTheEditorAskNothing) {
  run("LOOKUP", 0, [this] {
    press(Qt::Key_L, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !form().visible(); }));
  });
  EXPECT_EQ(form().SessionResult, sessionResult::cancelled);
  edit([this] { window().close(); });
  EXPECT_EQ(form().SessionResult, sessionResult::ended);
  EXPECT_THAT(desktop_.shown, IsEmpty());
}

// --- The item models.

class EditorItems : public AntennaEditorTest {
 protected:
  using Tester = QAbstractItemModelTester;

  template <class User>
  void checked(const std::string& mode, User user) {
    run(mode, 850, [this, user] {
      std::vector<std::unique_ptr<Tester>> testers;
      for (const char* grid : {"TDBGridAMS", "TDBGridAHD", "TDBGridAVD"}) {
        auto* items = find<QTableView>(grid).model();
        testers.push_back(std::make_unique<Tester>(items, Tester::FailureReportingMode::Fatal));
      }
      user();
    });
  }
};

TEST_F(EditorItems, PassTheToolkitsChecksOverMovesEditsAndSorts) {
  for (const char* mode : {" ", "LOOKUP"}) {
    checked(mode, [this] {
      goTo(1, "GAIN");
      type("3");
      press(Qt::Key_Tab);
      press(Qt::Key_Escape);
      form().TDBGridAMS.userHeadClick(form().TDBGridAMS.columnOf("F_LOW"));
      press(Qt::Key_Down);
      list().setFocus();
      press(Qt::Key_End, Qt::ControlModifier);
      press(Qt::Key_Down);
      type("New");
      press(Qt::Key_Up);
    });
  }
}

TEST_F(EditorItems, PassThemWhereAnotherProgramTookRowsAway) {
  checked(" ", [this] {
    goTo(2, "ANTENNA");
    take("AMST0001", "Dish");
    form().DataAMS.Requery();
    EXPECT_THAT(descriptions(), ElementsAre("Corner", "Panel"));
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_EQ(form().TDBGridAMS.currentRow(), 0);
  });
}

TEST_F(EditorItems, PassThemOnAnEmptyLibraryAndItsFirstAntenna) {
  take("AMST0001");
  checked("LOOKUP", [this] { EXPECT_EQ(list().model()->rowCount(), 0); });
  checked(" ", [this] {
    EXPECT_EQ(list().model()->rowCount(), 1);
    press(Qt::Key_Down);
    type("First");
    press(Qt::Key_Return);
    EXPECT_THAT(descriptions(), ElementsAre("First"));
  });
}

}  // namespace
}  // namespace vantrelix::qt
