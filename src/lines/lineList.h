// The list of line types that the line controls offer: every line of every library of the lines folder.
//
// A library is read once, its points in one pass. What a record holds is what asking for each line would give:
// "Select min([Freq]) AS MinFreq, max([Freq]) AS MaxFreq from [LNDx] where [Ltype_ID] = 'x'".
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/RunTimeFailure.h"

namespace vantrelix {

struct LineRecord {
  std::string description;  // at most 75 characters, without trailing blanks
  std::string file;         // base name of the LMS file, at most 8 characters
  std::string id;           // at most 10 characters, without trailing blanks
  bool hasRange = false;    // the line has points
  double fMin = 0;          // MHz; 0 where it has none
  double fMax = 0;
};

using LineList = std::vector<LineRecord>;

// What the two controls do differently. `file` is the name of the LMS file, "LMSX0001.DBF".
struct LineListRules {
  // Stands in the place of a blank LN_TYPE.
  std::string noDescription;
  // Told of each row without an ID, which gives no record.
  std::function<void(const std::string& file)> badRow;
  // Told of a library whose master cannot be read (it gives no record) or whose points cannot (its lines then have no
  // range). The failure is thrown where this is empty.
  std::function<void(const std::string& file, const RunTimeFailure& failure)> unreadable;
};

// LookListLoad: a bad row is "Bad TX Line in " and the file in the support log.
LineListRules lookListRules();
// InitLines: a blank description is "NO DESCRIPTION", a bad row "Bad TX line in ", the file, a line break and
// "BLANK ID" in the support log.
LineListRules allLinesRules();

// The libraries by file name, the lines of each in the order of its rows. Empty where the lines folder does not exist.
LineList loadLineList(const LineListRules& rules);
// The lines of one library of a folder.
LineList readLineLibrary(const std::string& folder, const std::string& file, const LineListRules& rules);

// The first record whose description equals sLine, both trimmed; null where there is none.
const LineRecord* lineOfDescription(const LineList& list, std::string_view sLine);
// Blank, and 0, where no record has the description.
void GetLineFileID(const LineList& list, std::string_view sLine, std::string& sFile, std::string& sID);
void GetLineFreqRange(const LineList& list, std::string_view sLine, double& dFreqMin, double& dFreqMax);

}  // namespace vantrelix
