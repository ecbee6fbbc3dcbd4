// Line libraries in an installation folder of their own, and what the line controls share in their tests.
#pragma once

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/suitePaths.h"
#include "support/TempSuite.h"
#include "tables/DbfFile.h"
#include "tables/installSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::test {

struct LinePoint {
  double freq;   // MHz
  double atten;  // dB per 100 ft
};

class LineTest : public ::testing::Test {
 protected:
  LineTest() { installSuite(suite.path()); }

  static std::string table(const std::string& stem) { return getLinesPath() + "\\" + stem + ".DBF"; }
  // An empty library of those five characters.
  static void makeLibrary(const std::string& code) {
    DbfFile::create(table("LMS" + code), {{"LTYPE_ID", 'C', 10, 0}, {"LN_TYPE", 'C', 75, 0}});
    DbfFile::create(table("LND" + code), {{"LTYPE_ID", 'C', 10, 0}, {"FREQ", 'N', 12, 4}, {"ATTEN", 'N', 12, 6}});
  }
  static void addRow(const std::string& path, const std::vector<Value>& cells) {
    const auto file = DbfFile::open(path);
    std::vector<unsigned char> record = file->blankRecord();
    for (std::size_t i = 0; i < cells.size(); ++i) file->put(record.data(), i, cells[i]);
    file->append(record.data());
  }
  static void addLine(const std::string& code, const Value& id, const Value& description,
                      const std::vector<LinePoint>& points) {
    addRow(table("LMS" + code), {id, description});
    for (const LinePoint& point : points) addRow(table("LND" + code), {id, point.freq, point.atten});
  }
  // Library LMST0001: line L1 of 1 dB per 100 ft at 100 MHz and 10 at 1000, and L2 of twice that.
  static void makeLines() {
    makeLibrary("T0001");
    addLine("T0001", "L1", "Seven eighths foam", {{100, 1}, {1000, 10}});
    addLine("T0001", "L2", "Half inch foam", {{100, 2}, {1000, 20}});
  }
  // All that the lines folder holds.
  static std::map<std::string, std::string> libraryBytes() {
    std::map<std::string, std::string> files;
    for (const std::string& name : platform::current().list(getLinesPath())) {
      files[name] = readMachineFile(displayPath(getLinesPath() + "\\" + name));
    }
    return files;
  }
  static std::string kept(const char* section, const char* key) { return getINIStr(section, key, "(none)"); }
  static void keep(const char* section, const char* key, const char* value) {
    setINI(section, key, getDefaultsINI(), value);
  }

  TempSuite suite;
  ScriptedDesktop screen;
  DesktopInUse use{screen};
};

}  // namespace vantrelix::test
