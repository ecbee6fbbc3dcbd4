// One character of UTF-8 text at a time. Private to the text and encoding sources of this layer and those above that
// walk through characters.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vantrelix {

struct Utf8Character {
  char32_t code = 0;       // the byte itself where it is not valid
  std::size_t length = 1;  // bytes taken; 1 where it is not valid
  bool valid = false;
};

// The character that begins at byte `at`, which must be inside the text. Overlong forms, surrogates and what is above
// U+10FFFF are not valid.
Utf8Character utf8CharacterAt(std::string_view text, std::size_t at);
// Surrogates and what is above U+10FFFF become U+FFFD.
void appendUtf8(std::string& text, char32_t code);

// The number of leading bytes below 0x80.
std::size_t asciiPrefix(std::string_view text);
inline bool isAscii(std::string_view text) { return asciiPrefix(text) == text.size(); }

}  // namespace vantrelix
