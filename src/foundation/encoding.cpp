#include "foundation/encoding.h"

#include <algorithm>

#include "foundation/codePages.h"
#include "foundation/utf8.h"
#include "platform/Platform.h"

namespace vantrelix {

namespace {

constexpr int kMultiBytePages[] = {932, 936, 949, 950};

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LittleMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigMark = "\xFE\xFF";

// The 16-bit unit at byte `at`.
char32_t utf16Unit(std::string_view bytes, std::size_t at, bool bigEndian) {
  const auto first = static_cast<unsigned char>(bytes[at]);
  const auto second = static_cast<unsigned char>(bytes[at + 1]);
  return bigEndian ? static_cast<char32_t>(first << 8 | second) : static_cast<char32_t>(second << 8 | first);
}

bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// A surrogate that stands alone becomes U+FFFD; an odd last byte is no unit and is left out.
std::string decodeUtf16(std::string_view bytes, bool bigEndian) {
  std::string result;
  result.reserve(bytes.size() / 2);
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    char32_t code = utf16Unit(bytes, at, bigEndian);
    if (isHighSurrogate(code) && at + 3 < bytes.size()) {
      const char32_t low = utf16Unit(bytes, at + 2, bigEndian);
      if (isLowSurrogate(low)) {
        code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
        at += 2;
      }
    }
    appendUtf8(result, code);
  }
  return result;
}

std::string decodeTable(std::string_view bytes, const std::uint16_t* table) {
  std::size_t at = asciiPrefix(bytes);
  if (at == bytes.size()) return std::string(bytes);
  std::string result(bytes.substr(0, at));
  result.reserve(bytes.size() * 2);
  for (; at < bytes.size(); ++at) {
    const auto byte = static_cast<unsigned char>(bytes[at]);
    appendUtf8(result, byte < 0x80 ? byte : table[byte - 0x80]);
  }
  return result;
}

char encodeCharacter(const Utf8Character& character, const std::uint16_t* table) {
  if (!character.valid) return '?';
  if (character.code < 0x80) return static_cast<char>(character.code);
  const std::uint16_t* found = std::find(table, table + 128, character.code);
  return found == table + 128 ? '?' : static_cast<char>(0x80 + (found - table));
}

std::string encodeTable(std::string_view utf8, const std::uint16_t* table) {
  std::size_t at = asciiPrefix(utf8);
  if (at == utf8.size()) return std::string(utf8);
  std::string result(utf8.substr(0, at));
  result.reserve(utf8.size());
  while (at < utf8.size()) {
    const Utf8Character character = utf8CharacterAt(utf8, at);
    result += encodeCharacter(character, table);
    at += character.length;
  }
  return result;
}

// What is left of a text whose page the system cannot serve after all.
std::string asciiOnly(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Character character = utf8CharacterAt(text, at);
    result += character.code < 0x80 ? static_cast<char>(character.code) : '?';
    at += character.length;
  }
  return result;
}

}  // namespace

bool isValidUtf8(std::string_view bytes) {
  std::size_t at = asciiPrefix(bytes);
  while (at < bytes.size()) {
    const Utf8Character character = utf8CharacterAt(bytes, at);
    if (!character.valid) return false;
    at += character.length;
  }
  return true;
}

std::string decodeGuessing(std::string_view bytes) {
  return isValidUtf8(bytes) ? std::string(bytes) : CodePage::windows1252().decode(bytes);
}

std::string decodeFile(std::string_view bytes) {
  if (bytes.starts_with(kUtf8Mark)) return decodeGuessing(bytes.substr(kUtf8Mark.size()));
  if (bytes.starts_with(kUtf16LittleMark)) return decodeUtf16(bytes.substr(2), false);
  if (bytes.starts_with(kUtf16BigMark)) return decodeUtf16(bytes.substr(2), true);
  return decodeGuessing(bytes);
}

CodePage::CodePage() : table_(upperHalf(number_)) {}

std::optional<CodePage> CodePage::find(int number) {
  CodePage page;
  page.number_ = number;
  page.table_ = upperHalf(number);
  if (page.table_ != nullptr) return page;
  const bool multiByte =
      std::find(std::begin(kMultiBytePages), std::end(kMultiBytePages), number) != std::end(kMultiBytePages);
  if (multiByte && platform::current().decodeMultiByte(number, "A")) return page;
  return std::nullopt;
}

const CodePage& CodePage::windows1252() {
  static const CodePage page;
  return page;
}

std::string CodePage::decode(std::string_view bytes) const {
  if (table_ != nullptr) return decodeTable(bytes, table_);
  if (isAscii(bytes)) return std::string(bytes);
  return platform::current().decodeMultiByte(number_, bytes).value_or(asciiOnly(bytes));
}

std::string CodePage::encode(std::string_view utf8) const {
  if (table_ != nullptr) return encodeTable(utf8, table_);
  if (isAscii(utf8)) return std::string(utf8);
  return platform::current().encodeMultiByte(number_, utf8).value_or(asciiOnly(utf8));
}

std::string CodePage::cut(std::string_view utf8, std::size_t width) const {
  if (isAscii(utf8)) return std::string(utf8.substr(0, width));
  std::size_t at = 0;
  for (std::size_t used = 0; at < utf8.size();) {
    const std::size_t length = utf8CharacterAt(utf8, at).length;
    used += singleByte() ? 1 : encode(utf8.substr(at, length)).size();
    if (used > width) break;
    at += length;
  }
  return std::string(utf8.substr(0, at));
}

}  // namespace vantrelix
