// A table ANT.DBF in a folder of its own: made by this library, or of bytes that a test makes up.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "tables/DbfBytes.h"

namespace vantrelix::test {

class DbfFiles : public ::testing::Test {
 protected:
  static inline const std::vector<DbfNewField> kFields = {
      {"ATYPE_ID", 'C', 12, 0}, {"GAIN", 'N', 12, 4}, {"OK", 'L', 1, 0}, {"MADE", 'D', 8, 0}};

  std::shared_ptr<DbfFile> made(const std::vector<DbfNewField>& fields = kFields) {
    DbfFile::create(path, fields);
    return DbfFile::open(path);
  }
  std::shared_ptr<DbfFile> opened(const RawTable& raw) {
    suite.folder().write("ANT.DBF", raw.bytes());
    return DbfFile::open(path);
  }
  std::string bytes() { return suite.folder().read("ANT.DBF"); }

  TempSuite suite;
  const std::string path = suite.file("ANT.DBF");
};

}  // namespace vantrelix::test
