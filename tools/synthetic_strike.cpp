#include "synthetic_strike.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace koru::synth {

namespace {

constexpr double kPi = 3.14159265358979323846;

double wavelet(const StrikeSettings& s, double tMs) {
  const double t = (tMs - s.arrival) / 1000.0;  // s
  if (s.wavelet == Wavelet::Ricker) {
    const double a = kPi * kPi * s.frequency * s.frequency * t * t;
    return (1 - 2 * a) * std::exp(-a);
  }
  if (t < 0) return 0;
  const double damping = s.frequency * 3.0;  // a few cycles
  return std::sin(2 * kPi * s.frequency * t) * std::exp(-damping * t);
}

// Noise from the generator's raw outputs only, so every platform makes the same strike: four
// uniform draws summed (nearly normal), unit variance.
double noiseSample(std::mt19937& gen) {
  double sum = 0;
  for (int k = 0; k < 4; ++k) sum += static_cast<double>(gen()) / 4294967296.0;
  return (sum - 2.0) * std::sqrt(3.0);
}

cls_SEISMOGRAM header(const StrikeSettings& s) {
  cls_SEISMOGRAM r;
  r.intWaveType = s.waveType;
  r.sngTcamp = s.sngTcamp;
  r.Z = s.Z;
  r.distG1G2 = s.distG1G2;
  r.distHammer = s.distHammer;
  r.Gain = s.gain;
  r.triggerType = s.triggerType;
  r.LoopS = 100;
  r.triggerSensibility = 10;
  r.TrigDelay = 1;
  r.Data = "12/03/2024";
  r.hour = "10:15:00";
  r.firmwareMajor = 3;
  r.firmwareMinor = 1;
  r.hardwareMajor = 2;
  r.hardwareMinor = 1;
  return r;
}

}  // namespace

double trueDelayMs(const StrikeSettings& settings) { return header(settings).DeltaS() / settings.velocity * 1000.0; }

cls_SEISMOGRAM makeSyntheticStrike(const StrikeSettings& s) {
  cls_SEISMOGRAM r = header(s);
  const double delay = trueDelayMs(s);
  std::mt19937 gen(s.seed);
  r.setIntN(s.n);
  auto level = [&](double signal) {
    double v = 127.5 + signal + s.noise * noiseSample(gen);
    if (s.quantise) v = std::floor(v);
    if (s.clip) v = std::clamp(v, 0.0, 255.0);
    return static_cast<float>(v);
  };
  for (int i = 0; i < s.n; ++i) {
    const double t = i * static_cast<double>(s.sngTcamp) / 1000.0;  // ms
    r.storeG1(level(s.amplitude * wavelet(s, t)), i);
    r.storeG2(level(s.amplitude * s.scale2 * wavelet(s, t - delay)), i);
  }
  r.calcMeansAndVoltage();
  return r;
}

}  // namespace koru::synth
