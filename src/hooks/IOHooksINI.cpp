#include "hooks/IOHooksINI.h"

#include "foundation/getINI.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

// The hook tells the profile call one character less than its buffer has, and the call keeps one more for its own end.
constexpr std::size_t kShowSize = kIniBuffer - 1;

}  // namespace

bool IOHooksINI::isBound() const {
  return getLenTrim(iniFile_) > 0 && getLenTrim(INISection_) > 0 && getLenTrim(INIVariable_) > 0;
}

std::string IOHooksINI::INIShow() {
  INIValue_ = isBound() ? getPrivateProfileString(trim(INISection_), trim(INIVariable_), trim(INIDefault_), kShowSize,
                                                  trim(iniFile_))
                        : INIDefault_;
  return INIValue_;
}

bool IOHooksINI::INISave() const {
  return isBound() && writePrivateProfileString(trim(INISection_), trim(INIVariable_), trim(INIValue_), trim(iniFile_));
}

Value IOHooksINI::Disconnect() {
  *this = IOHooksINI();
  return {};
}

bool IOHooksINI::INIHookProp(const IOHooksINI& s) {
  *this = s;
  return true;
}

}  // namespace vantrelix
