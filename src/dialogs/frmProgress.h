// The window of a long work: what it is at, how far it has come, and a button to end it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "ui/Form.h"
#include "ui/ProgressBar.h"
#include "ui/widgets.h"

namespace vantrelix {

// Closing it by the frame presses the button; only its owner takes it away.
class frmProgress : public Form {
 public:
  frmProgress();

  Label lblProgress{"lblProgress"};
  ProgressBar ProgressBar1{"ProgressBar1"};
  CommandButton cmdCancel{"cmdCancel"};

  // Whether the button was pressed; it can be pressed once.
  bool cancelled() const { return cancelled_; }

 protected:
  void queryUnload() override { cmdCancel.userClick(); }

 private:
  bool cancelled_ = false;
};

// Made where a long work begins, and gone with it.
//
// While it stands the work reports. A report now and then gives the event loop a turn, in which no other window takes
// input, so that what began the work cannot begin it again: until the window is up, the user's acts wait for the end
// of the work; those of the time in which it is up go to it or are lost. A dialog that the work itself opens takes
// input as ever. The window comes up at the first report behind the delay, takes the keyboard, and gives it back at
// its end.
class ProgressWindow {
 public:
  using Clock = std::function<std::int64_t()>;  // milliseconds from any moment on, never going back

  // Without a clock, the platform's steady one.
  explicit ProgressWindow(const std::string& caption, std::chrono::milliseconds delay = std::chrono::milliseconds(400),
                          Clock clock = {});
  ~ProgressWindow();
  ProgressWindow(const ProgressWindow&) = delete;
  ProgressWindow& operator=(const ProgressWindow&) = delete;

  // What the work is at, and how much of it is done; a total below 1 where that is not known. Cheap enough for an inner
  // loop: at most 20 reports a second are shown, and the others pass.
  void report(std::string_view text, long done, long total);
  // The user wants the work to end; it is for the work to do so.
  bool cancelled() const { return form_.cancelled(); }

 private:
  void show(std::string_view text, long done, long total);

  frmProgress form_;
  Clock clock_;
  std::int64_t delay_;
  std::int64_t begun_;
  std::int64_t turned_;  // end of the last turn of the event loop
};

}  // namespace vantrelix
