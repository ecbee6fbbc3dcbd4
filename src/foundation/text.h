// Text helpers that all form and file logic rests on. Text is UTF-8; positions and widths count characters.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "foundation/Value.h"

namespace vantrelix {

inline constexpr const char* kLineBreak = "\r\n";
inline constexpr const char* kBlankLine = "\r\n\r\n";

// Trimming takes blanks only; a tab, a line break or a NUL stays.
std::string trim(std::string_view text);
std::string trimLeft(std::string_view text);
std::string trimRight(std::string_view text);
// The length of the trimmed text; the system's test for a blank.
std::size_t getLenTrim(std::string_view text);

// Case folding of the letters that code page 1252 has; other characters stay.
std::string upperCase(std::string_view text);
std::string lowerCase(std::string_view text);
bool equalIgnoringCase(std::string_view a, std::string_view b);

// Characters of UTF-8 text; a byte that is no part of valid UTF-8 counts as one.
std::size_t characterCount(std::string_view text);
std::string leftCharacters(std::string_view text, std::size_t count);
// From character `start` (counted from 1) to the end, or `count` characters of it.
std::string midCharacters(std::string_view text, std::size_t start, std::size_t count = std::string::npos);

std::string replaceAll(std::string_view text, std::string_view what, std::string_view with);

// A blank text gives the line; a blank line with always false gives the text; otherwise text, separator and line.
std::string AddALine(std::string_view text, std::string_view line, std::string_view separator = kLineBreak,
                     bool always = false);

// Splits text at the whole delimiter and gives field `number` (from 1); `fallback` where there is no such field. Empty
// fields count. An empty text has no fields.
std::string sAWK6(std::string_view text, std::string_view delimiter, int number, std::string_view fallback = "");
int nAWK6(std::string_view text, std::string_view delimiter);

// The value, formatted where `format` is not blank (null counts as a blank), padded with blanks on the left up to
// width. With trim the trimmed text is what is measured and padded. A longer text is not cut.
std::string PadLeft(const Value& value, std::string_view format, std::size_t width, bool trimmed);

// Every character of code 128 or above, or below 32, becomes a blank.
std::string CleanChars(std::string_view text);
std::string TabOrBlank(bool tab);
// The text without its blanks.
std::string StripBlanks(std::string_view text);
// `further`, then the characters that a file name may not hold.
std::string GetIllegalChars(std::string_view further = "");
// A safe file name; see the source for the order of replacement. With warn the user is asked once; Cancel sets
// `cancelled` and gives the empty text.
std::string CleanFileName(const std::string& name, const std::string& replacement, bool& warn, bool& cancelled);
// True when an element equals text exactly.
bool StrInArray(std::string_view text, const std::vector<std::string>& array);

}  // namespace vantrelix
