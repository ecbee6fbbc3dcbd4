// How the antenna editor's window divides its room. Where ANTEDITOR_PICTURES names a folder, pictures of it are drawn
// there; QT_SCALE_FACTOR draws them larger.
#include <cmath>

#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QScrollBar>
#include <QSplitter>

#include "AntennaEditorFixture.h"
#include "qt/twips.h"

namespace vantrelix::qt {
namespace {

constexpr QSize kLaptop(1024, 600);

class EditorLayout : public AntennaEditorTest {
 protected:
  void resize(QSize size) {
    window().resize(size);
    QApplication::processEvents();
  }
  QRect place(const QWidget& widget) { return {widget.mapTo(&window(), QPoint()), widget.size()}; }
  QSplitter& cuts() { return find<QSplitter>("frmHDAntEditor-Split Cuts"); }
  QSplitter& all() { return find<QSplitter>("frmHDAntEditor-Split List"); }
  static std::vector<double> shares(const QSplitter& splitter) {
    double whole = 0;
    for (const int size : splitter.sizes()) whole += size;
    std::vector<double> found;
    for (const int size : splitter.sizes()) found.push_back(size / whole);
    return found;
  }
  // As by the mouse.
  static void drag(QSplitter& splitter, int handle, int by) {
    QSplitterHandle& grip = *splitter.handle(handle);
    const QPoint from = grip.rect().center();
    const QPoint to = from + (splitter.orientation() == Qt::Horizontal ? QPoint(by, 0) : QPoint(0, by));
    QTest::mousePress(&grip, Qt::LeftButton, {}, from);
    QTest::mouseMove(&grip, to);
    QTest::mouseRelease(&grip, Qt::LeftButton, {}, to);
    QApplication::processEvents();
  }
  // What has less room than it needs, or stands outside of the window.
  QStringList cutOff() {
    QStringList found;
    for (const auto* widget : window().findChildren<QWidget*>()) {
      const bool shows = qobject_cast<const QPushButton*>(widget) || qobject_cast<const QGroupBox*>(widget) ||
                         qobject_cast<const QComboBox*>(widget) || qobject_cast<const QMenuBar*>(widget);
      const auto* label = qobject_cast<const QLabel*>(widget);
      // What tells of work is shortened; a frame's title, which may be of any length, too.
      const bool progress = QStringList({"lblProgress", "lblAzPat", "lblElPat"}).contains(widget->objectName());
      if (!widget->isVisible() || !(shows || label) || progress) continue;
      QSize needed = shows ? widget->minimumSizeHint() : label->sizeHint();
      if (widget->minimumWidth() > 0) needed.setWidth(widget->minimumWidth());
      const bool fits = widget->width() >= needed.width() && widget->height() >= needed.height();
      if (!fits || !window().rect().contains(place(*widget))) found << widget->objectName();
    }
    for (const auto* box : window().findChildren<QLineEdit*>()) {
      if (!box->isVisible()) continue;
      const int text = box->fontMetrics().horizontalAdvance(box->text());
      if (box->contentsRect().width() < text || !window().rect().contains(place(*box))) found << box->objectName();
    }
    return found;
  }
};

TEST_F(EditorLayout, TheListIsAcrossTheTopAndEachCutHasItsThumbnailAtItsSide) {
  edit([this] {
    const QRect list = place(find("fraAMS"));
    const QRect boxes[] = {place(find("fraAHD")), place(find("fraHor")), place(find("fraAVD")), place(find("fraVer"))};
    EXPECT_EQ(list.left(), boxes[0].left());
    EXPECT_EQ(list.right(), boxes[3].right());
    for (int i = 0; i < 4; ++i) {
      EXPECT_GT(boxes[i].top(), list.bottom());
      EXPECT_EQ(boxes[i].top(), boxes[0].top());
      EXPECT_EQ(boxes[i].height(), boxes[0].height());
      EXPECT_GT(boxes[i].left(), i > 0 ? boxes[i - 1].right() : 0);
    }
  });
}

TEST_F(EditorLayout, ButtonsStandWithWhatTheyActOn) {
  edit([this] {
    const std::pair<const char*, std::vector<int>> homes[] = {
        {"fraAMS", {0, 8, 7}}, {"fraAHD", {9, 1}}, {"fraHor", {5}}, {"fraAVD", {10, 4}}, {"fraVer", {6}}};
    for (const auto& [frame, buttons] : homes) {
      for (const int button : buttons) {
        EXPECT_TRUE(find(frame).isAncestorOf(&find("Command1_" + std::to_string(button)))) << frame << button;
      }
    }
    for (const int button : {2, 3}) EXPECT_FALSE(find("Command1_" + std::to_string(button)).isVisible());
    const QRect proceed = place(find("Command1_11")), cancel = place(find("Command1_12"));
    EXPECT_LT(proceed.right(), cancel.left());
    EXPECT_GT(cancel.right(), window().width() - 30);
    EXPECT_GT(cancel.bottom(), window().height() - 30);
  });
}

TEST_F(EditorLayout, OnASmallScreenNothingIsCutOff) {
  for (const char* mode : {" ", "LOOKUP"}) {
    run(mode, 850, [this] {
      press(Qt::Key_Down);
      EXPECT_LE(window().minimumSizeHint().width(), kLaptop.width());
      EXPECT_LE(window().minimumSizeHint().height(), kLaptop.height() - 40);
      for (const QSize size : {kLaptop - QSize(0, 40), window().minimumSizeHint(), QSize(1600, 1000)}) {
        resize(size);
        EXPECT_EQ(window().size(), size);
        EXPECT_EQ(cutOff(), QStringList()) << size.width();
        const int selected = form().TDBGridAMS.currentRow();
        EXPECT_TRUE(list().viewport()->rect().contains(list().visualRect(list().model()->index(selected, 1))));
        for (const char* grid : {"TDBGridAHD", "TDBGridAVD"}) {
          auto& points = find<QTableView>(grid);
          EXPECT_GE(points.viewport()->height(), 2 * points.verticalHeader()->defaultSectionSize()) << grid;
        }
      }
    });
  }
}

TEST_F(EditorLayout, TheFirstTimeItFitsItsScreen) {
  edit([this] {
    const QRect room = window().screen()->availableGeometry();
    EXPECT_TRUE(room.contains(QRect(window().pos(), window().size())));
  });
}

TEST_F(EditorLayout, ThumbnailsStaySquareInTheMiddle) {
  edit([this] {
    for (const QSize size : {kLaptop, QSize(1600, 700), QSize(1200, 1100)}) {
      resize(size);
      for (const char* name : {"picHor", "picVer"}) {
        const QWidget& picture = find(name);
        EXPECT_EQ(picture.width(), picture.height());
        EXPECT_GE(picture.width(), 100);
        EXPECT_LE(std::abs(picture.geometry().center().x() - picture.parentWidget()->rect().center().x()), 1);
        EXPECT_LE(std::abs(picture.geometry().center().y() - picture.parentWidget()->rect().center().y()), 1);
      }
    }
  });
}

TEST_F(EditorLayout, ManySizesLaterThePartsHaveTheirSharesAgain) {
  edit([this] {
    resize({1500, 1000});
    drag(all(), 1, 90);
    drag(cuts(), 2, 60);
    const auto list = shares(all()), across = shares(cuts());
    for (const QSize size : {kLaptop, QSize(1900, 1200), QSize(700, 500), QSize(1233, 777), QSize(1500, 1000)}) {
      resize(size);
    }
    EXPECT_NEAR(shares(all())[0], list[0], 0.005);
    for (std::size_t i = 0; i < across.size(); ++i) EXPECT_NEAR(shares(cuts())[i], across[i], 0.005);
  });
}

TEST_F(EditorLayout, SplittersComeBackAsTheUserLeftThem) {
  std::vector<double> left;
  edit([&] {
    resize({1500, 1000});
    drag(all(), 1, -120);
    left = shares(all());
    EXPECT_LT(left[0], 0.40);
  });
  edit([&] {
    resize({1500, 1000});
    EXPECT_NEAR(shares(all())[0], left[0], 0.01);
  });
  setINI("CONFIG", "frmHDAntEditor-Split List", getDefaultsINI(), "1000|much|0");
  edit([&] {
    resize({1500, 1000});
    EXPECT_NEAR(shares(all())[0], 0.44, 0.01);
  });
}

TEST_F(EditorLayout, TheWindowComesBackInItsPlaceAndSize) {
  QRect left;
  edit([&] {
    window().setGeometry(30, 40, 760, 560);
    QApplication::processEvents();
    left = QRect(window().pos(), window().size());
  });
  form().unload();
  edit([&] { EXPECT_EQ(QRect(window().pos(), window().size()), left); });
}

TEST_F(EditorLayout, TheFormKnowsWhereItsFramesAre) {
  edit([this] {
    const auto expectTrue = [this] {
      for (const Frame* frame : {&form().fraAMS, &form().fraAHD, &form().fraHor, &form().fraAVD, &form().fraVer}) {
        EXPECT_EQ(pixelsOf(frame->geometry(), window()), place(find(frame->name()))) << frame->name();
      }
    };
    expectTrue();
    const int before = form().fraHor.geometry().left;
    resize({1400, 900});
    expectTrue();
    EXPECT_GT(form().fraHor.geometry().left, before);
    drag(all(), 1, 50);
    drag(cuts(), 1, 40);
    expectTrue();
  });
}

TEST_F(EditorLayout, TheFrequencyIsShownWhereThereIsOne) {
  run("LOOKUP", 0, [this] {
    for (const char* name : {"lblFreq", "txtFreq", "txtFreqDelta", "cboFreqDelta"}) {
      EXPECT_FALSE(find(name).isVisible()) << name;
    }
  });
  run("LOOKUP", 850, [this] {
    EXPECT_EQ(find<QLineEdit>("txtFreq").text(), "850.0000+/-");
    EXPECT_TRUE(find<QLineEdit>("txtFreq").isReadOnly());
    for (const char* name : {"lblFreq", "txtFreq", "txtFreqDelta", "cboFreqDelta"}) {
      EXPECT_TRUE(find(name).isVisible()) << name;
      EXPECT_TRUE(find("fraAMS").isAncestorOf(&find(name)));
    }
  });
}

TEST_F(EditorLayout, TitlesAndProgressFollowTheForm) {
  edit([this] {
    EXPECT_EQ(find<QGroupBox>("fraHor").title(), "Azimuth Thumbnail");
    EXPECT_EQ(find<QGroupBox>("fraVer").title(), "Elevation Thumbnail");
    form().fraAHD.setCaption("4 Azimuths");
    EXPECT_EQ(find<QGroupBox>("fraAHD").title(), "4 Azimuths");
    const int width = window().minimumSizeHint().width();
    form().lblProgress.setCaption(std::string(500, 'x'));
    form().fraAVD.setCaption(std::string(500, 'x'));
    QApplication::processEvents();
    EXPECT_EQ(find<QLabel>("lblProgress").text().size(), 500);
    EXPECT_EQ(window().minimumSizeHint().width(), width);
    const auto& cut = find<QGroupBox>("fraAVD");
    EXPECT_TRUE(cut.title().endsWith(QChar(0x2026))) << cut.title().toStdString();
    EXPECT_LE(cut.fontMetrics().horizontalAdvance(cut.title()), cut.width());
    EXPECT_EQ(cut.toolTip().size(), 500);
    form().fraAVD.setCaption("El Pat: short");
    EXPECT_EQ(cut.title(), "El Pat: short");
    EXPECT_EQ(cut.toolTip(), "");
  });
}

// --- On a dark desktop.

QPalette darkPalette() {
  QPalette dark(QColor(62, 66, 72), QColor(50, 53, 58));
  dark.setColor(QPalette::Base, QColor(34, 36, 40));
  dark.setColor(QPalette::AlternateBase, QColor(41, 43, 48));
  dark.setColor(QPalette::Highlight, QColor(46, 110, 190));
  return dark;
}

class PaletteInUse {
 public:
  explicit PaletteInUse(const QPalette& palette) { QApplication::setPalette(palette); }
  ~PaletteInUse() { QApplication::setPalette(former_); }
  PaletteInUse(const PaletteInUse&) = delete;
  PaletteInUse& operator=(const PaletteInUse&) = delete;

 private:
  QPalette former_ = QApplication::palette();
};

TEST_F(EditorLayout, ARowThatDoesNotCoverTheFrequencyReadsOnADarkDesktopToo) {
  const PaletteInUse dark(darkPalette());
  run("LOOKUP", 850, [this] {
    const auto colour = [this](int row, int role) {
      return list().model()->index(row, 1).data(role).template value<QColor>();
    };
    EXPECT_EQ(colour(1, Qt::BackgroundRole), QColor(255, 128, 128));
    EXPECT_GT(contrast(colour(1, Qt::BackgroundRole), colour(1, Qt::ForegroundRole)), 4.5);
    EXPECT_FALSE(list().model()->index(0, 1).data(Qt::BackgroundRole).isValid());
  });
}

// --- Pictures.

class EditorPictures : public EditorLayout {
 protected:
  // Decibels below the beam: the usual parabola of a main lobe 65 degrees wide, and a back lobe 25 dB down.
  static double sectorLoss(double off) {
    return std::min(12 * std::pow(off / 65, 2), 25 + 3 * std::pow((180 - off) / 70, 2));
  }
  // A column of elements with a beam of 8 degrees and its side lobes, at most 35 dB down.
  static double columnLoss(double off) {
    constexpr double kPi = 3.14159265358979;
    const double phase = kPi * 6.35 * std::sin(off * kPi / 180);
    const double factor = std::abs(phase) < 1e-9 ? 1 : std::abs(std::sin(phase) / phase);
    const double back = 20 * (1 - std::cos(off * kPi / 180)) / 2;
    return std::min(-20 * std::log10(std::max(factor, 1e-9)) + back, 35.0);
  }
  static double hundredths(double value) { return std::round(value * 100) / 100; }
  static void addSector(const std::string& description, double gain, double low, double high) {
    test::Cut azimuth, elevation;
    for (int i = 0; i < 360; ++i) {
      azimuth.angles.push_back(i);
      azimuth.values.push_back(hundredths(gain - sectorLoss(std::abs(std::remainder(i, 360.0)))));
      elevation.angles.push_back(i - 180);
      elevation.values.push_back(hundredths(gain - columnLoss(i - 180)));
    }
    add(description, gain, "dBd", azimuth, elevation, low, high);
  }
  EditorPictures() {
    for (const char* table : {"AMST0001", "AHDT0001", "AVDT0001"}) take(table);
    for (const auto& [name, gain, low, high] : {std::tuple("HL-450-6 collinear omni", 6.0, 440.0, 470.0),
                                                {"HL-850-9 collinear omni", 9.0, 806.0, 896.0},
                                                {"HL-SP65-14 sector panel, 65 degrees", 14.0, 806.0, 960.0},
                                                {"HL-SP65-14 sector panel, 2 degrees tilt", 14.0, 806.0, 960.0},
                                                {"HL-SP90-12 sector panel, 90 degrees", 12.0, 806.0, 960.0},
                                                {"HL-Y8 yagi, 8 elements", 10.0, 406.0, 430.0},
                                                {"HL-D60 grid dish", 21.5, 2300.0, 2700.0}}) {
      addSector(name, gain, low, high);
    }
  }

  void draw(const std::string& mode, double freq, const QString& name) {
    const QString folder = qEnvironmentVariable("ANTEDITOR_PICTURES");
    run(mode, freq, [&] {
      form().LibDesc = "Hilltop Antennas";
      form().MakeMyCaption();
      goTo(mode == "LOOKUP" ? 3 : 4, "ANTENNA");
      resize({1040, 660});
      form().TDBGridAMS.userResizeColumn(form().TDBGridAMS.columnOf("ANTENNA"), 5000);
      const QString path = folder + "/" + name;
      EXPECT_TRUE(window().grab().save(path)) << path.toStdString();
    });
  }
  void SetUp() override {
    if (qEnvironmentVariableIsEmpty("ANTEDITOR_PICTURES")) GTEST_SKIP() << "ANTEDITOR_PICTURES names no folder";
  }
};

TEST_F(EditorPictures, Editor) {
  const bool large = qEnvironmentVariableIsSet("QT_SCALE_FACTOR");
  draw(" ", 850, large ? "editor-200.png" : "editor-light.png");
  if (large) return;
  draw("LOOKUP", 850, "lookup.png");
  const PaletteInUse dark(darkPalette());
  draw(" ", 850, "editor-dark.png");
}

}  // namespace
}  // namespace vantrelix::qt
