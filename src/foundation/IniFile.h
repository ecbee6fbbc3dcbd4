// The text of an INI file, read and changed in memory without touching what is not asked for.
//
// Sections and keys match without regard to case; of two sections or keys of one name the first wins. A value in matching
// outer quotes (" or ') comes without them. A line that begins with ";" is a comment.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrelix {

class IniFile {
 public:
  IniFile() = default;
  // The bytes of the file as they are: any line ends, with or without a byte-order mark, UTF-8 or Windows-1252.
  explicit IniFile(std::string bytes);

  // The value of a key; nothing where it is missing. A key without "=" has no value.
  std::optional<std::string> get(std::string_view section, std::string_view key) const;
  // Names in file order.
  std::vector<std::string> sections() const;
  std::vector<std::string> keys(std::string_view section) const;

  // Sets a key in its first place, or behind the last line of the section that is not blank, or in a new section at the end.
  // A line break in any of the texts becomes a blank.
  void set(std::string_view section, std::string_view key, std::string_view value);
  void removeKey(std::string_view section, std::string_view key);
  void removeSection(std::string_view section);

  // The bytes to write; equal to those read where nothing was set.
  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

}  // namespace vantrelix
