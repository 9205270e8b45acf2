#include "dmt/ProfileFile.h"

#include <cmath>
#include <limits>

#include "frame/Numbers.h"
#include "frame/TextLines.h"

namespace koru {

namespace {

constexpr size_t kMaxPoints = 32767;  // the count is 16-bit


}  // namespace

ProfileFileContent parseProfileText(std::string_view text, bool (*readPoints)(int16_t mode),
                                    const std::filesystem::path& path, Diagnostic* why) {
  ProfileFileContent content;
  size_t pos = 0;
  std::string_view line;
  content.firstLine = nextLine(text, pos, line) ? line : std::string_view();
  const char modeChar = content.firstLine.empty() ? '0' : content.firstLine.front();
  content.mode = (modeChar >= '0' && modeChar <= '9') ? static_cast<int16_t>(modeChar - '0') : 0;
  if (!readPoints(content.mode)) return content;

  int lineNumber = 1;
  while (nextLine(text, pos, line)) {
    ++lineNumber;
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos) break;  // the end of the list
    const auto z = tryParseSingle(line.substr(0, colon));
    const auto value = tryParseSingle(line.substr(colon + 1));
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
