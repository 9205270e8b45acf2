#pragma once
// Data files are 8-bit Windows-1252 text; the program works in UTF-8 inside.

#include <optional>
#include <string>
#include <string_view>

namespace koru {

std::string cp1252ToUtf8(std::string_view bytes);
// Characters that Windows-1252 cannot hold become "?".
std::string utf8ToCp1252(std::string_view text);
// The first character of `text` that utf8ToCp1252 would turn into "?" (a code point outside the
// code page, or a byte that is not UTF-8), as a view into `text`; nothing when all can be stored.
// Texts the user gives are checked with it, so that a name is refused rather than changed.
std::optional<std::string_view> firstUnstorable(std::string_view text);

}  // namespace koru
