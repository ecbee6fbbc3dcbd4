// Texts of a table that are learnt before the first question.
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>

#include "platform/RunTimeFailure.h"
#include "tables/CutsTable.h"

namespace vantrelix {
namespace {

using test::MeasuredPlatform;
using TextRuns = test::CutsTable;  // of files that another machine gives their times

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
  machine_.onSleep = [&] { putIdInAnotherProgram(998, "ID003"); };
  learnTexts(path(), "ID");
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_EQ(count(isUpper("ID003")), 52);
}

TEST_F(TextRuns, AnotherProgramsWriteBehindLearningIsSeen) {
  learnTexts(path(), "ID");
  putIdInAnotherProgram(999, "ID003");
  EXPECT_EQ(count(isUpper("ID003")), 51);
  EXPECT_EQ(count(isUpper("ID019")), 49);
}

}  // namespace
}  // namespace vantrelix
