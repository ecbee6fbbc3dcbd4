// Formats that hold each cut of an antenna in a file of its own.
#pragma once

#include <string>
#include <string_view>

#include "import/ImportFormat.h"
#include "import/TextLines.h"

namespace vantrelix {

struct PairRules {
  using Read = void (*)(TextLines& lines, ImportedAntenna& antenna);

  // The header of either file: name, gain, band, and in PolLetter which cut the file holds.
  Read header;
  Read horizontal;
  Read vertical;
  // The letters of PolLetter for a first file with the horizontal and with the vertical cut. With any other letter both
  // cuts stay empty.
  std::string_view horizontalLetters;
  std::string_view verticalLetters;
  // The path of the other cut's file, from that of the chosen one; blank where none can be derived.
  std::string (*partner)(const std::string& path, const ImportedAntenna& antenna);
};

// Reads the chosen file, then the header and the other cut of its partner, whose header values stand in the end. A
// partner that does not exist, or was read before, leaves the antenna with one cut. Ends at the first ErrFlag.
void readPair(ImportSource& source, ImportedAntenna& antenna, const PairRules& rules);

// True where a partner can be read under this very name: it is not looked for without regard to case.
bool partnerExists(const std::string& path);

// The path with the last `what` in it, folders and extension included, replaced. `what` is ASCII and is found in any
// case. The path itself where it holds none.
std::string withLastReplaced(std::string_view path, std::string_view what, std::string_view with);
// The folder and the extension of the path around another base name, which is trimmed. An extension of more than three
// letters counts as blank; its point stays.
std::string withBaseName(std::string_view path, std::string_view base);

}  // namespace vantrelix
