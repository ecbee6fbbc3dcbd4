// Making the file of a new table. Private to this layer.
#pragma once

#include <string>
#include <vector>

#include "tables/DbfFile.h"
#include "tables/dbfText.h"

namespace vantrelix::dbf {

// As DbfFile::create, in a language: its mark in the header, the fields' names in its page. 51 for a name that the page
// cannot hold.
void createFile(const std::string& path, const std::vector<DbfNewField>& fields, const Language& language);

// Whether a new field of type N or F can have that width and those decimals.
bool isNumberWidth(int width, int decimals);

// The bytes of a field's name as it is stored.
std::string nameToStore(const std::string& name, const TextCodec& codec);

}  // namespace vantrelix::dbf
