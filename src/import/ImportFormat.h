// What the fourteen import filters share and how they differ: one record per format, one run for all.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace vantrelix {

class TextLines;

// The working set of one antenna while a file is read. It starts afresh for each file, but for what a trait keeps.
struct ImportedAntenna {
  std::string AntName;
  double Gain = 0;
  std::string GainUnits;
  double Freq = 0;  // MHz
  double FreqLow = 0;
  double FreqHigh = 0;
  std::string PolLetter;  // which plane the file opened first holds
  std::int16_t HorCount = 0;
  std::vector<double> HorAngle;
  std::vector<double> HorValue;
  std::int16_t VerCount = 0;
  std::vector<double> VerAngle;
  std::vector<double> VerValue;
  double MinHor = 0;
  double MinVer = 0;
  std::int16_t ErrFlag = 0;  // 0 fine; -1 bad content; 1 bad content already reported
  std::string reason;        // where ErrFlag is set: a plain sentence on what is wrong, and the remedy if there is one

  // Marks bad content.
  void fail(std::string why) {
    ErrFlag = -1;
    reason = std::move(why);
  }
};

// What a reader works on: the file that was chosen, its partner, and where antennas go.
class ImportSource {
 public:
  virtual ~ImportSource() = default;

  // Full path of the chosen file, and its lines.
  virtual const std::string& path() const = 0;
  virtual TextLines& lines() = 0;
  // The lines of the other file of a pair, which counts as read from then on; null where it does not exist or was read
  // before in this run. Lives as long as the source.
  virtual TextLines* openPartner(const std::string& path) = 0;

  // For a format that stores its antennas itself: asks the preview, where previews are on,
  // and writes one antenna; a failure of the writing is told as for every format.
  enum class Stored { written, skipped, cancelled, failedGoOn, failedStop };
  virtual Stored store(const ImportedAntenna& antenna) = 0;
};

struct FileFilter {
  std::string description;
  std::string pattern;
};

// A box with the information icon; blank for none.
struct ImportNotice {
  std::string title;
  std::string text;
};

// One import filter: a row of the table in importFormats.cpp, which menu, dialogs, command line and help are made from.
struct ImportFormat {
  // What a format does unlike the others; to be added up.
  enum Trait {
    plain = 0,
    noPreviewEndsPreviews = 1,  // for the rest of the run; elsewhere "No Preview" acts as "Add"
    storesItself = 2,           // the reader stores what it reads, so that one file may hold several antennas
    keepsPlane = 4              // PolLetter starts as the file before in the run left it
  };

  std::string name;                 // of the command line: "generic"
  std::string menuItem;             // "mnuImportGeneric"
  std::string menuCaption;          // "Generic"
  std::string legacyName;           // name in the legacy warning; blank where the format has none
  std::string dialogTitle;          // "GENERIC Files to Read"
  std::string pathKey;              // INI key of the last folder: "Import GENERIC"
  std::vector<FileFilter> filters;  // before "All Files"
  std::string previewCaption;       // "Generic Format ANTENNA"
  int traits = plain;
  // Reads one chosen file, and its partner where there is one. Throws RunTimeFailure on content that cannot be read (62
  // input past end, 13 no number), or sets ErrFlag and reason.
  std::function<void(ImportSource& source, ImportedAntenna& antenna)> read;
  ImportNotice notice = {};  // shown before the dialog of files
};

// All formats, in menu order.
const std::vector<ImportFormat>& importFormats();
const ImportFormat* findImportFormat(const std::string& name);

}  // namespace vantrelix
