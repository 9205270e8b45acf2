#include "synthetic_dissipation.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace koru::synth {

namespace {

// A uniform number in [0, 1) from the generator's raw output: raw outputs are the same on every
// standard library, the library's distributions are not.
double unit(std::mt19937& gen) { return static_cast<double>(gen()) / 4294967296.0; }

}  // namespace

double tflexMinutes(double ch) { return 7.0 / (60.0 * ch); }

double decayA(const DecayModel& model, double tMinutes) {
  if (!(tMinutes > 0)) return model.A0;
  const double tflex = tflexMinutes(model.Ch);
  const double exponent = 1.0 / (static_cast<double>(model.width) * std::log(10.0));
  return model.Aend + (model.A0 - model.Aend) / (1.0 + std::pow(tMinutes / tflex, exponent));
}

std::vector<double> readingTimes(const DecayModel& model) {
  std::mt19937 gen(model.seed);
  // Seconds: the membrane takes 8 to 14 s to reach A once the operator pressurises, and a whole
  // cycle (vent, wait for the buzzer, pressurise) is never shorter than 25 s.
  auto toA = [&] { return 8.0 + 6.0 * unit(gen); };
  constexpr double kShortestCycle = 25.0;
  const double last = tflexMinutes(model.Ch) * model.endFactor * 60.0;
  std::vector<double> seconds;
  double t = toA();
  seconds.push_back(t);
  while (static_cast<int>(seconds.size()) < model.maxReadings) {
    const double due = seconds.size() > 1 ? std::max(2.0 * t - 10.0, 0.0) : 0.0;
    t = std::max(due, t + kShortestCycle - 10.0) + toA();
    if (t > last) break;
    seconds.push_back(t);
  }
  std::vector<double> minutes;
  for (double s : seconds) minutes.push_back(s / 60.0);
  return minutes;
}

cls_DissTEST makeSyntheticDissipation(const DecayModel& model, const std::filesystem::path& folder) {
  cls_DissTEST test;
  test.folder = folder;
  test.setZd(model.zd);
  test.isZdSpecified = true;
  test.TstName = "SYN";
  test.Firm = "Synthetic";
  test.DeltaA = 15;
  test.DeltaB = 40;
  test.BFinal = model.bFinal;
  test.Mh = model.mh;

  std::mt19937 noise(model.seed ^ 0x9E3779B9u);
  std::vector<float> t;
  std::vector<int16_t> a;
  for (double minutes : readingTimes(model)) {
    const double value = decayA(model, minutes) + (2.0 * unit(noise) - 1.0) * model.noiseKpa;
    t.push_back(static_cast<float>(minutes));
    a.push_back(static_cast<int16_t>(std::lround(std::clamp(value, -32768.0, 32767.0))));
  }
  test.setDissData(t, a);
  return test;
}

}  // namespace koru::synth
