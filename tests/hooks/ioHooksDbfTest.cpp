#include <filesystem>
#include <gtest/gtest.h>

#include "foundation/dateTime.h"
#include "foundation/text.h"
#include "hooks/IOHooksDBF.h"
#include "platform/FaultPlatform.h"
#include "support/TempFolder.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::failureNumberOf;
using test::TempFolder;

// Table SITES:  SITE    TX_A1GAIN  TX_A1INVRT  MADE
//               North   2.15       true        2026-11-21
//               South   null       null        null
//               West    0          false       2025-01-02
struct Facility {
  explicit Facility(const std::string& path = "SITES.DBF") : table(folder.file(path)) {
    std::filesystem::create_directories(std::filesystem::path(folder.machine(path)).parent_path());
    DbfFile::create(table,
                    {{"SITE", 'C', 8, 0}, {"TX_A1GAIN", 'N', 8, 2}, {"TX_A1INVRT", 'L', 1, 0}, {"MADE", 'D', 8, 0}});
    add("North", 2.15, true, DateTime{2026, 11, 21, 0, 0, 0});
    add("South", Value(), Value(), Value());
    add("West", 0, false, DateTime{2025, 1, 2, 0, 0, 0});
  }
  void add(const Value& site, const Value& gain, const Value& inverted, const Value& made) const {
    test::addCells(table, {{"SITE", site}, {"TX_A1GAIN", gain}, {"TX_A1INVRT", inverted}, {"MADE", made}});
  }
  IOHooksDBF hook(const std::string& field = "TX_A1GAIN") const {
    IOHooksDBF made;
    made.DBFPathName(table);
    made.DBFField(field);
    return made;
  }
  TempFolder folder;
  std::string table;
};

// A system on which folders with a blank have short names.
class ShortNames : public platform::FaultPlatform {
 public:
  ShortNames() : FaultPlatform(platform::current()) {}
  std::optional<std::string> shortName(const std::string& path) override {
    return replaceAll(path, "My Sites", "MYSITE~1");
  }
};

TEST(IoHooksDbf, ANewHookStartsWithItsDefaults) {
  IOHooksDBF hook;
  EXPECT_FALSE(hook.bAllowNull());
  EXPECT_FALSE(hook.DBFBDefault());
  EXPECT_EQ(hook.DBFSDefault() + hook.DBFPathName() + hook.DBFFile() + hook.DBFField(), "");
  EXPECT_EQ(hook.DBFPath() + hook.DBFWhere() + hook.DBFOrder(), "");
  EXPECT_EQ(hook.DBFConnect(), "FoxPro 2.6");
  EXPECT_EQ(hook.DBFSelect(), "*");
  EXPECT_EQ(hook.DBFNValue(), 0);
  EXPECT_EQ(hook.DBFType(), RecordsetType::dynaset);
}

TEST(IoHooksDbf, PutsStoreWhatIsGiven) {
  IOHooksDBF hook;
  hook.DBFPathName("C:\\A\\B.DBF");
  hook.DBFPath("D:\\C\\");
  hook.DBFFile("B.DBF");
  hook.DBFTable("[X]");
  hook.DBFNValue(-1.5);
  hook.DBFConnect("dBase IV");
  hook.DBFType(RecordsetType::snapshot);
  hook.DBFSelect("SITE");
  EXPECT_EQ(hook.DBFPathName(), "C:\\A\\B.DBF");
  EXPECT_EQ(hook.DBFPath(), "D:\\C\\");
  EXPECT_EQ(hook.DBFFile(), "B.DBF");
  EXPECT_EQ(hook.DBFTable(), "[X]");
  EXPECT_EQ(hook.DBFNValue(), -1.5);
  EXPECT_EQ(hook.DBFConnect(), "dBase IV");
  EXPECT_EQ(hook.DBFType(), RecordsetType::snapshot);
  EXPECT_EQ(hook.DBFSelect(), "SITE");
}

TEST(IoHooksDbf, ABlankConnectSelectOrTypeTakesItsStandIn) {
  IOHooksDBF hook;
  hook.DBFConnect("  ");
  hook.DBFSelect("");
  hook.DBFType(RecordsetType{});
  EXPECT_EQ(hook.DBFConnect(), "FoxPro 2.6");
  EXPECT_EQ(hook.DBFSelect(), "*");
  EXPECT_EQ(static_cast<int>(hook.DBFType()), 2);
}

TEST(IoHooksDbf, PathAndTableComeFromThePathNameAndAreFixedByTheirGet) {
  IOHooksDBF hook;
  hook.DBFPathName("B.DBF");
  EXPECT_EQ(hook.DBFPath(), "");
  const Facility facility;
  hook.DBFPathName(facility.table);
  EXPECT_EQ(hook.DBFTable(), TableToken(facility.table));
  EXPECT_EQ(hook.DBFPath(), getShortName(facility.folder.path()) + "\\");
  hook.DBFPath("D:\\");
  hook.DBFTable("[X]");
  EXPECT_EQ(hook.DBFPath() + hook.DBFTable(), "D:\\[X]");
  hook.DBFPath("  ");
  hook.DBFTable("");
  EXPECT_EQ(hook.DBFPath() + hook.DBFTable(), getShortName(facility.folder.path()) + "\\" + TableToken(facility.table));
}

TEST(IoHooksDbf, AFolderWithABlankStandsInShortNameForm) {
  const Facility facility("My Sites/SITES.DBF");
  ShortNames system;
  const platform::Substitute substitute(system);
  IOHooksDBF hook = facility.hook();
  EXPECT_EQ(hook.DBFPath(), facility.folder.path() + "\\MYSITE~1\\");
  EXPECT_EQ(hook.DBFTable(), "[SITES]");
  EXPECT_EQ(hook.DBFPathName(), facility.folder.file("My Sites\\SITES.DBF"));
}

TEST(IoHooksDbf, OpensATableWithBlanksInItsPath) {
  const Facility facility("My Sites/Our Sites.DBF");
  IOHooksDBF hook = facility.hook();
  EXPECT_EQ(hook.DBFPath().back(), '\\');
  EXPECT_EQ(hook.DBFTable(), TableToken(facility.table));
  EXPECT_EQ(hook.DBFSValue(), "2.15");
}

TEST(IoHooksDbf, TheQueryIsMadeOfSelectTableAndWhere) {
  IOHooksDBF hook;
  hook.DBFTable("[SITES]");
  EXPECT_EQ(hook.DBFSQL(), "SELECT * FROM [SITES]");
  hook.DBFSQL("");
  hook.DBFSelect("SITE");
  hook.DBFWhere("TX_A1GAIN > 1");
  EXPECT_EQ(hook.DBFSQL(), "SELECT SITE FROM [SITES] WHERE TX_A1GAIN > 1");
  hook.DBFSQL("Select MADE from [SITES]");
  EXPECT_EQ(hook.DBFSQL(), "Select MADE from [SITES]");
}

TEST(IoHooksDbf, TheOrderClauseRepeatsTheFilter) {
  IOHooksDBF hook;
  hook.DBFTable("[SITES]");
  hook.DBFOrder("SITE");
  EXPECT_EQ(hook.DBFOrder(), "SITE");
  EXPECT_EQ(hook.DBFSQL(), "SELECT * FROM [SITES] ORDER BY ");
  hook.DBFSQL(" ");
  hook.DBFWhere("TX_A1GAIN > 1");
  EXPECT_EQ(hook.DBFSQL(), "SELECT * FROM [SITES] WHERE TX_A1GAIN > 1 ORDER BY TX_A1GAIN > 1");
}

TEST(IoHooksDbf, AnOrderWithoutAFilterIsRefusedWhenTheRecordsetIsAskedFor) {
  const Facility facility;
  IOHooksDBF hook = facility.hook();
  hook.DBFOrder("SITE");
  EXPECT_TRUE(hook.DBFSQL().ends_with(" ORDER BY "));
  EXPECT_EQ(failureNumberOf([&] { hook.DBFRS(); }), failure::badQuery);
  hook.DBFSQL("SELECT * FROM [SITES] ORDER BY SITE DESC");
  hook.DBFField("SITE");
  EXPECT_EQ(trim(hook.DBFSValue()), "West");
}

TEST(IoHooksDbf, TheQueryStaysUntilItOrThePathNameIsPut) {
  const Facility facility;
  IOHooksDBF hook = facility.hook();
  const std::string former = hook.DBFSQL();
  hook.DBFWhere("TX_A1GAIN = 0");
  EXPECT_EQ(hook.DBFWhere(), "TX_A1GAIN = 0");
  EXPECT_EQ(hook.DBFSQL(), former);
  hook.DBFSQL("");
  EXPECT_EQ(hook.DBFSQL(), former + " WHERE TX_A1GAIN = 0");
  hook.DBFWhere("");
  hook.DBFPathName(facility.table);
  EXPECT_EQ(hook.DBFSQL(), former);
}

TEST(IoHooksDbf, OpensDatabaseAndRecordsetOnceAtTheFirstDemand) {
  const Facility facility;
  IOHooksDBF hook = facility.hook();
  hook.DBFWhere("TX_A1GAIN = 0");
  hook.DBFType(RecordsetType::snapshot);
  const RecordsetPtr rows = hook.DBFRS();
  EXPECT_EQ(hook.DBFRS(), rows);
  EXPECT_EQ(rows->RecordCount(), 1);
  EXPECT_EQ(hook.DBFDB(), hook.DBFDB());
  EXPECT_EQ(hook.DBFDB()->connect(), "FoxPro 2.6");
  EXPECT_EQ(failureNumberOf([&] { rows->Edit(); }), failure::readOnlyTable);
}

TEST(IoHooksDbf, HooksShareARecordsetEachWithItsOwnField) {
  const Facility facility;
  IOHooksDBF gain = facility.hook();
  IOHooksDBF site;
  site.DBFRS(gain.DBFRS());
  site.DBFField("SITE");
  EXPECT_EQ(trim(site.DBFSValue()) + " " + gain.DBFSValue(), "North 2.15");
  gain.DBFRS()->MoveLast();
  EXPECT_EQ(trim(site.DBFSValue()) + " " + gain.DBFSValue(), "West 0");
  gain.Disconnect();
  EXPECT_TRUE(site.DBFRS()->isOpen());
  EXPECT_EQ(trim(site.DBFSValue()), "West");
}

TEST(IoHooksDbf, AHostWritesThroughTheRecordset) {
  const Facility facility;
  IOHooksDBF hook = facility.hook();
  hook.DBFSValue("4");
  EXPECT_EQ(hook.DBFSValue(), "2.15");
  hook.DBFRS()->Edit();
  hook.DBFRS()->put(hook.DBFField(), 6.5);
  EXPECT_EQ(hook.DBFSValue(), "6.5");
  hook.DBFRS()->Update();
  EXPECT_EQ(facility.hook().DBFSValue(), "6.5");
}

TEST(IoHooksDbf, PuttingThePathNameClearsAndKeepsTheDatabase) {
  const Facility facility;
  const Facility other;
  other.hook().DBFRS()->Delete();
  IOHooksDBF hook = facility.hook("SITE");
  hook.DBFFile("SITES.DBF");
  EXPECT_EQ(trim(hook.DBFSValue()), "North");
  const DatabasePtr database = hook.DBFDB();
  hook.DBFPathName(other.table);
  EXPECT_EQ(hook.DBFFile(), "");
  EXPECT_EQ(hook.DBFPath(), getShortName(other.folder.path()) + "\\");
  EXPECT_EQ(hook.DBFDB(), database);
  EXPECT_EQ(trim(hook.DBFSValue()), "North");
  hook.DBFDB(DBEngine::OpenDatabase(other.folder.path()));
  hook.DBFRS(nullptr);
  EXPECT_EQ(trim(hook.DBFSValue()), "South");
}

TEST(IoHooksDbf, PuttingThePathNameForgetsTableAndFolderThatWerePut) {
  const Facility facility;
  IOHooksDBF hook;
  hook.DBFTable("[OTHER]");
  hook.DBFPath("D:\\");
  hook.DBFPathName(facility.table);
  EXPECT_EQ(hook.DBFTable(), TableToken(facility.table));
  EXPECT_EQ(hook.DBFPath(), getShortName(facility.folder.path()) + "\\");
}

TEST(IoHooksDbf, FindTellsWhetherARowMeetsTheCriterionAndStaysThere) {
  const Facility facility;
  IOHooksDBF hook = facility.hook();
  EXPECT_TRUE(hook.DBFFind("SITE = 'West'"));
  EXPECT_EQ(hook.DBFSValue(), "0");
  EXPECT_FALSE(hook.DBFFind("SITE = 'East'"));
  EXPECT_TRUE(hook.DBFRS()->NoMatch());
  EXPECT_EQ(failureNumberOf([&] { hook.DBFFind("SITE = "); }), failure::badQuery);
}

TEST(IoHooksDbf, AValueIsReadAsText) {
  const Facility facility;
  IOHooksDBF hook = facility.hook();
  EXPECT_EQ(hook.DBFSValue(), "2.15");
  hook.DBFField("TX_A1INVRT");
  EXPECT_EQ(hook.DBFSValue(), "True");
  hook.DBFField("MADE");
  EXPECT_EQ(hook.DBFSValue(), shortDate(DateTime{2026, 11, 21, 0, 0, 0}));
  hook.DBFField("site");
  EXPECT_EQ(hook.DBFSValue(), "North   ");
}

TEST(IoHooksDbf, ANullFieldReadsAsTheDefaultOrBlankWhereNullIsAllowed) {
  const Facility facility;
  IOHooksDBF hook = facility.hook();
  hook.DBFSDefault("0");
  EXPECT_EQ(hook.DBFSDefault(), "0");
  hook.DBFRS()->MoveNext();
  EXPECT_EQ(hook.DBFSValue(), "0");
  hook.bAllowNull(true);
  EXPECT_TRUE(hook.bAllowNull());
  EXPECT_EQ(hook.DBFSValue(), "");
  hook.DBFRS()->MovePrevious();
  EXPECT_EQ(hook.DBFSValue(), "2.15");
}

TEST(IoHooksDbf, ABlankTextFieldIsNull) {
  const Facility facility;
  facility.add("", 1, Value(), Value());
  IOHooksDBF hook = facility.hook("SITE");
  hook.DBFSDefault("unnamed");
  hook.DBFRS()->MoveLast();
  EXPECT_EQ(hook.DBFSValue(), "unnamed");
  hook.bAllowNull(true);
  EXPECT_EQ(hook.DBFSValue(), "");
}

TEST(IoHooksDbf, ANullLogicalReadsAsTheDefault) {
  const Facility facility;
  IOHooksDBF hook = facility.hook("TX_A1INVRT");
  hook.DBFRS()->MoveNext();
  EXPECT_FALSE(hook.DBFBValue());
  hook.DBFBDefault(true);
  EXPECT_TRUE(hook.DBFBDefault());
  EXPECT_TRUE(hook.DBFBValue());
  hook.DBFRS()->MoveNext();
  EXPECT_FALSE(hook.DBFBValue());
}

TEST(IoHooksDbf, ANullLogicalRepeatsThePreviousRowsValueWhereNullIsAllowed) {
  const Facility facility;
  IOHooksDBF hook = facility.hook("TX_A1INVRT");
  hook.bAllowNull(true);
  EXPECT_TRUE(hook.DBFBValue());
  hook.DBFRS()->MoveNext();
  EXPECT_TRUE(hook.DBFBValue());
  hook.DBFRS()->MoveLast();
  EXPECT_FALSE(hook.DBFBValue());
  hook.DBFRS()->MovePrevious();
  hook.DBFBDefault(true);
  EXPECT_FALSE(hook.DBFBValue());
  hook.DBFBValue(true);
  EXPECT_TRUE(hook.DBFBValue());
}

TEST(IoHooksDbf, ANumberIsTrueWhereItIsNotZeroAndAPlainTextIsAMismatch) {
  const Facility facility;
  IOHooksDBF hook = facility.hook();
  EXPECT_TRUE(hook.DBFBValue());
  hook.DBFRS()->MoveLast();
  EXPECT_FALSE(hook.DBFBValue());
  hook.DBFField("SITE");
  EXPECT_EQ(failureNumberOf([&] { hook.DBFBValue(); }), failure::typeMismatch);
}

TEST(IoHooksDbf, DisconnectForgetsTheTableAndKeepsDefaultsAndType) {
  const Facility facility;
  IOHooksDBF hook = facility.hook();
  hook.bAllowNull(true);
  hook.DBFBDefault(true);
  hook.DBFSDefault("0");
  hook.DBFType(RecordsetType::snapshot);
  const DatabasePtr database = hook.DBFDB();
  const RecordsetPtr rows = hook.DBFRS();
  EXPECT_TRUE(hook.Disconnect().isNull());
  EXPECT_TRUE(rows->isOpen());
  EXPECT_EQ(database.use_count(), 1);
  EXPECT_EQ(rows.use_count(), 1);
  EXPECT_TRUE(hook.bAllowNull() && hook.DBFBDefault());
  EXPECT_EQ(hook.DBFSDefault(), "0");
  EXPECT_EQ(hook.DBFType(), RecordsetType::snapshot);
}

TEST(IoHooksDbf, DisconnectBlanksItsTexts) {
  const Facility facility;
  IOHooksDBF hook = facility.hook();
  hook.DBFFile("SITES.DBF");
  hook.DBFConnect("dBase IV");
  hook.DBFSelect("TX_A1GAIN");
  hook.DBFWhere("TX_A1GAIN > 1");
  hook.DBFOrder("SITE");
  hook.DBFNValue(3);
  hook.DBFSQL("Select * from [SITES]");
  EXPECT_EQ(hook.DBFSValue(), "2.15");
  hook.Disconnect();
  EXPECT_EQ(hook.DBFPathName() + hook.DBFPath() + hook.DBFFile() + hook.DBFField() + hook.DBFWhere() + hook.DBFOrder(),
            "");
  EXPECT_EQ(hook.DBFConnect(), "FoxPro 2.6");
  EXPECT_EQ(hook.DBFSelect(), "*");
  EXPECT_EQ(hook.DBFNValue(), 0);
  hook.DBFTable("[T]");
  EXPECT_EQ(hook.DBFSQL(), "SELECT * FROM [T]");
}

TEST(IoHooksDbf, AFieldThatIsNotThereFailsAndLeavesTheLastValue) {
  const Facility facility;
  IOHooksDBF hook = facility.hook();
  EXPECT_EQ(hook.DBFSValue(), "2.15");
  hook.DBFField("TX_A1POL");
  std::string text;
  EXPECT_EQ(failureNumberOf([&] { hook.DBFSValue(); }, &text), failure::noSuchField);
  EXPECT_NE(text.find("TX_A1POL"), std::string::npos);
  EXPECT_EQ(failureNumberOf([&] { hook.DBFBValue(); }), failure::noSuchField);
  hook.DBFField("");
  EXPECT_EQ(failureNumberOf([&] { hook.DBFSValue(); }), failure::noSuchField);
}

TEST(IoHooksDbf, ARecordsetAtItsEndOrClosedFails) {
  const Facility facility;
  IOHooksDBF hook = facility.hook();
  hook.DBFRS()->MoveLast();
  hook.DBFRS()->MoveNext();
  EXPECT_EQ(failureNumberOf([&] { hook.DBFSValue(); }), failure::noCurrentRecord);
  EXPECT_EQ(failureNumberOf([&] { hook.DBFBValue(); }), failure::noCurrentRecord);
  hook.DBFRS()->Close();
  EXPECT_EQ(failureNumberOf([&] { hook.DBFSValue(); }), failure::objectNotSet);
  EXPECT_EQ(failureNumberOf([&] { hook.DBFFind("SITE = 'West'"); }), failure::objectNotSet);
}

TEST(IoHooksDbf, AHookWithoutATableFailsAndNamesTheRemedy) {
  IOHooksDBF hook;
  std::string text;
  EXPECT_EQ(failureNumberOf([&] { hook.DBFSValue(); }, &text), failure::badPath);
  EXPECT_NE(text.find("Put the full path of a table file"), std::string::npos);
  hook.DBFPathName("SITES.DBF");
  EXPECT_EQ(failureNumberOf([&] { hook.DBFBValue(); }, &text), failure::badPath);
  EXPECT_NE(text.find("'SITES.DBF'"), std::string::npos);
}

TEST(IoHooksDbf, ATableOrFolderThatDoesNotExistFails) {
  const TempFolder folder;
  IOHooksDBF hook;
  hook.DBFPathName(folder.file("NONE.DBF"));
  EXPECT_EQ(failureNumberOf([&] { hook.DBFRS(); }), failure::noSuchTable);
  EXPECT_FALSE(folder.exists("NONE.DBF"));
  hook.DBFDB(nullptr);
  hook.DBFPathName(folder.file("none\\SITES.DBF"));
  EXPECT_EQ(failureNumberOf([&] { hook.DBFRS(); }), failure::badPath);
}

TEST(IoHooksDbf, ATableRemovedWhileBoundFailsAtTheNextOpening) {
  const Facility facility;
  IOHooksDBF hook = facility.hook();
  EXPECT_EQ(hook.DBFSValue(), "2.15");
  std::filesystem::remove(facility.folder.machine("SITES.DBF"));
  EXPECT_EQ(hook.DBFSValue(), "2.15");
  hook.DBFPathName(facility.table);
  EXPECT_EQ(failureNumberOf([&] { hook.DBFSValue(); }), failure::noSuchTable);
  EXPECT_EQ(failureNumberOf([&] { hook.DBFRS(); }), failure::noSuchTable);
}

}  // namespace
}  // namespace vantrelix
