// Queries that are not understood: each is refused with its reason and the place of it.
#include <gtest/gtest.h>

#include "platform/RunTimeFailure.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::CursorTables;
using test::failureNumberOf;

std::string problemOf(const CursorTables& tables, const std::string& sql) {
  std::string text;
  EXPECT_EQ(failureNumberOf([&] { tables.open(sql); }, &text), failure::badQuery) << sql;
  return text;
}

TEST(Sql, ASyntaxErrorNamesItsPlace) {
  const CursorTables tables;
  const std::string text = problemOf(tables, "Select ATYPE_ID, ANTENNA   FORM [AMSTEST]");
  EXPECT_EQ(text.rfind("Syntax error in query at position 28, near 'FORM': ", 0), 0U) << text;
  EXPECT_NE(problemOf(tables, "Select * from [AMSTEST] group by [GAIN]").find("position 25, near 'group'"),
            std::string::npos);
  EXPECT_NE(problemOf(tables, "Select * from [AMSTEST] ORDER BY ").find("its end"), std::string::npos);
  EXPECT_NE(problemOf(tables, "Select * from [AMSTEST] where ATYPE_ID = 'O'Neil'").find("position 45, near 'Neil'"),
            std::string::npos);
  EXPECT_NE(problemOf(tables, "Select * from [AMSTEST] where '\xC3\xA9' = !").find("position 37, near '!'"),
            std::string::npos);
}

TEST(Sql, AnUnknownFieldIsNamedWithItsPlace) {
  const CursorTables tables;
  for (const std::string sql : {"select NOSUCH from AMSTEST", "select * from AMSTEST where NOSUCH = 1",
                                "select * from AMSTEST order by NOSUCH", "select max(NOSUCH) as x from AMSTEST"}) {
    const std::string text = problemOf(tables, sql);
    EXPECT_NE(text.find("'NOSUCH' at position " + std::to_string(sql.find("NOSUCH") + 1)), std::string::npos) << text;
    EXPECT_NE(text.find("ATYPE_ID, ANTENNA"), std::string::npos) << text;
  }
}

class NotUnderstood : public testing::TestWithParam<const char*> {};

TEST_P(NotUnderstood, IsRefusedAsABadQuery) {
  const CursorTables tables;
  const std::string text = problemOf(tables, GetParam());
  EXPECT_NE(text.find("position "), std::string::npos) << text;
  EXPECT_GT(text.size(), 50U) << text;
}

INSTANTIATE_TEST_SUITE_P(
    Sql, NotUnderstood,
    testing::Values("", "   ", "AMSTEST", "select", "select *", "select * from", "select from [AMSTEST]",
                    "select * from [AMSTEST", "select * from []", "select * from [AMSTEST] where",
                    "select * from [AMSTEST] order ATYPE_ID", "select * from [AMSTEST] ORDER BY ;",
                    "select * from [AMSTEST] order by 1", "select * from [AMSTEST] order by ATYPE_ID,",
                    "select * from [AMSTEST] where ATYPE_ID = ", "select * from [AMSTEST] where ATYPE_ID = 'x",
                    "select * from [AMSTEST] where (GAIN = 1", "select * from [AMSTEST] where GAIN = 1)",
                    "select * from [AMSTEST] where GAIN = 1 = 1", "select * from [AMSTEST] where GAIN in ()",
                    "select * from [AMSTEST] where GAIN between 1", "select * from [AMSTEST] where GAIN is 5",
                    "select * from [AMSTEST] where nosuch(GAIN) = 1",
                    "select * from [AMSTEST] where left(ANTENNA) = 'a'", "select * from [AMSTEST] where max(GAIN) = 1",
                    "select GAIN, max(GAIN) from [AMSTEST]", "select max(GAIN) from [AMSTEST] order by GAIN",
                    "select max(GAIN)+1 from [AMSTEST]", "select * from [AMSTEST] where GAIN = 1e999",
                    "select * from [AMSTEST] where GAIN = 12abc", "select * from [AMSTEST] where MADE = #13/45/2026#",
                    "select * from [AMSTEST] where MADE = #1/1/2026",
                    "select * from [AMSTEST]; select * from [AMSTEST]", "delete from [AMSTEST]",
                    "select distinct GAIN from [AMSTEST]", "insert into [AMSTEST] select * from [AMSTEST]",
                    "select * from a, b", "select * from [AMSTEST], [B]", "select * from [AMSTEST] join [B]",
                    "select * from [AMSTEST] wher [GAIN] = 1", "select * from [AMSTEST] group by [GAIN]",
                    "select * from []] where", "insert into [] select * from [AMSTEST]",
                    "select * from [AMSTEST] where GAIN ! 1"));

TEST(Sql, DeepNestingAndGreatLengthAreRefusedRatherThanFatal) {
  const CursorTables tables;
  const std::string start = "select * from AMSTEST where ";
  EXPECT_NE(problemOf(tables, start + std::string(20000, '(') + "1").find("nested"), std::string::npos);
  EXPECT_NE(problemOf(tables, start + std::string(20000, '-') + "1").find("nested"), std::string::npos);
  std::string nots;
  for (int i = 0; i < 5000; ++i) nots += "not ";
  EXPECT_NE(problemOf(tables, start + nots + "1").find("nested"), std::string::npos);
  std::string text;
  EXPECT_EQ(failureNumberOf([&] { tables.open(start + std::string(70000, ' ') + "1"); }, &text), failure::badQuery);
  EXPECT_NE(text.find("too long"), std::string::npos);
}

}  // namespace
}  // namespace vantrelix
