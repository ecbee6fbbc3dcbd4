// Private-profile access: the INI operations that every other layer uses.
//
// Section, key and file name are trimmed first. A missing file is an empty file. A value is cut at 1999 characters.
// Writing keeps what it does not set, replaces the file by rename, and locks it meanwhile, so that two programs that
// write at once lose no key.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "foundation/IniFile.h"

namespace vantrelix {

inline constexpr std::size_t kIniBuffer = 2000;

// The platform's profile call: the value of at most `size` - 1 characters; a default loses its trailing blanks.
std::string getPrivateProfileString(std::string_view section, std::string_view key, std::string_view fallback,
                                    std::size_t size, const std::string& file);
// The platform's write. False where the file cannot be written within five seconds, or could not give the value back
// (see IniFile::canHold); it is then as it was.
bool writePrivateProfileString(std::string_view section, std::string_view key, std::string_view value,
                               const std::string& file);

// The platform's integer form: a sign and digits in front of anything else, or "0x" and hexadecimal digits, kept within
// 32 bits; 0 for a value that begins with no number, the default for a missing or empty one.
long getPrivateProfileInt(std::string_view section, std::string_view key, long fallback, const std::string& file);
// Remove a key, or a section with all that stands in it. True also where there was none.
bool removePrivateProfileKey(std::string_view section, std::string_view key, const std::string& file);
bool removePrivateProfileSection(std::string_view section, const std::string& file);

void getINI(std::string_view section, std::string_view key, const std::string& file, std::string_view fallback,
            std::string& value);
bool setINI(std::string_view section, std::string_view key, const std::string& file, std::string_view value);

// One section of a file, read once for many keys.
class ProfileSection {
 public:
  ProfileSection(std::string_view section, std::string_view file);
  // As getINI gives it, of the moment when the section was read.
  std::string get(std::string_view key, std::string_view fallback) const;

 private:
  std::unordered_map<std::string, std::string> values_;
};
// Many keys of a section in one write, as if by setINI one after the other. False where the file cannot be written.
bool setINI(std::string_view section, const std::vector<IniEntry>& entries, const std::string& file);

// A blank file means the defaults INI; the argument is then changed to its name.
std::string getINIStr(std::string_view section, std::string_view key, std::string_view fallback, std::string& file);
std::string getINIStr(std::string_view section, std::string_view key, std::string_view fallback);
// True for "TRUE", "1" and "-1", in any case; anything else is false.
bool getINIBool(std::string_view section, std::string_view key, std::string_view fallback, std::string file = "");
// A value that is not numeric gives 0, not the default.
double getINIDbl(std::string_view section, std::string_view key, double fallback, std::string file = "");

}  // namespace vantrelix
