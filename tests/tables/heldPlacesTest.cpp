// The places of other programs' locks, held as a whole.
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>

#include "support/Processes.h"
#include "support/TempFolder.h"
#include "tables/DbfBytes.h"
#include "tables/heldPlaces.h"

namespace vantrelix {
namespace {

using test::failureOf;
using test::RawLocks;

class HeldPlaces : public ::testing::Test {
 protected:
  HeldPlaces() { DbfFile::setLockWait(20); }
  ~HeldPlaces() override { DbfFile::setLockWait(2000); }
  void makeLong(std::uintmax_t size) const {
    folder.write("ROWS.DBF", "");
    std::filesystem::resize_file(machinePath, size);
  }
  // Whether others get locks of that byte: for reading and for a write.
  bool readable(off_t place) const {
    const RawLocks other(machinePath);
    return other.lockShared(place, 1);
  }
  bool writable(off_t place) const {
    const RawLocks other(machinePath);
    return other.lock(place, 1);
  }

  const test::TempFolder folder;
  const std::string path = folder.file("ROWS.DBF");
  const std::string machinePath = folder.machine("ROWS.DBF");
};

TEST_F(HeldPlaces, KeepWritersOutAndReadersIn) {
  makeLong(1000);
  {
    const dbf::HeldPlaces held(path);
    for (const off_t place : {off_t{0x40000000}, off_t{0x40000001}, off_t{0x7FFFFFFD}}) {
      EXPECT_FALSE(writable(place)) << place;
      EXPECT_TRUE(readable(place)) << place;
    }
    EXPECT_TRUE(writable(0x3FFFFFFF));
    EXPECT_TRUE(writable(0x80000000));
  }
  EXPECT_TRUE(writable(0x40000000));
}

TEST_F(HeldPlaces, OfATableOfMoreThanOneGigabyteLieBehindTheBytesForSharingToo) {
  makeLong((std::uintmax_t{1} << 30) + 1000);
  {
    const dbf::HeldPlaces held(path);
    EXPECT_FALSE(writable(0x7FFFFFFD));
    EXPECT_FALSE(writable(0x80000000));
    EXPECT_FALSE(writable(0xBFFFFFFF));
    EXPECT_TRUE(readable(0x80000000));
    EXPECT_TRUE(writable(0x7FFFFFFE));
    EXPECT_TRUE(writable(0x7FFFFFFF));
  }
  EXPECT_TRUE(writable(0x80000000));
  const RawLocks other(machinePath);
  ASSERT_TRUE(other.lock(0x80000000, 10));
  EXPECT_EQ(failureOf([&] { const dbf::HeldPlaces held(path); }).number(), failure::locked);
  EXPECT_TRUE(writable(0x40000000));
}

}  // namespace
}  // namespace vantrelix
