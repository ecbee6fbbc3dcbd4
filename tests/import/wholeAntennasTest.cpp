// The library holds whole antennas, whichever write fails.
#include "ImportSuite.h"
#include "platform/FaultPlatform.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

using WholeAntennas = ImportSuite;

// Of the antennas in the library, each has all its points.
void expectWhole(const std::vector<AntennaListEntry>& list, int call) {
  for (const AntennaListEntry& entry : list) {
    EXPECT_EQ(entry.horizontalPoints, 2) << call;
    EXPECT_EQ(entry.verticalPoints, 1) << call;
  }
}

TEST_F(WholeAntennas, AnAntennaIsInTheLibraryWholeOrNotAtAllWhicheverWriteFails) {
  const std::string path = file("a.msi", "A");
  run({path});
  platform::FaultPlatform faults(platform::current());
  const platform::Substitute substitute(faults);
  ImportOwner owner;
  owner.progress = [&](const std::string&) { faults.reset(); };
  run({path}, false, owner);
  const int calls = faults.calls();
  ASSERT_GT(calls, 3);
  std::size_t whole = 2;
  for (int call = 1; call <= calls; ++call) {
    suite.answers = {MsgAnswer::ok, MsgAnswer::ok};
    owner.progress = [&](const std::string&) { faults.failAt(call, failure::diskFull); };
    const ImportResult result = run({path}, false, owner);
    faults.reset();
    whole += result.added.size();
    EXPECT_EQ(result.added.size() + result.failed.size(), 1u) << call;
    // Takes the ID of the one that failed, and none of its points.
    owner.progress = {};
    whole += run({path}, false, owner).added.size();
    const std::vector<AntennaListEntry> list = listAntennas(getAntennasPath(), std::string("AMS") + kMfg);
    EXPECT_EQ(list.size(), whole) << call;
    expectWhole(list, call);
  }
}

// A disk that takes no write at all any more, not even the taking away of a part.
TEST_F(WholeAntennas, APartThatCannotBeTakenAwayIsToldAndNoOtherAntennaGetsItsPoints) {
  const std::string path = file("a.msi", "A");
  run({path});
  platform::FaultPlatform faults(platform::current());
  const platform::Substitute substitute(faults);
  ImportOwner owner;
  std::size_t told = 0;
  for (int call = 1; call <= 6; ++call) {
    suite.answers = {MsgAnswer::ok};
    suite.messages.clear();
    owner.progress = [&](const std::string&) { faults.crashAt(call); };
    run({path}, false, owner);
    ASSERT_FALSE(suite.messages.empty());
    const std::string& text = suite.messages[0].text;
    told +=
        text.find("\r\nA part of the antenna is left in the library; delete the antenna in the editor. Error 57: ") !=
        std::string::npos;
    faults.reset();
    owner.progress = {};
    run({path}, false, owner);
  }
  std::size_t parts = 0;
  for (const AntennaListEntry& entry : listAntennas(getAntennasPath(), std::string("AMS") + kMfg)) {
    EXPECT_LE(entry.horizontalPoints, 2);
    EXPECT_LE(entry.verticalPoints, 1);
    parts += entry.horizontalPoints < 2 || entry.verticalPoints < 1;
  }
  EXPECT_GT(told, 0u);
  EXPECT_EQ(parts, told);
}

TEST_F(WholeAntennas, APointThatItsFieldCannotHoldLeavesNothingOfItsAntenna) {
  suite.answers = {MsgAnswer::ok};
  const std::string text = "NAME A\nGAIN 1 dBd\nHORIZONTAL 1\n0 0\nVERTICAL 2\n0 0\n99999999999 0\n";
  const ImportResult result = run({files.write("wide.msi", text), file("b.msi", "B")});
  ASSERT_EQ(result.failed.size(), 1u);
  EXPECT_THAT(result.failed[0], HasSubstr("Error 3163: "));
  EXPECT_THAT(descriptions(), ElementsAre("B"));
  EXPECT_EQ(result.added.at(0).id, "T00010000001");
}

}  // namespace

}  // namespace vantrelix::test
