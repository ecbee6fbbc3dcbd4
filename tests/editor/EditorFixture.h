// An installation with the antenna library AMST0001, and the editor on it. Its antennas have the IDs T00010000001 and
// so on, in the order in which they are added.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "aliases/frmFileAlias.h"
#include "antenna/hdWrtAntDBF.h"
#include "antenna/makeAntFiles.h"
#include "dialogs/frmMsgFloat.h"
#include "editor/frmHDAntEditor.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "support/TempSuite.h"
#include "tables/Database.h"
#include "tables/installSuite.h"
#include "tables/structure.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::test {

struct Cut {
  std::vector<double> angles;
  std::vector<double> values;
};

class EditorTest : public ::testing::Test {
 protected:
  EditorTest() {
    installSuite(suite.path());
    resetSuitePaths();
    setSuiteDir(suite.path());
    MakeAntFiles("T0001");
  }

  static constexpr const char* kFirst = "T00010000001";
  static constexpr const char* kSecond = "T00010000002";

  static void add(const std::string& description, double gain, const std::string& unit, const Cut& azimuth,
                  const Cut& elevation, double low = 824, double high = 896) {
    const std::string error =
        HDwrtAntDBF("T0001", description, gain, unit, static_cast<std::int16_t>(azimuth.angles.size()), azimuth.angles,
                    azimuth.values, static_cast<std::int16_t>(elevation.angles.size()), elevation.angles,
                    elevation.values, low, high);
    ASSERT_EQ(error, "");
  }
  // A panel of 12.5 dBi that passes the acceptance test.
  static void addPanel(const std::string& description = "Panel") {
    add(description, 12.5, "dBi", {{0, 90, 180, 270}, {12.5, 4, -20, 4}}, {{-90, 0, 90}, {-12, 12.5, -15}});
  }

  // Opens a session; a form that stood before is gone.
  frmHDAntEditor& open(const std::string& mode = " ", double freq = 0, const std::string& id = "") {
    form_ = std::make_unique<frmHDAntEditor>();
    form_->InitForm("AMST0001.DBF", "Test Library", mode, freq, "Test Library", id);
    return *form_;
  }
  frmHDAntEditor& form() { return *form_; }
  // What the system showed, "title: text" each, since the last call.
  std::vector<std::string> heard() {
    std::vector<std::string> texts;
    for (; heardSoFar_ < screen.shown().size(); ++heardSoFar_) {
      const Message& message = screen.shown()[heardSoFar_].message;
      texts.push_back(message.title + ": " + message.text);
    }
    return texts;
  }
  // What a user does: goes to a row of the antenna list.
  void select(int row) { form_->TDBGridAMS.userSelectRow(row); }

  // The rows of a table as they are in the file: "field|field" each, in file order, nulls blank, texts without the
  // blanks that fill them up.
  static std::vector<std::string> rows(const std::string& table, const std::vector<std::string>& fields) {
    const RecordsetPtr cursor = DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from " + table);
    std::vector<std::string> found;
    for (; !cursor->Eof(); cursor->MoveNext()) {
      std::string row;
      for (const std::string& field : fields) {
        if (field != fields.front()) row += "|";
        row += trimRight(ChkNulls(cursor->value(field), "", false).asText());
      }
      found.push_back(row);
    }
    return found;
  }
  static std::vector<std::string> azimuths(const std::string& prefix = "AHD") {
    return rows(prefix + "T0001", {"ATYPE_ID", "HOR_AZ", "HOR_FIELD"});
  }

  TempSuite suite;
  ScriptedDesktop screen;
  DesktopInUse use{screen};

  std::unique_ptr<frmHDAntEditor> form_;

 private:
  std::size_t heardSoFar_ = 0;
};

}  // namespace vantrelix::test
