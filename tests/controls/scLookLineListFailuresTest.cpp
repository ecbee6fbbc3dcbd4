// The list of the lines of all libraries where a library, a row or the control itself is gone.
#include "controls/LookLineFixture.h"
#include "dialogs/frmListSelect.h"

namespace vantrelix {
namespace {

class LookLineListFailure : public test::LookLineTest {};

TEST_F(LookLineListFailure, LogsALineWithoutAnIdAndPassesItOver) {
  makeLines();
  addLine("T0001", "  ", "Nameless", {});
  control.LookListLoad();
  std::string file, id;
  control.GetLineFileID("Nameless", file, id);
  EXPECT_EQ(file + id, "");
  control.GetLineFileID("  Half inch foam ", file, id);
  EXPECT_EQ(file + " " + id, "LMST0001 L2");
  double low = -1, high = -1;
  control.GetLineFreqRange("Half inch foam", low, high);
  EXPECT_EQ(low, 100);
  EXPECT_EQ(high, 1000);
  EXPECT_NE(suite.log().find("Bad TX Line in LMST0001"), std::string::npos);
}

TEST_F(LookLineListFailure, IsEmptyWithoutALibraryAndChoosesNothing) {
  control.sValueDesc("mine");
  control.sValueLoss("4");
  screen.onModal["frmListSelect"] = [](Form& form) {
    auto& list = dynamic_cast<frmListSelect&>(form);
    EXPECT_TRUE(list.List1.entries().empty());
    list.cmdContinue.userClick();
    list.userClose();
  };
  control.cmdLook.userClick();
  EXPECT_EQ(control.sValueDesc() + control.sValueLoss(), "mine4.00");
  EXPECT_EQ(heard(), "");
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(LookLineListFailure, ChoosesNothingWhereItsLineWentWhileItWasOpen) {
  makeLines();
  makeLibrary("T0002");
  addLine("T0002", "M1", "Other", {{1, 1}, {2, 2}});
  control.sValueLoss("4");
  screen.onModal["frmListSelect"] = [&](Form& form) {
    auto& list = dynamic_cast<frmListSelect&>(form);
    list.List1.userSelect(1);
    platform::current().remove(table("LMST0001"));
    control.LookListLoad();
    list.List1.userSelect(1);
    list.cmdContinue.userClick();
  };
  control.cmdLook.userClick();
  EXPECT_EQ(control.sValueFile() + control.sValueLoss(), "4.00");
  EXPECT_EQ(heard(), "");
}

TEST_F(LookLineListFailure, ReportsAListThatCannotBeShown) {
  makeLines();
  screen.onModal["frmListSelect"] = [](Form&) { throw RunTimeFailure(failure::overflow, "surface lost"); };
  control.cmdLook.userClick();
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_NE(screen.shown()[0].message.text.find("surface lost"), std::string::npos);
}

TEST_F(LookLineListFailure, LogsALibraryThatCannotBeReadAndListsTheOthers) {
  makeLines();
  suite.folder().write("LINES.TMP", "no table");
  platform::current().rename(suite.file("LINES.TMP"), table("LMSA0001"));
  std::size_t count = 0;
  screen.onModal["frmListSelect"] = [&](Form& form) {
    count = dynamic_cast<frmListSelect&>(form).List1.entries().size();
  };
  control.cmdLook.userClick();
  EXPECT_EQ(count, 2U);
  EXPECT_NE(suite.log().find("LMSA0001"), std::string::npos);
}

TEST_F(LookLineListFailure, MayLoseItsControlWhileItIsOpenAndAfterwards) {
  makeLines();
  for (const bool afterwards : {false, true}) {
    auto own = std::make_unique<scLookLine>();
    if (afterwards) own->ChangeLine.listen([&] { own.reset(); });
    screen.onModal["frmListSelect"] = [&](Form& form) {
      auto& list = dynamic_cast<frmListSelect&>(form);
      if (!afterwards) own.reset();
      list.List1.userSelect(1);
      list.cmdContinue.userClick();
    };
    own->cmdLook.userClick();
    EXPECT_EQ(own, nullptr);
  }
}

TEST_F(LookLineListFailure, MayLoseItsControlOnAnAlertOfTheLineTaken) {
  makeLines();
  addLine("T0001", "L3", "No points", {});
  auto own = std::make_unique<scLookLine>();
  own->sValueLen("5");
  own->Freq(100);
  own->NewAlert.listen([&] { own.reset(); });
  screen.onModal["frmListSelect"] = [](Form& form) { dynamic_cast<frmListSelect&>(form).List1.userDoubleClick(2); };
  own->cmdLook.userClick();
  EXPECT_EQ(own, nullptr);
}

}  // namespace
}  // namespace vantrelix
