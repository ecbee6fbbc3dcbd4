// A cursor over its rows: where it stands, how it moves and finds, what its fields are, and its end.
#include <gtest/gtest.h>

#include "platform/RunTimeFailure.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::CursorTables;
using test::failureNumberOf;

constexpr const char* kAll = "Select * from [AMSTEST]";

TEST(Recordset, StandsOnItsFirstRow) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  EXPECT_FALSE(rows->Eof());
  EXPECT_FALSE(rows->Bof());
  EXPECT_EQ(rows->AbsolutePosition(), 0);
  EXPECT_EQ(rows->value("gain"), Value(2.15));
  EXPECT_EQ(rows->value("ATYPE_ID").text(), "A1          ");
  EXPECT_TRUE(rows->isOpen());
}

TEST(Recordset, WithoutRowsIsAtBothEnds) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open("select * from AMSTEST where ATYPE_ID = 'none'");
  EXPECT_TRUE(rows->Eof());
  EXPECT_TRUE(rows->Bof());
  EXPECT_EQ(rows->RecordCount(), 0);
  EXPECT_EQ(rows->AbsolutePosition(), -1);
  for (const auto& move : {&Recordset::MoveFirst, &Recordset::MoveLast, &Recordset::MoveNext, &Recordset::MovePrevious,
                           &Recordset::Edit, &Recordset::Delete}) {
    EXPECT_EQ(failureNumberOf([&] { (rows.get()->*move)(); }), failure::noCurrentRecord);
  }
  EXPECT_EQ(failureNumberOf([&] { rows->value("GAIN"); }), failure::noCurrentRecord);
  EXPECT_EQ(failureNumberOf([&] { rows->bookmark(); }), failure::noCurrentRecord);
}

TEST(Recordset, CountsTheRowsReachedSoFar) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  EXPECT_EQ(rows->RecordCount(), 1);
  rows->MoveNext();
  EXPECT_EQ(rows->RecordCount(), 2);
  rows->MoveFirst();
  EXPECT_EQ(rows->RecordCount(), 2);
  rows->MoveLast();
  EXPECT_EQ(rows->RecordCount(), 4);
  EXPECT_EQ(tables.open("AMSTEST", RecordsetType::table)->RecordCount(), 4);
}

TEST(Recordset, MovesOnePastTheLastRowAndNoFurther) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->MoveLast();
  EXPECT_FALSE(rows->Eof());
  rows->MoveNext();
  EXPECT_TRUE(rows->Eof());
  EXPECT_FALSE(rows->Bof());
  EXPECT_EQ(failureNumberOf([&] { rows->value("GAIN"); }), failure::noCurrentRecord);
  EXPECT_EQ(failureNumberOf([&] { rows->MoveNext(); }), failure::noCurrentRecord);
  rows->MovePrevious();
  EXPECT_EQ(rows->AbsolutePosition(), 3);
}

TEST(Recordset, MovesOneBeforeTheFirstRowAndNoFurther) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->MovePrevious();
  EXPECT_TRUE(rows->Bof());
  EXPECT_FALSE(rows->Eof());
  EXPECT_EQ(rows->AbsolutePosition(), -1);
  EXPECT_EQ(failureNumberOf([&] { rows->MovePrevious(); }), failure::noCurrentRecord);
  rows->MoveNext();
  EXPECT_EQ(rows->AbsolutePosition(), 0);
}

TEST(Recordset, SettingThePositionMovesToTheRowCountedFromZero) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->setAbsolutePosition(2);
  EXPECT_EQ(rows->value("GAIN"), Value(9.5));
  EXPECT_EQ(rows->RecordCount(), 3);
  EXPECT_EQ(failureNumberOf([&] { rows->setAbsolutePosition(4); }), failure::noCurrentRecord);
  EXPECT_EQ(failureNumberOf([&] { rows->setAbsolutePosition(-1); }), failure::noCurrentRecord);
  EXPECT_EQ(rows->AbsolutePosition(), 2);
}

TEST(Recordset, ABookmarkReturnsToItsRow) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open("select * from AMSTEST order by GAIN");
  rows->setAbsolutePosition(2);
  const Recordset::Bookmark mark = rows->bookmark();
  rows->MoveFirst();
  rows->setBookmark(mark);
  EXPECT_EQ(rows->value("GAIN"), Value(9.5));
  const RecordsetPtr other = tables.open(kAll);
  EXPECT_EQ(failureNumberOf([&] { other->setBookmark(mark); }), failure::notABookmark);
  EXPECT_EQ(failureNumberOf([&] { rows->setBookmark(mark + 100); }), failure::notABookmark);
}

TEST(Recordset, FieldsAreFoundWithoutRegardToCase) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  EXPECT_EQ(rows->Fields("atype_ID").Name(), "ATYPE_ID");
  EXPECT_EQ(rows->Fields("Antenna").Size(), 20);
  EXPECT_EQ(rows->Fields("GAIN").decimals(), 4);
  EXPECT_EQ(rows->Fields("MADE").Type(), FieldType::date);
  EXPECT_EQ(rows->fieldCount(), 6U);
  std::string text;
  EXPECT_EQ(failureNumberOf([&] { rows->Fields("NOSUCH"); }, &text), failure::noSuchField);
  EXPECT_NE(text.find("NOSUCH"), std::string::npos);
  EXPECT_EQ(failureNumberOf([&] { rows->Fields(6); }), failure::noSuchField);
}

TEST(Recordset, ATextIsCutToItsFieldWithoutSplittingACharacter) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  EXPECT_EQ(rows->Fields("ATYPE_ID").cut("12345678901\xC3\xA9yz"), "12345678901\xC3\xA9");
  EXPECT_EQ(rows->Fields("ATYPE_ID").cut("short"), "short");
}

TEST(FindFirst, MovesToTheFirstRowThatMatches) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->FindFirst("ATYPE_ID = 'B2'");
  EXPECT_FALSE(rows->NoMatch());
  EXPECT_EQ(rows->AbsolutePosition(), 1);
  rows->FindFirst("val(GAIN) = 9.5");
  EXPECT_EQ(rows->AbsolutePosition(), 2);
  rows->FindFirst("[Atype_id] = 'A1'");
  EXPECT_EQ(rows->AbsolutePosition(), 0);
}

TEST(FindFirst, WithoutAMatchSaysSoAndDoesNotFail) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  EXPECT_FALSE(rows->NoMatch());
  rows->FindFirst("ATYPE_ID = 'none'");
  EXPECT_TRUE(rows->NoMatch());
  rows->FindFirst("ATYPE_ID = 'C3'");
  EXPECT_FALSE(rows->NoMatch());
  EXPECT_EQ(failureNumberOf([&] { rows->FindFirst("ATYPE_ID = "); }), failure::badQuery);
  EXPECT_EQ(failureNumberOf([&] { rows->FindFirst(""); }), failure::badQuery);
  EXPECT_EQ(failureNumberOf([&] { rows->FindFirst("NOSUCH = 1"); }), failure::badQuery);
}

TEST(FindFirst, StaysAmongTheRowsAndInTheOrderOfTheCursor) {
  const CursorTables tables;
  const RecordsetPtr ordered = tables.open("select * from AMSTEST order by GAIN desc");
  ordered->FindFirst("ATYPE_ID = 'A1'");
  EXPECT_EQ(ordered->value("GAIN"), Value(9.5));
  const RecordsetPtr some = tables.open("select * from AMSTEST where GAIN > 5");
  some->FindFirst("ATYPE_ID = 'A1'");
  EXPECT_EQ(some->AbsolutePosition(), 1);
  some->FindFirst("ATYPE_ID = 'C3'");
  EXPECT_TRUE(some->NoMatch());
  tables.add("NEW", "later", 7, 1);
  ordered->FindFirst("ATYPE_ID = 'NEW'");
  EXPECT_TRUE(ordered->NoMatch());
}

TEST(FindFirst, InAFewRowsOfALargeTableGivesTheSame) {
  const CursorTables tables;
  for (int i = 0; i < 40; ++i) tables.add("FILL", "x", i, i);
  tables.add("A1", "last", 77, 1);
  const RecordsetPtr rows = tables.open("select * from AMSTEST where ATYPE_ID = 'A1'");
  rows->FindFirst("GAIN = 77");
  EXPECT_EQ(rows->AbsolutePosition(), 2);
  rows->FindFirst("ATYPE_ID = 'FILL'");
  EXPECT_TRUE(rows->NoMatch());
}

TEST(Recordset, FailsWithEveryCallAfterClose) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  const Field field = rows->Fields("GAIN");
  rows->Close();
  EXPECT_FALSE(rows->isOpen());
  EXPECT_EQ(failureNumberOf([&] { rows->Eof(); }), failure::objectNotSet);
  EXPECT_EQ(failureNumberOf([&] { rows->MoveFirst(); }), failure::objectNotSet);
  EXPECT_EQ(failureNumberOf([&] { field.value(); }), failure::objectNotSet);
  EXPECT_EQ(failureNumberOf([&] { rows->Close(); }), failure::objectNotSet);
}

}  // namespace
}  // namespace vantrelix
