// Questions about single characters that several sources of this layer ask. Private to it.
#pragma once

#include <string_view>

namespace vantrelix {

inline bool isDigit(char character) { return character >= '0' && character <= '9'; }

// The text between the first and the last character that is none of `blanks`.
inline std::string_view withoutOuter(std::string_view text, std::string_view blanks) {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace vantrelix
