#include "demo_soil_model.h"

#include <cmath>
#include <random>

namespace koru::demo {

namespace {

// Uniform noise in [-1, 1] from the raw engine output, which is the same on every platform
// (the standard distributions are not).
class Noise {
 public:
  explicit Noise(unsigned seed) : engine_(seed) {}
  double next() { return static_cast<double>(engine_()) / 4294967295.0 * 2.0 - 1.0; }

 private:
  std::mt19937 engine_;
};

struct Layer {
  float top, bottom;
  double unitWeight;  // kN/m3
  double idTop, idBottom;
  double kdTop, kdBottom;
};

const Layer kLayers[] = {
    {0.0f, 2.0f, 18.5, 0.55, 0.45, 9.0, 6.0},     // overconsolidated crust
    {2.0f, 9.0f, 16.8, 0.30, 0.40, 3.2, 1.9},     // soft clay
    {9.0f, 14.0f, 18.0, 0.8, 1.6, 2.2, 2.6},      // clayey silt to silt
    {14.0f, 25.01f, 19.5, 2.2, 4.5, 3.5, 5.5},    // dense sand
};

const Layer& layerAt(float z) {
  for (const auto& layer : kLayers)
    if (z < layer.bottom) return layer;
  return kLayers[std::size(kLayers) - 1];
}

double along(const Layer& layer, float z, double top, double bottom) {
  double t = (z - layer.top) / (layer.bottom - layer.top);
  return top + (bottom - top) * t;
}

}  // namespace

std::vector<Reading> makeSounding(const SoundingPlan& plan) {
  Noise noise(plan.seed);
  std::vector<Reading> readings;
  double sigmaV = 0;
  double previousZ = 0;
  const int count = static_cast<int>(std::lround((plan.zEnd - plan.zStart) / plan.step)) + 1;
  for (int i = 0; i < count; ++i) {
    float z = plan.zStart + plan.step * static_cast<float>(i);
    z = std::round(z * 100.0f) / 100.0f;
    const Layer& layer = layerAt(z);
    sigmaV += (z - previousZ) * layer.unitWeight;
    previousZ = z;
    const double u0 = std::max(0.0, (z - plan.waterTable) * 9.81);
    const double sigmaEff = sigmaV - u0;
    const double id = along(layer, z, layer.idTop, layer.idBottom) * (1.0 + 0.12 * noise.next());
    const double kd = along(layer, z, layer.kdTop, layer.kdBottom) * (1.0 + 0.08 * noise.next());
    const double po = u0 + kd * sigmaEff;
    const double p1 = po + id * (po - u0);
    // Invert the membrane corrections with zero gauge offsets: P1 = B - dB, and
    // Po = 1.05 (A + dA) - 0.05 (B - dB).
    const double b = p1 + plan.deltaB;
    const double a = (po + 0.05 * p1) / 1.05 - plan.deltaA;
    int16_t c = 0;
    const bool cRow = z >= 9.0f && std::fabs(z - std::round(z)) < 0.01f;
    if (cRow) {
      // Close to the pore pressure in the free-draining sand, above it in the silt.
      const double p2 = layer.idTop >= 1.8 ? u0 + 5.0 * noise.next() : u0 + 0.4 * (po - u0);
      c = static_cast<int16_t>(std::lround(p2 - plan.deltaA));
    }
    readings.push_back({z, static_cast<int16_t>(std::lround(a)), static_cast<int16_t>(std::lround(b)), c});
  }
  return readings;
}

}  // namespace koru::demo
