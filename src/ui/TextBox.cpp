#include "foundation/utf8.h"
#include "ui/widgets.h"

namespace vantrelix {

namespace {

// Characters that no key of a text box types: a pasted line break or backspace is no entry.
bool isControl(char32_t code) { return code < 32 || code == 127; }

template <class Act>
void forEachCharacter(std::string_view text, Act act) {
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Character character = utf8CharacterAt(text, at);
    if (character.valid && !isControl(character.code)) act(character.code, text.substr(at, character.length));
    at += character.length;
  }
}

}  // namespace

bool TextBox::userKey(int key) {
  if (locked_ || !reachable() || key == 0) return false;
  keyPress(key);
  return key != 0;
}

void TextBox::userText(const std::string& text) {
  if (locked_ || !reachable() || text == text_) return;
  setText(text);
  change();
}

std::string TextBox::userPaste(std::string_view text) {
  std::string passed;
  forEachCharacter(text, [&](char32_t code, std::string_view bytes) {
    if (userKey(static_cast<int>(code))) passed += bytes;
  });
  return passed;
}

void TextBox::userType(std::string_view text) {
  if (!reachable()) return;
  userFocus();
  if (text.empty() && userKey(kBackspaceKey)) userText("");
  std::string typed;
  forEachCharacter(text, [&](char32_t code, std::string_view bytes) {
    if (!userKey(static_cast<int>(code))) return;
    typed += bytes;
    userText(typed);
  });
}

}  // namespace vantrelix
