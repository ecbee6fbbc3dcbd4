#include "antenna/hdWrtAntDBF.h"

#include <algorithm>
#include <optional>

#include "antenna/makeAntFiles.h"
#include "foundation/errHand.h"
#include "foundation/getINI.h"
#include "foundation/procedures.h"
#include "foundation/text.h"
#include "tables/AddingAlone.h"
#include "tables/RowBatch.h"
#include "tables/structure.h"

namespace vantrelix {

namespace {

constexpr const char* kFirstNumber = "0000001";

// A cursor of the caller, or one of our own that is closed behind the work.
class TableCursor {
 public:
  TableCursor(const RecordsetPtr& passed, RecordsetPtr (*open)(const std::string&), const std::string& code)
      : own_(!passed), cursor_(passed ? passed : open(code)) {}
  ~TableCursor() {
    if (own_ && cursor_ && cursor_->isOpen()) cursor_->Close();
  }
  TableCursor(const TableCursor&) = delete;
  TableCursor& operator=(const TableCursor&) = delete;

  explicit operator bool() const { return cursor_ != nullptr; }
  Recordset& operator*() const { return *cursor_; }
  Recordset* operator->() const { return cursor_.get(); }

 private:
  bool own_;
  RecordsetPtr cursor_;
};

std::string noTable(const char* prefix) { return std::string(kLineBreak) + "Error on Antenna file: " + prefix; }

struct MasterRow {
  const std::string& Code;
  const std::string& Description;
  double Gain;
  const std::string& GainUnits;
  double FLow;
  double FHigh;
};

std::string writeMaster(Recordset& rows, const MasterRow& row) {
  const AddingAlone alone(rows);  // two programs that add antennas would give them one ID
  std::string id = GenNewID_RS(rows, "ATYPE_ID", row.Code, kFirstNumber);
  rows.AddNew();
  rows.put("ATYPE_ID", id);
  rows.put("ANTENNA", rows.Fields("ANTENNA").cut(row.Description));
  rows.put("GAIN", row.Gain);
  rows.put("GAIN_UN", rows.Fields("GAIN_UN").cut(row.GainUnits));
  rows.put("F_LOW", row.FLow);
  rows.put("F_HIGH", row.FHigh);
  rows.put("FREQ_UN", "MHz");
  rows.Update();
  return id;
}

struct Cut {
  const char* prefix;  // of its table
  RecordsetPtr (*open)(const std::string& code);
  const char* angleField;
  const char* valueField;
  std::int16_t count;
  const std::vector<double>& angles;
  const std::vector<double>& values;
  const RecordsetPtr& passed;
};

// The rows of one cut, for an antenna whose ID is known later than its points.
class CutRows {
 public:
  CutRows(const Cut& cut, double minValid, const std::string& code) : cut_(cut), minValid_(minValid) {
    if (cut_.count > 0) table_.emplace(cut_.passed, cut_.open, code);
  }

  // Fails where a point cannot be written, before anything is.
  void gather() {
    if (!hasTable()) return;
    if (cut_.angles.size() < points() || cut_.values.size() < points()) {
      throw RunTimeFailure(failure::subscript, "Subscript out of range: a cut has fewer points than its count says");
    }
    Recordset& rows = **table_;
    const Field angleField = rows.Fields(cut_.angleField);
    const Field valueField = rows.Fields(cut_.valueField);
    batch_.emplace(rows, RowBatch::Writing::atFlush);
    const RowBatch::NumberField angle = batch_->numberField(angleField), value = batch_->numberField(valueField);
    for (std::size_t i = 0; i < points(); ++i) {
      batch_->AddNew();
      batch_->putGeneral(angle, cut_.angles[i]);
      batch_->putGeneral(value, std::max(cut_.values[i], minValid_));
      batch_->Update();
    }
  }

  // Blank, or the reason where there is no table.
  std::string write(const std::string& id) {
    if (cut_.count <= 0) return "";
    if (!batch_) return noTable(cut_.prefix);
    batch_->putAll((*table_)->Fields("ATYPE_ID"), id);
    batch_->flush();
    return "";
  }

 private:
  bool hasTable() const { return table_ && *table_; }
  std::size_t points() const { return static_cast<std::size_t>(cut_.count); }

  const Cut& cut_;
  double minValid_;
  std::optional<TableCursor> table_;
  std::optional<RowBatch> batch_;
};

// Files that no cursor stands for are made first; the reason where that cannot be.
std::string prepareFiles(const std::string& Code) {
  std::string result = MakeAntFiles(Code);
  if (getLenTrim(result) != 0) return result;
  const std::string stem = "AMS" + Code;
  if (getLenTrim(stem) != 8) return AddALine(result, "Error on Antenna Library file name: " + stem, kBlankLine);
  return "";
}

std::string failedText(const std::string& Code, const std::string& Description, const RunTimeFailure& failure) {
  return AddALine("Error writing Antenna Library " + Code + kLineBreak + Description, modErrStr(failure));
}

}  // namespace

std::string HDwrtAntDBF(const std::string& Code, const std::string& Description, double Gain,
                        const std::string& GainUnits, std::int16_t nHor, const std::vector<double>& HorAz,
                        const std::vector<double>& HorField, std::int16_t nVer, const std::vector<double>& VerAngle,
                        const std::vector<double>& VerField, double FLow, double FHigh, const RecordsetPtr& rsAMS,
                        const RecordsetPtr& rsAHD, const RecordsetPtr& rsAVD) {
  const Procedure guard(procedure::HDwrtAntDBF);
  try {
    SetFlag(100);
    const double minValid = getINIDbl("HDAntenna", "MinValidGain", -50);
    SetFlag(200);
    if (!rsAMS && !rsAHD && !rsAVD) {
      if (std::string reason = prepareFiles(Code); !reason.empty()) return reason;
    }
    SetFlag(300);
    if (nHor <= 0 && nVer <= 0) return "";
    SetFlag(400);
    const TableCursor master(rsAMS, MakeAMSFile, Code);
    if (!master) return noTable("AMS");
    const Cut cuts[] = {{"AHD", MakeAHDFile, "HOR_AZ", "HOR_FIELD", nHor, HorAz, HorField, rsAHD},
                        {"AVD", MakeAVDFile, "VERT_ANGLE", "VERT_FIELD", nVer, VerAngle, VerField, rsAVD}};
    CutRows horizontal(cuts[0], minValid, Code), vertical(cuts[1], minValid, Code);
    horizontal.gather();
    vertical.gather();
    const std::string id = writeMaster(*master, {Code, Description, Gain, GainUnits, FLow, FHigh});
    SetFlag(500);
    if (std::string reason = horizontal.write(id); !reason.empty()) return reason;
    SetFlag(600);
    return vertical.write(id);
  } catch (const RunTimeFailure& failure) {
    return failedText(Code, Description, failure);
  } catch (const std::exception& failure) {
    return failedText(Code, Description, RunTimeFailure(failure::internalError, failure.what()));
  }
}

}  // namespace vantrelix
