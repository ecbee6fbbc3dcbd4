// An antenna's whole life in the editor's window: typed in, refused, corrected, exported, deleted.
#include <chrono>
#include <functional>

#include <QElapsedTimer>
#include <QFileDialog>

#include "AntennaEditorFixture.h"

namespace vantrelix::qt {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

// Closes every window in which the program would wait for ever, and ends the program where that does not help.
class Watchdog {
 public:
  Watchdog() {
    QObject::connect(&timer_, &QTimer::timeout, [this] {
      if (++barks_ == 1) ADD_FAILURE() << "The program waits for its user.";
      if (barks_ > 200) qFatal("The program still waits for its user.");
      timer_.setInterval(10ms);
      if (QWidget* window = QApplication::activeModalWidget()) window->close();
    });
    timer_.start(8s);
  }

 private:
  QTimer timer_;
  int barks_ = 0;
};

class AntennaByHand : public AntennaEditorTest {
 protected:
  AntennaByHand() {
    for (const char* table : {"AMST0001", "AHDT0001", "AVDT0001"}) take(table);
  }

  // Presses a button by the space bar; the user acts in the dialog of this kind and name that it opens.
  template <class Dialog>
  void pressFor(const std::string& button, const char* name, const std::function<void(Dialog&)>& user) {
    bool answered = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
      auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      if (!dialog || (*name && dialog->objectName() != name)) return;
      watch.stop();
      const bool ready = QTest::qWaitForWindowActive(dialog) && QTest::qWaitFor([dialog] {
                           return QApplication::focusWidget() && dialog->isAncestorOf(QApplication::focusWidget());
                         });
      if (ready) user(*dialog);
      answered = ready && !dialog->isVisible();
      if (dialog->isVisible()) dialog->close();
    });
    watch.start(0);
    pressButton(button);
    EXPECT_TRUE(answered) << button;
    window().activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window())) << button;
  }
  void pressButton(const std::string& button) {
    find(button).setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
  }
  void addSequence(const std::string& button, std::initializer_list<const char*> startStopStep) {
    pressFor<QDialog>(button, "frmGetSequentialValues", [&](const QDialog& dialog) {
      for (const char* value : startStopStep) {
        ASSERT_TRUE(dialog.isVisible());
        type(value);
        press(Qt::Key_Return);
      }
    });
  }
  void exportTo(const std::string& path) {
    pressFor<QFileDialog>("Command1_7", "", [&](const QFileDialog& dialog) {
      auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
      name->setFocus();
      name->selectAll();
      QTest::keyClicks(name, toQt(path));
      QTest::keyClick(name, Qt::Key_Return);
    });
  }
  // From the first row of a cut on, downwards.
  void typeGains(const std::string& grid, std::initializer_list<const char*> gains) {
    find(grid).setFocus(Qt::TabFocusReason);
    press(Qt::Key_Home, Qt::ControlModifier);
    press(Qt::Key_End);
    for (const char* gain : gains) {
      press(Qt::Key_F2);
      press(Qt::Key_A, Qt::ControlModifier);
      type(gain);
      press(Qt::Key_Return);
    }
  }
  static std::vector<std::string> elevations() { return rows("AVDT0001", {"ATYPE_ID", "VERT_ANGLE", "VERT_FIELD"}); }

  void typeAntenna() {
    press(Qt::Key_Down);
    press(Qt::Key_Home);
    for (const char* entry : {"Yagi", "10", "824"}) {
      type(entry);
      press(Qt::Key_Tab);
    }
    type("896");
    press(Qt::Key_Return);
    press(Qt::Key_Up);
    EXPECT_THAT(rows("AMST0001", {"ATYPE_ID", "ANTENNA", "GAIN", "GAIN_UN", "F_LOW", "F_HIGH", "FREQ_UN"}),
                ElementsAre("T00010000002|Yagi|10|dBd|824|896|MHz"));
    EXPECT_EQ(form().selectedRow(), 0);
  }
  void typeCuts() {
    addSequence("Command1_9", {"0", "270", "90"});
    addSequence("Command1_10", {"-10", "10", "10"});
    typeGains("TDBGridAHD", {"7"});
    typeGains("TDBGridAVD", {"4", "7", "1"});
  }
  void continueAndCorrect() {
    desktop_.answers = {MsgAnswer::no, MsgAnswer::ok, MsgAnswer::yes, MsgAnswer::yes};
    pressButton("Command1_11");
    EXPECT_TRUE(window().isVisible());
    EXPECT_THAT(azimuths(),
                ElementsAre("T00010000002|0|7", "T00010000002|90|10", "T00010000002|180|10", "T00010000002|270|10"));
    EXPECT_THAT(elevations(), ElementsAre("T00010000002|-10|7", "T00010000002|0|10", "T00010000002|10|4"));
  }
  void exportAndRead() {
    exportTo(suite.folder().machine("ByHand.ANT"));
    ASSERT_TRUE(suite.folder().exists("ByHand.ANT"));
    EXPECT_EQ(suite.folder().read("ByHand.ANT"),
              "NAME Yagi\r\nFrequency 824\r\nGAIN 10 dBd\r\n"
              "HORIZONTAL 4\r\n0.00 3.00\r\n90.00 0.00\r\n180.00 0.00\r\n270.00 0.00\r\n"
              "VERTICAL 3\r\n10.00 3.00\r\n0.00 0.00\r\n-10.00 6.00\r\n");
  }
  void deleteAntenna() {
    desktop_.answers = {MsgAnswer::yes};
    list().setFocus(Qt::TabFocusReason);
    press(Qt::Key_Delete);
    EXPECT_THAT(descriptions(), IsEmpty());
    for (const char* table : {"AMST0001", "AHDT0001", "AVDT0001"}) {
      EXPECT_THAT(rows(table, {"ATYPE_ID"}), IsEmpty()) << table;
    }
  }
};

TEST_F(AntennaByHand, IsTypedInRefusedCorrectedExportedAndDeleted) {
  const Watchdog watchdog;
  QElapsedTimer clock;
  clock.start();
  edit([this] {
    ASSERT_THAT(descriptions(), IsEmpty());
    typeAntenna();
    typeCuts();
    EXPECT_THAT(desktop_.shown, IsEmpty());
    EXPECT_THAT(elevations(), ElementsAre("T00010000002|-10|4", "T00010000002|0|7", "T00010000002|10|1"));
    continueAndCorrect();
    exportAndRead();
    deleteAntenna();
  });
  EXPECT_THAT(desktop_.shown,
              ElementsAre(AllOf(StartsWith("Antenna Pattern Warning: The maximum elevation gain"),
                                HasSubstr("Maximum elevation gain: 7 on Elevation 0\r\nMajor Lobe Gain: 10")),
                          StartsWith("Invalid Antenna Settings: "), StartsWith("Correct Pattern?: "),
                          StartsWith("Save Corrected Pattern?: "),
                          "Delete Antenna?: Do you want to DELETE the antenna?\r\n\r\nYagi"));
  EXPECT_THAT(desktop_.answers, IsEmpty());
  EXPECT_LT(clock.elapsed(), 10000);
}

}  // namespace
}  // namespace vantrelix::qt
