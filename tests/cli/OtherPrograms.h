// Tables through other programs' eyes: running them, and comparing what they read with what this library reads.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace vantrelix::test {

using Json = nlohmann::json;

// What a shell command writes on standard output.
std::string outputOf(const std::string& command);
bool installed(const std::string& program);

// The rows of a table as the GIS library has them: a list of objects from field name to value.
Json rowsThroughOgr(const std::string& file);

// The same as the office program has them, by way of a text table in `folder` (the machine's form); blank cells are
// null. Names of fields have lost their type and width.
Json rowsThroughOffice(const std::string& file, const std::string& folder);

// Lets the office program write tables into `folder` from text tables there, whose headings are "NAME,C,20" and so on.
void tablesFromOffice(const std::string& folder);

struct Comparison {
  int values = 0;
  std::string firstDifference;
};

// Values of C, N, F, D and L fields, in `table dump`'s JSON against another program's rows.
Comparison compare(const Json& ours, const Json& theirs);

}  // namespace vantrelix::test
