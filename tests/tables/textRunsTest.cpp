#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utility>

#include "tables/CutsTable.h"

namespace vantrelix {
namespace {

using test::MeasuredPlatform;
using testing::ElementsAre;

// Files that another machine gives their times; RememberedTable tells of this machine's own.
class TextRuns : public test::CutsTable {};

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
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  wait(2000);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  wait(200);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_LT(cost(isUpper("ID003")), kAll / 4);
}

TEST_F(TextRuns, AChangeOfAnotherProgramIsSeenByTheNextQuestion) {
  learn();
  EXPECT_EQ(count(isUpper("ID003")), 50);
  inAnotherProgram(
      [](DbfFile& table) { table.update(999, [&](unsigned char* row) { table.put(row, 0, Value("ID003")); }); });
  EXPECT_EQ(count(isUpper("ID003")), 51);
  EXPECT_EQ(count(isUpper("ID019")), 49);
}

TEST_F(TextRuns, ACursorThatIsOpenSeesItAtItsRequery) {
  learn();
  const RecordsetPtr rows = open(isUpper("ID003"));
  inAnotherProgram(
      [](DbfFile& table) { table.update(0, [&](unsigned char* row) { table.put(row, 0, Value("ID003")); }); });
  rows->Requery();
  EXPECT_EQ(rows->rowCount(), 51);
}

TEST_F(TextRuns, RowsThatAnotherProgramAddsAndDeletesAreSeen) {
  learn();
  inAnotherProgram([](DbfFile& table) {
    table.append(record(table, "ID003", 50).data());
    table.append(record(table, "NEW", 0).data());
    table.markDeleted(0);
  });
  EXPECT_EQ(count(isUpper("ID003")), 51);
  EXPECT_EQ(count(isUpper("NEW")), 1);
  EXPECT_EQ(count(isUpper("ID000")), 49);
}

TEST_F(TextRuns, WhatThisProgramWritesIsSeen) {
  learn();
  const RecordsetPtr rows = open(isUpper("ID003"));
  rows->Edit();
  rows->put("ID", "ID004");
  rows->Update();
  rows->AddNew();
  rows->put("ID", "NEW");
  rows->Update();
  rows->MoveNext();
  rows->Delete();
  EXPECT_EQ(count(isUpper("ID003")), 48);
  EXPECT_EQ(count(isUpper("ID004")), 51);
  EXPECT_EQ(count(isUpper("NEW")), 1);
}

TEST_F(TextRuns, WhatThisProgramHasWrittenIsKnownAfterOneQuestion) {
  learn();
  const RecordsetPtr rows = open(isUpper("ID003"));
  rows->Edit();
  rows->put("PLACE", 77);
  rows->Update();
  wait(5000);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_LT(cost(isUpper("ID004")), kAll / 4);
}

TEST_F(TextRuns, AFileInThePlaceOfTheTableIsReadAnew) {
  learn();
  EXPECT_EQ(count(isUpper("ID003")), 50);
  const std::string other = path() + ".new";
  DbfFile::create(other, {{"ID", 'C', 12, 0}, {"PLACE", 'N', 17, 4}});
  {
    const auto table = DbfFile::open(other);
    table->append(record(*table, "ID003", 1).data());
  }
  platform::current().rename(other, path());
  EXPECT_EQ(count(isUpper("ID003")), 1);
  EXPECT_EQ(count(isUpper("ID004")), 0);
}

TEST_F(TextRuns, ATextIsFoundInEveryCaseAndWithWhateverBehindIt) {
  inAnotherProgram([](DbfFile& table) {
    table.update(100, [&](unsigned char* row) { table.put(row, 0, Value("Id003")); });
    table.update(200, [](unsigned char* row) { std::copy_n("ID003\0rest  ", 12, row + 1); });
    table.update(300, [](unsigned char* row) { std::copy_n("ID003  \0    ", 12, row + 1); });
    table.update(400, [](unsigned char* row) { std::copy_n(" ID003      ", 12, row + 1); });
  });
  age(std::chrono::milliseconds(1800123));
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
  const std::string other = path();
  platform::current().remove(other);
  DbfFile::create(other, {{"ID", 'C', 12, 0}, {"NAME", 'C', 12, 0}});
  {
    const auto table = DbfFile::open(other);
    std::vector<unsigned char> row = table->blankRecord();
    table->put(row.data(), 0, Value("A"));
    table->put(row.data(), 1, Value("B"));
    table->append(row.data());
  }
  age(std::chrono::milliseconds(3600123));
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
  age(std::chrono::milliseconds(1800123));
  learn();
  const RecordsetPtr rows = open("id = 'APART'");
  std::vector<double> places;
  for (; !rows->Eof(); rows->MoveNext()) places.push_back(rows->value("PLACE").number());
  EXPECT_THAT(places, ElementsAre(10, 0, 0));
  EXPECT_EQ(count("id = 'ID000'"), 49);
}

TEST_F(TextRuns, AFileWithoutATimeIsReadWhole) {
  std::filesystem::last_write_time(platform::current().toMachine(path()),
                                   std::filesystem::file_time_type::clock::from_sys(std::chrono::sys_seconds()));
  learn();
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_EQ(count(isUpper("ID003")), 50);
}

TEST_F(TextRuns, AReadingThatEndsEarlyTeachesNothing) {
  count(isUpper("NONE"));
  wait(5000);
  scanForText(*DbfFile::open(path()), {1, 12, "ID003"}, [](std::uint32_t, const unsigned char*) { return false; });
  EXPECT_EQ(count(isUpper("ID019")), 50);
}

TEST_F(TextRuns, SmallTablesAreReadWhole) {
  setSmallestRemembered(kAll * 2);
  learn();
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_EQ(count(isUpper("ID003")), 50);
}

TEST_F(TextRuns, ATableOfAllDifferentTextsIsStillAnsweredRightly) {
  constexpr std::uint32_t kRows = 300000;
  {
    const auto table = DbfFile::open(path());
    std::vector<unsigned char> rows;
    for (std::uint32_t i = 0; i < kRows; ++i) {
      const std::vector<unsigned char> row = record(*table, "X" + std::to_string(i), 0);
      rows.insert(rows.end(), row.begin(), row.end());
    }
    table->append(rows.data(), kRows);
  }
  age(std::chrono::milliseconds(1800123));
  learn();
  EXPECT_EQ(count(isUpper("X0")), 1);
  EXPECT_EQ(count(isUpper("X299999")), 1);
  EXPECT_EQ(count(isUpper("ID007")), 50);
}

TEST_F(TextRuns, ATableThatHasNoRowsYetIsAskedAgain) {
  platform::current().remove(path());
  DbfFile::create(path(), {{"ID", 'C', 12, 0}, {"PLACE", 'N', 17, 4}});
  age(std::chrono::milliseconds(3600123));
  learn();
  EXPECT_EQ(count(isUpper("ID003")), 0);
  inAnotherProgram([](DbfFile& table) { table.append(record(table, "ID003", 1).data()); });
  EXPECT_EQ(count(isUpper("ID003")), 1);
}

// --- A write of this program, and another program's within the same tick of the clock.

TEST_F(TextRuns, AnotherProgramsWriteRightBehindOneOfThisProgramIsSeen) {
  learn();
  writeOwn("ID005");
  EXPECT_EQ(count(isUpper("ID003")), 50);
  giveRowTo3(999);
  EXPECT_EQ(count(isUpper("ID003")), 51);
  wait(60);
  giveRowTo3(998);
  EXPECT_EQ(count(isUpper("ID003")), 52);
  EXPECT_EQ(count(isUpper("ID019")), 48);
}

TEST_F(TextRuns, AnotherProgramsWriteRightBeforeOneOfThisProgramIsSeen) {
  learn();
  const RecordsetPtr rows = open(isUpper("ID005"));
  rows->Edit();
  rows->put("PLACE", 77);
  inAnotherProgram(
      [](DbfFile& table) { table.update(999, [&](unsigned char* b) { table.put(b, 0, Value("ID003")); }); });
  rows->Update();
  EXPECT_EQ(count(isUpper("ID003")), 51);
  wait(5000);
  EXPECT_EQ(count(isUpper("ID003")), 51);
  EXPECT_EQ(count(isUpper("ID019")), 49);
}

TEST_F(TextRuns, ARowThatThisProgramAddsIsSeenThoughAnotherAddsOneToo) {
  learn();
  const RecordsetPtr rows = open(isUpper("ID003"));
  rows->AddNew();
  rows->put("ID", "ID003");
  rows->Update();
  inAnotherProgram([](DbfFile& table) { table.append(record(table, "ID003", 51).data()); });
  EXPECT_EQ(count(isUpper("ID003")), 52);
  wait(5000);
  EXPECT_EQ(count(isUpper("ID003")), 52);
  EXPECT_EQ(count(isUpper("ID003")), 52);
}

// --- Many files.

TEST_F(TextRuns, ATableInUseIsRememberedHoweverManyOthersAreOpened) {
  MeasuredPlatform::now += 100000;
  for (int other = 0; other < 20; ++other) {
    const std::string file = path() + std::to_string(other);
    DbfFile::create(file, {{"ID", 'C', 12, 0}});
    noteFileState(*DbfFile::open(file));
  }
  MeasuredPlatform::now -= 100000;
  learn();
  EXPECT_LT(cost(isUpper("ID017")), kAll / 4);
}

// --- Runs.

TEST_F(TextRuns, RunsGoOnFromOneReadToTheNext) {
  constexpr int kRows = 40000;  // more than a megabyte
  {
    const auto table = DbfFile::open(path());
    std::vector<unsigned char> rows;
    for (int i = 0; i < kRows; ++i) {
      const std::vector<unsigned char> row = record(*table, idOf(i / 700 % 20), i);
      rows.insert(rows.end(), row.begin(), row.end());
    }
    table->append(rows.data(), kRows);
  }
  age(std::chrono::milliseconds(1800123));
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
  platform::current().remove(path());
  DbfFile::create(path(), {{"ID", 'C', 12, 0}, {"PLACE", 'N', 17, 4}});
  {
    const auto table = DbfFile::open(path());
    std::vector<unsigned char> rows;
    for (int i = 0; i < 10000; ++i) {
      const std::vector<unsigned char> row = record(*table, "ID003", i);
      rows.insert(rows.end(), row.begin(), row.end());
    }
    table->append(rows.data(), 10000);
  }
  age(std::chrono::milliseconds(3600123));
  learn();
  EXPECT_EQ(count(isUpper("ID003")), 10000);
}

TEST_F(TextRuns, ATableThatChangesWhileItIsReadIsNotKnown) {
  count(isUpper("NONE"));
  wait(5000);
  bool changed = false;
  scanForText(*DbfFile::open(path()), {1, 12, "ID019"}, [&](std::uint32_t, const unsigned char*) {
    if (std::exchange(changed, true)) return true;
    inAnotherProgram(
        [](DbfFile& table) { table.update(0, [&](unsigned char* b) { table.put(b, 0, Value("ID019")); }); });
    EXPECT_EQ(count(isUpper("ID000")), 49);
    return true;
  });
  EXPECT_TRUE(changed);
  EXPECT_EQ(count(isUpper("ID019")), 51);
}

TEST_F(TextRuns, TextsThatDifferInOneByteAreToldApartWhateverTheWidth) {
  for (const int width : {1, 7, 8, 9, 12, 15, 16, 17, 40}) {
    platform::current().remove(path());
    DbfFile::create(path(), {{"ID", 'C', width, 0}});
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
    age(std::chrono::milliseconds(3600123));
    for (const char* knowledge : {"none", "all"}) {
      EXPECT_EQ(count("id = '" + common + "'"), width) << width << knowledge;
      for (const std::string& other : others) EXPECT_EQ(count(isUpper(other)), 1) << other << knowledge;
      learn();
    }
  }
}

// --- Learning before the first question.

TEST_F(TextRuns, WhatIsLearntNeedNotBeLookedFor) {
  EXPECT_GT(costOfLearning("id"), kAll);
  EXPECT_LT(cost(isUpper("ID017")), kAll / 4);
  EXPECT_EQ(count(isUpper("ID017")), 50);
  EXPECT_LT(costOfLearning("ID"), kAll / 4);
}

TEST_F(TextRuns, LearningWaitsATenthOfASecondForAFileThatHasJustBeenSeen) {
  count(isUpper("NONE"));
  const std::int64_t before = MeasuredPlatform::now;
  learnTexts(path(), "ID");
  EXPECT_EQ(MeasuredPlatform::now - before, 101);
  writeOwn("ID003");
  wait(60);
  learnTexts(path(), "ID");
  EXPECT_EQ(MeasuredPlatform::now - before, 202);
  EXPECT_LT(cost(isUpper("ID017")), kAll / 4);
  learnTexts(path(), "ID");
  EXPECT_EQ(MeasuredPlatform::now - before, 202);
}

TEST_F(TextRuns, LearningDoesNotWaitForATableThatIsSoonRead) {
  setSmallestRemembered(kAll / 4);
  const std::int64_t before = MeasuredPlatform::now;
  EXPECT_LT(costOfLearning("ID"), kAll / 4);
  EXPECT_EQ(MeasuredPlatform::now, before);
  wait(200);
  EXPECT_GT(costOfLearning("ID"), kAll);
  EXPECT_LT(cost(isUpper("ID017")), kAll / 4);
}

TEST_F(TextRuns, LearningLeavesASmallTableAlone) {
  setSmallestRemembered(kAll * 2);
  learnTexts(path(), "ID");
  wait(5000);
  EXPECT_LT(costOfLearning("ID"), kAll / 4);
}

TEST_F(TextRuns, LearningDoesNotWaitForAClockOfWholeSecondsOrNone) {
  age(std::chrono::hours(1));
  const std::int64_t before = MeasuredPlatform::now;
  EXPECT_LT(costOfLearning("ID"), kAll / 4);
  EXPECT_EQ(MeasuredPlatform::now, before);
  setChanged(std::filesystem::file_time_type::clock::from_sys(std::chrono::sys_seconds()));
  EXPECT_LT(costOfLearning("ID"), kAll / 4);
  wait(5000);
  EXPECT_LT(costOfLearning("ID"), kAll / 4);
  EXPECT_EQ(MeasuredPlatform::now, before + 5000);
}

TEST_F(TextRuns, OnlyCharacterFieldsAreLearnt) {
  EXPECT_LT(costOfLearning("PLACE"), kAll / 4);
  EXPECT_LT(costOfLearning("NOWHERE"), kAll / 4);
}

TEST_F(TextRuns, LearningTellsWhatIsWrongWithATable) {
  platform::current().remove(path());
  EXPECT_THROW(learnTexts(path(), "ID"), RunTimeFailure);
}

TEST_F(TextRuns, AnotherProgramsWriteWhileLearningWaitsIsSeen) {
  machine_.onSleep = [&] { giveRowTo3(999); };
  learnTexts(path(), "ID");
  EXPECT_EQ(count(isUpper("ID003")), 51);
  machine_.onSleep = nullptr;
  writeOwn("ID005");
  machine_.onSleep = [&] {
    inAnotherProgram(
        [](DbfFile& table) { table.update(998, [&](unsigned char* b) { table.put(b, 0, Value("ID003")); }); });
  };
  learnTexts(path(), "ID");
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_EQ(count(isUpper("ID003")), 52);
}

TEST_F(TextRuns, AnotherProgramsWriteBehindLearningIsSeen) {
  learnTexts(path(), "ID");
  inAnotherProgram(
      [](DbfFile& table) { table.update(999, [&](unsigned char* b) { table.put(b, 0, Value("ID003")); }); });
  EXPECT_EQ(count(isUpper("ID003")), 51);
  EXPECT_EQ(count(isUpper("ID019")), 49);
}

}  // namespace
}  // namespace vantrelix
