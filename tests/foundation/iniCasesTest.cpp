// How the private-profile calls of the platform behave, case by case. Writing differs from theirs in one thing: blank
// lines, comments, unknown lines, order and each line's own line end stay as they are.
#include <gtest/gtest.h>

#include "foundation/IniFile.h"
#include "foundation/getINI.h"
#include "support/TempFolder.h"

using namespace vantrelix;
using namespace vantrelix::test;

namespace {

struct ReadCase {
  int row;
  const char* file;
  const char* section;
  const char* key;
  const char* fallback;
  std::size_t size;
  const char* value;
};

constexpr const char* kTwice = "[s]\r\nk=1\r\n[t]\r\na=1\r\n[S]\r\nk=2\r\nm=3\r\n";

const ReadCase kReads[] = {
    {1, "[s]\r\nk=\"quoted\"\r\n", "s", "k", "D", 100, "quoted"},
    {2, "[s]\r\nk='single'\r\n", "s", "k", "D", 100, "single"},
    {3, "[s]\r\nk=\"  sp  \"\r\n", "s", "k", "D", 100, "  sp  "},
    {4, "[s]\r\nk=\"half\r\n", "s", "k", "D", 100, "\"half"},
    {5, "[s]\r\nk=\"a\" b\r\n", "s", "k", "D", 100, "\"a\" b"},
    {6, "[s]\r\n  k  =  v v  \t\r\n", "s", "k", "D", 100, "v v"},
    {7, "  [s]  \r\nk=v\r\n", "s", "k", "D", 100, "v"},
    {8, "[s]\r\n;k=1\r\n k=2;tail\r\n", "s", "k", "D", 100, "2;tail"},
    {9, "[s]\r\n#k=1\r\n", "s", "#k", "D", 100, "1"},
    {10, kTwice, "s", "k", "D", 100, "1"},
    {11, kTwice, "s", "m", "D", 100, "D"},
    {12, "[s]\r\nk=1\r\nk=2\r\n", "s", "k", "D", 100, "1"},
    {13, "[s]\r\nk\r\nj=\r\n", "s", "k", "D", 100, "D"},
    {14, "[s]\r\nk\r\nj=\r\n", "s", "j", "D", 100, ""},
    {15, "[Sec]\r\nKey=V\r\n", "sEC", "kEY", "D", 100, "V"},
    {16, "[s]\r\nk=0123456789\r\n", "s", "k", "D", 5, "0123"},
    {17, "[s]\r\nk=1\r\n", "s", "no", "DEFAULT   ", 100, "DEFAULT"},
    {18, "[s]\r\nk=1\r\n", "s", "no", "DEFAULT", 5, "DEFA"},
    {23, "[s]\nk=lf\n", "s", "k", "D", 100, "lf"},
    {24, "[s]\rk=cr\r", "s", "k", "D", 100, "cr"},
    {25, "k=top\r\n[s]\r\nj=1\r\n", "", "k", "D", 100, "top"},
    {26, "[s]\r\nk=a=b=c\r\n", "s", "k", "D", 100, "a=b=c"},
    {27, "[s\r\nk=1\r\n", "s", "k", "D", 100, "D"},
    {28, "[s] junk\r\nk=1\r\n", "s", "k", "D", 100, "1"},
    {29, "[s]\r\nk=1", "s", "k", "D", 100, "1"},
    {30, "[s]\r\nk=caf\xe9\r\n", "s", "k", "D", 100, "caf\xC3\xA9"},
    {31, "\xef\xbb\xbf[s]\r\nk=bom\r\n", "s", "k", "D", 100, "bom"},
    {32, "[s]\r\nk=1\r\n", " s ", "k", "D", 100, "1"},
    {33, "[s]\r\nk=1\r\n", "s", " k ", "D", 100, "1"},
};

class Reads : public testing::TestWithParam<ReadCase> {};

struct IntegerCase {
  int row;
  const char* line;
  long value;
};

const IntegerCase kIntegers[] = {
    {34, "k=12abc", 12}, {35, "k=-5", -5}, {36, "k=0x1F", 31}, {37, "k=abc", 0}, {38, "k=", -7}, {39, "k= +3", 3},
};

class Integers : public testing::TestWithParam<IntegerCase> {};

struct WriteCase {
  int row;
  const char* before;
  const char* section;
  const char* key;
  const char* value;
  const char* after;
};

const WriteCase kWrites[] = {
    {42, "[s]\r\nk=1\r\n\r\n[t]\r\nx=1\r\n", "s", "n", "new", "[s]\r\nk=1\r\nn=new\r\n\r\n[t]\r\nx=1\r\n"},
    {43, "[s]\r\n;c\r\n  K  = 1\r\nj=2\r\n", "s", "k", "\"q v\"", "[s]\r\n;c\r\nK=\"q v\"\r\nj=2\r\n"},
    {44, "[s]\r\nk=1\r\n", "NEW", "a", "  lead", "[s]\r\nk=1\r\n[NEW]\r\na=lead\r\n"},
    {45, "", "s", "k", "v", "[s]\r\nk=v\r\n"},
    {46, "[s]\r\nk=1\r\nk=2\r\n", "s", "k", "3", "[s]\r\nk=3\r\nk=2\r\n"},
    {47, "[s]\nk=1\nj=2\n", "s", "j", "3", "[s]\nk=1\nj=3\n"},
    {48, "[s]\r\nk=1\r\n", "s", "k", "", "[s]\r\nk=\r\n"},
    {49, "; head\r\n\r\n[s]\r\nk=1", "s", "j", "2", "; head\r\n\r\n[s]\r\nk=1\r\nj=2\r\n"},
};

class Writes : public testing::TestWithParam<WriteCase> {};

template <class Case>
std::string rowName(const testing::TestParamInfo<Case>& info) {
  return "Row" + std::to_string(info.param.row);
}

}  // namespace

TEST_P(Reads, GiveTheValueOfTheRow) {
  const ReadCase& row = GetParam();
  const TempFolder folder;
  const std::string file = folder.write("a.ini", row.file);
  EXPECT_EQ(getPrivateProfileString(row.section, row.key, row.fallback, row.size, file), row.value);
}
INSTANTIATE_TEST_SUITE_P(IniCases, Reads, testing::ValuesIn(kReads), rowName<ReadCase>);

TEST_P(Integers, GiveTheNumberOfTheRow) {
  const TempFolder folder;
  const std::string file = folder.write("a.ini", std::string("[s]\r\n") + GetParam().line + "\r\n");
  EXPECT_EQ(getPrivateProfileInt("s", "k", -7, file), GetParam().value);
  EXPECT_EQ(getPrivateProfileInt("s", "missing", -7, file), -7);
}
INSTANTIATE_TEST_SUITE_P(IniCases, Integers, testing::ValuesIn(kIntegers), rowName<IntegerCase>);

TEST_P(Writes, LeaveTheFileOfTheRow) {
  const WriteCase& row = GetParam();
  const TempFolder folder;
  const std::string file = folder.write("a.ini", row.before);
  EXPECT_TRUE(writePrivateProfileString(row.section, row.key, row.value, file));
  EXPECT_EQ(folder.read("a.ini"), row.after);
}
INSTANTIATE_TEST_SUITE_P(IniCases, Writes, testing::ValuesIn(kWrites), rowName<WriteCase>);

TEST(IniCases, Rows19And20KeysOfASectionWithoutCommentsAndLinesWithoutAValue) {
  EXPECT_EQ(IniFile("[s]\r\na=1\r\n;c=9\r\nb\r\n").keys("s"), std::vector<std::string>{"a"});
  EXPECT_EQ(IniFile("[s]\r\nalpha=1\r\nbeta=2\r\n").keys("s"), (std::vector<std::string>{"alpha", "beta"}));
}

TEST(IniCases, Rows21And22NamesOfTheSections) {
  EXPECT_EQ(IniFile("[s]\r\nx=1\r\n[t]\r\n[u]\r\n").sections(), (std::vector<std::string>{"s", "t", "u"}));
  EXPECT_EQ(IniFile("[s]\r\nx=1\r\n[ttt]\r\n[uuu]\r\n").sections(), (std::vector<std::string>{"s", "ttt", "uuu"}));
}

TEST(IniCases, Row40RemovingAKeyKeepsTheRest) {
  const TempFolder folder;
  const std::string file = folder.write("a.ini", "[s]\r\nk=1\r\n;c\r\nj=2\r\n");
  EXPECT_TRUE(removePrivateProfileKey("s", "k", file));
  EXPECT_EQ(folder.read("a.ini"), "[s]\r\n;c\r\nj=2\r\n");
}

TEST(IniCases, Row41RemovingASectionKeepsTheRest) {
  const TempFolder folder;
  const std::string file = folder.write("a.ini", "[s]\r\nk=1\r\n[t]\r\nx=1\r\n");
  EXPECT_TRUE(removePrivateProfileSection("s", file));
  EXPECT_EQ(folder.read("a.ini"), "[t]\r\nx=1\r\n");
}
