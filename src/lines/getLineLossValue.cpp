#include "lines/getLineLossValue.h"

#include <cmath>
#include <optional>

#include "foundation/errHand.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "foundation/units.h"
#include "lines/lineLibrary.h"

namespace vantrelix {

namespace {

// Attenuations are per so many feet.
constexpr double kTableFeet = 100;

struct Point {
  double freq;
  double atten;
};

struct Bracket {
  Point low;
  Point high;
};

std::string descriptionOf(const LineTables& tables, const std::string& LineID) {
  const RecordsetPtr rows = linesOfType(tables.folder, tables.master, LineID);
  if (rows->Eof()) return " ";
  const std::string text = trimRight(ChkNulls(rows->value(kLineDescriptionField), "", false).asText());
  return text.empty() ? " " : text;
}

double frequencyOf(Recordset& rows) { return rows.value(kLineFreqField).asNumber(); }
Point pointOf(Recordset& rows) { return {frequencyOf(rows), rows.value(kLineAttenField).asNumber()}; }

// Why the table does not reach to the frequency; blank where it does. The cursor stands on its first row behind it.
std::string outOfRange(Recordset& rows, double Freq) {
  const double minimum = frequencyOf(rows);
  rows.MoveLast();
  const double maximum = frequencyOf(rows);
  rows.MoveFirst();
  if (Freq < minimum) return "Frequency is below minimum for this line.";
  if (Freq > maximum) return "Frequency is above maximum for this line.";
  return "";
}

// The first two neighbours round the frequency; nothing where the rows end before, as those of a single point do.
std::optional<Bracket> bracketOf(Recordset& rows, double Freq) {
  while (!rows.Eof()) {
    const Point low = pointOf(rows);
    rows.MoveNext();
    if (rows.Eof()) break;
    const Point high = pointOf(rows);
    if (Freq <= high.freq && Freq >= low.freq) return Bracket{low, high};
  }
  return std::nullopt;
}

double shareOf(const Bracket& bracket, double Freq) {
  if (!(Freq - bracket.low.freq > 0)) return 0;
  const double logLow = log10(bracket.low.freq);
  const double whole = log10(bracket.high.freq) - logLow;
  if (whole == 0) {
    throw RunTimeFailure(failure::divisionByZero, "Division by zero: the frequencies " + generalText(bracket.low.freq) +
                                                      " and " + generalText(bracket.high.freq) +
                                                      " MHz of the line have the same logarithm");
  }
  return (log10(Freq) - logLow) / whole;
}

// dB per 100 ft. At a point of the table its own figure, not what its logarithm gives back.
double attenuationAt(const Bracket& bracket, double Freq) {
  const double t = shareOf(bracket, Freq);
  const double logLow = log10(bracket.low.atten);
  const double logHigh = log10(bracket.high.atten);
  if (t == 0 && bracket.low.atten > 0) return bracket.low.atten;
  if (t == 1 && bracket.high.atten > 0) return bracket.high.atten;
  return std::pow(10.0, logLow + (logHigh - logLow) * t);
}

double finiteLoss(double loss) {
  if (std::isfinite(loss)) return loss;
  throw RunTimeFailure(failure::overflow, "Overflow: the loss of the line is out of range");
}

}  // namespace

void getLineLossValue(const std::string& LineFile, const std::string& LineID, double Length,
                      const std::string& LengthUnits, double Freq, double& Loss, bool& Failed, std::string& ErrorText,
                      std::string* Description) {
  getLineLossValueIn(getLinesPath(), LineFile, LineID, Length, LengthUnits, Freq, Loss, Failed, ErrorText, Description);
}

void getLineLossValueIn(const std::string& folder, const std::string& LineFile, const std::string& LineID,
                        double Length, const std::string& LengthUnits, double Freq, double& Loss, bool& Failed,
                        std::string& ErrorText, std::string* Description) {
  const Procedure guard(procedure::getLineLossValue);
  SetFlag(100);
  const auto refuse = [&](const std::string& reason) {
    ErrorText = reason;
    Failed = !reason.empty();
    return Failed;
  };
  refuse("");
  if (getLenTrim(LineFile) == 0 && refuse("Invalid Line file: " + LineFile)) return;
  if (getLenTrim(LineID) == 0 && refuse("Invalid Line ID: " + LineID)) return;
  SetFlag(200);
  const LineTables tables = lineTables(folder, LineFile);
  if (Description != nullptr) *Description = descriptionOf(tables, LineID);
  SetFlag(300);
  if (!(Length > 0) && refuse("Line length must be greater than zero.")) return;
  if (!(Freq > 0) && refuse("Frequency must be greater than zero.")) return;
  SetFlag(400);
  const RecordsetPtr rows = linesOfType(tables.folder, tables.points, LineID, " Order by Freq");
  if (rows->Eof() && refuse("No records found for this line type.")) return;
  if (refuse(outOfRange(*rows, Freq))) return;
  SetFlag(500);
  const std::optional<Bracket> bracket = bracketOf(*rows, Freq);
  if (!bracket) return;
  SetFlag(600);
  const double atten = attenuationAt(*bracket, Freq);
  const double feet = ConvertLenStr(LengthUnits, "ft", generalText(Length), Failed);
  Loss = finiteLoss(feet * atten / kTableFeet);
}

}  // namespace vantrelix
