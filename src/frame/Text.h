#pragma once
// Small text edits that file keys and names need, the same in every module.

#include <string>
#include <string_view>
#include <vector>

namespace koru {

// ASCII letters in upper case; other bytes (UTF-8 included) stay as they are, whatever the locale.
std::string upperAscii(std::string_view text);

// The fields between the separators, empty ones included: "" is one empty field, "a,,b" three.
std::vector<std::string_view> splitText(std::string_view text, char separator);

// Without the spaces and tabs at either end.
std::string_view trimmed(std::string_view text);

}  // namespace koru
