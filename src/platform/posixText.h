// What the POSIX platform knows of text: the user's regional characters and the multi-byte code pages. Private to the
// platform layer.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Platform.h"

namespace vantrelix::platform::posix {

// The characters of LC_NUMERIC and the dates of LC_TIME as the environment sets them; the process's own locale is
// neither used nor changed.
Regional userRegional();

// Through the system's tables; nothing where it has none for the page. Bytes that stand for no character become U+FFFD,
// and characters that the page does not have become "?".
std::optional<std::string> decode(int codePage, std::string_view bytes);
std::optional<std::string> encode(int codePage, std::string_view utf8);

}  // namespace vantrelix::platform::posix
