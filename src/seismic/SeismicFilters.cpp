#include "seismic/SeismicFilters.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "frame/Log.h"
#include "frame/Numbers.h"
#include "seismic/SeismicMath.h"
#include "seismic/cls_SEISMOGRAM.h"

namespace koru {

SeismicFilters::Coefficients SeismicFilters::coefficients(int16_t code, float fc, float tcamp) {
  Coefficients c;
  c.code = code;
  if (code == 0 || code == 1) fc = 180;
  const double pi = seismic::kPiExact;
  const double k = seismic::toSingle(2.0 * pi * static_cast<double>(fc) * 1e-6 * static_cast<double>(tcamp));
  const double k2 = k * k;
  switch (code) {
    case 0:
    case 1:
    case 2: {
      const double p = seismic::toSingle(2.0 * (1e-6 * static_cast<double>(tcamp)) * pi * static_cast<double>(fc));
      c.order = 1;
      c.A = static_cast<float>((2.0 - p) / (p + 2.0));
      c.B = static_cast<float>(p / (p + 2.0));
      break;
    }
    case 3:
      // 1 / (1 + s/w)^2
      c.order = 2;
      c.b = {static_cast<float>(k2), static_cast<float>(2.0 * k2), static_cast<float>(k2), 0, 0};
      c.a = {static_cast<float>(k2 + 4.0 * k + 4.0), static_cast<float>(2.0 * k2 - 8.0),
             static_cast<float>(k2 - 4.0 * k + 4.0), 0, 0};
      break;
    case 4:
    case 5: {
      // Two second-order sections K^2 (1 + z^-1)^2 / (P + Q z^-1 + R z^-2), multiplied out. The
      // constants are twice and four times the normalised prototypes' coefficients, to four
      // digits, as every evaluated file was computed with them.
      const bool bessel = code == 4;
      const double p1 = seismic::toSingle(bessel ? k2 + 2.6794 * k + 1.9556 : k2 + 3.6956 * k + 4.0);
      const double q1 = seismic::toSingle(bessel ? 2.0 * k2 - 3.9112 : 2.0 * k2 - 8.0);
      const double r1 = seismic::toSingle(bessel ? k2 - 2.6794 * k + 1.9556 : k2 - 3.6956 * k + 4.0);
      const double p2 = seismic::toSingle(bessel ? k2 + 1.5486 * k + 1.556 : k2 + 1.5308 * k + 4.0);
      const double q2 = seismic::toSingle(bessel ? 2.0 * k2 - 3.112 : 2.0 * k2 - 8.0);
      const double r2 = seismic::toSingle(bessel ? k2 - 1.5486 * k + 1.556 : k2 - 1.5308 * k + 4.0);
      const double k4 = k2 * k2;
      c.order = 4;
      c.b = {static_cast<float>(k4), static_cast<float>(4.0 * k4), static_cast<float>(6.0 * k4),
             static_cast<float>(4.0 * k4), static_cast<float>(k4)};
      c.a = {static_cast<float>(p2 * p1), static_cast<float>(p2 * q1 + q2 * p1),
             static_cast<float>(q2 * q1 + r2 * p1 + p2 * r1), static_cast<float>(q2 * r1 + r2 * q1),
             static_cast<float>(r2 * r1)};
      break;
    }
    default:
      c.order = 0;
      break;
  }
  return c;
}

void SeismicFilters::run(const Coefficients& c, const float* x, float* y, size_t n, size_t start) {
  start = std::max(start, static_cast<size_t>(c.order));
  const double A = c.A, B = c.B;
  const double b0 = c.b[0], b1 = c.b[1], b2 = c.b[2], b3 = c.b[3], b4 = c.b[4];
  const double a0 = c.a[0], a1 = c.a[1], a2 = c.a[2], a3 = c.a[3], a4 = c.a[4];
  switch (c.order) {
    case 1:
      for (size_t i = start; i < n; ++i)
        y[i] = static_cast<float>(A * y[i - 1] + B * (static_cast<double>(x[i]) + x[i - 1]));
      break;
    case 2:
      for (size_t i = start; i < n; ++i)
        y[i] = static_cast<float>((b0 * x[i] + b1 * x[i - 1] + b2 * x[i - 2] - a1 * y[i - 1] - a2 * y[i - 2]) / a0);
      break;
    case 4:
      for (size_t i = start; i < n; ++i)
        y[i] = static_cast<float>((b0 * x[i] + b1 * x[i - 1] + b2 * x[i - 2] + b3 * x[i - 3] + b4 * x[i - 4] -
                                   (a1 * y[i - 1] + a2 * y[i - 2] + a3 * y[i - 3] + a4 * y[i - 4])) /
                                  a0);
      break;
    default:
      for (size_t i = start; i < n; ++i) y[i] = x[i];
      break;
  }
}

// ---- The filter stage of a record -------------------------------------------------------------

void cls_SEISMOGRAM::filterSeismogramManager() { filterStage(); }

bool cls_SEISMOGRAM::filterStage() {
  if (filterCode < 0 || filterCode > 6) {
    logLine("filter code: " + std::to_string(filterCode));
    return true;  // the filtered arrays stay as they were
  }
  if (filterCode == 0 || filterCode == 1) filterParams = {"180"};

  const size_t n = g1r_.size();
  if (filterCode == 6) {
    g1f_ = g1r_;
    g2f_ = g2r_;
    minG1f_ = minG1r_;
    maxG1f_ = maxG1r_;
    minG2f_ = minG2r_;
    maxG2f_ = maxG2r_;
    mediaG1f = mediaG1r;
    mediaG2f = mediaG2r;
    maxmVf = maxmVr;
    return true;
  }
  if (filterParams.empty()) {
    logLine("filter without a cut frequency");
    return false;
  }
  const float fc = parseSingle(filterParams.front());
  const auto c = SeismicFilters::coefficients(filterCode, fc, sngTcamp);

  g1f_.assign(n, 0.0f);
  g2f_.assign(n, 0.0f);
  resetFilteredExtremes();

  // The output starts at rest at the trace's level, so the first sample's step does not ring
  // through the trace; these samples also stay out of the extremes.
  const size_t s = static_cast<size_t>(std::min<int64_t>(startupSamples(), static_cast<int64_t>(n)));
  std::fill_n(g1f_.begin(), s, mediaG1r);
  std::fill_n(g2f_.begin(), s, mediaG2r);
  sumG1f_ = static_cast<double>(s) * mediaG1r;
  sumG2f_ = static_cast<double>(s) * mediaG2r;

  const size_t start = std::max(s, static_cast<size_t>(c.order));
  SeismicFilters::run(c, g1r_.data(), g1f_.data(), n, start);
  SeismicFilters::run(c, g2r_.data(), g2f_.data(), n, start);
  for (size_t i = start; i < n; ++i) {
    const float a = g1f_[i], b = g2f_[i];
    sumG1f_ += static_cast<double>(a);
    sumG2f_ += static_cast<double>(b);
    if (a < minG1f_) minG1f_ = a, iMinG1f_ = static_cast<int32_t>(i);
    if (a > maxG1f_) maxG1f_ = a, iMaxG1f_ = static_cast<int32_t>(i);
    if (b < minG2f_) minG2f_ = b, iMinG2f_ = static_cast<int32_t>(i);
    if (b > maxG2f_) maxG2f_ = b, iMaxG2f_ = static_cast<int32_t>(i);
  }
  mediaG1f = n > 0 ? static_cast<float>(sumG1f_ / static_cast<double>(n)) : 0.0f;
  mediaG2f = n > 0 ? static_cast<float>(sumG2f_ / static_cast<double>(n)) : 0.0f;
  maxmVf = round2(static_cast<double>(K4mV) * 1.3 * std::max(std::fabs(maxGf()), std::fabs(minGf())));
  return true;
}

void cls_SEISMOGRAM::setFilter(int16_t code, float fc) {
  filterCode = code;
  filterParams = {formatNumber(fc, "")};
}

// ---- Window interval in milliseconds ----------------------------------------------------------

float cls_SEISMOGRAM::cutLow_ms() {
  // An empty list gets the first index as its first item; the figure returned for it is a
  // number of samples, the unset state the windows recognise.
  if (windowParams.empty()) {
    windowParams.push_back("0");
    return 0;
  }
  return static_cast<float>(static_cast<double>(parseSingle(windowParams[0])) * sngTcamp / 1000.0);
}

float cls_SEISMOGRAM::cutHigh_ms() {
  const int last = static_cast<int>(intN_) - 1;
  if (windowParams.size() < 2) {
    windowParams.push_back(std::to_string(last));
    return static_cast<float>(last * static_cast<double>(sngTcamp) / 1000.0);
  }
  return static_cast<float>(static_cast<double>(parseSingle(windowParams[1])) * sngTcamp / 1000.0);
}

namespace {

// ms to a sample index as the list keeps it: a whole number, written with "0".
std::string sampleIndexText(double index) {
  if (std::isnan(index)) index = 0;
  index = std::clamp(index, -1e9, 1e9);
  return formatNumber(index, "0");
}

}  // namespace

void cls_SEISMOGRAM::set_cutLow_ms(float ms) {
  const int last = static_cast<int>(intN_) - 1;
  const std::string second = windowParams.size() >= 2 ? windowParams[1] : std::to_string(last);
  const double index = std::max(0.0, static_cast<double>(ms) * 1000.0 / static_cast<double>(sngTcamp));
  windowParams = {sampleIndexText(index), second};
  windowCode = (parseSingle(windowParams[0]) <= 0 && parseSingle(windowParams[1]) >= static_cast<float>(last)) ? 0 : 2;
}

void cls_SEISMOGRAM::set_cutHigh_ms(float ms) {
  const int last = static_cast<int>(intN_) - 1;
  const std::string first = windowParams.empty() ? std::string("0") : windowParams[0];
  // Bounded by the sample count, not the last index: a window up to the very end reads as none.
  const double index =
      std::min(static_cast<double>(intN_), static_cast<double>(ms) * 1000.0 / static_cast<double>(sngTcamp));
  windowParams = {first, sampleIndexText(index)};
  windowCode = (parseSingle(windowParams[0]) <= 0 && parseSingle(windowParams[1]) >= static_cast<float>(last)) ? 0 : 2;
}

// ---- Stacking ---------------------------------------------------------------------------------

bool cls_SEISMOGRAM::addTracks(const cls_SEISMOGRAM& other) {
  if (other.intN_ != intN_ || !(other.Gain > 0)) return false;
  // Both traces brought to this record's gain and averaged about this record's level. Repeated
  // calls weight the later strikes more; that is how stacks have always been made.
  const double r = static_cast<double>(Gain) / static_cast<double>(other.Gain);
  for (size_t i = 0; i < g1r_.size(); ++i) {
    g1r_[i] = static_cast<float>(
        ((other.g1r_[i] - static_cast<double>(other.mediaG1r)) * r + (g1r_[i] - static_cast<double>(mediaG1r))) / 2.0 +
        mediaG1r);
    g2r_[i] = static_cast<float>(
        ((other.g2r_[i] - static_cast<double>(other.mediaG2r)) * r + (g2r_[i] - static_cast<double>(mediaG2r))) / 2.0 +
        mediaG2r);
  }
  return true;
}

}  // namespace koru
