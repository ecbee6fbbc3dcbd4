#include "editor/getSeqValues.h"

#include <array>

#include "editor/frmGetSequentialValues.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr std::size_t kCaptionLength = 20;
constexpr const char* kNames[] = {"Start", "Stop", "Step"};
using Lines = std::array<SeqValue*, frmGetSequentialValues::lineCount>;
using Numbers = std::array<double, frmGetSequentialValues::lineCount>;

std::string plainText(const Value& value) { return generalText(CValP(value)); }

// What is wrong with an entry; blank where nothing is.
std::string outOfRange(const std::string& name, const SeqValue& line, double number) {
  if (line.HasMin && number < CValP(line.MinValue)) return name + " must be at least " + plainText(line.MinValue);
  if (line.HasMax && number > CValP(line.MaxValue)) return name + " cannot exceed " + plainText(line.MaxValue);
  return "";
}

std::string problemOf(const Lines& lines, const Numbers& numbers) {
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (std::string problem = outOfRange(kNames[i], *lines[i], numbers[i]); !problem.empty()) return problem;
  }
  const auto [start, stop, step] = numbers;
  if (step == 0) return "STEP cannot be zero.";
  if (stop < start && step > 0) return "With positive STEP value, the STOP value cannot be less than the START value.";
  return "";
}

}  // namespace

void GetSeqValues(const std::string& title, const Form* owner, std::int16_t left, std::int16_t top, SeqValue& start,
                  SeqValue& stop, SeqValue& step, bool& cancelled) {
  const Lines lines{&start, &stop, &step};
  frmGetSequentialValues form(title);
  for (;;) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
      form.Label1[i].setCaption(leftCharacters(lines[i]->Caption, kCaptionLength));
      form.Text1[i].setText(plainText(lines[i]->Value));
    }
    form.begin(owner, left, top);
    desktop().showModal(form);
    cancelled = form.cancelled();
    if (cancelled) return;
    Numbers numbers{};
    for (std::size_t i = 0; i < lines.size(); ++i) numbers[i] = CValP(form.Text1[i].text());
    if (const std::string problem = problemOf(lines, numbers); !problem.empty()) {
      showInformation(title, problem);
      continue;
    }
    for (std::size_t i = 0; i < lines.size(); ++i) lines[i]->Value = numbers[i];
    return;
  }
}

}  // namespace vantrelix
