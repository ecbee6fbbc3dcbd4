// Windows come back where the user left them.
//
// Places and sizes (twips) stand in section "CONFIG" of an INI file, the user's defaults file where none is named,
// under the form's name behind `keyPrefix`, with "-X", "-Y", "-H", "-W" behind it. Only a form in its normal state is
// written.
#pragma once

#include <string>

#include "ui/Form.h"

namespace vantrelix {

// As a default place: no stored place is wanted, the form is centred.
inline constexpr int kCentred = -88;

void SaveFormLoc(const Form& form, const std::string& keyPrefix = {}, const std::string& file = {});
void SaveFormSize(const Form& form, const std::string& keyPrefix = {}, const std::string& file = {});
// Places the form, moved where at most a tenth of it would stay on the screens.
void SetFormLoc(Form& form, int defaultX = kCentred, int defaultY = kCentred, const std::string& keyPrefix = {},
                const std::string& file = {});
// A stored size of 0 leaves the designed one.
void SetFormSize(Form& form, int defaultH, int defaultW, const std::string& keyPrefix = {},
                 const std::string& file = {});
void setFormCenter(Form& form);
void setFormCenterOn(Form& form, const Form& owner);

}  // namespace vantrelix
