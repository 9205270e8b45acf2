#pragma once
// Synthetic hammer strikes with a known delay, for tests, benchmarks and fuzz seeds: a wavelet on
// channel 1 and the same wavelet, scaled, on channel 2 later by the delay that the chosen
// velocity gives over the record's geometry; noise from a seeded generator; the 127.5 offset of
// the probe's 8-bit converter, whole counts, and clipping at 0 and 255 if asked.

#include <cstdint>

#include "seismic/cls_SEISMOGRAM.h"

namespace koru::synth {

enum class Wavelet { Ricker, DampedSine };

struct StrikeSettings {
  int32_t waveType = 0;     // 0 shear, 1 compression
  int n = 700;              // samples per channel
  float sngTcamp = 100;     // us
  float Z = 5;              // m
  float distG1G2 = 0.5f;    // m
  float distHammer = 1.4f;  // m
  double velocity = 200;    // m/s: the delay is DeltaS / velocity
  Wavelet wavelet = Wavelet::Ricker;
  double frequency = 100;  // Hz, dominant frequency of the wavelet
  double arrival = 15;     // ms, time of the wavelet's peak (Ricker) or onset on channel 1
  double amplitude = 60;   // counts on channel 1
  double scale2 = 0.8;     // channel 2 amplitude relative to channel 1
  double noise = 1.0;      // counts, standard deviation (about) of the added noise
  uint32_t seed = 1;
  bool quantise = true;  // whole counts, as the converter gives them
  bool clip = true;      // 0 .. 255
  float gain = 100;
  int16_t triggerType = 0;
};

// A loaded-state record (means and scale computed) with noise elaboration settings; callers set
// the elaboration they want.
cls_SEISMOGRAM makeSyntheticStrike(const StrikeSettings& settings);

// The delay the strike was built with, ms (from the record's own DeltaS).
double trueDelayMs(const StrikeSettings& settings);

}  // namespace koru::synth
