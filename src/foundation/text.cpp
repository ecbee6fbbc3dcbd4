#include "foundation/text.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "foundation/characters.h"
#include "foundation/dateTime.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/utf8.h"

namespace vantrelix {

namespace {

std::string_view trimmedView(std::string_view text) { return withoutOuter(text, " "); }

// Letters of code page 1252 beyond ASCII whose two cases are not 32 apart.
struct LetterPair {
  char32_t upper;
  char32_t lower;
};
constexpr LetterPair kLetterPairs[] = {{0x160, 0x161}, {0x152, 0x153}, {0x17D, 0x17E}, {0x178, 0xFF}};

constexpr char asciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }
constexpr char asciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

char32_t upperLetter(char32_t code) {
  if (code < 0x80) return static_cast<char32_t>(asciiUpper(static_cast<char>(code)));
  if (code >= 0xE0 && code <= 0xFE && code != 0xF7) return code - 32;
  for (const LetterPair& pair : kLetterPairs) {
    if (pair.lower == code) return pair.upper;
  }
  return code;
}

char32_t lowerLetter(char32_t code) {
  if (code < 0x80) return static_cast<char32_t>(asciiLower(static_cast<char>(code)));
  if (code >= 0xC0 && code <= 0xDE && code != 0xD7) return code + 32;
  for (const LetterPair& pair : kLetterPairs) {
    if (pair.upper == code) return pair.lower;
  }
  return code;
}

std::string mapLetters(std::string_view text, char32_t (*letter)(char32_t)) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Character character = utf8CharacterAt(text, at);
    if (character.valid) {
      appendUtf8(result, letter(character.code));
    } else {
      result += text[at];
    }
    at += character.length;
  }
  return result;
}

// The byte position of character `count` (from 0), or the end of the text.
std::size_t byteOfCharacter(std::string_view text, std::size_t count) {
  const std::size_t ascii = asciiPrefix(text);
  if (count <= ascii) return count;
  std::size_t at = ascii;
  for (std::size_t number = ascii; number < count && at < text.size(); ++number) at += utf8CharacterAt(text, at).length;
  return at;
}

// A value under a named format; a text that is no number has none and stays.
std::string formatted(const Value& value, std::string_view format) {
  if (value.isNull()) return "";
  if (getLenTrim(format) == 0) return value.asText();
  if (value.isDate()) return formatDate(value.date(), format);
  if (!value.isText()) return formatNumber(value.asNumber(), format);
  const std::optional<double> number = plainNumber(value.text());
  return number ? formatNumber(*number, format) : value.text();
}

// The question of CleanFileName; false where it is cancelled.
bool acceptCleanName(const std::string& name, char illegal, const std::string& soFar) {
  const std::string text = std::string("The file name contains one or more illegal characters:") + kLineBreak + name +
                           kLineBreak + "'" + illegal + "' is not allowed." + kBlankLine +
                           "The name will be changed to " + kLineBreak + soFar;
  return MsgBox({"Invalid File Name", text, MsgButtons::okCancel, MsgIcon::information, 1}) == MsgAnswer::ok;
}

}  // namespace

std::string trim(std::string_view text) { return std::string(trimmedView(text)); }

std::string trimLeft(std::string_view text) {
  return std::string(text.substr(std::min(text.find_first_not_of(' '), text.size())));
}

std::string trimRight(std::string_view text) { return std::string(text.substr(0, text.find_last_not_of(' ') + 1)); }

std::size_t getLenTrim(std::string_view text) { return characterCount(trimmedView(text)); }

std::string upperCase(std::string_view text) {
  if (!isAscii(text)) return mapLetters(text, upperLetter);
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), asciiUpper);
  return result;
}

std::string lowerCase(std::string_view text) {
  if (!isAscii(text)) return mapLetters(text, lowerLetter);
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), asciiLower);
  return result;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
  // The two cases of every letter that folds have the same number of bytes.
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (((static_cast<unsigned char>(a[i]) | static_cast<unsigned char>(b[i])) & 0x80) != 0) {
      return lowerCase(a.substr(i)) == lowerCase(b.substr(i));
    }
    if (asciiLower(a[i]) != asciiLower(b[i])) return false;
  }
  return true;
}

std::size_t characterCount(std::string_view text) {
  std::size_t at = asciiPrefix(text);
  std::size_t count = at;
  for (; at < text.size(); ++count) at += utf8CharacterAt(text, at).length;
  return count;
}

std::string leftCharacters(std::string_view text, std::size_t count) {
  return std::string(text.substr(0, byteOfCharacter(text, count)));
}

std::string midCharacters(std::string_view text, std::size_t start, std::size_t count) {
  text.remove_prefix(byteOfCharacter(text, start == 0 ? 0 : start - 1));
  return leftCharacters(text, count);
}

std::string replaceAll(std::string_view text, std::string_view what, std::string_view with) {
  if (what.empty()) return std::string(text);
  std::string result;
  std::size_t at = 0;
  for (std::size_t found; (found = text.find(what, at)) != std::string_view::npos; at = found + what.size()) {
    result.append(text, at, found - at).append(with);
  }
  return result.append(text.substr(at));
}

std::string AddALine(std::string_view text, std::string_view line, std::string_view separator, bool always) {
  if (getLenTrim(text) == 0) return std::string(line);
  if (getLenTrim(line) == 0 && !always) return std::string(text);
  return std::string(text).append(separator).append(line);
}

std::string sAWK6(std::string_view text, std::string_view delimiter, int number, std::string_view fallback) {
  if (text.empty() || number < 1) return std::string(fallback);
  for (int field = 1;; ++field) {
    const std::size_t end = delimiter.empty() ? std::string_view::npos : text.find(delimiter);
    if (field == number) return std::string(text.substr(0, end));
    if (end == std::string_view::npos) return std::string(fallback);
    text.remove_prefix(end + delimiter.size());
  }
}

int nAWK6(std::string_view text, std::string_view delimiter) {
  if (text.empty()) return 0;
  int count = 1;
  if (delimiter.empty()) return count;
  for (std::size_t at = 0; (at = text.find(delimiter, at)) != std::string_view::npos; at += delimiter.size()) ++count;
  return count;
}

std::string PadLeft(const Value& value, std::string_view format, std::size_t width, bool trimmed) {
  std::string text = formatted(value, format);
  if (trimmed) text = trim(text);
  const std::size_t length = characterCount(text);
  return length < width ? std::string(width - length, ' ') + text : text;
}

std::string CleanChars(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Character character = utf8CharacterAt(text, at);
    result += character.code < 32 || character.code >= 128 ? ' ' : static_cast<char>(character.code);
    at += character.length;
  }
  return result;
}

std::string TabOrBlank(bool tab) { return tab ? "\t" : " "; }

std::string StripBlanks(std::string_view text) {
  std::string result(text);
  std::erase(result, ' ');
  return result;
}

std::string GetIllegalChars(std::string_view further) { return std::string(further) + "$?\"/\\<>*|:.'"; }

std::string CleanFileName(const std::string& name, const std::string& replacement, bool& warn, bool& cancelled) {
  std::string result = name;
  bool first = true;
  for (const char illegal : GetIllegalChars()) {
    // The first of the list is harmless behind the first character of a name.
    const bool leadingOnly = std::exchange(first, false);
    if (leadingOnly ? !result.starts_with(illegal) : result.find(illegal) == std::string::npos) continue;
    if (leadingOnly) {
      result.replace(0, 1, replacement);
    } else {
      result = replaceAll(result, std::string_view(&illegal, 1), replacement);
    }
    if (!warn) continue;
    if (!acceptCleanName(name, illegal, result)) {
      cancelled = true;
      return "";
    }
    warn = false;
  }
  return result;
}

bool StrInArray(std::string_view text, const std::vector<std::string>& array) {
  return std::find(array.begin(), array.end(), text) != array.end();
}

}  // namespace vantrelix
