// Dates as text and as numbers.
#pragma once

#include <string>
#include <string_view>

#include "platform/Platform.h"

namespace vantrelix {

using platform::DateTime;

// Letters as in "YYYYMMDDHHSS": YYYY and YY the year, MM the month (minutes right behind HH), DD the day, HH hours of
// 24, SS seconds, each with two digits; any other character stands for itself.
std::string formatDate(const DateTime& date, std::string_view format);

// The general date: regional short date and long time, "11/21/2026 4:02:48 PM".
std::string generalDate(const DateTime& date);
// The regional short date, "11/21/2026".
std::string shortDate(const DateTime& date);

// Days since 1899-12-30, with the time of day as a fraction that always points away from 0.
double serialDate(const DateTime& date);

// Day count of the proleptic Gregorian calendar; 1970-01-01 is 0.
long daysFromCivil(int year, int month, int day);
void civilFromDays(long days, int& year, int& month, int& day);
bool isValidDate(int year, int month, int day);

}  // namespace vantrelix
