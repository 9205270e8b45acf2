#include "results/cls_statVec.h"

#include <cmath>
#include <limits>

#include "frame/Log.h"
#include "frame/Numbers.h"

namespace koru {

namespace {

int16_t saturated16(int64_t count) {
  if (count <= 0) return 0;
  return count > std::numeric_limits<int16_t>::max() ? std::numeric_limits<int16_t>::max()
                                                     : static_cast<int16_t>(count);
}

// 0 is no reading; a value that is not finite can only come from a broken evaluation and is
// treated the same way, so one bad row cannot spoil the scale of a whole site.
bool isReading(float v) { return v != 0.0f && std::isfinite(v); }

}  // namespace

void cls_statVec::setVecAndCalculate(std::span<const float> values, bool logValues) {
  addVec(values);
  statCalculate(logValues);
}

void cls_statVec::addVec(std::span<const float> values) {
  if (N > 0)
    vettore.insert(vettore.end(), values.begin(), values.end());
  else
    vettore.assign(values.begin(), values.end());
}

void cls_statVec::statCalculate(bool logValues) {
  media = 0;
  N = 0;
  nNon0 = 0;
  sngMax = kStartMax;
  sngMin = kStartMin;

  double sum = 0;
  int64_t count = 0;
  for (const float v : vettore) {
    if (!isReading(v)) continue;
    if (logValues) logLine(formatNumber(v, ""));
    sum += v;
    if (v > sngMax) sngMax = v;
    if (v < sngMin) sngMin = v;
    ++count;
  }
  if (count > 0) media = static_cast<float>(sum / static_cast<double>(count));
  nNon0 = saturated16(count);
  N = saturated16(static_cast<int64_t>(vettore.size()));

  // With no reading the excess figures stay as the last calculation left them.
  if (count < 1) return;
  nOltreMedia = 0;
  mediaOltreMedia = 0;
  double excess = 0;
  int64_t above = 0;
  for (const float v : vettore) {
    if (!isReading(v) || !(v > media)) continue;
    excess += static_cast<double>(v) - static_cast<double>(media);
    ++above;
  }
  nOltreMedia = saturated16(above);
  if (above >= 1) mediaOltreMedia = static_cast<float>(excess / static_cast<double>(above));
}

void cls_statVec::add(const cls_statVec& other) {
  const int64_t total = static_cast<int64_t>(nNon0) + other.nNon0;
  if (total == 0) return;

  const double merged = (static_cast<double>(nNon0) * media + static_cast<double>(other.nNon0) * other.media) /
                        static_cast<double>(total);
  media = static_cast<float>(merged);
  sngMax = Max(sngMax, other.sngMax);
  // A bound of 0 has never been calculated: it takes the other's, and never replaces a real one.
  if (sngMin != 0 && other.sngMin != 0)
    sngMin = Min(sngMin, other.sngMin);
  else if (sngMin == 0)
    sngMin = other.sngMin;
  N = saturated16(static_cast<int64_t>(N) + other.N);
  nNon0 = saturated16(total);
}

std::vector<std::string> cls_statVec::debugLines() const {
  const auto line = [](const char* label, float value) {
    return std::string(label) + formatNumber(value, "") + ")";
  };
  return {line("Media (", media),
          line("Min (", sngMin),
          line("Max (", sngMax),
          line("nNon0 (", nNon0),
          line("N (", N),
          line("nOltreMedia (", nOltreMedia),
          line("mediaOltreMedia (", mediaOltreMedia)};
}

void cls_statVec::debugPrint() const {
  for (const std::string& l : debugLines()) logLine(l);
}

}  // namespace koru
