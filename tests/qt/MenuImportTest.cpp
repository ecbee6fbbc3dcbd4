// The whole road of an import by the keyboard: the editor's button, its menu, the files, the question, the previews,
// and what the list and the tables hold afterwards.
#include <gmock/gmock.h>
#include <utility>

#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>

#include "qt/AntennaEditorFixture.h"
#include "support/TempFolder.h"

namespace vantrelix::qt {
namespace {

using testing::ElementsAre;
using testing::IsSupersetOf;

using Keys = std::pair<Qt::Key, Qt::KeyboardModifiers>;

// In milliseconds.
constexpr int kBetweenLooks = 5;
constexpr int kLongestAnswer = 2000;
constexpr int kLongestImport = 8000;

class MenuImport : public AntennaEditorTest {
 protected:
  MenuImport() {
    write("Alpha", 10);
    write("Beta", 11);
    write("Gamma", 12);
    QObject::connect(&user_, &QTimer::timeout, &user_, [this] { act(); });
    user_.start(kBetweenLooks);
    sinceBegin_.start();
  }

  // Presses the button and goes through all that comes up, with the keys one in each preview.
  void import(std::deque<Keys> keys) {
    keys_ = std::move(keys);
    find("Command1_" + std::to_string(frmHDAntEditor::importing)).setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_TRUE(keys_.empty()) << keys_.size() << " previews did not come up";
  }

  const std::vector<std::string>& seen() const { return seen_; }
  std::string progressShown() { return fromQt(find<QLabel>("lblProgress").text()); }
  std::string title() { return fromQt(window().windowTitle()); }

 private:
  void write(const std::string& name, int gain) const {
    files_.write(name + ".msi", "NAME " + name + "\nFREQUENCY 450\nGAIN " + std::to_string(gain) +
                                    " dBd\nHORIZONTAL 2\n0 0\n90 3\nVERTICAL 1\n0 0\n");
  }

  void act() {
    if (sinceBegin_.hasExpired(kLongestImport)) return giveUp();
    if (!window_) return;
    if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) return choose(*menu);
    QWidget* dialog = QApplication::activeModalWidget();
    // It has the keyboard before the user acts.
    if (!dialog || dialog == window_ || !dialog->isActiveWindow()) return;
    if (!dialog->isAncestorOf(QApplication::focusWidget())) return;
    if (auto* files = qobject_cast<QFileDialog*>(dialog)) {
      choose(*files);
    } else if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
      answer(*box);
    } else if (dialog->findChild<QWidget*>("picHor")) {
      answerPreview(*dialog);
    }
  }
  // Takes away what is open, the uppermost first and the editor last.
  void giveUp() {
    ADD_FAILURE() << "The import does not come to its end; last seen: " << (seen_.empty() ? "nothing" : seen_.back());
    QWidget* uppermost = QApplication::activePopupWidget();
    if (!uppermost) uppermost = QApplication::activeModalWidget();
    if (uppermost && window_ && uppermost != window_) {
      uppermost->close();
    } else {
      form().hide();
    }
  }

  void choose(QMenu& menu) {
    if (!menu.activeAction()) return;
    seen_.push_back("menu of " + fromQt(menu.actions().first()->text()));
    EXPECT_EQ(menu.actions().size(), static_cast<qsizetype>(form().mnuImport.items().size()));
    for (qsizetype i = 0; i < menu.actions().size() && menu.activeAction()->text() != "Generic"; ++i) {
      QTest::keyClick(&menu, Qt::Key_Down);
    }
    EXPECT_EQ(fromQt(menu.activeAction()->text()), "Generic");
    QTest::keyClick(&menu, Qt::Key_Return);
  }
  void choose(QFileDialog& files) {
    seen_.push_back(fromQt(files.windowTitle()));
    files.setDirectory(toQt(files_.machine()));
    files.findChild<QLineEdit*>("fileNameEdit")->setText(R"("Alpha.msi" "Beta.msi" "Gamma.msi")");
    static_cast<QDialog&>(files).accept();
  }
  void answer(QMessageBox& box) {
    seen_.push_back(fromQt(box.text().section('\n', 0, 0)));
    if (box.windowTitle() == "Preview Antenna Patterns?") {
      answer(box, {Qt::Key_Y, Qt::AltModifier});
    } else {
      answer(box, {Qt::Key_Escape, Qt::NoModifier});
    }
  }
  void answerPreview(QWidget& preview) {
    seen_.push_back(progressShown());
    Keys keys = {Qt::Key_Escape, Qt::NoModifier};
    if (keys_.empty()) {
      ADD_FAILURE() << "One preview too many: " << seen_.back();
    } else {
      keys = keys_.front();
      keys_.pop_front();
    }
    answer(preview, keys);
  }
  // A button pressed by its letter stays down for a moment before it acts.
  static void answer(QWidget& dialog, const Keys& keys) {
    const QPointer<QWidget> asked = &dialog;
    press(keys.first, keys.second);
    EXPECT_TRUE(QTest::qWaitFor([&asked] { return !asked || !asked->isVisible(); }, kLongestAnswer));
  }

  // The question is asked in its real box.
  QtDesktop real_;
  DesktopInUse realInUse_{real_};
  vantrelix::test::TempFolder files_;
  QTimer user_;
  QElapsedTimer sinceBegin_;
  std::deque<Keys> keys_;
  std::vector<std::string> seen_;
};

TEST_F(MenuImport, AddSkipAndNoPreviewLeaveTheFirstAndTheThirdInTheListAndTheTables) {
  edit([this] {
    import({Keys(Qt::Key_Return, Qt::NoModifier), Keys(Qt::Key_S, Qt::AltModifier), Keys(Qt::Key_N, Qt::AltModifier)});
    EXPECT_THAT(seen(), ElementsAre("menu of NSMA Format", "GENERIC Files to Read", "3 files found.",
                                    "Working on file 1 of 3: Alpha.msi", "Working on file 2 of 3: Beta.msi",
                                    "Working on file 3 of 3: Gamma.msi"));
    EXPECT_THAT(descriptions(), ElementsAre("Alpha", "Corner", "Dish", "Gamma", "Panel"));
    EXPECT_EQ(progressShown(), "");
    EXPECT_EQ(title(), "Antenna Database Editor: Test Library (AMST0001)  5 records");
  });
  EXPECT_THAT(rows("AMST0001", {"ATYPE_ID", "ANTENNA"}),
              ElementsAre("T00010000001|Panel", "T00010000002|Corner", "T00010000003|Dish", "T00010000004|Alpha",
                          "T00010000005|Gamma"));
  EXPECT_EQ(rows("AVDT0001", {"ATYPE_ID"}).size(), 3U * 3U + 2U * 1U);
  EXPECT_EQ(azimuths().size(), 3U * 4U + 2U * 2U);
  EXPECT_THAT(azimuths(),
              IsSupersetOf({"T00010000004|0|10", "T00010000004|90|7", "T00010000005|0|12", "T00010000005|90|9"}));
}

TEST_F(MenuImport, EscapeInTheFirstPreviewAddsNothing) {
  edit([this] {
    import({Keys(Qt::Key_Escape, Qt::NoModifier)});
    EXPECT_THAT(seen(), ElementsAre("menu of NSMA Format", "GENERIC Files to Read", "3 files found.",
                                    "Working on file 1 of 3: Alpha.msi"));
    EXPECT_THAT(descriptions(), ElementsAre("Corner", "Dish", "Panel"));
    EXPECT_EQ(progressShown(), "");
    EXPECT_EQ(title(), "Antenna Database Editor: Test Library (AMST0001)  3 records");
  });
  EXPECT_THAT(rows("AMST0001", {"ANTENNA"}), ElementsAre("Panel", "Corner", "Dish"));
  EXPECT_EQ(azimuths().size(), 3U * 4U);
  EXPECT_EQ(rows("AVDT0001", {"ATYPE_ID"}).size(), 3U * 3U);
}

}  // namespace
}  // namespace vantrelix::qt
