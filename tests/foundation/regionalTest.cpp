#include <gtest/gtest.h>

#include "foundation/RegionalScope.h"
#include "foundation/SettingsPlatform.h"
#include "foundation/getINI.h"
#include "foundation/regional.h"
#include "foundation/suitePaths.h"
#include "support/TempSuite.h"

namespace vantrelix {
namespace {

// An installation folder under the regional settings of the test's own.
class Regional : public testing::Test {
 protected:
  std::string stored(const char* key) { return getINIStr("CONFIG", key, "none"); }
  void store(const std::string& decimal, const std::string& separator) {
    setINI("CONFIG", "Last Decimal", getDefaultsINI(), decimal);
    setINI("CONFIG", "Last Dig Sep", getDefaultsINI(), separator);
  }

  test::SettingsPlatform settings;
  platform::Substitute substitute{settings};
  test::RegionalScope scope;
  test::TempSuite suite;
};

constexpr const char* kWarning =
    "WARNING:  The Regional Settings for Decimal character and Digit Separator character have been changed.\r\n\r\n"
    "Decimal was '.' but now is ','\r\nDigit Separator was ',' but now is '.'\r\n\r\n"
    "Some settings in your QVDEFAULTS.INI file using the old settings may cause errors.\r\n\r\n"
    "Use the Configuration menu to Purge the configuration file to remove old settings.";

TEST_F(Regional, TheFirstRunKeepsTheCharactersSilently) {
  settings.characters = {",", "."};
  GetRegional(true);
  EXPECT_EQ(regionalCharacters().decimalCharacter, ",");
  EXPECT_EQ(regionalCharacters().digitSeparator, ".");
  EXPECT_EQ(stored("Last Decimal"), ",");
  EXPECT_EQ(stored("Last Dig Sep"), ".");
  EXPECT_TRUE(suite.messages.empty());
}

TEST_F(Regional, AChangeIsToldAndLoggedAndTheOldCharactersStay) {
  store(".", ",");
  settings.characters = {",", "."};
  GetRegional(true);
  ASSERT_EQ(suite.messages.size(), 1U);
  EXPECT_EQ(suite.messages[0].title, "Regional Settings Changed");
  EXPECT_EQ(suite.messages[0].text, kWarning);
  EXPECT_NE(suite.log().find(std::string("11/21/2026 4:02:48 PM:  ") + kWarning + "  (testhost 1.2.3)"),
            std::string::npos);
  EXPECT_EQ(stored("Last Decimal"), ".");
  EXPECT_EQ(regionalCharacters().decimalCharacter, ",");
}

TEST_F(Regional, TheWarningComesAgainUntilTheFileIsPurged) {
  store(".", ",");
  settings.characters = {",", "."};
  GetRegional(true);
  GetRegional(true);
  EXPECT_EQ(suite.messages.size(), 2U);
  store("", "");
  GetRegional(true);
  EXPECT_EQ(suite.messages.size(), 2U);
  EXPECT_EQ(stored("Last Decimal"), ",");
}

TEST_F(Regional, OnlyTheCharacterThatChangedIsNamed) {
  store(".", "'");
  settings.characters = {".", ","};
  GetRegional(true);
  ASSERT_EQ(suite.messages.size(), 1U);
  EXPECT_NE(suite.messages[0].text.find("changed.\r\n\r\nDigit Separator was ''' but now is ','\r\n\r\nSome"),
            std::string::npos);
}

TEST_F(Regional, WithoutWarningAChangeIsWrittenSilently) {
  store(".", ",");
  settings.characters = {",", "."};
  GetRegional(false);
  EXPECT_TRUE(suite.messages.empty());
  EXPECT_EQ(suite.log(), "");
  EXPECT_EQ(stored("Last Decimal"), ",");
  EXPECT_EQ(stored("Last Dig Sep"), ".");
}

TEST_F(Regional, CharactersAreCutAtTheirNulAndTrimmed) {
  settings.characters = {std::string(" ,\0x", 4), std::string(" ")};
  GetRegional(false);
  EXPECT_EQ(regionalCharacters().decimalCharacter, ",");
  EXPECT_EQ(regionalCharacters().digitSeparator, "");
  settings.characters = {"", ""};
  GetRegional(false);
  EXPECT_EQ(regionalCharacters().decimalCharacter, ".");
}

TEST_F(Regional, TheMessageNamesThePerUserFile) {
  setUserLogin("ann");
  store(";", ",");
  GetRegional(true);
  ASSERT_EQ(suite.messages.size(), 1U);
  EXPECT_NE(suite.messages[0].text.find("Some settings in your QVDEFAULTS_ann.INI file"), std::string::npos);
}

}  // namespace
}  // namespace vantrelix
