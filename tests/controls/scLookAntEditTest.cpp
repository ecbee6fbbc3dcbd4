// The antenna lookup control and a record that its host edits.
#include <gmock/gmock.h>

#include "controls/RecordFixture.h"
#include "platform/RunTimeFailure.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class LookAntEdit : public test::RecordTest {
 protected:
  LookAntEdit() { bind(); }

  // Whether the control leaves the edit to the host: Save then fails on a record that the host has not begun.
  bool active() { return control.Save().find("Error: 3020 ") != std::string::npos; }
  // The record off its rows, before them and behind them.
  void standBefore() const {
    record->MoveFirst();
    record->MovePrevious();
  }
  void standBehind() const {
    record->MoveLast();
    record->MoveNext();
  }
  void removeRows() {
    for (; !record->Eof(); record->MoveNext()) record->Delete();
    record = open();
    bind(control, record);
  }
};

TEST_F(LookAntEdit, IsNotActiveAtFirst) { EXPECT_FALSE(active()); }

TEST_F(LookAntEdit, IsGrantedOnARowInSilence) {
  Value told("as it was");
  EXPECT_TRUE(control.bEdit(false, &told).boolean());
  EXPECT_EQ(told.text(), "as it was");
  EXPECT_TRUE(screen.shown().empty());
  EXPECT_TRUE(active());
}

TEST_F(LookAntEdit, IsNotGrantedOffTheRowsAndNotTold) {
  standBefore();
  EXPECT_FALSE(control.bEdit().boolean());
  standBehind();
  EXPECT_FALSE(control.bEdit().boolean());
  record->MoveFirst();
  removeRows();
  EXPECT_FALSE(control.bEdit().boolean());
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(LookAntEdit, IsNotGrantedOnTheLastRowOnceItIsDeleted) {
  record->Delete();
  record->MoveNext();
  record->Delete();
  ASSERT_FALSE(record->Bof() || record->Eof());
  EXPECT_FALSE(control.bEdit().boolean());
}

TEST_F(LookAntEdit, OnceGrantedStaysGrantedOffTheRows) {
  control.Edit();
  standBehind();
  EXPECT_TRUE(control.bEdit().boolean());
}

TEST_F(LookAntEdit, WithoutTheHookOfTheFileIsRefusedWithTheSupportAddress) {
  setINI("CONFIG", "SupportAddress", getSuiteINI(), "help@example.org");
  control.Edit();
  const IOHooksDBFPtr file = control.HookDBFFile();
  control.HookDBFFile(nullptr);
  Value told;
  EXPECT_FALSE(control.bEdit(false, &told).boolean());
  ASSERT_EQ(screen.shown().size(), 1U);
  const Message& message = screen.shown()[0].message;
  EXPECT_EQ(message.title, "No Access");
  EXPECT_EQ(message.icon, MsgIcon::information);
  EXPECT_EQ(message.buttons, MsgButtons::ok);
  EXPECT_THAT(message.text, StartsWith("scLookAnt\r\n"));
  EXPECT_THAT(message.text, HasSubstr("help@example.org"));
  EXPECT_EQ(told.text(), message.text);
  control.HookDBFFile(file);
  EXPECT_FALSE(active());
}

TEST_F(LookAntEdit, IsRefusedQuietlyWhereAskedSilently) {
  control.HookDBFFile(nullptr);
  EXPECT_FALSE(control.bEdit(true).boolean());
  EXPECT_TRUE(screen.shown().empty());
  Value told;
  EXPECT_FALSE(control.bEdit(true, &told).boolean());
  EXPECT_THAT(told.text(), StartsWith("scLookAnt\r\n"));
}

TEST_F(LookAntEdit, BeginsOnARowAndEndsByUpdateOrCancelling) {
  control.Edit();
  EXPECT_TRUE(active());
  control.EditUpdate();
  EXPECT_FALSE(active());
  control.Edit();
  control.CancelEdit();
  EXPECT_FALSE(active());
  control.CancelEdit();
  EXPECT_FALSE(active());
}

TEST_F(LookAntEdit, NeitherBeginsNorEndsOffTheRows) {
  for (const bool behind : {false, true}) {
    const auto leave = [&] { behind ? standBehind() : standBefore(); };
    leave();
    control.Edit();
    record->MoveFirst();
    EXPECT_FALSE(active());
    control.Edit();
    leave();
    control.EditUpdate();
    control.CancelEdit();
    record->MoveFirst();
    EXPECT_TRUE(active());
    control.CancelEdit();
  }
}

TEST_F(LookAntEdit, NeitherBeginsNorEndsWithoutTheHookOfTheFile) {
  const IOHooksDBFPtr file = control.HookDBFFile();
  control.HookDBFFile(nullptr);
  control.Edit();
  control.HookDBFFile(file);
  EXPECT_FALSE(active());
  control.Edit();
  control.HookDBFFile(nullptr);
  control.EditUpdate();
  control.CancelEdit();
  control.HookDBFFile(file);
  EXPECT_TRUE(active());
}

TEST_F(LookAntEdit, TouchesNoRecord) {
  control.Edit();
  EXPECT_FALSE(record->editing());
  record->Edit();
  record->put("TX_A1TYP", "the host's");
  control.EditUpdate();
  EXPECT_TRUE(record->editing());
  control.Edit();
  control.CancelEdit();
  EXPECT_TRUE(record->editing());
  record->Update();
  EXPECT_EQ(inTable("TX_A1TYP"), "the host's");
}

TEST_F(LookAntEdit, PassesAFailureOfItsHookOn) {
  record->Close();
  EXPECT_EQ(test::failureNumberOf([&] { control.bEdit(); }), failure::objectNotSet);
  EXPECT_EQ(test::failureNumberOf([&] { control.Edit(); }), failure::objectNotSet);
  EXPECT_EQ(test::failureNumberOf([&] { control.EditUpdate(); }), failure::objectNotSet);
  EXPECT_EQ(test::failureNumberOf([&] { control.CancelEdit(); }), 0);
}

TEST_F(LookAntEdit, OfASharedRecordTakesTheFirstFieldAlone) {
  putOthers();
  control.Edit();
  record->Edit();
  EXPECT_THAT(control.Save(), StartsWith("Error in Antenna Lookup SaveDBF\r\nField: TX_A1TID Value: ID2 Error: 3020 "));
  EXPECT_EQ(inTable("TX_A1FNM"), "AMSN0002");
  EXPECT_EQ(inTable("TX_A1TID"), "ID1");
}

TEST_F(LookAntEdit, OfARecordOfItsOwnForEachHookTakesAllFields) {
  putOthers();
  for (const test::BoundValue& value : test::kBoundValues) {
    const RecordsetPtr rows = open();
    (control.*value.dbf)(hookFor(rows, value.field));
    rows->Edit();
  }
  control.Edit();
  EXPECT_EQ(control.Save(), "");
  EXPECT_EQ(inTable("TX_A1FNM") + inTable("TX_A1MDIR") + inTable("TX_A1POL"), "AMSN0002180cir");
}

TEST_F(LookAntEdit, OfTheHostIsNotDroppedByASaveThatFails) {
  control.sValueFile("a name that is too wide");
  control.Edit();
  record->Edit();
  record->put("TX_A1TYP", "the host's");
  EXPECT_THAT(control.Save(), HasSubstr("Field: TX_A1FNM Value: a name that is too wide Error: 3163 "));
  ASSERT_TRUE(record->editing());
  record->Update();
  EXPECT_EQ(inTable("TX_A1TYP"), "the host's");
}

}  // namespace
}  // namespace vantrelix
