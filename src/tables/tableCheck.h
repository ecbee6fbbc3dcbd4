// A look through a whole table for everything that is wrong with it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "tables/tableFaults.h"

namespace vantrelix {

struct TableCheck {
  int version = 0;         // the first byte of the file
  std::uint32_t rows = 0;  // live rows, as DbfFile reads them
  std::uint32_t deleted = 0;
  FaultList faults;
};

// Tells how many of the rows have been looked at.
using CheckProgress = std::function<void(std::uint64_t done, std::uint64_t all)>;

// Reads every row that is counted, what stands behind them and every text that they point to, and changes nothing. The
// table may be in use: count and end belong to one moment, and no row is seen half written. Where another program keeps
// the header locked for longer than DbfFile::lockWait(), what it may be adding is told as such in the fault's text. A
// table that DbfFile::open refuses is looked through as far as sense can be made of it; where there is none the refusal
// is the only fault. 3011 no such file, 3051 as DbfFile::open. Memory: some 24 bytes for each memo text, little beyond.
TableCheck checkTable(const std::string& path, const CheckProgress& progress = {});

}  // namespace vantrelix
