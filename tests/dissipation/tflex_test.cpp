#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "dissipation/Tflex.h"
#include "dissipation/cls_DissTEST.h"
#include "synthetic_dissipation.h"

namespace koru {
namespace {

// An independent fit of log10 t = cubic in x = A / 100: the program solves the normal equations
// in raw powers of x; this reference orthogonalises the design matrix (modified Gram-Schmidt, on
// the centred and scaled u = (x - m) / s, in long double) and takes the analytic flex
// u = -d2 / (3 d3). Returns {flex A, flex t}.
std::array<long double, 2> referenceFlex(const cls_DissTEST& t) {
  const size_t n = static_cast<size_t>(t.N());
  long double m = 0, s = 1;
  for (size_t i = 0; i < n; ++i) m += t.vA()[i] / 100.0L / n;
  for (size_t i = 0; i < n; ++i) s = std::max(s, std::fabs(t.vA()[i] / 100.0L - m));
  std::vector<std::array<long double, 5>> v(n);  // the basis, with log10 t as a fifth column
  for (size_t i = 0; i < n; ++i) {
    const long double u = (t.vA()[i] / 100.0L - m) / s;
    v[i] = {1, u, u * u, u * u * u, t.vT()[i] > 0 ? std::log10(static_cast<long double>(t.vT()[i])) : 0.0L};
  }
  long double r[4][5] = {};
  for (size_t k = 0; k < 4; ++k) {
    for (size_t i = 0; i < n; ++i) r[k][k] += v[i][k] * v[i][k];
    r[k][k] = std::sqrt(r[k][k]);
    for (size_t i = 0; i < n; ++i) v[i][k] /= r[k][k];
    for (size_t j = k + 1; j < 5; ++j) {
      for (size_t i = 0; i < n; ++i) r[k][j] += v[i][k] * v[i][j];
      for (size_t i = 0; i < n; ++i) v[i][j] -= r[k][j] * v[i][k];
    }
  }
  std::array<long double, 4> d{};
  for (size_t k = 4; k-- > 0;) {
    d[k] = r[k][4];
    for (size_t j = k + 1; j < 4; ++j) d[k] -= r[k][j] * d[j];
    d[k] /= r[k][k];
  }
  const long double u = -d[2] / (3 * d[3]);
  return {100 * (m + s * u), std::pow(10.0L, d[0] + u * (d[1] + u * (d[2] + u * d[3])))};
}

// Readings on A = 400 ... 300 kPa whose log10 t is the falling cubic
// y = y0 - (x - xf) - (x - xf)^3, flex at A = 100 xf and t = 10^y0.
cls_DissTEST fallingCubic(double y0, double xf) {
  std::vector<float> t;
  std::vector<int16_t> a;
  for (int value = 400; value >= 300; value -= 10) {
    const double x = value / 100.0 - xf;
    t.push_back(static_cast<float>(std::pow(10.0, y0 - x - x * x * x)));
    a.push_back(static_cast<int16_t>(value));
  }
  cls_DissTEST test;
  test.setDissData(t, a);
  return test;
}

TEST(TflexFit, FlexIsWhereTheIndependentFitPutsItAndNearTheGeneratorsTruth) {
  for (const auto& [ch, seed] : {std::pair{0.002f, 1u}, {0.01f, 3u}, {0.03f, 5u}, {0.1f, 6u}}) {
    SCOPED_TRACE(ch);
    synth::DecayModel model;
    model.Ch = ch;
    model.seed = seed;
    cls_DissTEST t = synth::makeSyntheticDissipation(model);
    ASSERT_EQ(t.calculate(), TflexStatus::Computed);
    const auto ref = referenceFlex(t);
    EXPECT_NEAR(t.FlexA, static_cast<double>(ref[0]), 1e-3);
    EXPECT_NEAR(t.FlexT / static_cast<double>(ref[1]), 1.0, 2e-4);
    EXPECT_TRUE(t.isGoodFlex);
  }
}

TEST(TflexFit, KnownCubicGivesItsFlexButFarFlexesAreNotGoodAndFailuresKeepTheEarlierFlex) {
  cls_DissTEST outside = fallingCubic(3.0, 2.5);
  ASSERT_EQ(outside.calculate(), TflexStatus::Computed);
  EXPECT_NEAR(outside.FlexA, 250.0, 0.05);
  EXPECT_NEAR(outside.FlexT, 1000.0, 1.0) << "a value, later than the last reading";
  EXPECT_NEAR(outside.mflex(), -1.0, 1e-3);
  EXPECT_FALSE(outside.isGoodFlex);
  cls_DissTEST beyond = fallingCubic(6.5, 2.5);
  ASSERT_EQ(beyond.calculate(), TflexStatus::Computed);
  EXPECT_EQ(beyond.FlexT, -1.0f) << "beyond a million minutes: no flex";
  EXPECT_EQ(beyond.strCh(), "");
  cls_DissTEST flat;  // a reading at time 0 counts as one minute: log t is 0 throughout
  flat.setDissData({1.0f, 0.0f, 1.0f, 1.0f, 1.0f}, {500, 480, 450, 420, 400});
  flat.FlexT = 12;
  EXPECT_EQ(flat.calculate(), TflexStatus::ZeroCubicTerm);
  EXPECT_EQ(flat.FlexT, 12.0f);
}

TEST(TflexVerdict, GoodOnlyForOneFallingFlexStrictlyInsideTheTimesAndBelowTheHighestA) {
  cls_DissTEST t;
  t.setDissData({1, 2, 4, 8, 16}, {500, 460, 420, 400, 390});
  t.a2 = 0;
  t.a3 = -1;
  // Strictly inside the times; below the highest A with no lower limit; a slope of exactly 0 and a
  // rising flex (two real roots of y') are bad.
  const struct { float flexT, flexA, a1; bool good; } cases[] = {
      {5, 430, -1, true},  {1, 430, -1, false}, {16, 430, -1, false}, {15.9f, 430, -1, true},
      {5, 500, -1, false}, {5, -200, -1, true}, {5, 430, 0, false},    {5, 430, 1, false}};
  for (const auto& c : cases) {
    t.FlexT = c.flexT;
    t.FlexA = c.flexA;
    t.a1 = c.a1;
    t.setIfGoodFlex();
    EXPECT_EQ(t.isGoodFlex, c.good) << c.flexT << " min, " << c.flexA << " kPa, a1 " << c.a1;
  }
  t.a1 = 0;  // a slope of exactly 0: the check text says OK, the verdict does not
  EXPECT_EQ(t.checkFlexSlope().rfind("OK, Flex has a non-positive slope.", 0), 0u);
}

}  // namespace
}  // namespace koru
