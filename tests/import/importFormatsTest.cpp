// What every format of the table has to bring along, and the told texts of the table.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sstream>

#include "FormatImport.h"
#include "import/ImportFormat.h"

namespace vantrelix::test {
namespace {

namespace fs = std::filesystem;

const fs::path kTests = fs::path(VANTRELIX_SOURCE_DIR) / "tests";

// A missing file holds nothing.
bool fileHolds(const fs::path& file, const std::string& what) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str().find(what) != std::string::npos;
}

class EveryFormat : public testing::TestWithParam<std::string> {
 protected:
  const ImportFormat& format = *findImportFormat(GetParam());
  const std::string name = fileNameOf(GetParam());
};

TEST_P(EveryFormat, HasSamples) { EXPECT_FALSE(samplesOf(GetParam(), false).empty()); }

TEST_P(EveryFormat, HasDamagedSamples) { EXPECT_FALSE(samplesOf(GetParam(), true).empty()); }

TEST_P(EveryFormat, HasAFuzzTargetWithACorpus) {
  EXPECT_TRUE(fs::exists(kTests / "fuzz" / (name + "Fuzz.cpp")));
  EXPECT_TRUE(fileHolds(kTests / "fuzz" / "CMakeLists.txt", "vantrelix_fuzz(" + name + " import)"));
  EXPECT_FALSE(fs::is_empty(kTests / "fuzz" / "corpus" / name));
}

TEST_P(EveryFormat, HasATest) { EXPECT_TRUE(fileHolds(kTests / "import" / (name + "Test.cpp"), "TEST")); }

TEST_P(EveryFormat, HasAReaderAndTextsForItsDialogs) {
  EXPECT_TRUE(format.read);
  EXPECT_TRUE(format.dialogTitle.ends_with(" Files to Read"));
  EXPECT_TRUE(format.pathKey.starts_with("Import "));
  EXPECT_TRUE(format.previewCaption.ends_with(" ANTENNA"));
  EXPECT_EQ(format.notice.title.empty(), format.notice.text.empty());
}

INSTANTIATE_TEST_SUITE_P(Import, EveryFormat, testing::ValuesIn(formatNames()), kFormatTestName);

// The texts by which the formats differ.
struct Told {
  const char* name;
  const char* legacyName;
  const char* dialogTitle;
  const char* pathKey;
  std::size_t filters;  // of .msi and .txt
  const char* previewCaption;
  bool noPreviewEndsPreviews;
};

const FileFilter kFilters[] = {{".msi", "*.MSI"}, {".txt", "*.TXT"}};

constexpr Told kTold[] = {
    {"nsma", "", "NSMA Files to Read", "Import NSMA", 0, "NSMA Format ANTENNA", true},
    {"generic", "", "GENERIC Files to Read", "Import GENERIC", 2, "Generic Format ANTENNA", true},
    {"nsma-fcc", "", "NSMA (FCC) Files to Read", "Import NSMA (FCC)", 0, "NSMA ANTENNA", false},
    {"antel", "Antel", "ANTEL Files to Read", "Import Antel", 2, "ANTEL ANTENNA", false},
    {"celwave", "Celwave", "CELWAVE Files to Read", "Import Celwave", 0, "CELWAVE ANTENNA", false},
    {"sinclair", "Sinclair", "SINCLAIR Files to Read", "Import Sinclair", 0, "SINCLAIR ANTENNA", false},
    {"decibel", "Decibel", "Decibel Files to Read", "Import Decibel", 0, "Decibel ANTENNA", false},
    {"scala", "Scala", "SCALA Files to Read", "Import Scala", 0, "SCALA ANTENNA", false},
    {"shively", "Shively", "SHIVELY Files to Read", "Import Shively", 0, "SHIVELY ANTENNA", false},
    {"bluewave", "Bluewave", "Bluewave Files to Read", "Import Bluewave", 0, "BLUEWAVE ANTENNA", false},
    {"tiltek", "TIL-TEK", "TIL-TEK Files to Read", "Import TIL-TEK", 0, "TIL-TEK ANTENNA", false},
    {"ems", "EMS", "EMS Wireless Files to Read", "Import EMS Wireless", 0, "EMS Wireless ANTENNA", false},
    {"dapa", "DAPA Communications", "DAPA Files to Read", "Import DAPA", 0, "DAPA ANTENNA", false},
    {"txrx", "TXRX", "TX RX Files to Read", "Import TX RX", 0, "TX RX ANTENNA", false},
};

TEST(ImportFormats, DifferByTheirToldTexts) {
  EXPECT_EQ(importFormats().size(), std::size(kTold));
  for (const Told& told : kTold) {
    SCOPED_TRACE(told.name);
    const ImportFormat* format = findImportFormat(told.name);
    ASSERT_TRUE(format);
    EXPECT_EQ(format->legacyName, told.legacyName);
    EXPECT_EQ(format->dialogTitle, told.dialogTitle);
    EXPECT_EQ(format->pathKey, told.pathKey);
    ASSERT_EQ(format->filters.size(), told.filters);
    for (std::size_t i = 0; i < told.filters; ++i) {
      EXPECT_EQ(format->filters[i].description, kFilters[i].description);
      EXPECT_EQ(format->filters[i].pattern, kFilters[i].pattern);
    }
    EXPECT_EQ(format->previewCaption, told.previewCaption);
    EXPECT_EQ((format->traits & ImportFormat::noPreviewEndsPreviews) != 0, told.noPreviewEndsPreviews);
  }
}

TEST(ImportFormats, TheNameOfAFormatIsWholeOrUnknown) {
  EXPECT_EQ(findImportFormat("gen"), nullptr);
  EXPECT_EQ(findImportFormat("Generic"), nullptr);
  EXPECT_EQ(findImportFormat(""), nullptr);
}

}  // namespace
}  // namespace vantrelix::test
