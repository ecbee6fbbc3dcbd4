#include <gtest/gtest.h>

#include "support/TempSuite.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

const std::string kRequest =
    "\r\n\r\nPlease email the QVTechSup.TXT file to:\r\nyour ZOR supplier along with a description of what you were "
    "trying to do when this error occurred.";

TEST(GetTblErrShort, EachCodeHasItsShortText) {
  EXPECT_EQ(GetTblErrShort(0), "");
  EXPECT_EQ(GetTblErrShort(1), "Missing file");
  EXPECT_EQ(GetTblErrShort(2), "DataSumType Error");
  EXPECT_EQ(GetTblErrShort(3), "Table in Use");
  EXPECT_EQ(GetTblErrShort(4), "DBF Header Error");
  EXPECT_EQ(GetTblErrShort(5), "Error creating file");
  EXPECT_EQ(GetTblErrShort(6), "Error creating temp file");
  EXPECT_EQ(GetTblErrShort(99), "Unknown error");
}

TEST(GetTblErrText, PlainFactsStandAlone) {
  test::TempSuite suite;
  EXPECT_EQ(GetTblErrText(0), "");
  EXPECT_EQ(GetTblErrText(1), "The file was not found.");
  EXPECT_EQ(GetTblErrText(3),
            "The specified file is opened for exclusive access by another user and is not available at this "
            "time.\r\nPlease try again later.");
  EXPECT_EQ(GetTblErrText(99), "Unknown error");
  EXPECT_EQ(GetTblErrText(7), "Unknown error");
  EXPECT_EQ(GetTblErrText(-1), "Unknown error");
}

TEST(GetTblErrText, ErrorsOfTheSystemAskForTheLog) {
  test::TempSuite suite;
  EXPECT_EQ(GetTblErrText(2), "There was an error determining the data structure for the specified file." + kRequest);
  EXPECT_EQ(GetTblErrText(4), "There was an error in the data header for the specified file." + kRequest);
  EXPECT_EQ(GetTblErrText(5), "There was an error creating the specified file." + kRequest);
  EXPECT_EQ(GetTblErrText(6), "There was an error creating a temporary file." + kRequest);
}

TEST(GetTblErrText, TheRequestNamesTheConfiguredSupportAddress) {
  test::TempSuite suite;
  suite.folder().write("QVZOR32.INI", "[CONFIG]\r\nSupportAddress=help@example.org\r\n");
  EXPECT_NE(GetTblErrText(5).find("to:\r\nhelp@example.org along with"), std::string::npos);
}

}  // namespace
}  // namespace vantrelix
