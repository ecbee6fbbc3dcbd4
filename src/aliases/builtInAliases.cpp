#include "aliases/builtInAliases.h"

#include <span>

namespace vantrelix {

namespace {

struct Alias {
  std::string_view file;
  std::string_view description;
};

constexpr Alias kAntennas[] = {
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
};

constexpr Alias kLines[] = {
    {"LMSAND00.DBF", "Andrew Lines  version 00"},
    {"LMSTMS00.DBF", "Times Microwave Lines version 00"},
};

std::string_view find(std::span<const Alias> aliases, std::string_view file) {
  for (const Alias& alias : aliases) {
    if (alias.file == file) return alias.description;
  }
  return "";
}

}  // namespace

std::string_view builtInAntennaAlias(std::string_view file) { return find(kAntennas, file); }
std::string_view builtInLineAlias(std::string_view file) { return find(kLines, file); }

}  // namespace vantrelix
