#include <gtest/gtest.h>

#include "ui/Desktop.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix {
namespace {

Message question(MsgButtons buttons, int defaultButton = 1) {
  return {"Title", "Text", buttons, MsgIcon::question, defaultButton};
}

TEST(DesktopInUse, TakesTheMessagesOfTheLowerLayersForItsLifetime) {
  ScriptedDesktop outer, inner;
  const DesktopInUse useOuter(outer);
  {
    const DesktopInUse useInner(inner);
    showInformation("A", "inner");
    EXPECT_EQ(&desktop(), &inner);
  }
  showInformation("B", "outer");
  EXPECT_EQ(&desktop(), &outer);
  ASSERT_EQ(inner.shown().size(), 1u);
  EXPECT_EQ(inner.shown()[0].message.text, "inner");
  ASSERT_EQ(outer.shown().size(), 1u);
  EXPECT_EQ(outer.shown()[0].message.title, "B");
}

TEST(Desktop, WithoutOneInUseAMessageIsAnsweredByItsDefaultButton) {
  EXPECT_EQ(desktop().messageBox(question(MsgButtons::okCancel, 2)), MsgAnswer::cancel);
  EXPECT_EQ(desktop().messageBox(question(MsgButtons::yesNo, 1)), MsgAnswer::yes);
}

TEST(ScriptedDesktop, AnswersFromTheScriptThenByThePolicyThenByTheDefaultButton) {
  ScriptedDesktop scripted;
  scripted.answers = {MsgAnswer::no};
  EXPECT_EQ(scripted.messageBox(question(MsgButtons::yesNoCancel)), MsgAnswer::no);
  EXPECT_EQ(scripted.messageBox(question(MsgButtons::yesNoCancel, 3)), MsgAnswer::cancel);
  scripted.policy = [](const Message&) { return MsgAnswer::ignore; };
  EXPECT_EQ(scripted.messageBox(question(MsgButtons::yesNoCancel)), MsgAnswer::ignore);
  ASSERT_EQ(scripted.shown().size(), 3u);
  EXPECT_EQ(scripted.shown()[0].answer, MsgAnswer::no);
  EXPECT_EQ(scripted.shown()[2].answer, MsgAnswer::ignore);
}

TEST(ScriptedDesktop, AnAssumedAnswerTakesTheNearestButton) {
  using Assume = ScriptedDesktop::Assume;
  const auto answer = [](Assume what, MsgButtons buttons) { return ScriptedDesktop::assume(what)(question(buttons)); };
  EXPECT_EQ(answer(Assume::yes, MsgButtons::okCancel), MsgAnswer::ok);
  EXPECT_EQ(answer(Assume::no, MsgButtons::okCancel), MsgAnswer::cancel);
  EXPECT_EQ(answer(Assume::cancel, MsgButtons::okCancel), MsgAnswer::cancel);
  EXPECT_EQ(answer(Assume::yes, MsgButtons::yesNo), MsgAnswer::yes);
  EXPECT_EQ(answer(Assume::cancel, MsgButtons::yesNo), MsgAnswer::no);
  EXPECT_EQ(answer(Assume::no, MsgButtons::yesNoCancel), MsgAnswer::no);
  EXPECT_EQ(answer(Assume::cancel, MsgButtons::yesNoCancel), MsgAnswer::cancel);
  for (const Assume what : {Assume::yes, Assume::no, Assume::cancel}) {
    EXPECT_EQ(answer(what, MsgButtons::ok), MsgAnswer::ok);
    EXPECT_NE(answer(what, MsgButtons::retryCancel), MsgAnswer::retry);
    EXPECT_NE(answer(what, MsgButtons::abortRetryIgnore), MsgAnswer::retry);
  }
}

TEST(ScriptedDesktop, CountsTurnsAndKeepsMenus) {
  ScriptedDesktop scripted;
  int acted = 0;
  scripted.doEvents();
  scripted.onTurn = [&] { ++acted; };
  scripted.doEvents();
  Menu menu("mnu");
  CommandButton button("cmd");
  scripted.popupMenu(menu);
  scripted.popupMenu(menu, &button);
  EXPECT_EQ(scripted.turns(), 2);
  EXPECT_EQ(acted, 1);
  EXPECT_EQ(scripted.menusShown(), (std::vector<Menu*>{&menu, &menu}));
  EXPECT_EQ(scripted.menuPlaces(), (std::vector<const Widget*>{nullptr, &button}));
}

}  // namespace
}  // namespace vantrelix
