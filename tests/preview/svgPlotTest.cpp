#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "preview/svgPlot.h"
#include "support/TempSuite.h"

namespace vantrelix {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

AntRecord panel() {
  AntRecord antenna;
  antenna.description = "Panel <65\xC2\xB0> & \"friends\"";
  antenna.gain = 12.5;
  antenna.lowFrequency = 824;
  antenna.highFrequency = 896;
  antenna.nHor = 3;
  antenna.HorAz = {0, 90, 200};
  antenna.HorField = {12.5, -5, 2};
  antenna.nVer = 2;
  antenna.VerAngle = {-90, 90};
  antenna.VerField = {-10, -12};
  return antenna;
}

std::string joined(const PlotPage& page) {
  std::string all;
  for (const auto& text : page.texts) all += text.text + "|";
  return all;
}

TEST(PlotPage, NamesTheAntennaItsGainItsBandAndThePlanes) {
  test::TempSuite suite;
  EXPECT_EQ(joined(plotPage(panel())),
            "Panel <65\xC2\xB0> & \"friends\"|Gain: 12.50 dBd|824 - 896 MHz|Azimuth|Elevation|");
}

TEST(PlotPage, LeavesOutABandThatIsNotKnown) {
  test::TempSuite suite;
  AntRecord antenna = panel();
  antenna.lowFrequency = antenna.highFrequency = 0;
  EXPECT_THAT(joined(plotPage(antenna)), HasSubstr("|Gain: 12.50 dBd|Azimuth|"));
  antenna.highFrequency = 960;
  EXPECT_THAT(joined(plotPage(antenna)), HasSubstr("|0 - 960 MHz|"));
}

TEST(PlotPage, ABandOfOneFrequencyIsThatFrequency) {
  test::TempSuite suite;
  AntRecord antenna = panel();
  antenna.lowFrequency = antenna.highFrequency = 450;
  EXPECT_THAT(joined(plotPage(antenna)), HasSubstr("|450 MHz|Azimuth|"));
}

TEST(PlotPage, DrawsBothCutsAsThePreviewsDo) {
  test::TempSuite suite;
  const PlotPage page = plotPage(panel());
  ASSERT_EQ(page.pictures.size(), 2u);
  EXPECT_EQ(page.pictures[0]->lines().size(), 4u);
  EXPECT_EQ(page.pictures[1]->lines().size(), 3u);
  EXPECT_DOUBLE_EQ(page.pictures[0]->scale().width, 2.1 * 17.5);
  EXPECT_DOUBLE_EQ(page.pictures[1]->scale().width, 2.1 * 24.5);
}

TEST(PlotPage, ShowsBareAxesForAMissingCutAndNothingWithoutAnAntenna) {
  test::TempSuite suite;
  AntRecord antenna = panel();
  antenna.nVer = 0;
  EXPECT_EQ(plotPage(antenna).pictures[1]->lines().size(), 2u);
  EXPECT_TRUE(plotPage(AntRecord()).pictures[0]->lines().empty());
}

TEST(PlotPage, KeepsPicturesAndTextsOnThePage) {
  test::TempSuite suite;
  AntRecord antenna = panel();
  antenna.description = std::string(60, 'W');
  const PlotPage page = plotPage(antenna);
  EXPECT_LE(page.pictures[0]->geometry().right(), page.pictures[1]->geometry().left);
  EXPECT_LE(page.pictures[1]->geometry().right(), page.width);
  EXPECT_LE(page.pictures[1]->geometry().bottom(), page.height);
  EXPECT_LT(page.texts[0].size, plotPage(panel()).texts[0].size);
}

TEST(SvgOf, IsAPageOfItsOwnWithEscapedTexts) {
  test::TempSuite suite;
  const PlotPage page = plotPage(panel());
  const std::string svg = svgOf(page);
  EXPECT_THAT(svg, HasSubstr("xmlns=\"http://www.w3.org/2000/svg\""));
  EXPECT_THAT(svg, HasSubstr("width=\"6.7500in\" height=\"4.3958in\" viewBox=\"0 0 648.00 422.00\""));
  EXPECT_THAT(svg, HasSubstr(">Panel &lt;65\xC2\xB0&gt; &amp; &quot;friends&quot;</text>"));
  EXPECT_THAT(svg, HasSubstr("vector-effect:non-scaling-stroke"));
}

TEST(SvgOf, TurnsUserCoordinatesIntoPlacesOnThePage) {
  PlotPage page;
  page.width = page.height = 1440;
  page.pictures.push_back(std::make_unique<PictureBox>("pic"));
  PictureBox& picture = *page.pictures[0];
  picture.setGeometry({100, 100, 1000, 1000});
  picture.setScale({-1, 1, 2, -2});
  picture.drawLine(0, 0, 1, 1, color::red);
  picture.drawLine(1, 1, 1, -1, color::red);
  picture.drawLine(-1, 0, 1, 0, color::blue);
  const std::string svg = svgOf(page);
  EXPECT_THAT(svg, HasSubstr("stroke=\"#ff0000\" d=\"M40.00 40.00L73.33 6.67L73.33 73.33\"/>"));
  EXPECT_THAT(svg, HasSubstr("stroke=\"#0000ff\" d=\"M6.67 40.00L73.33 40.00\"/>"));
  EXPECT_THAT(svg, HasSubstr("width=\"1.0000in\""));
}

TEST(SvgOf, WritesNothingThatXmlCannotHold) {
  PlotPage page;
  page.texts.push_back({0, 100, 100, false, std::string("a\x01") + "b\xFF" + "c"});
  EXPECT_THAT(svgOf(page), HasSubstr(">a\xEF\xBF\xBD"
                                     "b\xEF\xBF\xBD"
                                     "c</text>"));
  EXPECT_THAT(svgOf(page), Not(HasSubstr("<path")));
}

}  // namespace
}  // namespace vantrelix
