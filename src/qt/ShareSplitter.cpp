#include "qt/ShareSplitter.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "foundation/getINI.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "qt/failures.h"

namespace vantrelix::qt {

namespace {

constexpr const char* kSection = "CONFIG";
constexpr const char* kSeparator = "|";
constexpr int kWhole = 1000;

}  // namespace

ShareSplitter::ShareSplitter(Qt::Orientation orientation, std::string key, QWidget* parent)
    : QSplitter(orientation, parent), key_(std::move(key)) {
  setObjectName(QString::fromStdString(key_));
  setChildrenCollapsible(false);
  connect(this, &QSplitter::splitterMoved, this, &ShareSplitter::take);
}

ShareSplitter::~ShareSplitter() {
  if (!moved_) return;
  std::string text;
  for (const int share : shares_) text += (text.empty() ? "" : kSeparator) + std::to_string(share);
  runGuarded([&] { setINI(kSection, key_, getDefaultsINI(), text); });
}

void ShareSplitter::setShares(const std::vector<int>& designed) {
  shares_ = kept();
  const bool usable = shares_.size() == designed.size() &&
                      std::all_of(shares_.begin(), shares_.end(), [](int share) { return share > 0; });
  if (!usable) shares_ = designed;
  apply();
}

std::vector<int> ShareSplitter::kept() const {
  std::vector<int> found;
  const std::string text = getINIStr(kSection, key_, "");
  for (int field = 1; field <= nAWK6(text, kSeparator); ++field) {
    found.push_back(static_cast<int>(std::clamp(CValP(sAWK6(text, kSeparator, field)), 0.0, double{kWhole})));
  }
  return found;
}

void ShareSplitter::apply() {
  const int room = orientation() == Qt::Horizontal ? width() : height();
  const int whole = std::accumulate(shares_.begin(), shares_.end(), 0);
  QList<int> sizes;
  for (const int share : shares_) sizes << room * share / std::max(whole, 1);
  if (!sizes.isEmpty()) setSizes(sizes);
}

void ShareSplitter::take() {
  const QList<int> now = sizes();
  const int whole = std::accumulate(now.begin(), now.end(), 0);
  if (whole <= 0) return;
  shares_.clear();
  for (const int size : now) shares_.push_back(size * kWhole / whole);
  moved_ = true;
}

void ShareSplitter::resizeEvent(QResizeEvent* event) {
  QSplitter::resizeEvent(event);
  apply();
}

}  // namespace vantrelix::qt
