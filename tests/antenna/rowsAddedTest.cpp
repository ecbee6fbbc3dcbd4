#include "AntennaSuite.h"
#include "antenna/RowsAdded.h"
#include "platform/FaultPlatform.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::test {

namespace {

class RowsAddedTest : public AntennaSuite {
 protected:
  RowsAddedTest() { addTo(MakeAMSFile(kCode), "first"); }

  static void addTo(const RecordsetPtr& rows, const std::string& name) {
    rows->AddNew();
    rows->put("ANTENNA", name);
    rows->Update();
  }
  // What another program reads.
  static std::vector<std::string> names() {
    std::vector<std::string> result;
    const RecordsetPtr rows = MakeAMSFile(kCode);
    for (; !rows->Eof(); rows->MoveNext()) result.push_back(rows->value("ANTENNA").asText());
    for (std::string& name : result) name.resize(name.find_last_not_of(' ') + 1);
    return result;
  }
};

TEST_F(RowsAddedTest, LeaveTheTableAsItWas) {
  const RecordsetPtr rows = MakeAMSFile(kCode);
  RowsAdded added(rows);
  addTo(rows, "second");
  addTo(rows, "third");
  added.takeAway();
  EXPECT_THAT(names(), ::testing::ElementsAre("first"));
  EXPECT_EQ(rows->rowCount(), 1);
  addTo(rows, "fourth");
  EXPECT_THAT(names(), ::testing::ElementsAre("first", "fourth"));
}

TEST_F(RowsAddedTest, AreNeverThoseOfOtherCursors) {
  const RecordsetPtr rows = MakeAMSFile(kCode);
  RowsAdded added(rows);
  addTo(MakeAMSFile(kCode), "of another, before");
  addTo(rows, "own");
  addTo(MakeAMSFile(kCode), "of another, behind");
  added.takeAway();
  EXPECT_THAT(names(), ::testing::ElementsAre("first", "of another, before", "of another, behind"));
}

TEST_F(RowsAddedTest, OfATableThatWasEmptyAreAllOfIt) {
  const RecordsetPtr rows = MakeAHDFile(kCode);
  RowsAdded added(rows);
  rows->AddNew();
  rows->Update();
  added.takeAway();
  EXPECT_EQ(rows->rowCount(), 0);
  EXPECT_EQ(rowCount(MakeAHDFile(kCode)), 0);
}

TEST_F(RowsAddedTest, NoneOfNoCursorOrAClosedOne) {
  RowsAdded(nullptr).takeAway();
  const RecordsetPtr rows = MakeAMSFile(kCode);
  RowsAdded open(rows);
  rows->Close();
  open.takeAway();
  RowsAdded(rows).takeAway();
  EXPECT_THAT(names(), ::testing::ElementsAre("first"));
}

TEST_F(RowsAddedTest, AreAllTriedWhereOneFails) {
  platform::FaultPlatform faults(platform::current());
  const platform::Substitute substitute(faults);
  const RecordsetPtr rows = MakeAMSFile(kCode);
  RowsAdded added(rows);
  addTo(rows, "second");
  addTo(rows, "third");
  faults.failAt(1, failure::deviceIO);
  int number = 0;
  try {
    added.takeAway();
  } catch (const RunTimeFailure& failure) {
    number = failure.number();
  }
  EXPECT_EQ(number, failure::deviceIO);
  EXPECT_THAT(names(), ::testing::ElementsAre("first", "third"));
}

}  // namespace

}  // namespace vantrelix::test
