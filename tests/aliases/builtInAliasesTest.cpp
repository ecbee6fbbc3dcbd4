// Every row of the built-in tables, letter for letter.
#include <gtest/gtest.h>
#include <set>
#include <string_view>
#include <utility>

#include "aliases/aliasStore.h"
#include "aliases/builtInAliases.h"
#include "support/TempSuite.h"

namespace vantrelix::test {

namespace {

constexpr std::pair<std::string_view, std::string_view> kKnown[] = {
    {"AMSI9999.DBF", "IMPORTED Antennas"},
    {"AMSZ0015.DBF", "0404 Scala 30-512"},
    {"AMSZ0017.DBF", "0404 Scala Archived (no longer in catalog)"},
    {"AMSZ0022.DBF", "0404 Celwave Base Station 800-900"},
    {"AMSZ0023.DBF", "0404 Celwave Base Station Maximizer"},
    {"AMSZ0024.DBF", "0404 Celwave Base Station Microtenna"},
    {"AMSZ0025.DBF", "0404 Celwave Base Station PCS"},
    {"AMSZ0026.DBF", "0404 Celwave Base Station Penetrator"},
    {"AMSZ0027.DBF", "0404 Celwave Base Station VHF-UHF"},
    {"AMSZ0028.DBF", "0404 Celwave Microwave Grid"},
    {"AMSZ0029.DBF", "0404 Celwave Microwave LMDS WLL"},
    {"AMSZ0030.DBF", "0404 Celwave Microwave Solid Parabolic"},
    {"AMSZ0031.DBF", "0404 Scala 2000 - 2700"},
    {"AMSZ0032.DBF", "0404 Scala Cellular"},
    {"AMSZ0033.DBF", "0404 Scala Misc"},
    {"AMSZ0034.DBF", "0404 Scala Omni"},
    {"AMSZ0035.DBF", "0404 Scala PCS"},
    {"AMSZ0036.DBF", "0404 Decibel 746-806"},
    {"AMSZ0037.DBF", "0404 Decibel 806-869"},
    {"AMSZ0038.DBF", "0404 Decibel 806-960"},
    {"AMSZ0039.DBF", "0404 Decibel 824-896"},
    {"AMSZ0040.DBF", "0404 Decibel 870-960"},
    {"AMSZ0041.DBF", "0404 Decibel 1710-1880"},
    {"AMSZ0042.DBF", "0404 Decibel 1710-2170"},
    {"AMSZ0043.DBF", "0404 Decibel 1850-1990"},
    {"AMSZ0044.DBF", "0404 Decibel 1900-2170"},
    {"AMSZ0045.DBF", "0404 TIL-TEK"},
    {"AMSZ0046.DBF", "0404 Sinclair"},
    {"AMSZ0047.DBF", "0404 Bluewave"},
    {"AMSZ0048.DBF", "0404 Scala German Model Numbers"},
    {"AMSCEL11.DBF", "Celwave VHF/UHF Antennas (updated 11/2001)"},
    {"AMSCEL12.DBF", "Celwave 800/900 MHz Antennas (updated 11/2001)"},
    {"AMSCEL13.DBF", "Celwave PCS Antennas (updated 11/2001)"},
    {"AMSCEL14.DBF", "Celwave Maximizer Antennas (updated 11/2001)"},
    {"AMSCEL15.DBF", "Celwave MicroTenna Antennas (updated 11/2001)"},
    {"AMSCEL16.DBF", "Celwave Optimizer 800MHz Antennas (updated 11/2001)"},
    {"AMSCEL17.DBF", "Celwave Optimizer PCS Antennas (updated 11/2001)"},
    {"AMSCEL18.DBF", "Celwave Penetrator Antennas (updated 11/2001)"},
    {"AMSSCA00.DBF", "Scala Antennas Version 00"},
    {"AMSCEL00.DBF", "Celwave Antennas Version 00"},
    {"AMSCEL03.DBF", "Celwave Antennas Version 03 (updated)"},
    {"AMSDEC00.DBF", "Decibel Antennas Version 00"},
    {"AMSAND00.DBF", "Andrew Antennas Version 00"},
    {"AMSSIN00.DBF", "Sinclair Antennas Version 00"},
    {"AMSSRL00.DBF", "Sinclair Antennas Version 00"},
    {"AMSRAC00.DBF", "Racal Antennas Version 00"},
    {"AMSANT00.DBF", "Antenna Specialists Antennas Version 00"},
    {"AMSDEC03.DBF", "Decibel Products Version 03"},
    {"AMSBWV00.DBF", "Bluewave Antenna Systems 00"},
    {"AMSTTA00.DBF", "TIL-TEK Antennas"},
    {"AMSALG00.DBF", "Algon Antennas"},
    {"AMSATL00.DBF", "Antel Antennas"},
    {"LMSAND00.DBF", "Andrew Lines  version 00"},
    {"LMSTMS00.DBF", "Times Microwave Lines version 00"},
};

TEST(BuiltInAliases, EveryRowHasItsDescriptionInTheTableOfItsFamilyAlone) {
  const TempSuite suite;
  std::size_t antennas = 0;
  std::set<std::string_view> files;
  for (const auto& [file, description] : kKnown) {
    const bool antenna = file.starts_with("AMS");
    antennas += antenna ? 1 : 0;
    files.insert(file);
    EXPECT_EQ(builtInAntennaAlias(file), antenna ? description : "") << file;
    EXPECT_EQ(builtInLineAlias(file), antenna ? "" : description) << file;
    // Whether or not the file is there.
    EXPECT_EQ(libraryDescription(antenna ? LibraryFamily::antenna : LibraryFamily::line, std::string(file)),
              description);
  }
  EXPECT_EQ(antennas, 52U);
  EXPECT_EQ(files.size(), 54U);
}

TEST(BuiltInAliases, AnythingElseHasNone) {
  for (const char* file : {"", "AMSZ0015", "amsz0015.dbf", "AMSZ0016.DBF", "AMSX0001.DBF", "LMSX0001.DBF"}) {
    EXPECT_EQ(builtInAntennaAlias(file), "") << file;
    EXPECT_EQ(builtInLineAlias(file), "") << file;
  }
}

}  // namespace

}  // namespace vantrelix::test
