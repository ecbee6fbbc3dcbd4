// Whole antennas as the antenna editor copies and deletes them.
#include <CLI/CLI.hpp>
#include <memory>

#include "cli/commandLine.h"
#include "cli/openEditor.h"
#include "editor/antCopy.h"
#include "editor/frmHDAntEditor.h"
#include "editor/showCuts.h"
#include "foundation/extract.h"
#include "foundation/text.h"

namespace vantrelix::cli {

namespace {

struct AntennaArguments {
  std::string library, id;
};

// The editor with the antenna selected in it.
std::unique_ptr<frmHDAntEditor> editorOn(const Session& session, const AntennaArguments& arguments) {
  auto form = openEditor(session, arguments.library, kEditorMode);
  if (!showCuts(*form, arguments.id)) throw Refused(notFoundText(*form, arguments.id));
  return form;
}

// The procedures of the editor report their failures and give none.
void requireNoFailure(const Session& session, std::size_t before) {
  const std::string failure = session.failureShown(before);
  if (!failure.empty()) throw Refused(replaceAll(failure, kLineBreak, ": "));
}

void answer(Session& session, const std::string& id, const std::string& text) {
  session.document["id"] = id;
  session.text << text << '\n';
}

void copy(Session& session, const AntennaArguments& arguments) {
  const auto form = editorOn(session, arguments);
  const std::size_t before = session.boxesShown();
  AntCopy(*form);
  requireNoFailure(session, before);
  const std::string id = trim(ChkNulls(form->amsValue("ATYPE_ID"), "", false).asText());
  answer(session, id, id + "  " + form->amsCell("ANTENNA"));
}

void remove(Session& session, const AntennaArguments& arguments) {
  const auto form = editorOn(session, arguments);
  const std::size_t before = session.boxesShown();
  const long antennas = form->DataAMS.RecordCount();
  form->TDBGridAMS.userDeleteRows();
  requireNoFailure(session, before);
  if (form->DataAMS.RecordCount() == antennas) {
    throw Refused("The antenna was not deleted: that was not confirmed. --assume yes confirms it.");
  }
  answer(session, arguments.id, arguments.id + "  deleted");
}

using Job = void (*)(Session&, const AntennaArguments&);

void addCommand(CLI::App& app, Session& session, const char* name, const char* description, const char* footer,
                Job job) {
  CLI::App* command = app.add_subcommand(name, description);
  command->footer(footer);
  const auto arguments = std::make_shared<AntennaArguments>();
  command->add_option("LIBRARY", arguments->library)->required();
  command->add_option("ID", arguments->id)->required();
  command->callback(
      [&session, arguments, job] { session.job = [&session, arguments, job] { job(session, *arguments); }; });
}

}  // namespace

void addAntennaCommands(CLI::App& app, Session& session) {
  addCommand(app, session, "copy", "Add a copy of an antenna to its library",
             "Gives the ID of the copy.\nExample: vantrelix copy AMSX0001 X00010000001", copy);
  addCommand(app, session, "delete", "Delete an antenna and its patterns",
             "Deletes with --assume yes alone.\nExample: vantrelix --assume yes delete AMSX0001 X00010000001", remove);
}

}  // namespace vantrelix::cli
