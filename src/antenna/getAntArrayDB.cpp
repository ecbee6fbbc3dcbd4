#include "antenna/getAntArrayDB.h"

#include <algorithm>
#include <optional>

#include "antenna/convertGain.h"
#include "antenna/libraryName.h"
#include "antenna/readCut.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/text.h"
#include "platform/Platform.h"
#include "tables/KeyedRows.h"

namespace vantrelix {

namespace {

constexpr const char* kWillNotBeUsed = "The antenna specified for this task will not be used.";
constexpr const char* kNoDescription = "[NO DESCRIPTION]";

// The arguments of one call. All are the caller's own variables and are used in the order told, so that a caller that
// passes one variable twice sees what it expects.
struct Call {
  const std::string& Path;
  const std::string& Library;
  const std::string& AntID;
  double& Gain;
  std::string& GainUnits;
  std::int16_t& nHor;
  std::vector<double>& HorAz;
  std::vector<double>& HorField;
  std::int16_t& nVer;
  std::vector<double>& VerAngle;
  std::vector<double>& VerField;
  std::string& Description;
  std::string& DesiredUnits;
  double& FLow;
  double& FHigh;
  std::string& FreqUnits;
  bool Quiet;
  std::string& ErrorText;
};

// How a procedure goes on behind a step.
enum class Outcome { fine, noAntenna, conversionFailed };

void tell(const Call& call, const std::string& title, const std::string& text) {
  if (!call.Quiet) showInformation(title, text);
}

void checkDesiredUnits(Call& call) {
  if (getLenTrim(call.DesiredUnits) == 0) return;
  const std::string units = trim(call.DesiredUnits);
  for (const char* known : {"dBi", "dBd", "REL"}) {
    if (equalIgnoringCase(units, known)) return;
  }
  const std::string unknown = call.DesiredUnits;
  call.DesiredUnits = "REL";
  tell(call, "Antenna Gain Units", "Unrecognized DesiredUnits " + unknown);
}

void setDefaults(Call& call) {
  SetFlag(1000);
  call.Gain = 0;
  call.GainUnits = "dBd";
  call.nHor = 0;
  call.nVer = 0;
  for (std::vector<double>* array : {&call.HorAz, &call.HorField, &call.VerAngle, &call.VerField}) array->assign(1, 0);
}

std::string libraryPath(const Call& call, const std::string& folder) {
  return setPathName(folder, trim(call.Library) + ".DBF");
}

bool libraryExists(Call& call) {
  SetFlag(1200);
  // The path mostly is the folder itself.
  const std::string path = libraryPath(call, call.Path);
  if (platform::current().fileExists(path) || tableFileExists(libraryPath(call, tableFolder(call.Path)))) return true;
  SetFlag(1300);
  call.ErrorText = "The specified antenna data base was not found:" + std::string(kLineBreak) + displayPath(path);
  tell(call, "Antenna Data Base Error 2", call.ErrorText + kBlankLine + kWillNotBeUsed);
  return false;
}

void tellNotFound(Call& call) {
  SetFlag(4200);
  const std::string text = "The specified antenna was not found:" + std::string(kLineBreak) +
                           displayPath(setPathName(call.Path, call.Library)) + kLineBreak + "Antenna ID: " + call.AntID;
  call.ErrorText += kLineBreak + text;
  tell(call, "Antenna Data Base Error 3", text + kBlankLine + kWillNotBeUsed);
}

std::string trimmedOr(const Value& value, const char* fallback) {
  std::string text = value.isNull() ? "" : trim(value.asText());
  return text.empty() ? fallback : text;
}

void readMaster(Call& call, KeyedRows& rows) {
  SetFlag(2000);
  call.Gain = rows.value("GAIN").asNumber();
  SetFlag(2100);
  call.GainUnits = rows.value("GAIN_UN").asText();
  SetFlag(2200);
  call.Description = trimmedOr(rows.value("ANTENNA"), kNoDescription);
  SetFlag(2300);
  call.FLow = CValP(ChkNulls(rows.value("F_LOW"), "0", false));
  SetFlag(2400);
  call.FHigh = CValP(ChkNulls(rows.value("F_HIGH"), "0", false));
  SetFlag(2500);
  call.FreqUnits = trimmedOr(rows.value("FREQ_UN"), "MHz");
}

void readCut(const Call& call, Database& database, CutOnTheWay cut) {
  readCut(database, call.Library, call.AntID, cut);
}

// The library's master table with the rows of the antenna.
struct Master {
  DatabasePtr database;
  std::optional<KeyedRows> rows;
};

void openMaster(const Call& call, Master& master) {
  SetFlag(1400);
  master.database = DBEngine::OpenDatabase(call.Path, false, false, "FoxPro 2.6");
  SetFlag(1500);
  master.rows.emplace(*master.database, KeyedRows::Key{call.Library, kAntennaKey, call.AntID, ""});
}

// Whether openMaster has found the very file that libraryExists looks for.
bool isFileAsNamed(const Call& call, const Database& database) {
  const auto isPlain = [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
  };
  return database.folder() == call.Path && std::all_of(call.Library.begin(), call.Library.end(), isPlain);
}

// False, and it is told, where there is no such library. The opening mostly proves that there is: what else proves it
// is asked behind it.
bool openLibrary(Call& call, Master& master) {
  try {
    openMaster(call, master);
  } catch (const RunTimeFailure&) {
    const long flag = GetFlag();
    if (!libraryExists(call)) return false;
    SetFlag(flag);
    throw;
  }
  return isFileAsNamed(call, *master.database) || libraryExists(call);
}

Outcome readTables(Call& call, Master& master) {
  SetFlag(1600);
  if (master.rows->empty()) {
    tellNotFound(call);
    return Outcome::noAntenna;
  }
  readMaster(call, *master.rows);
  readCut(call, *master.database, {"AHD", "HOR_AZ", "HOR_FIELD", call.nHor, call.HorAz, call.HorField, 2600});
  readCut(call, *master.database, {"AVD", "VERT_ANGLE", "VERT_FIELD", call.nVer, call.VerAngle, call.VerField, 3500});
  SetFlag(4300);
  master.rows->close();
  master.database->Close();
  return Outcome::fine;
}

bool convertValues(const Call& call, std::vector<double>& values) {
  const std::string gain = generalText(call.Gain);
  for (double& value : values) {
    bool err = false;
    value = CValP(ConvertAntPattern(call.GainUnits, call.DesiredUnits, generalText(value), gain, call.GainUnits, err));
    if (err) return false;
  }
  return true;
}

Outcome convertAntenna(Call& call) {
  SetFlag(4400);
  const std::string desired = trim(call.DesiredUnits);
  if (desired.empty() || desired == trim(call.GainUnits)) return Outcome::fine;
  SetFlag(4500);
  bool err = false;
  const double newGain = CValP(ConvertAntGain(call.GainUnits, call.DesiredUnits, generalText(call.Gain), err));
  SetFlag(4600);
  if (err) return Outcome::conversionFailed;
  SetFlag(4700);
  if (!convertValues(call, call.HorField)) return Outcome::conversionFailed;
  SetFlag(4800);
  if (!convertValues(call, call.VerField)) return Outcome::conversionFailed;
  SetFlag(4900);
  call.Gain = newGain;
  SetFlag(5000);
  call.GainUnits = call.DesiredUnits;
  SetFlag(5100);
  return Outcome::fine;
}

void tellConversionFailed(const Call& call) {
  const std::string text = "Error on antenna data" + std::string(kLineBreak) + "Library: " + displayPath(call.Path) +
                           " " + call.Library + " " + call.AntID + kLineBreak + "Units: " + call.GainUnits + " " +
                           call.DesiredUnits + kBlankLine + "Antenna information will be ignored.";
  wrtTechSupNoMak(AddALine(text, "Get_Ant_ArrayDB Flag: " + std::to_string(GetFlag())));
  tell(call, "Antenna File Error", text);
}

// 0 dBd in the units asked for. That always has a value, since the units were checked.
void giveNoAntenna(Call& call) {
  call.Gain = 0;
  call.GainUnits = "dBd";
  call.nHor = 0;
  call.nVer = 0;
  const std::string desired = trim(call.DesiredUnits);
  if (!desired.empty() && desired != "dBd") {
    bool err = false;
    call.Gain = CValP(ConvertAntGain("dBd", call.DesiredUnits, generalText(call.Gain), err));
    call.GainUnits = call.DesiredUnits;
  }
  SetFlag(5200);
}

Outcome readCall(Call& call) {
  SetFlag(1100);
  if (getLenTrim(call.Library) == 0 || getLenTrim(call.AntID) == 0) return Outcome::noAntenna;
  Master master;
  if (!openLibrary(call, master)) return Outcome::noAntenna;
  const Outcome read = readTables(call, master);
  return read == Outcome::fine ? convertAntenna(call) : read;
}

void run(Call& call) {
  SetFlag(100);
  call.ErrorText.clear();
  checkDesiredUnits(call);
  setDefaults(call);
  const Outcome outcome = readCall(call);
  if (outcome == Outcome::conversionFailed) tellConversionFailed(call);
  if (outcome != Outcome::fine) giveNoAntenna(call);
}

}  // namespace

void Get_Ant_ArrayDB(const std::string& Path, const std::string& Library, const std::string& AntID, double& Gain,
                     std::string& GainUnits, std::int16_t& nHor, std::vector<double>& HorAz,
                     std::vector<double>& HorField, std::int16_t& nVer, std::vector<double>& VerAngle,
                     std::vector<double>& VerField, std::string& Description, std::string& DesiredUnits, double& FLow,
                     double& FHigh, std::string& FreqUnits, bool Quiet, std::string& ErrorText) {
  const Procedure guard(procedure::Get_Ant_ArrayDB);
  Call call{Path,     Library,  AntID,       Gain,         GainUnits, nHor,  HorAz,     HorField, nVer,
            VerAngle, VerField, Description, DesiredUnits, FLow,      FHigh, FreqUnits, Quiet,    ErrorText};
  try {
    run(call);
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure);
  } catch (const std::exception& failure) {
    ErrHand(failure);
  }
}

AntRecord readAntenna(const std::string& folder, const std::string& library, const std::string& id,
                      std::string& desiredUnits, bool quiet, std::string& errorText) {
  AntRecord record;
  record.library = library;
  record.folder = folder;
  record.id = id;
  Get_Ant_ArrayDB(folder, library, id, record.gain, record.gainUnits, record.nHor, record.HorAz, record.HorField,
                  record.nVer, record.VerAngle, record.VerField, record.description, desiredUnits, record.lowFrequency,
                  record.highFrequency, record.freqUnits, quiet, errorText);
  record.gainUnits = trim(record.gainUnits);
  return record;
}

}  // namespace vantrelix
