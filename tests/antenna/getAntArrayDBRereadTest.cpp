#include <filesystem>
#include <fstream>

#include "AntennaSuite.h"
#include "tables/TextRuns.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;

// An antenna is read again and again while other programs write to its library.
class GetAntArrayDBAgain : public AntennaSuite {
 protected:
  GetAntArrayDBAgain() : former_(smallestRemembered()) { setSmallestRemembered(1); }
  ~GetAntArrayDBAgain() override { setSmallestRemembered(former_); }

  std::string machinePath(const std::string& table) const { return suite.folder().machine("ANTENNAS/" + table); }

  // Writes the same number of bytes over the first place where `from` stands, and gives the file its former time, as a
  // write within the same tick of the clock would.
  void overwrite(const std::string& table, const std::string& from, const std::string& to) const {
    const std::filesystem::path path = machinePath(table);
    const auto time = std::filesystem::last_write_time(path);
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const std::size_t at = bytes.find(from);
    ASSERT_NE(at, std::string::npos);
    file.seekp(static_cast<std::streamoff>(at));
    file << to;
    file.close();
    std::filesystem::last_write_time(path, time);
  }

 private:
  std::uint64_t former_;
};

TEST_F(GetAntArrayDBAgain, SeesAChangeOfTheSameLengthWithinTheSameTick) {
  ASSERT_EQ(add(12.5, "dBd", {-1.25, -2.5}, {-3.75}), "");
  std::string former = "-2.5000";
  for (const char* value : {"-7.5000", "-8.2500", "-9.0000"}) {
    EXPECT_THAT(read(kFirstId).HorField, ElementsAre(-1.25, std::stod(former)));
    overwrite("AHDT0001.DBF", former, value);
    EXPECT_THAT(read(kFirstId).HorField, ElementsAre(-1.25, std::stod(value)));
    EXPECT_THAT(read(kFirstId).HorAz, ElementsAre(0, 10));
    former = value;
  }
}

TEST_F(GetAntArrayDBAgain, SeesAChangedDescriptionAndGain) {
  ASSERT_EQ(add(12.5, "dBd", {-1}, {-1}, "Panel one"), "");
  EXPECT_EQ(read(kFirstId).Description, "Panel one");
  overwrite("AMST0001.DBF", "Panel one", "Panel two");
  overwrite("AMST0001.DBF", "12.5000", "11.2500");
  EXPECT_EQ(read(kFirstId).Description, "Panel two");
  EXPECT_DOUBLE_EQ(read(kFirstId).Gain, 11.25);
}

TEST_F(GetAntArrayDBAgain, SortsPointsThatStandInAnotherOrder) {
  ASSERT_EQ(add(1, "dBd", {-1, -2, -3}, {-1}), "");
  EXPECT_THAT(read(kFirstId).HorAz, ElementsAre(0, 10, 20));
  overwrite("AHDT0001.DBF", " 10.0000", "350.0000");
  EXPECT_THAT(read(kFirstId).HorAz, ElementsAre(0, 20, 350));
  EXPECT_THAT(read(kFirstId).HorField, ElementsAre(-1, -3, -2));
}

TEST_F(GetAntArrayDBAgain, LeavesNoFileOpenThatAnotherWantsAlone) {
  ASSERT_EQ(add(1, "dBd", {-1}, {-1}), "");
  EXPECT_EQ(read(kFirstId).nHor, 1);
  EXPECT_NO_THROW(DbfFile::open(folder() + "\\AHDT0001.DBF", false, Sharing::exclusive));
}

}  // namespace

}  // namespace vantrelix::test
