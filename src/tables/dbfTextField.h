// Texts as the bytes of a fixed-width field. Private to the table-file sources.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

#include "tables/DbfFile.h"

namespace vantrelix::dbf {

// A character field whose bytes tell its value, as long as they are ASCII, made ready for being read in many records.
class TextField {
 public:
  // `all` are the table's. Nothing for a field of another type, and in a table with null flags.
  static std::optional<TextField> of(const DbfField& field, const std::vector<DbfField>& all);

  // The text with its trailing blanks, a view of the record; empty where the field is blank, which is null. False, and
  // the text is of no meaning, where its characters are more than ASCII.
  bool read(const unsigned char* record, std::string_view& text) const {
    text = {reinterpret_cast<const char*>(record) + offset_, width_};
    if (!isPlain(text) && !endsAtNul(text)) return false;
    if (text.empty() || (text.front() == ' ' && isBlank(text))) text = {};
    return true;
  }

 private:
  static constexpr std::uint64_t kEachByte = 0x0101010101010101;

  // Whether one of the bytes is a NUL or no ASCII character.
  static bool hasOther(std::uint64_t bytes) { return (((bytes - kEachByte) | bytes) & 0x80 * kEachByte) != 0; }

  static bool isPlain(std::string_view text) {
    constexpr std::size_t word = sizeof(std::uint64_t);
    std::uint64_t bytes = 0;
    for (; text.size() >= word; text.remove_prefix(word)) {
      std::memcpy(&bytes, text.data(), word);
      if (hasOther(bytes)) return false;
    }
    for (const char byte : text) {
      if (static_cast<signed char>(byte) <= 0) return false;
    }
    return true;
  }

  static bool isBlank(std::string_view text);
  // Cuts a text of ASCII characters at its NUL; false for any other.
  static bool endsAtNul(std::string_view& text);

  std::size_t offset_ = 0;
  std::size_t width_ = 0;
};

}  // namespace vantrelix::dbf
