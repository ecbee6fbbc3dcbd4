// A person with both line controls of the demo host, and what other programs then read from the table.
#include <gmock/gmock.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include "controls/LineFixture.h"
#include "demo/DemoWindow.h"
#include "demo/LineControls.h"
#include "foundation/suitePaths.h"
#include "qt/LookAnt.h"
#include "qt/LookLine.h"
#include "qt/LookLineALL.h"
#include "qt/QtDesktop.h"
#include "qt/otherProgram.h"

namespace vantrelix::demo {
namespace {

using testing::HasSubstr;

class DemoLines : public vantrelix::test::LineTest {
 protected:
  DemoLines() {
    makeLines();
    window = std::make_unique<DemoWindow>();
    window->show();
    activate();
  }

  void activate() {
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }
  qt::LookLine& line() { return window->lines().line(); }
  qt::LookLineALL& calculator() { return window->lines().calculator(); }
  template <class Kind = QLineEdit>
  Kind& in(QWidget& control, const char* name) {
    return *control.findChild<Kind*>(name);
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  void type(QLineEdit& box, const char* text) {
    box.setFocus(Qt::TabFocusReason);
    box.selectAll();
    QTest::keyClicks(&box, text);
  }
  void setFrequency(const char* megahertz) {
    type(in(in<QWidget>(*window, "frequencySpin"), "qt_spinbox_lineedit"), megahertz);
  }
  QString shown() {
    return QStringList{line().sValueFile(), line().sValueID(),   line().sValueDesc(),
                       line().sValueLen(),  line().sValueUnit(), line().sValueLoss()}
        .join('|');
  }
  // Of the last event of that control: "what: detail".
  std::string lastOf(const QString& control) {
    const auto& tree = in<QTreeWidget>(*window, "eventList");
    std::string last;
    for (int i = 0; i < tree.topLevelItemCount(); ++i) {
      const QTreeWidgetItem& item = *tree.topLevelItem(i);
      if (item.text(1) == control) last = (item.text(2) + ": " + item.text(3)).toStdString();
    }
    return last;
  }
  std::string alerts() { return in<QPlainTextEdit>(*window, "alertText").toPlainText().toStdString(); }

  std::unique_ptr<DemoWindow> window;
};

TEST_F(DemoLines, ALineIsPickedMeasuredSavedAndFoundAgainByKeyboardAlone) {
  qt::QtDesktop real;
  const DesktopInUse inUse(real);
  press(Qt::Key_E, Qt::ControlModifier);
  in(line(), "txtDesc").setFocus(Qt::TabFocusReason);
  for (int stop = 0; stop < 3; ++stop) press(Qt::Key_Tab);
  ASSERT_EQ(QApplication::focusWidget()->objectName(), "cmdLook");
  QTimer::singleShot(0, [] {
    QWidget* list = QApplication::activeModalWidget();
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->windowTitle(), "Select Transmission Line");
    ASSERT_TRUE(QTest::qWaitForWindowActive(list));
    auto* lines = list->findChild<QListWidget*>("List1");
    ASSERT_EQ(lines->count(), 2);
    lines->setFocus(Qt::TabFocusReason);
    // The first leads to the first line, for none is current.
    for (int step = 0; step < 2; ++step) QTest::keyClick(lines, Qt::Key_Down);
    EXPECT_EQ(list->findChild<QLabel*>("Label1")->text(), "100 MHz to 1000 MHz");
    QTest::keyClick(lines, Qt::Key_Return);
  });
  press(Qt::Key_Space);
  activate();
  EXPECT_EQ(line().sValueDesc(), "Half inch foam");
  EXPECT_THAT(lastOf("line"), HasSubstr("ChangeLine: Half inch foam, 48.00 m, "));
  type(in(line(), "txtLen"), "45.72");
  press(Qt::Key_Tab);
  ASSERT_EQ(QApplication::focusWidget()->objectName(), "cboUnit");
  press(Qt::Key_Home);  // ft
  EXPECT_EQ(line().sValueLen(), "150.00");
  setFrequency("100");
  EXPECT_EQ(shown(), "LMST0001|L2|Half inch foam|150.00|ft|3.00");
  EXPECT_EQ(in<QLabel>(line(), "lblFreq").text(), "100.00MHz");
  setFrequency("1000");
  EXPECT_EQ(line().sValueLoss(), "30.00");
  press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_TRUE(line().Locked());

  const std::string dump = vantrelix::test::runOther(
      VANTRELIX_BINARY_DIR "/bin/vantrelix",
      {"--json", "table", "dump", QString::fromStdString(suite.folder().machine("FACILITY.DBF"))});
  const std::string row = dump.substr(0, dump.find("Harbour Point"));
  for (const char* field :
       {"\"TX_L1FNM\": \"LMST0001\"", "\"TX_L1TID\": \"L2\"", "\"TX_L1TYP\": \"Half inch foam\"", "\"TX_L1LEN\": 150",
        "\"TX_L1LENUN\": \"ft\"", "\"TX_L1LOS\": 30", "\"TX_FREQMHZ\": 1000"}) {
    EXPECT_THAT(row, HasSubstr(field));
  }

  press(Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(shown(), "LMSX0001|F12|1/2 in foam, 50 ohm|33|m|0.90");
  press(Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(shown(), "LMST0001|L2|Half inch foam|150|ft|30.00");
  EXPECT_EQ(alerts(), "");
}

TEST_F(DemoLines, ALossThatIsTypedIsSavedWithoutALibrary) {
  press(Qt::Key_E, Qt::ControlModifier);
  type(in(line(), "txtLoss"), "2.5");
  EXPECT_EQ(line().sValueDesc(), "Specified Loss");
  EXPECT_TRUE(window->isWindowModified());
  press(Qt::Key_S, Qt::ControlModifier);
  press(Qt::Key_Right, Qt::AltModifier);
  press(Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(shown(), "||Specified Loss|48|m|2.50");
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(DemoLines, AnEditThatIsCancelledBringsTheLineBack) {
  const QString before = shown();
  press(Qt::Key_E, Qt::ControlModifier);
  type(in(line(), "txtLoss"), "9");
  press(Qt::Key_Escape);
  EXPECT_EQ(shown(), before);
  EXPECT_TRUE(in(line(), "txtLen").isReadOnly());
  EXPECT_FALSE(in<QPushButton>(line(), "cmdLook").isEnabled());
}

TEST_F(DemoLines, AlertsNameTheirControlAndCanBeCleared) {
  press(Qt::Key_E, Qt::ControlModifier);
  type(in(line(), "txtLen"), "50");  // of a library that is not there
  press(Qt::Key_Tab);
  EXPECT_EQ(lastOf("line"), "ChangeLine: 7/8 in foam, 50 ohm, 50.00 m, 0.00 dB (LMSX0001, F78)");
  EXPECT_EQ(alerts(), "line: Transmission line library not found:\nLMSX0001");
  setFrequency("5");
  calculator().sValueLen("10");
  calculator().sValueDesc("Half inch foam");
  EXPECT_EQ(lastOf("calculator"), "NewAlert: Frequency is below minimum for this line.");
  EXPECT_THAT(alerts(), HasSubstr("\ncalculator: Frequency is below minimum for this line."));
  window->control().Alerts("A word");
  EXPECT_EQ(lastOf("antenna"), "NewAlert: A word");
  EXPECT_THAT(alerts(), testing::StartsWith("antenna: A word\nline: "));
  in<QPushButton>(*window, "clearAlertsButton").click();
  EXPECT_EQ(alerts(), "");
  EXPECT_EQ(window->control().Alerts() + line().Alerts() + calculator().Alerts(), "");
}

TEST_F(DemoLines, TheCalculatorGivesTheLossAtTheRecordsFrequencyWithoutAnEdit) {
  auto& tabs = in<QTabWidget>(*window, "toolTabs");
  EXPECT_FALSE(calculator().isVisible());
  tabs.setCurrentIndex(1);
  ASSERT_TRUE(calculator().isVisible());
  auto& all = in<QComboBox>(calculator(), "cboLinesTX");
  ASSERT_EQ(all.count(), 2);
  all.setFocus(Qt::TabFocusReason);
  press(Qt::Key_End);
  type(in(calculator(), "txtLen"), "100");
  press(Qt::Key_Tab);
  EXPECT_EQ(in<QLabel>(calculator(), "lblFreq").text(), "451.25MHz");
  const double atFirst = calculator().sValueLoss().toDouble();
  EXPECT_GT(atFirst, 2);
  EXPECT_LT(atFirst, 20);
  press(Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(in<QLabel>(calculator(), "lblFreq").text(), "156.80MHz");
  EXPECT_LT(calculator().sValueLoss().toDouble(), atFirst);
  press(Qt::Key_E, Qt::ControlModifier);
  setFrequency("1000");
  EXPECT_EQ(calculator().sValueLoss(), "20.00");
  EXPECT_EQ(line().sValueLen(), "33");
}

TEST_F(DemoLines, TheCalculatorsAlertOfAnotherFrequencyDoesNotStay) {
  calculator().sValueDesc("Half inch foam");
  calculator().sValueLen("10");
  press(Qt::Key_E, Qt::ControlModifier);
  setFrequency("5000");
  EXPECT_THAT(alerts(), HasSubstr("calculator: Frequency is above maximum"));
  setFrequency("500");
  EXPECT_THAT(alerts(), testing::Not(HasSubstr("calculator")));
}

TEST_F(DemoLines, TheCalculatorComesUpAsItWasLeft) {
  calculator().sValueDesc("Half inch foam");
  type(in(calculator(), "txtLen"), "70");
  in(line(), "txtDesc").setFocus();
  in<QTabWidget>(*window, "toolTabs").setCurrentIndex(1);
  type(in(calculator(), "txtLen"), "70");
  press(Qt::Key_Tab);
  window = std::make_unique<DemoWindow>();
  EXPECT_EQ(calculator().sValueDesc() + " " + calculator().sValueLen(), "Half inch foam 70.00");
  EXPECT_NE(calculator().sValueLoss(), "");
}

TEST_F(DemoLines, TheHostPaintsAndClearsBothControlsOfTheRecord) {
  press(Qt::Key_E, Qt::ControlModifier);
  in<QPushButton>(*window, "redButton").click();
  EXPECT_TRUE(window->control().BackRed() && line().BackRed());
  in<QPushButton>(*window, "greyButton").click();
  EXPECT_TRUE(window->control().BackLtGray() && line().BackLtGray());
  in<QPushButton>(*window, "whiteButton").click();
  EXPECT_TRUE(window->control().BackWhite() && line().BackWhite());
  in<QPushButton>(*window, "clearButton").click();
  EXPECT_EQ(shown(), "||||m|");
  EXPECT_EQ(window->control().sValueDesc(), "");
}

TEST_F(DemoLines, ThePrintedValuesHoldTheLine) {
  EXPECT_THAT(window->values().toStdString(),
              testing::AllOf(HasSubstr("Line library:    LMSX0001\n"), HasSubstr("Line ID:         F78\n"),
                             HasSubstr("Line:            7/8 in foam, 50 ohm\n"), HasSubstr("Length:          48 m\n"),
                             HasSubstr("Loss:            1.27 dB\n")));
}

}  // namespace
}  // namespace vantrelix::demo
