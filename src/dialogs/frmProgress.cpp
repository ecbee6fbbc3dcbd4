#include "dialogs/frmProgress.h"

#include <utility>

#include "platform/Platform.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr std::int64_t kBetweenTurns = 50;  // milliseconds

std::int64_t steadyClock() { return platform::current().steadyMilliseconds(); }

}  // namespace

frmProgress::frmProgress() : Form("frmProgress") {
  add(lblProgress);
  add(ProgressBar1);
  add(cmdCancel);
  cmdCancel.setCaption("Cancel");
  cmdCancel.setTabIndex(0);
  cmdCancel.click.listen([this] {
    cancelled_ = true;
    // The work may take a while to end: the user sees that he was heard.
    cmdCancel.setEnabled(false);
  });
  setCancelButton(&cmdCancel);
  setFocus(cmdCancel);
}

ProgressWindow::ProgressWindow(const std::string& caption, std::chrono::milliseconds delay, Clock clock)
    : clock_(clock ? std::move(clock) : steadyClock), delay_(delay.count()), begun_(clock_()), turned_(begun_) {
  form_.setCaption(caption);
}

ProgressWindow::~ProgressWindow() {
  if (!form_.visible()) return;
  // What the user did since the last turn is lost on the windows behind, as what came before.
  desktop().doEvents();
  form_.hide();
}

void ProgressWindow::report(std::string_view text, long done, long total) {
  const std::int64_t now = clock_();
  const bool comesUp = !form_.visible() && now - begun_ >= delay_;
  if (!comesUp && now - turned_ < kBetweenTurns) return;
  if (!form_.visible() && !comesUp) {
    desktop().doEventsWithoutInput();
  } else {
    show(text, done, total);
  }
  // A turn that takes long leaves the work its time all the same.
  turned_ = clock_();
}

void ProgressWindow::show(std::string_view text, long done, long total) {
  form_.lblProgress.setCaption(std::string(text));
  form_.ProgressBar1.setProgress(done, total);
  if (!form_.visible()) desktop().showModeless(form_, Desktop::Activation::take);
  desktop().doEvents();
}

}  // namespace vantrelix
