#include "editor/antExport.h"

#include <exception>
#include <vector>

#include "editor/antennaFile.h"
#include "editor/exportedAntenna.h"
#include "editor/frmHDAntEditor.h"
#include "editor/selectedAntenna.h"
#include "editor/showCuts.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/messages.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/Platform.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr const char* kSection = "Antenna Editor";
constexpr const char* kExtensionKey = "FileExt";
constexpr const char* kFolderKey = "ExportPath";
constexpr const char* kAntennaExtension = "ANT";
constexpr const char* kTextExtension = "TXT";

struct Filter {
  std::string name;
  std::string extension;
};

std::string filterText(const std::vector<Filter>& filters) {
  std::string text;
  for (const Filter& filter : filters) {
    const std::string pattern = "*." + filter.extension;
    text += filter.name;
    text += " (" + pattern + ")";
    text += '\0';
    text += pattern;
    text += '\0';
  }
  text.pop_back();
  return text;
}

// The kind of the last time first.
std::string filtersFor(const std::string& extension) {
  const Filter antenna{"ASCII Antenna File", kAntennaExtension};
  const Filter plain{"Text Files", kTextExtension};
  const Filter all{"All Files", "*"};
  if (equalIgnoringCase(extension, kAntennaExtension)) return filterText({antenna, plain, all});
  if (equalIgnoringCase(extension, kTextExtension)) return filterText({plain, antenna, all});
  return filterText({{antenna.name, extension}, antenna, plain, all});
}

std::string suiteValue(const char* key, const std::string& fallback) {
  std::string value;
  getINI(kSection, key, getSuiteINI(), fallback, value);
  return value;
}

std::string askForFile(const std::string& description) {
  const std::string extension = suiteValue(kExtensionKey, kAntennaExtension);
  bool warn = false;
  bool cancelled = false;
  Desktop::SaveFile request;
  request.title = "ASCII Antenna File to Write";
  request.folder = suiteValue(kFolderKey, getAntennasPath());
  request.name = CleanFileName(trim(description), "_", warn, cancelled) + "." + extension;
  request.filter = filtersFor(extension);
  request.extension = extension;
  return desktop().saveFile(request);
}

// What cannot be kept costs the user a way through the next dialog, and no export.
void keepForNextTime(const std::string& path) {
  const bool kept = setINI(kSection, kFolderKey, getSuiteINI(), ExtractFolder(path)) &&
                    setINI(kSection, kExtensionKey, getSuiteINI(), ExtractExtension(path));
  if (!kept) logQuietly("Folder and extension of the exported file could not be kept in " + displayPath(getSuiteINI()));
}

bool write(frmHDAntEditor& form, const std::string& path) {
  for (const Plane plane : {Plane::azimuth, Plane::elevation}) showSelectedCut(form, plane);
  const ExportedAntenna antenna = exportedAntenna(form);
  std::int16_t n = 0;
  std::vector<double> angles, gains;
  std::string file;
  bool failed = false;
  SetFlag(100);
  SavAntPLAHdr(file, antenna.fLow, antenna.description, antenna.gain, antenna.gainUn, failed);
  SetFlag(200);
  form.GetHPat(n, angles, gains);
  if (!failed) SavAntPLAHor(file, antenna.gain, n, angles, gains, failed);
  SetFlag(300);
  form.GetVPat(n, angles, gains);
  if (!failed) SavAntPLAVer(file, antenna.gain, n, angles, gains, failed);
  SetFlag(400);
  if (!failed) platform::replaceWholeFile(path, file);
  return !failed;
}

}  // namespace

bool exportAntenna(frmHDAntEditor& form, const std::string& path) {
  const Procedure guard(procedure::AntExport);
  try {
    return write(form, path);
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, displayPath(path));
  } catch (const std::exception& failure) {
    ErrHand(failure, displayPath(path));
  }
  return false;
}

void AntExport(frmHDAntEditor& form) {
  if (!requireAnySelection(form, "Then click the Export button to write the antenna information to an ASCII file."))
    return;
  if (!form.storeEntries()) return;
  const std::string path = askForFile(exportedAntenna(form).description);
  if (path.empty()) return;
  keepForNextTime(path);
  exportAntenna(form, path);
}

}  // namespace vantrelix
