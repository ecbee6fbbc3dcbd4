#include "import/pairedFiles.h"

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

}  // namespace vantrelix
