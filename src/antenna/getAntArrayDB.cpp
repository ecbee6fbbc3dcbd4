#include "antenna/getAntArrayDB.h"

#include <algorithm>
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
#include "tables/Database.h"

namespace vantrelix {

namespace {

constexpr const char* kWillNotBeUsed = "The antenna specified for this task will not be used.";
constexpr const char* kNoDescription = "[NO DESCRIPTION]";
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

std::string libraryPath(const Call& call) { return setPathName(call.Path, trim(call.Library) + ".DBF"); }

bool libraryExists(Call& call, const std::string& folder) {
  SetFlag(1200);
  if (tableFileExists(setPathName(folder, trim(call.Library) + ".DBF"))) return true;
  SetFlag(1300);
  call.ErrorText =
      "The specified antenna data base was not found:" + std::string(kLineBreak) + displayPath(libraryPath(call));
  tell(call, "Antenna Data Base Error 2", call.ErrorText + kBlankLine + kWillNotBeUsed);
  return false;
}

// An ID may be any text: a quote within it stands doubled in the query.
RecordsetPtr openRows(Database& database, const Call& call, const std::string& folder, const std::string& table,
                      const std::string& order) {
  return database.OpenRecordset("Select * from " + TableTokenFromParts(folder, table, ".DBF") + " WHERE ATYPE_ID = '" +
                                    replaceAll(call.AntID, "'", "''") + "'" + order,
                                RecordsetType::snapshot);
}

void tellNotFound(Call& call) {
  SetFlag(4200);
  const std::string text = "The specified antenna was not found:" + std::string(kLineBreak) +
                           displayPath(setPathName(call.Path, call.Library)) + kLineBreak + "Antenna ID: " + call.AntID;
  call.ErrorText += kLineBreak + text;
  tell(call, "Antenna Data Base Error 3", text + kBlankLine + kWillNotBeUsed);
}

std::string trimmedOr(const Value& value, const char* fallback) {
  return value.isNull() || getLenTrim(value.asText()) == 0 ? fallback : trim(value.asText());
}

void readMaster(Call& call, Recordset& rows) {
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
  Points(CutOnTheWay& cut, std::size_t expected) : cut_(cut) {
    angles_.reserve(expected);
    values_.reserve(expected);
  }
  ~Points() {
    cut_.count = static_cast<std::int16_t>(angles_.size());
    if (angles_.empty()) return;
    cut_.angles = std::move(angles_);
    cut_.values = std::move(values_);
  }
  Points(const Points&) = delete;
  Points& operator=(const Points&) = delete;

  void add(double angle, double value) {
    if (angles_.size() == kMostPoints) {
      throw RunTimeFailure(failure::overflow, "Overflow: a pattern of more than 32767 points cannot be read");
    }
    angles_.push_back(angle);
    values_.push_back(value);
  }

 private:
  CutOnTheWay& cut_;
  std::vector<double> angles_;
  std::vector<double> values_;
};

void readRows(CutOnTheWay& cut, Recordset& rows) {
  Points points(cut, std::min<std::size_t>(static_cast<std::size_t>(rows.rowCount()), kMostPoints));
  rows.visitNumbers(rows.Fields(cut.angleField), rows.Fields(cut.valueField),
                    [&points](double angle, double value) { points.add(angle, value); });
}

void readCut(const Call& call, Database& database, const std::string& folder, CutOnTheWay cut) {
  SetFlag(cut.flag);
  const std::string table = partnerTable(call.Library, cut.prefix);
  SetFlag(cut.flag + 100);
  const RecordsetPtr rows = openRows(database, call, folder, table, std::string(" ORDER BY ") + cut.angleField);
  SetFlag(cut.flag + 200);
  if (rows->RecordCount() > 0) {
    SetFlag(cut.flag + 300);
    rows->MoveFirst();
    cut.count = 0;
    SetFlag(cut.flag + 400);
    readRows(cut, *rows);
  }
  SetFlag(cut.flag + 600);
  rows->Close();
}

Outcome readTables(Call& call, const std::string& folder) {
  SetFlag(1400);
  const DatabasePtr database = DBEngine::OpenDatabase(call.Path, false, false, "FoxPro 2.6");
  SetFlag(1500);
  const RecordsetPtr master = openRows(*database, call, folder, call.Library, "");
  SetFlag(1600);
  if (master->RecordCount() == 0) {
    tellNotFound(call);
    return Outcome::noAntenna;
  }
  readMaster(call, *master);
  readCut(call, *database, folder, {"AHD", "HOR_AZ", "HOR_FIELD", call.nHor, call.HorAz, call.HorField, 2600});
  readCut(call, *database, folder, {"AVD", "VERT_ANGLE", "VERT_FIELD", call.nVer, call.VerAngle, call.VerField, 3500});
  SetFlag(4300);
  master->Close();
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
  const std::string folder = tableFolder(call.Path);
  if (!libraryExists(call, folder)) return Outcome::noAntenna;
  const Outcome read = readTables(call, folder);
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
