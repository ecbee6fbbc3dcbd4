// The program that holds the library: its name and version for messages and the log.
#pragma once

#include <string>

namespace vantrelix {

struct HostProgram {
  std::string name;  // without folder and extension
  int major = 0;
  int minor = 0;
  int revision = 0;
};

// The running program, or what setHostProgram named.
HostProgram hostProgram();
void setHostProgram(const HostProgram& host);

// The folder of the running program, without its trailing backslash, or what setHostFolder named (blank: the program's
// own).
std::string hostFolder();
void setHostFolder(const std::string& folder);

// The file version of a program or library file: from the text that follows "FileVersion" in its first 64,000 bytes;
// blank where there is none.
std::string modFileVerString(const std::string& path);

}  // namespace vantrelix
