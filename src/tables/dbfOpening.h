// The steps of opening a table: its file, its header, its encoding. Private to the table-file sources.
#pragma once

#include <memory>
#include <string>

#include "platform/Platform.h"
#include "tables/dbfHeader.h"
#include "tables/dbfText.h"

namespace vantrelix::dbf {

// An open file that holds the locks of its sharing, and its state once they were held.
struct HeldFile {
  std::unique_ptr<platform::File> file;
  platform::FileState state;
};

// Opens the file that stands at the path and takes the locks of its sharing; what is given is still the file at the
// path once they are held. Opens for writing unless `readOnly` is set; sets it where a shared opening finds the file
// write-protected. A lasting exclusive lock needs a file that can be written, so the other kinds of sharing always ask
// for it. 3011, 3051 and 3211.
HeldFile openHeld(const std::string& path, Sharing sharing, bool& readOnly);
// The same, shared and to be read only, of a file that is known: what stands at the path has to prove itself by its
// state, which is not looked at.
HeldFile openHeldKnown(const std::string& path, const platform::FileState& known);

// Whether the open file is still the one at the path, and not removed or replaced since.
bool standsAt(const std::string& path, platform::File& file);

// The header of an open table; 3343.
Header readHeader(platform::File& file, const std::string& displayName);

inline constexpr std::uint64_t kLongestPageName = 4096;  // bytes of a .CPG file

// The code page by the header's mark, the .CPG partner or the field names; 65001 for UTF-8.
int codePageOf(const Header& header, const std::string& path);
// The language of the table that stands at the path; fails as the opening of a file and readHeader do.
Language languageOf(const std::string& path);

}  // namespace vantrelix::dbf
