// The memo file of a table held against the pointers of its rows. Private to the check and the recovery of tables.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tables/MemoFile.h"
#include "tables/tableFaults.h"
#include "tables/tableLayout.h"

namespace vantrelix::dbf {

// The kind of memo file that tables of the version have; dBase III's where the version names none.
MemoKind memoKindOf(int version);

class MemoCheck {
 public:
  // Both must outlive it. Opens the memo file where there is one.
  MemoCheck(const TableLayout& layout, FaultList& faults);

  // The memo pointer of a row.
  void look(std::uint32_t number, const unsigned char* row, std::size_t index);
  // What only all pointers together show.
  void finish();

 private:
  struct Text {
    std::uint64_t first;  // byte of its block, and the byte behind its end
    std::uint64_t end;
    std::uint32_t record;
    std::uint32_t field;
  };

  void readTexts();
  void findShared();
  void checkNextFree();
  void noteText(std::uint32_t number, std::size_t index, const std::string& reason);
  FaultList::Place placeOf(std::uint32_t number, std::size_t index) const;
  std::string nameOf(std::size_t field) const;

  const TableLayout& layout_;
  FaultList& faults_;
  std::unique_ptr<MemoFile> memo_;
  bool missing_ = false;
  std::vector<Text> texts_;
};

}  // namespace vantrelix::dbf
