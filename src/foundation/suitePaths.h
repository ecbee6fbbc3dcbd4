// The installation folder of the suite, its data folders and its INI files.
//
// Each text is found on first use and kept, but for the installation folder, which is searched for on every call.
// Folders come without and INI files with their whole path, in the library's form.
#pragma once

#include <string>

namespace vantrelix {

// The installation folder: the one set by setSuiteDir, or the registry's, or QuorvendalDirectory of section CONFIG in
// QVRegistry.INI beside the running program. Blank where there is none; the log in the program's folder then says so.
std::string getSuiteDir();
// The same for who can do without one: no log tells that there is none.
std::string findSuiteDir();
// Names the installation folder for this process (a command-line option, a host's setting) and forgets what was kept.
// Blank returns to the search.
void setSuiteDir(const std::string& folder);

std::string getDefaultsINI();
std::string getSuiteINI();
std::string getSystemPath();
std::string getWorkPath();
std::string getAntennasPath();
std::string getLinesPath();
// "Antenna Gain Units" of section "System Units", kept once it is one of the three units.
std::string getAntGainUnits();

// The user's login: names the per-user form of the defaults INI and forgets the name kept so far.
void setUserLogin(const std::string& login);
const std::string& userLogin();

// The support address of the messages: key "SupportAddress" of section CONFIG of the suite INI, or "your ZOR supplier".
std::string supportAddress();

// Forgets everything kept, as at the start of the process. For tests and for a host that changes its installation.
void resetSuitePaths();

}  // namespace vantrelix
