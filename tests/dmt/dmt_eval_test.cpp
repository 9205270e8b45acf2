#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "dmt/DMTOptions.h"
#include "dmt/SoilChart.h"
#include "dmt/cls_DmtTEST.h"
#include "dmt/cls_GAMMA.h"
#include "dmt/cls_U.h"
#include "dmt_rows.h"

namespace koru {
namespace {

using testing::withRows;

// Relative closeness for values computed in single precision.
#define EXPECT_CLOSE(actual, expected) EXPECT_NEAR((actual), (expected), 2e-5 * std::fabs(expected) + 1e-6)

using T = cls_DmtTEST;
struct Expect { std::vector<float> T::*vec; float value; };

void expectRow(const T& t, size_t row, std::initializer_list<Expect> expected) {
  for (const Expect& e : expected) EXPECT_CLOSE((t.*e.vec)[row], e.value) << "row " << row << ", " << e.value;
}

// --- A sounding computed by hand ---------------------------------------------------------
//
// Gauge zeros 5 (calibration), 10 (A, B), 8 (C); dA 15, dB 40; factorEd 34.7 (1.05 / 0.05);
// water table 2 m; 17 kN/m3 above; regular step 0.2 m.
//   A' = A - 10 + 15 + 5 = A + 10        B' = B - 10 - 40 + 5 = B - 45
TEST(DmtEvalHandComputed, ClaySandAndSiltRowsFollowEveryStep) {
  T t = withRows({{5.0f, 250, 390, 100}, {5.2f, 180, 840, 0}, {5.4f, 300, 700, 0}});
  t.sngZMCal = 5;
  t.sngZMAB = 10;
  t.sngZMC = 8;
  t.sngZw = 2.0f;
  ASSERT_TRUE(t.evalDMT(cls_GAMMA(), cls_U(), DMTOptions()));
  // Codes: row 1 column 2; row 2 column 7; row 2 column 5.
  EXPECT_EQ(t.vecSoilType, (std::vector<int16_t>{6, 32, 22}));
  expectRow(t, 0, {
      // A' 260, B' 345: Po = max(1.05 x 260 - 0.05 x 345, 0.6 x 260); P1 = B'.
      {&T::vecPo, 255.75f}, {&T::vecP1, 345.0f},
      // Uo = (5 - 2) x 9.81; P2 = 100 - 8 + 15 + 5; Ud = (112 - 29.43) / 226.32.
      {&T::vecUo, 29.43f}, {&T::vecP2, 112.0f}, {&T::vecUd, 0.3648374f},
      // Id = 89.25 / 226.32; Ed = 89.25 x 34.7 / 1000; log abscissa 2.5 + 1.08575 ln Id.
      {&T::vecId, 0.3943532f}, {&T::vecEd, 3.0969756f}, {&T::vecLogId, 1.4897007f},
      // 10 x Ed = 30.97 is below e1 = 31.67: row 1, column 2 -> code 6, 1.6 t/m3.
      {&T::vecGamma, 15.696f},
      // First row: sigmaV = 5 x 17; sigma' = 85 - 29.43; Kd = 226.32 / 55.57.
      {&T::vecSigmaV, 85.0f}, {&T::vecSigmaEff, 55.57f}, {&T::vecKd, 4.072701f},
      // Ko = 0.826 Kd^0.47 - 0.6; sigma_h = sigma' Ko; OCR = 0.34 Kd^1.56.
      {&T::vecKo, 0.99817675f}, {&T::vecSigmah, 55.468681f}, {&T::vecOCR, 3.0401542f},
      // Rm = 0.14 + 1.024948 ln Kd = 1.579341 (Id <= 0.6); Cu = 0.0925 sigma' Kd^1.25.
      {&T::vecM, 4.8911805f}, {&T::vecCu, 29.739611f}, {&T::vecPhi, 0.0f}});
  // The sand row takes Phi and no clay parameters.
  expectRow(t, 1, {
      // A' 190, B' 795: Po = 199.5 - 39.75; Uo = 3.2 x 9.81.
      {&T::vecPo, 159.75f}, {&T::vecUo, 31.392f}, {&T::vecId, 4.9490495f}, {&T::vecEd, 22.043177f},
      // 10 x Ed = 220.4 between e1 139.1 and e2 278.2: row 2, column 7 -> code 32, 1.8 t/m3.
      {&T::vecGamma, 17.658f},
      // sigmaV = 85 + 15.696 (previous row) x 0.2.
      {&T::vecSigmaV, 88.139198f}, {&T::vecSigmaEff, 56.7472f}, {&T::vecKd, 2.2619264f},
      // Rm = 0.5 + 0.8686 ln Kd (Id >= 3); L = 0.4343 ln Kd, Phi = 28 + 14.6 L - 2.1 L^2.
      {&T::vecM, 26.649448f}, {&T::vecPhi, 32.911568f},
      {&T::vecKo, 0.0f}, {&T::vecOCR, 0.0f}, {&T::vecCu, 0.0f}, {&T::vecSigmah, 0.0f}, {&T::vecUd, 0.0f}});
  // The silt row uses the intermediate Rm and takes neither Cu nor Phi.
  expectRow(t, 2, {
      {&T::vecPo, 292.75f}, {&T::vecId, 1.3965137f}, {&T::vecGamma, 16.677f},
      {&T::vecSigmaV, 91.670799f}, {&T::vecKd, 4.4480486f},  // sigmaV + 17.658 x 0.2
      // r = 0.14 + 0.15 (Id - 0.6); Rm = r + (2.5 - r) x 0.4343 ln Kd = 1.711734.
      {&T::vecM, 21.516628f}, {&T::vecCu, 0.0f}, {&T::vecPhi, 0.0f}, {&T::vecKo, 0.0f}});

  // Values by depth interpolate, and hold the end rows within 0.5 m (the effective stress 0.11).
  EXPECT_NEAR(t.getEdFromZ(5.1f), t.vecEd[0] + (t.vecEd[1] - t.vecEd[0]) * 0.5f, 1e-4);
  EXPECT_EQ(t.getIdFromZ(4.6f), t.vecId[0]);
  EXPECT_EQ(t.getIdFromZ(4.4f), 0.0f);
  EXPECT_EQ(t.getKdFromZ(5.8f), t.vecKd[2]);
  EXPECT_EQ(t.getSigmaEffVFromZ(4.85f), 0.0f);
  EXPECT_NEAR(t.getKoFromZ(5.1f), t.vecKo[0] * 0.5f, 1e-5);  // the sand row's Ko is 0
}

// --- Edge cases of the row rules ----------------------------------------------------------
//
// Default record: no gauge zeros, A' = A + 15, B' = B - 40, water table at 3 m.

TEST(DmtEvalEdgeCases, PoBelowUoIsRaisedJustAboveItAndItsIdHidden) {
  // Water 10 m above the ground: Uo at 5 m = 15 x 9.81 = 147.15; A' 115, B' 260.
  T t = withRows({{5.0f, 100, 300, 0}});
  t.sngZw = -10.0f;
  DMTOptions o;
  ASSERT_TRUE(t.evalDMT(cls_GAMMA(), cls_U(), o));
  EXPECT_CLOSE(t.vecUo[0], 147.15f);
  EXPECT_CLOSE(t.vecPo[0], 147.26f);
  // Id = (260 - 147.26) / 0.11 is clipped to 99.9, then hidden by Po / Uo < 1.05; Ed stays.
  EXPECT_EQ(t.vecId[0], 0.0f);
  EXPECT_CLOSE(t.vecEd[0], (260.0f - 147.26f) * 34.7f / 1000.0f);

  // Without the feeler correction the real Id still takes the corrected Po: 107.75.
  o.blnFeeler = false;
  ASSERT_TRUE(t.evalDMT(cls_GAMMA(), cls_U(), o));
  EXPECT_CLOSE(t.vecIdReal[0], static_cast<float>((260.0 - 107.75) / (107.75 - 147.15)));
}

TEST(DmtEvalEdgeCases, KdAtTheCapShowsAsHundred) {
  // Near the top the effective stress is tiny: Kd = 992.75 / 1.7 is clipped.
  T t = withRows({{0.1f, 1000, 1500, 0}, {3.0f, 400, 900, 0}});
  ASSERT_TRUE(t.evalDMT(cls_GAMMA(), cls_U(), DMTOptions()));
  EXPECT_EQ(t.vecKd[0], 100.0f);
  // Above Kd 10 one Rm serves every Id, taken at the clipped 99.9: 0.32 + 0.946774 ln Kd.
  EXPECT_CLOSE(t.vecM[0], static_cast<float>(t.vecEd[0] * (0.32 + 0.946774 * std::log(99.9))));
}

TEST(DmtEvalEdgeCases, IdExactlyAtTheLimitIsAClay) {
  T t = withRows({{3.0f, 300, 700, 0}});
  DMTOptions o;
  o.sngPhiIdMin = 0.1f;  // Phi would be evaluated for any Id above the limit
  ASSERT_TRUE(t.evalDMT(cls_GAMMA(), cls_U(), o));
  const float id = t.vecId[0];
  for (const float limit : {id, std::nextafter(id, 0.0f)}) {
    o.sngIdLimit = limit;
    ASSERT_TRUE(t.evalDMT(cls_GAMMA(), cls_U(), o));
    EXPECT_EQ(t.vecCu[0] > 0.0f, limit == id) << limit;
    EXPECT_EQ(t.vecPhi[0] > 0.0f, limit != id) << limit;
  }
}

TEST(DmtEvalEdgeCases, FirstRowStressIgnoresTheStepAndLaterRowsUseIt) {
  T t = withRows({{3.0f, 300, 700, 0}, {3.5f, 300, 700, 0}});
  t.sngGammaTop = 18.0f;
  t.sngDeltaZ = 0.25f;
  // Water standing 1.5 m above the ground loads the first row; its density scales the column.
  t.sngZw = -1.5f;
  DMTOptions o;
  o.sngGammaWater = 1.03f;
  ASSERT_TRUE(t.evalDMT(cls_GAMMA(), cls_U(), o));
  EXPECT_CLOSE(t.vecUo[0], 4.5f * 1.03f * 9.81f);
  EXPECT_CLOSE(t.vecSigmaV[0], 3.0f * 18.0f + 1.5f * 1.03f * 9.81f);
  EXPECT_CLOSE(t.vecSigmaV[1], t.vecSigmaV[0] + t.vecGamma[0] * 1.03f * 0.25f);
}

TEST(DmtEvalEdgeCases, EachFilterDropsOnlyRowsBelowItsThreshold) {
  // Row 0 a clay (Id 0.37, Ed 3.1, Kd 3.7, OCR 2.6), row 1 a sand (Id 4.4, Ed 22, Kd 2.1, OCR 0).
  T t = withRows({{5.0f, 250, 390, 0}, {5.2f, 180, 840, 0}});
  ASSERT_TRUE(t.evalDMT(cls_GAMMA(), cls_U(), DMTOptions()));
  const float id0 = t.vecId[0], ed0 = t.vecEd[0], kd0 = t.vecKd[0], ocr0 = t.vecOCR[0];

  const struct { float DMTOptions::*field; float threshold; bool row0Dropped, row1Dropped; } cases[] = {
      {&DMTOptions::sngFilterId, id0, false, false},  {&DMTOptions::sngFilterEd, ed0 + 0.01f, true, false},
      {&DMTOptions::sngFilterKd, kd0, false, true},
      {&DMTOptions::sngFilterOCR, ocr0 + 0.01f, true, false},  // an OCR of 0 is not filtered
  };
  for (const auto& c : cases) {
    DMTOptions o;
    o.*(c.field) = c.threshold;
    ASSERT_TRUE(t.evalDMT(cls_GAMMA(), cls_U(), o));
    EXPECT_EQ(t.vecEd[0] == 0.0f, c.row0Dropped) << c.threshold;
    EXPECT_EQ(t.vecEd[1] == 0.0f, c.row1Dropped) << c.threshold;
  }

  // The OCR filter judges the value before the reduction factor, which scales only the store.
  DMTOptions o;
  o.sngFactorOCR = 0.5f;
  o.sngFilterOCR = ocr0 * 0.75f;
  ASSERT_TRUE(t.evalDMT(cls_GAMMA(), cls_U(), o));
  EXPECT_CLOSE(t.vecOCR[0], ocr0 * 0.5f);
}

TEST(DmtEvalEdgeCases, LogIdIsZeroAtItsBounds) {
  // Without the feeler: Po = A' = 1000, P1 = B' = 1100 -> Id 0.1 exactly (dry: Uo 0).
  T t = withRows({{1.0f, 985, 1140, 0}, {1.2f, 985, 1141, 0}, {1.4f, 1, 2000, 0}});
  DMTOptions o;
  o.blnFeeler = false;
  ASSERT_TRUE(t.evalDMT(cls_GAMMA(), cls_U(), o));
  EXPECT_EQ(t.vecLogId, (std::vector<float>{0.0f, t.vecLogId[1], 0.0f}));  // Id 0.1, 0.101, 99.9 (clipped)
  EXPECT_GT(t.vecLogId[1], 0.0f);
}

// --- The chart of soil codes ---------------------------------------------------------------

// Rows split on the lines; below 12 (10 x Ed) the very soft soils take codes of their own.
TEST(SoilChartCodes, RowsSplitOnTheLinesAndVerySoftSoilsBelowTwelve) {
  // At Id 1 the lines are 10 ^ a: 54.576, 103.039, 194.536, 366.438 (column 4).
  const double lines[] = {54.575786, 103.038612, 194.536008, 366.437575};
  for (int k = 0; k < 4; ++k) {
    EXPECT_EQ(soilChartCode(1.0f, static_cast<float>(lines[k] * 0.9999 / 10)), 16 + k) << k;
    EXPECT_EQ(soilChartCode(1.0f, static_cast<float>(lines[k] * 1.0001 / 10)), 17 + k) << k;
  }
  EXPECT_EQ(soilChartCode(0.0999f, 1.19f), 36);
  EXPECT_EQ(soilChartCode(2.5f, 1.19f), 37);
  EXPECT_EQ(soilChartCode(0.05f, 1.2f), 1);  // 12 is no longer very soft
}

TEST(SoilChartThrust, PlaneAngleAndKo) {
  EXPECT_EQ(thrustPhiPlane(1.0, -5.0), 0.0);
  EXPECT_NEAR(thrustPhiPlane(0.5, 38.0), 35.962933, 1e-5);
  EXPECT_EQ(thrustK0(1.19f, 3.0, 30.0), 0.0);
  EXPECT_NEAR(thrustK0(1.2f, 3.0, 30.0), 0.7402384, 1e-6);  // phi <= 32 used as is
  EXPECT_NEAR(thrustK0(2.0f, 5.0, 41.0), 0.6911290, 1e-6);  // 41 -> 38
}

}  // namespace
}  // namespace koru
