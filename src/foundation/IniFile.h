// The text of an INI file, read and changed in memory without touching what is not asked for.
//
// Sections and keys match without regard to case; of two sections or keys of one name the first wins. A value in
// matching outer quotes (" or ') comes without them. A line that begins with ";" is a comment.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/iniText.h"

namespace vantrelix {

struct IniEntry {
  std::string key;
  std::string value;
};

class IniFile {
 public:
  IniFile() = default;
  // The bytes of the file as they are: any line ends, with or without a byte-order mark, UTF-8, UTF-16 or Windows-1252.
  // What is set later goes in as the file has it; a character that it cannot hold becomes "?".
  explicit IniFile(std::string bytes);

  // The value of a key; nothing where it is missing. A key without "=" has no value. The section of the lines in front
  // of the first header has the empty name.
  std::optional<std::string> get(std::string_view section, std::string_view key) const;
  // Names in file order, each once.
  std::vector<std::string> sections() const;
  std::vector<std::string> keys(std::string_view section) const;
  // The keys of a section with the values that `get` finds, in file order.
  std::vector<IniEntry> entries(std::string_view section) const;
  // Two names are one where this is equal.
  static std::string folded(std::string_view name);

  // Whether a value set under these names would be found again: a key that is blank, holds "=" or begins with ";" or
  // "[" and a section that holds "]" would not. Setting such a one changes nothing.
  static bool canHold(std::string_view section, std::string_view key);
  // Sets a key in its first place, or behind the last line of the section that is not blank, or in a new section at the
  // end. A line break in any of the texts becomes a blank.
  void set(std::string_view section, std::string_view key, std::string_view value);
  // Sets many keys in turn, in one pass over the text. Those that would not be found again change nothing.
  void set(std::string_view section, const std::vector<IniEntry>& entries);
  void removeKey(std::string_view section, std::string_view key);
  void removeSection(std::string_view section);

  // The bytes to write; equal to those read where nothing was set.
  const std::string& bytes() const { return bytes_; }

 private:
  struct KeyLine;
  struct Body;
  class NewValues;

  std::string decoded(std::string_view raw) const;
  bool isNamed(std::string_view raw, std::string_view name) const;
  std::optional<Body> findSection(std::string_view section) const;
  std::optional<KeyLine> findKey(const Body& body, std::string_view key) const;
  bool findsAgain(std::string_view section, std::string_view key) const;
  void replaceValues(const Body& body, NewValues& values);
  std::string lineEndAt(std::size_t position) const;
  void insertLines(std::size_t position, const std::vector<std::string>& lines);
  void replaceText(std::size_t position, std::size_t length, std::string_view with);

  std::string bytes_;
  IniText content_;
};

}  // namespace vantrelix
