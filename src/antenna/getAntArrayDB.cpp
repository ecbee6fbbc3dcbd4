#include "antenna/getAntArrayDB.h"

#include <limits>

#include "antenna/convertGain.h"
#include "antenna/libraryName.h"
#include "antenna/makeAntFiles.h"
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
constexpr const char* kKeyField = "ATYPE_ID";
constexpr std::size_t kMostPoints = std::numeric_limits<std::int16_t>::max();

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

// One cut: where it is stored, where it goes, and the first of its eight flags.
struct CutOnTheWay {
  const char* prefix;
  const char* angleField;
  const char* valueField;
  std::int16_t& count;
  std::vector<double>& angles;
  std::vector<double>& values;
  long flag;
};

// The points of a cut, handed over to the caller's variables at the end of its life: what was read before a failure
// comes to the caller too.
class Points {
 public:
  explicit Points(CutOnTheWay& cut) : cut_(cut) { pairs_.most = kMostPoints + 1; }
  ~Points() {
    cut_.count = static_cast<std::int16_t>(pairs_.firsts.size());
    if (pairs_.firsts.empty()) return;
    cut_.angles = std::move(pairs_.firsts);
    cut_.values = std::move(pairs_.seconds);
  }
  Points(const Points&) = delete;
  Points& operator=(const Points&) = delete;

  void read(KeyedRows& rows) {
    rows.addNumbers(cut_.angleField, cut_.valueField, pairs_);
    if (pairs_.firsts.size() <= kMostPoints) return;
    pairs_.firsts.pop_back();
    pairs_.seconds.pop_back();
    throw RunTimeFailure(failure::overflow, "Overflow: a pattern of more than 32767 points cannot be read");
  }

 private:
  CutOnTheWay& cut_;
  NumberPairs pairs_;
};

void readCut(const Call& call, Database& database, CutOnTheWay cut) {
  SetFlag(cut.flag);
  const std::string table = partnerTable(call.Library, cut.prefix);
  SetFlag(cut.flag + 100);
  KeyedRows rows(database, {table, kKeyField, call.AntID, cut.angleField});
  SetFlag(cut.flag + 200);
  if (!rows.empty()) {
    SetFlag(cut.flag + 300);
    cut.count = 0;
    SetFlag(cut.flag + 400);
    Points(cut).read(rows);
  }
  SetFlag(cut.flag + 600);
  rows.close();
}

Outcome readTables(Call& call) {
  SetFlag(1400);
  const DatabasePtr database = DBEngine::OpenDatabase(call.Path, false, false, "FoxPro 2.6");
  SetFlag(1500);
  KeyedRows master(*database, {call.Library, kKeyField, call.AntID, ""});
  SetFlag(1600);
  if (master.empty()) {
    tellNotFound(call);
    return Outcome::noAntenna;
  }
  readMaster(call, master);
  readCut(call, *database, {"AHD", "HOR_AZ", "HOR_FIELD", call.nHor, call.HorAz, call.HorField, 2600});
  readCut(call, *database, {"AVD", "VERT_ANGLE", "VERT_FIELD", call.nVer, call.VerAngle, call.VerField, 3500});
  SetFlag(4300);
  master.close();
  database->Close();
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
  if (!libraryExists(call)) return Outcome::noAntenna;
  const Outcome read = readTables(call);
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
