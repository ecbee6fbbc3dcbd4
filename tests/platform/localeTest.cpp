// The regional settings that follow from locales of the system, each made from its source for the test.
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>

#include "platform/Platform.h"
#include "support/Processes.h"
#include "support/TempFolder.h"

using namespace vantrelix;
using namespace vantrelix::platform;
using namespace vantrelix::test;

namespace {

struct LocaleCase {
  const char* source;
  const char* charmap;
  Regional regional;
};

const LocaleCase kLocales[] = {
    {"de_DE", "UTF-8", {",", ".", "dd.MM.yyyy", "HH:mm:ss"}},
    {"en_US", "UTF-8", {".", ",", "MM/dd/yyyy", "hh:mm:ss tt"}},
    // A day and a month that are not padded.
    {"cs_CZ", "UTF-8", {",", "\u202F", "d.M.yyyy", "HH:mm:ss"}},
    // A separator of one byte.
    {"fr_FR", "ISO-8859-1", {",", "\u00A0", "dd/MM/yyyy", "HH:mm:ss"}},
    // No separator of its own, and a day padded with a blank.
    {"bg_BG", "UTF-8", {",", ".", "d.MM.yyyy", "H:mm:ss"}},
    // A date with the name of the month.
    {"ar_AE", "UTF-8", {".", ",", "M/d/yyyy", "h:mm:ss tt"}},
};

class Locales : public testing::TestWithParam<LocaleCase> {};

bool isExpected(const Regional& found, const Regional& expected) {
  const auto text = [](const Regional& r) {
    return r.decimalCharacter + "|" + r.digitSeparator + "|" + r.shortDate + "|" + r.longTime;
  };
  if (text(found) == text(expected)) return true;
  std::cerr << text(found) << " instead of " << text(expected) << "\n";
  return false;
}

}  // namespace

TEST_P(Locales, GiveTheirCharactersAndDates) {
  const LocaleCase& locale = GetParam();
  const TempFolder folder;
  const std::string make = std::string("localedef -i ") + locale.source + " -f " + locale.charmap + " " +
                           folder.machine(locale.source) + " 2>/dev/null";
  if (std::system(make.c_str()) != 0) GTEST_SKIP() << "no source of the locale";
  // In a process of its own, as the C library keeps what it allocates for LOCPATH.
  EXPECT_EQ(exitCode(startChild([&] {
              ::setenv("LC_ALL", "C", 1);
              const bool plain = isExpected(current().regional(), Regional());
              ::setenv("LOCPATH", folder.machine().c_str(), 1);
              ::setenv("LC_ALL", locale.source, 1);
              return isExpected(current().regional(), locale.regional) && plain;
            })),
            0);
}
INSTANTIATE_TEST_SUITE_P(Regional, Locales, testing::ValuesIn(kLocales),
                         [](const auto& locale) { return std::string(locale.param.source); });
