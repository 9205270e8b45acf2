#pragma once
// A simple layered soil model that gives the readings a dilatometer would take in it. The
// readings are made by inverting the evaluation's own relations (Po, P1 from Kd, Id and the
// stresses, then A and B from Po and P1 with the membrane corrections), with a little noise,
// so the demo sounding evaluates back to a believable profile.

#include <cstdint>
#include <vector>

namespace koru::demo {

struct Reading {
  float z;
  int16_t a, b, c;
};

struct SoundingPlan {
  float zStart = 0.2f, zEnd = 25.0f, step = 0.2f;
  float waterTable = 2.0f;
  int deltaA = 15, deltaB = 40;
  unsigned seed = 20260101;
};

// Layers: a stiff desiccated crust over soft clay, clayey silt, then dense sand; C readings
// every metre in the silt and sand.
std::vector<Reading> makeSounding(const SoundingPlan& plan);

}  // namespace koru::demo
