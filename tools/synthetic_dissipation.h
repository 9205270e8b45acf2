#pragma once
// Synthetic dissipation tests for tests and demos: the A reading decays along an S-curve in log
// time whose flex sits at the Tflex that a chosen Ch gives (Tflex = 7 / (60 Ch) minutes), read on
// the schedule the field workflow follows, with small deterministic noise.
//
// Decay: A(t) = Aend + (A0 - Aend) / (1 + (t / Tflex)^(1 / (w ln 10))), a logistic in ln t with
// its flex (in A against log t) exactly at t = Tflex and a spread of about w decades.
//
// Schedule: the first reading comes as soon as the blade is pressurised, the second right after
// the first cycle; from then on each reading is due 10 s before twice the time of the previous
// one, and A is reached a few seconds after it is due.

#include <cstdint>
#include <vector>

#include "dissipation/cls_DissTEST.h"

namespace koru::synth {

struct DecayModel {
  float Ch = 0.01f;        // cm^2/s
  float A0 = 560.0f;       // kPa, A just after the blade stops
  float Aend = 310.0f;     // kPa, A when the excess pore pressure is gone
  float width = 0.45f;     // decades of log t over which the S-curve turns
  float noiseKpa = 1.0f;   // half-width of the uniform noise on A
  float endFactor = 10.0f; // readings stop once the time passes endFactor x Tflex
  int maxReadings = 60;
  uint32_t seed = 1;
  float zd = 12.3f;        // m
  float bFinal = 0;        // kPa, 0 for none
  float mh = 0;            // MPa, 0 for none
};

// Tflex in minutes of a Ch in cm^2/s.
double tflexMinutes(double ch);
// The noise-free decay at t minutes.
double decayA(const DecayModel& model, double tMinutes);
// Reading times in minutes, with the jitter of the operator's reaction from the seed.
std::vector<double> readingTimes(const DecayModel& model);
// A whole test: header, readings (A rounded to whole kPa after the noise), depth and file name
// in `folder`.
cls_DissTEST makeSyntheticDissipation(const DecayModel& model, const std::filesystem::path& folder = {});

}  // namespace koru::synth
