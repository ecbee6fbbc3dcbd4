// An installation with one antenna library, and short ways to put antennas into it.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "antenna/getAntArrayDB.h"
#include "antenna/hdWrtAntDBF.h"
#include "antenna/makeAntFiles.h"
#include "foundation/suitePaths.h"
#include "support/TempSuite.h"
#include "tables/installSuite.h"

namespace vantrelix::test {

class AntennaSuite : public ::testing::Test {
 protected:
  AntennaSuite() { installSuite(suite.path()); }

  static constexpr const char* kCode = "T0001";
  static constexpr const char* kLibrary = "AMST0001";
  static constexpr const char* kFirstId = "T00010000001";

  static std::string folder() { return getAntennasPath(); }

  // What one call of Get_Ant_ArrayDB gives.
  struct Reading {
    double Gain = 77;
    std::string GainUnits = "old";
    std::int16_t nHor = 77;
    std::vector<double> HorAz{7, 7}, HorField{7, 7};
    std::int16_t nVer = 77;
    std::vector<double> VerAngle{7, 7}, VerField{7, 7};
    std::string Description = "old", DesiredUnits;
    double FLow = 77, FHigh = 77;
    std::string FreqUnits = "old", ErrorText = "old";
  };
  static Reading read(const std::string& id, const std::string& units = "", bool quiet = false,
                      const std::string& library = kLibrary, const std::string& path = folder()) {
    Reading r;
    r.DesiredUnits = units;
    Get_Ant_ArrayDB(path, library, id, r.Gain, r.GainUnits, r.nHor, r.HorAz, r.HorField, r.nVer, r.VerAngle, r.VerField,
                    r.Description, r.DesiredUnits, r.FLow, r.FHigh, r.FreqUnits, quiet, r.ErrorText);
    return r;
  }

  // An antenna of three horizontal and two vertical points.
  static std::string add(double gain, const std::string& units, const std::vector<double>& hor,
                         const std::vector<double>& ver, const std::string& description = "Panel") {
    std::vector<double> az, el;
    for (std::size_t i = 0; i < hor.size(); ++i) az.push_back(static_cast<double>(i) * 10);
    for (std::size_t i = 0; i < ver.size(); ++i) el.push_back(static_cast<double>(i) * 5);
    return HDwrtAntDBF(kCode, description, gain, units, static_cast<std::int16_t>(hor.size()), az, hor,
                       static_cast<std::int16_t>(ver.size()), el, ver, 400, 470);
  }

  // Appends a row with just these fields.
  static void addRow(const RecordsetPtr& rows, const std::vector<std::pair<std::string, Value>>& fields) {
    rows->AddNew();
    for (const auto& [name, value] : fields) rows->put(name, value);
    rows->Update();
    rows->Close();
  }

  static long rowCount(const RecordsetPtr& rows) {
    if (rows->RecordCount() == 0) return 0;
    rows->MoveLast();
    return rows->RecordCount();
  }

  bool tableExists(const std::string& name) const { return suite.folder().exists("ANTENNAS/" + name); }
  void removeTable(const std::string& name) const { std::remove(suite.folder().machine("ANTENNAS/" + name).c_str()); }

  TempSuite suite;
};

}  // namespace vantrelix::test
