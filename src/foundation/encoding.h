// Text between UTF-8 and the code pages that files are written in.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vantrelix {

bool isValidUtf8(std::string_view bytes);
// The text of a file's bytes: as they are where they are valid UTF-8, by Windows-1252 otherwise.
std::string decodeGuessing(std::string_view bytes);
// The text of a whole file: a UTF-8 or UTF-16 byte-order mark is honoured, else as decodeGuessing.
std::string decodeFile(std::string_view bytes);

// One code page. A single-byte page is a table of 128 characters; bytes that it leaves open map to U+0080..U+009F (from
// byte 0xA0 on to U+F7A0..U+F7FF) and back, so that a text read and written again keeps its bytes.
class CodePage {
 public:
  // Windows-1252.
  CodePage();

  // Nothing where the number is not known. Known without the operating system: 437, 737, 850, 852, 857, 860, 861, 863,
  // 865, 866, 874 and 1250 to 1257; 932, 936, 949 and 950 where the operating system can decode them.
  static std::optional<CodePage> find(int number);
  static const CodePage& windows1252();

  int number() const { return number_; }
  bool singleByte() const { return table_ != nullptr; }
  std::string decode(std::string_view bytes) const;
  // What the page does not have becomes "?".
  std::string encode(std::string_view utf8) const;
  // The longest start of the text that fits into `width` bytes of this page without splitting a character.
  std::string cut(std::string_view utf8, std::size_t width) const;

 private:
  int number_ = 1252;
  const std::uint16_t* table_ = nullptr;
};

}  // namespace vantrelix
