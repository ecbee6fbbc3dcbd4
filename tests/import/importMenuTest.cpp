#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/importMenu.h"

namespace vantrelix {
namespace {

using testing::ElementsAre;

using Entry = std::pair<std::string, std::string>;

// The whole menu, as its users know it.
const std::vector<Entry>& wholeMenu() {
  static const std::vector<Entry> entries = {
      {"mnuImportNSMA", "NSMA Format"},
      {"mnuImportNSMA_FCC", "NSMA Format (FCC)"},
      {"mnuImportSepNSMA", "-"},
      {"mnuImportAntel", "Legacy Antel File Format"},
      {"mnuImportBluewave", "Legacy Bluewave File Format"},
      {"mnuImportCelwave", "Legacy Celwave File Format"},
      {"mnuImportDapa", "Legacy DAPA Communications File Format"},
      {"mnuImportDecibel", "Legacy Decibel File Format"},
      {"mnuImportEMS", "Legacy EMS Wireless File Format"},
      {"mnuImportScala", "Legacy Scala File Format"},
      {"mnuImportShively", "Legacy Shively File Format"},
      {"mnuImportSinclair", "Legacy Sinclair File Format"},
      {"mnuImportTILTEK", "Legacy TIL-TEK File Format"},
      {"mnuImportTXRX", "Legacy TX RX Systems File Format"},
      {"mnuImportSepBeforeGeneric", "-"},
      {"mnuImportGeneric", "Generic"},
  };
  return entries;
}

std::vector<Entry> shownItems(const ImportMenu& menu) {
  std::vector<Entry> entries;
  for (const MenuItem* item : menu.items()) entries.emplace_back(item->name(), item->caption());
  return entries;
}

TEST(ImportMenu, HasAllItemsWithTheirCaptionsInOrder) {
  const ImportMenu menu;
  EXPECT_EQ(menu.name(), "mnuImport");
  EXPECT_EQ(menu.caption(), "Import");
  EXPECT_EQ(shownItems(menu), wholeMenu());
}

TEST(ImportMenu, AClickNamesTheFormat) {
  ImportMenu menu;
  std::vector<std::string> chosen, expected;
  menu.chosen.listen([&](const ImportFormat& format) { chosen.push_back(format.menuItem); });
  for (MenuItem* item : menu.items()) {
    item->userClick();
    if (item->caption() != "-") expected.push_back(item->name());
  }
  EXPECT_EQ(chosen, expected);
  EXPECT_EQ(chosen.size(), importFormats().size());
}

}  // namespace
}  // namespace vantrelix
