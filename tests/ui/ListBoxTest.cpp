#include <gtest/gtest.h>

#include "ui/ListBox.h"

namespace vantrelix {
namespace {

class ListBoxTest : public testing::Test {
 protected:
  ListBoxTest() {
    list.setEntries({"a", "b", "c"});
    list.click.listen([this] { heard += "click " + list.text() + ";"; });
    list.doubleClick.listen([this] { heard += "double " + list.text() + ";"; });
    list.changed.listen([this] { ++changes; });
  }
  ListBox list{"List1"};
  std::string heard;
  int changes = 0;
};

TEST_F(ListBoxTest, BeginsWithoutASelection) {
  EXPECT_EQ(list.listIndex(), -1);
  EXPECT_EQ(list.text(), "");
  EXPECT_FALSE(list.fixedPitch());
}

TEST_F(ListBoxTest, TheProgramSelectsWithoutAnEvent) {
  list.setListIndex(2);
  EXPECT_EQ(list.text(), "c");
  list.setListIndex(3);
  EXPECT_EQ(list.listIndex(), -1);
  list.setListIndex(0);
  list.setListIndex(-5);
  EXPECT_EQ(list.listIndex(), -1);
  EXPECT_EQ(heard, "");
  EXPECT_EQ(changes, 4);
}

TEST_F(ListBoxTest, TheUserSelectsWithAClickEachTime) {
  list.userSelect(1);
  list.userSelect(1);
  list.userDoubleClick(2);
  EXPECT_EQ(heard, "click b;click b;double c;");
}

TEST_F(ListBoxTest, AnEntryThatIsNotThereCannotBeSelectedByTheUser) {
  list.setListIndex(0);
  list.userSelect(3);
  list.userSelect(-1);
  list.userDoubleClick(3);
  EXPECT_EQ(list.text(), "a");
  EXPECT_EQ(heard, "");
}

TEST_F(ListBoxTest, AListOutOfReachTakesNothing) {
  list.setEnabled(false);
  list.userSelect(1);
  list.setEnabled(true);
  list.setVisible(false);
  list.userDoubleClick(1);
  EXPECT_EQ(list.listIndex(), -1);
  EXPECT_EQ(heard, "");
}

TEST_F(ListBoxTest, NewEntriesSelectNothingAndAnAddedOneKeepsTheSelection) {
  list.setListIndex(1);
  list.addItem("d");
  EXPECT_EQ(list.text(), "b");
  EXPECT_EQ(list.entries().size(), 4U);
  list.setEntries({"x", "y"});
  EXPECT_EQ(list.listIndex(), -1);
  list.setListIndex(1);
  list.clear();
  EXPECT_EQ(list.listIndex(), -1);
  EXPECT_TRUE(list.entries().empty());
}

}  // namespace
}  // namespace vantrelix
