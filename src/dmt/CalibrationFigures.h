#pragma once
// What a vertical's membrane calibrations say, as the DMT record needs it to choose its
// Delta A and Delta B: the averages and the range of the stored calibrations, kPa.

namespace koru {

struct CalibrationFigures {
  float averageDeltaA = 0, averageDeltaB = 0;
  int minDeltaA = 0, maxDeltaA = 0;
  int minDeltaB = 0, maxDeltaB = 0;
};

}  // namespace koru
