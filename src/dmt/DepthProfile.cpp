#include "dmt/DepthProfile.h"

#include <cmath>
#include <limits>

#include "frame/Files.h"
#include "frame/Numbers.h"
#include "frame/TextLines.h"

namespace koru {

namespace {

constexpr size_t kMaxPoints = 32767;  // the count is 16-bit

// Two depths are the same point when they agree to the millimetre.
bool sameDepth(float a, float b) { return roundTo(a, 3) == roundTo(b, 3); }

}  // namespace

void DepthProfile::setN(int n) {
  const size_t size = n > 0 ? static_cast<size_t>(n) : 0;
  aZ_.resize(size, 0.0f);
  aValue_.resize(size, 0.0f);
}

std::optional<float> DepthProfile::pointAt(float z) const {
  for (size_t i = 0; i < count(); ++i)
    if (sameDepth(z, aZ_[i])) return aValue_[i];
  return std::nullopt;
}

float DepthProfile::between(float z) const {
  const size_t n = count();
  size_t i = 0;
  while (i < n && roundTo(aZ_[i], 3) < z) ++i;
  if (i == 0) return aValue_[0];
  if (i == n) return aValue_[n - 1];
  const double z0 = aZ_[i - 1], z1 = aZ_[i], v0 = aValue_[i - 1], v1 = aValue_[i];
  if (z1 == z0) return aValue_[i];
  return finiteOrZero(v0 + (z - z0) / (z1 - z0) * (v1 - v0));
}

float DepthProfile::finiteOrZero(double x) {
  return std::isfinite(x) && std::fabs(x) <= std::numeric_limits<float>::max() ? static_cast<float>(x) : 0.0f;
}

LoadResult DepthProfile::parseInfo(std::string_view bytes, const std::filesystem::path& file) {
  bytes = withoutBom(bytes);
  size_t pos = 0;
  std::string_view line;
  const std::string_view firstLine = nextLine(bytes, pos, line) ? line : std::string_view();
  // A last line without its line end may have lost digits: what it holds is not taken.
  const auto cutShort = [&](int lineNumber) {
    return LoadResult::fail(LoadStatus::Partial,
                            {file, lineNumber, "the file ends early, in the middle of line " + std::to_string(lineNumber)});
  };
  const char modeChar = firstLine.empty() ? ' ' : firstLine.front();
  if (modeChar < '0' || modeChar > '9')
    return LoadResult::fail(LoadStatus::WrongFormat, {file, 1, "line 1 does not start with the mode digit"});
  intMethod_ = static_cast<int16_t>(modeChar - '0');
  aZ_.clear();
  aValue_.clear();
  if (firstLine.size() > 1 && pos == bytes.size() && !endsWithLineEnd(bytes)) return cutShort(1);
  if (!readHead(intMethod_, firstLine))
    return LoadResult::fail(LoadStatus::Partial, {file, 1, "the value after the mode is not a number"});
  if (!readsPoints(intMethod_)) return {};

  int lineNumber = 1;
  while (nextLine(bytes, pos, line)) {
    ++lineNumber;
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos) break;  // the end of the list
    if (pos == bytes.size() && !endsWithLineEnd(bytes)) return cutShort(lineNumber);
    const auto z = tryParseSingle(line.substr(0, colon));
    const auto value = tryParseSingle(line.substr(colon + 1));
    if (!z || !value) return LoadResult::fail(LoadStatus::Partial, {file, lineNumber, "not a point \"depth:value\""});
    if (aZ_.size() >= kMaxPoints) return LoadResult::fail(LoadStatus::Partial, {file, lineNumber, "too many points"});
    aZ_.push_back(*z);
    aValue_.push_back(*value);
  }
  return {};
}

int16_t DepthProfile::loadInfo(Diagnostic* why) {
  const std::optional<std::string> bytes = readFileBytes(strPath_, why);
  if (!bytes) return -1;
  const LoadResult read = parseInfo(*bytes, strPath_);
  if (!read.complete() && why) *why = read.why;
  return 0;
}

std::string DepthProfile::infoText() const {
  const int mode = intMethod_ >= 0 && intMethod_ <= 9 ? intMethod_ : 0;
  std::string text = std::to_string(mode) + headText(mode) + "\r\n";
  if (writesPoints(static_cast<int16_t>(mode)))
    for (size_t i = 0; i < count(); ++i)
      text += formatNumber(aZ_[i], "0.0#") + ":" + formatNumber(aValue_[i], "0.0#") + "\r\n";
  return text;
}

bool DepthProfile::saveInfo(Diagnostic* why) const { return writeFileAtomically(strPath_, infoText(), why); }

}  // namespace koru
