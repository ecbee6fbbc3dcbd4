// A table shared by processes, whose rows tell in every byte who wrote them.
#pragma once

#include <array>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>

#include "tables/DbfBytes.h"

namespace vantrelix::test {

inline constexpr std::size_t kLength = 200;
inline constexpr int kHeader = 32 + 2 * 32 + 1;

// A row that tells in every byte who wrote it and which one it is.
inline std::string numberedRow(int writer, int number) {
  std::string row(kLength, static_cast<char>('a' + (writer + number) % 26));
  row[0] = ' ';
  std::array<char, 16> head{};
  std::snprintf(head.data(), head.size(), "%02d%08d", writer, number);
  return row.replace(1, 10, head.data());
}

struct Identity {
  int writer = -1;
  int number = -1;
};

// Nobody where the row is not exactly as one was written.
inline Identity identityOf(const unsigned char* record) {
  const std::string row(record, record + kLength);
  Identity found;
  if (std::sscanf(row.c_str() + 1, "%2d%8d", &found.writer, &found.number) != 2) return {};
  return row == numberedRow(found.writer, found.number) ? found : Identity{};
}

inline const unsigned char* bytesOf(const std::string& rows) {
  return reinterpret_cast<const unsigned char*>(rows.data());
}

class SharedUse : public ::testing::Test {
 protected:
  SharedUse() { DbfFile::create(path, {{"HEAD", 'C', 10, 0}, {"REST", 'C', 189, 0}}); }
  ~SharedUse() override { DbfFile::setLockWait(2000); }

  TempSuite suite;
  const std::string path = suite.file("SHARED.DBF");
  const std::string machinePath = suite.folder().machine("SHARED.DBF");
};

}  // namespace vantrelix::test
