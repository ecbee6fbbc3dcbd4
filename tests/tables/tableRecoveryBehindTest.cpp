// What is taken for rows behind the count, and what is left there.
#include <gtest/gtest.h>

#include "tables/TableChecks.h"
#include "tables/TableRecoveries.h"

namespace vantrelix {
namespace {

using test::RawTable;
using test::TableChecks;
using test::TableRecoveries;
using namespace std::string_literals;

class RowsBehindTheCount : public TableRecoveries {
 protected:
  // The kinds that a check names, in their order.
  std::string kindsOf(const RawTable& raw) {
    suite.folder().write("T.DBF", raw.bytes());
    faults = checkTable(suite.file("T.DBF")).faults;
    std::string kinds;
    for (const auto& [kind, total] : faults.totals())
      kinds += (kinds.empty() ? "" : " ") + std::string(faultName(kind));
    return kinds;
  }
  std::string textOf(std::string_view kind) const {
    for (const TableFault& fault : faults.kept()) {
      if (faultName(fault.kind) == kind) return fault.text;
    }
    return "";
  }

  FaultList faults;
};

TEST_F(RowsBehindTheCount, AreThereInSpiteOfAnOddValueInTheFirst) {
  RawTable raw{.fields = {{"A", 'C', 3}, {"N", 'N', 4}, {"D", 'D', 8}}};
  for (int row = 0; row < 10000; ++row) raw.rows += row == 0 ? " abc****20261121" : " abc   120261121";
  EXPECT_EQ(kindsOf(raw), "count_too_low");
  EXPECT_NE(textOf("count_too_low").find("stand 10000 more"), std::string::npos);
  const TableRecovery result = recovered(raw);
  EXPECT_EQ(result.rows, 10000U);
  EXPECT_EQ(result.behindCount, 10000U);
  EXPECT_EQ(result.repairedValues, 1U);
  EXPECT_EQ(result.lostRows, 0U);
}

TEST_F(RowsBehindTheCount, MayHoldAnyOddValue) {
  const RawTable base{
      .version = 0x30,
      .fields = {{"A", 'C', 3}, {"N", 'N', 4}, {"D", 'D', 8}, {"L", 'L', 1}, {"T", 'T', 8}, {"M", 'M', 10}}};
  const std::string sound = " abc   120261121T\0\0\0\0\0\0\0\0          "s;
  const std::pair<std::size_t, std::string> odd[] = {
      {1, "\x81\x82\x83"}, {1, "a\x1A\x1A"}, {4, "****"},     {4, "1\0\0\0"s}, {4, "12x4"},
      {4, "1,25"},         {8, "00000000"},  {8, "20260230"}, {16, "x"},       {17, "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"},
      {25, "       9 x"},
  };
  for (const auto& [at, bytes] : odd) {
    RawTable raw = base;
    raw.rows = std::string(sound).replace(at, bytes.size(), bytes) + sound;
    EXPECT_NE(kindsOf(raw).find("count_too_low"), std::string::npos) << bytes;
    EXPECT_NE(textOf("count_too_low").find("stand 2 more"), std::string::npos) << bytes;
  }
}

TEST_F(RowsBehindTheCount, MayBeUnlikeTheirFieldsWhereAsManyLikeOnesFollow) {
  RawTable raw{.fields = {{"A", 'C', 3}, {"N", 'N', 4}}};
  raw.rows = " abc   1 xyzfoo  def   2";
  const TableRecovery result = recovered(raw);
  EXPECT_EQ(rows(), " abc   1 xyz     def   2");
  EXPECT_EQ(result.repairedValues, 1U);
  raw.rows = " abc   1 xyzfoo  xyzbar  def   2";
  EXPECT_EQ(rowsSaved(raw), " abc   1") << "two that are none before one that is";
}

TEST_F(RowsBehindTheCount, AreNoneInTextsOfAnotherKind) {
  RawTable raw = good;
  const std::string text = " and then the letter goes on for a while, as letters do, until it ends";
  raw.rows += text;
  EXPECT_EQ(rowsSaved(raw), goodRows);
  EXPECT_EQ(kindsOf(raw), "left_over");
  EXPECT_NE(textOf("left_over").find(std::to_string(text.size() + 1) + " bytes"), std::string::npos);
  EXPECT_EQ(textOf("left_over").find("The next added row writes one behind it"), std::string::npos);
}

TEST_F(RowsBehindTheCount, EndWhereARowBeginsWithNeitherABlankNorAnAsteriskAndTheRestIsTold) {
  RawTable raw = good;
  raw.count = 1;
  raw.rows += "?xyz   4 xyz   5";
  const TableRecovery result = recovered(raw);
  EXPECT_EQ(rows(), goodRows);
  EXPECT_TRUE(result.faults.totals().contains(FaultKind::leftOver));
  EXPECT_EQ(kindsOf(raw), "count_too_low left_over");
  EXPECT_NE(textOf("left_over").find("17 bytes"), std::string::npos);
}

TEST_F(RowsBehindTheCount, EndAtTheEndMark) {
  RawTable raw = good;
  raw.rows += "\x1Axyz   4 xyz   5";
  EXPECT_EQ(rowsSaved(raw), goodRows);
  EXPECT_EQ(kindsOf(raw), "bytes_behind_end");
}

TEST_F(RowsBehindTheCount, AreNoneInRoomThatWasNeverWritten) {
  RawTable raw = good;
  for (const char byte : {'\0', ' '}) {
    raw.rows = goodRows + std::string(800, byte);
    EXPECT_EQ(rowsSaved(raw), goodRows);
    for (const std::string& end : {""s, "\x1A"s}) {
      raw.end = end;
      EXPECT_EQ(kindsOf(raw), "end_mark");
    }
  }
}

TEST_F(RowsBehindTheCount, ThatWereCutOffAreTold) {
  RawTable raw = good;
  raw.count = 1;
  raw.rows += " ab";
  raw.end = "";
  EXPECT_EQ(rowsSaved(raw), goodRows);
  EXPECT_EQ(kindsOf(raw), "count_too_low left_over");
}

}  // namespace
}  // namespace vantrelix
