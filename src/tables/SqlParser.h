// Query texts read into what they say. The texts understood are listed in docs/table-format.md; every other fails with
// 3061 and a description that names the place.
#pragma once

#include <string_view>

#include "tables/SqlTree.h"

namespace vantrelix {

SqlStatement parseSql(std::string_view text);
// A condition alone, as FindFirst takes it.
SqlExpression parseSqlCondition(std::string_view text);

}  // namespace vantrelix
