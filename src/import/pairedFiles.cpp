#include "import/pairedFiles.h"

#include <algorithm>

#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix {

void readPair(ImportSource& source, ImportedAntenna& antenna, const PairRules& rules) {
  rules.header(source.lines(), antenna);
  if (antenna.ErrFlag != 0 || antenna.PolLetter.size() != 1) return;
  const char first = antenna.PolLetter.front();
  const bool horizontal = rules.horizontalLetters.find(first) != std::string_view::npos;
  if (!horizontal && rules.verticalLetters.find(first) == std::string_view::npos) return;
  (horizontal ? rules.horizontal : rules.vertical)(source.lines(), antenna);
  if (antenna.ErrFlag != 0) return;
  const std::string path = rules.partner(source.path(), antenna);
  TextLines* other = path.empty() ? nullptr : source.openPartner(path);
  if (!other) return;
  rules.header(*other, antenna);
  if (antenna.ErrFlag == 0) (horizontal ? rules.vertical : rules.horizontal)(*other, antenna);
}

bool partnerExists(const std::string& path) { return platform::current().fileExists(path); }

std::string withLastReplaced(std::string_view path, std::string_view what, std::string_view with) {
  const auto sameLetter = [](char a, char b) { return equalIgnoringCase({&a, 1}, {&b, 1}); };
  const auto found = std::find_end(path.begin(), path.end(), what.begin(), what.end(), sameLetter);
  std::string result(path);
  if (found != path.end()) result.replace(static_cast<std::size_t>(found - path.begin()), what.size(), with);
  return result;
}

std::string withBaseName(std::string_view path, std::string_view base) {
  return ExtractFolder(path) + trim(base) + "." + ExtractExtension(path, 3);
}

}  // namespace vantrelix
