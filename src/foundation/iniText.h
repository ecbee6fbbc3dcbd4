// The characters of an INI file in a form in which ASCII can be searched and changed, and the way back to its bytes.
#pragma once

#include <string>
#include <string_view>

namespace vantrelix {

class IniText {
 public:
  IniText() = default;
  explicit IniText(std::string_view bytes);

  // UTF-8 of a UTF-8 or UTF-16 file, the bytes themselves of a Windows-1252 file; without the byte-order mark.
  const std::string& text() const { return text_; }
  void replace(std::size_t position, std::size_t length, std::string_view with);
  // The bytes of the file; those it was made of, where nothing was replaced.
  std::string bytes() const;

  // Between a piece of text() and UTF-8.
  std::string decoded(std::string_view raw) const;
  std::string encoded(std::string_view utf8) const;

 private:
  enum class Encoding { utf8, windows1252, utf16Little, utf16Big };

  Encoding encoding_ = Encoding::utf8;
  std::string mark_;
  std::string text_;
  std::string oddByte_;  // what stands behind the last whole unit of a UTF-16 file
};

}  // namespace vantrelix
