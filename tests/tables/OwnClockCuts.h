// The table of pattern points in a file that has its times from this machine's own clock.
#pragma once

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "tables/CutsTable.h"

namespace vantrelix::test {

class OwnClockCuts : public CutsTable {
 protected:
  static constexpr std::int64_t kMillisecond = 1'000'000;
  static constexpr std::int64_t kSecond = 1'000'000'000;
  static constexpr std::uint64_t kLockBase = 0x40000000;

  OwnClockCuts() { machine_.ownClock = true; }

  static std::uint64_t offsetOf(std::uint32_t row) { return 32 + 2 * 32 + 1 + std::uint64_t{30} * row; }
  std::int64_t time() const { return platform::current().state(path())->modifiedNanoseconds; }
  void setTime(std::int64_t nanoseconds) const { asStranger()->setModified(nanoseconds); }
  // The file was changed so long ago, at no full second.
  void setAge(std::int64_t nanoseconds) {
    const std::int64_t wanted = machine_.wallNanoseconds() - nanoseconds;
    setTime(wanted % kSecond == 0 ? wanted - 1 : wanted);
  }
  bool isKnown() { return cost(isUpper("NONE")) < kAll / 4; }
  void know() {
    count(isUpper("NONE"));
    ASSERT_TRUE(isKnown());
  }

  void add(const std::string& id, int place = 50) const {
    const RecordsetPtr rows = open(isUpper("NONE"));
    rows->AddNew();
    rows->put("ID", id);
    rows->put("PLACE", place);
    rows->Update();
  }
  // The file as a program has it open that is none of this system's.
  std::unique_ptr<platform::File> asStranger() const {
    return platform::operatingSystem().open(path(), platform::OpenMode::readWrite);
  }
  // Puts an ID in the place of another, as a program does that knows no locks.
  void overwrite(std::uint32_t row, const std::string& id) const {
    std::fstream file(platform::current().toMachine(path()), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(offsetOf(row) + 1));
    file << id;
    ASSERT_TRUE(file.flush());
  }
  void overwriteInAnotherProcess(std::uint32_t row, const std::string& id) const {
    ASSERT_EQ(exitCode(startChild([&] {
                overwrite(row, id);
                return !HasFatalFailure();
              })),
              0);
  }
  // The same questions in a process that knows nothing.
  bool othersCount(const std::string& id, long wanted) const {
    return exitCode(startChild([&] {
             setSmallestRemembered(std::uint64_t{1} << 40);
             MeasuredPlatform::now -= 1'000'000'000;
             return count(isUpper(id)) == wanted;
           })) == 0;
  }
  std::vector<double> placesOf(const std::string& id) const {
    std::vector<double> places;
    for (const RecordsetPtr rows = open(isUpper(id)); !rows->Eof(); rows->MoveNext()) {
      places.push_back(rows->value("PLACE").number());
    }
    return places;
  }
};

}  // namespace vantrelix::test
