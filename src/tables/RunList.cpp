#include "tables/RunList.h"

#include <algorithm>

namespace vantrelix {

namespace {

// So many runs are looked through one by one faster than a small table is read.
constexpr std::size_t kFewRecent = 128;

}  // namespace

void RunList::add(std::size_t hash, RowRun rows) {
  // A share of the whole, so that all the sorting of ever more runs stays in proportion to their number.
  if (recent_.size() >= std::max(kFewRecent, sorted_.size() / 32) && !continuesLast(hash, rows)) settle();
  gather(hash, rows);
}

bool RunList::continuesLast(std::size_t hash, RowRun rows) const {
  return !recent_.empty() && recent_.back().hash == hash && recent_.back().rows.end() == rows.first;
}

void RunList::gather(std::size_t hash, RowRun rows) {
  if (continuesLast(hash, rows)) {
    recent_.back().rows.count += rows.count;
  } else {
    recent_.push_back({hash, rows});
  }
}

void RunList::settle() {
  const auto isBefore = [](const Run& a, const Run& b) {
    return a.hash != b.hash ? a.hash < b.hash : a.rows.first < b.rows.first;
  };
  std::sort(recent_.begin(), recent_.end(), isBefore);
  if (sorted_.empty()) return sorted_.swap(recent_);
  const auto middle = sorted_.insert(sorted_.end(), recent_.begin(), recent_.end());
  recent_.clear();
  std::inplace_merge(sorted_.begin(), middle, sorted_.end(), isBefore);
}

std::vector<RowRun> RunList::find(std::size_t hash) const {
  std::vector<RowRun> found;
  auto first = std::lower_bound(sorted_.begin(), sorted_.end(), hash,
                                [](const Run& run, std::size_t sought) { return run.hash < sought; });
  for (; first != sorted_.end() && first->hash == hash; ++first) found.push_back(first->rows);
  for (const Run& run : recent_) {
    if (run.hash == hash) found.push_back(run.rows);
  }
  if (found.size() < 2) return found;
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
