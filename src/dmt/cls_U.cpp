#include "dmt/cls_U.h"

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "frame/files.h"
#include "frame/numbers.h"

namespace koru {

namespace {

constexpr size_t kMaxPoints = 32767;  // the count is 16-bit
constexpr double kGravity = 9.81;

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

bool sameDepth(float a, float b) { return roundTo(a, 3) == roundTo(b, 3); }

float toFloatOrZero(double x) {
  return std::isfinite(x) && std::fabs(x) <= std::numeric_limits<float>::max() ? static_cast<float>(x) : 0.0f;
}

}  // namespace

void cls_U::setN(int n) {
  const size_t size = n > 0 ? static_cast<size_t>(n) : 0;
  aZ_.resize(size, 0.0f);
  aU_.resize(size, 0.0f);
}

float cls_U::getUz(float z) const {
  if (intMethod_ != 1) return 0.0f;
  const size_t n = aZ_.size() < aU_.size() ? aZ_.size() : aU_.size();
  for (size_t i = 0; i < n; ++i)
    if (sameDepth(z, aZ_[i])) return aU_[i];
  if (n == 0) return 0.0f;

  // Outside the table the water pressure follows a hydrostatic line through the nearer end point.
  const auto hydrostatic = [z](float zPoint, float uPoint) {
    const double c = uPoint - kGravity * zPoint;
    const double u = kGravity * z + c;
    return u < 0 ? 0.0f : toFloatOrZero(u);
  };
  if (z < aZ_[0]) return hydrostatic(aZ_[0], aU_[0]);
  if (z > aZ_[n - 1]) return hydrostatic(aZ_[n - 1], aU_[n - 1]);

  size_t i = 0;
  while (i < n && roundTo(aZ_[i], 3) < z) ++i;
  if (i == 0) return aU_[0];
  if (i == n) return aU_[n - 1];
  const double z0 = aZ_[i - 1], z1 = aZ_[i], u0 = aU_[i - 1], u1 = aU_[i];
  if (z1 == z0) return aU_[i];
  return toFloatOrZero(u0 + (z - z0) / (z1 - z0) * (u1 - u0));
}

int16_t cls_U::loadInfo(Diagnostic* why) {
  try {
    const std::optional<std::string> bytes = readFileBytes(strPath_, why);
    if (!bytes) return -1;

    std::string_view text = *bytes;
    size_t pos = 0;
    const std::string_view first = nextLine(text, pos).value_or("");
    const char modeChar = first.empty() ? '0' : first.front();
    intMethod_ = (modeChar >= '0' && modeChar <= '9') ? static_cast<int16_t>(modeChar - '0') : 0;
    aZ_.clear();
    aU_.clear();
    if (intMethod_ != 1) return 0;

    int lineNumber = 1;
    while (const auto line = nextLine(text, pos)) {
      ++lineNumber;
      const size_t colon = line->find(':');
      if (colon == std::string_view::npos) break;  // the end of the list
      const auto z = tryParseSingle(line->substr(0, colon));
      const auto u = tryParseSingle(line->substr(colon + 1));
      if (!z || !u) {
        if (why) *why = {strPath_, lineNumber, "not a point \"depth:value\""};
        break;
      }
      if (aZ_.size() >= kMaxPoints) {
        if (why) *why = {strPath_, lineNumber, "too many points"};
        break;
      }
      aZ_.push_back(*z);
      aU_.push_back(*u);
    }
    return 0;
  } catch (...) {
    if (why) *why = {strPath_, 0, "could not be read"};
    return 0;
  }
}

bool cls_U::saveInfo(Diagnostic* why) const {
  try {
    const int mode = intMethod_ >= 0 && intMethod_ <= 9 ? intMethod_ : 0;
    std::string text = std::to_string(mode) + "\r\n";
    if (mode == 1)
      for (size_t i = 0; i < aZ_.size() && i < aU_.size(); ++i)
        text += formatNumber(aZ_[i], "0.0#") + ":" + formatNumber(aU_[i], "0.0#") + "\r\n";
    return writeFileAtomically(strPath_, text, why);
  } catch (...) {
    if (why) *why = {strPath_, 0, "could not be written"};
    return false;
  }
}

}  // namespace koru
