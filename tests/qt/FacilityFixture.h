// A host of facility records on an installation folder of its own, as it stands after its first start.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "demo/FacilityHost.h"
#include "foundation/suitePaths.h"
#include "support/TempSuite.h"
#include "tables/installSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::demo::test {

using vantrelix::test::TempSuite;

class FacilityTest : public testing::Test {
 protected:
  using Move = FacilityHost::Move;
  using Place = FacilityHost::Place;

  FacilityTest() {
    installSuite(suite.path());
    DbfFile::setLockWait(20);
  }
  ~FacilityTest() override { DbfFile::setLockWait(2000); }

  // The table as another sees it.
  static RecordsetPtr table() {
    return DBEngine::OpenDatabase(getSuiteDir())->OpenRecordset("Select * From [FACILITY]");
  }
  // A field of a row, counted from 0.
  static Value stored(const char* field, long row = 0) {
    const RecordsetPtr rows = table();
    rows->setAbsolutePosition(row);
    return rows->value(field);
  }
  static std::string text(const char* field, long row = 0) {
    const Value value = stored(field, row);
    const std::string found = value.isNull() ? "" : value.asText();
    return found.substr(0, found.find_last_not_of(' ') + 1);
  }
  // Another's write to a row.
  static void write(const char* field, const Value& value, long row = 0) {
    const RecordsetPtr rows = table();
    rows->setAbsolutePosition(row);
    rows->Edit();
    rows->put(field, value);
    rows->Update();
  }
  // Makes a table of those fields, with a row that is blank where there is to be one.
  static void makeTable(const std::vector<FacilityField>& fields, bool withRow) {
    const DatabasePtr folder = DBEngine::OpenDatabase(getSuiteDir());
    TableDef made = folder->CreateTableDef("FACILITY");
    for (const FacilityField& field : fields) made.append(field.name, field.type, field.size);
    folder->append(made);
    if (!withRow) return;
    const RecordsetPtr rows = table();
    rows->AddNew();
    rows->Update();
  }
  // The messages since the last call.
  std::vector<std::string> told() {
    std::vector<std::string> texts;
    for (std::size_t i = asked_; i < screen.shown().size(); ++i) texts.push_back(screen.shown()[i].message.text);
    asked_ = screen.shown().size();
    return texts;
  }

  TempSuite suite;
  ScriptedDesktop screen;
  DesktopInUse inUse{screen};

 private:
  std::size_t asked_ = 0;
};

}  // namespace vantrelix::demo::test
