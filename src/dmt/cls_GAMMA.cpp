#include "dmt/cls_GAMMA.h"

#include <cmath>
#include <optional>
#include <string>
#include <string_view>

#include "dmt/ProfileFile.h"
#include "frame/Files.h"
#include "frame/Numbers.h"

namespace koru {


void cls_GAMMA::setN(int n) {
  const size_t size = n > 0 ? static_cast<size_t>(n) : 0;
  aZ_.resize(size, 0.0f);
  aY_.resize(size, 0.0f);
}

float cls_GAMMA::getYz(float z) const {
  const size_t n = aZ_.size() < aY_.size() ? aZ_.size() : aY_.size();
  for (size_t i = 0; i < n; ++i)
    if (sameProfileDepth(z, aZ_[i])) return aY_[i];

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
  return profileValueOrZero(y0 + (z - z0) / (z1 - z0) * (y1 - y0));
}

int16_t cls_GAMMA::loadInfo(Diagnostic* why) {
  try {
    const std::optional<std::string> bytes = readFileBytes(strPath_, why);
    if (!bytes) return -1;

    auto readsPoints = [](int16_t mode) { return mode == 1 || mode == 2; };
    ProfileFileContent content = parseProfileText(*bytes, readsPoints, strPath_, why);
    intMethod_ = content.mode;
    if (intMethod_ == 1) {
      const size_t colon = content.firstLine.find(':');
      if (colon != std::string_view::npos) sngConstant = parseSingle(content.firstLine.substr(colon + 1));
    }
    aZ_ = std::move(content.z);
    aY_ = std::move(content.value);
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
      text += profilePointsText(aZ_, aY_);
    return writeFileAtomically(strPath_, text, why);
  } catch (...) {
    if (why) *why = {strPath_, 0, "could not be written"};
    return false;
  }
}

}  // namespace koru
