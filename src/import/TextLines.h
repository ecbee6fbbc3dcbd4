// The lines of a text file, read one at a time from its bytes.
#pragma once

#include <string>
#include <string_view>

namespace vantrelix {

// A line ends at CR LF, CR or LF. Bytes with a UTF-8 or UTF-16 byte-order mark are decoded by it; all others stay
// bytes, since formats cut their lines by columns, and a text that is kept becomes UTF-8 through keptText.
class TextLines {
 public:
  explicit TextLines(std::string bytes);

  bool atEnd() const { return position_ >= text_.size(); }
  // The next line. Fails with 62 (input past end of file) at the end.
  std::string next();
  // Counted from 1: the line that next gave last; 0 before the first.
  long lineNumber() const { return lineNumber_; }
  // A text of the file as it is kept: as it is where it is valid UTF-8, from Windows-1252 otherwise.
  static std::string keptText(std::string_view bytes);
  static constexpr std::size_t kLongestShown = 200;  // characters
  // As much of such a text as a message can show, its control characters as blanks.
  static std::string shownText(std::string_view bytes);

 private:
  std::string text_;
  std::size_t position_ = 0;
  long lineNumber_ = 0;
};

}  // namespace vantrelix
