// What the fourteen import filters share and how they differ: one record per format, one run for all.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vantrelix {

class TextLines;

// The working set of one antenna while a file is read. It starts afresh for each file.
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
};

struct FileFilter {
  std::string description;
  std::string pattern;
};

// One import filter. Adding a format is adding its source pair and one line in importFormats.cpp.
struct ImportFormat {
  std::string name;         // of the command line: "generic"
  std::string menuItem;     // "mnuImportGeneric"
  std::string menuCaption;  // "Generic"
  std::string legacyName;   // name in the legacy warning; blank where the format has none
  std::string dialogTitle;  // "GENERIC Files to Read"
  std::string pathKey;      // INI key of the last folder: "Import GENERIC"
  std::vector<FileFilter> filters;
  std::string previewCaption;  // "Generic Format ANTENNA"
  bool noPreviewEndsPreviews = false;
  // Reads the text of one file. Throws RunTimeFailure on content that cannot be read (62 input past end, 13 no number).
  std::function<void(TextLines& lines, ImportedAntenna& antenna)> read;
};

// All formats, in menu order.
const std::vector<ImportFormat>& importFormats();
const ImportFormat* findImportFormat(const std::string& name);

}  // namespace vantrelix
