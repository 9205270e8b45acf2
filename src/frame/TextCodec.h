#pragma once
// Data files are 8-bit Windows-1252 text; the program works in UTF-8 inside.

#include <string>
#include <string_view>

namespace koru {

std::string cp1252ToUtf8(std::string_view bytes);
// Characters that Windows-1252 cannot hold become "?".
std::string utf8ToCp1252(std::string_view text);

}  // namespace koru
