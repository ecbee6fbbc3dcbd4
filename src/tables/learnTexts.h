// Learns where the rows of each text of a field stand before they are asked for.
#pragma once

#include <string>

namespace vantrelix {

// Reads a large table to its end, so that this process's next queries that seek a text in that character field read the
// rows of their text alone, for as long as the file stays as it is. A file that was first seen a moment ago is waited
// for, a tenth of a second at most: only of one that has stood unchanged can this be known. Nothing is done for a
// small table, a field of another kind and where it is known already. Fails as DbfFile::open and its reading do.
void learnTexts(const std::string& path, const std::string& field);

}  // namespace vantrelix
