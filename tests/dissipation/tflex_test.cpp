#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "dissipation/FormatPower.h"
#include "dissipation/Tflex.h"
#include "dissipation/cls_DissTEST.h"
#include "frame/Numbers.h"
#include "synthetic_dissipation.h"

namespace koru {
namespace {

// --- An independent fit: Householder QR in long double on a centred, scaled basis ---------------
//
// The program fits log10(t) = a0 + a1 x + a2 x^2 + a3 x^3 through the normal equations in raw
// powers of x. The reference never forms the normal equations: it works on u = (x - m) / s,
// reduces the design matrix by reflections and back-substitutes. Its flex is the analytic one,
// u = -d2 / (3 d3).

struct ReferenceCubic {
  long double m = 0, s = 1;
  std::array<long double, 4> d{};  // y = sum d_k u^k

  long double y(long double x) const {
    const long double u = (x - m) / s;
    return d[0] + u * (d[1] + u * (d[2] + u * d[3]));
  }
  // Coefficients in raw powers of x, by binomial expansion.
  std::array<long double, 4> raw() const {
    std::array<long double, 4> c{};
    const long double binom[4][4] = {{1, 0, 0, 0}, {1, 1, 0, 0}, {1, 2, 1, 0}, {1, 3, 3, 1}};
    for (int k = 0; k < 4; ++k)
      for (int j = 0; j <= k; ++j) c[j] += d[k] * binom[k][j] * std::pow(-m, k - j) / std::pow(s, k);
    return c;
  }
  long double flexX() const { return m + s * (-d[2] / (3 * d[3])); }
  long double flexT() const { return std::pow(10.0L, y(flexX())); }
};

ReferenceCubic referenceFit(const cls_DissTEST& t) {
  const size_t n = static_cast<size_t>(t.N());
  std::vector<long double> x(n), y(n);
  ReferenceCubic ref;
  for (size_t i = 0; i < n; ++i) {
    x[i] = t.vA()[i] / 100.0L;
    y[i] = t.vT()[i] > 0 ? std::log10(static_cast<long double>(t.vT()[i])) : 0.0L;
    ref.m += x[i] / n;
  }
  for (size_t i = 0; i < n; ++i) ref.s = std::max(ref.s, std::fabs(x[i] - ref.m));
  std::vector<std::array<long double, 4>> v(n);
  for (size_t i = 0; i < n; ++i) {
    const long double u = (x[i] - ref.m) / ref.s;
    v[i] = {1, u, u * u, u * u * u};
  }
  for (size_t k = 0; k < 4; ++k) {
    long double norm = 0;
    for (size_t i = k; i < n; ++i) norm += v[i][k] * v[i][k];
    norm = std::sqrt(norm);
    const long double alpha = v[k][k] > 0 ? -norm : norm;
    std::vector<long double> w(n, 0);
    for (size_t i = k; i < n; ++i) w[i] = v[i][k];
    w[k] -= alpha;
    long double ww = 0;
    for (size_t i = k; i < n; ++i) ww += w[i] * w[i];
    for (size_t j = k; j < 4; ++j) {
      long double dot = 0;
      for (size_t i = k; i < n; ++i) dot += w[i] * v[i][j];
      for (size_t i = k; i < n; ++i) v[i][j] -= 2 * dot / ww * w[i];
    }
    long double dot = 0;
    for (size_t i = k; i < n; ++i) dot += w[i] * y[i];
    for (size_t i = k; i < n; ++i) y[i] -= 2 * dot / ww * w[i];
  }
  for (size_t k = 4; k-- > 0;) {
    long double sum = y[k];
    for (size_t j = k + 1; j < 4; ++j) sum -= v[k][j] * ref.d[j];
    ref.d[k] = sum / v[k][k];
  }
  return ref;
}

// Readings whose log10 t is exactly a known cubic of x = A / 100, within float rounding of t.
cls_DissTEST fromCubic(const std::array<double, 4>& c, int aFrom, int aTo, int aStep) {
  std::vector<float> t;
  std::vector<int16_t> a;
  for (int value = aFrom; aStep > 0 ? value <= aTo : value >= aTo; value += aStep) {
    const double x = value / 100.0;
    t.push_back(static_cast<float>(std::pow(10.0, c[0] + x * (c[1] + x * (c[2] + x * c[3])))));
    a.push_back(static_cast<int16_t>(value));
  }
  cls_DissTEST test;
  test.setDissData(t, a);
  return test;
}

// A monotonic falling cubic with its flex at xf: y = y0 - alpha (x - xf) - beta (x - xf)^3.
std::array<double, 4> fallingCubic(double y0, double xf, double alpha, double beta) {
  return {y0 + alpha * xf + beta * xf * xf * xf, -alpha - 3 * beta * xf * xf, 3 * beta * xf, -beta};
}

// --- The fit agrees with the independent one on realistic decays ---------------------------------

struct Decay {
  float ch;
  uint32_t seed;
};

class TflexOnSyntheticDecays : public ::testing::TestWithParam<Decay> {
 protected:
  void SetUp() override {
    model.Ch = GetParam().ch;
    model.seed = GetParam().seed;
    t = synth::makeSyntheticDissipation(model);
    ASSERT_GE(t.N(), 6);
    ASSERT_EQ(t.calculate(), TflexStatus::Computed);
  }
  synth::DecayModel model;
  cls_DissTEST t;
};

TEST_P(TflexOnSyntheticDecays, FlexIsWhereTheIndependentFitPutsIt) {
  const ReferenceCubic ref = referenceFit(t);
  const auto raw = ref.raw();
  const float a[4] = {t.a0, t.a1, t.a2, t.a3};
  for (int k = 0; k < 4; ++k) EXPECT_NEAR(a[k], static_cast<double>(raw[k]), 1e-6 * std::fabs(static_cast<double>(raw[k])) + 1e-7) << k;
  EXPECT_NEAR(t.FlexA, static_cast<double>(100 * ref.flexX()), 1e-3);
  EXPECT_NEAR(t.FlexT / static_cast<double>(ref.flexT()), 1.0, 2e-4);
}

TEST_P(TflexOnSyntheticDecays, FlexAndChComeOutNearTheGeneratorsTruth) {
  const double truth = synth::tflexMinutes(model.Ch);
  // The cubic of log t against A only approximates the S-curve: on these schedules its flex lands
  // within 0.05 decades (about 12 %) of the true Tflex, and within a few kPa of the middle of the
  // decay.
  EXPECT_LT(std::fabs(std::log10(t.FlexT / truth)), 0.05) << "FlexT " << t.FlexT << " truth " << truth;
  EXPECT_NEAR(t.FlexA, (model.A0 + model.Aend) / 2, 10.0);
  EXPECT_TRUE(t.isGoodFlex);
  // Ch from the flex, read back from its text, against the model's Ch.
  const std::string ch = t.strCh();
  const double mantissa = std::stod(ch.substr(0, ch.find(' ')));
  std::string exponent = ch.substr(ch.find('^') + 2);
  exponent.erase(std::remove(exponent.begin(), exponent.end(), ' '), exponent.end());
  const double chBack = mantissa * std::pow(10.0, std::stoi(exponent));
  EXPECT_LT(std::fabs(std::log10(chBack / model.Ch)), 0.05) << ch;
}

INSTANTIATE_TEST_SUITE_P(FieldRange, TflexOnSyntheticDecays,
                         ::testing::Values(Decay{0.002f, 1}, Decay{0.005f, 2}, Decay{0.01f, 3}, Decay{0.01f, 4},
                                           Decay{0.03f, 5}, Decay{0.1f, 6}));

TEST(TflexFit, NormalEquationsHoldThePowerSumsOfTheReadings) {
  cls_DissTEST t;
  t.setDissData({0.5f, 1.0f, 2.0f, 4.0f, 8.0f}, {520, 500, 450, 400, 380});
  ASSERT_EQ(t.calculate(), TflexStatus::Computed);
  for (int r = 0; r < 4; ++r) {
    for (int c = 0; c < 4; ++c) {
      double sum = 0;
      for (int i = 0; i < 5; ++i) {
        double p = 1;
        for (int k = 0; k < r + c; ++k) p *= t.vA()[i] / 100.0;
        sum += p;
      }
      EXPECT_NEAR(t.M[r][c], sum, 1e-9 * sum) << r << "," << c;
    }
    double sum = 0;
    for (int i = 0; i < 5; ++i) {
      double p = std::log10(static_cast<double>(t.vT()[i]));
      for (int k = 0; k < r; ++k) p *= t.vA()[i] / 100.0;
      sum += p;
    }
    EXPECT_NEAR(t.b[r], sum, 1e-9 * std::max(1.0, std::fabs(sum))) << r;
  }
}

TEST(TflexFit, KnownCubicIsRecoveredWithItsAnalyticFlex) {
  const auto c = fallingCubic(1.0, 3.5, 1.0, 1.0);  // flex at A = 350 kPa, t = 10 min
  cls_DissTEST t = fromCubic(c, 400, 300, -10);
  ASSERT_EQ(t.calculate(), TflexStatus::Computed);
  const float a[4] = {t.a0, t.a1, t.a2, t.a3};
  for (int k = 0; k < 4; ++k) EXPECT_NEAR(a[k], c[k], 1e-3 * std::fabs(c[k])) << k;
  EXPECT_NEAR(t.FlexA, 350.0, 0.01);
  EXPECT_NEAR(t.FlexT, 10.0, 1e-3);
  EXPECT_NEAR(t.mflex(), -1.0, 1e-3);
  EXPECT_LT(t.b2minus4ac(), 0.0f);
  EXPECT_TRUE(t.isGoodFlex);
}

TEST(TflexFit, ReadingAtTimeZeroCountsAsOneMinute) {
  cls_DissTEST atZero, atOne;
  atZero.setDissData({0.0f, 2.0f, 4.0f, 8.0f, 16.0f}, {560, 520, 470, 430, 410});
  atOne.setDissData({1.0f, 2.0f, 4.0f, 8.0f, 16.0f}, {560, 520, 470, 430, 410});
  ASSERT_EQ(atZero.calculate(), TflexStatus::Computed);
  ASSERT_EQ(atOne.calculate(), TflexStatus::Computed);
  EXPECT_EQ(atZero.M[0][0], 5.0) << "the reading at 0 is not filtered";
  EXPECT_EQ(atZero.a0, atOne.a0);
  EXPECT_EQ(atZero.a3, atOne.a3);
  EXPECT_EQ(atZero.FlexT, atOne.FlexT);
}

// --- Edge cases of the fit ------------------------------------------------------------------------

TEST(TflexEdges, ThreeReadingsComputeNothing) {
  cls_DissTEST t;
  t.setDissData({1.0f, 2.0f, 4.0f}, {500, 450, 420});
  t.FlexT = 7;
  t.FlexA = 430;
  t.isGoodFlex = true;
  t.a2 = 5;
  EXPECT_EQ(t.calculate(), TflexStatus::TooFewReadings);
  EXPECT_EQ(t.a2, 0.0f);
  EXPECT_EQ(t.FlexT, 7.0f);
  EXPECT_EQ(t.FlexA, 430.0f);
  EXPECT_TRUE(t.isGoodFlex);
  EXPECT_EQ(t.checkFlexSlope(), "No Slope\r\n");
  EXPECT_EQ(t.checkOneFlex(), "No Solution\r\n");
}

TEST(TflexEdges, ZeroCubicTermFailsAsAStatusAndKeepsTheResults) {
  // Every reading at one minute (or at 0, which counts the same): log t is 0 throughout, the
  // solution is exactly zero and the cubic has no flex.
  cls_DissTEST t;
  t.setDissData({1.0f, 0.0f, 1.0f, 1.0f, 1.0f}, {500, 480, 450, 420, 400});
  t.FlexT = 12;
  t.FlexA = 440;
  EXPECT_EQ(t.calculate(), TflexStatus::ZeroCubicTerm);
  EXPECT_EQ(t.a3, 0.0f);
  EXPECT_EQ(t.FlexT, 12.0f);
  EXPECT_EQ(t.FlexA, 440.0f);
  EXPECT_EQ(t.mflex(), 0.0f);
}

TEST(TflexEdges, EqualPressuresGiveASingularSystem) {
  cls_DissTEST t;
  t.setDissData({1.0f, 2.0f, 4.0f, 8.0f}, {450, 450, 450, 450});
  EXPECT_EQ(t.calculate(), TflexStatus::SingularSystem);
  EXPECT_EQ(t.a0, 0.0f);
  EXPECT_EQ(t.a3, 0.0f);
}

TEST(TflexEdges, FlexOutsideTheReadingsHasAValueButIsNotGood) {
  // Flex at A = 250 kPa, below every reading: later than the last reading in time.
  const auto c = fallingCubic(3.0, 2.5, 1.0, 1.0);
  cls_DissTEST t = fromCubic(c, 400, 300, -10);
  ASSERT_EQ(t.calculate(), TflexStatus::Computed);
  EXPECT_NEAR(t.FlexT, 1000.0, 1.0);
  EXPECT_NEAR(t.FlexA, 250.0, 0.05);
  EXPECT_GT(t.FlexT, t.MaxT());
  EXPECT_LT(t.mflex(), 0.0f);
  EXPECT_LE(t.b2minus4ac(), 0.0f);
  EXPECT_FALSE(t.isGoodFlex);
}

TEST(TflexEdges, FlexBeyondAMillionMinutesIsNoFlex) {
  const auto c = fallingCubic(6.5, 2.5, 1.0, 1.0);
  cls_DissTEST t = fromCubic(c, 400, 300, -10);
  ASSERT_EQ(t.calculate(), TflexStatus::Computed);
  EXPECT_EQ(t.FlexT, -1.0f);
  EXPECT_EQ(t.FlexA, -1.0f);
  EXPECT_FALSE(t.isGoodFlex);
  EXPECT_EQ(t.strCh(), "");
  EXPECT_EQ(t.ChMinutes(), "");
  EXPECT_EQ(t.strKh(), "");
}

TEST(TflexEdges, NoReadingsGiveZeroExtremes) {
  cls_DissTEST t;
  const auto extremes = [&] { return std::vector<float>{t.MinA(), t.MaxA(), t.MinT(), t.MaxT()}; };
  EXPECT_EQ(extremes(), (std::vector<float>{0, 0, 0, 0}));
  t.setDissData({3.0f, 1.0f, 2.0f}, {200, 500, -10});
  EXPECT_EQ(extremes(), (std::vector<float>{-10, 500, 1, 3}));
}

// --- The verdict --------------------------------------------------------------------------------

class TflexVerdict : public ::testing::Test {
 protected:
  void SetUp() override {
    t.setDissData({1, 2, 4, 8, 16}, {500, 460, 420, 400, 390});
    t.a1 = -1;
    t.a2 = 0;
    t.a3 = -1;  // mflex -1, b2minus4ac -12
    t.FlexT = 5;
    t.FlexA = 430;
  }
  bool verdict() {
    t.setIfGoodFlex();
    return t.isGoodFlex;
  }
  cls_DissTEST t;
};

TEST_F(TflexVerdict, GoodOnlyForOneFallingFlexStrictlyInsideTheTimesAndBelowTheHighestA) {
  // Readings from 1 to 16 min and A up to 500 kPa.
  const struct {
    float flexT, flexA, a1;
    bool good;
  } cases[] = {
      {5, 430, -1, true},  {1, 430, -1, false},   {16, 430, -1, false}, {15.9f, 430, -1, true},  // strictly inside
      {5, 500, -1, false}, {5, -200, -1, true},                           // below the highest A, no lower limit
      {5, 430, 0, false},                                                  // a flat slope
      {5, 430, 1, false}};                                                 // rising, two real roots of y'
  for (const auto& c : cases) {
    t.FlexT = c.flexT;
    t.FlexA = c.flexA;
    t.a1 = c.a1;
    EXPECT_EQ(verdict(), c.good) << c.flexT << " min, " << c.flexA << " kPa, a1 " << c.a1;
  }
  t.a1 = 0;  // a slope of exactly 0: the check text says OK, the verdict does not
  EXPECT_EQ(t.mflex(), 0.0f);
  EXPECT_EQ(t.checkFlexSlope(), "OK, Flex has a non-positive slope.    (Slope Flex= 0)\r\n");
}

TEST_F(TflexVerdict, CheckTextsNameEachCase) {
  EXPECT_EQ(t.checkFlexSlope(), "OK, Flex has a non-positive slope.    (Slope Flex= -1)\r\n");
  EXPECT_EQ(t.checkOneFlex(), "OK, Cubic interpolation polynome has only one flex.    (root= -12)\r\n");
  t.a1 = 1;
  t.a3 = 1;  // slope 1, b2minus4ac -12
  EXPECT_EQ(t.checkFlexSlope(), "Bad Flex!! Slope is positive.    (Slope Flex= 1)\r\n");
  t.a3 = -1;  // slope 1, b2minus4ac 12
  EXPECT_EQ(t.checkFlexSlope(), "Bad Flex!! Slope is positive.    (Slope Flex= 1  for Tflex = 5)\r\n");
  EXPECT_EQ(t.checkOneFlex(),
            "Bad Interpolation!! cubic interpolation polynome has more than one flex.    (root= 12)\r\n");
}

TEST_F(TflexVerdict, SlopeAndDiscriminantFollowTheirFormulas) {
  t.a1 = 0.5f;
  t.a2 = 1.5f;
  t.a3 = -0.25f;
  EXPECT_FLOAT_EQ(t.b2minus4ac(), 9.0f + 1.5f);            // (2 a2)^2 - 4 (3 a3) a1
  EXPECT_FLOAT_EQ(t.mflex(), 0.5f + 2.25f / 0.75f);        // a1 - a2^2 / (3 a3)
  t.a3 = 0;
  EXPECT_EQ(t.mflex(), 0.0f);
}

// --- Results as text ------------------------------------------------------------------------------

TEST(TflexResults, ChAndKhFollowFromTflexInMinutes) {
  cls_DissTEST t;
  t.FlexT = 60;
  t.Mh = 5;
  EXPECT_EQ(t.strCh(), "1.94 * 10 ^ - 3");      // 7 / 3600
  EXPECT_EQ(t.ChMinutes(), "1.167 * 10 ^ - 1");  // 7 / 60
  EXPECT_EQ(t.strKh(), "3.89 * 10 ^ - 8");       // 7 / (3600 x 10000 x 5)
  t.Mh = 0;
  EXPECT_EQ(t.strKh(), "");
  EXPECT_EQ(t.strCh(), "1.94 * 10 ^ - 3");
  t.FlexT = 0;
  EXPECT_EQ(t.strCh(), "");
  EXPECT_EQ(t.ChMinutes(), "");
}

TEST(TflexResults, PoFinalUsesTheLastAAndTheFinalB) {
  cls_DissTEST t;
  t.setDissData({1, 2}, {500, 320});
  t.Zm = 10;
  t.DeltaA = 15;
  t.DeltaB = 40;
  t.BFinal = 700;
  EXPECT_FLOAT_EQ(t.Po(), static_cast<float>(1.05 * (320 - 10 + 15) - 0.05 * (700 - 10 - 40)));
  t.BFinal = 0;
  EXPECT_EQ(t.Po(), 0.0f);
  t.BFinal = 700;
  t.setN(0);
  EXPECT_EQ(t.Po(), 0.0f);
}

TEST(TflexResults, CoefficientLineHasPaddedColumns) {
  cls_DissTEST t;
  t.filename = "D/1230.dis";
  t.a0 = 1.5f;
  t.a1 = -2.25f;
  t.a2 = 0.123456f;
  t.a3 = -10;
  t.FlexT = 12.5f;
  t.FlexA = 430.25f;
  EXPECT_EQ(t.returnCoeff(),
            "D/1230.dis   " "         1.5" " " "       -2.25" " " "     0.12346" " " "         -10" " "
            "        12.5" " (" "      430.25" ")");
}

TEST(TflexReport, ShowsFileMatrixChecksAndResultsInBlocks) {
  const auto c = fallingCubic(1.0, 3.5, 1.0, 1.0);
  cls_DissTEST t = fromCubic(c, 400, 300, -10);
  t.TstName = "D1";
  t.folder = "D";
  t.setZd(5.2f);
  t.Mh = 5;
  ASSERT_EQ(t.calculate(), TflexStatus::Computed);
  const std::string text = t.test();

  std::vector<std::string> lines;
  for (size_t start = 0; start < text.size();) {
    const size_t end = text.find("\r\n", start);
    ASSERT_NE(end, std::string::npos) << "every line ends with CR LF";
    lines.push_back(text.substr(start, end - start));
    start = end + 2;
  }
  const std::string file = (std::filesystem::path("D") / "0520.dis").string();
  EXPECT_EQ(lines[0], "D1   05.20 m      (file: " + file + ")");
  EXPECT_EQ(lines[1], "");
  EXPECT_EQ(lines[2], "FILE DATA");
  EXPECT_EQ(lines[3], "---------");
  EXPECT_NE(text.find("---------\r\n" + t.strDisFile() + "\r\nMATHEMATICHAL DATA\r\n------------------\r\n\r\nA\r\n"),
            std::string::npos);
  EXPECT_NE(text.find("   (Matrix of Least Square Method)\r\n"), std::string::npos);
  EXPECT_NE(text.find("\r\n\r\nTpol\r\n"), std::string::npos);
  EXPECT_NE(text.find("   (Note term of Least Square Method)\r\n"), std::string::npos);
  EXPECT_NE(text.find("\r\n\r\nx\r\n"), std::string::npos);
  EXPECT_NE(text.find("   (Cubic coefficients of Polynomial Interpolation, solution of system A x = Tpol)\r\n"),
            std::string::npos);
  EXPECT_NE(text.find("\r\n\r\nE = Tpol - A x\r\n"), std::string::npos);
  EXPECT_NE(text.find("   (Residual Error)\r\n"), std::string::npos);
  EXPECT_NE(text.find("\r\n\r\n" + t.checkFlexSlope() + t.checkOneFlex() +
                      "\r\nTEST INTERPRETATION DATA\r\n------------------------\r\n\r\n"),
            std::string::npos);
  const size_t n = lines.size();
  EXPECT_EQ(lines[n - 4], "TFlex = " + formatNumber(t.FlexT, "") + "  sec");
  EXPECT_EQ(lines[n - 3], "Aflex = " + formatNumber(t.FlexA, "") + "  kPa");
  EXPECT_EQ(lines[n - 2], "Ch = " + t.strCh() + "  cm2/sec   ( = " + t.ChMinutes() + "  cm2/min )");
  EXPECT_EQ(lines[n - 1], "Kh = " + t.strKh() + "  cm/sec");

  // The matrix rows carry the sums in "0.0#": the first element is the reading count.
  const auto aLine = std::find(lines.begin(), lines.end(), "A");
  ASSERT_NE(aLine, lines.end());
  EXPECT_EQ(aLine[1].substr(0, 16), "            11.0");
}

// --- The elimination with complete pivoting -------------------------------------------------------

long double det3(const long double m[3][3]) {
  return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) - m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
         m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

long double det4(const Matrix4& a) {
  long double sum = 0;
  for (int c = 0; c < 4; ++c) {
    long double minor[3][3];
    for (int r = 1; r < 4; ++r)
      for (int k = 0, j = 0; k < 4; ++k)
        if (k != c) minor[r - 1][j++] = a[r][k];
    sum += (c % 2 ? -1 : 1) * a[0][c] * det3(minor);
  }
  return sum;
}

// Cramer's rule: no elimination at all.
Vector4 cramer(const Matrix4& a, const Vector4& b) {
  const long double d = det4(a);
  Vector4 x{};
  for (int c = 0; c < 4; ++c) {
    Matrix4 m = a;
    for (int r = 0; r < 4; ++r) m[r][c] = b[r];
    x[c] = static_cast<double>(det4(m) / d);
  }
  return x;
}

TEST(TflexSolver, AgreesWithCramersRuleOnRandomSystems) {
  std::mt19937 gen(42);
  auto value = [&] { return static_cast<double>(gen()) / 4294967296.0 * 20.0 - 10.0; };
  for (int run = 0; run < 200; ++run) {
    Matrix4 a;
    Vector4 b;
    for (auto& row : a)
      for (double& v : row) v = value();
    for (double& v : b) v = value();
    Vector4 x{};
    ASSERT_TRUE(solveLS(a, b, x));
    const Vector4 ref = cramer(a, b);
    for (int k = 0; k < 4; ++k) EXPECT_NEAR(x[k], ref[k], 1e-9 * std::max(1.0, std::fabs(ref[k]))) << run;
  }
}

TEST(TflexSolver, PivotsAcrossRowsAndColumnsAndUndoesThePermutation) {
  // The greatest element sits off the diagonal at every step, and a zero stands on the diagonal.
  const Matrix4 a = {{{0, 1, 2, 100}, {3, 0, 50, 1}, {20, 2, 0, 4}, {1, 9, 3, 0}}};
  const Vector4 expected = {1, -2, 0.5, 3};
  Vector4 b{};
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) b[r] += a[r][c] * expected[c];
  Vector4 x{};
  ASSERT_TRUE(solveLS(a, b, x));
  for (int k = 0; k < 4; ++k) EXPECT_NEAR(x[k], expected[k], 1e-12);
}

TEST(TflexSolver, SingularSystemsFailAndLeaveTheSolutionAlone) {
  Matrix4 a = {{{1, 2, 3, 4}, {2, 4, 6, 8}, {0, 1, 0, 1}, {1, 1, 1, 1}}};
  Vector4 x = {7, 7, 7, 7};
  EXPECT_FALSE(solveLS(a, {1, 2, 3, 4}, x));
  EXPECT_EQ(x, (Vector4{7, 7, 7, 7}));
  EXPECT_FALSE(solveLS(Matrix4{}, {1, 0, 0, 0}, x));
  a[0][0] = std::nan("");
  EXPECT_FALSE(solveLS(a, {1, 2, 3, 4}, x));
}

}  // namespace
}  // namespace koru
