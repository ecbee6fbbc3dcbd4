// A damaged table T.DBF and what is recovered of it, NEW.DBF, in a folder of their own.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "tables/DbfBytes.h"
#include "tables/tableCheck.h"
#include "tables/tableRecovery.h"

namespace vantrelix::test {

class TableRecoveries : public ::testing::Test {
 protected:
  TableRecovery recovered(const std::string& content) {
    suite.folder().write("T.DBF", content);
    const TableRecovery result = recoverTable(suite.file("T.DBF"), suite.file("NEW.DBF"));
    EXPECT_EQ(suite.folder().read("T.DBF"), content) << "the damaged table is only read";
    const TableCheck check = checkTable(suite.file("NEW.DBF"));
    for (const TableFault& fault : check.faults.kept()) ADD_FAILURE() << fault.text;
    return result;
  }
  TableRecovery recovered(const RawTable& raw) { return recovered(raw.bytes()); }
  // The rows of the new table as they stand in its file.
  std::string rows() {
    const auto table = DbfFile::open(suite.file("NEW.DBF"), true);
    std::string all;
    table->scan([&](std::uint32_t, const unsigned char* row) {
      all.append(reinterpret_cast<const char*>(row), static_cast<std::size_t>(table->recordLength()));
      return true;
    });
    return all;
  }
  std::string rowsSaved(const std::string& content) {
    suite.folder().write("NEW.DBF", "");
    platform::current().remove(suite.file("NEW.DBF"));
    recovered(content);
    return rows();
  }
  std::string rowsSaved(const RawTable& raw) { return rowsSaved(raw.bytes()); }

  const std::string goodRows = " abc   1*def   2 ghi   3";
  const RawTable good{.fields = {{"A", 'C', 3}, {"N", 'N', 4}}, .rows = goodRows, .count = 3};
  TempSuite suite;
};

}  // namespace vantrelix::test
