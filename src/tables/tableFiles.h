// Names made from the clock, and the small file work of making and mending tables. Private to this layer.
#pragma once

#include <string>
#include <string_view>

#include "platform/Platform.h"
#include "tables/FieldType.h"
#include "tables/dbfText.h"

namespace vantrelix {

// Moves a time on by one second.
platform::DateTime nextSecond(platform::DateTime time);

// Takes a name for a table in the folder: the date in that format and ".DBF", or the one of the next second that is
// free. The file is there, empty, when this returns, so that no other program takes the same name. Gives its path.
std::string reserveStampedTable(const std::string& folder, std::string_view format);

// Makes a table of those fields under such a name. A failure is reported and leaves nothing: the path is then blank.
// Where it is to come in the place of the table `like`, it has that one's permissions and language from the first byte.
std::string makeStampedTable(const FieldList& fields, const std::string& folder, std::string_view format,
                             const std::string& like = "");

// Writes an empty table of those fields to path, replacing what is there at once.
void createTable(const FieldList& fields, const std::string& path, const dbf::Language& language = {});

// Copies the file to a name that does not exist yet: path without extension, "_", the date as "YYYYMMDDHHSS", ".DBF",
// or the date of the next second that is free. A reader never finds half a copy, and nobody finds a byte of it whom the
// file's permissions keep from it. `kept` is the name, or the last one tried where that fails.
void keepDatedCopy(const std::string& path, std::string& kept);
// Puts beside a copy of a table what names the code page beside the table itself, where that can be read, for all who
// may read the table.
void copyPageName(const std::string& path, const std::string& copy);

// Gives the memo file of a table just made, if it has one, the name that goes with the path; before the table's own
// file gets its name. One that stands there already is kept, as DbfFile::create does.
void settleMemo(const std::string& made, const std::string& path);
// Gives a finished table its name, and its memo file. False where another has made a table of that name meanwhile: that
// one stays, and the finished one is removed; a file of no bytes is no table.
bool settleNewTable(const std::string& made, const std::string& path);

// Makes the file's content durable.
void syncFile(const std::string& path);
// Makes a new name in the folder durable. Of no interest where that fails: the table stands complete under its name,
// and after a power loss either it or the one before it does.
void syncFolderQuietly(const std::string& folder);
// Removes a file of ours that serves no purpose any more; a failure to do so is of no interest.
void removeQuietly(const std::string& path);
// The same of a table with its memo file.
void removeTableQuietly(const std::string& path);

}  // namespace vantrelix
