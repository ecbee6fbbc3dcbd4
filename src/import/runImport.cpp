#include "import/runImport.h"

#include <algorithm>
#include <exception>
#include <vector>

#include "dialogs/MsgBoxChk.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "import/GetMultiFiles.h"

namespace vantrelix {

namespace {

constexpr const char* kPathSection = "Antenna Data Path";
constexpr const char* kLegacyMessage = "4500";
constexpr int kSecondButton = 1;

std::string legacyText(const std::string& name) {
  return "This format may not match the current formats available from " + name + "." + kBlankLine +
         "Many manufacturers provide their antenna formats in the MSI Planet(tm) format." + kBlankLine +
         "If this legacy import filter cannot read the antenna files you have from " + name +
         " you may want to contact the manufacturer and obtain the same antenna data in the Planet format." +
         kLineBreak +
         "Files in the Planet format can be imported into ZOR using the 'Generic' import filter at the bottom of this "
         "list." +
         kBlankLine + "Do you want to continue with this import of the LEGACY format?" + kBlankLine +
         "Click 'Yes' to use the LEGACY filter." + kLineBreak + "Click 'No' to abandon this operation.";
}

bool goesOnWithLegacy(const ImportFormat& format) {
  if (format.legacyName.empty()) return true;
  MsgAnswer answer{};
  MsgBoxChk(kLegacyMessage, legacyText(format.legacyName), "Legacy File Format", answer, {{"Yes", ""}, {"No", ""}},
            kSecondButton);
  return answer != MsgAnswer::no;
}

std::vector<std::string> chooseFiles(const ImportFormat& format) {
  std::vector<std::string> files =
      GetMultiFiles(format.dialogTitle, getINIStr(kPathSection, format.pathKey, " "), format.filters, -1);
  // The run's progress counts files, so it gets nothing but them.
  files.erase(files.begin());
  return files;
}

MsgAnswer askForPreviews(std::size_t files) {
  return MsgBox({"Preview Antenna Patterns?",
                 formatNumber(static_cast<double>(files), kCountFormat) + " files found." + kBlankLine +
                     "Do you want to preview each antenna before adding it to the data base?",
                 MsgButtons::yesNoCancel, MsgIcon::none, 1});
}

// A folder that cannot be kept costs the user a way through the next dialog, and no import.
void keepFolder(const ImportFormat& format, const std::vector<std::string>& files) {
  const auto named =
      std::find_if(files.begin(), files.end(), [](const std::string& file) { return getLenTrim(file) > 0; });
  if (named == files.end() || setINI(kPathSection, format.pathKey, getDefaultsINI(), ExtractFolder(*named))) return;
  logQuietly("The folder of the imported files could not be kept as '" + format.pathKey + "' of section '" +
             kPathSection + "' in " + displayPath(getDefaultsINI()));
}

ImportResult importChosen(const ImportFormat& format, const std::string& Mfg, const RecordsetPtr& rsAMS,
                          const RecordsetPtr& rsAHD, const RecordsetPtr& rsAVD, const ImportOwner& owner) {
  if (!format.notice.text.empty()) showInformation(format.notice.title, format.notice.text);
  const std::vector<std::string> files = chooseFiles(format);
  if (files.empty()) return {};
  const MsgAnswer preview = askForPreviews(files.size());
  if (preview == MsgAnswer::cancel) {
    if (owner.unloadPreview) owner.unloadPreview();
    return {};
  }
  keepFolder(format, files);
  return importFiles(format, Mfg, rsAMS, rsAHD, rsAVD, files, preview == MsgAnswer::yes, owner);
}

}  // namespace

std::optional<ImportResult> runImport(const ImportFormat& format, const std::string& Mfg, const RecordsetPtr& rsAMS,
                                      const RecordsetPtr& rsAHD, const RecordsetPtr& rsAVD, const ImportOwner& owner) {
  if (!goesOnWithLegacy(format)) return std::nullopt;
  try {
    return importChosen(format, Mfg, rsAMS, rsAHD, rsAVD, owner);
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, format.dialogTitle);
  } catch (const std::exception& failure) {
    ErrHand(failure, format.dialogTitle);
  }
  return ImportResult{};
}

}  // namespace vantrelix
