#include "preview/svgPlot.h"

#include "foundation/numbers.h"
#include "foundation/utf8.h"

namespace vantrelix {

namespace {

constexpr double kTwipsPerInch = 1440;
// The drawing's units are those of a screen of 96 to the inch, so that a reader that scales strokes draws them right
// too.
constexpr double kTwipsPerUnit = 15;
constexpr const char* kFonts = "'Segoe UI','DejaVu Sans',Arial,sans-serif";

struct Escape {
  char32_t code;
  const char* text;
};
constexpr Escape kEscapes[] = {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}};

void appendEscaped(std::string& result, const Utf8Character& character) {
  for (const Escape& escape : kEscapes) {
    if (character.code != escape.code) continue;
    result += escape.text;
    return;
  }
  const bool fits = character.valid && character.code >= 32 && character.code != 0xFFFE && character.code != 0xFFFF;
  // XML has no way to write the others.
  appendUtf8(result, fits ? character.code : 0xFFFD);
}

std::string escaped(const std::string& text) {
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Character character = utf8CharacterAt(text, at);
    appendEscaped(result, character);
    at += character.length;
  }
  return result;
}

std::string attribute(const char* name, const std::string& value) {
  return std::string(" ") + name + "=\"" + value + "\"";
}

std::string units(double twips) { return fixedDecimals(twips / kTwipsPerUnit, 2); }

std::string attribute(const char* name, int twips) { return attribute(name, units(twips)); }

std::string webColour(Color colour) {
  // A colour of the user's desktop has no fixed value; what is drawn over a white page is black then.
  if (colour > color::white) return "#000000";
  constexpr char digits[] = "0123456789abcdef";
  std::string text = "#";
  for (const unsigned shift : {4u, 0u, 12u, 8u, 20u, 16u}) text += digits[(colour >> shift) & 15u];
  return text;
}

// From user coordinates to places on the page.
class OnPage {
 public:
  explicit OnPage(const PictureBox& picture) : scale_(picture.scale()), place_(picture.geometry()) {}

  std::string operator()(double x, double y) const {
    return units(place_.left + (x - scale_.left) / scale_.width * place_.width) + " " +
           units(place_.top + (y - scale_.top) / scale_.height * place_.height);
  }

 private:
  PictureBox::Scale scale_;
  Rectangle place_;
};

bool follows(const PictureBox::Line& line, const PictureBox::Line& former) {
  return line.x1 == former.x2 && line.y1 == former.y2 && line.colour == former.colour;
}

// Lines that follow on one another become one path, so that their corners are joined.
std::string paths(const PictureBox& picture) {
  const OnPage place(picture);
  std::string result;
  const PictureBox::Line* former = nullptr;
  for (const PictureBox::Line& line : picture.lines()) {
    if (!former || !follows(line, *former)) {
      if (former) result += "\"/>\n";
      result +=
          "<path class=\"cut\"" + attribute("stroke", webColour(line.colour)) + " d=\"M" + place(line.x1, line.y1);
    }
    result += "L" + place(line.x2, line.y2);
    former = &line;
  }
  return former ? result + "\"/>\n" : result;
}

std::string box(const Rectangle& place) {
  return attribute("x", place.left) + attribute("y", place.top) + attribute("width", place.width) +
         attribute("height", place.height);
}

// What lies beyond the picture's edge is cut off there.
std::string pictureText(const PictureBox& picture) {
  const std::string name = escaped(picture.name());
  const std::string place = box(picture.geometry());
  return "<clipPath" + attribute("id", name + "Edge") + "><rect" + place + "/></clipPath>\n<rect class=\"frame\"" +
         place + "/>\n<g" + attribute("id", name) + attribute("clip-path", "url(#" + name + "Edge)") + ">\n" +
         paths(picture) + "</g>\n";
}

std::string lineOfText(const PlotPage::Text& text) {
  return "<text" + attribute("x", text.x) + attribute("y", text.baseline) + attribute("font-size", text.size) +
         (text.bold ? " font-weight=\"bold\"" : "") + ">" + escaped(text.text) + "</text>\n";
}

std::string inches(int twips) { return fixedDecimals(twips / kTwipsPerInch, 4) + "in"; }

}  // namespace

std::string svgOf(const PlotPage& page) {
  const std::string view = "0 0 " + units(page.width) + " " + units(page.height);
  std::string svg = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"" +
                    attribute("width", inches(page.width)) + attribute("height", inches(page.height)) +
                    attribute("viewBox", view) + ">\n<style>\ntext{font-family:" + kFonts +
                    ";fill:#1f2430}\n.frame{fill:#ffffff;stroke:#b8bfcc}\n"
                    ".cut{fill:none;stroke-width:1.4;stroke-linejoin:round;stroke-linecap:round}\n"
                    ".cut,.frame{vector-effect:non-scaling-stroke}\n</style>\n"
                    "<rect" +
                    box({0, 0, page.width, page.height}) + " fill=\"#f7f8fa\"/>\n";
  for (const PlotPage::Text& text : page.texts) svg += lineOfText(text);
  for (const auto& picture : page.pictures) svg += pictureText(*picture);
  return svg + "</svg>\n";
}

}  // namespace vantrelix
