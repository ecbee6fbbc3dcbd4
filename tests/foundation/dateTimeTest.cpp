#include <gtest/gtest.h>

#include "foundation/SettingsPlatform.h"
#include "foundation/dateTime.h"

namespace vantrelix {
namespace {

const DateTime kAfternoon{2026, 11, 21, 16, 2, 48};

TEST(FormatDate, BackupStampsHaveYearMonthDayHourAndSecond) {
  EXPECT_EQ(formatDate(kAfternoon, "YYYYMMDDHHSS"), "202611211648");
  EXPECT_EQ(formatDate({2003, 1, 2, 3, 4, 5}, "YYYYMMDDHHSS"), "200301020305");
}

TEST(FormatDate, MMMeansMinutesRightBehindHHAndTheMonthElsewhere) {
  EXPECT_EQ(formatDate(kAfternoon, "YYYYMMDDHHMMSS"), "20261121160248");
  EXPECT_EQ(formatDate(kAfternoon, "HHMM MM"), "1602 11");
  EXPECT_EQ(formatDate(kAfternoon, "HHSSMM"), "164811");
}

TEST(FormatDate, OtherCharactersStandForThemselves) {
  EXPECT_EQ(formatDate(kAfternoon, "MM/DD/YY"), "11/21/26");
  EXPECT_EQ(formatDate(kAfternoon, "_x_"), "_x_");
  EXPECT_EQ(formatDate(kAfternoon, ""), "");
}

TEST(GeneralDate, IsShortDateAndLongTime) {
  EXPECT_EQ(generalDate(kAfternoon), "11/21/2026 4:02:48 PM");
  EXPECT_EQ(generalDate({2026, 1, 2, 0, 0, 0}), "1/2/2026 12:00:00 AM");
  EXPECT_EQ(generalDate({2026, 1, 2, 12, 5, 9}), "1/2/2026 12:05:09 PM");
  EXPECT_EQ(generalDate({2026, 1, 2, 11, 59, 59}), "1/2/2026 11:59:59 AM");
}

TEST(GeneralDate, FollowsTheRegionalLetters) {
  test::SettingsPlatform settings;
  settings.characters.shortDate = "dd.MM.yyyy";
  settings.characters.longTime = "HH:mm:ss";
  const platform::Substitute inUse(settings);
  EXPECT_EQ(generalDate({2026, 1, 2, 16, 5, 9}), "02.01.2026 16:05:09");
  EXPECT_EQ(shortDate({2026, 1, 2}), "02.01.2026");
}

TEST(SerialDate, CountsDaysFromTheEndOf1899) {
  EXPECT_EQ(serialDate(DateTime()), 0);
  EXPECT_EQ(serialDate({1900, 1, 1}), 2);
  EXPECT_EQ(serialDate({2000, 1, 1, 12, 0, 0}), 36526.5);
  EXPECT_EQ(serialDate({1899, 12, 29, 6, 0, 0}), -1.25);
}

TEST(DaysFromCivil, AndBackAreOneToOneOverEightCenturies) {
  int year = 0;
  int month = 0;
  int day = 0;
  long expected = daysFromCivil(1600, 1, 1);
  for (int y = 1600; y < 2400; ++y) {
    for (int m = 1; m <= 12; ++m) {
      for (int d = 1; isValidDate(y, m, d); ++d, ++expected) {
        ASSERT_EQ(daysFromCivil(y, m, d), expected);
        civilFromDays(expected, year, month, day);
        ASSERT_TRUE(year == y && month == m && day == d) << y << '-' << m << '-' << d;
      }
    }
  }
  EXPECT_EQ(daysFromCivil(1970, 1, 1), 0);
  EXPECT_EQ(daysFromCivil(2000, 3, 1), 11017);
}

TEST(IsValidDate, KnowsLeapYearsAndRefusesWhatNoCalendarHas) {
  EXPECT_TRUE(isValidDate(2000, 2, 29));
  EXPECT_TRUE(isValidDate(2024, 2, 29));
  EXPECT_FALSE(isValidDate(1900, 2, 29));
  EXPECT_FALSE(isValidDate(2023, 2, 29));
  EXPECT_FALSE(isValidDate(2023, 0, 1));
  EXPECT_FALSE(isValidDate(2023, 13, 1));
  EXPECT_FALSE(isValidDate(2023, 4, 31));
  EXPECT_FALSE(isValidDate(0, 1, 1));
}

}  // namespace
}  // namespace vantrelix
