// A plain table of lines either has faults or gives lines that a library can take: ids and descriptions of their
// widths, numbers above 0, frequencies that ascend.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "foundation/encoding.h"
#include "foundation/text.h"
#include "lines/lineTypes.h"

namespace {

void require(bool condition) {
  if (!condition) std::abort();
}

void requireLine(const vantrelix::LineType& line) {
  require(vantrelix::getLenTrim(line.id) > 0 && vantrelix::characterCount(line.id) <= 10);
  require(vantrelix::characterCount(line.description) <= 75 && line.row > 1 && !line.points.empty());
  double before = 0;
  for (const vantrelix::LinePoint& point : line.points) {
    require(point.freq > before && std::isfinite(point.freq) && std::isfinite(point.atten) && point.atten >= 0);
    require(point.row >= line.row);
    before = point.freq;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<vantrelix::LineFault> faults;
  const std::vector<vantrelix::LineType> lines = vantrelix::readLineTypes(
      vantrelix::decodeFile(std::string_view(reinterpret_cast<const char*>(data), size)), faults);
  if (!faults.empty()) return 0;
  require(!lines.empty());
  for (const vantrelix::LineType& line : lines) requireLine(line);
  return 0;
}
