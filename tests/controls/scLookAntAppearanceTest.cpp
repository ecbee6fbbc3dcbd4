#include "controls/LookAntFixture.h"

namespace vantrelix {
namespace {

class Appearance : public test::LookAntTest {
 protected:
  std::vector<Widget*> antennaWidgets() { return {&control.txtDesc, &control.txtGain, &control.cboUnit}; }
  std::vector<Widget*> mountingWidgets() {
    return {&control.txtOrient, &control.txtETilt,  &control.txtMTilt,
            &control.txtMAzim,  &control.chkInvert, &control.cboPol};
  }
  static void expectColour(const std::vector<Widget*>& widgets, Color colour) {
    for (const Widget* widget : widgets) EXPECT_EQ(widget->backColor(), colour) << widget->name();
  }
};

TEST_F(Appearance, TheThreeColoursPaintAllNineWidgets) {
  control.BackRed(true);
  expectColour(antennaWidgets(), 255);
  expectColour(mountingWidgets(), 255);
  EXPECT_TRUE(control.BackRed());
  control.BackLtGray(true);
  expectColour(antennaWidgets(), 0x8000000F);
  expectColour(mountingWidgets(), 0x8000000F);
  EXPECT_TRUE(control.BackLtGray() && !control.BackRed());
  control.BackWhite(true);
  expectColour(antennaWidgets(), 16777215);
  expectColour(mountingWidgets(), 16777215);
  EXPECT_TRUE(control.BackWhite() && !control.BackLtGray());
}

TEST_F(Appearance, PuttingAColourFalseDoesNothing) {
  control.BackRed(true);
  control.BackWhite(false);
  control.BackLtGray(false);
  control.BackRed(false);
  expectColour(mountingWidgets(), 255);
  EXPECT_TRUE(control.BackRed());
}

TEST_F(Appearance, FileAndIdAreNeverRepainted) {
  const Color file = control.txtFile.backColor();
  const Color id = control.txtID.backColor();
  control.BackRed(true);
  control.Locked(true);
  control.BackWhite(true);
  EXPECT_EQ(control.txtFile.backColor(), file);
  EXPECT_EQ(control.txtID.backColor(), id);
}

TEST_F(Appearance, WhiteLeavesWhatBelongsToTheLibrary) {
  control.LookupOnly(true);
  control.BackWhite(true);
  expectColour(antennaWidgets(), 0x8000000F);
  expectColour(mountingWidgets(), 16777215);
  control.BackRed(true);
  expectColour(antennaWidgets(), 255);
}

TEST_F(Appearance, LookupOnlyLocksAndPaintsItsThreeWidgets) {
  control.LookupOnly(true);
  EXPECT_TRUE(control.txtDesc.locked() && control.txtGain.locked() && control.cboUnit.locked());
  EXPECT_FALSE(control.txtOrient.locked());
  expectColour(antennaWidgets(), 0x8000000F);
  control.LookupOnly(false);
  EXPECT_FALSE(control.txtDesc.locked() || control.txtGain.locked() || control.cboUnit.locked());
  expectColour(antennaWidgets(), 16777215);
}

TEST_F(Appearance, WhileLoadingLookupOnlyIsButAFlag) {
  control.BackWhite(true);
  {
    const ControlLoading loading(control);
    control.LookupOnly(true);
  }
  EXPECT_FALSE(control.txtDesc.locked());
  expectColour(antennaWidgets(), 16777215);
  control.Locked(false);
  EXPECT_TRUE(control.txtDesc.locked());
}

TEST_F(Appearance, LockingLocksDisablesAndGreys) {
  control.Locked(true);
  EXPECT_TRUE(control.Locked());
  for (TextBox* box : {&control.txtDesc, &control.txtGain, &control.txtOrient, &control.txtETilt, &control.txtMTilt,
                       &control.txtMAzim}) {
    EXPECT_TRUE(box->locked()) << box->name();
    EXPECT_TRUE(box->enabled()) << box->name();
  }
  EXPECT_TRUE(control.cboUnit.locked() && control.cboPol.locked());
  EXPECT_FALSE(control.chkInvert.enabled() || control.cmdLook.enabled() || control.cmdClear.enabled());
  EXPECT_TRUE(control.BackLtGray());
}

TEST_F(Appearance, UnlockingOpensAndWhitens) {
  control.Locked(true);
  control.Locked(false);
  EXPECT_FALSE(control.Locked());
  for (TextBox* box : {&control.txtGain, &control.txtOrient, &control.txtETilt, &control.txtMTilt, &control.txtMAzim}) {
    EXPECT_FALSE(box->locked()) << box->name();
  }
  EXPECT_FALSE(control.cboUnit.locked() || control.cboPol.locked());
  EXPECT_TRUE(control.chkInvert.enabled() && control.cmdLook.enabled() && control.cmdClear.enabled());
  EXPECT_TRUE(control.BackWhite());
}

TEST_F(Appearance, FileAndIdStayLockedAndDisabledWhateverIsPut) {
  for (const bool locked : {true, false}) {
    control.txtFile.setEnabled(true);
    control.txtID.setLocked(false);
    control.Locked(locked);
    EXPECT_TRUE(control.txtFile.locked() && control.txtID.locked());
    EXPECT_FALSE(control.txtFile.enabled() || control.txtID.enabled());
  }
}

TEST_F(Appearance, UnlockingLeavesWhatBelongsToTheLibraryLocked) {
  control.LookupOnly(true);
  control.Locked(false);
  EXPECT_TRUE(control.txtDesc.locked() && control.txtGain.locked() && control.cboUnit.locked());
  EXPECT_FALSE(control.txtOrient.locked());
  expectColour(antennaWidgets(), 0x8000000F);
}

TEST_F(Appearance, PolarisationAndItsCaptionAreShownTogether) {
  EXPECT_TRUE(control.bPolVis());
  control.bPolVis(false);
  EXPECT_FALSE(control.bPolVis() || control.lblPol.visible());
  control.bPolVis(true);
  EXPECT_TRUE(control.cboPol.visible() && control.lblPol.visible());
}

TEST_F(Appearance, PreviewsAreShownAndHiddenByTheHeight) {
  EXPECT_TRUE(control.SeePreview());
  control.SeePreview(false);
  EXPECT_EQ(control.lblPreview.caption(), "Show preview");
  EXPECT_EQ(control.height(), control.picHor.geometry().top);
  EXPECT_EQ(heard(), "size ");
  control.lblPreview.userClick();
  EXPECT_TRUE(control.SeePreview());
  EXPECT_EQ(control.lblPreview.caption(), "Hide preview");
  EXPECT_EQ(control.height(), control.picHor.geometry().bottom() + 60);
  EXPECT_EQ(heard(), "size ");
}

TEST_F(Appearance, GainOnlyCutsTheHeightAndIsUndoneToThePreviewsState) {
  control.SeePreview(false);
  heard();
  control.bSeeGainOnly(true);
  EXPECT_EQ(control.height(), control.Line1.geometry().top);
  EXPECT_EQ(heard(), "size ");
  control.bSeeGainOnly(false);
  EXPECT_EQ(control.height(), control.picHor.geometry().top);
  EXPECT_EQ(heard(), "size ");
}

TEST_F(Appearance, ReadingGainOnlyClearsItAndGivesFalse) {
  control.bSeeGainOnly(true);
  EXPECT_FALSE(control.bSeeGainOnly());
  EXPECT_FALSE(control.bSeeGainOnly());
  EXPECT_EQ(control.height(), control.Line1.geometry().top);
}

}  // namespace
}  // namespace vantrelix
