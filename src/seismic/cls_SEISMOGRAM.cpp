// The record itself: arrays and their running figures, the scale from counts to millivolts, the
// time axis, the gain advice, the elab string and the channel operations. The file is in
// SeismogramFile.cpp, the filter stage in SeismicFilters.cpp and the evaluation in
// VelocityEvaluation.cpp.

#include "seismic/cls_SEISMOGRAM.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "frame/Numbers.h"
#include "frame/strings/StringTable.h"
#include "frame/strings/StringIds.h"
#include "seismic/ElabString.h"
#include "seismic/SeismicMath.h"

namespace koru {

using seismic::roundClamped;

namespace {

// Gains the amplifier accepts: the base gain 20 times 1, 2, 4, 5, 8, ... 1024.
constexpr std::array<float, 21> kGainLadder = {20,   40,   80,   100,  160,  200,  320,  400,  500,   640,  800,
                                               1000, 1280, 1600, 2000, 2560, 3200, 5120, 6400, 10240, 20480};

// The amplifier's converter has eight bits; the reference voltage depends on the hardware.
// The figure is the decimal voltage itself: 3.3 taken through a float first would move `K4mV`
// by one unit in its last place at many gains.
double referenceVoltage(int16_t hardwareMinor, int16_t deviceType) {
  if (hardwareMinor != 0) return 3.3;
  switch (deviceType) {
    case 0:
      return 5.0;
    case 1:
    case 2:
      return 3.3;
    default:
      return 0.0;
  }
}

void copyInto(std::vector<float>& target, const std::vector<float>& source) {
  const size_t n = std::min(target.size(), source.size());
  std::copy_n(source.begin(), n, target.begin());
  std::fill(target.begin() + static_cast<std::ptrdiff_t>(n), target.end(), 0.0f);
}

// One raw sample into its channel's running sum and, once past the start samples, its extremes.
void tally(double& sum, float& mn, float& mx, float value, bool pastStart) {
  sum += static_cast<double>(value);
  if (!pastStart) return;
  if (value < mn) mn = value;
  if (value > mx) mx = value;
}

}  // namespace

cls_SEISMOGRAM::cls_SEISMOGRAM() { setNoiseParameters(); }

// ---- Length and arrays ------------------------------------------------------------------------

void cls_SEISMOGRAM::setIntN(int n) {
  n = std::clamp(n, 0, static_cast<int>(std::numeric_limits<int16_t>::max()));
  intN_ = static_cast<int16_t>(n);
  const auto size = static_cast<size_t>(n);
  g1r_.assign(size, 0.0f);
  g2r_.assign(size, 0.0f);
  g1f_.assign(size, 0.0f);
  g2f_.assign(size, 0.0f);
  resetExtremes();
}

void cls_SEISMOGRAM::set_vG1r(const std::vector<float>& v) { copyInto(g1r_, v); }
void cls_SEISMOGRAM::set_vG2r(const std::vector<float>& v) { copyInto(g2r_, v); }

std::vector<float> cls_SEISMOGRAM::vG1cc() const {
  std::vector<float> out;
  const int32_t last = static_cast<int32_t>(g1f_.size()) - 1;
  for (int32_t i = std::max(iEP1_, 0); i <= std::min(iEP2_, last); ++i)
    out.push_back(g1f_[static_cast<size_t>(i)] - mediaG1f);
  return out;
}

std::vector<float> cls_SEISMOGRAM::vG2cc() const {
  std::vector<float> out;
  const int32_t last = static_cast<int32_t>(g2f_.size()) - 1;
  for (int32_t i = std::max(iEP1_, 0); i <= std::min(iEP2_, last); ++i)
    out.push_back(g2f_[static_cast<size_t>(i)] - mediaG2f);
  return out;
}

// ---- Running sums and extremes ----------------------------------------------------------------

int32_t cls_SEISMOGRAM::startupSamples() const {
  // An external trigger leaves a pulse of about 2.5 ms at the start of the trace; otherwise the
  // filter's own start (its order) is what to leave out.
  if (triggerType == 1)
    return static_cast<int32_t>(
        roundClamped(2500.0 / static_cast<double>(sngTcamp), 0, std::numeric_limits<int32_t>::max()));
  switch (filterCode) {
    case 0:
    case 1:
    case 2:
      return 1;
    case 3:
      return 2;
    case 4:
    case 5:
      return 4;
    default:
      return 0;
  }
}

void cls_SEISMOGRAM::resetExtremes() {
  // The raw sums are deliberately left alone: they only ever grow (see prepareForEvalv).
  minG1r_ = 255;
  maxG1r_ = 0;
  minG2r_ = 255;
  maxG2r_ = 0;
  resetFilteredExtremes();
}

void cls_SEISMOGRAM::resetFilteredExtremes() {
  sumG1f_ = 0;
  sumG2f_ = 0;
  minG1f_ = 100000;
  maxG1f_ = -100000;
  minG2f_ = 100000;
  maxG2f_ = -100000;
}

void cls_SEISMOGRAM::tallyRaw(int count) {
  const int32_t start = startupSamples();
  for (int i = 0; i < count; ++i) {
    const auto at = static_cast<size_t>(i);
    tally(sumG1r_, minG1r_, maxG1r_, g1r_[at], i > start);
    tally(sumG2r_, minG2r_, maxG2r_, g2r_[at], i > start);
  }
}

void cls_SEISMOGRAM::storeSample(std::vector<float>& v, double& sum, float& mn, float& mx, float value, int i) {
  v[static_cast<size_t>(i)] = value;
  tally(sum, mn, mx, value, i > startupSamples());
}

bool cls_SEISMOGRAM::storeG1(float value, int i) {
  if (i < 0 || i >= intN_) return false;
  storeSample(g1r_, sumG1r_, minG1r_, maxG1r_, value, i);
  return true;
}

bool cls_SEISMOGRAM::storeG2(float value, int i) {
  if (i < 0 || i >= intN_) return false;
  storeSample(g2r_, sumG2r_, minG2r_, maxG2r_, value, i);
  return true;
}

void cls_SEISMOGRAM::prepareForEvalv() {
  // Walks the arrays as acquisition would have stored them. The raw sums keep what they held, so
  // a second call on the same record doubles the raw means: callers work on fresh records.
  resetExtremes();
  tallyRaw(intN_);
  calcMeansAndVoltage();
}

void cls_SEISMOGRAM::calcMeansAndVoltage() {
  if (intN_ > 0) {
    mediaG1r = static_cast<float>(sumG1r_ / intN_);
    mediaG2r = static_cast<float>(sumG2r_ / intN_);
  } else {
    mediaG1r = 0;
    mediaG2r = 0;
  }
  const double reference = referenceVoltage(hardwareMinor, deviceType);
  K4mV = static_cast<float>(reference * 1000.0 / std::max(1.0, static_cast<double>(Gain)) / 256.0);
  maxmVr = round2(static_cast<double>(K4mV) * 1.3 * maxGr());
}

float cls_SEISMOGRAM::maxGr() const {
  return std::max({maxG1r_ - mediaG1r, mediaG1r - minG1r_, maxG2r_ - mediaG2r, mediaG2r - minG2r_});
}

float cls_SEISMOGRAM::deltaGr() const { return std::max(maxG1r_ - minG1r_, maxG2r_ - minG2r_); }
float cls_SEISMOGRAM::maxGf() const { return std::max(maxG1f_, maxG2f_); }
float cls_SEISMOGRAM::minGf() const { return std::min(minG1f_, minG2f_); }

float cls_SEISMOGRAM::maxGrPseudo(int channel, float amplification) const {
  float deviation;
  if (channel == 1)
    deviation = std::max(std::fabs(maxG1r_ - mediaG1r), std::fabs(minG1r_ - mediaG1r));
  else if (channel == 2)
    deviation = std::max(std::fabs(maxG2r_ - mediaG2r), std::fabs(minG2r_ - mediaG2r));
  else
    return 1;
  return std::max(1.0f, round2(static_cast<double>(deviation) * K4mV * 1.3 * amplification));
}

float cls_SEISMOGRAM::maxGfPseudo(int channel, float amplification) const {
  float deviation;
  if (channel == 1)
    deviation = std::max(std::fabs(maxG1f_ - mediaG1f), std::fabs(minG1f_ - mediaG1f));
  else if (channel == 2)
    deviation = std::max(std::fabs(maxG2f_ - mediaG2f), std::fabs(minG2f_ - mediaG2f));
  else
    return 1;
  return std::max(1.0f, round2(static_cast<double>(deviation) * K4mV * 1.3 * amplification));
}

float cls_SEISMOGRAM::round2(double x) {
  if (!(x > 0) || !std::isfinite(x)) return 0;
  if (x >= 10 && x <= 100) return static_cast<float>(roundHalfEven(x));
  const double p = std::floor(std::log10(x)) - 1;
  return static_cast<float>(roundHalfEven(x * std::pow(10.0, -p)) * std::pow(10.0, p));
}

// ---- Time axis --------------------------------------------------------------------------------

float cls_SEISMOGRAM::TMin() const {
  // Boxes of the current line step the trigger delay by 1 ms; older ones by 943.79 us, the
  // period of their clock divider.
  const double step = intProbeLine >= 30 ? 1000.0 : 943.79;
  return static_cast<float>((static_cast<double>(TrigDelay) - 1.0) * step);
}

float cls_SEISMOGRAM::TMax() const { return static_cast<float>(intN_ * static_cast<double>(sngTcamp) + TMin()); }

float cls_SEISMOGRAM::vTi(int i) const { return static_cast<float>(i * static_cast<double>(sngTcamp) + TMin()); }

std::vector<float> cls_SEISMOGRAM::vect() const {
  std::vector<float> axis(static_cast<size_t>(intN_));
  for (int i = 0; i < intN_; ++i) axis[static_cast<size_t>(i)] = vTi(i);
  return axis;
}

int32_t cls_SEISMOGRAM::returnIndexTvec(float t) const {
  return static_cast<int32_t>(roundClamped((static_cast<double>(t) - TMin()) / static_cast<double>(sngTcamp),
                                           std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
}

float cls_SEISMOGRAM::maxTr() const { return static_cast<float>(g1r_.size() * static_cast<double>(sngTcamp)); }
float cls_SEISMOGRAM::maxTf() const { return static_cast<float>(g1f_.size() * static_cast<double>(sngTcamp)); }
float cls_SEISMOGRAM::maxTcc() const {
  return static_cast<float>((static_cast<double>(iEP2_) - iEP1_) * static_cast<double>(sngTcamp));
}

// ---- Gain ladder ------------------------------------------------------------------------------

float cls_SEISMOGRAM::setClosestLowerGain(float g) {
  for (size_t i = 0; i < kGainLadder.size(); ++i)
    if (kGainLadder[i] > g) return i == 0 ? kGainLadder[0] : kGainLadder[i - 1];
  return kGainLadder.back();
}

float cls_SEISMOGRAM::bestGainCoefficient() const {
  auto coefficient = [](float mn, float mx) {
    const float c = (mn + mx) / 2;
    const float headroom = std::min(c, 255 - c);
    const float deviation = std::max(c - mn, mx - c);
    return headroom / std::max(1.0f, deviation);
  };
  const float k = std::min(coefficient(minG1r_, maxG1r_), coefficient(minG2r_, maxG2r_));
  return k > 1 ? k : 0.5f;
}

float cls_SEISMOGRAM::bestAssignableGain() const {
  // Only clipping gets advice (half the gain, on the ladder); a quiet trace keeps its gain.
  if (bestGainCoefficient() <= 1.01f) return setClosestLowerGain(Gain * 0.5f);
  return 0;
}

// ---- Elab string and default settings ---------------------------------------------------------

std::string cls_SEISMOGRAM::get_elabString() const {
  return ElabString::joinStage(filterCode, filterParams) + ";" + ElabString::joinStage(windowCode, windowParams) + ";" +
         ElabString::joinStage(rephaseCode, rephaseParams);
}

bool cls_SEISMOGRAM::set_elabString(std::string_view text) {
  const auto stages = ElabString::splitStages(text);
  if (stages.empty()) return true;
  // Stage by stage: a text that breaks off keeps the stages read before the break.
  for (size_t s = 0; s < 3; ++s) {
    if (s >= stages.size()) return false;
    auto items = ElabString::splitItems(stages[s]);
    const bool isDelay = s == 2;
    const auto code = ElabString::parseCode(items[0], isDelay ? std::numeric_limits<int32_t>::min() : -32768,
                                            isDelay ? std::numeric_limits<int32_t>::max() : 32767);
    if (!code) return false;
    std::vector<std::string> params(items.begin() + 1, items.end());
    if (s == 0) {
      filterCode = static_cast<int16_t>(*code);
      filterParams = std::move(params);
    } else if (s == 1) {
      windowCode = static_cast<int16_t>(*code);
      windowParams = std::move(params);
    } else {
      rephaseCode = static_cast<int32_t>(*code);
      rephaseParams = std::move(params);
    }
  }
  return true;
}

std::string cls_SEISMOGRAM::returnElabString(const ProgramStrings& strings) const {
  const std::string fc = filterParams.empty() ? std::string() : filterParams.front();
  switch (filterCode) {
    case 0:
    case 1:
      return strings.getString(kStrFilterLabelLowPass) + " 1 (180)";
    case 2:
      return strings.getString(kStrFilterLabelLowPass) + " 1 (" + fc + ")";
    case 3:
      return strings.getString(kStrFilterLabelLowPass) + " 2 (" + fc + ")";
    case 4:
      return strings.getString(kStrFilterLabelBessel) + " (" + fc + ")";
    case 5:
      return strings.getString(kStrFilterLabelButterworth) + " (" + fc + ")";
    case 6:
      return "-";
    default:
      return "";
  }
}

void cls_SEISMOGRAM::setDefaultElabParameters() {
  if (triggerType == 2) return;  // an immediate trigger records noise: nothing to elaborate
  if (intWaveType == 1)
    setDefaultElabParametersVp();
  else
    setDefaultElabParametersVs();
}

void cls_SEISMOGRAM::setDefaultElabParametersVs() {
  filterCode = 5;
  filterParams = {"180"};
  windowCode = 4;
  windowParams = {};
  rephaseCode = 0;
  rephaseParams = {"0"};
}

void cls_SEISMOGRAM::setDefaultElabParametersVsPseudo() { setDefaultElabParametersVs(); }

void cls_SEISMOGRAM::setDefaultElabParametersVp() {
  filterCode = 5;
  filterParams = {"180"};
  windowCode = 5;
  windowParams = {};
  rephaseCode = 0;
  rephaseParams = {"0"};
}

void cls_SEISMOGRAM::setNoiseParameters() {
  filterCode = 6;
  filterParams = {};
  windowCode = 0;
  windowParams = {};
  rephaseCode = -1;
  rephaseParams = {};
}

void cls_SEISMOGRAM::setSismElabParametersTemplate(int16_t code, float cut, int16_t wCode, int first, int last,
                                                   int32_t rCode, float delay) {
  filterCode = code;
  filterParams = {formatNumber(cut, "")};
  windowCode = wCode;
  windowParams = {std::to_string(first), std::to_string(last)};
  rephaseCode = rCode;
  rephaseParams = {formatNumber(delay, "")};
}

// ---- Geometry and results ---------------------------------------------------------------------

float cls_SEISMOGRAM::ZSensor(int channel) const {
  if (channel == 1) return Z - distG1G2 * 0.5f;
  if (channel == 2) return Z + distG1G2 * 0.5f;
  return 0;
}

float cls_SEISMOGRAM::DeltaS() const {
  const double z = Z, d = distG1G2, h = distHammer;
  const double lower = std::sqrt((z + d / 2) * (z + d / 2) + h * h);
  const double upper = std::sqrt((z - d / 2) * (z - d / 2) + h * h);
  return static_cast<float>(lower - upper);
}

float cls_SEISMOGRAM::DeltaT() const {
  if (rawDelay_ == -1000.0f) return 0;
  return static_cast<float>(static_cast<double>(rawDelay_) + static_cast<double>(delaySampleG2) / 1000.0);
}

void cls_SEISMOGRAM::setDeltaT(float ms) {
  if (ms == 0)
    rawDelay_ = -1000;
  else
    rawDelay_ = static_cast<float>(static_cast<double>(ms) - static_cast<double>(delaySampleG2) / 1000.0);
}

int16_t cls_SEISMOGRAM::V() const {
  const float dt = DeltaT();
  if (!(dt > 0)) return 0;
  const double v = static_cast<double>(DeltaS()) * 1000.0 / static_cast<double>(dt);
  const auto rounded = toInt16(v);  // halves to even; a figure beyond 16 bits is no velocity
  return rounded ? *rounded : 0;
}

// ---- Channel operations -----------------------------------------------------------------------

void cls_SEISMOGRAM::cloneSeismogram(const cls_SEISMOGRAM& other) {
  distG1G2 = other.distG1G2;
  distHammer = other.distHammer;
  delaySampleG2 = other.delaySampleG2;
  triggerType = other.triggerType;
  triggerSensibility = other.triggerSensibility;
  deviceType = other.deviceType;
  hour = other.hour;
  notes = other.notes;
  firmwareMajor = other.firmwareMajor;
  firmwareMinor = other.firmwareMinor;
  hardwareMajor = other.hardwareMajor;
  hardwareMinor = other.hardwareMinor;
  Z = other.Z;
  sngTcamp = other.sngTcamp;
  Gain = other.Gain;
  LoopS = other.LoopS;
  TrigDelay = other.TrigDelay;
  Data = other.Data;
  intWaveType = other.intWaveType;
  setIntN(other.intN_);
  g1r_ = other.g1r_;
  g2r_ = other.g2r_;
}

bool cls_SEISMOGRAM::copyTrace(const cls_SEISMOGRAM& other, int source, int destination, std::string* message) {
  bool ok = true;
  std::vector<float> channel;
  if (source == 1) {
    channel = other.g1r_;
  } else if (source == 2) {
    channel = other.g2r_;
  } else {
    if (message) *message = "Incorrect Source";
    ok = false;
  }
  if (destination == 1) {
    copyInto(g1r_, channel);
  } else if (destination == 2) {
    copyInto(g2r_, channel);
  } else {
    if (message && ok) *message = "Incorrect Destination";
    ok = false;
  }
  return ok;
}

bool cls_SEISMOGRAM::moveTrace(int source, int destination, std::string* message) {
  const cls_SEISMOGRAM& self = *this;
  // copyTrace reads the whole source channel before it writes: moving a channel onto itself is
  // harmless.
  return copyTrace(self, source, destination, message);
}

void cls_SEISMOGRAM::invertChannel2() {
  for (float& s : g2r_) s = 255 - s;
}

}  // namespace koru
