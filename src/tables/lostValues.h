// What a repair could not carry along from the old table to the new one. Private to this layer.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tables/FieldType.h"

namespace vantrelix {

struct LostValues {
  std::string field;
  std::uint32_t rows = 0;  // at least one
};

// The fields of the list in which rows of `made` hold less than those of `old` that they were made from: decimals, the
// time beside a date, bytes that are no value here. `made` has the rows of `old` that are not deleted, in their order.
// Texts that stayed texts are not looked at, since they are carried along by their bytes.
std::vector<LostValues> lostValues(DbfFile& old, DbfFile& made, const FieldList& fields);

// "SEEN in 1 row, GAIN in 12 rows"
std::string listOf(const std::vector<LostValues>& lost);

}  // namespace vantrelix
