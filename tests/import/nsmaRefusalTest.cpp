// What the NSMA reader asks and why it refuses a file.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "NsmaSource.h"
#include "foundation/getINI.h"
#include "foundation/suitePaths.h"
#include "support/TempFolder.h"

namespace vantrelix::test {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

using NsmaRefusal = Nsma;

constexpr const char* kRevisionText =
    "The Revision Number information for this file does not indicate this is an NSMA WG16.99.050 compatible "
    "file:\r\nOTHER 804-B\r\n\r\nDo you want to try to import the antenna anyway?";

TEST_F(NsmaRefusal, AnotherRevisionIsImportedWhereTheUserWantsIt) {
  suite.answers = {MsgAnswer::yes};
  EXPECT_THAT(read(onePoint("REVNUM:,OTHER 804-B\n", "1")), SizeIs(1));
  EXPECT_EQ(flag, 0);
  const Message question = onlyMessage();
  EXPECT_EQ(question.title, "File Compatibility Warning");
  EXPECT_EQ(question.text, kRevisionText);
  EXPECT_EQ(question.buttons, MsgButtons::yesNo);
  EXPECT_EQ(question.defaultButton, 2);
}

TEST_F(NsmaRefusal, AnotherRevisionIsRefusedByDefaultAndToldOnceMore) {
  EXPECT_THAT(read(onePoint("REVNUM:,OTHER 804-B\n", "1")), IsEmpty());
  EXPECT_EQ(flag, 1);
  ASSERT_THAT(suite.messages, SizeIs(2));
  EXPECT_EQ(suite.messages[1].title, "");
  EXPECT_EQ(suite.messages[1].text, kRevisionText);
  EXPECT_EQ(suite.messages[1].buttons, MsgButtons::ok);
  EXPECT_EQ(suite.messages[1].icon, MsgIcon::information);
}

TEST_F(NsmaRefusal, MissingPatternUnitsAreAskedFor) {
  suite.answers = {MsgAnswer::yes};
  EXPECT_EQ(readOne(onePoint("GUNITS:,dbi/\nMDGAIN:,10\n", "3")).HorValue, std::vector<double>{3});
  const Message question = onlyMessage();
  EXPECT_EQ(question.title, "No Pattern Units in File");
  EXPECT_EQ(question.buttons, MsgButtons::yesNo);
  EXPECT_EQ(question.icon, MsgIcon::information);
  EXPECT_EQ(question.text,
            "This file does not contain the units specification for the pattern values.\r\n/files/dish.adf\r\n\r\n"
            "The unit setting for the antenna gain is DBI\r\n\r\nDo you want to use DBI for the pattern values?"
            "\r\n\r\nClick Yes to continue using DBI\r\nClick No to skip this antenna.");
}

TEST_F(NsmaRefusal, MissingPatternUnitsThatAreNotWantedRefuseTheFile) {
  suite.answers = {MsgAnswer::no};
  EXPECT_THAT(read(onePoint("GUNITS:,DBI, \n", "3")), IsEmpty());
  EXPECT_EQ(flag, 1);
  ASSERT_THAT(suite.messages, SizeIs(2));
  EXPECT_EQ(suite.messages[1].title, "Invalid Gain Units");
  EXPECT_EQ(suite.messages[1].text, "Blank pattern gain units for antenna");
}

TEST_F(NsmaRefusal, AUnitsLineWithoutASeparatorLeavesBothUnitsBlank) {
  for (const char* value : {"DBI", "", "/", " , "}) {
    suite.messages.clear();
    EXPECT_THAT(read(onePoint(std::string("GUNITS:,") + value + "\n", "3")), IsEmpty());
    EXPECT_EQ(flag, 1);
    EXPECT_EQ(onlyMessage().title, "Invalid Gain Units") << value;
    EXPECT_EQ(onlyMessage().icon, MsgIcon::information);
    EXPECT_EQ(onlyMessage().text, "Blank gain units for antenna\r\nBlank pattern gain units for antenna") << value;
  }
}

TEST_F(NsmaRefusal, MissingGainUnitsAloneRefuseTheFileUnasked) {
  EXPECT_THAT(read(onePoint("GUNITS:,/DBR\n", "3")), IsEmpty());
  EXPECT_EQ(onlyMessage().text, "Blank gain units for antenna");
}

TEST_F(NsmaRefusal, AFileOfSeveralFrequenciesIsRefused) {
  ASSERT_TRUE(setINI("CONFIG", "SupportAddress", getSuiteINI(), "help@example.com"));
  EXPECT_THAT(read(onePoint("NOFREQ:,2\n", "3")), IsEmpty());
  EXPECT_EQ(flag, 1);
  EXPECT_EQ(onlyMessage().title, "Multi-Frequency File");
  EXPECT_EQ(onlyMessage().text,
            "This file contains pattern information for mulitple frequencies.\r\n\r\nThis feature is not currently "
            "supported in this import function.\r\n\r\nPlease contact help@example.com\r\n\r\nYou can attach this "
            "import file to your email for help importing the data:\r\n/files/dish.adf");
}

TEST_F(NsmaRefusal, EveryOtherNumberOfFrequenciesIsRefusedToo) {
  for (const char* count : {"na", "NA ", " NA", "0", "", "-1", "1.5", "one"}) {
    suite.messages.clear();
    EXPECT_THAT(read(onePoint(std::string("NOFREQ:,") + count + "\n", "3")), IsEmpty()) << count;
    EXPECT_EQ(onlyMessage().title, "Multi-Frequency File") << count;
  }
}

TEST_F(NsmaRefusal, ACutMustBeFollowedByItsPolarisation) {
  EXPECT_THAT(read("PATCUT:,AZ\nnupoin:,1\nPOLARI:,H/H\n0,0\nENDFIL:,\n"), IsEmpty());
  EXPECT_EQ(flag, 1);
  EXPECT_EQ(onlyMessage().title, "");
  EXPECT_EQ(onlyMessage().text, "Unexpected keyword\r\nExpected 'POLARI'\r\nFound 'NUPOIN'");
}

TEST_F(NsmaRefusal, APolarisationMustBeFollowedByTheNumberOfPoints) {
  EXPECT_THAT(read("PATCUT:,AZ\nPOLARI:,H/H\nFSTLST:,-180,180\nNUPOIN:,1\n0,0\nENDFIL:,\n"), IsEmpty());
  EXPECT_EQ(flag, 1);
  EXPECT_EQ(onlyMessage().text, "Unexpected keyword\r\nExpected 'NUPOIN'\r\nFound 'FSTLST'");
}

TEST_F(NsmaRefusal, TheFirstRefusalEndsTheReading) {
  EXPECT_THAT(read(onePoint("NOFREQ:,2\nGUNITS:,DBI\n", "1")), IsEmpty());
  EXPECT_EQ(onlyMessage().title, "Multi-Frequency File");
}

TEST_F(NsmaRefusal, AFileWithoutItsEndIsAFailure) {
  const std::string whole = onePoint("ANTMAN:,A\n", "1");
  const std::size_t end = whole.find("ENDFIL");
  for (const std::string& text :
       {std::string(), std::string("ANTMAN:,A"), whole.substr(0, end), whole.substr(0, end - 2),
        std::string("PATCUT:,AZ\n"), std::string("PATCUT:,AZ\nPOLARI:,H/H\n"),
        std::string("PATCUT:,AZ\nPOLARI:,H/H\nNUPOIN:,3\n1,1\n")}) {
    suite.messages.clear();
    EXPECT_THAT(read(text), IsEmpty()) << text;
    EXPECT_EQ(flag, -1) << text;
    EXPECT_EQ(onlyMessage().title, "Error on Antenna Import");
    EXPECT_EQ(onlyMessage().icon, MsgIcon::information);
    EXPECT_THAT(onlyMessage().text, StartsWith("Error 62: Input past end of file")) << text;
  }
}

TEST_F(NsmaRefusal, AFileCutAnywhereBeforeItsEndStoresNothing) {
  const std::string whole = "REVNUM:,NSMA\nGUNITS:,DBI/DBR\nNOFREQ:,1\n" + cut("AZ", "H/H", "0,0\n9,-1\n", "2") +
                            cut("EL", "V/V", "0,0\n", "1") + "ENDFIL";
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THAT(read(whole.substr(0, length)), IsEmpty()) << length;
    EXPECT_NE(flag, 0) << length;
  }
  EXPECT_THAT(read(whole), SizeIs(2));
}

TEST_F(NsmaRefusal, ANumberOfPointsThatIsNoIntegerIsAFailure) {
  const auto reason = [this](const std::string& count) {
    suite.messages.clear();
    EXPECT_THAT(read(cut("AZ", "H/H", "0,0\n", count) + "ENDFIL:,\n"), IsEmpty()) << count;
    EXPECT_EQ(flag, -1) << count;
    return onlyMessage().text;
  };
  EXPECT_EQ(reason("three"), "Error 13: Type mismatch: 'three' is not a number");
  EXPECT_THAT(reason(""), StartsWith("Error 13: "));
  EXPECT_THAT(reason("3 points"), StartsWith("Error 13: "));
  EXPECT_THAT(reason("32768"), StartsWith("Error 6: "));
  EXPECT_THAT(reason("1E400"), StartsWith("Error 6: "));
}

TEST_F(NsmaRefusal, AValueOutOfRangeIsAFailureBehindTheAntennaWrittenBefore) {
  const std::vector<ImportedAntenna> antennas =
      read("GUNITS:,DBI/DBR\nMDGAIN:,1.7E308\n" + cut("AZ", "H/H", "0,-1E308\n", "1") +
           cut("EL", "V/V", "0,1.7E308\n", "1") + "ENDFIL:,\n");
  EXPECT_THAT(antennas, SizeIs(1));
  EXPECT_EQ(flag, -1);
  EXPECT_THAT(onlyMessage().text, StartsWith("Error 6: Overflow"));
}

class FailingSource : public NsmaSource {
 public:
  using NsmaSource::NsmaSource;
  Stored store(const ImportedAntenna&) override { throw std::length_error("too long"); }
};

TEST_F(NsmaRefusal, AFailureOfAnotherKindIsToldToo) {
  FailingSource source(onePoint("", "1"));
  ImportedAntenna antenna;
  readNsma(source, antenna);
  EXPECT_EQ(antenna.ErrFlag, -1);
  EXPECT_EQ(onlyMessage().text, "Error 51: too long");
}

TEST_F(NsmaRefusal, ALineOfManyMegabytesIsReadAndNotShownWhole) {
  const std::string huge(8 << 20, 'x');
  EXPECT_THAT(read("REVNUM:," + huge + "\n"), IsEmpty());
  EXPECT_THAT(read("PATCUT:,AZ\n" + huge), IsEmpty());
  suite.answers = {MsgAnswer::no, MsgAnswer::ok};
  EXPECT_THAT(read("GUNITS:," + huge + "/"), IsEmpty());
  ASSERT_THAT(suite.messages, SizeIs(5));
  for (const Message& message : suite.messages) EXPECT_LT(message.text.size(), 1000u) << message.title;
  EXPECT_THAT(suite.messages[2].text, HasSubstr("Found 'XXX"));
  EXPECT_EQ(readOne("ANTMAN:," + huge + "\n" + onePoint("", "1" + huge)).AntName.size(), huge.size() + 6);
}

TEST_F(NsmaRefusal, DamagedSamplesStoreNothingOrWholeAntennas) {
  const std::filesystem::path folder = std::filesystem::path(VANTRELIX_SOURCE_DIR) / "tests/data/nsma";
  int damaged = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with("damaged-")) continue;
    ++damaged;
    EXPECT_THAT(read(readMachineFile(entry.path().string())), IsEmpty()) << name;
    EXPECT_NE(flag, 0) << name;
  }
  EXPECT_EQ(damaged, 12);
}

}  // namespace

}  // namespace vantrelix::test
