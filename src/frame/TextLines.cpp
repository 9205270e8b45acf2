#include "frame/TextLines.h"

namespace koru {

bool nextLine(std::string_view text, size_t& pos, std::string_view& line) {
  if (pos >= text.size()) return false;
  size_t end = text.find_first_of("\r\n", pos);
  if (end == std::string_view::npos) end = text.size();
  line = text.substr(pos, end - pos);
  pos = end;
  if (pos < text.size() && text[pos] == '\r') ++pos;
  if (end < text.size() && text[end] == '\r' && pos < text.size() && text[pos] == '\n') ++pos;
  if (end < text.size() && text[end] == '\n') ++pos;
  return true;
}

std::vector<std::string_view> splitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  size_t pos = 0;
  std::string_view line;
  while (nextLine(text, pos, line)) lines.push_back(line);
  return lines;
}

std::string_view withoutBom(std::string_view text) {
  constexpr std::string_view kBom = "\xEF\xBB\xBF";
  if (text.substr(0, kBom.size()) == kBom) text.remove_prefix(kBom.size());
  return text;
}

bool endsWithLineEnd(std::string_view text) { return text.empty() || text.back() == '\r' || text.back() == '\n'; }

}  // namespace koru
