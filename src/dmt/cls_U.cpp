#include "dmt/cls_U.h"

#include <cmath>
#include <optional>
#include <string>
#include <string_view>

#include "dmt/ProfileFile.h"
#include "frame/Files.h"
#include "frame/Numbers.h"

namespace koru {

namespace {

constexpr double kGravity = 9.81;

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
    if (sameProfileDepth(z, aZ_[i])) return aU_[i];
  if (n == 0) return 0.0f;

  // Outside the table the water pressure follows a hydrostatic line through the nearer end point.
  const auto hydrostatic = [z](float zPoint, float uPoint) {
    const double c = uPoint - kGravity * zPoint;
    const double u = kGravity * z + c;
    return u < 0 ? 0.0f : profileValueOrZero(u);
  };
  if (z < aZ_[0]) return hydrostatic(aZ_[0], aU_[0]);
  if (z > aZ_[n - 1]) return hydrostatic(aZ_[n - 1], aU_[n - 1]);

  size_t i = 0;
  while (i < n && roundTo(aZ_[i], 3) < z) ++i;
  if (i == 0) return aU_[0];
  if (i == n) return aU_[n - 1];
  const double z0 = aZ_[i - 1], z1 = aZ_[i], u0 = aU_[i - 1], u1 = aU_[i];
  if (z1 == z0) return aU_[i];
  return profileValueOrZero(u0 + (z - z0) / (z1 - z0) * (u1 - u0));
}

int16_t cls_U::loadInfo(Diagnostic* why) {
  try {
    const std::optional<std::string> bytes = readFileBytes(strPath_, why);
    if (!bytes) return -1;

    auto readsPoints = [](int16_t mode) { return mode == 1; };
    ProfileFileContent content = parseProfileText(*bytes, readsPoints, strPath_, why);
    intMethod_ = content.mode;
    aZ_ = std::move(content.z);
    aU_ = std::move(content.value);
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
      text += profilePointsText(aZ_, aU_);
    return writeFileAtomically(strPath_, text, why);
  } catch (...) {
    if (why) *why = {strPath_, 0, "could not be written"};
    return false;
  }
}

}  // namespace koru
