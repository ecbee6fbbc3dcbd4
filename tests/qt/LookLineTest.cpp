// The line controls in their windows, by mouse and keyboard.
#include <functional>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "controls/LineFixture.h"
#include "qt/LookLine.h"
#include "qt/LookLineALL.h"
#include "qt/QtDesktop.h"

namespace vantrelix::qt {
namespace {

template <class WidgetKind>
class LineView : public test::LineTest {
 protected:
  LineView() {
    makeLines();
    look_ = std::make_unique<WidgetKind>();
    look_->show();
    look_->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(look_.get()));
  }

  QLineEdit& box(const char* name) { return *look_->template findChild<QLineEdit*>(name); }
  QComboBox& list(const char* name) { return *look_->template findChild<QComboBox*>(name); }
  QString label(const char* name) { return look_->template findChild<QLabel*>(name)->text(); }
  void enter(const char* name) { box(name).setFocus(Qt::TabFocusReason); }
  void type(const char* name, const char* text) {
    enter(name);
    QTest::keyClicks(&box(name), text);
  }
  void choose(const char* name, int index) {
    list(name).setFocus(Qt::TabFocusReason);
    QTest::keyClick(&list(name), Qt::Key_Home);
    for (int i = 0; i < index; ++i) QTest::keyClick(&list(name), Qt::Key_Down);
  }
  void expectTabOrder(const QStringList& order) {
    for (const QString& name : order) {
      ASSERT_NE(QApplication::focusWidget(), nullptr);
      EXPECT_EQ(QApplication::focusWidget()->objectName(), name);
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
  }

  std::unique_ptr<WidgetKind> look_;
};

class LookLineView : public LineView<LookLine> {
 protected:
  // Clicks the button of the list and lets the user act in its window.
  void look(const std::function<void(QWidget&, QListWidget&)>& user) {
    QTimer::singleShot(0, [user] {
      QWidget* window = QApplication::activeModalWidget();
      ASSERT_NE(window, nullptr);
      ASSERT_TRUE(QTest::qWaitForWindowActive(window));
      user(*window, *window->findChild<QListWidget*>("List1"));
    });
    QTest::mouseClick(look_->findChild<QPushButton*>("cmdLook"), Qt::LeftButton);
    look_->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(look_.get()));
  }
  void take(int row) {
    look([row](QWidget& window, QListWidget& lines) {
      lines.setCurrentRow(row);
      QTest::mouseClick(window.findChild<QPushButton*>("cmdContinue"), Qt::LeftButton);
    });
  }

  QtDesktop desktop_;
  DesktopInUse shown_{desktop_};
};

TEST_F(LookLineView, TheLossFollowsTheLineTheLengthTheUnitAndTheFrequency) {
  QSignalSpy changes(look_.get(), &LookLine::ChangeLine);
  look_->sValueFreq(100);
  take(1);
  EXPECT_EQ(box("txtDesc").text(), "Half inch foam");
  EXPECT_EQ(box("txtFile").text() + " " + box("txtID").text(), "LMST0001 L2");
  EXPECT_EQ(changes.count(), 1);
  type("txtLen", "1x5a0");
  enter("txtLoss");
  EXPECT_EQ(box("txtLen").text(), "150.00");
  EXPECT_EQ(box("txtLoss").text(), "3.00");
  EXPECT_EQ(changes.count(), 2);
  choose("cboUnit", 2);
  EXPECT_EQ(box("txtLen").text(), "45.72");
  EXPECT_EQ(box("txtLoss").text(), "3.00");
  look_->sValueFreq(1000);
  EXPECT_EQ(label("lblFreq"), "1000.00MHz");
  EXPECT_EQ(box("txtLoss").text(), "30.00");
  EXPECT_EQ(look_->Alerts(), "");
}

TEST_F(LookLineView, ALossThatIsTypedTakesTheLinesPlaceAndStands) {
  look_->sValueFreq(100);
  take(0);
  type("txtLen", "100");
  type("txtLoss", "4.");
  EXPECT_EQ(box("txtDesc").text(), "Specified Loss");
  EXPECT_EQ(box("txtFile").text() + box("txtID").text(), "");
  EXPECT_EQ(box("txtLoss").text(), "4.");
  type("txtLen", "900");
  choose("cboUnit", 3);
  EXPECT_EQ(box("txtLoss").text(), "4.00");
  EXPECT_EQ(look_->sValueLoss(), "4.00");
}

TEST_F(LookLineView, TheListStandsInColumnsOfOneWidthAndTellsTheBand) {
  addLine("T0001", "L3", "No points", {});
  look([](QWidget& window, QListWidget& lines) {
    EXPECT_EQ(window.windowTitle(), "Select Transmission Line");
    const QFontMetrics letters(lines.font());
    EXPECT_EQ(letters.horizontalAdvance("iiii....    "), letters.horizontalAdvance("WWWW0000MMMM"));
    ASSERT_EQ(lines.count(), 3);
    EXPECT_EQ(lines.item(0)->text().indexOf("LMST0001"), lines.item(2)->text().indexOf("LMST0001"));
    const auto* band = window.findChild<QLabel*>("Label1");
    lines.setCurrentRow(0);
    EXPECT_EQ(band->text(), "100 MHz to 1000 MHz");
    const QColor own = band->palette().color(QPalette::WindowText);
    lines.setCurrentRow(2);
    EXPECT_EQ(band->text(), "Invalid Data; File: LMST0001 ID: L3");
    EXPECT_EQ(band->palette().color(QPalette::WindowText), QColor(Qt::red));
    lines.setCurrentRow(1);
    EXPECT_EQ(band->palette().color(QPalette::WindowText), own);
    QTest::keyClick(&lines, Qt::Key_Escape);
  });
  EXPECT_EQ(box("txtFile").text(), "");
}

TEST_F(LookLineView, TabRunsThroughTheValuesInTheControlsOrder) {
  enter("txtDesc");
  expectTabOrder({"txtDesc", "txtLen", "cboUnit", "cmdLook", "txtLoss"});
}

TEST_F(LookLineView, AlertsReachTheHostAsASignal) {
  QSignalSpy alerts(look_.get(), &LookLine::NewAlert);
  look_->sValueFile("LMSGONE1");
  look_->sValueID("L1");
  look_->sValueLen("5");
  look_->sValueFreq(100);
  EXPECT_EQ(alerts.count(), 1);
  EXPECT_EQ(look_->Alerts(), "Transmission line library not found:\r\nLMSGONE1");
  look_->Alerts("");
  EXPECT_EQ(look_->Alerts(), "");
}

TEST_F(LookLineView, ItsPropertiesAreTheControls) {
  const std::pair<const char*, const char*> texts[] = {{"sValueFile", "LMST0001"}, {"sValueID", "L1"},
                                                       {"sValueDesc", "Foam"},     {"sValueUnit", "m"},
                                                       {"sValueLen", "12"},        {"sValueLoss", "1.50"}};
  for (const auto& [name, text] : texts) {
    EXPECT_TRUE(look_->setProperty(name, text)) << name;
    EXPECT_EQ(look_->property(name).toString(), text) << name;
  }
  const scLookLine& control = look_->control();
  EXPECT_EQ(control.sValueFile() + control.sValueID() + control.sValueDesc() + control.sValueLen() +
                control.sValueUnit() + control.sValueLoss(),
            "LMST0001L1Foam12m1.50");
  EXPECT_TRUE(look_->property("Valid").toBool());
  EXPECT_TRUE(look_->setProperty("Locked", true));
  EXPECT_TRUE(box("txtLen").isReadOnly() && look_->BackLtGray() && look_->property("Locked").toBool());
  EXPECT_TRUE(look_->setProperty("BackRed", true) && control.BackRed() && look_->property("BackRed").toBool());
  EXPECT_TRUE(look_->setProperty("BackWhite", true) && control.BackWhite() && look_->property("BackWhite").toBool());
}

// A record in an INI file, bound as a host binds it.
TEST_F(LookLineView, TheRecordIsFilledAndSavedThroughTheWidgetsOwnMembers) {
  suite.folder().write("SITE.INI", "[Facility Data]\r\nTX_L1TYP=Foam\r\nTX_L1LEN=3\r\nTX_L1LENUN=m\r\n");
  look_->control().HookINI()->iniFile(suite.file("SITE.INI"));
  look_->control().HookINI()->INISection("Facility Data");
  ASSERT_TRUE(QMetaObject::invokeMethod(look_.get(), "UpdateINI"));
  EXPECT_EQ(box("txtDesc").text() + box("txtLen").text() + list("cboUnit").currentText(), "Foam3m");
  type("txtLen", "7");
  EXPECT_EQ(look_->Save(), "");
  EXPECT_NE(suite.folder().read("SITE.INI").find("TX_L1LEN=7\r\n"), std::string::npos);
  QString refused;
  EXPECT_FALSE(look_->bEdit(true, &refused));
  EXPECT_TRUE(refused.startsWith("hookDBFFile not connected to database")) << refused.toStdString();
}

TEST_F(LookLineView, AFieldOfTheRecordIsReadAndPutByItsName) {
  auto hook = std::make_shared<IOHooksDBF>();
  hook->DBFField("TX_L1TYP");
  look_->control().HookDBFDesc(hook);
  look_->sHookDBFValue("tx_l1typ", "Foam");
  EXPECT_EQ(box("txtDesc").text(), "Foam");
  EXPECT_EQ(look_->sHookDBFValue("TX_L1TYP"), "Foam");
  look_->DisconnectDBF();
  EXPECT_EQ(look_->control().HookDBFDesc(), nullptr);
}

TEST_F(LookLineView, TheLoginBringsTheUsersOwnUnit) {
  look_->control().ZORUserLogin("ann");
  keep("Line Lookup", "Units", "cm");
  look_->ZORUserLogin("bob");
  EXPECT_EQ(list("cboUnit").currentText(), "ft");
  look_->ZORUserLogin("ann");
  EXPECT_EQ(list("cboUnit").currentText(), "cm");
}

TEST_F(LookLineView, TheHostMayLetItGoInItsOwnSignals) {
  type("txtLen", "5");
  const QPointer<LookLine> alive(look_.get());
  QObject::connect(look_.get(), &LookLine::ChangeLine, [this] { look_.release()->deleteLater(); });
  enter("txtLoss");
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(alive.isNull());
}

TEST_F(LookLineView, TheWidthOfTheWidgetIsTheControls) {
  const int least = look_->minimumSizeHint().width();
  look_->resize(least + 150, look_->height());
  EXPECT_EQ(look_->control().width(), (least + 150) * 1440 / look_->logicalDpiX());
  look_->resize(10, look_->height());
  EXPECT_EQ(look_->width(), least);
}

class LookLineALLView : public LineView<LookLineALL> {};

TEST_F(LookLineALLView, TheLossFollowsWhatIsChosenAndTheWidgetComesUpWithItAgain) {
  look_->ZORUserLogin("ann");
  look_->sValueFreq(100);
  choose("cboLinesTX", 1);
  type("txtLen", "1o00");
  choose("cboUnit", 2);
  EXPECT_EQ(box("txtLen").text(), "30.48");
  EXPECT_EQ(box("txtLoss").text(), "2.00");
  EXPECT_EQ(look_->sValueDesc() + look_->sValueLen() + look_->sValueUnit() + look_->sValueLoss(),
            "Half inch foam30.48m2.00");
  LookLineALL again;
  QSignalSpy alerts(&again, &LookLineALL::NewAlert);
  again.sValueFreq(1000);
  again.ZORUserLogin("ann");
  EXPECT_EQ(again.sValueDesc() + again.sValueLen() + again.sValueUnit() + again.sValueLoss(),
            "Half inch foam30.48m20.00");
  EXPECT_EQ(alerts.count(), 0);
  again.sValueFreq(1);
  EXPECT_EQ(alerts.count(), 1);
  EXPECT_EQ(again.Alerts(), "Frequency is below minimum for this line.");
  again.Alerts("");
  again.Clear();
  EXPECT_EQ(again.Alerts() + again.sValueLen() + again.sValueLoss(), "");
}

TEST_F(LookLineALLView, ItsPropertiesAreTheControls) {
  look_->ZORUserLogin("ann");
  look_->sValueFreq(100);
  EXPECT_TRUE(look_->setProperty("sValueDesc", "Half inch foam"));
  EXPECT_TRUE(look_->setProperty("sValueLen", "50"));
  EXPECT_EQ(look_->property("sValueLoss").toString(), "1.00");
  EXPECT_TRUE(look_->setProperty("sValueUnit", "in"));
  EXPECT_EQ(look_->property("sValueLen").toString(), "600.00");
  EXPECT_EQ(list("cboLinesTX").currentText(), "Half inch foam");
}

TEST_F(LookLineALLView, TabRunsThroughTheListTheLengthTheUnitAndTheLoss) {
  list("cboLinesTX").setFocus(Qt::TabFocusReason);
  expectTabOrder({"cboLinesTX", "txtLen", "cboUnit", "txtLoss"});
}

TEST_F(LookLineALLView, ItsWorkingValuesAreNotSeenAndItsLossIsNotTyped) {
  EXPECT_FALSE(box("txtFile").isVisible());
  EXPECT_FALSE(box("txtID").isVisible());
  type("txtLoss", "3");
  EXPECT_EQ(box("txtLoss").text(), "");
}

}  // namespace
}  // namespace vantrelix::qt
