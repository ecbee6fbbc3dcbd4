// One value bound to one key of one INI file.
//
// The hook keeps its own copy of the value: INIShow fills it from the file, INISave writes it, and putting it touches
// no file. File, section and key are trimmed where they are used and kept as they were put; one of them blank means a
// hook that is bound to nothing.
#pragma once

#include <string>

#include "foundation/Value.h"

namespace vantrelix {

class IOHooksINI {
 public:
  // The key's value, kept in INIValue too: at most 1998 characters, without one pair of matching outer quotes. The
  // trimmed INIDefault where the file, the section or the key is not there; INIDefault as it stands where the hook is
  // bound to nothing.
  std::string INIShow();
  // Writes the value, trimmed, and makes the file where there is none. INIValue keeps its outer blanks. False where the
  // hook is bound to nothing or the file cannot be written; it is then as it was.
  bool INISave() const;

  std::string INIDefault() const { return INIDefault_; }
  void INIDefault(const std::string& text) { INIDefault_ = text; }
  std::string INIValue() const { return INIValue_; }
  void INIValue(const std::string& text) { INIValue_ = text; }
  std::string iniFile() const { return iniFile_; }
  void iniFile(const std::string& path) { iniFile_ = path; }
  std::string INISection() const { return INISection_; }
  void INISection(const std::string& name) { INISection_ = name; }
  std::string INIVariable() const { return INIVariable_; }
  void INIVariable(const std::string& name) { INIVariable_ = name; }

  // Blanks all five texts, INIDefault among them. Gives null.
  Value Disconnect();
  // Takes over the five texts of `s`, blank ones too. Always true.
  bool INIHookProp(const IOHooksINI& s);

 private:
  bool isBound() const;

  std::string iniFile_;
  std::string INISection_;
  std::string INIVariable_;
  std::string INIValue_;
  std::string INIDefault_;
};

}  // namespace vantrelix
