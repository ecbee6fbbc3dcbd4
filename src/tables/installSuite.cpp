#include "tables/installSuite.h"

#include <array>

#include "foundation/extract.h"
#include "foundation/suitePaths.h"
#include "tables/dictionary.h"

namespace vantrelix {

namespace {

struct StarterFile {
  const char* name;
  const char* content;
};

// Every key stands as a comment with the value that holds without it.
constexpr std::array<StarterFile, 2> kStarterFiles{{
    {"QVZOR32.INI",
     "; Settings of the installation. They hold for every user of this folder.\r\n"
     "; A line that begins with a semicolon is a comment; take it away to set a value.\r\n"
     "\r\n"
     "[CONFIG]\r\n"
     "; Folder of the table dictionary; SYSTEM in this folder where blank.\r\n"
     ";SYSTEM_PATH=\r\n"
     "; Folder for files of the moment; WORK in this folder where blank.\r\n"
     ";WORK PATH=\r\n"
     "; Address that messages name for help.\r\n"
     ";SupportAddress=\r\n"},
    {"QVDEFAULTS.INI",
     "; Defaults and last choices. The programs write here; comments stay.\r\n"
     "; A line that begins with a semicolon is a comment; take it away to set a value.\r\n"
     "\r\n"
     "[CONFIG]\r\n"
     "\r\n"
     "[System Units]\r\n"
     "; dBd, dBi or REL\r\n"
     ";Antenna Gain Units=dBd\r\n"
     "\r\n"
     "[HDAntenna]\r\n"
     "; Lowest pattern value that is written to a library.\r\n"
     ";MinValidGain=-50\r\n"
     "\r\n"
     "[Tables]\r\n"
     "; Milliseconds that a write waits for another program.\r\n"
     ";LockWait=2000\r\n"
     "; 1: every write is on the disk before the program goes on, which takes longer.\r\n"
     ";DurableWrites=0\r\n"
     "\r\n"
     "[Antenna Lookup]\r\n"
     "; Units in which antennas are shown: dBd, dBi or REL\r\n"
     ";Units=dBd\r\n"},
}};

void makeFolders(const std::string& folder) {
  platform::Platform& system = platform::current();
  if (folder.empty() || system.folderExists(folder)) return;
  makeFolders(ExtractFolderNoSlash(folder));
  system.makeFolder(folder);
}

void writeWhereMissing(const std::string& folder, const StarterFile& file) {
  const std::string path = platform::current().findIgnoringCase(setPathName(folder, file.name));
  if (!platform::current().fileExists(path)) platform::replaceWholeFile(path, file.content);
}

}  // namespace

void installSuite(const std::string& folder) {
  const std::string whole = platform::current().absolute(folder);
  makeFolders(whole);
  for (const StarterFile& file : kStarterFiles) writeWhereMissing(whole, file);
  setSuiteDir(whole);
  // An INI file that was there already may name other folders.
  for (const std::string& path : {getSystemPath(), getWorkPath(), getAntennasPath(), getLinesPath()}) makeFolders(path);
  installDictionary();
}

}  // namespace vantrelix
