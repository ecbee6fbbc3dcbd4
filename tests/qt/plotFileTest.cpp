#include <gtest/gtest.h>

#include <QImage>

#include "platform/RunTimeFailure.h"
#include "qt/plotFile.h"
#include "support/TempFolder.h"

namespace vantrelix::qt {
namespace {

PlotPage page() {
  AntRecord antenna;
  antenna.description = "Panel";
  antenna.gain = 12;
  antenna.nHor = antenna.nVer = 3;
  antenna.HorAz = antenna.VerAngle = {0, 120, 240};
  antenna.HorField = antenna.VerField = {12, 2, 2};
  return plotPage(antenna);
}

TEST(PlotFile, APngIsLargeAndHoldsBothColours) {
  const test::TempFolder folder;
  writePlotFile(page(), folder.machine("plot.png"));
  const QImage image(QString::fromStdString(folder.machine("plot.png")));
  ASSERT_FALSE(image.isNull());
  EXPECT_GE(image.width(), 1600);
  int red = 0, blue = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor pixel = image.pixelColor(x, y);
      red += pixel == QColor(Qt::red);
      blue += pixel == QColor(Qt::blue);
    }
  }
  EXPECT_GT(red, 100);
  EXPECT_GT(blue, 100);
}

TEST(PlotFile, APdfIsWrittenWhole) {
  const test::TempFolder folder;
  writePlotFile(page(), folder.machine("plot.PDF"));
  const std::string bytes = folder.read("plot.PDF");
  EXPECT_EQ(bytes.substr(0, 5), "%PDF-");
  EXPECT_NE(bytes.find("%%EOF"), std::string::npos);
}

TEST(PlotFile, AnotherEndingIsRefusedByName) {
  const test::TempFolder folder;
  try {
    writePlotFile(page(), folder.machine("plot.gif"));
    FAIL() << "was written";
  } catch (const RunTimeFailure& failure) {
    EXPECT_NE(failure.description().find("plot.gif"), std::string::npos);
    EXPECT_NE(failure.description().find(".pdf"), std::string::npos);
  }
  EXPECT_FALSE(folder.exists("plot.gif"));
}

TEST(PlotFile, AFolderThatIsNotThereIsARunTimeFailure) {
  const test::TempFolder folder;
  EXPECT_THROW(writePlotFile(page(), folder.machine("no/plot.png")), RunTimeFailure);
}

}  // namespace
}  // namespace vantrelix::qt
