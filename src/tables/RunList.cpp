#include "tables/RunList.h"

#include <algorithm>
#include <tuple>

namespace vantrelix {

namespace {

// So many runs are looked through one by one faster than a small table is read.
constexpr std::size_t kFewRecent = 128;

}  // namespace

bool RunList::isBefore(const Run& a, const Run& b) {
  return std::tie(a.hash, a.rows.first) < std::tie(b.hash, b.rows.first);
}

void RunList::add(std::size_t hash, RowRun rows) {
  if (!recent_.empty() && recent_.back().hash == hash && recent_.back().rows.end() == rows.first) {
    recent_.back().rows.count += rows.count;
    return;
  }
  // A share of the whole, so that all the sorting of ever more runs stays in proportion to their number.
  if (recent_.size() >= std::max(kFewRecent, sorted_.size() / 32)) settle();
  recent_.push_back({hash, rows});
}

void RunList::settle() {
  std::sort(recent_.begin(), recent_.end(), isBefore);
  const auto middle = sorted_.insert(sorted_.end(), recent_.begin(), recent_.end());
  recent_.clear();
  std::inplace_merge(sorted_.begin(), middle, sorted_.end(), isBefore);
}

std::vector<RowRun> RunList::find(std::size_t hash) const {
  std::vector<RowRun> found;
  const auto [first, last] = std::equal_range(sorted_.begin(), sorted_.end(), Run{hash, {}},
                                              [](const Run& a, const Run& b) { return a.hash < b.hash; });
  for (auto run = first; run != last; ++run) found.push_back(run->rows);
  for (const Run& run : recent_) {
    if (run.hash == hash) found.push_back(run.rows);
  }
  std::sort(found.begin(), found.end(), [](const RowRun& a, const RowRun& b) { return a.first < b.first; });
  std::vector<RowRun> joined;
  for (const RowRun& run : found) {
    if (joined.empty() || run.first > joined.back().end()) {
      joined.push_back(run);
    } else if (run.end() > joined.back().end()) {
      joined.back().count = static_cast<std::uint32_t>(run.end() - joined.back().first);
    }
  }
  return joined;
}

}  // namespace vantrelix
