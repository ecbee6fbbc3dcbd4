#include "dialogs/windowPlacement.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "dialogs/clsMonitors.h"
#include "dialogs/storedNumber.h"
#include "foundation/getINI.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr const char* kSection = "CONFIG";
// At most this part of a form may stay on the screens before it is brought back.
constexpr double kPart = 0.1;

// The keys of one form in one file.
class StoredForm {
 public:
  StoredForm(const Form& form, const std::string& keyPrefix, const std::string& file)
      : name_(keyPrefix + form.name()), file_(getLenTrim(file) > 0 ? file : getDefaultsINI()) {}

  std::optional<int> get(const char* suffix) const {
    std::string text;
    getINI(kSection, name_ + suffix, file_, "", text);
    return storedNumber(text);
  }
  void set(const char* suffix, int twips) const { setINI(kSection, name_ + suffix, file_, generalText(twips)); }

 private:
  std::string name_;
  std::string file_;
};

// In twips.
Rectangle wholeDesktop() {
  const clsMonitors all;
  return {all.DesktopLeftTwps(), all.DesktopTopTwps(), all.DesktopWidthTwps(), all.DesktopHeightTwps()};
}

int twips(int pixels, double perPixel) { return static_cast<int>(std::lround(pixels * perPixel)); }
int pixels(int twips, double perPixel) { return static_cast<int>(std::lround(twips / perPixel)); }

Rectangle firstScreen() {
  MonitorPort& port = desktop().monitors();
  const Rectangle screen = port.screen();
  const double across = port.twipsPerPixelX(), down = port.twipsPerPixelY();
  return {twips(screen.left, across), twips(screen.top, down), twips(screen.width, across), twips(screen.height, down)};
}

void centreIn(Form& form, const Rectangle& box) {
  form.moveTo(box.left + (box.width - form.width()) / 2, box.top + (box.height - form.height()) / 2);
}

bool isEmpty(const Rectangle& box) { return box.width <= 0 || box.height <= 0; }

bool leaves(const Form& form, const Rectangle& place, const Rectangle& bounds) {
  return place.left + kPart * form.width() > bounds.right() || place.top + kPart * form.height() > bounds.bottom();
}

// Screens of different sizes leave corners of the desktop that none of them shows.
bool onNoScreen(const Form& form, const Rectangle& place) {
  MonitorPort& port = desktop().monitors();
  const double across = port.twipsPerPixelX(), down = port.twipsPerPixelY();
  return port.monitorFromRect({pixels(place.left, across), pixels(place.top, down),
                               std::max(1, pixels(form.width(), across)), std::max(1, pixels(form.height(), down))}) ==
         0;
}

void placeOnDesktop(Form& form, Rectangle place) {
  const Rectangle bounds = wholeDesktop();
  place.left = std::max(place.left, bounds.left);
  place.top = std::max(place.top, bounds.top);
  if (leaves(form, place, bounds) || onNoScreen(form, place)) return setFormCenter(form);
  form.moveTo(place.left, place.top);
}

void placeOnFirstScreen(Form& form, Rectangle place) {
  const Rectangle screen = firstScreen();
  if (place.left < screen.left) place.left = screen.left + screen.width / 10;
  if (place.top < screen.top) place.top = screen.top + screen.height / 10;
  if (leaves(form, place, screen)) return setFormCenter(form);
  form.moveTo(place.left, place.top);
}

void placeAt(Form& form, int x, int y) {
  const Rectangle place{x, y, 0, 0};
  if (isEmpty(firstScreen())) return form.moveTo(x, y);
  getINIBool(kSection, "MultipleMonitors", "1") ? placeOnDesktop(form, place) : placeOnFirstScreen(form, place);
}

// A side of a form; the designed one where the wanted one is none.
int side(int wanted, int designed, int longest) {
  if (wanted <= 0) return designed;
  return longest > 0 ? std::min(wanted, longest) : wanted;
}

}  // namespace

void SaveFormLoc(const Form& form, const std::string& keyPrefix, const std::string& file) {
  if (form.windowState() != Form::WindowState::normal) return;
  const StoredForm stored(form, keyPrefix, file);
  stored.set("-X", form.geometry().left);
  stored.set("-Y", form.geometry().top);
}

void SaveFormSize(const Form& form, const std::string& keyPrefix, const std::string& file) {
  if (form.windowState() != Form::WindowState::normal) return;
  const StoredForm stored(form, keyPrefix, file);
  stored.set("-H", form.height());
  stored.set("-W", form.width());
}

void SetFormLoc(Form& form, int defaultX, int defaultY, const std::string& keyPrefix, const std::string& file) {
  if (defaultX == kCentred || defaultY == kCentred) return setFormCenter(form);
  const StoredForm stored(form, keyPrefix, file);
  placeAt(form, stored.get("-X").value_or(defaultX), stored.get("-Y").value_or(defaultY));
}

void SetFormLoc(Form& form, const std::string& keyPrefix, const std::string& file) {
  const StoredForm stored(form, keyPrefix, file);
  const std::optional<int> x = stored.get("-X"), y = stored.get("-Y");
  if (!x || !y) return setFormCenter(form);
  placeAt(form, *x, *y);
}

void SetFormSize(Form& form, int defaultH, int defaultW, const std::string& keyPrefix, const std::string& file) {
  const StoredForm stored(form, keyPrefix, file);
  const Rectangle longest = wholeDesktop();
  form.setSize(side(stored.get("-W").value_or(defaultW), form.width(), longest.width),
               side(stored.get("-H").value_or(defaultH), form.height(), longest.height));
}

void setFormCenter(Form& form) {
  const Rectangle screen = firstScreen();
  if (!isEmpty(screen)) centreIn(form, screen);
}

void setFormCenterOn(Form& form, const Form& owner) { centreIn(form, owner.geometry()); }

}  // namespace vantrelix
