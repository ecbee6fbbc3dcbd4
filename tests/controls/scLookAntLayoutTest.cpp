#include <map>

#include "controls/LookAntFixture.h"

namespace vantrelix {
namespace {

using Layout = test::LookAntTest;

TEST_F(Layout, WideningWidensTheAntennaRows) {
  control.setSize(9001, control.height());
  const Rectangle& desc = control.txtDesc.geometry();
  const Rectangle& file = control.txtFile.geometry();
  const Rectangle& id = control.txtID.geometry();
  EXPECT_EQ(desc.width, 9001 - desc.left - 60);
  EXPECT_EQ(file.width, desc.width / 2 - 30);
  EXPECT_EQ(id.width, file.width);
  EXPECT_EQ(id.left, file.right() + 30);
}

TEST_F(Layout, TheControlIsNeverNarrowerThanAtItsCreation) {
  const int width = control.width();
  const Rectangle desc = control.txtDesc.geometry();
  control.setSize(1000, 777);
  EXPECT_EQ(control.width(), width);
  EXPECT_EQ(control.height(), 777);
  EXPECT_EQ(control.txtDesc.geometry(), desc);
}

TEST_F(Layout, TheTabKeyGoesThroughTheElevenEntries) {
  const std::vector<Widget*> order = {&control.txtDesc,  &control.txtGain,   &control.cboUnit,  &control.cmdClear,
                                      &control.cmdLook,  &control.txtOrient, &control.txtETilt, &control.txtMTilt,
                                      &control.txtMAzim, &control.chkInvert, &control.cboPol};
  for (Widget* widget : control.widgets()) widget->setTabIndex(-1);
  control.ZORUserLogin("");
  for (std::size_t i = 0; i < order.size(); ++i) EXPECT_EQ(order[i]->tabIndex(), static_cast<int>(i));
  EXPECT_EQ(control.txtFile.tabIndex(), -1);
  EXPECT_EQ(scLookAnt().cboPol.tabIndex(), 10);
}

TEST_F(Layout, TheTipsStandOnTheirWidgets) {
  const std::map<const Widget*, std::string> tips = {
      {&control.txtFile, "Antenna Library"},
      {&control.txtID, "Antenna ID"},
      {&control.txtDesc, "Antenna Description"},
      {&control.txtGain, "Major Lobe Gain"},
      {&control.cboUnit, "Gain Units"},
      {&control.txtOrient, "Horizontal orientation"},
      {&control.txtETilt, "Electrical tilt (- for down)"},
      {&control.txtMTilt, "Mechanical tilt (- for down)"},
      {&control.txtMAzim, "Mechanical tilt azimuth"},
      {&control.chkInvert, "Inverted mounting"},
      {&control.cmdLook, "Lookup Antenna from Libraries"},
      {&control.cmdClear, "Clear antenna pattern"},
      {&control.lblPreview, "Click to show or hide pattern previews"},
      {&control.picHor, "Azimuth pattern preview"},
      {&control.picVer, "Elevation pattern preview"},
  };
  for (const Widget* widget : control.widgets()) {
    const auto tip = tips.find(widget);
    EXPECT_EQ(widget->toolTip(), tip == tips.end() ? "" : tip->second) << widget->name();
  }
}

TEST_F(Layout, TheCaptionsStandOnTheirWidgets) {
  std::string captions;
  for (Widget* widget : control.widgets()) {
    if (const auto* label = dynamic_cast<Label*>(widget)) captions += label->caption() + "|";
  }
  EXPECT_EQ(captions, "Antenna|Maj Lobe|Mounting|Orient|Elec Tilt|Mech Tilt|Azimuth|Pol|Hide preview|Azim|Elev|");
  EXPECT_EQ(control.chkInvert.caption(), "Inverted");
  EXPECT_EQ(control.cmdLook.caption(), "...");
  EXPECT_TRUE(control.lblPreview.clickable());
}

TEST_F(Layout, TheMenuHasItsTwoItems) {
  ASSERT_EQ(control.mnuPopup.items().size(), 2u);
  EXPECT_EQ(control.mnuPopup.items()[0]->caption(), "Antenna Library Lookup");
  EXPECT_EQ(control.mnuPopup.items()[1]->caption(), "Compute Parabolic Gain");
}

TEST_F(Layout, FileAndIdAreLockedAndDisabledFromTheStart) {
  EXPECT_TRUE(control.txtFile.locked() && control.txtID.locked());
  EXPECT_FALSE(control.txtFile.enabled() || control.txtID.enabled());
  EXPECT_FALSE(control.bDirty());
  EXPECT_TRUE(control.SeePreview());
}

bool overlap(const Rectangle& a, const Rectangle& b) {
  return a.left < b.right() && b.left < a.right() && a.top < b.bottom() && b.top < a.bottom();
}

TEST_F(Layout, NoWidgetCoversAnotherOrLeavesTheControl) {
  const auto& widgets = control.widgets();
  for (std::size_t i = 0; i < widgets.size(); ++i) {
    const Rectangle& place = widgets[i]->geometry();
    EXPECT_GT(place.width, 0) << widgets[i]->name();
    EXPECT_LE(place.right(), control.width()) << widgets[i]->name();
    EXPECT_LE(place.bottom(), control.height()) << widgets[i]->name();
    for (std::size_t j = i + 1; j < widgets.size(); ++j) {
      EXPECT_FALSE(overlap(place, widgets[j]->geometry())) << widgets[i]->name() << " " << widgets[j]->name();
    }
  }
}

TEST_F(Layout, TheAntennaRowsStandAboveTheFirstLineAndThePicturesAreSquare) {
  const int line = control.Line1.geometry().top;
  for (const Widget* widget : {static_cast<Widget*>(&control.txtDesc), static_cast<Widget*>(&control.txtFile),
                               static_cast<Widget*>(&control.txtGain), static_cast<Widget*>(&control.cmdLook)}) {
    EXPECT_LE(widget->geometry().bottom(), line) << widget->name();
  }
  EXPECT_GT(control.txtOrient.geometry().top, line);
  EXPECT_EQ(control.picHor.geometry().width, control.picHor.geometry().height);
  EXPECT_EQ(control.picVer.geometry().width, control.picHor.geometry().width);
}

}  // namespace
}  // namespace vantrelix
