#include <gtest/gtest.h>

#include <vector>

#include "dmt/cls_DmtTEST.h"
#include "dmt_rows.h"

namespace koru {
namespace {

using testing::withRows;

TEST(DmtEditDepths, CollisionWithinLessThanACentimetre) {
  // Deep soundings too, where a float holds fewer decimals.
  const auto t = withRows({{1.2f, 100, 300, 0}, {150.0f, 110, 310, 0}, {300.0f, 120, 320, 0}});
  const std::pair<float, int> cases[] = {{1.209f, 0}, {1.191f, 0}, {1.21f, -1}, {1.19f, -1},
                                         {149.991f, 1}, {149.99f, -1}, {300.009f, 2}, {300.01f, -1}};
  for (const auto& [z, row] : cases) EXPECT_EQ(t.isZCollision(z), row) << z;
}

TEST(DmtEditRows, ShallowerOrCollidingDepthNeedsTheOverwriteFlag) {
  auto t = withRows({{1.0f, 100, 300, 0}, {1.2f, 110, 310, 0}, {1.4f, 120, 320, 0}});
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
  auto t = withRows({{1.0f, 100, 300, 0}, {1.2f, 110, 310, 0}});
  t.addCReading(1.2f, 55.5f, false);  // no overwrite: nothing
  t.addCReading(1.2f, 55.5f, true);
  t.addCReading(1.4f, 12.5f, false);
  EXPECT_EQ(t.vC, (std::vector<int16_t>{0, 56, 12}));
  EXPECT_EQ(t.vA, (std::vector<int16_t>{100, 110, 0}));
}

// --- Recommended calibration -------------------------------------------------------------------
//
// With the standard membrane and no gauge zeros a row's P1 - Po is 1.05 x (B - A - dA - dB): a
// row is bad once dA + dB reaches B - A.
TEST(DmtEditCalibration, MinimaReplaceAveragesThatMakeBadRows) {
  // Margins B - A of 80, 55, 20 and 15: at 15 + 40 the last three rows are bad, at 5 + 10 only
  // the one of 15.
  auto t = withRows({{1, 100, 180, 0}, {1, 110, 165, 0}, {1, 120, 140, 0}, {1, 130, 145, 0}});
  t.setRecommendedCalibrationValues(CalibrationFigures{15, 40, 5, 30, 10, 60});
  EXPECT_EQ(t.intDeltaA, 5);
  EXPECT_EQ(t.intDeltaB, 10);
  EXPECT_EQ(t.vBadRows, std::vector<float>({3.0f}));
}

TEST(DmtEditCalibration, GridSearchKeepsTheFirstBestPairWalkingDeltaAOutside) {
  // A membrane so soft that its coefficients turn negative makes the count non-monotonic, so
  // the grid has its best pairs away from the minima.
  auto t = withRows({{1, 100, 110, 0}, {2, 100, 140, 0}});
  t.setFactorEd(1000.0f);
  // Averages (1, 0): both rows bad. Minima (0, 12): only the second. With deltaA 0 the second
  // row comes good first at deltaB 41 (P1 - Po = 99 - 95.76); at 40 it stands at exactly 0.
  t.setRecommendedCalibrationValues(CalibrationFigures{1, 0, 0, 30, 12, 60});
  EXPECT_EQ(t.intDeltaA, 0);
  EXPECT_EQ(t.intDeltaB, 41);
  EXPECT_TRUE(t.vBadRows.empty());
}

}  // namespace
}  // namespace koru
