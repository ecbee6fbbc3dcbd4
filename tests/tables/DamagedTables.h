// A table T.DBF of bytes that a test makes up, in a folder of its own: opened, or refused with a reason.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

#include "tables/DbfBytes.h"

namespace vantrelix::test {

class DamagedTables : public ::testing::Test {
 protected:
  std::shared_ptr<DbfFile> opened(const std::string& content) {
    suite.folder().write("T.DBF", content);
    return DbfFile::open(suite.file("T.DBF"));
  }
  std::shared_ptr<DbfFile> opened(const RawTable& raw) { return opened(raw.bytes()); }
  // The reason why it is refused; fails the test where it is not, or with another number or without its name.
  std::string refusal(const std::string& content) {
    const RunTimeFailure failure = failureOf([&] { opened(content); });
    EXPECT_EQ(failure.number(), failure::damagedTable);
    EXPECT_NE(failure.description().find("T.DBF"), std::string::npos);
    return failure.description();
  }
  bool refusedFor(const std::string& content, std::string_view reason) {
    return refusal(content).find(reason) != std::string::npos;
  }

  const RawTable good{.fields = {{"A", 'C', 3}, {"N", 'N', 4}}, .rows = " abc   1 def   2", .count = 2};
  TempSuite suite;
};

}  // namespace vantrelix::test
