// From a seismogram to a wave velocity: filter both channels, cut the stretch of the strike that
// carries the wave, and find the delay of channel 2 behind channel 1 by cross-correlation,
// refined by up-sampling until one sample step is worth about 1 m/s of velocity.

#include <algorithm>
#include <cmath>
#include <limits>

#include "frame/Log.h"
#include "frame/Numbers.h"
#include "seismic/LagSearch.h"
#include "seismic/SeismicMath.h"
#include "seismic/cls_SEISMOGRAM.h"

namespace koru {

using seismic::roundClamped;
using seismic::truncClamped;

namespace {

constexpr int64_t kInt64Max = std::numeric_limits<int64_t>::max() / 4;

int32_t signOf(float x) { return x > 0 ? 1 : (x < 0 ? -1 : 0); }

// Largest deviation of a channel's filtered values from their mean, either way.
float largestDeviation(float mean, float mn, float mx) { return std::max(mean - mn, mx - mean); }

}  // namespace

bool cls_SEISMOGRAM::evalV() {
  const bool done = filterStage() && windowStage() && delayStage();
  if (!done) rawDelay_ = -1000;
  return done;
}

// ---- Half waves -------------------------------------------------------------------------------

std::optional<std::vector<cls_Semionda>> cls_SEISMOGRAM::splitHalfWaves(int channel) const {
  const std::vector<float>& f = filtered(channel);
  const float mean = filteredMean(channel);
  if (f.empty()) return std::nullopt;
  std::vector<cls_Semionda> list;
  const size_t last = f.size() - 1;
  auto x = [&](size_t i) { return f[i] - mean; };

  // Reaching the last index ends the work wherever it happens: the last sample never closes a
  // half wave, and a half wave still open there is dropped.
  size_t i = 0;
  if (i >= last) return list;
  while (x(i) == 0) {
    if (++i >= last) return list;
  }
  // The half wave under way when the trace starts is incomplete.
  const int32_t first = signOf(x(i));
  while (signOf(x(i)) == first) {
    if (++i >= last) return list;
  }
  for (;;) {
    cls_Semionda h;
    h.sign = signOf(x(i));
    h.iStart = static_cast<int32_t>(i);
    h.iMax = h.iStart;
    double sum = 0;
    while (signOf(x(i)) == h.sign) {
      const float v = x(i);
      if (std::fabs(v) > h.max) {
        h.max = std::fabs(v);
        h.iMax = static_cast<int32_t>(i);
      }
      sum += static_cast<double>(v);
      if (++i >= last) return list;
    }
    h.iEnd = static_cast<int32_t>(i) - 1;
    // Two or three samples are a wiggle, not a half wave.
    if (h.deltaI() > 1) {
      h.energy = sum;
      list.push_back(h);
    }
  }
}

// ---- Window stage -----------------------------------------------------------------------------

void cls_SEISMOGRAM::keepMainHalfWave(std::vector<cls_Semionda>& list, int channel) const {
  if (list.empty()) return;
  const float mean = filteredMean(channel);
  const double a = channel == 1 ? largestDeviation(mean, minG1f_, maxG1f_) : largestDeviation(mean, minG2f_, maxG2f_);
  const double big = 0.99 * a;
  if (std::fabs(list.front().max) >= big) {
    list.resize(1);
    return;
  }
  // Keep the main half wave and the one before it, where the wave starts to rise.
  while (list.size() >= 2) {
    if (std::fabs(list[1].max) >= big) {
      list.resize(2);
      return;
    }
    list.erase(list.begin());
  }
}

void cls_SEISMOGRAM::firstArrival() {
  auto& l1 = *halfWavesG1_;
  auto& l2 = *halfWavesG2_;
  const double tcampMs = static_cast<double>(sngTcamp) / 1000.0;
  const int64_t shortest = truncClamped(5.0 / tcampMs, 0, kInt64Max);  // 5 ms
  const int64_t longest = truncClamped(50.0 / tcampMs, 0, kInt64Max);  // 50 ms
  double e = 0;
  for (const auto& h : l1) e = std::max(e, std::fabs(h.energy));
  const double level = 0.2 * (static_cast<double>(maxG1f_) - mediaG1f);

  const cls_Semionda* chosen = nullptr;
  for (const auto& h : l1) {
    if (h.deltaI() >= shortest && h.deltaI() <= longest && std::fabs(h.energy) > 0.2 * e && h.max > level) {
      chosen = &h;
      break;
    }
  }
  if (!chosen) return;
  const cls_Semionda c = *chosen;
  l1 = {c};

  // Its partner on channel 2: the first half wave that ends after the chosen one starts; of two
  // overlapping candidates the one that overlaps more (the first on a tie).
  size_t k = 0;
  while (k < l2.size() && l2[k].iEnd <= c.iStart) ++k;
  if (k == l2.size()) return;
  cls_Semionda partner = l2[k];
  if (partner.iStart < c.iEnd && k + 1 < l2.size() && l2[k + 1].iStart < c.iEnd) {
    auto overlap = [&](const cls_Semionda& h) { return std::min(h.iEnd, c.iEnd) - std::max(h.iStart, c.iStart); };
    if (overlap(l2[k + 1]) > overlap(partner)) partner = l2[k + 1];
  }
  l2 = {partner};
}

void cls_SEISMOGRAM::fixInterval() {
  const int32_t last = static_cast<int32_t>(g1f_.size()) - 1;
  int32_t first = last, end = 0;
  // The same stretch of time has to go into both sides of the correlation.
  for (const auto* list : {&*halfWavesG1_, &*halfWavesG2_}) {
    for (const auto& h : *list) {
      first = std::min(first, h.iStart);
      end = std::max(end, h.iEnd);
    }
  }
  if (first < end)
    windowParams = {std::to_string(first), std::to_string(end)};
  else
    windowParams = {"0", std::to_string(last)};
}

void cls_SEISMOGRAM::applyInterval(int first, int last) {
  const int32_t n = static_cast<int32_t>(g1f_.size());
  iEP1_ = std::max(first, 0);
  iEP2_ = std::min(last, n - 1);
  // A tenth of the interval on either side for the tapers, at most 12.5 ms, at least 2 samples.
  const double tenth = (static_cast<double>(iEP2_) - iEP1_) / 10.0;
  const double cap = 12500.0 / static_cast<double>(sngTcamp);
  const int32_t tail = static_cast<int32_t>(std::max<int64_t>(2, truncClamped(std::min(tenth, cap), 0, n)));
  const int32_t iMin = std::max(iEP1_ - tail, 0);
  const int32_t iMax = std::min(iEP2_ + tail, n - 1);
  g1w_.assign(static_cast<size_t>(iMax - iMin + 1), 0.0f);
  g2w_.assign(static_cast<size_t>(iMax - iMin + 1), 0.0f);
  const double halfPi = seismic::kPiExact / 2;
  for (int32_t i = iMin; i <= iMax; ++i) {
    double factor = 1;
    if (i < iEP1_)
      factor = std::cos(static_cast<double>(iEP1_ - i) / (iEP1_ - iMin) * halfPi);
    else if (i > iEP2_)
      factor = std::cos(static_cast<double>(i - iEP2_) / (iMax - iEP2_) * halfPi);
    const float x1 = g1f_[static_cast<size_t>(i)] - mediaG1f;
    const float x2 = g2f_[static_cast<size_t>(i)] - mediaG2f;
    g1w_[static_cast<size_t>(i - iMin)] = static_cast<float>(x1 * factor);
    g2w_[static_cast<size_t>(i - iMin)] = static_cast<float>(x2 * factor);
  }
}

bool cls_SEISMOGRAM::windowStage() {
  const int32_t n = static_cast<int32_t>(g1f_.size());
  halfWavesG1_.reset();
  halfWavesG2_.reset();
  int16_t code = windowCode;
  if (code >= 3 && code <= 5) {
    halfWavesG1_ = splitHalfWaves(1);
    halfWavesG2_ = splitHalfWaves(2);
    if (!halfWavesG1_ || !halfWavesG2_) code = 0;  // no trace to split: no window
  }
  switch (code) {
    case 2:
      break;
    case 3:
      for (int c = 1; c <= 2; ++c) {
        auto& list = c == 1 ? *halfWavesG1_ : *halfWavesG2_;
        const float mean = filteredMean(c);
        const double a = c == 1 ? largestDeviation(mean, minG1f_, maxG1f_) : largestDeviation(mean, minG2f_, maxG2f_);
        std::erase_if(list, [&](const cls_Semionda& h) { return h.max < 0.75 * a; });
      }
      fixInterval();
      break;
    case 4:
      keepMainHalfWave(*halfWavesG1_, 1);
      keepMainHalfWave(*halfWavesG2_, 2);
      fixInterval();
      break;
    case 5:
      firstArrival();
      fixInterval();
      break;
    default: {
      // No window: the whole de-meaned channels.
      g1w_.resize(static_cast<size_t>(n));
      g2w_.resize(static_cast<size_t>(n));
      for (size_t i = 0; i < static_cast<size_t>(n); ++i) {
        g1w_[i] = g1f_[i] - mediaG1f;
        g2w_[i] = g2f_[i] - mediaG2f;
      }
      iEP1_ = 0;
      iEP2_ = n - 1;
      return true;
    }
  }
  // The interval in the list; an item that is missing stands for the end of the trace.
  const int64_t lo = std::numeric_limits<int32_t>::min(), hi = std::numeric_limits<int32_t>::max();
  const int first = windowParams.size() >= 1 ? static_cast<int>(roundClamped(parseSingle(windowParams[0]), lo, hi)) : 0;
  const int last =
      windowParams.size() >= 2 ? static_cast<int>(roundClamped(parseSingle(windowParams[1]), lo, hi)) : n - 1;
  if (n == 0 || std::max(first, 0) > std::min(last, n - 1)) {
    logLine("window interval out of the trace");
    return false;
  }
  applyInterval(first, last);
  return true;
}

// ---- Delay stage ------------------------------------------------------------------------------

void cls_SEISMOGRAM::upSample() {
  const int64_t k = static_cast<int64_t>(upFactor_) + 1;
  upStep_ = static_cast<float>(static_cast<double>(sngTcamp) / static_cast<double>(k));
  const size_t n = g1w_.size();
  if (n == 0) {
    g1up_.clear();
    g2up_.clear();
    return;
  }
  const size_t lastW = n - 1;
  g1up_.assign(static_cast<size_t>(k) * lastW + 1, 0.0);
  g2up_.assign(static_cast<size_t>(k) * lastW + 1, 0.0);
  // Straight lines between the samples. The very last point is not written and stays 0; the
  // tapers bring the trace to zero there anyway.
  auto fill = [&](const std::vector<float>& w, std::vector<double>& up) {
    for (size_t i = 0; i < lastW; ++i) {
      const size_t base = static_cast<size_t>(k) * i;
      const float slope = (w[i + 1] - w[i]) / sngTcamp;
      float p = w[i];
      up[base] = p;
      for (int64_t m = 1; m < k; ++m) {
        p = p + slope * upStep_;
        up[base + static_cast<size_t>(m)] = p;
      }
    }
  };
  fill(g1w_, g1up_);
  fill(g2w_, g2up_);
}

int32_t cls_SEISMOGRAM::searchLag(int64_t low, int64_t high, double ds, double vmin) const {
  if (high == 0) {
    // The longest delay a velocity above vmin can give.
    const double longest = roundHalfEven(1e6 * ds / vmin);
    high = roundClamped(longest / static_cast<double>(upStep_), 0, kInt64Max, 0);
  }
  const int64_t lag = LagSearch::bestLag(g1up_.data(), g2up_.data(), g1up_.size(), low, high);
  return static_cast<int32_t>(std::clamp<int64_t>(lag, -1, std::numeric_limits<int32_t>::max()));
}

bool cls_SEISMOGRAM::delayStage() {
  if (rephaseCode == 3) {
    if (rephaseParams.empty()) return false;
    setDeltaT(parseSingle(rephaseParams.front()));
    return true;
  }
  if (rephaseCode == -1) {
    setDeltaT(0);
    return true;
  }

  rawDelay_ = -1000;
  // Without a sample time there is no time axis to measure a delay on.
  if (!(sngTcamp > 0) || !std::isfinite(sngTcamp)) return false;
  const bool compression = intWaveType == 1;
  const double vmax = compression ? 5000 : 2000;
  const double vmin = compression ? 50 : 20;
  const int nSteps = compression ? 10 : 5;

  const double ds = DeltaS();
  const double shortest = roundHalfEven(1e6 * ds / vmax);  // us
  // The shortest possible delay is to span nSteps sample steps.
  upFactor_ = static_cast<int16_t>(shortest / nSteps <= static_cast<double>(sngTcamp) ? nSteps - 1 : 0);
  upSample();
  const double oldStep = upStep_;
  int32_t lag = searchLag(0, 0, ds, vmin);
  double t = 1e-6 * lag * static_cast<double>(upStep_);

  // Refine only a delay that a real velocity can give, and only as far as 1 m/s asks.
  if (!(ds / vmax > t) && lag > 0) {
    const double delta = 1e6 * t * t / (ds - t);  // us
    if (!(static_cast<double>(upStep_) <= delta)) {
      const int64_t factor = std::min<int64_t>(120, roundClamped(static_cast<double>(sngTcamp) / delta, -1, 120, -1));
      if (factor > 1) {
        upFactor_ = static_cast<int16_t>(factor);
        upSample();
        const auto range = LagSearch::refinedRange(lag, oldStep, static_cast<double>(upStep_));
        lag = searchLag(range.low, range.high, ds, vmin);
        t = 1e-6 * lag * static_cast<double>(upStep_);
      }
    }
  }
  if (t > 0) rawDelay_ = static_cast<float>(1000.0 * t);
  return true;
}

// ---- Dominant frequency -----------------------------------------------------------------------

float cls_SEISMOGRAM::Evaluate_Frequency(int channel) const {
  if (channel != 1 && channel != 2) return 0;
  const std::vector<float>& y = channel == 1 ? g1r_ : g2r_;
  const double mean = channel == 1 ? mediaG1r : mediaG2r;
  size_t i = 0;
  while (i < y.size() && y[i] - mean == 0) ++i;
  if (i >= y.size()) return 0;
  const bool fromAbove = y[i] - mean > 0;

  // Crossings of the mean leaving the side the trace starts on, placed by linear interpolation.
  std::vector<double> crossings;
  for (size_t j = i; j + 1 < y.size(); ++j) {
    const double y1 = y[j], y2 = y[j + 1];
    const bool crosses = fromAbove ? (y1 - mean > 0 && y2 - mean <= 0) : (y1 - mean < 0 && y2 - mean >= 0);
    if (!crosses) continue;
    if (y1 == y2) {
      logLine("EvaluateZero: same Y, zero to infinite");
      continue;
    }
    crossings.push_back(static_cast<double>(j) + (mean - y1) / (y2 - y1));
  }
  if (crossings.size() < 2) return 0;
  double sum = 0;
  for (size_t k = 1; k < crossings.size(); ++k) sum += crossings[k] - crossings[k - 1];
  const double period = sum / static_cast<double>(crossings.size() - 1);
  const double f = 1e6 / (static_cast<double>(sngTcamp) * period);
  return std::isfinite(f) ? static_cast<float>(f) : 0.0f;
}

}  // namespace koru
