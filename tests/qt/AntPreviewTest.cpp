// The pattern preview in its window, driven by the keyboard. Where ANTPREVIEW_PICTURES names a folder, pictures of it
// are drawn there too.
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "antenna/antennaList.h"
#include "antenna/makeAntFiles.h"
#include "foundation/suitePaths.h"
#include "import/importPreview.h"
#include "preview/frmAntPreview.h"
#include "qt/QtDesktop.h"
#include "qt/qtText.h"
#include "support/TempSuite.h"
#include "tables/installSuite.h"

namespace vantrelix::qt {
namespace {

using testing::ElementsAre;

struct Cut {
  std::vector<double> angles;
  std::vector<double> values;
  double low = 0;

  std::int16_t count() const { return static_cast<std::int16_t>(angles.size()); }
};

// A cut of one point a degree from the first angle on; `loss` gives what lies below the gain at so many degrees off the
// beam at 0.
template <class Loss>
Cut cutOf(double gain, int first, Loss loss) {
  Cut cut;
  cut.low = gain;
  for (int degrees = first; degrees < first + 360; ++degrees) {
    cut.angles.push_back(degrees);
    cut.values.push_back(gain - loss(std::abs(std::remainder(degrees, 360.0))));
    cut.low = std::min(cut.low, cut.values.back());
  }
  return cut;
}

// The usual parabola of a main lobe in decibels, 65 degrees wide, and a back lobe 25 dB below it.
Cut sectorAzimuth() {
  return cutOf(15, 0,
               [](double off) { return std::min(12 * std::pow(off / 65, 2), 25 + 3 * std::pow((180 - off) / 70, 2)); });
}

// In decibels, at most 45: a column of elements with a beam of 8 degrees and its side lobes.
double columnLoss(double off) {
  constexpr double kPi = 3.14159265358979;
  const double phase = kPi * 6.35 * std::sin(off * kPi / 180);
  const double factor = std::abs(phase) < 1e-9 ? 1 : std::abs(std::sin(phase) / phase);
  return std::min(-20 * std::log10(std::max(factor, 1e-9)), 45.0);
}

Cut panelElevation() {
  return cutOf(15, -180, [](double off) { return columnLoss(off) + 25 * (1 - std::cos(off * kRadiansPerDegree)) / 2; });
}

class AntPreview : public testing::Test {
 protected:
  // Shows the preview; `user` acts on it once it has come up.
  template <class User>
  long ask(frmAntPreview& form, const std::string& text, const std::string& name, double gain, const Cut& azimuth,
           const Cut& elevation, User user) {
    onNext(user);
    long action = -1;
    form.lAntPreview(text, name, gain, "dBd", azimuth.low, elevation.low, azimuth.count(), azimuth.angles,
                     azimuth.values, elevation.count(), elevation.angles, elevation.values, action);
    return action;
  }
  template <class User>
  long ask(User user) {
    frmAntPreview form;
    return ask(form, "Generic Format ANTENNA", "Panel", 15, sectorAzimuth(), panelElevation(), user);
  }
  template <class User>
  void onNext(User user) {
    QTimer::singleShot(0, qApp, [this, user] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
      ++shown_;
      user(*dialog);
      if (dialog->isVisible()) dialog->close();
    });
  }
  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  static QString focused() {
    const QWidget* widget = QApplication::focusWidget();
    return widget ? widget->objectName() : QString();
  }
  static QWidget& find(const QDialog& dialog, const char* name) { return *dialog.findChild<QWidget*>(name); }
  static void expectSquareInTheMiddle(const QWidget& picture) {
    EXPECT_EQ(picture.width(), picture.height());
    EXPECT_LE(std::abs(picture.geometry().center().x() - picture.parentWidget()->rect().center().x()), 1);
    EXPECT_LE(std::abs(picture.geometry().center().y() - picture.parentWidget()->rect().center().y()), 1);
  }

  static QByteArray pictureFolder() { return qgetenv("ANTPREVIEW_PICTURES"); }
  static void savePicture(QDialog& dialog, const QString& name) {
    if (pictureFolder().isEmpty()) return;
    const QString path = pictureFolder() + "/" + name + ".png";
    EXPECT_TRUE(dialog.grab().save(path)) << path.toStdString();
  }

  test::TempSuite suite_;
  QtDesktop desktop_;
  DesktopInUse inUse_{desktop_};
  int shown_ = 0;
};

TEST_F(AntPreview, AltAndTheirFirstLettersPressTheFourAnswers) {
  const std::pair<Qt::Key, long> keys[] = {{Qt::Key_A, 6}, {Qt::Key_S, 7}, {Qt::Key_C, 2}, {Qt::Key_N, 5}};
  for (const auto& [key, action] : keys) {
    EXPECT_EQ(ask([letter = key](const QDialog& dialog) {
                press(letter, Qt::AltModifier);
                EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.isVisible(); }));
              }),
              action);
  }
  EXPECT_EQ(shown_, 4);
}

TEST_F(AntPreview, EnterAddsEscapeAndTheFrameCancel) {
  EXPECT_EQ(ask([](const QDialog&) { press(Qt::Key_Return); }), 6);
  EXPECT_EQ(ask([](const QDialog&) { press(Qt::Key_Escape); }), 2);
  EXPECT_EQ(ask([](QDialog& dialog) { dialog.close(); }), 2);
}

TEST_F(AntPreview, EnterAddsWhereTheTextHasTheKeyboard) {
  EXPECT_EQ(ask([](const QDialog& dialog) {
              find(dialog, "lblAnt").setFocus(Qt::MouseFocusReason);
              EXPECT_EQ(focused(), "lblAnt");
              press(Qt::Key_Return);
            }),
            6);
}

TEST_F(AntPreview, TabRunsThroughTheAnswersAndEnterTakesTheOneThatHasTheKeyboard) {
  const long actions[] = {6, 7, 2, 5};
  for (int tabs = 0; tabs < 4; ++tabs) {
    EXPECT_EQ(ask([tabs](const QDialog&) {
                for (int i = 0; i < tabs; ++i) press(Qt::Key_Tab);
                EXPECT_EQ(focused(), QString("Command1_%1").arg(tabs));
                press(Qt::Key_Return);
              }),
              actions[tabs]);
  }
}

TEST_F(AntPreview, TheNextPreviewOfTheSameFormStartsOnAddAgain) {
  frmAntPreview form;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(ask(form, "", "", 15, {}, {},
                  [](const QDialog&) {
                    EXPECT_EQ(focused(), "Command1_0");
                    press(Qt::Key_Tab);
                    press(Qt::Key_Space);
                  }),
              7);
  }
}

TEST_F(AntPreview, AltStillWorksWhenThePaletteHasChanged) {
  EXPECT_EQ(ask([](QDialog& dialog) {
              QPalette dark = dialog.palette();
              dark.setColor(QPalette::Window, Qt::black);
              dialog.setPalette(dark);
              QApplication::processEvents();
              EXPECT_EQ(dialog.findChild<QPushButton*>("Command1_3")->text(), "&No Preview");
              press(Qt::Key_N, Qt::AltModifier);
              EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.isVisible(); }));
            }),
            5);
}

TEST_F(AntPreview, HasItsTitlesTipsAndNames) {
  ask([](const QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Antenna Preview");
    EXPECT_EQ(dialog.findChild<QGroupBox*>("fraAnt")->title(), "Antenna");
    EXPECT_EQ(dialog.findChild<QGroupBox*>("fraHor")->title(), "Azimuth Pattern");
    EXPECT_EQ(dialog.findChild<QGroupBox*>("fraVer")->title(), "Elevation Pattern");
    EXPECT_EQ(find(dialog, "picHor").accessibleName(), "Azimuth Pattern");
    EXPECT_EQ(find(dialog, "Command1_1").toolTip(), "Do NOT add this antenna");
    EXPECT_EQ(dialog.findChild<QLabel*>("lblAnt")->text(),
              "Generic Format ANTENNA\nPanel\nGain: 15.00 dBd\n360 Azimuths; 360 Elevations");
  });
}

TEST_F(AntPreview, ThePicturesGrowWithTheWindowAndStaySquare) {
  ask([](QDialog& dialog) {
    QWidget& azimuth = find(dialog, "picHor");
    const int before = azimuth.width();
    for (const QSize size : {QSize(1200, 900), QSize(1500, 700), QSize(700, 1000)}) {
      dialog.resize(size);
      QApplication::processEvents();
      for (const char* name : {"picHor", "picVer"}) expectSquareInTheMiddle(find(dialog, name));
      EXPECT_EQ(azimuth.size(), find(dialog, "picVer").size());
    }
    dialog.resize(1200, 900);
    QApplication::processEvents();
    EXPECT_GT(azimuth.width(), before + 150);
  });
}

TEST_F(AntPreview, ItsSmallestSizeShowsEverything) {
  ask([](QDialog& dialog) {
    dialog.resize(1, 1);
    QApplication::processEvents();
    for (const char* name : {"picHor", "picVer"}) {
      expectSquareInTheMiddle(find(dialog, name));
      EXPECT_GE(find(dialog, name).width(), 100);
    }
    for (const QWidget* button : dialog.findChildren<QPushButton*>()) {
      EXPECT_GE(button->width(), button->minimumSizeHint().width()) << button->objectName().toStdString();
      EXPECT_TRUE(dialog.rect().contains(button->geometry()));
    }
  });
}

// Red points of the picture: the plot, thin lines and all.
int inkOf(const QImage& image) {
  int ink = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor colour = image.pixelColor(x, y);
      if (colour.red() > 200 && colour.green() < 100 && colour.blue() < 100) ++ink;
    }
  }
  return ink;
}

TEST_F(AntPreview, ThePlotIsDrawnAnewAtEachSizeAndNotStretched) {
  ask([](QDialog& dialog) {
    QWidget& azimuth = find(dialog, "picHor");
    const double before = static_cast<double>(inkOf(azimuth.grab().toImage())) / azimuth.width();
    dialog.resize(2 * dialog.size());
    QApplication::processEvents();
    const double after = static_cast<double>(inkOf(azimuth.grab().toImage())) / azimuth.width();
    EXPECT_GT(before, 0);
    // Lines keep their thickness, so that their ink grows as the side does.
    EXPECT_NEAR(after / before, 1, 0.25);
  });
}

TEST_F(AntPreview, LongNamesAreShownWhole) {
  frmAntPreview form;
  const std::string words = "A sector panel with a long and winding description of what it is and where it came from, ";
  const std::string text = "File: /home/somebody/" + std::string(200, 'w') + "/patterns.msi";
  ask(form, text, words + words + words, 15, sectorAzimuth(), {}, [](QDialog& dialog) {
    const auto expectWhole = [&dialog] {
      const auto* label = dialog.findChild<QLabel*>("lblAnt");
      EXPECT_GE(label->height(), label->heightForWidth(label->width()));
      EXPECT_GE(label->width(), label->minimumSizeHint().width());
      EXPECT_TRUE(dialog.rect().contains(QRect(label->mapTo(&dialog, QPoint()), QSize(1, label->height()))));
    };
    expectWhole();
    savePicture(dialog, "preview-long-names");
    EXPECT_LE(dialog.width(), dialog.screen()->availableGeometry().width());
    EXPECT_LE(dialog.height(), dialog.screen()->availableGeometry().height());
    dialog.resize(dialog.size() + QSize(150, 100));
    QApplication::processEvents();
    expectWhole();
  });
}

TEST_F(AntPreview, ComesBackWhereItWasLeft) {
  QPoint left;
  ask([&left](QDialog& dialog) {
    dialog.move(dialog.pos() + QPoint(-40, 35));
    left = dialog.pos();
  });
  ask([&left](const QDialog& dialog) { EXPECT_EQ(dialog.pos(), left); });
}

class QtImportPreview : public AntPreview {
 protected:
  QtImportPreview() { installSuite(suite_.path()); }

  std::string file(const std::string& name) const {
    return files_.write(name + ".msi",
                        "NAME " + name + "\nFREQUENCY 450\nGAIN 10 dBd\nHORIZONTAL 2\n0 0\n90 3\nVERTICAL 1\n0 0\n");
  }
  // Presses the keys, one in each preview that comes up.
  void pressInTurn(std::vector<std::pair<Qt::Key, Qt::KeyboardModifiers>> keys) {
    onNext([this, keys](QDialog& dialog) {
      press(keys.front().first, keys.front().second);
      EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.isVisible(); }));
      if (keys.size() > 1) pressInTurn({keys.begin() + 1, keys.end()});
    });
  }

  test::TempFolder files_;
};

TEST_F(QtImportPreview, AddSkipAndNoPreviewByTheKeyboardLeaveTheFirstAndTheThird) {
  const std::vector<std::string> chosen = {file("A"), file("B"), file("C"), file("D")};
  pressInTurn({{Qt::Key_Return, Qt::NoModifier}, {Qt::Key_S, Qt::AltModifier}, {Qt::Key_N, Qt::AltModifier}});
  const ImportResult result = importFiles(*findImportFormat("generic"), "T0001", MakeAMSFile("T0001"),
                                          MakeAHDFile("T0001"), MakeAVDFile("T0001"), chosen, true, withPreviews());
  EXPECT_EQ(shown_, 3);
  EXPECT_EQ(result.ErrorCount, 0);
  std::vector<std::string> descriptions;
  for (const AntennaListEntry& entry : listAntennas(getAntennasPath(), "AMST0001")) {
    descriptions.push_back(entry.description);
  }
  EXPECT_THAT(descriptions, ElementsAre("A", "C", "D"));
}

// The window on a light and a dark desktop.
class Pictures : public AntPreview {
 protected:
  void picture(const std::string& name, const std::string& antenna, double gain, const Cut& azimuth,
               const Cut& elevation) {
    if (pictureFolder().isEmpty()) GTEST_SKIP() << "ANTPREVIEW_PICTURES names no folder";
    const QPalette light = QApplication::palette();
    for (const bool dark : {false, true}) {
      QApplication::setPalette(dark ? darkPalette() : light);
      const QString file = toQt(name) + (dark ? "-dark" : "-light");
      frmAntPreview form;
      ask(form, "Generic Format ANTENNA\r\nFile: C:\\Patterns\\Sample.msi", antenna, gain, azimuth, elevation,
          [&file](QDialog& dialog) { savePicture(dialog, file); });
    }
    QApplication::setPalette(light);
  }

 private:
  static QPalette darkPalette() {
    QPalette dark(QColor(53, 53, 53), QColor(45, 45, 45));
    dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
    return dark;
  }
};

TEST_F(Pictures, Sector) {
  picture("preview-sector", "SP-65-15 sector panel, 65 degrees", 15, sectorAzimuth(), panelElevation());
}

TEST_F(Pictures, Omni) {
  picture("preview-omni", "OM-9 collinear omni", 9, cutOf(9, 0, [](double) { return 0.0; }),
          cutOf(9, -180, columnLoss));
}

}  // namespace
}  // namespace vantrelix::qt
