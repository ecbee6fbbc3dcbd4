// An installation with line libraries, and short ways to put lines and points into them.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "lines/getLineLossValue.h"
#include "platform/RunTimeFailure.h"
#include "support/TempSuite.h"
#include "tables/Database.h"
#include "tables/installSuite.h"

namespace vantrelix::test {

// The number of a failure that `work` throws, 0 where it throws none; its description goes to `text`.
template <class Work>
int failureOf(Work work, std::string* text = nullptr) {
  try {
    work();
  } catch (const RunTimeFailure& problem) {
    if (text != nullptr) *text = problem.description();
    return problem.number();
  }
  return 0;
}

// Without a value where the table is to have none.
struct TestPoint {
  std::optional<double> freq;
  std::optional<double> atten;
};

class LineSuite : public ::testing::Test {
 protected:
  LineSuite() { installSuite(suite.path()); }

  static Value valueOf(const std::optional<double>& number) { return number ? Value(*number) : Value(); }
  static std::string folder() { return getLinesPath(); }
  std::string tablePath(const std::string& table) const { return suite.file("LINES/" + table + ".DBF"); }

  // Two empty tables of the given name and of widths that are not those of the library's own.
  void makeLibrary(const std::string& code) const {
    makeMaster(code);
    DbfFile::create(tablePath("LND" + code),
                    {{"LTYPE_ID", 'C', 12, 0}, {"FREQ", 'N', 19, 6}, {"ATTEN", 'N', 19, 9}, {"NOTE", 'C', 5, 0}});
  }
  void makeMaster(const std::string& code) const {
    DbfFile::create(tablePath("LMS" + code), {{"MAKER", 'C', 8, 0}, {"LTYPE_ID", 'C', 12, 0}, {"LN_TYPE", 'C', 90, 0}});
  }
  void addLine(const std::string& code, const Value& id, const Value& description) const {
    addRow("LMS" + code, {{"LTYPE_ID", id}, {"LN_TYPE", description}});
  }
  void addPoints(const std::string& code, const Value& id, const std::vector<TestPoint>& points) const {
    for (const TestPoint& point : points) {
      addRow("LND" + code, {{"LTYPE_ID", id}, {"FREQ", valueOf(point.freq)}, {"ATTEN", valueOf(point.atten)}});
    }
  }
  void addRow(const std::string& table, const std::vector<std::pair<std::string, Value>>& cells) const {
    const auto file = DbfFile::open(tablePath(table));
    std::vector<unsigned char> record = file->blankRecord();
    for (const auto& [name, value] : cells) {
      file->put(record.data(), static_cast<std::size_t>(file->fieldIndex(name)), value);
    }
    file->append(record.data());
  }
  void removeTable(const std::string& table) const { platform::current().remove(tablePath(table)); }
  std::string bytesOf(const std::string& table) const { return suite.folder().read("LINES/" + table + ".DBF"); }

  // What one call of getLineLossValue gives.
  struct Answer {
    double Loss = 77;
    bool Failed = true;
    std::string ErrorText = "old";
    std::string Description = "old";
  };
  static Answer loss(const std::string& file, const std::string& id, double length, const std::string& unit,
                     double freq) {
    Answer answer;
    getLineLossValue(file, id, length, unit, freq, answer.Loss, answer.Failed, answer.ErrorText, &answer.Description);
    return answer;
  }

  TempSuite suite;
};

}  // namespace vantrelix::test
