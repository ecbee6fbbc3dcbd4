// The whole road of a look-up by mouse and keyboard: the host's button, the list of libraries, the editor, the control,
// the facility table.
#include <gmock/gmock.h>

#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "antenna/hdWrtAntDBF.h"
#include "demo/DemoWindow.h"
#include "foundation/getINI.h"
#include "qt/FacilityFixture.h"
#include "qt/LookAnt.h"
#include "qt/LookAntDesc.h"
#include "qt/QtDesktop.h"
#include "qt/otherProgram.h"

namespace vantrelix::demo {
namespace {

using testing::HasSubstr;

class LookAntLook : public test::FacilityTest {
 protected:
  LookAntLook() {
    store("Collinear", 6);
    store("Panel 120", 12.5);
    setINI("ANTENNAS\\AMS?????.DBF", "AMSX0001.DBF", getAntennasPath() + "\\QVAliasANT.INI", "Measured panels");
    // Whether an antenna is sound is the editor's to know.
    setINI("HDAntenna", "SkipValid", getDefaultsINI(), "-1");
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::mouseClick(window.findChild<QPushButton*>("editButton"), Qt::LeftButton);
    user.setInterval(10);
    QObject::connect(&user, &QTimer::timeout, [this] { actOnDialog(); });
  }

  static void store(const std::string& name, double gain) {
    const std::vector<double> angles = {0, 90, 180, 270}, values = {gain, gain - 6, gain - 20, gain - 6};
    ASSERT_EQ(HDwrtAntDBF("X0001", name, gain, "dBd", 4, angles, values, 4, angles, values, 450, 470), "");
  }
  static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

  void showOneLine() { window.findChild<QTabWidget*>("toolTabs")->setCurrentIndex(2); }
  // Clicks a look-up's button and goes through its windows.
  void look(QWidget& control) {
    user.start();
    QTest::mouseClick(control.findChild<QPushButton*>("cmdLook"), Qt::LeftButton);
    user.stop();
  }
  void actOnDialog() {
    const QPointer<QWidget> dialog = QApplication::activeModalWidget();
    // It has the keyboard before the user acts.
    if (!dialog || !dialog->isActiveWindow() || !dialog->isAncestorOf(QApplication::focusWidget())) return;
    user.stop();
    titles << dialog->windowTitle();
    if (dialog->findChild<QTableView*>("TDBGrid1")) {
      chooseLibrary();
    } else {
      chooseAntenna(*dialog);
    }
    EXPECT_TRUE(!dialog || !dialog->isVisible()) << titles.last().toStdString();
    user.start();
  }
  static void chooseLibrary() {
    if (QApplication::focusWidget()->objectName() == "TDBGrid1") press(Qt::Key_Down);
    press(Qt::Key_Return);
  }
  void chooseAntenna(QWidget& editor) const {
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "TDBGridAMS");
    for (int i = 0; i < steps; ++i) press(Qt::Key_Down);
    if (inEditor) inEditor(*editor.findChild<QTableView*>("TDBGridAMS"));
    auto* leave = editor.findChild<QPushButton*>(continues ? "Command1_11" : "Command1_12");
    leave->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
  }

  qt::QtDesktop desktop_;
  DesktopInUse qtInUse{desktop_};
  DemoWindow window;
  QTimer user;
  QStringList titles;
  int steps = 2;
  bool continues = true;
  // What the user does in the list before leaving.
  std::function<void(QTableView&)> inEditor;
};

TEST_F(LookAntLook, LeadsFromTheButtonIntoTheFacilityTable) {
  look(window.control());
  ASSERT_EQ(titles.size(), 2) << titles.join("; ").toStdString();
  EXPECT_EQ(titles[0], "Antenna Library to Open - 1 files");
  EXPECT_TRUE(titles[1].startsWith("Antenna Database Lookup: Measured panels (AMSX0001)"));
  EXPECT_EQ(window.control().findChild<QLineEdit*>("txtDesc")->text(), "Panel 120");
  EXPECT_EQ(window.control().findChild<QLineEdit*>("txtGain")->text(), "12.50");
  EXPECT_EQ(window.antennaName().findChild<QLineEdit*>("txtDesc")->text(), "Panel 120");
  QTest::mouseClick(window.findChild<QPushButton*>("saveButton"), Qt::LeftButton);
  EXPECT_EQ(text("TX_A1FNM") + "|" + text("TX_A1TID") + "|" + text("TX_A1TYP"), "AMSX0001|X00010000002|Panel 120");
  EXPECT_EQ(stored("TX_A1GAIN"), Value(12.5));
  const std::string dump =
      vantrelix::test::runOther(VANTRELIX_BINARY_DIR "/bin/vantrelix",
                                {"table", "dump", QString::fromStdString(suite.folder().machine("FACILITY.DBF"))});
  EXPECT_THAT(dump, HasSubstr("X00010000002"));
}

TEST_F(LookAntLook, LeadsThroughAnEditInDisplayUnitsIntoTheRowsOwn) {
  const std::vector<double> angles = {0, 180}, values = {9, 0};
  ASSERT_EQ(HDwrtAntDBF("X0001", "Yagi of another band", 9, "dBd", 2, angles, values, 2, angles, values, 806, 960), "");
  setINI("System Units", "Antenna Gain Units", getDefaultsINI(), "dBi");
  resetSuitePaths();
  window.control().sValueFreq(460);
  window.control().AntFormMode(eEdit);
  inEditor = [](QTableView& list) {
    const auto text = [&](int row, int column) { return list.model()->index(row, column).data().toString(); };
    const auto coloured = [&](int row) {
      return list.model()->index(row, 1).data(Qt::BackgroundRole).value<QBrush>().color() == QColor(255, 128, 128);
    };
    EXPECT_EQ(text(1, 1), "Panel 120");
    EXPECT_EQ(text(1, 2), "14.650");
    EXPECT_FALSE(coloured(0) || coloured(1));
    EXPECT_TRUE(coloured(2));
    press(Qt::Key_Right);
    press(Qt::Key_F2);
    press(Qt::Key_Home);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), "15.15");
    press(Qt::Key_Return);
    EXPECT_EQ(text(1, 2), "15.150");
    press(Qt::Key_Up);
  };
  look(window.control());
  ASSERT_EQ(titles.size(), 2);
  EXPECT_TRUE(titles[1].startsWith("Antenna Database Editor: Measured panels (AMSX0001)"));
  QTest::mouseClick(window.findChild<QPushButton*>("saveButton"), Qt::LeftButton);
  EXPECT_EQ(text("TX_A1TID") + "|" + text("TX_A1TYP"), "X00010000002|Panel 120");
  const RecordsetPtr rows = DBEngine::OpenDatabase(getAntennasPath())
                                ->OpenRecordset("select * from AMSX0001 where ATYPE_ID = 'X00010000002'");
  EXPECT_EQ(rows->value("GAIN").asNumber(), 13);
  EXPECT_EQ(rows->value("GAIN_UN").asText().substr(0, 3), "dBd");
}

TEST_F(LookAntLook, BeginsTheNextTimeOnWhatWasChosen) {
  look(window.control());
  titles.clear();
  steps = 0;
  look(window.control());
  EXPECT_EQ(titles.size(), 2);
  EXPECT_EQ(window.control().sValueID(), "X00010000002");
}

TEST_F(LookAntLook, CancelledInTheEditorChangesNothing) {
  continues = false;
  look(window.control());
  EXPECT_EQ(titles.size(), 2);
  EXPECT_EQ(window.control().sValueDesc(), "Collinear, 4 elements");
  EXPECT_EQ(window.control().sValueFile(), "");
}

TEST_F(LookAntLook, LeadsFromTheOneLineIntoTheFacilityTableToo) {
  steps = 1;
  showOneLine();
  look(window.antennaName());
  EXPECT_EQ(window.antennaName().sValueDesc(), "Collinear");
  EXPECT_EQ(window.control().sValueGain(), "6.00");
  QTest::mouseClick(window.findChild<QPushButton*>("saveButton"), Qt::LeftButton);
  EXPECT_EQ(text("TX_A1TID") + "|" + text("TX_A1TYP"), "X00010000001|Collinear");
}

}  // namespace
}  // namespace vantrelix::demo
