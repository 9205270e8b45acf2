#include "dmt/ProfileFile.h"

#include <cmath>
#include <limits>

#include "frame/numbers.h"

namespace koru {

namespace {

constexpr size_t kMaxPoints = 32767;  // the count is 16-bit

// The next line of `text` from `pos`, without its CR LF (or lone LF); nullopt at the end.
std::optional<std::string_view> nextLine(std::string_view text, size_t& pos) {
  if (pos >= text.size()) return std::nullopt;
  size_t end = text.find('\n', pos);
  if (end == std::string_view::npos) end = text.size();
  std::string_view line = text.substr(pos, end - pos);
  pos = end + 1;
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

}  // namespace

ProfileFileContent parseProfileText(std::string_view text, bool (*readPoints)(int16_t mode),
                                    const std::filesystem::path& path, Diagnostic* why) {
  ProfileFileContent content;
  size_t pos = 0;
  content.firstLine = nextLine(text, pos).value_or("");
  const char modeChar = content.firstLine.empty() ? '0' : content.firstLine.front();
  content.mode = (modeChar >= '0' && modeChar <= '9') ? static_cast<int16_t>(modeChar - '0') : 0;
  if (!readPoints(content.mode)) return content;

  int lineNumber = 1;
  while (const auto line = nextLine(text, pos)) {
    ++lineNumber;
    const size_t colon = line->find(':');
    if (colon == std::string_view::npos) break;  // the end of the list
    const auto z = tryParseSingle(line->substr(0, colon));
    const auto value = tryParseSingle(line->substr(colon + 1));
    if (!z || !value) {
      if (why) *why = {path, lineNumber, "not a point \"depth:value\""};
      break;
    }
    if (content.z.size() >= kMaxPoints) {
      if (why) *why = {path, lineNumber, "too many points"};
      break;
    }
    content.z.push_back(*z);
    content.value.push_back(*value);
  }
  return content;
}

std::string profilePointsText(const std::vector<float>& z, const std::vector<float>& value) {
  std::string text;
  for (size_t i = 0; i < z.size() && i < value.size(); ++i)
    text += formatNumber(z[i], "0.0#") + ":" + formatNumber(value[i], "0.0#") + "\r\n";
  return text;
}

bool sameProfileDepth(float a, float b) { return roundTo(a, 3) == roundTo(b, 3); }

float profileValueOrZero(double x) {
  return std::isfinite(x) && std::fabs(x) <= std::numeric_limits<float>::max() ? static_cast<float>(x) : 0.0f;
}

}  // namespace koru
