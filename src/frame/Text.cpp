#include "frame/Text.h"

namespace koru {

std::string upperAscii(std::string_view text) {
  std::string out(text);
  for (char& c : out)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return out;
}

std::vector<std::string_view> splitText(std::string_view text, char separator) {
  std::vector<std::string_view> fields;
  for (size_t start = 0;;) {
    const size_t at = text.find(separator, start);
    fields.push_back(text.substr(start, at == std::string_view::npos ? std::string_view::npos : at - start));
    if (at == std::string_view::npos) return fields;
    start = at + 1;
  }
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

}  // namespace koru
