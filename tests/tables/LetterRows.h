// A table whose rows are one letter all over, so that a row that is part old and part new is seen for what it is.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "support/Processes.h"
#include "tables/DbfBytes.h"

namespace vantrelix::test {

class LetterRows : public testing::Test {
 protected:
  static constexpr int kLength = 200;
  static constexpr int kRows = 100;
  static constexpr int kHeader = 32 + 2 * 32 + 1;
  static constexpr off_t kLockBase = 0x40000000;
  // Inside a page of the file and over the end of one.
  static constexpr std::uint32_t kInside = 3;
  static constexpr std::uint32_t kCrossing = 19;
  static_assert((kHeader + kCrossing * kLength) / 4096 != (kHeader + (kCrossing + 1) * kLength - 1) / 4096);

  LetterRows() { make(0); }
  void make(int tableFlags) {
    suite.folder().write("ROWS.DBF", RawTable{.fields = {{"A", 'C', 100}, {"B", 'C', 99}},
                                              .rows = std::string(std::size_t{kRows} * kLength, ' '),
                                              .count = kRows,
                                              .tableFlags = tableFlags}
                                         .bytes());
  }

  static off_t offsetOf(std::uint32_t row) { return kHeader + static_cast<off_t>(row) * kLength; }
  // Where other programs lock the row.
  static off_t lockOf(std::uint32_t row) { return kLockBase + offsetOf(row); }
  static std::string rowOf(char letter) { return std::string(kLength, letter); }
  static std::string halfRowOf(char letter) { return std::string(kLength / 2, letter); }
  // One of the two letters all over.
  static bool isWhole(const unsigned char* row) {
    return (*row == ' ' || *row == 'B') && std::all_of(row, row + kLength, [&](unsigned char c) { return c == *row; });
  }

  TempSuite suite;
  const std::string path = suite.file("ROWS.DBF");
  const std::string machinePath = suite.folder().machine("ROWS.DBF");
};

}  // namespace vantrelix::test
