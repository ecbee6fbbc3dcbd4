#include <CLI/CLI.hpp>
#include <array>

#include "antenna/convertGain.h"
#include "cli/commandLine.h"
#include "dialogs/ParabolaGain.h"
#include "foundation/numbers.h"
#include "foundation/units.h"

namespace vantrelix::cli {

namespace {

// Arguments of a calculation, kept until its job runs.
using Arguments = std::shared_ptr<std::vector<std::string>>;

// Adds a calculation with its arguments, all required and in order.
void addCalculation(CLI::App& parent, const std::string& name, const std::string& help, const std::string& example,
                    const std::vector<std::string>& names, Session& session,
                    const std::function<void(Session&, const std::vector<std::string>&)>& calculate) {
  CLI::App* command = parent.add_subcommand(name, help);
  command->footer("Example: " + example);
  const auto values = std::make_shared<std::vector<std::string>>(names.size());
  for (std::size_t i = 0; i < names.size(); ++i) command->add_option(names[i], (*values)[i])->required();
  command->callback(
      [&session, values, calculate] { session.job = [&session, values, calculate] { calculate(session, *values); }; });
}

template <class Result>
void answer(Session& session, const Result& result, const std::string& text, bool failed, const std::string& reason) {
  session.document["result"] = result;
  session.document["failed"] = failed;
  session.text << text << '\n';
  if (failed) session.fail(reason);
}

void gain(Session& session, const std::vector<std::string>& a) {
  bool failed = false;
  const std::string result = ConvertAntGain(a[0], a[1], a[2], failed);
  answer(session, result, result, failed, "A gain of " + a[2] + " " + a[0] + " cannot be expressed in " + a[1] + ".");
}

void pattern(Session& session, const std::vector<std::string>& a) {
  bool failed = false;
  const std::string result = ConvertAntPattern(a[0], a[1], a[2], a[3], a[4], failed);
  answer(session, result, result, failed,
         "A pattern value of " + a[2] + " " + a[0] + " cannot be expressed in " + a[1] + " with a major lobe of " +
             a[3] + " " + a[4] + ".");
}

using UnitConversion = double (*)(std::string_view from, std::string_view to, double value, bool& err);

void convertUnits(Session& session, const std::vector<std::string>& a, UnitConversion convert) {
  bool failed = false;
  const double result = convert(a[0], a[1], CValP(a[2]), failed);
  answer(session, result, generalText(result), failed, "No conversion from \"" + a[0] + "\" to \"" + a[1] + "\".");
}

void parabola(Session& session, const std::vector<std::string>& a) {
  bool failed = false;
  const double result = ParabolaGain(CValP(a[0]), a[1], CValP(a[2]), failed);
  answer(session, result, generalText(result), failed,
         "No gain of a dish of " + a[0] + " " + a[1] + " at " + a[2] +
             " MHz: the diameter needs a unit of length, and both numbers must be above 0.");
}

}  // namespace

void addCalcCommands(CLI::App& app, Session& session) {
  CLI::App* calc = app.add_subcommand("calc", "Convert gains, pattern values and units; the gain of a dish");
  addCalculation(*calc, "gain", "Convert an antenna gain (units dBd, dBi, REL)", "vantrelix calc gain dBd dBi -3",
                 {"FROM", "TO", "VALUE"}, session, gain);
  addCalculation(*calc, "pattern", "Convert a pattern value, given the major lobe",
                 "vantrelix calc pattern REL dBd 0.5 10 dBd", {"FROM", "TO", "VALUE", "MAJGAIN", "MAJUNITS"}, session,
                 pattern);
  addCalculation(*calc, "length", "Convert a length (m, km, cm, mm, ft, in, mi, nm ...)",
                 "vantrelix calc length ft m 100", {"FROM", "TO", "VALUE"}, session,
                 [](Session& s, const std::vector<std::string>& a) { convertUnits(s, a, ConvertLen); });
  addCalculation(*calc, "frequency", "Convert a frequency (Hz, KHz, MHz, GHz)", "vantrelix calc frequency GHz MHz 1.9",
                 {"FROM", "TO", "VALUE"}, session,
                 [](Session& s, const std::vector<std::string>& a) { convertUnits(s, a, ConvertFreq); });
  addCalculation(*calc, "parabola", "The gain of a parabolic dish in dBi (diameter in cm, ft, in, m ...)",
                 "vantrelix calc parabola 10 ft 6000", {"DIAMETER", "UNIT", "MHZ"}, session, parabola);
}

}  // namespace vantrelix::cli
