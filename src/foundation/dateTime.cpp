#include "foundation/dateTime.h"

namespace vantrelix {

namespace {

std::string padded(int number, std::size_t digits) {
  std::string text = std::to_string(number);
  return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

struct Field {
  std::string_view letters;
  std::string (*text)(const DateTime& date);
};

int hourOfTwelve(const DateTime& date) { return date.hour % 12 == 0 ? 12 : date.hour % 12; }

// Letters of dates in names. The longer of two with the same start comes first.
constexpr Field kFields[] = {
    {"HHMM", [](const DateTime& date) { return padded(date.hour, 2) + padded(date.minute, 2); }},
    {"YYYY", [](const DateTime& date) { return padded(date.year, 4); }},
    {"YY", [](const DateTime& date) { return padded(date.year % 100, 2); }},
    {"MM", [](const DateTime& date) { return padded(date.month, 2); }},
    {"DD", [](const DateTime& date) { return padded(date.day, 2); }},
    {"HH", [](const DateTime& date) { return padded(date.hour, 2); }},
    {"SS", [](const DateTime& date) { return padded(date.second, 2); }},
};

// Letters of the regional settings.
constexpr Field kRegionalFields[] = {
    {"yyyy", [](const DateTime& date) { return padded(date.year, 4); }},
    {"yy", [](const DateTime& date) { return padded(date.year % 100, 2); }},
    {"MM", [](const DateTime& date) { return padded(date.month, 2); }},
    {"M", [](const DateTime& date) { return padded(date.month, 1); }},
    {"dd", [](const DateTime& date) { return padded(date.day, 2); }},
    {"d", [](const DateTime& date) { return padded(date.day, 1); }},
    {"HH", [](const DateTime& date) { return padded(date.hour, 2); }},
    {"H", [](const DateTime& date) { return padded(date.hour, 1); }},
    {"hh", [](const DateTime& date) { return padded(hourOfTwelve(date), 2); }},
    {"h", [](const DateTime& date) { return padded(hourOfTwelve(date), 1); }},
    {"mm", [](const DateTime& date) { return padded(date.minute, 2); }},
    {"ss", [](const DateTime& date) { return padded(date.second, 2); }},
    {"tt", [](const DateTime& date) { return std::string(date.hour < 12 ? "AM" : "PM"); }},
};

template <std::size_t N>
const Field* fieldAt(const Field (&fields)[N], std::string_view format) {
  for (const Field& field : fields) {
    if (format.starts_with(field.letters)) return &field;
  }
  return nullptr;
}

template <std::size_t N>
std::string filled(const Field (&fields)[N], const DateTime& date, std::string_view format) {
  std::string result;
  while (!format.empty()) {
    const Field* field = fieldAt(fields, format);
    result += field != nullptr ? field->text(date) : std::string(1, format.front());
    format.remove_prefix(field != nullptr ? field->letters.size() : 1);
  }
  return result;
}

std::string regionalText(const DateTime& date, std::string_view letters) {
  return filled(kRegionalFields, date, letters);
}

constexpr long kSerialZero = -25569;  // 1899-12-30

bool isLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

}  // namespace

std::string formatDate(const DateTime& date, std::string_view format) { return filled(kFields, date, format); }

std::string shortDate(const DateTime& date) { return regionalText(date, platform::current().regional().shortDate); }

std::string generalDate(const DateTime& date) {
  const platform::Regional regional = platform::current().regional();
  return regionalText(date, regional.shortDate) + " " + regionalText(date, regional.longTime);
}

double serialDate(const DateTime& date) {
  const long days = daysFromCivil(date.year, date.month, date.day) - kSerialZero;
  const double fraction = (date.hour * 3600 + date.minute * 60 + date.second) / 86400.0;
  const auto whole = static_cast<double>(days);
  return days < 0 ? whole - fraction : whole + fraction;
}

// Days by eras of 400 years that begin on 1 March, the usual closed form for the Gregorian calendar.
long daysFromCivil(int year, int month, int day) {
  const long y = month <= 2 ? year - 1L : year;
  const long era = (y >= 0 ? y : y - 399) / 400;
  const long yearOfEra = y - era * 400;
  const long dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
  const long dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468;
}

void civilFromDays(long days, int& year, int& month, int& day) {
  const long shifted = days + 719468;
  const long era = (shifted >= 0 ? shifted : shifted - 146096) / 146097;
  const long dayOfEra = shifted - era * 146097;
  const long yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const long marchMonth = (5 * dayOfYear + 2) / 153;
  day = static_cast<int>(dayOfYear - (153 * marchMonth + 2) / 5 + 1);
  month = static_cast<int>(marchMonth < 10 ? marchMonth + 3 : marchMonth - 9);
  year = static_cast<int>(yearOfEra + era * 400 + (month <= 2 ? 1 : 0));
}

bool isValidDate(int year, int month, int day) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1) return false;
  return day <= kDays[month - 1] + (month == 2 && isLeapYear(year) ? 1 : 0);
}

}  // namespace vantrelix
