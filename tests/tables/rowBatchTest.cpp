#include <cmath>
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "support/Processes.h"
#include "tables/RowBatch.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::CursorTables;
using test::failureNumberOf;

constexpr const char* kAll = "Select * from [AMSTEST]";

void addGains(RowBatch& batch, const Field& gain, int first, int count) {
  for (int i = 0; i < count; ++i) {
    batch.AddNew();
    batch.put(gain, first + i);
    batch.Update();
  }
}

TEST(RowBatch, WritesItsRowsInTheirOrderAtTheFlush) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  RowBatch batch(*rows);
  addGains(batch, rows->Fields("GAIN"), 101, 3);
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 -");
  batch.flush();
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 - 101 102 103");
  batch.flush();
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 - 101 102 103");
  EXPECT_EQ(tables.list(kAll, "ANTENNA"), "Dipole array panel - - - -");
}

TEST(RowBatch, LeavesTheCursorAsRowsAddedOneByOneDo) {
  const CursorTables tables;
  for (const char* sql : {kAll, "select * from AMSTEST where ATYPE_ID = 'none'"}) {
    const RecordsetPtr single = tables.open(sql);
    const RecordsetPtr many = tables.open(sql);
    for (int i = 0; i < 2; ++i) {
      single->AddNew();
      single->put("GAIN", 50 + i);
      single->Update();
    }
    RowBatch batch(*many);
    addGains(batch, many->Fields("GAIN"), 50, 2);
    batch.flush();
    EXPECT_EQ(many->RecordCount(), single->RecordCount());
    EXPECT_EQ(many->AbsolutePosition(), single->AbsolutePosition());
    EXPECT_EQ(many->Eof(), single->Eof());
    many->MoveLast();
    single->MoveLast();
    EXPECT_EQ(many->value("GAIN"), Value(51));
    EXPECT_EQ(many->RecordCount(), single->RecordCount());
  }
}

TEST(RowBatch, AValueThatDoesNotFitLeavesTheRowsBeforeIt) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  const Field gain = rows->Fields("GAIN");
  RowBatch batch(*rows);
  addGains(batch, gain, 101, 2);
  batch.AddNew();
  EXPECT_EQ(failureNumberOf([&] { batch.put(gain, 1e12); }), failure::fieldTooSmall);
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 - 101 102");
  rows->MoveLast();
  EXPECT_EQ(rows->value("GAIN"), Value(102));
}

TEST(RowBatch, AWriteThatFailsLeavesTheTableAsItWasAndTheRowsGathered) {
  const CursorTables tables;
  const RecordsetPtr before = tables.open(kAll);
  platform::FaultPlatform faults(platform::current());
  const platform::Substitute substitute(faults);
  const RecordsetPtr rows = tables.open(kAll);
  RowBatch batch(*rows);
  addGains(batch, rows->Fields("GAIN"), 101, 3);
  const std::string bytes = tables.folder.read("AMSTEST.DBF");
  const std::size_t end = bytes.size() - 1;  // where the end mark stood, which a full disk may not take back
  faults.fillDiskAt(1);
  EXPECT_EQ(failureNumberOf([&] { batch.flush(); }), failure::diskFull);
  EXPECT_EQ(tables.folder.read("AMSTEST.DBF").substr(0, end), bytes.substr(0, end));
  EXPECT_EQ(tables.folder.read("AMSTEST.DBF").size(), bytes.size());
  EXPECT_EQ(rows->RecordCount(), 1);
  faults.reset();
  batch.flush();
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 - 101 102 103");
}

TEST(RowBatch, OneLockAndTwoWritesAddAnyNumberOfRows) {
  const CursorTables tables;
  platform::FaultPlatform calls(platform::current());
  const platform::Substitute substitute(calls);
  const RecordsetPtr rows = tables.open(kAll);
  RowBatch batch(*rows);
  addGains(batch, rows->Fields("GAIN"), 0, 360);
  EXPECT_EQ(calls.calls(), 0);
  batch.flush();
  EXPECT_EQ(calls.calls(), 2);
}

TEST(RowBatch, WritesOnItsOwnWhereItGrowsBeyondAMegabyte) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  RowBatch batch(*rows);
  addGains(batch, rows->Fields("GAIN"), 1, 30000);
  const long written = tables.open("select count(*) as n from AMSTEST")->value("n").number() - 4;
  EXPECT_GT(written, 10000);
  EXPECT_LT(written, 30000);
  batch.flush();
  const RecordsetPtr sum =
      tables.open("select count(*) as n, sum(GAIN) as s from AMSTEST where GAIN >= 1 and FREQ is null");
  EXPECT_EQ(sum->value("n"), Value(30001));
  EXPECT_EQ(sum->value("s"), Value(9.5 + 30000.0 * 30001 / 2));
}

TEST(RowBatch, ARowNotTakenIsDropped) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  RowBatch batch(*rows);
  EXPECT_EQ(failureNumberOf([&] { batch.Update(); }), failure::updateWithoutEdit);
  EXPECT_EQ(failureNumberOf([&] { batch.put(rows->Fields("GAIN"), 1); }), failure::updateWithoutEdit);
  batch.AddNew();
  batch.put(rows->Fields("FREQ"), 1);
  addGains(batch, rows->Fields("GAIN"), 101, 1);
  EXPECT_EQ(failureNumberOf([&] { batch.Update(); }), failure::updateWithoutEdit);
  batch.AddNew();
  batch.flush();
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 - 101");
  EXPECT_EQ(tables.list(kAll, "FREQ"), "150 900 - 450 -");
}

TEST(RowBatch, RefusesWhatCannotTakeRows) {
  const CursorTables tables;
  const RecordsetPtr computed = tables.open("select max(GAIN) as m from AMSTEST");
  EXPECT_EQ(failureNumberOf([&] { RowBatch batch(*computed); }), failure::readOnlyTable);
  const RecordsetPtr reading = tables.open(kAll, RecordsetType::snapshot);
  EXPECT_EQ(failureNumberOf([&] { RowBatch batch(*reading); }), failure::readOnlyTable);
  const RecordsetPtr rows = tables.open(kAll);
  RowBatch batch(*rows);
  batch.AddNew();
  EXPECT_EQ(failureNumberOf([&] { batch.put(reading->Fields("GAIN"), 1); }), failure::noSuchField);
  rows->Close();
  EXPECT_EQ(failureNumberOf([&] { RowBatch closed(*rows); }), failure::objectNotSet);
}

TEST(RowBatch, PutsAValueIntoAllRowsGathered) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  const Field id = rows->Fields("ATYPE_ID");
  RowBatch batch(*rows);
  batch.putAll(id, "none");
  addGains(batch, rows->Fields("GAIN"), 101, 2);
  batch.putAll(id, "a longer one");
  batch.putAll(id, "X7");
  batch.putAll(rows->Fields("FREQ"), 12.5);
  batch.AddNew();
  batch.putAll(rows->Fields("ACTIVE"), true);
  batch.Update();
  batch.flush();
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 - 101 102 -");
  EXPECT_EQ(tables.list(kAll, "ATYPE_ID"), "A1 B2 A1 C3 X7 X7 -");
  EXPECT_EQ(tables.list(kAll, "FREQ"), "150 900 - 450 12.5 12.5 -");
  EXPECT_EQ(tables.list("select * from AMSTEST where ACTIVE", "GAIN"), "2.15 - 101 102");
}

TEST(RowBatch, AValueThatDoesNotFitInAllRowsChangesNone) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll), others = tables.open(kAll);
  const Field id = rows->Fields("ATYPE_ID");
  RowBatch batch(*rows);
  addGains(batch, rows->Fields("GAIN"), 101, 2);
  batch.putAll(id, "X7");
  EXPECT_EQ(failureNumberOf([&] { batch.putAll(id, "more than twelve"); }), failure::fieldTooSmall);
  EXPECT_EQ(failureNumberOf([&] { batch.putAll(others->Fields("ATYPE_ID"), "Y"); }), failure::noSuchField);
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 -");
  batch.flush();
  EXPECT_EQ(tables.list(kAll, "ATYPE_ID"), "A1 B2 A1 C3 X7 X7");
}

TEST(RowBatch, MayWriteAtTheFlushAlone) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  const Field gain = rows->Fields("GAIN");
  RowBatch batch(*rows, RowBatch::Writing::atFlush);
  addGains(batch, gain, 1, 30000);
  batch.AddNew();
  EXPECT_EQ(failureNumberOf([&] { batch.put(gain, 1e12); }), failure::fieldTooSmall);
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 -");
  batch.flush();
  EXPECT_EQ(tables.open("select count(*) as n from AMSTEST")->value("n"), Value(30004));
}

TEST(RowBatch, ARowBegunOutlivesTheFlush) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  RowBatch batch(*rows);
  addGains(batch, rows->Fields("GAIN"), 101, 1);
  batch.AddNew();
  batch.put(rows->Fields("FREQ"), 7);
  batch.flush();
  batch.put(rows->Fields("GAIN"), 102);
  batch.Update();
  batch.flush();
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 - 101 102");
  EXPECT_EQ(tables.list(kAll, "FREQ"), "150 900 - 450 - 7");
}

TEST(RowBatch, PutsNumbersIntoAFieldOfAnyTypeAsTheirGeneralTextTells) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  RowBatch batch(*rows);
  const RowBatch::NumberField gain = batch.numberField(rows->Fields("GAIN"));
  const RowBatch::NumberField name = batch.numberField(rows->Fields("ANTENNA"));
  for (const double number : {-12.345, 0.3 - 0.1, 1234.0}) {
    batch.AddNew();
    batch.putGeneral(gain, number);
    batch.putGeneral(name, number);
    batch.Update();
  }
  batch.flush();
  EXPECT_EQ(tables.list(kAll, "ANTENNA"), "Dipole array panel - -12.345 0.2 1234");
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 - -12.345 0.2 1234");
}

TEST(RowBatch, ANumberThatDoesNotFitOrIsNoneFailsAsItsPutDoes) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll), others = tables.open(kAll);
  RowBatch batch(*rows);
  EXPECT_EQ(failureNumberOf([&] { batch.numberField(others->Fields("GAIN")); }), failure::noSuchField);
  const RowBatch::NumberField gain = batch.numberField(rows->Fields("GAIN"));
  EXPECT_EQ(failureNumberOf([&] { batch.putGeneral(gain, 1); }), failure::updateWithoutEdit);
  addGains(batch, rows->Fields("GAIN"), 101, 2);
  batch.AddNew();
  EXPECT_EQ(failureNumberOf([&] { batch.putGeneral(gain, std::nan("")); }), failure::typeMismatch);
  std::string byText, byNumber;
  EXPECT_EQ(failureNumberOf([&] { batch.putGeneral(gain, -1e12); }, &byNumber), failure::fieldTooSmall);
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 - 101 102");
  batch.AddNew();
  EXPECT_EQ(failureNumberOf([&] { batch.put(rows->Fields("GAIN"), -1e12); }, &byText), failure::fieldTooSmall);
  EXPECT_EQ(byNumber, byText);
}

TEST(RowBatch, EveryRowBeginsBlankHoweverManyAreGathered) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  const Field gain = rows->Fields("GAIN"), frequency = rows->Fields("FREQ");
  RowBatch batch(*rows, RowBatch::Writing::atFlush);
  for (int round = 0; round < 3; ++round) {
    for (int i = 0; i < 1500; ++i) {
      batch.AddNew();
      batch.put(frequency, 7);
      if (i % 2 == 0) batch.AddNew();
      batch.put(gain, i);
      batch.Update();
    }
    batch.AddNew();
    batch.put(frequency, 7);
    batch.flush();
  }
  const RecordsetPtr blank = tables.open("select count(*) as n from AMSTEST where GAIN >= 0 and FREQ is null");
  EXPECT_EQ(blank->value("n"), Value(3 * 750 + 1));  // the one that was there has a gain of 9.5
  EXPECT_EQ(tables.open("select count(*) as n from AMSTEST where FREQ = 7")->value("n"), Value(3 * 750));
  EXPECT_EQ(tables.open("select count(*) as n from AMSTEST where ATYPE_ID is null")->value("n"), Value(3 * 1500));
}

TEST(RowBatch, OfSeveralProcessesEveryRowIsInTheTableOnce) {
  constexpr int kRounds = 20;
  const CursorTables tables;
  const auto addRows = [&](int first) {
    const RecordsetPtr rows = tables.open("select * from AMSTEST where GAIN < 0");
    RowBatch batch(*rows);
    for (int round = 0; round < kRounds; ++round) {
      addGains(batch, rows->Fields("GAIN"), first + 10 * round, 10);
      batch.flush();
    }
    rows->MoveLast();
    return rows->RecordCount() == 10 * kRounds && rows->value("GAIN") == Value(first + 10 * kRounds - 1);
  };
  const pid_t one = test::startChild([&] { return addRows(1000); });
  const pid_t two = test::startChild([&] { return addRows(5000); });
  EXPECT_EQ(test::exitCode(one), 0);
  EXPECT_EQ(test::exitCode(two), 0);
  const RecordsetPtr sum = tables.open("select count(*) as n, sum(GAIN) as s from AMSTEST where GAIN >= 1000");
  EXPECT_EQ(sum->value("n"), Value(20 * kRounds));
  EXPECT_EQ(sum->value("s"), Value(6000.0 * 10 * kRounds + 2 * 199.0 * 200 / 2));
}

}  // namespace
}  // namespace vantrelix
