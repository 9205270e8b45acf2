#include "dmt/SoilChart.h"

#include <cmath>

#include "dmt/cls_DmtTEST.h"
#include "frame/Numbers.h"

namespace koru {

namespace {

// Unit weights in t/m3 by column (1..7) and row (1..5).
constexpr float kUnitWeight[7][5] = {
    {1.6f, 1.7f, 1.8f, 1.9f, 2.05f},  //
    {1.6f, 1.7f, 1.8f, 1.9f, 2.05f},  //
    {1.6f, 1.7f, 1.8f, 1.95f, 2.1f},  //
    {1.6f, 1.7f, 1.8f, 1.95f, 2.1f},  //
    {1.6f, 1.7f, 1.8f, 1.95f, 2.1f},  //
    {1.7f, 1.8f, 1.9f, 2.0f, 2.15f},  //
    {1.7f, 1.8f, 1.9f, 2.0f, 2.15f},
};

double chartLine(double a, double b, double l) { return std::pow(10.0, a + b * l); }

}  // namespace

int16_t soilChartCode(float id, float ed) {
  const double e = 10.0 * static_cast<double>(ed);
  // The lines are drawn from Id 0.1 upward; a smaller Id reads them at 0.1.
  const double l = std::log(static_cast<double>(Max(id, 0.1f)));
  int row;
  if (e < chartLine(1.737, 0.2540655, l)) row = 1;
  else if (e < chartLine(2.013, 0.2697003, l)) row = 2;
  else if (e < chartLine(2.289, 0.2853351, l)) row = 3;
  else if (e < chartLine(2.564, 0.3014042, l)) row = 4;
  else row = 5;

  int column;
  if (id < 0.33f) column = 1;
  else if (id < 0.6f) column = 2;
  else if (id < 0.8f) column = 3;
  else if (id < 1.2f) column = 4;
  else if (id < 1.8f) column = 5;
  else if (id < 3.3f) column = 6;
  else column = 7;

  int code = 5 * (column - 1) + row;
  if (e < 12.0) code = id < 0.1f ? 36 : 37;
  return static_cast<int16_t>(code);
}

float soilChartUnitWeight(int code) {
  if (code >= 1 && code <= 35) return kUnitWeight[(code - 1) / 5][(code - 1) % 5];
  if (code == 36) return 1.4f;
  if (code == 37) return 1.5f;
  return 0.0f;
}

int soilChartStringId(int code) {
  if (code >= 1 && code <= 35) return 3800 + (code - 1) / 5;
  if (code == 36) return 3807;
  if (code == 37) return 3808;
  return 0;
}

int cls_DmtTEST::getDescrGammaStringId(int soilCode) { return soilChartStringId(soilCode); }

int cls_DmtTEST::getDescrSoilRealStringId(int row) const {
  if (row < 0 || static_cast<size_t>(row) >= vecCODREAD.size() || static_cast<size_t>(row) >= vecSoilType.size())
    return 0;
  if (vecCODREAD[static_cast<size_t>(row)] != 100) return 0;
  return soilChartStringId(vecSoilType[static_cast<size_t>(row)]);
}

}  // namespace koru
