#include <gtest/gtest.h>
#include <iostream>
#include <sstream>

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include "antenna/hdWrtAntDBF.h"
#include "controls/LibraryUser.h"
#include "demo/AntennaTable.h"
#include "demo/DemoOptions.h"
#include "demo/DemoWindow.h"
#include "foundation/extract.h"
#include "qt/LookAnt.h"
#include "qt/LookAntDesc.h"
#include "support/TempSuite.h"
#include "tables/installSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::demo {
namespace {

void store(const std::string& name, double gain) {
  const std::vector<double> angles = {0, 90, 180, 270};
  const std::vector<double> values = {gain, gain - 6, gain - 20, gain - 6};
  ASSERT_EQ(HDwrtAntDBF("X0001", name, gain, "dBd", 4, angles, values, 4, angles, values, 450, 470), "");
}

class DemoForm : public testing::Test {
 protected:
  DemoForm() {
    installSuite(suite_.path());
    store("Collinear", 6);
    store("Panel 120", 12.5);
    window_ = std::make_unique<DemoWindow>();
    window_->show();
    window_->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    find<QPushButton>("editButton").click();
  }

  template <class Kind>
  Kind& find(const char* name) {
    // The line controls have widgets of the same names.
    Kind* inAntenna = window_->control().findChild<Kind*>(name);
    return inAntenna ? *inAntenna : *window_->findChild<Kind*>(name);
  }
  QTableView& list() { return find<QTableView>("antennaList"); }
  void clickRow(int row) {
    const QRect cell = list().visualRect(list().model()->index(row, 0));
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, cell.center());
  }
  QStringList events() {
    QStringList names;
    auto& tree = find<QTreeWidget>("eventList");
    for (int i = 0; i < tree.topLevelItemCount(); ++i) names << tree.topLevelItem(i)->text(2);
    return names;
  }

  test::TempSuite suite_;
  ScriptedDesktop desktop_;
  DesktopInUse inUse_{desktop_};
  std::unique_ptr<DemoWindow> window_;
};

TEST_F(DemoForm, ShowsTheAntennaThatIsChosenWithBothPatterns) {
  ASSERT_EQ(list().model()->rowCount(), 2);
  clickRow(1);
  const qt::LookAnt& look = window_->control();
  EXPECT_EQ(find<QLineEdit>("txtDesc").text(), "Panel 120");
  EXPECT_EQ(find<QLineEdit>("txtGain").text(), "12.50");
  EXPECT_EQ(find<QLineEdit>("txtFile").text(), "AMSX0001");
  EXPECT_TRUE(look.bPatAz() && look.bPatEl());
  EXPECT_TRUE(window_->values().contains("12.50 dBd"));
  EXPECT_TRUE(find<QLabel>("suiteLabel").text().contains(QString::fromStdString(displayPath(suite_.path()))));
}

TEST_F(DemoForm, ListsTheControlsEventsAsTheyComeNewestLast) {
  clickRow(0);
  auto& orient = find<QLineEdit>("txtOrient");
  orient.setFocus(Qt::TabFocusReason);
  QTest::keyClicks(&orient, "45");
  find<QLineEdit>("txtMAzim").setFocus(Qt::TabFocusReason);
  EXPECT_EQ(events().last(), "ChangeMounting");
  QTest::mouseClick(window_->findChild<QLabel*>("lblPreview"), Qt::LeftButton);
  EXPECT_EQ(events().last(), "ChangeSize");
  EXPECT_FALSE(find<QCheckBox>("previewBox").isChecked());
}

TEST_F(DemoForm, TheFilterNarrowsTheListAndEnterChooses) {
  auto& filter = find<QLineEdit>("antennaFilter");
  filter.setFocus();
  QTest::keyClicks(&filter, "panel");
  EXPECT_EQ(list().model()->rowCount(), 1);
  EXPECT_EQ(find<QLabel>("libraryNote").text(), "1 of 2 antennas");
  QTest::keyClick(&filter, Qt::Key_Return);
  EXPECT_EQ(window_->control().sValueDesc(), "Panel 120");
}

TEST_F(DemoForm, TheValuesCanBeClearedInAnEditAlone) {
  clickRow(1);
  find<QPushButton>("clearButton").click();
  EXPECT_EQ(window_->control().sValueDesc(), "");
  EXPECT_EQ(events().last(), "Clear, GetAntPat");
  find<QPushButton>("cancelButton").click();
  EXPECT_FALSE(find<QPushButton>("clearButton").isEnabled());
  EXPECT_EQ(window_->control().sValueDesc(), "Collinear, 4 elements");
}

TEST_F(DemoForm, ABearingIsMarkedOnThePreview) {
  clickRow(0);
  const auto before = window_->control().control().picHor.lines().size();
  find<QPushButton>("markAzimuthButton").click();
  EXPECT_EQ(window_->control().control().picHor.lines().size(), before + 1);
  EXPECT_EQ(events().last(), "SeeAzimuth 45");
}

TEST_F(DemoForm, TheLibraryPanelFollowsTheLookUp) {
  clickRow(0);
  test::LibraryUser::takes(desktop_, 1);
  QTest::mouseClick(&find<QPushButton>("cmdLook"), Qt::LeftButton);
  EXPECT_EQ(window_->control().sValueDesc(), "Panel 120");
  EXPECT_EQ(events().last(), "ChangeAntenna");
  EXPECT_EQ(list().currentIndex().row(), 1);
  test::LibraryUser::takes(desktop_, 0);
  find<QTabWidget>("toolTabs").setCurrentIndex(2);
  QTest::mouseClick(window_->antennaName().findChild<QPushButton*>("cmdLook"), Qt::LeftButton);
  EXPECT_EQ(window_->control().sValueDesc(), "Collinear");
  EXPECT_EQ(list().currentIndex().row(), 0);
}

TEST_F(DemoForm, ALookUpThatMakesAnAntennaShowsItInThePanel) {
  clickRow(0);
  test::LibraryUser::comesTo(desktop_, [](frmHDAntEditor& editor) {
    store("Beam", 3);
    editor.DataAMS.Refresh();
    editor.TDBGridAMS.userSelectRow(0);
    editor.Command1[frmHDAntEditor::continuing].userClick();
  });
  find<QCheckBox>("editModeBox").click();
  QTest::mouseClick(&find<QPushButton>("cmdLook"), Qt::LeftButton);
  EXPECT_EQ(window_->control().sValueDesc(), "Beam");
  EXPECT_EQ(list().model()->rowCount(), 3);
  ASSERT_TRUE(list().currentIndex().isValid());
  EXPECT_EQ(list().currentIndex().siblingAtColumn(0).data(), "Beam");
}

TEST_F(DemoForm, ACancelledLookUpChangesNothing) {
  clickRow(0);
  test::LibraryUser::cancels(desktop_);
  QTest::mouseClick(&find<QPushButton>("cmdLook"), Qt::LeftButton);
  EXPECT_EQ(window_->control().sValueDesc(), "Collinear");
}

TEST_F(DemoForm, TheUserChoosesBetweenLookUpAndEditor) {
  test::EditorOpened editor;
  editor.watch(desktop_);
  const auto modes = [&] {
    std::string all;
    find<QTabWidget>("toolTabs").setCurrentIndex(2);
    for (QWidget* control : std::initializer_list<QWidget*>{&window_->control(), &window_->antennaName()}) {
      QTest::mouseClick(control->findChild<QPushButton*>("cmdLook"), Qt::LeftButton);
      all += "[" + editor.mode + "]";
    }
    return all;
  };
  EXPECT_EQ(modes(), "[LOOKUP][LOOKUP]");
  find<QCheckBox>("editModeBox").click();
  EXPECT_EQ(events().last(), "AntFormMode = eEdit");
  EXPECT_EQ(modes(), "[ ][ ]");
  find<QCheckBox>("editModeBox").click();
  EXPECT_EQ(modes(), "[LOOKUP][LOOKUP]");
}

TEST_F(DemoForm, AfterClearingTheSameAntennaCanBeChosenAgain) {
  clickRow(0);
  desktop_.answers = {MsgAnswer::ok};
  QTest::mouseClick(&find<QPushButton>("cmdClear"), Qt::LeftButton);
  EXPECT_TRUE(list().selectionModel()->selectedRows().isEmpty());
  EXPECT_FALSE(find<QLineEdit>("txtOrient").isEnabled());
  const auto& tree = find<QTreeWidget>("eventList");
  EXPECT_EQ(tree.topLevelItem(tree.topLevelItemCount() - 1)->text(3), "no gain");
  clickRow(0);
  EXPECT_TRUE(find<QLineEdit>("txtOrient").isEnabled());
  EXPECT_FALSE(window_->control().control().cboPol.locked());
  EXPECT_EQ(window_->control().sValueDesc(), "Collinear");
}

TEST_F(DemoForm, TabReachesEverythingAndRunsThroughTheControlInItsOrder) {
  QStringList names;
  QWidgetList stops;
  QWidget* const first = &find<QLineEdit>("SITE");
  first->setFocus(Qt::TabFocusReason);
  do {
    stops << QApplication::focusWidget();
    names << stops.last()->objectName();
    QTest::keyClick(stops.last(), Qt::Key_Tab);
  } while (QApplication::focusWidget() != first && names.size() < 100);
  const QStringList line = {"LONGITUDE", "txtDesc", "txtLen", "cboUnit", "cmdLook", "txtLoss"};
  EXPECT_EQ(names.mid(names.indexOf("LONGITUDE"), line.size()), line);
  const QStringList control = {"txtDesc",  "txtGain",  "cboUnit",  "cmdClear",  "cmdLook", "txtOrient",
                               "txtETilt", "txtMTilt", "txtMAzim", "chkInvert", "cboPol",  "lblPreview"};
  EXPECT_EQ(names.mid(names.lastIndexOf("txtDesc"), control.size()), control);
  for (const QWidget* widget : window_->findChildren<QWidget*>()) {
    const bool stop = (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isVisible() && widget->isEnabled();
    if (stop && !widget->objectName().startsWith("qt_")) {
      EXPECT_TRUE(stops.contains(widget) || stops.contains(widget->focusProxy())) << widget->objectName().toStdString();
    }
  }
}

TEST_F(DemoForm, NoTwoCaptionsShareAMnemonic) {
  QStringList keys;
  const auto note = [&keys](const QString& caption) {
    const QKeySequence key = QKeySequence::mnemonic(caption);
    if (!key.isEmpty()) keys << key.toString();
  };
  for (const QAbstractButton* button : window_->findChildren<QAbstractButton*>()) note(button->text());
  for (const QLabel* label : window_->findChildren<QLabel*>()) {
    if (label->buddy()) note(label->text());
  }
  EXPECT_GE(keys.size(), 15);
  EXPECT_EQ(keys.removeDuplicates(), 0);
}

TEST_F(DemoForm, TheListShowsDescriptionsInFullAndNeverCrushesThem) {
  store("Sample collinear 8 elements 450 MHz", 9);
  window_ = std::make_unique<DemoWindow>();
  window_->resize(window_->sizeHint());
  window_->show();
  const QAbstractItemView& view = list();
  const auto shownWhole = [&] { return list().columnWidth(0) >= view.sizeHintForColumn(0); };
  EXPECT_TRUE(QTest::qWaitFor(shownWhole));
  EXPECT_TRUE(QTest::qWaitFor([this] { return !list().horizontalScrollBar()->isVisible(); }));
  window_->resize(window_->minimumSizeHint());
  EXPECT_TRUE(QTest::qWaitFor([this] { return list().horizontalScrollBar()->isVisible(); }));
  EXPECT_TRUE(shownWhole());
}

// A screen of 1280 by 720 has room for it under a title bar and above a task bar.
TEST_F(DemoForm, FitsASmallScreenWithATextOfNinePoints) {
  const QFont former = QApplication::font();
  QFont nine = former;
  nine.setPointSize(9);
  QApplication::setFont(nine);
  window_ = std::make_unique<DemoWindow>();
  window_->show();
  const QSize least = window_->minimumSizeHint();
  QApplication::setFont(former);
  EXPECT_LE(least.width(), 1240);
  EXPECT_LE(least.height(), 660);
}

TEST(AntennaTable, IsASoundItemModel) {
  AntennaTable table;
  const QAbstractItemModelTester tester(&table, QAbstractItemModelTester::FailureReportingMode::Fatal);
  table.setAntennas({{"X1", "Dish", 30, "dBi", 5900, 6400, "MHz", 360, 360}});
  EXPECT_EQ(table.index(0, AntennaTable::gain).data().toString(), "30.00 dBi");
  EXPECT_EQ(table.rowOf("X1"), 0);
  EXPECT_EQ(table.rowOf("X2"), -1);
}

TEST(DemoOptions, ReadsWhatTheProgramTakesAndRefusesTheRest) {
  DemoOptions options;
  EXPECT_EQ(readCommandLine({"demo", "--picture", "a.png", "--scale", "2", "--dark"}, options), CommandLine::run);
  EXPECT_EQ(options.picture, "a.png");
  EXPECT_EQ(options.scale, 2);
  EXPECT_TRUE(options.dark && options.withoutWindow());
  EXPECT_EQ(readCommandLine({"demo", "--scale", "0"}, options), CommandLine::wrong);
  EXPECT_EQ(readCommandLine({"demo", "file"}, options), CommandLine::wrong);
}

TEST(DemoOptions, TheHelpNamesTheProgram) {
  DemoOptions options;
  std::ostringstream help;
  std::streambuf* former = std::cout.rdbuf(help.rdbuf());
  EXPECT_EQ(readCommandLine({"/any/where/demo", "--help"}, options), CommandLine::finished);
  std::cout.rdbuf(former);
  EXPECT_EQ(help.str().substr(0, help.str().find('\n')), "Usage: vantrelix-demo [options]");
}

TEST(DemoOptions, AnInstallationFolderThatIsMissingIsNamedWithTheRemedy) {
  const test::TempSuite suite;
  DemoOptions options;
  options.suite = QString::fromStdString(suite.folder().machine("nowhere"));
  const std::string wrong = useSuite(options);
  EXPECT_NE(wrong.find(suite.folder().machine("nowhere")), std::string::npos);
  EXPECT_NE(wrong.find("vantrelix suite init"), std::string::npos);
}

}  // namespace
}  // namespace vantrelix::demo
