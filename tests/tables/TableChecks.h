// A table T.DBF that is looked through for faults, in a folder of its own.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "tables/DbfBytes.h"
#include "tables/tableCheck.h"

namespace vantrelix::test {

class TableChecks : public ::testing::Test {
 protected:
  TableCheck checked(const std::string& content) {
    suite.folder().write("T.DBF", content);
    return checkTable(suite.file("T.DBF"));
  }
  TableCheck checked(const RawTable& raw) { return checked(raw.bytes()); }
  // The names of the kinds that were found, in the order of the kinds.
  static std::string kindsOf(const TableCheck& check) {
    std::string kinds;
    for (const auto& [kind, total] : check.faults.totals())
      kinds += (kinds.empty() ? "" : " ") + std::string(faultName(kind));
    return kinds;
  }
  std::string kinds(const RawTable& raw) { return kindsOf(checked(raw)); }
  static TableFault firstOf(const TableCheck& check, FaultKind kind) {
    for (const TableFault& fault : check.faults.kept()) {
      if (fault.kind == kind) return fault;
    }
    ADD_FAILURE() << "no fault of the kind " << faultName(kind) << " but " << kindsOf(check);
    return {};
  }
  // The one fault of a row of one field; its offset counts from the row's first byte.
  TableFault faultOfValue(char type, int width, const std::string& bytes, FaultKind kind) {
    const TableCheck check = checked({.fields = {{"V", type, width}}, .rows = " " + bytes, .count = 1});
    EXPECT_EQ(kindsOf(check), faultName(kind)) << bytes;
    TableFault fault = firstOf(check, kind);
    EXPECT_EQ(fault.record, 0U);
    EXPECT_EQ(fault.field, "V");
    if (fault.offset) *fault.offset -= 65;
    return fault;
  }
  bool isSound(char type, int width, const std::string& bytes, int version = 0x03) {
    RawTable raw{.version = version, .fields = {{"V", type, width}}, .rows = " " + bytes, .count = 1};
    return kinds(raw).empty();
  }

  const RawTable good{.fields = {{"A", 'C', 3}, {"N", 'N', 4}}, .rows = " abc   1*def   2", .count = 2};
  TempSuite suite;
};

}  // namespace vantrelix::test
