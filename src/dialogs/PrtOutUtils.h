// The print path: a program of the user's prints text files.
#pragma once

#include <string>

namespace vantrelix {

// Starts the print program with the file (the library's path) as its argument and does not wait for it. `mode` is
// "FILE", the one mode there is. A program that cannot be started gives a message that names it, the file and the key
// to set.
//
// The program is a path or a name to look for in the folders of programs: key "PrintProgram" of section "CONFIG" of the
// suite INI; where that is blank, the one that setPrintProgram named, "NOTEPAD" where none was.
void PrtOutUtils(const std::string& file, const std::string& mode);

// What stands for the user's program where the suite INI names none. Blank returns to "NOTEPAD".
void setPrintProgram(const std::string& program);

}  // namespace vantrelix
