// What queries give: their rows, order, aggregates and values.
#include <gtest/gtest.h>

#include "tables/SqlCompare.h"
#include "tables/SqlParser.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::CursorTables;

TEST(Sql, AWholeTableComesInFileOrder) {
  const CursorTables tables;
  EXPECT_EQ(tables.list("Select * from [AMSTEST]"), "2.15 10 9.5 -");
  EXPECT_EQ(tables.list("SELECT * from [AMSTEST]"), "2.15 10 9.5 -");
  EXPECT_EQ(tables.list("select * FROM [amstest] ;"), "2.15 10 9.5 -");
  EXPECT_EQ(tables.list("SELECT * FROM AMSTEST"), "2.15 10 9.5 -");
}

TEST(Sql, AFilterOnOneTextFieldWorksInEachSpelling) {
  const CursorTables tables;
  EXPECT_EQ(tables.list("Select * from [AMSTEST] WHERE ATYPE_ID = 'A1'"), "2.15 9.5");
  EXPECT_EQ(tables.list("Select * from [AMSTEST] Where Atype_ID = 'A1'"), "2.15 9.5");
  EXPECT_EQ(tables.list("SELECT * from [AMSTEST] Where ([ATYPE_ID] = 'B2')"), "10");
  EXPECT_EQ(tables.list("Select * from [AMSTEST] where [atype_ID] = 'A1'"), "2.15 9.5");
  EXPECT_EQ(tables.list("select * from [AMSTEST] where ucase(antenna) = 'ARRAY' Order by [GAIN]"), "10");
  EXPECT_EQ(tables.list("Select * from [AMSTEST] Where ([ATYPE_ID] = 'B2') Or ([ATYPE_ID] = 'A1') Order by [GAIN]"),
            "2.15 9.5 10");
}

TEST(Sql, TextEqualityIgnoresTrailingBlanksAndMindsCase) {
  const CursorTables tables;
  EXPECT_EQ(tables.where("ATYPE_ID = 'A1     '"), "2.15 9.5");
  EXPECT_EQ(tables.where("ATYPE_ID = 'a1'"), "");
  EXPECT_EQ(tables.where("ATYPE_ID = 'A'"), "");
  EXPECT_EQ(tables.where("ATYPE_ID = 'A1 AND MUCH LONGER THAN THE FIELD'"), "");
  EXPECT_EQ(tables.where("ATYPE_ID = ''"), "");
  EXPECT_EQ(tables.where("ATYPE_ID <> 'A1'"), "10 -");
}

TEST(Sql, TheByteComparisonAgreesWithTheGeneralOne) {
  const CursorTables tables;
  tables.add("\xC3\xA9t\xC3\xA9", "M\xC3\xBCller", 7, 1);  // outside ASCII
  for (const std::string condition :
       {"ATYPE_ID = 'A1'", "ATYPE_ID = '\xC3\xA9t\xC3\xA9'", "ANTENNA = 'Dipole'", "ucase(ANTENNA) = 'DIPOLE'",
        "ucase(ANTENNA) = 'M\xC3\x9CLLER'", "'B2' = ATYPE_ID", "ATYPE_ID = 'nothing'", "ucase(ANTENNA) = 'dipole'"}) {
    EXPECT_EQ(tables.where(condition), tables.where("NOT NOT (" + condition + ")")) << condition;
  }
  EXPECT_EQ(tables.where("ATYPE_ID = '\xC3\xA9t\xC3\xA9'"), "7");
  EXPECT_EQ(tables.where("ucase(ANTENNA) = 'M\xC3\x9CLLER'"), "7");
}

TEST(Sql, ANulEndsAStoredText) {
  const CursorTables tables;
  const auto table = DbfFile::open(tables.folder.file("AMSTEST.DBF"));
  table->update(0, [](unsigned char* record) {
    record[3] = '\0';
    record[4] = 'x';
  });
  EXPECT_EQ(tables.where("ATYPE_ID = 'A1'"), "2.15 9.5");
  EXPECT_EQ(tables.where("NOT ATYPE_ID <> 'A1'"), "2.15 9.5");
}

TEST(Sql, RowsSortByANumberFieldAsNumbersNullsFirst) {
  const CursorTables tables;
  EXPECT_EQ(tables.list("Select * from [AMSTEST] ORDER BY GAIN"), "- 2.15 9.5 10");
  EXPECT_EQ(tables.list("Select * from [AMSTEST] Order by [GAIN] DESC"), "10 9.5 2.15 -");
  EXPECT_EQ(tables.list("Select * from [AMSTEST] Where ATYPE_ID = 'A1' Order by Freq"), "9.5 2.15");
  EXPECT_EQ(tables.list("Select * from [AMSTEST] Order by 180-[GAIN] DESC"), "2.15 9.5 10 -");
  EXPECT_EQ(tables.list("Select * from [AMSTEST] Order by 180-[GAIN]"), "- 10 9.5 2.15");
}

TEST(Sql, TextSortsWithoutRegardToCaseFirstThenByCharacterCode) {
  const CursorTables tables;
  tables.add("D4", "Array", 1, 1);
  EXPECT_EQ(tables.list("Select * from [AMSTEST] Order by [ANTENNA] ASC", "ANTENNA"), "- Array array Dipole panel");
  EXPECT_EQ(tables.list("Select * from [AMSTEST] Order by [ANTENNA] DESC", "ANTENNA"), "panel Dipole array Array -");
  EXPECT_LT(compareText("a ", "B"), 0);
  EXPECT_EQ(compareText("x  ", "x"), 0);
}

TEST(Sql, SortingBySeveralExpressionsIsStable) {
  const CursorTables tables;
  EXPECT_EQ(tables.list("select * from AMSTEST order by ATYPE_ID desc, GAIN"), "- 10 2.15 9.5");
  EXPECT_EQ(tables.list("select * from AMSTEST order by left(ATYPE_ID, 0)"), "2.15 10 9.5 -");
  EXPECT_EQ(tables.list("select * from AMSTEST where ATYPE_ID = 'A1' order by ATYPE_ID = 'A1'"), "2.15 9.5");
  EXPECT_EQ(tables.list("select * from AMSTEST order by MADE desc, ACTIVE", "ATYPE_ID"), "A1 A1 C3 B2");
}

TEST(Sql, MinimumAndMaximumComeAsOneRow) {
  const CursorTables tables;
  const RecordsetPtr row =
      tables.open("Select min([Freq]) AS MinFreq, max([Freq]) AS MaxFreq from [AMSTEST] where [Atype_ID] = 'A1'");
  EXPECT_EQ(row->RecordCount(), 1);
  EXPECT_EQ(row->Fields(0).Name(), "MinFreq");
  EXPECT_EQ(row->value("MINFREQ"), Value(150));
  EXPECT_EQ(row->value("MaxFreq"), Value(150));
  row->MoveNext();
  EXPECT_TRUE(row->Eof());
}

TEST(Sql, MinimumAndMaximumOverNoRowsAreNull) {
  const CursorTables tables;
  const RecordsetPtr row =
      tables.open("Select min([Freq]) AS MinFreq, max([Freq]) AS MaxFreq from [AMSTEST] where [Atype_ID] = 'none'");
  ASSERT_FALSE(row->Eof());
  EXPECT_TRUE(row->value("MinFreq").isNull());
  EXPECT_TRUE(row->value("MaxFreq").isNull());
}

TEST(Sql, CountSumAndAverageLeaveNullsOut) {
  const CursorTables tables;
  const RecordsetPtr row = tables.open(
      "select count(*) as n, count(GAIN) as g, sum(FREQ) as s, avg(GAIN+1) as a, max(ANTENNA) as m, count(*) "
      "from AMSTEST");
  EXPECT_EQ(row->value("n"), Value(4));
  EXPECT_EQ(row->value("g"), Value(3));
  EXPECT_EQ(row->value("s"), Value(1500));
  EXPECT_NEAR(row->value("a").number(), (2.15 + 10 + 9.5) / 3 + 1, 1e-12);
  EXPECT_EQ(trim(row->value("m").text()), "panel");
  EXPECT_EQ(row->Fields(5).Name(), "Expr1005");
}

TEST(Sql, TheFormADbfHookBuildsIsUnderstood) {
  const CursorTables tables;
  EXPECT_EQ(tables.list("SELECT ATYPE_ID, GAIN FROM [AMSTEST] WHERE GAIN > 3 ORDER BY ATYPE_ID, GAIN"), "9.5 10");
  EXPECT_EQ(tables.list("SELECT * FROM [AMSTEST] WHERE GAIN > 3 ORDER BY GAIN > 3"), "10 9.5");
  const RecordsetPtr rows = tables.open("SELECT [ANTENNA] AS Title, GAIN, val(GAIN)*2 FROM [AMSTEST] order by title");
  EXPECT_EQ(rows->fieldCount(), 3U);
  rows->MoveLast();
  EXPECT_EQ(trim(rows->value("TITLE").text()), "panel");
  EXPECT_EQ(rows->value("Expr1002"), Value(19));
}

TEST(Sql, ComparisonsCoverNumbersDatesBooleansAndLists) {
  const CursorTables tables;
  EXPECT_EQ(tables.where("GAIN >= 9.5 and gain <= 10"), "10 9.5");
  EXPECT_EQ(tables.where("GAIN < 9.5 or GAIN > 9.5"), "2.15 10");
  EXPECT_EQ(tables.where("GAIN BETWEEN 2 AND 9.5"), "2.15 9.5");
  EXPECT_EQ(tables.where("GAIN NOT BETWEEN 2 AND 9.5"), "10");
  EXPECT_EQ(tables.where("ATYPE_ID IN ('B2', \"A1\")"), "2.15 10 9.5");
  EXPECT_EQ(tables.where("ATYPE_ID NOT IN ('B2', 'C3')"), "2.15 9.5");
  EXPECT_EQ(tables.where("MADE > #01/01/2025#"), "2.15 9.5");
  EXPECT_EQ(tables.where("MADE = #2026-11-21#"), "2.15");
  EXPECT_EQ(tables.where("ACTIVE"), "2.15 -");
  EXPECT_EQ(tables.where("ACTIVE = False"), "10");
}

TEST(Sql, NullIsNeverEqualToAnything) {
  const CursorTables tables;
  EXPECT_EQ(tables.where("GAIN = Null"), "");
  EXPECT_EQ(tables.where("GAIN <> Null"), "");
  EXPECT_EQ(tables.where("NOT GAIN = 10"), "2.15 9.5");
  EXPECT_EQ(tables.where("GAIN IS NULL"), "-");
  EXPECT_EQ(tables.where("GAIN IS NOT NULL"), "2.15 10 9.5");
  EXPECT_EQ(tables.where("GAIN > 9 OR FREQ = 450"), "10 9.5 -");
}

TEST(Sql, TextBesideANumberCountsAsItsValueWhereItIsNumeric) {
  const CursorTables tables;
  tables.add("012", "x", 5, 1);
  EXPECT_EQ(tables.where("ATYPE_ID = 12"), "5");
  EXPECT_EQ(tables.where("ATYPE_ID <> 12"), "");
  EXPECT_EQ(tables.where("GAIN = '9.50'"), "9.5");
  EXPECT_EQ(tables.where("GAIN = 'abc'"), "");
  EXPECT_EQ(tables.where("val(GAIN) = 10"), "10");
  EXPECT_EQ(tables.where("val(ATYPE_ID) = 12"), "5");
}

TEST(Sql, PatternsKnowBothKindsOfWildcards) {
  const CursorTables tables;
  EXPECT_EQ(tables.where("ANTENNA LIKE 'd*le'"), "2.15");
  EXPECT_EQ(tables.where("ANTENNA LIKE '%a%'"), "10 9.5");
  EXPECT_EQ(tables.where("ANTENNA NOT LIKE '?a____'"), "2.15 10 9.5");
  EXPECT_EQ(tables.where("ANTENNA LIKE 'pan_l'"), "9.5");
  EXPECT_TRUE(matchesPattern("abcabd", "*ab?"));
  EXPECT_TRUE(matchesPattern("\xC3\xA9", "?"));
  EXPECT_FALSE(matchesPattern("abc", "ab"));
  EXPECT_TRUE(matchesPattern("", "**"));
}

TEST(Sql, FunctionsAndArithmeticFollowTheirRules) {
  const CursorTables tables;
  const std::string from = " from AMSTEST where ATYPE_ID = 'B2'";
  const auto value = [&](const std::string& expression) {
    return tables.list("select " + expression + " as v" + from, "v");
  };
  EXPECT_EQ(value("lcase('AB')&ltrim('  c')&1"), "abc1");
  EXPECT_EQ(value("mid('abcdef',2,3)&left('xyz',1)&right$('xyz',2)"), "bcdxyz");
  EXPECT_EQ(value("len(rtrim(ATYPE_ID))"), "2");
  EXPECT_EQ(value("abs(-3)+int(-2.5)"), "0");
  EXPECT_EQ(value("2+3*4-6/2"), "11");
  EXPECT_EQ(value("-(1+2)*2"), "-6");
  EXPECT_EQ(value("1/0"), "-");
  EXPECT_EQ(value("val('12.5dBd')"), "12.5");
  EXPECT_EQ(value("trim(' it''s ')"), "it's");
  EXPECT_EQ(value("val(MADE)"), "-");
  EXPECT_EQ(value("1 = 2-1"), "True");
}

TEST(Sql, ALongChainOfOneOperatorIsNoDeepTree) {
  const CursorTables tables;
  std::string chain = "GAIN = 0";
  for (int i = 0; i < 4000; ++i) chain += " or GAIN=10";
  EXPECT_EQ(tables.where(chain), "10");
  std::string sum = "0";
  for (int i = 0; i < 10000; ++i) sum += "+1";
  EXPECT_EQ(tables.where("GAIN = " + sum + " - 9990"), "10");
}

TEST(Sql, DatesAreReadInTheFormsTold) {
  EXPECT_EQ(sqlDate("11/21/2026"), (DateTime{2026, 11, 21, 0, 0, 0}));
  EXPECT_EQ(sqlDate("2026-11-21 4:02:48 PM"), (DateTime{2026, 11, 21, 16, 2, 48}));
  EXPECT_EQ(sqlDate("2026-11-21 12:05 AM"), (DateTime{2026, 11, 21, 0, 5, 0}));
  EXPECT_FALSE(sqlDate("21/11/2026"));
  EXPECT_FALSE(sqlDate("2026-02-30"));
  EXPECT_FALSE(sqlDate("2026-02-03 25:00"));
  EXPECT_FALSE(sqlDate(""));
}

TEST(Sql, OnlyANumberThroughoutIsNumericText) {
  EXPECT_EQ(sqlNumber(" 12.5 "), 12.5);
  EXPECT_EQ(sqlNumber("+1E2"), 100.0);
  EXPECT_FALSE(sqlNumber("12,5"));
  EXPECT_FALSE(sqlNumber("inf"));
  EXPECT_FALSE(sqlNumber("+-1"));
  EXPECT_FALSE(sqlNumber(""));
  EXPECT_EQ(sqlLeadingNumber("  -7.25x"), -7.25);
  EXPECT_EQ(sqlLeadingNumber("x7"), 0.0);
}

}  // namespace
}  // namespace vantrelix
