// Windows come back where the user left them.
//
// Places and sizes (twips) stand in section "CONFIG" of an INI file, the user's defaults file where none is named,
// under the form's name behind `keyPrefix`, with "-X", "-Y", "-H", "-W" behind it. Only a form in its normal state is
// written. A stored text that is no number counts as none.
#pragma once

#include <string>

#include "ui/Form.h"

namespace vantrelix {

// As a default place, of one side or both: no stored place is wanted, the form is centred.
inline constexpr int kCentred = -88;

void SaveFormLoc(const Form& form, const std::string& keyPrefix = {}, const std::string& file = {});
void SaveFormSize(const Form& form, const std::string& keyPrefix = {}, const std::string& file = {});
// Places the form where it is stored to be, else at the default, and moves it where at most a tenth of it would stay on
// the screens. "MultipleMonitors" of the defaults file ("1" where it is not there) says whether all screens count or
// the first alone.
void SetFormLoc(Form& form, int defaultX, int defaultY, const std::string& keyPrefix = {},
                const std::string& file = {});
// The same, but a form without a whole stored place is centred.
void SetFormLoc(Form& form, const std::string& keyPrefix = {}, const std::string& file = {});
// A stored side of 0 or less leaves the designed one, and so does a default of 0; none becomes longer than the
// desktop's.
void SetFormSize(Form& form, int defaultH, int defaultW, const std::string& keyPrefix = {},
                 const std::string& file = {});
// On the first screen. Without any screen the form stays.
void setFormCenter(Form& form);
void setFormCenterOn(Form& form, const Form& owner);

}  // namespace vantrelix
