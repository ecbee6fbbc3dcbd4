// Which rows a question reads of a table whose texts are known, and when they are known.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tables/CutsTable.h"

namespace vantrelix {
namespace {

using test::MeasuredPlatform;
using testing::ElementsAre;
using TextRuns = test::CutsTable;  // of files that another machine gives their times

// --- When a reading is trusted.

TEST_F(TextRuns, TheNextQuestionReadsTheRowsOfItsTextAlone) {
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  wait(200);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_LT(cost(isUpper("ID017")), kAll / 4);
  const RecordsetPtr rows = open(isUpper("ID017"), " order by place desc");
  EXPECT_EQ(rows->rowCount(), 50);
  EXPECT_EQ(rows->value("ID").text(), "ID017       ");
  EXPECT_EQ(rows->value("PLACE"), Value(49));
}

TEST_F(TextRuns, AFileThatHasJustBeenLookedAtForTheFirstTimeIsNotTrusted) {
  for (int question = 0; question < 3; ++question) {
    EXPECT_GT(cost(isUpper("ID003")), kAll);
    wait(33);
  }
  EXPECT_EQ(count(isUpper("ID003")), 50);
}

TEST_F(TextRuns, WhereTimesAreWholeSecondsTheFileHasToStandForLonger) {
  age(std::chrono::hours(1));
  expectTrustAfter(2000, 200);
}

TEST_F(TextRuns, ATimeInTheFutureProvesNothing) {
  setChanged(std::filesystem::file_time_type::clock::now() + std::chrono::milliseconds(10123));
  expectTrustAfter(5000, 6000);
}

TEST_F(TextRuns, AFileWithoutATimeIsReadWhole) {
  setChanged(std::filesystem::file_time_type::clock::from_sys(std::chrono::sys_seconds()));
  learn();
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_EQ(count(isUpper("ID003")), 50);
}

TEST_F(TextRuns, AReadingThatEndsEarlyTeachesNothing) {
  count(isUpper("NONE"));
  wait(5000);
  scanBlocksForText(*DbfFile::open(path()), {1, 12, "ID003"},
                    [](std::uint32_t, const unsigned char*, std::uint32_t) { return false; });
  EXPECT_EQ(count(isUpper("ID019")), 50);
}

TEST_F(TextRuns, SmallTablesAreReadWhole) {
  setSmallestRemembered(kAll * 2);
  learn();
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_EQ(count(isUpper("ID003")), 50);
}

TEST_F(TextRuns, ATableInUseIsRememberedHoweverManyOthersAreOpened) {
  MeasuredPlatform::now += 100000;
  for (int other = 0; other < 20; ++other) {
    const std::string file = path() + std::to_string(other);
    DbfFile::create(file, {{"ID", 'C', 12, 0}});
    noteOpening(*DbfFile::open(file));
  }
  MeasuredPlatform::now -= 100000;
  learn();
  EXPECT_LT(cost(isUpper("ID017")), kAll / 4);
}

// --- What is found.

TEST_F(TextRuns, ATextIsFoundInEveryCaseAndWithWhateverBehindIt) {
  inAnotherProgram([](DbfFile& table) {
    table.update(100, [&](unsigned char* row) { table.put(row, 0, Value("Id003")); });
    table.update(200, [](unsigned char* row) { std::copy_n("ID003\0rest  ", 12, row + 1); });
    table.update(300, [](unsigned char* row) { std::copy_n("ID003  \0    ", 12, row + 1); });
    table.update(400, [](unsigned char* row) { std::copy_n(" ID003      ", 12, row + 1); });
  });
  age();
  const std::vector<std::string> questions = {"ucase(id) = 'ID003'", "id = 'ID003'",         "id = 'Id003'",
                                              "id = 'id003'",        "ucase(id) = 'id003'",  "id = 'ID003  '",
                                              "id = ' ID003'",       "'ID003' = ucase([ID])"};
  std::vector<long> whole, known;
  for (const std::string& question : questions) whole.push_back(count(question));
  learn();
  for (const std::string& question : questions) {
    EXPECT_LT(cost(question), kAll / 4) << question;
    known.push_back(count(question));
  }
  EXPECT_THAT(whole, ElementsAre(53, 52, 1, 0, 0, 52, 1, 53));
  EXPECT_EQ(known, whole);
}

TEST_F(TextRuns, TheOtherConditionsHoldToo) {
  learn();
  EXPECT_EQ(count("ucase(id) = 'ID003' and place < 10"), 10);
  EXPECT_EQ(count("place < 10 and ucase(id) = 'ID003'"), 10);
  EXPECT_EQ(count("ucase(id) = 'ID003' or place = 7"), 69);
  EXPECT_EQ(count("ucase(id) = 'ID003' and id = 'ID004'"), 0);
}

TEST_F(TextRuns, EachFieldHasNotesOfItsOwn) {
  create({{"ID", 'C', 12, 0}, {"NAME", 'C', 12, 0}});
  {
    const auto table = DbfFile::open(path());
    std::vector<unsigned char> row = table->blankRecord();
    table->put(row.data(), 0, Value("A"));
    table->put(row.data(), 1, Value("B"));
    table->append(row.data());
  }
  age();
  learn();
  EXPECT_EQ(count("ucase(name) = 'B'"), 1);
  EXPECT_EQ(count("ucase(name) = 'A'"), 0);
  EXPECT_EQ(count("ucase(id) = 'B'"), 0);
  EXPECT_EQ(count("ucase(id) = 'A'"), 1);
}

TEST_F(TextRuns, RowsOfOneTextThatStandApartAreFoundInTheOrderOfTheFile) {
  inAnotherProgram([](DbfFile& table) {
    for (const std::uint32_t row : {900U, 10U, 500U}) {
      table.update(row, [&](unsigned char* bytes) { table.put(bytes, 0, Value("APART")); });
    }
  });
  age();
  learn();
  const RecordsetPtr rows = open("id = 'APART'");
  std::vector<double> places;
  for (; !rows->Eof(); rows->MoveNext()) places.push_back(rows->value("PLACE").number());
  EXPECT_THAT(places, ElementsAre(10, 0, 0));
  EXPECT_EQ(count("id = 'ID000'"), 49);
}

TEST_F(TextRuns, ATableOfAllDifferentTextsIsStillAnsweredRightly) {
  append(300000, [](int row) { return "X" + std::to_string(row); });
  age();
  learn();
  EXPECT_EQ(count(isUpper("X0")), 1);
  EXPECT_EQ(count(isUpper("X299999")), 1);
  EXPECT_EQ(count(isUpper("ID007")), 50);
}

TEST_F(TextRuns, RunsGoOnFromOneReadToTheNext) {
  append(40000, [](int row) { return idOf(row / 700 % 20); });  // more than a megabyte
  age();
  std::vector<long> whole, known;
  for (int antenna = 0; antenna < 20; ++antenna) whole.push_back(count(isUpper(idOf(antenna))));
  learn();
  for (int antenna = 0; antenna < 20; ++antenna) known.push_back(count(isUpper(idOf(antenna))));
  EXPECT_EQ(whole[0], 50 + 3 * 700);
  EXPECT_EQ(whole[17], 50 + 2 * 700 + 100);
  EXPECT_EQ(whole[19], 50 + 2 * 700);
  EXPECT_EQ(known, whole);
}

TEST_F(TextRuns, ATextThatFillsSeveralReadsIsFoundWhole) {
  create();
  append(10000, [](int) { return "ID003"; });
  age();
  learn();
  EXPECT_EQ(count(isUpper("ID003")), 10000);
}

TEST_F(TextRuns, TextsThatDifferInOneByteAreToldApartWhateverTheWidth) {
  for (const int width : {1, 7, 8, 9, 12, 15, 16, 17, 40}) {
    create({{"ID", 'C', width, 0}});
    const std::string common(static_cast<std::size_t>(width), 'A');
    std::vector<std::string> others;
    {
      const auto table = DbfFile::open(path());
      const auto append = [&](const std::string& id) {
        std::vector<unsigned char> row = table->blankRecord();
        table->put(row.data(), 0, Value(id));
        table->append(row.data());
      };
      for (std::size_t place = 0; place < common.size(); ++place) {
        others.push_back(common);
        others.back()[place] = 'B';
        append(common);
        append(others.back());
      }
    }
    age();
    for (const char* knowledge : {"none", "all"}) {
      EXPECT_EQ(count("id = '" + common + "'"), width) << width << knowledge;
      for (const std::string& other : others) EXPECT_EQ(count(isUpper(other)), 1) << other << knowledge;
      learn();
    }
  }
}

}  // namespace
}  // namespace vantrelix
