// Where the rows of each of many texts stand, as runs of rows behind one another. Texts are known by their hash alone:
// rows of another text may be among those found. Private to this layer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vantrelix {

struct RowRun {
  std::uint32_t first = 0;
  std::uint32_t count = 0;

  std::uint64_t end() const { return std::uint64_t{first} + count; }
  friend bool operator==(const RowRun&, const RowRun&) = default;
};

class RunList {
 public:
  // Adds rows of a text. Cheap for the next run of a text and for rows that go on where the last ones ended, whatever
  // the number of runs.
  void add(std::size_t hash, RowRun rows);
  // The same for many that settle() follows, before anything is sought.
  void gather(std::size_t hash, RowRun rows);
  // Makes finding quickest; for the end of many additions.
  void settle();
  // The runs of a text by place, no row twice, none right behind another.
  std::vector<RowRun> find(std::size_t hash) const;
  std::size_t size() const { return sorted_.size() + recent_.size(); }

 private:
  struct Run {
    std::size_t hash;
    RowRun rows;
  };

  bool continuesLast(std::size_t hash, RowRun rows) const;

  std::vector<Run> sorted_;  // by hash, then by place
  std::vector<Run> recent_;  // the last ones as they came
};

}  // namespace vantrelix
