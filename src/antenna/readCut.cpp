#include "antenna/readCut.h"

#include <limits>
#include <utility>

#include "antenna/makeAntFiles.h"
#include "foundation/errHand.h"
#include "platform/RunTimeFailure.h"
#include "tables/KeyedRows.h"

namespace vantrelix {

namespace {

constexpr std::size_t kMostPoints = std::numeric_limits<std::int16_t>::max();

// The points of a cut, handed over to the caller's variables at the end of its life: what was read before a failure
// comes to the caller too.
class Points {
 public:
  explicit Points(CutOnTheWay& cut) : cut_(cut) { pairs_.most = kMostPoints + 1; }
  ~Points() {
    cut_.count = static_cast<std::int16_t>(pairs_.firsts.size());
    if (pairs_.firsts.empty()) return;
    cut_.angles = std::move(pairs_.firsts);
    cut_.values = std::move(pairs_.seconds);
  }
  Points(const Points&) = delete;
  Points& operator=(const Points&) = delete;

  void read(KeyedRows& rows) {
    rows.addNumbers(cut_.angleField, cut_.valueField, pairs_);
    if (pairs_.firsts.size() <= kMostPoints) return;
    pairs_.firsts.pop_back();
    pairs_.seconds.pop_back();
    throw RunTimeFailure(failure::overflow, "Overflow: a pattern of more than 32767 points cannot be read");
  }

 private:
  CutOnTheWay& cut_;
  NumberPairs pairs_;
};

}  // namespace

void readCut(Database& database, const std::string& library, const std::string& id, CutOnTheWay cut) {
  SetFlag(cut.flag);
  const std::string table = partnerTable(library, cut.prefix);
  SetFlag(cut.flag + 100);
  KeyedRows rows(database, {table, kAntennaKey, id, cut.angleField});
  SetFlag(cut.flag + 200);
  if (!rows.empty()) {
    SetFlag(cut.flag + 300);
    cut.count = 0;
    SetFlag(cut.flag + 400);
    Points(cut).read(rows);
  }
  SetFlag(cut.flag + 600);
  rows.close();
}

}  // namespace vantrelix
