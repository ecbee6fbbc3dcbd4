// Texts and numbers of fields without a value being made, where rows are queried and written.
#include <gtest/gtest.h>

#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::CursorTables;
using test::failureNumberOf;

TEST(FieldViewsOfCursors, OfOtherTypesAreOfTheirKind) {
  const CursorTables tables;
  for (const RecordsetType type : {RecordsetType::snapshot, RecordsetType::dynaset}) {
    const RecordsetPtr rows =
        tables.open("Select ANTENNA, GAIN, MADE, ACTIVE, GAIN * 2 as TWICE, ucase(ANTENNA) as LOUD from AMSTEST", type);
    EXPECT_EQ(rows->Fields("TWICE").number(), 4.3);
    EXPECT_EQ(rows->Fields("LOUD").text()->substr(0, 6), "DIPOLE");
    EXPECT_EQ(failureNumberOf([&] { (void)rows->Fields("GAIN").text(); }), failure::typeMismatch);
    EXPECT_EQ(failureNumberOf([&] { (void)rows->Fields("ANTENNA").number(); }), failure::typeMismatch);
    EXPECT_EQ(failureNumberOf([&] { (void)rows->Fields("MADE").number(); }), failure::typeMismatch);
    EXPECT_EQ(failureNumberOf([&] { (void)rows->Fields("ACTIVE").text(); }), failure::typeMismatch);
    rows->MoveLast();  // nulls are of every kind
    EXPECT_EQ(rows->Fields("GAIN").text(), std::nullopt);
    EXPECT_EQ(rows->Fields("ANTENNA").number(), std::nullopt);
    EXPECT_EQ(rows->Fields("TWICE").number(), std::nullopt);
  }
}

TEST(FieldViewsOfCursors, OfAggregatesAreTheirResults) {
  const CursorTables tables;
  const RecordsetPtr row = tables.open("Select max(GAIN) as G, min(ANTENNA) as A, sum(GAIN) as S from AMSTEST");
  EXPECT_EQ(row->Fields("G").number(), 10.0);
  EXPECT_EQ(row->Fields("A").text()->substr(0, 5), "array");
  EXPECT_EQ(failureNumberOf([&] { (void)row->Fields("A").number(); }), failure::typeMismatch);
  const RecordsetPtr none = tables.open("Select max(GAIN) as G from AMSTEST where ATYPE_ID = 'X'");
  EXPECT_EQ(none->Fields("G").number(), std::nullopt);
  EXPECT_EQ(none->Fields("G").text(), std::nullopt);
}

TEST(FieldViewsOfCursors, OfAPictureStayWhileOthersWriteToTheRow) {
  const CursorTables tables;
  const RecordsetPtr picture = tables.open("Select * from AMSTEST order by GAIN desc", RecordsetType::snapshot);
  const std::string_view antenna = *picture->Fields("ANTENNA").text();
  const RecordsetPtr live = tables.open("Select * from AMSTEST where GAIN = 10");
  live->Edit();
  live->put("ANTENNA", "overwritten");
  live->Update();
  EXPECT_EQ(antenna.substr(0, 6), "array ");
  EXPECT_EQ(picture->Fields("ANTENNA").text()->substr(0, 6), "array ");
  EXPECT_EQ(live->Fields("ANTENNA").text()->substr(0, 11), "overwritten");
}

TEST(FieldViewsOfCursors, ShowTheRowThatIsBeingEdited) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open("Select * from AMSTEST");
  const Field antenna = rows->Fields("ANTENNA"), gain = rows->Fields("GAIN");
  rows->Edit();
  rows->put("ANTENNA", "Gr\xC3\xBCn");
  rows->put("GAIN", 3.5);
  EXPECT_EQ(antenna.text()->substr(0, 5), "Gr\xC3\xBCn");
  EXPECT_EQ(gain.number(), 3.5);
  rows->CancelUpdate();
  EXPECT_EQ(antenna.text()->substr(0, 6), "Dipole");
  EXPECT_EQ(gain.number(), 2.15);
  rows->AddNew();
  EXPECT_EQ(antenna.text(), std::nullopt);
  EXPECT_EQ(gain.number(), std::nullopt);
}

TEST(FieldViewsOfCursors, NeedARowAndAnOpenCursor) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open("Select * from AMSTEST");
  const Field antenna = rows->Fields("ANTENNA");
  rows->Delete();
  EXPECT_EQ(failureNumberOf([&] { (void)antenna.text(); }), failure::recordDeleted);
  EXPECT_EQ(failureNumberOf([&] { (void)antenna.number(); }), failure::recordDeleted);
  rows->MoveLast();
  rows->MoveNext();
  EXPECT_EQ(failureNumberOf([&] { (void)antenna.text(); }), failure::noCurrentRecord);
  EXPECT_EQ(failureNumberOf([&] { (void)antenna.number(); }), failure::noCurrentRecord);
  rows->Close();
  EXPECT_EQ(failureNumberOf([&] { (void)antenna.text(); }), failure::objectNotSet);
}

}  // namespace
}  // namespace vantrelix
