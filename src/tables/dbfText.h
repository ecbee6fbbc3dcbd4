// The encoding of a table's texts: by the mark of its header, by the .CPG file that geographic programs put beside it,
// or Windows-1252. Private to the table-file sources.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/encoding.h"

namespace vantrelix::dbf {

inline constexpr int kUtf8 = 65001;

// How a table tells its texts' code page: by the mark of its header and, where that names none, by what stands beside
// it.
struct Language {
  unsigned char mark = 0x03;
  int page = 1252;  // the one that counts; 65001 for UTF-8
};

// The code page that a language mark (header byte 29) stands for; 0 where it stands for none that can be had.
int codePageOfMark(unsigned char mark);

// What the content of a .CPG file names ("UTF-8", "1252", "ISO-8859-1", "ANSI 1251"): a code page, 65001 for UTF-8, 0
// for what is not understood.
int codePageOfName(std::string_view name);

class TextCodec {
 public:
  // 65001 is UTF-8. A page that cannot be had gives Windows-1252.
  TextCodec() : TextCodec(1252) {}
  explicit TextCodec(int codePage);

  const CodePage& page() const { return page_; }
  bool utf8() const { return utf8_; }
  std::string decode(std::string_view bytes) const;
  std::string encode(std::string_view text) const;
  std::string cut(std::string_view text, std::size_t width) const;

 private:
  CodePage page_;
  bool utf8_;
};

}  // namespace vantrelix::dbf
