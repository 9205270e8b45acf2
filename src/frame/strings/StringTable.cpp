#include "frame/strings/StringTable.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace koru {

namespace {

const std::string kNoText;
constexpr std::string_view kCrLf = "\r\n";

bool isContinuationByte(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

std::string_view trimBlanks(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

std::optional<int> parseId(std::string_view s) {
  s = trimBlanks(s);
  if (s.empty()) return std::nullopt;
  int value = 0;
  for (char c : s) {
    if (c < '0' || c > '9') return std::nullopt;
    value = value * 10 + (c - '0');
    if (value > 32767) return std::nullopt;
  }
  return value;
}

// "4201-4204" to its two ends; "4201" is a range of one.
std::optional<std::pair<int, int>> parseRange(std::string_view range) {
  range = trimBlanks(range);
  const size_t dash = range.find('-');
  if (dash == std::string_view::npos) {
    auto id = parseId(range);
    if (!id) return std::nullopt;
    return std::pair{*id, *id};
  }
  auto first = parseId(range.substr(0, dash));
  auto last = parseId(range.substr(dash + 1));
  if (!first || !last || *first > *last) return std::nullopt;
  return std::pair{*first, *last};
}

}  // namespace

StringTable::StringTable() { clear(); }

void StringTable::clear() {
  aStringIds.assign(kInitialCapacity, 0);
  aStrings.assign(kInitialCapacity, std::string());
  intStringCount = 0;
}

bool StringTable::append(int16_t id, std::string text) {
  if (intStringCount > 0 && id <= aStringIds[intStringCount - 1]) return false;
  if (intStringCount == capacity()) {
    const size_t doubled = aStringIds.size() * 2;
    aStringIds.resize(doubled, 0);
    aStrings.resize(doubled);
  }
  aStringIds[intStringCount] = id;
  aStrings[intStringCount] = std::move(text);
  ++intStringCount;
  return true;
}

int16_t StringTable::idAt(int index) const {
  return index >= 0 && index < intStringCount ? aStringIds[index] : int16_t{0};
}

const std::string& StringTable::textAt(int index) const {
  return index >= 0 && index < intStringCount ? aStrings[index] : kNoText;
}

void StringTable::setTextAt(int index, std::string text) {
  if (index >= 0 && index < intStringCount) aStrings[index] = std::move(text);
}

int StringTable::find(int id) const {
  if (intStringCount == 0) return -1;
  int low = 0;
  int high = intStringCount - 1;
  if (aStringIds[low] == id) return low;
  if (aStringIds[high] == id) return high;
  if (id < aStringIds[low] || id > aStringIds[high]) return -1;
  while (high - low > 1) {
    const int middle = (low + high) / 2;
    const int found = aStringIds[middle];
    if (found == id) return middle;
    if (found < id)
      low = middle;
    else
      high = middle;
  }
  return -1;
}

const std::string& ProgramStrings::getString(int id) const {
  const int index = table_.find(id);
  if (index >= 0) return table_.textAt(index);
  prompts_->beep();
  std::string message = "Unable to find string number " + std::to_string(id) + " in language file:";
  message += kCrLf;
  message += filePath_.string();
  prompts_->showMessage(message, msgbox::kOkOnly + msgbox::kExclamation, "");
  return kNoText;
}

std::string ProgramStrings::getStringMax(int id, int length) const {
  const std::string& text = getString(id);
  if (characterCount(text) <= length) return text;
  if (length < 1) return std::string();
  std::string cut(firstCharacters(text, length - 1));
  cut += '.';
  return cut;
}

std::string ProgramStrings::getStringX(int id, std::string_view value) const {
  return replacePlaceholder(getString(id), "XXX", value);
}

std::string ProgramStrings::getStringRange(std::string_view range, int count, std::string_view separator) const {
  const auto ends = parseRange(range);
  if (!ends) return std::string();
  std::string between;
  const std::string_view piece = separator.empty() ? kCrLf : separator;
  for (int i = 0; i < std::clamp(count, 0, 32767); ++i) between += piece;

  std::string joined;
  for (int id = ends->first; id <= ends->second; ++id) {
    if (id > ends->first) joined += between;
    joined += getString(id);
  }
  return joined;
}

int ProgramStrings::showString(int id, int buttons, std::string_view title) const {
  return prompts_->showMessage(getString(id), buttons, title);
}

int ProgramStrings::showStringX(int id, std::string_view value, int buttons, std::string_view title) const {
  return prompts_->showMessage(getStringX(id, value), buttons, title);
}

int ProgramStrings::showStringRange(std::string_view range, int count, std::string_view separator, int buttons,
                                    std::string_view title) const {
  return prompts_->showMessage(getStringRange(range, count, separator), buttons, title);
}

int ProgramStrings::showStringRangeX(std::string_view range, int count, std::string_view separator,
                                     std::string_view value, int buttons, std::string_view title) const {
  return prompts_->showMessage(replacePlaceholder(getStringRange(range, count, separator), "XXX", value), buttons,
                               title);
}

std::string replacePlaceholder(std::string_view text, std::string_view placeholder, std::string_view value) {
  if (placeholder.empty()) return std::string(text);
  std::string out;
  out.reserve(text.size());
  size_t pos = 0;
  while (true) {
    const size_t hit = text.find(placeholder, pos);
    if (hit == std::string_view::npos) break;
    out.append(text.substr(pos, hit - pos));
    out.append(value);
    pos = hit + placeholder.size();
  }
  out.append(text.substr(pos));
  return out;
}

int characterCount(std::string_view text) {
  int count = 0;
  for (char c : text)
    if (!isContinuationByte(c)) ++count;
  return count;
}

std::string_view firstCharacters(std::string_view text, int length) {
  if (length <= 0) return {};
  int seen = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (isContinuationByte(text[i])) continue;
    if (seen == length) return text.substr(0, i);
    ++seen;
  }
  return text;
}

}  // namespace koru
