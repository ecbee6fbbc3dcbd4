#include "platform/posixText.h"

#ifndef _WIN32

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <iconv.h>
#include <langinfo.h>
#include <locale.h>

namespace vantrelix::platform::posix {

namespace {

struct PageName {
  int number;
  const char* name;
};
constexpr std::array kPages{PageName{932, "CP932"}, PageName{936, "CP936"}, PageName{949, "CP949"},
                            PageName{950, "CP950"}};

const char* nameOf(int codePage) {
  for (const PageName& page : kPages) {
    if (page.number == codePage) return page.name;
  }
  return nullptr;
}

class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(::iconv_open(to, from)) {}
  ~Converter() {
    if (valid()) ::iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // iconv_open fails with a handle of all ones.
  bool valid() const { return reinterpret_cast<std::intptr_t>(handle_) != -1; }

  // Converts what it can from the front of `input` and drops that from it. True when nothing is left.
  bool advance(std::string_view& input, std::string& output) {
    std::array<char, 1024> room{};
    char* from = const_cast<char*>(input.data());
    std::size_t fromLeft = input.size();
    char* to = room.data();
    std::size_t toLeft = room.size();
    const std::size_t result = ::iconv(handle_, &from, &fromLeft, &to, &toLeft);
    refused_ = result == static_cast<std::size_t>(-1) && errno != E2BIG;
    output.append(room.data(), room.size() - toLeft);
    input.remove_prefix(input.size() - fromLeft);
    return input.empty();
  }
  // The last call stopped at something that cannot be converted, not for want of room.
  bool refused() const { return refused_; }

 private:
  iconv_t handle_;
  bool refused_ = false;
};

bool continues(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

std::size_t utf8Length(std::string_view text) {
  std::size_t length = 1;
  while (length < text.size() && length < 4 && continues(text[length])) ++length;
  return length;
}

std::size_t oneByte(std::string_view) { return 1; }

std::optional<std::string> convert(const char* to, const char* from, std::string_view input,
                                   std::string_view replacement, std::size_t (*refusedLength)(std::string_view)) {
  Converter converter(to, from);
  if (!converter.valid()) return std::nullopt;
  std::string output;
  while (!input.empty() && !converter.advance(input, output)) {
    if (!converter.refused()) continue;
    output += replacement;
    input.remove_prefix(refusedLength(input));
  }
  return output;
}

// A numeric character as UTF-8. Locales of one byte a character use a high byte for the no-break space alone.
std::string regionalCharacter(const char* text, const std::string& fallback) {
  std::string result = text == nullptr ? "" : text;
  if (result.empty()) return fallback;
  if (result.size() == 1 && static_cast<unsigned char>(result[0]) >= 0x80U) return "\xC2\xA0";
  return result;
}

struct TimeLetter {
  char conversion;
  const char* letters;
};
constexpr std::array kTimeLetters{
    TimeLetter{'m', "MM"},        TimeLetter{'d', "dd"},    TimeLetter{'e', "d"},           TimeLetter{'y', "yy"},
    TimeLetter{'Y', "yyyy"},      TimeLetter{'H', "HH"},    TimeLetter{'k', "H"},           TimeLetter{'I', "hh"},
    TimeLetter{'l', "h"},         TimeLetter{'M', "mm"},    TimeLetter{'S', "ss"},          TimeLetter{'p', "tt"},
    TimeLetter{'T', "HH:mm:ss"},  TimeLetter{'R', "HH:mm"}, TimeLetter{'r', "hh:mm:ss tt"}, TimeLetter{'D', "MM/dd/yy"},
    TimeLetter{'F', "yyyy-MM-dd"}};

// Those whose letters have a form of one letter, for a number that is not padded ("%-d").
constexpr std::string_view kShortened = "mdHI";

// A conversion text of the C library in this library's letters; blank where it holds one that has none (an era, a
// name).
std::string regionalLetters(const char* format) {
  std::string result;
  for (const char* at = format; at != nullptr && *at != 0; ++at) {
    if (*at != '%') {
      result += *at;
      continue;
    }
    ++at;
    const bool unpadded = *at == '-';
    while (*at == '-' || *at == 'O' || *at == 'E') ++at;
    const auto letter = std::find_if(kTimeLetters.begin(), kTimeLetters.end(),
                                     [at](const TimeLetter& l) { return l.conversion == *at; });
    if (letter == kTimeLetters.end()) return {};
    const bool shortened = unpadded && kShortened.find(*at) != std::string_view::npos;
    result += letter->letters + (shortened ? 1 : 0);
  }
  return result;
}

bool isPlainLocale(locale_t locale) {
  const std::string name = ::nl_langinfo_l(_NL_LOCALE_NAME(LC_TIME), locale);
  return name == "C" || name == "POSIX" || name.rfind("C.", 0) == 0;
}

// The dates of LC_TIME; those of the plain locale are no one's setting.
void readDates(Regional& regional) {
  const locale_t locale = ::newlocale(LC_TIME_MASK, "", nullptr);
  if (locale == nullptr) return;
  const std::string date = regionalLetters(::nl_langinfo_l(D_FMT, locale));
  const std::string time = regionalLetters(::nl_langinfo_l(T_FMT, locale));
  if (!isPlainLocale(locale) && !date.empty() && !time.empty()) {
    regional.shortDate = date;
    regional.longTime = time;
  }
  ::freelocale(locale);
}

// What the user's locale follows from.
std::string localeVariables() {
  std::string values;
  for (const char* name : {"LC_ALL", "LC_NUMERIC", "LC_TIME", "LANG", "LOCPATH"}) {
    const char* value = std::getenv(name);
    values.append(value == nullptr ? "" : value).push_back('\n');
  }
  return values;
}

Regional readRegional() {
  Regional regional;
  readDates(regional);
  const locale_t locale = ::newlocale(LC_NUMERIC_MASK, "", nullptr);
  if (locale == nullptr) return regional;
  regional.decimalCharacter = regionalCharacter(::nl_langinfo_l(RADIXCHAR, locale), ".");
  // A locale may do without separators; the two characters must differ all the same.
  regional.digitSeparator =
      regionalCharacter(::nl_langinfo_l(THOUSEP, locale), regional.decimalCharacter == "," ? "." : ",");
  ::freelocale(locale);
  return regional;
}

}  // namespace

// Every date shown asks for this, and looking a locale up takes a hundred times as long as filling in its letters.
Regional userRegional() {
  thread_local std::string variables;
  thread_local Regional known;
  if (std::string now = localeVariables(); now != variables) {
    known = readRegional();
    variables = std::move(now);
  }
  return known;
}

std::optional<std::string> decode(int codePage, std::string_view bytes) {
  const char* name = nameOf(codePage);
  if (name == nullptr) return std::nullopt;
  return convert("UTF-8", name, bytes, "\xEF\xBF\xBD", oneByte);
}

std::optional<std::string> encode(int codePage, std::string_view utf8) {
  const char* name = nameOf(codePage);
  if (name == nullptr) return std::nullopt;
  return convert(name, "UTF-8", utf8, "?", utf8Length);
}

}  // namespace vantrelix::platform::posix

#endif
