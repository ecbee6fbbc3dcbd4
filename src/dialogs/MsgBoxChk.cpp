#include "dialogs/MsgBoxChk.h"

#include <array>
#include <set>
#include <utility>

#include "dialogs/windowPlacement.h"
#include "foundation/IniFile.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr const char* kStore = "MsgBoxChk.INI";
constexpr const char* kSection = "DO NOT SHOW";
constexpr const char* kSilenced = "-1";

// Blank where there is no suite folder: the store must not come to lie in whatever folder is the current one.
std::string storeFile() {
  const std::string folder = getSuiteDir();
  return getLenTrim(folder) == 0 ? std::string() : setPathName(folder, kStore);
}

// The silenced message of one store.
class Silence {
 public:
  Silence(std::string file, const std::string& key) : file_(std::move(file)), key_(trim(key)) {}

  bool possible() const { return !file_.empty() && IniFile::canHold(kSection, key_); }

  bool isSet() const {
    std::string value;
    getINI(kSection, key_, file_, "0", value);
    return CValP(value) != 0 || untilTheEnd().contains({file_, key_});
  }

  void set() const {
    if (isText() && setINI(kSection, key_, file_, kSilenced)) return;
    untilTheEnd().insert({file_, key_});
    MsgBox({"Message Not Silenced", unstoredText(), MsgButtons::ok, MsgIcon::exclamation, 1});
  }

  std::string restoreText() const {
    return "To see this message again, delete the line \"" + key_ + "=" + kSilenced + "\" in section \"" + kSection +
           "\" of the file " + displayPath(file_) + ".";
  }

 private:
  using Kept = std::set<std::pair<std::string, std::string>>;
  // What could not be stored.
  static Kept& untilTheEnd() {
    static Kept instance;
    return instance;
  }

  // No INI file of any encoding holds a NUL among its characters.
  bool isText() const {
    try {
      const IniText content(platform::readWholeFile(platform::current().findIgnoringCase(file_)));
      return content.text().find('\0') == std::string::npos;
    } catch (const RunTimeFailure&) {
      return true;  // not there, or of no use to the write either, which says so
    }
  }

  std::string unstoredText() const {
    return std::string("This message stays silent until the program ends, but will come back then: ") +
           "your choice could not be stored in the file" + kLineBreak + displayPath(file_) + kBlankLine +
           "Check that it is a text file, and that you may write to it and to its folder.";
  }

  std::string file_;
  std::string key_;
};

void setButtons(frmMsgBoxChk& form, const std::vector<MsgBoxChkButton>& buttons) {
  using Setter = void (frmMsgBoxChk::*)(bool, const std::string&, const std::string&);
  const std::array<Setter, 3> setters = {&frmMsgBoxChk::SetButtonTwo, &frmMsgBoxChk::SetButtonThree,
                                         &frmMsgBoxChk::SetButtonFour};
  const auto isGiven = [](const MsgBoxChkButton& button) { return getLenTrim(button.caption) > 0; };
  if (!buttons.empty() && isGiven(buttons[0])) form.SetButtonOne(buttons[0].caption, buttons[0].toolTip);
  for (std::size_t i = 1; i < buttons.size() && i <= setters.size(); ++i) {
    const Setter put = setters[i - 1];
    if (isGiven(buttons[i])) (form.*put)(true, buttons[i].caption, buttons[i].toolTip);
  }
}

}  // namespace

void MsgBoxChk(const std::string& key, const std::string& text, const std::string& title, MsgAnswer& result,
               const std::vector<MsgBoxChkButton>& buttons, int defaultButton, const Form* owner) {
  frmMsgBoxChk form;
  setButtons(form, buttons);
  form.DefaultButton(defaultButton);
  result = form.answer();
  const Silence silence(storeFile(), key);
  if (silence.isSet()) return;
  form.setCaption(title);
  form.Label1.setCaption(text);
  form.Check1.setVisible(silence.possible());
  form.lblRestore.setCaption(silence.restoreText());
  form.activated.listen([&form, owner] { owner ? setFormCenterOn(form, *owner) : setFormCenter(form); });
  desktop().showModal(form);
  result = form.answer();
  if (form.pressed() && form.Check1.value() == 1) silence.set();
}

}  // namespace vantrelix
