// An installation with library files, a host's folder of its own, and the picker answered by a script.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "aliases/NewFileName.h"
#include "aliases/frmFileAlias.h"
#include "aliases/modGetOpenFileAlias.h"
#include "foundation/getINI.h"
#include "foundation/hostProgram.h"
#include "foundation/suitePaths.h"
#include "platform/FaultPlatform.h"
#include "support/TempSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::test {

inline constexpr const char* kAntennaSection = "ANTENNAS\\AMS?????.DBF";
inline constexpr const char* kLineSection = "LINES\\LMS?????.DBF";

// Gives the names of a folder in an order of the test's choice, or refuses to list it, and notes the files opened.
class ListedPlatform : public platform::FaultPlatform {
 public:
  ListedPlatform() : FaultPlatform(platform::operatingSystem()) {}

  std::function<std::vector<std::string>(const std::string& folder, std::vector<std::string> names)> onList;
  std::vector<std::string> read, changed;  // paths of files opened for the one or the other

  std::vector<std::string> list(const std::string& folder) override {
    std::vector<std::string> names = FaultPlatform::list(folder);
    return onList ? onList(folder, std::move(names)) : names;
  }
  std::unique_ptr<platform::File> open(const std::string& path, platform::OpenMode mode) override {
    (mode == platform::OpenMode::read ? read : changed).push_back(path);
    return FaultPlatform::open(path, mode);
  }
};

class AliasSuite : public ::testing::Test {
 protected:
  AliasSuite() {
    setHostFolder(host.path());
    getAntennasPath();
    getLinesPath();
  }
  ~AliasSuite() override { setHostFolder(""); }

  void addFile(const std::string& name) const {
    suite.folder().write((name.starts_with("LMS") ? "LINES/" : "ANTENNAS/") + name, "x");
  }
  // A file with its description in the folder's store.
  void addLibrary(const std::string& name, const std::string& description) const {
    addFile(name);
    setINI(kAntennaSection, name, folderStore(), description);
  }
  std::string folderStore() const { return suite.file("ANTENNAS/QVAliasANT.INI"); }
  std::string stored(const std::string& file) const {
    return getPrivateProfileString(kAntennaSection, file, "(none)", kIniBuffer, folderStore());
  }
  std::string config(const std::string& key) const {
    return getPrivateProfileString("CONFIG", key, "(none)", kIniBuffer, getDefaultsINI());
  }

  TempSuite suite;
  TempFolder host;
};

class PickerSuite : public AliasSuite {
 protected:
  using User = std::function<void(frmFileAlias&)>;

  // Opens the picker, in which the user acts.
  void open(const User& user) {
    screen.onModal["frmFileAlias"] = [user](Form& form) { user(dynamic_cast<frmFileAlias&>(form)); };
    modGetOpenFileAliasNoDBClass(arguments);
  }
  static void press(frmFileAlias& form, frmFileAlias::Button button) { form.Command1[button].userClick(); }
  static void confirm(frmFileAlias& form) { press(form, frmFileAlias::continuing); }
  static void takeFirst(frmFileAlias& form) {
    form.TDBGrid1.userMove(GridMove::top);
    confirm(form);
  }

  static std::vector<std::string> column(const frmFileAlias& form, int column) {
    std::vector<std::string> texts;
    for (int row = 0; row < form.TDBGrid1.rowCount(); ++row) texts.push_back(form.TDBGrid1.cellText(row, column));
    return texts;
  }
  static std::vector<std::string> descriptions(const frmFileAlias& form) { return column(form, 0); }
  static std::vector<std::string> files(const frmFileAlias& form) { return column(form, 1); }
  static int rowOf(const frmFileAlias& form, const std::string& file) {
    const std::vector<std::string> all = files(form);
    const auto found = std::find(all.begin(), all.end(), file);
    return found == all.end() ? -1 : static_cast<int>(found - all.begin());
  }
  static std::string selectedFile(const frmFileAlias& form) {
    const SelBookmarks& selected = form.TDBGrid1.selBookmarks();
    if (selected.count() == 0) return "(none)";
    EXPECT_EQ(selected.count(), 1);
    return form.TDBGrid1.cellText(form.TDBGrid1.rowOf(selected.item(0)), 1);
  }

  ScriptedDesktop screen;
  DesktopInUse use{screen};
  OpenFileAlias arguments{.sPrefix = "AMS", .sTitle = "Antenna Library to Open", .bAllowNew = true};
};

}  // namespace vantrelix::test
