#include "DecibelRules.h"

namespace vantrelix::test {

namespace {

class TxRx : public DecibelRules {
 protected:
  TxRx() : DecibelRules("txrx") {}
};

TEST_F(TxRx, ReadsTheHeaderByItsPlaces) { expectHeaderByPlaces(); }

TEST_F(TxRx, AFrequencyOfZeroCountsForAll) { expectDerivedBand(); }

TEST_F(TxRx, AnotherPlaneFailsTheFile) { expectOtherPlanesToFail(); }

TEST_F(TxRx, WrapsAzimuthsAndNegatesElevations) { expectCuts(); }

TEST_F(TxRx, ThePartnerIsNamedByTheLastLetterOfThePath) { expectPartnerByTheLastLetterOfThePath(); }

TEST_F(TxRx, BothFilesOfAPairAddOneAntennaInEitherOrder) { expectSamplePairInEitherOrder("LK4-H.dat", "LK4-V.dat"); }

TEST_F(TxRx, ReadsEveryKindOfTextFile) {
  EXPECT_EQ(only({copied("TIP.dat")}).VerCount, 36);
  EXPECT_EQ(only({copied("WIDE.dat")}).HorCount, 36);
}

TEST_F(TxRx, DamagedFilesFailOrReadButNeverHarm) {
  expectDamagedSamplesToFailBut({"damaged-no-points.dat", "damaged-words-among-points.dat"});
}

TEST_F(TxRx, BadFilesHarmNothing) { expectBadFilesToHarmNothing("GOOD.DAT", text("H")); }

}  // namespace

}  // namespace vantrelix::test
