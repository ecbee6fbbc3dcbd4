#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/FaultPlatform.h"
#include "platform/Platform.h"
#include "platform/failures.h"
#include "support/Processes.h"
#include "support/TempFolder.h"

using namespace vantrelix;
using namespace vantrelix::platform;
using namespace vantrelix::test;
namespace fs = std::filesystem;

TEST(Platform, TellsFilesFromFolders) {
  const TempFolder folder;
  const std::string file = folder.write("a.txt", "x");
  EXPECT_TRUE(current().fileExists(file));
  EXPECT_FALSE(current().folderExists(file));
  EXPECT_TRUE(current().folderExists(folder.path()));
  EXPECT_FALSE(current().fileExists(folder.path()));
  EXPECT_FALSE(current().state(folder.file("none")).has_value());
  EXPECT_FALSE(current().fileExists(""));
  EXPECT_FALSE(current().fileExists(file + std::string(1, '\0')));
}

TEST(Platform, RenameReplacesAndRenameNewDoesNot) {
  const TempFolder folder;
  const std::string a = folder.write("a", "A");
  const std::string b = folder.write("b", "B");
  EXPECT_EQ(failureOf([&] { current().renameNew(a, b); }), failure::fileExists);
  EXPECT_EQ(folder.read("b"), "B");
  current().rename(a, b);
  EXPECT_EQ(folder.read("b"), "A");
  EXPECT_FALSE(folder.exists("a"));
  current().renameNew(b, folder.file("c"));
  EXPECT_EQ(folder.read("c"), "A");
  EXPECT_EQ(failureOf([&] { current().rename(a, b); }), failure::fileNotFound);
  EXPECT_EQ(failureOf([&] { current().rename(folder.file("c"), folder.file("no\\d")); }), failure::pathNotFound);
}

TEST(Platform, RemovesFilesAndTellsMissingOnes) {
  const TempFolder folder;
  const std::string file = folder.write("a", "A");
  current().remove(file);
  EXPECT_FALSE(folder.exists("a"));
  EXPECT_EQ(failureOf([&] { current().remove(file); }), failure::fileNotFound);
  EXPECT_EQ(failureOf([&] { current().remove(folder.path()); }), failure::pathAccess);
}

TEST(Platform, MakesAFolderOnceAndIsContentWhereItIs) {
  const TempFolder folder;
  current().makeFolder(folder.file("sub"));
  EXPECT_TRUE(current().folderExists(folder.file("sub")));
  EXPECT_EQ(failureOf([&] { current().makeFolder(folder.file("sub")); }), 0);
  EXPECT_EQ(failureOf([&] { current().makeFolder(folder.write("file", "")); }), failure::fileExists);
  EXPECT_EQ(failureOf([&] { current().makeFolder(folder.file("no\\sub")); }), failure::pathNotFound);
  EXPECT_EQ(failureOf([&] { current().syncFolder(folder.path()); }), 0);
}

TEST(Platform, ListsTheNamesOfAFolder) {
  const TempFolder folder;
  folder.write("b.txt", "");
  folder.write("sub/a.txt", "");
  EXPECT_THAT(current().list(folder.path()), testing::UnorderedElementsAre("b.txt", "sub"));
  EXPECT_EQ(failureOf([&] { current().list(folder.file("none")); }), failure::pathNotFound);
}

TEST(FindIgnoringCase, FindsEachPartOfThePath) {
  const TempFolder folder;
  folder.write("Antennas/amsz0001.dbf", "x");
  EXPECT_EQ(current().findIgnoringCase(folder.file("ANTENNAS\\AMSZ0001.DBF")), folder.file("Antennas\\amsz0001.dbf"));
  EXPECT_EQ(current().findIgnoringCase(folder.file("antennas\\none.dbf")), folder.file("antennas\\none.dbf"));
  EXPECT_EQ(current().findIgnoringCase(folder.file("ANTENNAS\\")), folder.file("Antennas\\"));
  EXPECT_EQ(current().findIgnoringCase(""), "");
}

TEST(FindIgnoringCase, ThePathAsGivenComesFirst) {
  const TempFolder folder;
  folder.write("a.ini", "");
  folder.write("A.INI", "");
  EXPECT_EQ(current().findIgnoringCase(folder.file("A.INI")), folder.file("A.INI"));
  EXPECT_EQ(current().findIgnoringCase(folder.file("A.ini")), folder.file("A.INI"));
}

TEST(FindIgnoringCase, AFolderThatLeadsNowhereDoesNotHideAnother) {
  const TempFolder folder;
  folder.write("DATA/other", "");
  folder.write("data/wanted.dbf", "");
  EXPECT_EQ(current().findIgnoringCase(folder.file("DATA\\WANTED.DBF")), folder.file("data\\wanted.dbf"));
}

TEST(FindIgnoringCase, PassesThroughAFolderThatCannotBeListed) {
  const TempFolder folder;
  folder.write("sub/Names.ini", "");
  ::chmod(folder.machine().c_str(), 0711);
  EXPECT_EQ(runWithoutPrivilege([&] {
              return current().findIgnoringCase(folder.file("sub\\NAMES.INI")) == folder.file("sub\\Names.ini") &&
                     current().findIgnoringCase(folder.file("SUB\\NAMES.INI")) == folder.file("SUB\\NAMES.INI");
            }),
            0);
}

TEST(FindIgnoringCase, FoldsAccentedLetters) {
  const TempFolder folder;
  folder.write("ANT\xC3\x89NNES.DBF", "");
  EXPECT_EQ(current().findIgnoringCase(folder.file("ant\xC3\xA9nnes.dbf")), folder.file("ANT\xC3\x89NNES.DBF"));
  EXPECT_EQ(current().findIgnoringCase(folder.file("ant\xC3\xA8nnes.dbf")), folder.file("ant\xC3\xA8nnes.dbf"));
  folder.write("2\xC3\x97.DBF", "");  // the multiplication sign is no upper case of the division sign
  EXPECT_EQ(current().findIgnoringCase(folder.file("2\xC3\xB7.dbf")), folder.file("2\xC3\xB7.dbf"));
}

TEST(FindIgnoringCase, DotsInThePathAreKept) {
  const TempFolder folder;
  folder.write("sub/x", "");
  folder.write("names.ini", "");
  EXPECT_EQ(current().findIgnoringCase(folder.file("SUB\\..\\.\\NAMES.INI")), folder.file("sub\\..\\.\\names.ini"));
}

TEST(FindIgnoringCase, ARootIsFound) {
  EXPECT_EQ(current().findIgnoringCase("\\"), "\\");
  EXPECT_EQ(current().findIgnoringCase("//"), "//");
}

TEST(Names, TurnBetweenTheTwoForms) {
  EXPECT_EQ(current().toMachine("\\home\\x/A b"), "/home/x/A b");
  EXPECT_EQ(current().fromMachine("/home/x\\A b"), "\\home\\x\\A b");
  EXPECT_EQ(current().absolute("/a/./b//c/../d"), "\\a\\b\\d");
  EXPECT_EQ(current().absolute("x.ini"), current().currentFolder() + "\\x.ini");
  EXPECT_TRUE(current().fileExists(current().programPath()));
  EXPECT_EQ(current().programPath().find('/'), std::string::npos);
  EXPECT_FALSE(current().shortName("\\a").has_value());
  EXPECT_FALSE(current().registryValue(0, "SOFTWARE", 250).has_value());
}

TEST(Names, TheRootAsCurrentFolderHasNoTrailingBackslash) {
  EXPECT_EQ(exitCode(startChild([] { return ::chdir("/") == 0 && current().currentFolder().empty(); })), 0);
}

TEST(Names, DotsBehindALinkAreKeptWhereTheyLeadElsewhere) {
  const TempFolder folder;
  folder.write("real/deep/x", "");
  folder.write("real/y", "");
  fs::create_directory_symlink(folder.machine("real/deep"), folder.machine("link"));
  const std::string path = current().absolute(folder.file("link\\..\\y"));
  EXPECT_TRUE(current().fileExists(path)) << path;
}

TEST(Environment, GivesVariablesTimeAndProcess) {
  ::setenv("VANTRELIX_TEST_VARIABLE", "value", 1);
  EXPECT_EQ(current().environment("VANTRELIX_TEST_VARIABLE"), "value");
  ::unsetenv("VANTRELIX_TEST_VARIABLE");
  EXPECT_FALSE(current().environment("VANTRELIX_TEST_VARIABLE").has_value());
  EXPECT_EQ(current().processId(), static_cast<int>(::getpid()));
  const auto before = current().steadyMilliseconds();
  current().sleepMilliseconds(3);
  EXPECT_GE(current().steadyMilliseconds() - before, 2);
}

TEST(Environment, TheTimeIsLocal) {
  const auto hourIn = [](const char* zone) {
    ::setenv("TZ", zone, 1);
    return current().now();
  };
  // More than a day apart: the date is another one at any hour.
  const DateTime east = hourIn("XXX-14");
  const DateTime west = hourIn("XXX+12");
  ::unsetenv("TZ");
  EXPECT_NE(east.day, west.day);
  EXPECT_GE(east.year, 2024);
}

TEST(Environment, RegionalCharactersComeFromTheEnvironmentAndLeaveTheProcessAlone) {
  const std::string locale = std::setlocale(LC_ALL, nullptr);
  ::setenv("LC_ALL", "C", 1);
  EXPECT_EQ(current().regional().decimalCharacter, ".");
  EXPECT_EQ(current().regional().digitSeparator, ",");
  EXPECT_EQ(current().regional().shortDate, "M/d/yyyy");
  EXPECT_EQ(current().regional().longTime, "h:mm:ss tt");
  ::setenv("LC_ALL", "no_SUCH.locale", 1);
  EXPECT_EQ(current().regional().decimalCharacter, ".");
  ::unsetenv("LC_ALL");
  EXPECT_EQ(std::setlocale(LC_ALL, nullptr), locale);
}

TEST(MultiByte, ConvertsBothWaysAndMarksWhatItCannot) {
  if (!current().decodeMultiByte(936, "A")) GTEST_SKIP() << "the system has no tables";
  EXPECT_EQ(current().decodeMultiByte(936, "A\xD6\xD0"), "A\xE4\xB8\xAD");
  EXPECT_EQ(current().encodeMultiByte(936, "A\xE4\xB8\xAD"), "A\xD6\xD0");
  EXPECT_EQ(current().decodeMultiByte(932, "\x93\xFA"), "\xE6\x97\xA5");
  EXPECT_EQ(current().encodeMultiByte(949, "\xED\x95\x9C!"), "\xC7\xD1!");
  EXPECT_EQ(current().encodeMultiByte(950, "a\xF0\x9F\x98\x80z"), "a?z");
  EXPECT_EQ(current().decodeMultiByte(936, "a\xFFz"), "a\xEF\xBF\xBDz");
  EXPECT_EQ(current().decodeMultiByte(936, std::string(5000, 'x')), std::string(5000, 'x'));
  EXPECT_FALSE(current().decodeMultiByte(1252, "A").has_value());
}

TEST(RunProgram, StartsItWithItsArgumentsAndLeavesNoZombie) {
  const TempFolder folder;
  current().runProgram(
      "sh", {"-c", "printf '%s' \"$1\" > \"$0.part\" && mv \"$0.part\" \"$0\"", folder.machine("out"), "two words"});
  for (int turn = 0; turn < 500 && !folder.exists("out"); ++turn) current().sleepMilliseconds(10);
  EXPECT_EQ(folder.read("out"), "two words");
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);  // no child of ours, living or dead
}

TEST(RunProgram, AProgramThatIsNotThereIsTold) {
  const TempFolder folder;
  EXPECT_EQ(failureOf([&] { current().runProgram(folder.file("none"), {}); }), failure::fileNotFound);
  EXPECT_EQ(failureOf([&] { current().runProgram(folder.write("plain", "x"), {}); }), failure::permissionDenied);
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
}

TEST(Substitutes, StandInForTheirLifetimeAlone) {
  FaultPlatform outer(operatingSystem());
  FaultPlatform inner(outer);
  {
    const Substitute first(outer);
    {
      const Substitute second(inner);
      EXPECT_EQ(&current(), &inner);
    }
    EXPECT_EQ(&current(), &outer);
  }
  EXPECT_EQ(&current(), &operatingSystem());
}
