#include <gtest/gtest.h>

#include <vector>

#include "dmt/cls_DmtTEST.h"

namespace koru {
namespace {

// A record with rows at the given depths, A = 100 + 10 i, B = 300 + 10 i, C = 0.
cls_DmtTEST withDepths(const std::vector<float>& depths) {
  cls_DmtTEST t;
  for (size_t i = 0; i < depths.size(); ++i) {
    t.vZ.push_back(depths[i]);
    t.vA.push_back(static_cast<int16_t>(100 + 10 * i));
    t.vB.push_back(static_cast<int16_t>(300 + 10 * i));
    t.vC.push_back(0);
    t.vTH.push_back(0);
  }
  return t;
}

TEST(DmtEditDepths, CollisionWithinLessThanACentimetre) {
  // Deep soundings too, where a float holds fewer decimals.
  const auto t = withDepths({1.2f, 150.0f, 300.0f});
  const std::pair<float, int> cases[] = {{1.209f, 0}, {1.191f, 0}, {1.21f, -1}, {1.19f, -1},
                                         {149.991f, 1}, {149.99f, -1}, {300.009f, 2}, {300.01f, -1}};
  for (const auto& [z, row] : cases) EXPECT_EQ(t.isZCollision(z), row) << z;
}

TEST(DmtEditRows, ShallowerOrCollidingDepthNeedsTheOverwriteFlag) {
  auto t = withDepths({1.0f, 1.2f, 1.4f});
  t.addZABCtoData(1.1f, 1, 2, 3, true);  // not deeper than the last row and no collision
  t.addZABCtoData(1.4f, 1, 2, 3, false);
  t.addZABCtoData(1.405f, 1, 2, 3, false);
  EXPECT_EQ(t.vA, (std::vector<int16_t>{100, 110, 120}));
  t.addZABCtoData(1.205f, 7, 8, 9, true);
  t.addZABCtoData(1.6f, 150, 400, 90, false);
  EXPECT_EQ(t.vZ, (std::vector<float>{1.0f, 1.2f, 1.4f, 1.6f}));
  EXPECT_EQ(t.vA, (std::vector<int16_t>{100, 7, 120, 150}));
}

TEST(DmtEditRows, CReadingRoundsHalvesToEvenAndTouchesOnlyC) {
  auto t = withDepths({1.0f, 1.2f});
  t.addCReading(1.2f, 55.5f, false);  // no overwrite: nothing
  t.addCReading(1.2f, 55.5f, true);
  t.addCReading(1.4f, 12.5f, false);
  EXPECT_EQ(t.vC, (std::vector<int16_t>{0, 56, 12}));
  EXPECT_EQ(t.vA, (std::vector<int16_t>{100, 110, 0}));
}

// --- Recommended calibration -------------------------------------------------------------------

// Rows whose P1 - Po, with the standard membrane and no gauge zeros, is 1.05 x (B - A - dA - dB):
// a row is bad once dA + dB reaches B - A.
cls_DmtTEST withMargins(const std::vector<int>& margins) {
  cls_DmtTEST t = withDepths(std::vector<float>(margins.size(), 1.0f));
  for (size_t i = 0; i < margins.size(); ++i) t.vB[i] = static_cast<int16_t>(t.vA[i] + margins[i]);
  return t;
}

TEST(DmtEditCalibration, MinimaReplaceAveragesThatMakeBadRows) {
  // At 15 + 40 the rows of margin 55, 20 and 15 are bad; at 5 + 10 only the one of 15.
  auto t = withMargins({80, 55, 20, 15});
  t.setRecommendedCalibrationValues(CalibrationFigures{15, 40, 5, 30, 10, 60});
  EXPECT_EQ(t.intDeltaA, 5);
  EXPECT_EQ(t.intDeltaB, 10);
  EXPECT_EQ(t.vBadRows, std::vector<float>({3.0f}));
}

TEST(DmtEditCalibration, GridSearchKeepsTheFirstBestPairWalkingDeltaAOutside) {
  // A membrane so soft that its coefficients turn negative makes the count non-monotonic, so
  // the grid has its best pairs away from the minima.
  cls_DmtTEST t;
  t.setFactorEd(1000.0f);
  t.vZ = {1, 2};
  t.vTH = {0, 0};
  t.vC = {0, 0};
  t.vA = {100, 100};
  t.vB = {110, 140};
  // Averages (1, 0): both rows bad. Minima (0, 12): only the second. With deltaA 0 the second
  // row comes good first at deltaB 41 (P1 - Po = 99 - 95.76); at 40 it stands at exactly 0.
  t.setRecommendedCalibrationValues(CalibrationFigures{1, 0, 0, 30, 12, 60});
  EXPECT_EQ(t.intDeltaA, 0);
  EXPECT_EQ(t.intDeltaB, 41);
  EXPECT_TRUE(t.vBadRows.empty());
}

}  // namespace
}  // namespace koru
