// Tables of a kind of the dictionary, opened, and made or mended before where that is needed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/text.h"
#include "tables/Recordset.h"
#include "tables/dictionaryTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using test::DictionarySuite;
using ::testing::HasSubstr;

constexpr const char* kAms = "AMSPDBASE";

TEST(MakeDataSmTableFile, AMissingTableIsMadeAndOpened) {
  DictionarySuite suite;
  const RecordsetPtr cursor = MakeDataSmTableFile(suite.file("AVDTEST1.DBF"), "AVDTADBASE");
  ASSERT_TRUE(cursor);
  EXPECT_TRUE(cursor->Eof());
  EXPECT_EQ(cursor->Fields("VERT_FIELD").Size(), 12);
  EXPECT_EQ(cursor->Fields("VERT_FIELD").decimals(), 4);
}

TEST(MakeDataSmTableFile, AnOldTableIsMendedAndOpenedOnItsFirstRow) {
  DictionarySuite suite;
  const RecordsetPtr cursor = MakeDataSmTableFile(test::oldMaster(suite.folder()), kAms);
  ASSERT_TRUE(cursor);
  EXPECT_EQ(trim(cursor->value("ANTENNA").asText()), "First");
  EXPECT_TRUE(cursor->value("POWER_UN").isNull());
  cursor->MoveLast();
  EXPECT_EQ(cursor->RecordCount(), 2);
}

TEST(MakeDataSmTableFile, AFailureIsToldWithTheSupportAddressAndLogged) {
  DictionarySuite suite;
  suite.folder().write("QVZOR32.INI", "[CONFIG]\r\nSupportAddress=help@example.org\r\n");
  const std::string path = suite.folder().write("AMSTEST1.DBF", std::string(500, 'x'));
  EXPECT_FALSE(MakeDataSmTableFile(path, kAms));
  ASSERT_EQ(suite.messages.size(), 2u);
  EXPECT_EQ(suite.messages[1].title, "Database Error");
  const std::string start = suite.folder().machine("AMSTEST1.DBF") +
                            "\r\nRSTblValid Error opening database:\r\nMakeDataSmTableFile Open Error: Error 3343: ";
  EXPECT_EQ(suite.messages[1].text.rfind(start, 0), 0u);
  EXPECT_THAT(suite.messages[1].text,
              HasSubstr("\r\nAMSPDBASE\r\n[AMSTEST1]\r\nPlease send the QVTECSUP.TXT file, along with a description of "
                        "what you were trying to do when this error happened, to:\r\n\r\nhelp@example.org"));
  EXPECT_THAT(suite.log(), HasSubstr(start));
}

TEST(MakeDataSmTableFile, AnUnknownTypeGivesNothingAndTouchesNoTable) {
  DictionarySuite suite;
  const std::string path = test::oldMaster(suite.folder());
  const std::string before = suite.folder().read("AMSTEST1.DBF");
  EXPECT_FALSE(MakeDataSmTableFile(path, "NOSUCHTYPE"));
  EXPECT_FALSE(MakeDataSmTableFile(suite.file("AMSTEST2.DBF"), "NOSUCHTYPE"));
  EXPECT_EQ(suite.folder().read("AMSTEST1.DBF"), before);
  EXPECT_FALSE(suite.folder().exists("AMSTEST2.DBF"));
  EXPECT_THAT(suite.log(), HasSubstr("MakeDataSmTableFile Open Error: Error creating file"));
}

}  // namespace
}  // namespace vantrelix
