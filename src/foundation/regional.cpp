#include "foundation/regional.h"

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/messages.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix {

namespace {

constexpr const char* kSection = "CONFIG";
constexpr const char* kDecimalKey = "Last Decimal";
constexpr const char* kSeparatorKey = "Last Dig Sep";

std::string cutAndTrimmed(const std::string& text) { return trim(text.substr(0, text.find('\0'))); }

void readCharacters() {
  const platform::Regional regional = platform::current().regional();
  RegionalCharacters& characters = regionalCharacters();
  characters.decimalCharacter = cutAndTrimmed(regional.decimalCharacter);
  characters.digitSeparator = cutAndTrimmed(regional.digitSeparator);
  // No number with decimals could be typed or shown without one.
  if (characters.decimalCharacter.empty()) characters.decimalCharacter = ".";
}

// What the stored character of a key says about a change; blank where there is none.
std::string changeText(const char* key, const char* what, const std::string& now) {
  const std::string stored = getINIStr(kSection, key, "");
  if (getLenTrim(stored) == 0 || stored == now) return "";
  return std::string(what) + " was '" + stored + "' but now is '" + now + "'";
}

void tellChange(const std::string& change) {
  const std::string text =
      std::string(
          "WARNING:  The Regional Settings for Decimal character and Digit Separator character have been "
          "changed.") +
      kBlankLine + change + kBlankLine + "Some settings in your " + ExtractFileName(getDefaultsINI()) +
      " file using the old settings may cause errors." + kBlankLine +
      "Use the Configuration menu to Purge the configuration file to remove old settings.";
  showInformation("Regional Settings Changed", text);
  wrtTechSupNoMak(text);
}

}  // namespace

RegionalCharacters& regionalCharacters() {
  static RegionalCharacters characters;
  return characters;
}

void GetRegional(bool warn) {
  readCharacters();
  const RegionalCharacters& now = regionalCharacters();
  const std::string change = AddALine(changeText(kDecimalKey, "Decimal", now.decimalCharacter),
                                      changeText(kSeparatorKey, "Digit Separator", now.digitSeparator));
  if (warn && !change.empty()) {
    tellChange(change);
    return;
  }
  setINI(kSection, kDecimalKey, getDefaultsINI(), now.decimalCharacter);
  setINI(kSection, kSeparatorKey, getDefaultsINI(), now.digitSeparator);
}

}  // namespace vantrelix
