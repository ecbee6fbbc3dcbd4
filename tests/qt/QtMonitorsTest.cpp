#include <functional>
#include <gmock/gmock.h>

#include <QApplication>
#include <QProcess>
#include <QScreen>
#include <QTimer>

#include "dialogs/clsMonitors.h"
#include "dialogs/windowPlacement.h"
#include "qt/FormWindow.h"
#include "qt/QtDesktop.h"
#include "qt/QtMonitors.h"
#include "support/TempSuite.h"
#include "ui/Form.h"
#include "ui/widgets.h"

namespace vantrelix::qt {
namespace {

using testing::ElementsAre;

struct TestForm : Form {
  TestForm() : Form("frmTest") {
    add(label);
    setGeometry({0, 0, 4500, 3000});
  }
  Label label{"lblTest"};
};

class QtPlacement : public testing::Test {
 protected:
  // Shows a form as a program does and lets `user` act on its window.
  void show(TestForm& form, const std::function<void(QWidget&)>& user) {
    SetFormSize(form, 0, 0);
    SetFormLoc(form);
    desktop.showModeless(form, Desktop::Activation::take);
    QCoreApplication::processEvents();
    QWidget* window = nullptr;
    for (QWidget* each : QApplication::topLevelWidgets()) {
      if (each->objectName() == "frmTest" && each->isVisible()) window = each;
    }
    ASSERT_NE(window, nullptr);
    user(*window);
    QCoreApplication::processEvents();
    SaveFormLoc(form);
    SaveFormSize(form);
    form.hide();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  test::TempSuite suite;
  QtDesktop desktop;
  DesktopInUse use{desktop};
};

TEST_F(QtPlacement, AWindowThatWasMovedAndSizedComesBackAsItWas) {
  TestForm first, second;
  show(first, [](QWidget& window) {
    window.move(123, 45);
    window.resize(345, 234);
  });
  show(second, [](const QWidget& window) {
    EXPECT_EQ(window.pos(), QPoint(123, 45));
    EXPECT_EQ(window.size(), QSize(345, 234));
  });
  EXPECT_EQ(second.geometry(), first.geometry());
}

TEST_F(QtPlacement, AWindowWithoutAStoredPlaceStandsInTheMiddleOfTheScreen) {
  TestForm form;
  show(form, [](const QWidget& window) {
    const QRect inside(window.pos(), window.size());
    EXPECT_EQ(inside.center(), QGuiApplication::primaryScreen()->geometry().center());
  });
}

TEST_F(QtPlacement, AWindowClosedMaximisedComesBackAsItWasBefore) {
  TestForm first, second, third;
  const QRect place(123, 45, 345, 234);
  show(first, [&](QWidget& window) { window.setGeometry(place); });
  show(second, [](QWidget& window) { window.showMaximized(); });
  EXPECT_EQ(second.windowState(), Form::WindowState::maximised);
  show(third, [&](const QWidget& window) { EXPECT_EQ(window.geometry(), place); });
}

TEST(ObjectHandles, StayWithTheirObjectsWhileOthersComeAndGo) {
  ObjectHandles handles;
  QObject first, third;
  auto second = std::make_unique<QObject>();
  EXPECT_EQ(handles.handleOf(&first), 1);
  EXPECT_EQ(handles.handleOf(second.get()), 2);
  second.reset();
  EXPECT_EQ(handles.handleOf(&third), 3);
  EXPECT_EQ(handles.handleOf(&first), 1);
  EXPECT_EQ(handles.handleOf(&third), 3);
  EXPECT_EQ(handles.objectOf(1), &first);
  EXPECT_EQ(handles.objectOf(2), nullptr);
  EXPECT_EQ(handles.objectOf(3), &third);
}

TEST(ObjectHandles, AreNoneForNothing) {
  ObjectHandles handles;
  EXPECT_EQ(handles.handleOf(nullptr), 0);
  QObject only;
  EXPECT_EQ(handles.handleOf(&only), 1);
  for (const MonitorHandle handle : {0, -1, 2}) EXPECT_EQ(handles.objectOf(handle), nullptr);
}

// Runs the checks in a process of their own, which has the screens named.
void withScreens(const QByteArray& screens, const std::function<void()>& checks) {
  constexpr const char* kChild = "VANTRELIX_TEST_SCREENS";
  if (qEnvironmentVariableIsSet(kChild)) return checks();
  const test::TempFolder folder;
  folder.write("screens.json", "{\"screens\": [" + screens.toStdString() + "]}");
  QProcess child;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(kChild, "1");
  environment.insert("QT_QPA_PLATFORM",
                     "offscreen:configfile=" + QString::fromStdString(folder.machine("screens.json")));
  child.setProcessEnvironment(environment);
  child.setProcessChannelMode(QProcess::MergedChannels);
  const testing::TestInfo* current = testing::UnitTest::GetInstance()->current_test_info();
  child.start(QCoreApplication::applicationFilePath(),
              {QString("--gtest_filter=%1.%2").arg(current->test_suite_name(), current->name())});
  ASSERT_TRUE(child.waitForFinished(60000));
  const std::string output = child.readAll().toStdString();
  EXPECT_EQ(child.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(child.exitCode(), 0) << output;
  EXPECT_THAT(output, testing::HasSubstr("1 test from 1 test suite ran"));
}

constexpr const char* kFirst =
    R"({"name": "A", "x": 0, "y": 0, "width": 1600, "height": 1200, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1})";
constexpr const char* kLeftOfIt =
    R"({"name": "B", "x": -1280, "y": 100, "width": 1280, "height": 1024, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1})";
constexpr const char* kFineOne =
    R"({"name": "C", "x": 1600, "y": 0, "width": 2000, "height": 1400, "logicalDpi": 192, "logicalBaseDpi": 96, "dpr": 1})";

QByteArray both(const char* a, const char* b) { return QByteArray(a) + ", " + b; }

class QtTwoScreensAlone : public QtPlacement {
 protected:
  // Moves a window and shows it anew. Gives where it was told to stand in the end: the platform of the tests shifts
  // windows by their frames.
  QPoint comesBackFrom(const QPoint& wanted) {
    TestForm first, second;
    show(first, [&](QWidget& window) {
      window.move(wanted);
      window.resize(400, 350);
    });
    const QPoint place(first.geometry().left / 15, first.geometry().top / 15);
    show(second, [&](const QWidget& window) {
      EXPECT_EQ(window.pos(), place);
      EXPECT_EQ(window.size(), QSize(400, 350));
    });
    return place;
  }
};

TEST_F(QtTwoScreensAlone, OneLeftOfTheFirstMakesTheDesktopBeginBelowZero) {
  withScreens(both(kFirst, kLeftOfIt), [this] {
    ASSERT_EQ(desktop.monitors().count(), 2);
    EXPECT_EQ(desktop.monitors().desktop(), (Rectangle{-1280, 0, 2880, 1200}));
    EXPECT_EQ(desktop.monitors().screen(), (Rectangle{0, 0, 1600, 1200}));
    clsMonitors all;
    all.Refresh();
    ASSERT_EQ(all.Count(), 2u);
    EXPECT_EQ(all.DesktopLeftTwps(), -19200);
    EXPECT_EQ(all.GetMonitorFromXYPoint(-1, 100)->Left(), -1280);
    EXPECT_EQ(all.GetMonitorFromXYPoint(0, 100)->Width(), 1600);
    EXPECT_EQ(all.GetMonitorFromXYPoint(-1, 99), nullptr);
    EXPECT_EQ(all.GetMonitorFromXYPoint(1600, 100), nullptr);
  });
}

TEST_F(QtTwoScreensAlone, AHandleAsksForItsOwnScreen) {
  withScreens(both(kFirst, kLeftOfIt), [this] {
    MonitorPort& port = desktop.monitors();
    const MonitorHandle left = port.monitorFromRect({-100, 200, 190, 10});
    const MonitorHandle first = port.monitorFromRect({-100, 200, 210, 10});
    EXPECT_NE(left, first);
    EXPECT_EQ(port.info(left).bounds, (Rectangle{-1280, 100, 1280, 1024}));
    EXPECT_EQ(port.info(left).workArea, (Rectangle{-1280, 100, 1280, 1024}));
    EXPECT_EQ(port.info(first).bounds, (Rectangle{0, 0, 1600, 1200}));
    EXPECT_EQ(port.info(left + first + 1).bounds, Rectangle());
    EXPECT_EQ(port.monitorFromRect({5000, 0, 10, 10}), 0);
    TestForm form;
    form.moveTo(-15000, 3000);
    EXPECT_EQ(port.monitorFromWindow(form), left);
    form.moveTo(-2000, 3000);
    EXPECT_EQ(port.monitorFromWindow(form), first);
    form.setSize(750, 6000);
    form.moveTo(3000, -4500);
    EXPECT_EQ(port.monitorFromWindow(form), first) << "its lower end shows";
    form.moveTo(3000, -6000);
    EXPECT_EQ(port.monitorFromWindow(form), 0);
  });
}

TEST_F(QtTwoScreensAlone, AWindowOnTheOneLeftOfTheFirstComesBackThere) {
  withScreens(both(kFirst, kLeftOfIt), [this] {
    const QPoint place = comesBackFrom({-1000, 300});
    EXPECT_LT((place - QPoint(-1000, 300)).manhattanLength(), 10);
  });
}

TEST_F(QtTwoScreensAlone, AScreenOfAnotherScaleCountsInItsOwnPixels) {
  withScreens(both(kFirst, kFineOne), [this] {
    MonitorPort& port = desktop.monitors();
    ASSERT_EQ(port.count(), 2);
    EXPECT_EQ(port.twipsPerPixelX(), 15);
    EXPECT_EQ(port.desktop(), (Rectangle{0, 0, 2600, 1200}));
    EXPECT_EQ(port.info(port.monitorFromRect({2000, 0, 10, 10})).bounds, (Rectangle{1600, 0, 1000, 700}));
    const QPoint place = comesBackFrom({2000, 100});
    EXPECT_LT((place - QPoint(2000, 100)).manhattanLength(), 10);
  });
}

TEST_F(QtTwoScreensAlone, TwipsGoByTheDotsOfTheFirstScreen) {
  constexpr const char* kDenser =
      R"({"name": "A", "x": 0, "y": 0, "width": 1600, "height": 1200, "logicalDpi": 120, "logicalBaseDpi": 120, "dpr": 1})";
  withScreens(kDenser, [this] {
    EXPECT_EQ(desktop.monitors().twipsPerPixelX(), 12);
    EXPECT_EQ(desktop.monitors().twipsPerPixelY(), 12);
    TestForm form;
    form.moveTo(1590 * 12, 0);
    EXPECT_NE(desktop.monitors().monitorFromWindow(form), 0);
    form.moveTo(1601 * 12, 0);
    EXPECT_EQ(desktop.monitors().monitorFromWindow(form), 0);
  });
}

TEST_F(QtTwoScreensAlone, AFineFirstScreenLeavesAGapThatIsNoPlace) {
  withScreens(both(R"({"name": "A", "x": 0, "y": 0, "width": 2000, "height": 1400, "logicalDpi": 192,
                       "logicalBaseDpi": 96, "dpr": 1})",
                   R"({"name": "B", "x": 2000, "y": 0, "width": 1600, "height": 1200, "logicalDpi": 96,
                       "logicalBaseDpi": 96, "dpr": 1})"),
              [this] {
                EXPECT_EQ(desktop.monitors().desktop(), (Rectangle{0, 0, 3600, 1200}));
                TestForm form;
                SetFormLoc(form, 1400 * 15, 0);
                EXPECT_EQ(form.geometry(), (Rectangle{(15000 - 4500) / 2, (10500 - 3000) / 2, 4500, 3000}));
                SetFormLoc(form, 2000 * 15, 0);
                EXPECT_EQ(form.geometry(), (Rectangle{30000, 0, 4500, 3000}));
              });
}

TEST_F(QtTwoScreensAlone, AWindowOfASecondScreenThatIsGoneComesBackCentred) {
  withScreens(kFirst, [this] {
    TestForm form;
    SetFormLoc(form, 30000, 3000);
    EXPECT_EQ(form.geometry(), (Rectangle{(24000 - 4500) / 2, (18000 - 3000) / 2, 4500, 3000}));
  });
}

}  // namespace
}  // namespace vantrelix::qt
