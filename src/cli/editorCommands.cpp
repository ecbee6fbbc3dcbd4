// What the antenna editor does, on an editor that is never shown.
#include <CLI/CLI.hpp>
#include <memory>
#include <optional>

#include "cli/commandLine.h"
#include "cli/openEditor.h"
#include "editor/correctAntPattern.h"
#include "editor/frmHDAntEditor.h"
#include "editor/okAntPattern.h"
#include "editor/showCuts.h"
#include "foundation/errHand.h"
#include "foundation/text.h"

namespace vantrelix::cli {

namespace {

struct EditorArguments {
  std::string library, id;
  std::vector<std::string> ids;
};

// --- check.

class Check {
 public:
  Check(Session& session, frmHDAntEditor& form) : session_(session), form_(form) {}

  void all() {
    const int count = form_.TDBGridAMS.dataRowCount();
    const LibraryCuts cuts(form_);
    for (int row = 0; row < count; ++row) {
      session_.progress("Checking antenna " + std::to_string(row + 1) + " of " + std::to_string(count));
      const Value id = form_.TDBGridAMS.value(row, "ATYPE_ID");
      test(trim(ChkNulls(id, "", false).asText()), [&] { cuts.show(row); });
    }
  }

  void named(const std::vector<std::string>& ids) {
    // A query for each of many would take longer than to read the whole library.
    constexpr std::size_t kFew = 16;
    std::optional<LibraryCuts> cuts;
    if (ids.size() > kFew) cuts.emplace(form_);
    for (const std::string& id : ids) {
      test(id, [&] {
        const bool found = cuts ? cuts->show(id) : showCuts(form_, id);
        if (!found) throw Refused(notFoundText(form_, id));
      });
    }
  }

  void report() {
    session_.document["results"] = results_;
    session_.text << counted(results_.size(), "antenna") << " checked, " << refused_ << " refused\n";
  }

 private:
  // An antenna that cannot be tested fails the command; the others are tested all the same.
  template <class Show>
  void test(const std::string& id, const Show& show) {
    try {
      show();
      const std::string noID = id.empty() ? "The row has no antenna ID." : "";
      add(id, AddALine(noID, findPatternProblems(form_).text, kBlankLine));
    } catch (const RunTimeFailure& failure) {
      fail(id, modErrStr(failure));
    } catch (const Refused& refusal) {
      fail(id, refusal.what());
    }
  }

  void fail(const std::string& id, const std::string& reason) {
    add(id, reason);
    session_.fail(id + ": " + reason);
  }

  void add(const std::string& id, const std::string& problems) {
    const bool ok = getLenTrim(problems) == 0;
    results_.push_back({{"id", id}, {"ok", ok}, {"problems", problems}});
    session_.text << id << (ok ? "  ok\n" : "  refused\n");
    if (ok) return;
    ++refused_;
    session_.text << "    " << replaceAll(problems, kLineBreak, "\n    ") << '\n';
  }

  Session& session_;
  frmHDAntEditor& form_;
  Json results_ = Json::array();
  int refused_ = 0;
};

void check(Session& session, const EditorArguments& arguments) {
  const auto form = openEditor(session, arguments.library, kLookupMode);
  Check run(session, *form);
  if (arguments.ids.empty()) {
    run.all();
  } else {
    run.named(arguments.ids);
  }
  run.report();
}

// --- correct.

void correct(Session& session, const EditorArguments& arguments) {
  const auto form = openEditor(session, arguments.library, kEditorMode);
  if (!showCuts(*form, arguments.id)) throw Refused(notFoundText(*form, arguments.id));
  const std::size_t before = session.boxesShown();
  const Correction correction = CorrectAntPattern(*form);
  session.document = {{"result", correction.result}, {"log", correction.log}};
  session.text << correction.log << '\n';
  if (correction.result == correction::nothingToCorrect) {
    session.text << "Nothing to correct: the elevation pattern reaches the antenna's gain.\n";
  } else if (correction.result != correction::corrected) {
    session.fail(replaceAll(session.failureShown(before), kLineBreak, ": "));
  } else if (correction.passedOver > 0) {
    session.fail("Another program changed the elevation pattern meanwhile: " +
                 counted(static_cast<std::size_t>(correction.passedOver), "row") + " not corrected.");
  }
}

}  // namespace

void addEditorCommands(CLI::App& app, Session& session) {
  CLI::App* checkCommand = app.add_subcommand("check", "Test whether antennas can be used for a calculation");
  checkCommand->footer(
      "Nothing is written, and nothing is asked whatever --assume says. The exit status tells whether the test could "
      "be "
      "made, not what it found.\nExample: vantrelix check AMSX0001");
  const auto checked = std::make_shared<EditorArguments>();
  checkCommand->add_option("LIBRARY", checked->library)->required();
  checkCommand->add_option("ID", checked->ids, "All antennas where missing");
  checkCommand->callback([&session, checked] { session.job = [&session, checked] { check(session, *checked); }; });

  CLI::App* correctCommand =
      app.add_subcommand("correct", "Correct an elevation pattern that was not taken through the major lobe");
  correctCommand->footer("Saves with --assume yes.\nExample: vantrelix --assume yes correct AMSX0001 X00010000001");
  const auto corrected = std::make_shared<EditorArguments>();
  correctCommand->add_option("LIBRARY", corrected->library)->required();
  correctCommand->add_option("ID", corrected->id)->required();
  correctCommand->callback(
      [&session, corrected] { session.job = [&session, corrected] { correct(session, *corrected); }; });
}

}  // namespace vantrelix::cli
