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

TEST(DmtEditDepths, NextDepthFollowsTheLastStep) {
  EXPECT_FLOAT_EQ(withDepths({}).suggestNextZ(), 0.2f);
  EXPECT_FLOAT_EQ(withDepths({1.5f}).suggestNextZ(), 1.7f);
  EXPECT_FLOAT_EQ(withDepths({1.0f, 1.2f, 1.45f}).suggestNextZ(), 1.7f);
}

TEST(DmtEditDepths, CollisionWithinLessThanACentimetre) {
  EXPECT_EQ(withDepths({}).isZCollision(1.0f), -1);
  const auto t = withDepths({1.0f, 1.2f, 1.4f});
  EXPECT_EQ(t.isZCollision(1.2f), 1);
  EXPECT_EQ(t.isZCollision(1.209f), 1);
  EXPECT_EQ(t.isZCollision(1.191f), 1);
  EXPECT_EQ(t.isZCollision(1.21f), -1);
  EXPECT_EQ(t.isZCollision(1.19f), -1);
  EXPECT_EQ(t.isZCollision(1.3f), -1);
  EXPECT_EQ(t.isZCollision(0.5f), -1);
  EXPECT_EQ(t.isZCollision(9.0f), -1);

  // Deep soundings, where a float holds fewer decimals.
  const auto deep = withDepths({25.4f, 150.0f, 300.0f});
  EXPECT_EQ(deep.isZCollision(25.409f), 0);
  EXPECT_EQ(deep.isZCollision(25.41f), -1);
  EXPECT_EQ(deep.isZCollision(149.991f), 1);
  EXPECT_EQ(deep.isZCollision(149.99f), -1);
  EXPECT_EQ(deep.isZCollision(300.009f), 2);
  EXPECT_EQ(deep.isZCollision(300.01f), -1);
}

TEST(DmtEditDepths, NewDepthPlaceCountsFromOneAndZeroOutsideTheList) {
  const auto t = withDepths({1.0f, 1.2f, 1.4f});
  EXPECT_EQ(t.getZnewCorrectIndex(0.8f), 0);
  EXPECT_EQ(t.getZnewCorrectIndex(1.1f), 2);
  EXPECT_EQ(t.getZnewCorrectIndex(1.3f), 3);
  EXPECT_EQ(t.getZnewCorrectIndex(1.0f), 2);
  EXPECT_EQ(t.getZnewCorrectIndex(1.4f), 0);
  EXPECT_EQ(t.getZnewCorrectIndex(1.6f), 0);
  EXPECT_EQ(withDepths({}).getZnewCorrectIndex(1.0f), 0);
}

TEST(DmtEditRows, NewDeeperRowIsAppendedKeepingTheOthers) {
  auto t = withDepths({1.0f, 1.2f});
  t.addZABCtoData(1.4f, 150, 400, 90, false);
  ASSERT_EQ(t.N(), 3);
  EXPECT_EQ(t.vTH.size(), 3u);
  EXPECT_FLOAT_EQ(t.vZ[2], 1.4f);
  EXPECT_EQ(t.vA[2], 150);
  EXPECT_EQ(t.vB[2], 400);
  EXPECT_EQ(t.vC[2], 90);
  EXPECT_EQ(t.vA[1], 110);

  cls_DmtTEST empty;
  empty.addZABCtoData(0.6f, 1, 2, 3, false);
  ASSERT_EQ(empty.N(), 1);
  EXPECT_FLOAT_EQ(empty.Zi(), 0.6f);
}

TEST(DmtEditRows, ShallowerOrCollidingDepthNeedsTheOverwriteFlag) {
  auto t = withDepths({1.0f, 1.2f, 1.4f});
  t.addZABCtoData(1.1f, 1, 2, 3, true);  // not deeper than the last row and no collision
  t.addZABCtoData(1.4f, 1, 2, 3, false);
  t.addZABCtoData(1.405f, 1, 2, 3, false);
  EXPECT_EQ(t.N(), 3);
  EXPECT_EQ(t.vA[2], 120);

  t.addZABCtoData(1.205f, 7, 8, 9, true);
  EXPECT_EQ(t.N(), 3);
  EXPECT_FLOAT_EQ(t.vZ[1], 1.2f);
  EXPECT_EQ(t.vA[1], 7);
  EXPECT_EQ(t.vB[1], 8);
  EXPECT_EQ(t.vC[1], 9);
}

TEST(DmtEditRows, CReadingRoundsHalvesToEvenAndTouchesOnlyC) {
  auto t = withDepths({1.0f, 1.2f});
  t.addCReading(1.2f, 55.5f, false);
  EXPECT_EQ(t.vC[1], 0);
  t.addCReading(1.2f, 55.5f, true);
  EXPECT_EQ(t.vC[1], 56);
  EXPECT_EQ(t.vA[1], 110);
  t.addCReading(1.4f, 12.5f, false);
  ASSERT_EQ(t.N(), 3);
  EXPECT_EQ(t.vA[2], 0);
  EXPECT_EQ(t.vB[2], 0);
  EXPECT_EQ(t.vC[2], 12);
  t.addCReading(0.5f, 80, true);
  EXPECT_EQ(t.N(), 3);
}

TEST(DmtEditReadings, LastAInBarAverageInKpa) {
  cls_DmtTEST empty;
  EXPECT_EQ(empty.lastAValue(), 0.0f);
  EXPECT_EQ(empty.averageAValue(), 0.0f);
  const auto t = withDepths({1.0f, 1.2f, 1.4f, 1.6f});  // A = 100, 110, 120, 130
  EXPECT_FLOAT_EQ(t.lastAValue(), 1.3f);
  EXPECT_FLOAT_EQ(t.averageAValue(), 115.0f);
}

TEST(DmtEditReadings, CShareIsAFractionAndOnlyForFormatsWithC) {
  auto t = withDepths({1.0f, 1.2f, 1.4f, 1.6f});
  t.vC = {0, 40, 0, 50};
  t.strFormat = "ABZ";
  EXPECT_EQ(t.CReadingPercentAge(), 0.0f);
  t.strFormat = "ABC";
  EXPECT_FLOAT_EQ(t.CReadingPercentAge(), 0.5f);
  t.strFormat = "ABCZ";
  EXPECT_FLOAT_EQ(t.CReadingPercentAge(), 0.5f);
  cls_DmtTEST empty;
  empty.strFormat = "ABC";
  EXPECT_EQ(empty.CReadingPercentAge(), 0.0f);
}

// --- Recommended calibration -------------------------------------------------------------------

CalibrationFigures figures(float avgA, float avgB, int minA, int maxA, int minB, int maxB) {
  CalibrationFigures f;
  f.averageDeltaA = avgA;
  f.averageDeltaB = avgB;
  f.minDeltaA = minA;
  f.maxDeltaA = maxA;
  f.minDeltaB = minB;
  f.maxDeltaB = maxB;
  return f;
}

// Rows whose P1 - Po, with the standard membrane and no gauge zeros, is 1.05 x (B - A - dA - dB):
// a row is bad once dA + dB reaches B - A.
cls_DmtTEST withMargins(const std::vector<int>& margins) {
  cls_DmtTEST t;
  for (int m : margins) {
    t.vZ.push_back(static_cast<float>(t.vZ.size() + 1));
    t.vA.push_back(200);
    t.vB.push_back(static_cast<int16_t>(200 + m));
    t.vC.push_back(0);
    t.vTH.push_back(0);
  }
  return t;
}

TEST(DmtEditCalibration, NoRowsTakeTheAveragesRoundedHalvesToEven) {
  cls_DmtTEST t;
  t.setRecommendedCalibrationValues(figures(14.5f, 41.5f, 1, 2, 3, 4));
  EXPECT_EQ(t.intDeltaA, 14);
  EXPECT_EQ(t.intDeltaB, 42);
}

TEST(DmtEditCalibration, AveragesStayWhenNoRowTurnsBad) {
  auto t = withMargins({80, 60, 56});
  t.setRecommendedCalibrationValues(figures(15.4f, 40.0f, 5, 30, 10, 60));
  EXPECT_EQ(t.intDeltaA, 15);
  EXPECT_EQ(t.intDeltaB, 40);
  EXPECT_TRUE(t.vBadRows.empty());
}

TEST(DmtEditCalibration, MinimaReplaceAveragesThatMakeBadRows) {
  // At 15 + 40 the rows of margin 55, 20 and 15 are bad; at 5 + 10 only the one of 15.
  auto t = withMargins({80, 55, 20, 15});
  t.vA.push_back(0);  // rows without A or B are never judged
  t.vB.push_back(5);
  t.vC.push_back(0);
  t.vZ.push_back(9);
  t.vTH.push_back(0);
  t.setRecommendedCalibrationValues(figures(15, 40, 5, 30, 10, 60));
  EXPECT_EQ(t.intDeltaA, 5);
  EXPECT_EQ(t.intDeltaB, 10);
  EXPECT_EQ(t.vBadRows, std::vector<float>({3.0f}));
}

TEST(DmtEditCalibration, MinimaStayEvenWhenTheyAreNoBetter) {
  auto t = withMargins({20, 20, 50});
  t.setRecommendedCalibrationValues(figures(5, 15, 10, 30, 20, 60));
  EXPECT_EQ(t.intDeltaA, 10);
  EXPECT_EQ(t.intDeltaB, 20);
  EXPECT_EQ(t.vBadRows.size(), 2u);
}

TEST(DmtEditCalibration, GridSearchKeepsTheFirstBestPairWalkingDeltaAOutside) {
  // A membrane so soft that its coefficients turn negative makes the count non-monotonic, so
  // the grid has its best pairs away from the minima.
  cls_DmtTEST t;
  t.setFactorEd(1000.0f);
  t.vZ = {1, 2};
  t.vTH = {0, 0};
  t.vA = {100, 100};
  t.vB = {110, 140};
  t.vC = {0, 0};
  // Averages (1, 0): both rows bad. Minima (0, 12): only the second. With deltaA 0 the second
  // row comes good first at deltaB 41 (P1 - Po = 99 - 95.76); at 40 it stands at exactly 0.
  t.setRecommendedCalibrationValues(figures(1, 0, 0, 30, 12, 60));
  EXPECT_EQ(t.intDeltaA, 0);
  EXPECT_EQ(t.intDeltaB, 41);
  EXPECT_TRUE(t.vBadRows.empty());
}

TEST(DmtEditCalibration, GaugeZerosShiftTheCorrectedReadings) {
  // A = 50, B = 60 is a good row (P1 - Po = 60 - 49.5). A gauge zero of 100 kPa while reading
  // takes both below zero, where Po = 0.6 A' = -30 and P1 = -40: bad. The same zero at
  // calibration gives the 100 kPa back.
  auto t = withMargins({10});
  t.vA = {50};
  t.vB = {60};
  t.sngZMAB = 100;
  t.setRecommendedCalibrationValues(figures(0, 0, 0, 0, 0, 0));
  EXPECT_EQ(t.vBadRows, std::vector<float>({0.0f}));
  t.sngZMCal = 100;
  t.setRecommendedCalibrationValues(figures(0, 0, 0, 0, 0, 0));
  EXPECT_TRUE(t.vBadRows.empty());
}

}  // namespace
}  // namespace koru
