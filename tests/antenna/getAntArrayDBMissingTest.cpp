// Libraries that are not there or cannot be opened: what is told, and at which step.
#include "AntennaSuite.h"
#include "antenna/getAntArrayDB.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix::test {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

class GetAntArrayDBMissing : public AntennaSuite {
 protected:
  GetAntArrayDBMissing() { add(3, "dBd", {3, 2}, {3}); }

  // One message, that no such library was found in the folder as it was named; and nothing in the log.
  void expectNotFound(const std::string& path, const std::string& library) {
    suite.messages.clear();
    const Reading r = read(kFirstId, "dBi", false, library, path);
    EXPECT_EQ(r.ErrorText, "The specified antenna data base was not found:\r\n" +
                               displayPath(setPathName(path, trim(library) + ".DBF")));
    ASSERT_EQ(suite.messages.size(), 1U) << path << ' ' << library;
    EXPECT_EQ(suite.messages[0].title, "Antenna Data Base Error 2");
    EXPECT_EQ(suite.messages[0].text, r.ErrorText + "\r\n\r\nThe antenna specified for this task will not be used.");
    EXPECT_DOUBLE_EQ(r.Gain, 2.15);
    EXPECT_EQ(r.nHor, 0);
    EXPECT_THAT(suite.log(), IsEmpty());
  }

  // A failure of the opening of the master table, told as such.
  void expectFailure(const std::string& library, const std::string& error) {
    suite.messages.clear();
    const Reading r = read(kFirstId, "dBi", true, library);
    EXPECT_EQ(r.ErrorText, "");
    ASSERT_EQ(suite.messages.size(), 1U) << library;
    EXPECT_THAT(suite.messages[0].text, HasSubstr("Error " + error + ":"));
    EXPECT_THAT(suite.log(), HasSubstr("Flag 1500"));
  }
};

TEST_F(GetAntArrayDBMissing, ALibraryIsTold) {
  expectNotFound(folder(), "AMSGONE1");
  expectNotFound(folder() + "\\", "AMSGONE1");
  expectNotFound(folder(), " AMS GONE ");
  expectNotFound(folder(), "AMS[1]");
}

TEST_F(GetAntArrayDBMissing, AFolderIsTold) {
  expectNotFound(setPathName(folder(), "GONE"), kLibrary);
  expectNotFound(setPathName(folder(), "GONE\\TOO"), kLibrary);
}

TEST_F(GetAntArrayDBMissing, AFileAtTheEndOfThePathIsTold) {
  expectNotFound(setPathName(folder(), "GONE.DBF"), kLibrary);
  expectNotFound(setPathName(folder(), "AMST0001.DBF"), "AMSGONE1");
}

TEST_F(GetAntArrayDBMissing, ALibraryOfAnotherFolderIsTold) {
  expectNotFound(folder(), std::string("GONE\\") + kLibrary);
  expectNotFound(folder(), std::string("GONE/") + kLibrary);
}

TEST_F(GetAntArrayDBMissing, AFolderInThePlaceOfTheTableIsTold) {
  platform::current().makeFolder(setPathName(folder(), "AMSDIR01.DBF"));
  expectNotFound(folder(), "AMSDIR01");
}

TEST_F(GetAntArrayDBMissing, AFileThatIsNoTableFailsAtItsOpening) {
  suite.folder().write("ANTENNAS/AMSBAD01.DBF", "a letter, not a table");
  expectFailure("AMSBAD01", "3343");
  expectFailure("amsbad01", "3343");
}

TEST_F(GetAntArrayDBMissing, ATableThatAnotherHasAloneFailsAtItsOpening) {
  const auto alone = DbfFile::open(setPathName(folder(), "AMST0001.DBF"), false, Sharing::exclusive);
  expectFailure(kLibrary, "3051");
}

TEST_F(GetAntArrayDBMissing, LibrariesAreFoundByEveryNameOfTheirFolder) {
  const std::string name = kLibrary;
  for (const std::string& path : {folder(), folder() + "\\", setPathName(folder(), "AMST0001.DBF")}) {
    for (const std::string& library : {name, name + " ", std::string("amst0001")}) {
      EXPECT_EQ(read(kFirstId, "", false, library, path).nHor, 2) << path << ' ' << library;
    }
  }
  EXPECT_THAT(suite.messages, IsEmpty());
}

}  // namespace

}  // namespace vantrelix::test
