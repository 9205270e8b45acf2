#include "dmt/cls_GAMMA.h"

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

// Two depths are the same point when they agree to the millimetre.
bool sameDepth(float a, float b) { return roundTo(a, 3) == roundTo(b, 3); }

float toFloatOrZero(double x) {
  return std::isfinite(x) && std::fabs(x) <= std::numeric_limits<float>::max() ? static_cast<float>(x) : 0.0f;
}

}  // namespace

void cls_GAMMA::setN(int n) {
  const size_t size = n > 0 ? static_cast<size_t>(n) : 0;
  aZ_.resize(size, 0.0f);
  aY_.resize(size, 0.0f);
}

float cls_GAMMA::getYz(float z) const {
  const size_t n = aZ_.size() < aY_.size() ? aZ_.size() : aY_.size();
  for (size_t i = 0; i < n; ++i)
    if (sameDepth(z, aZ_[i])) return aY_[i];

  if (intMethod_ == 2 && n == 0) return 17.0f;  // the default unit weight above the readings
  if (n == 0) return 0.0f;
  const float first = aY_[0], last = aY_[n - 1];

  switch (intMethod_) {
    case 2:
      if (z > aZ_[n - 1]) return last;
      if (z <= aZ_[0]) return first;
      break;
    case 0:
    case 1:
      if (z > aZ_[n - 1]) return (intMethod_ == 1 && sngConstant > 0) ? sngConstant : last;
      if (n < 2 || z < aZ_[1]) return first;
      break;
    default:
      return 0.0f;
  }

  size_t i = 0;
  while (i < n && roundTo(aZ_[i], 3) < z) ++i;
  if (i == 0) return first;
  if (i == n) return last;
  const double z0 = aZ_[i - 1], z1 = aZ_[i], y0 = aY_[i - 1], y1 = aY_[i];
  if (z1 == z0) return aY_[i];
  return toFloatOrZero(y0 + (z - z0) / (z1 - z0) * (y1 - y0));
}

int16_t cls_GAMMA::loadInfo(Diagnostic* why) {
  try {
    const std::optional<std::string> bytes = readFileBytes(strPath_, why);
    if (!bytes) return -1;

    std::string_view text = *bytes;
    size_t pos = 0;
    const std::string_view first = nextLine(text, pos).value_or("");
    const char modeChar = first.empty() ? '0' : first.front();
    intMethod_ = (modeChar >= '0' && modeChar <= '9') ? static_cast<int16_t>(modeChar - '0') : 0;
    aZ_.clear();
    aY_.clear();
    if (intMethod_ == 1) {
      const size_t colon = first.find(':');
      if (colon != std::string_view::npos) sngConstant = parseSingle(first.substr(colon + 1));
    }
    if (intMethod_ != 1 && intMethod_ != 2) return 0;

    int lineNumber = 1;
    while (const auto line = nextLine(text, pos)) {
      ++lineNumber;
      const size_t colon = line->find(':');
      if (colon == std::string_view::npos) break;  // the end of the list
      const auto z = tryParseSingle(line->substr(0, colon));
      const auto y = tryParseSingle(line->substr(colon + 1));
      if (!z || !y) {
        if (why) *why = {strPath_, lineNumber, "not a point \"depth:value\""};
        break;
      }
      if (aZ_.size() >= kMaxPoints) {
        if (why) *why = {strPath_, lineNumber, "too many points"};
        break;
      }
      aZ_.push_back(*z);
      aY_.push_back(*y);
    }
    return 0;
  } catch (...) {
    if (why) *why = {strPath_, 0, "could not be read"};
    return 0;
  }
}

bool cls_GAMMA::saveInfo(Diagnostic* why) const {
  try {
    const int mode = intMethod_ >= 0 && intMethod_ <= 9 ? intMethod_ : 0;
    std::string text = std::to_string(mode);
    if (mode == 1) text += ":" + formatNumber(sngConstant, "0.0#");
    text += "\r\n";
    // Modes 0 and 1 rebuild the list from the DMT rows; only the user's table is kept.
    if (mode == 2)
      for (size_t i = 0; i < aZ_.size() && i < aY_.size(); ++i)
        text += formatNumber(aZ_[i], "0.0#") + ":" + formatNumber(aY_[i], "0.0#") + "\r\n";
    return writeFileAtomically(strPath_, text, why);
  } catch (...) {
    if (why) *why = {strPath_, 0, "could not be written"};
    return false;
  }
}

}  // namespace koru
