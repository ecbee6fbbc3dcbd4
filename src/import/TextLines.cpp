#include "import/TextLines.h"

#include <algorithm>

#include "foundation/encoding.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

bool hasByteOrderMark(std::string_view bytes) {
  return bytes.starts_with("\xEF\xBB\xBF") || bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

}  // namespace

TextLines::TextLines(std::string bytes) : text_(hasByteOrderMark(bytes) ? decodeFile(bytes) : std::move(bytes)) {}

std::string TextLines::next() {
  if (atEnd()) {
    throw RunTimeFailure(failure::inputPastEnd,
                         text_.empty() ? "Input past end of file: the file is empty"
                                       : "Input past end of file: the file ends before its pattern begins");
  }
  const std::size_t end = std::min(text_.find_first_of("\r\n", position_), text_.size());
  std::string line = text_.substr(position_, end - position_);
  const bool pair = text_.compare(end, 2, "\r\n") == 0;
  position_ = end + (pair ? 2 : 1);
  ++lineNumber_;
  return line;
}

std::string TextLines::shownText(std::string_view bytes) {
  std::string text = leftCharacters(keptText(bytes), kLongestShown);
  std::replace_if(
      text.begin(), text.end(), [](unsigned char byte) { return byte < ' '; }, ' ');
  return text;
}

std::string TextLines::keptText(std::string_view bytes) { return decodeGuessing(bytes); }

}  // namespace vantrelix
