// A sound table made of a damaged one: its header, and its rows one by one. Private to the recovery of tables.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tables/MemoFile.h"
#include "tables/fieldSoundness.h"
#include "tables/tableLayout.h"

namespace vantrelix::dbf {

// Bytes of the old records that no field describes become character fields behind all others.
class RecoveredTable {
 public:
  // The layout must outlive it. Fails with 3343 where there is no field, or where the fields that there are make up a
  // longer record than the format holds.
  explicit RecoveredTable(const TableLayout& layout);

  bool hasMemos() const;
  std::uint32_t recordLength() const { return header_.recordLength; }
  int version() const { return header_.version; }
  // The header of that many rows, changed today.
  std::string headerBytes(std::uint32_t rows, const platform::DateTime& today) const;

  // The row made sound, with its texts copied from one memo file to the other; either may be null. Gives the number of
  // values that had to be mended.
  std::uint32_t convert(const unsigned char* row, unsigned char* made, MemoFile* from, MemoFile* to);

 private:
  void takeFields();
  void addRest();
  void takeNames();
  std::string madeUpName(std::size_t index) const;
  std::uint32_t convertField(const unsigned char* row, unsigned char* made, std::size_t index);
  std::uint32_t mend(const unsigned char* row, unsigned char* made, std::size_t index, FaultKind kind);
  void fit(const unsigned char* row, unsigned char* made, std::size_t index);
  std::uint32_t convertMemo(const unsigned char* row, unsigned char* made, std::size_t index, MemoFile* from,
                            MemoFile* to);

  const TableLayout& layout_;
  Header header_;                     // behind the fields of the old table those for the rest of its records
  std::vector<unsigned char> flags_;  // of the fields
  FieldContext context_;
  Soundness soundness_;
};

}  // namespace vantrelix::dbf
