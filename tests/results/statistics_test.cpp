// The statistics that choose plot scales: one parameter's figures, their merging, the best
// maximum of a box, and the site gathering the values of its verticals.

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "results/cls_FileOptions.h"
#include "results/cls_KORUStatistics.h"

namespace koru {
namespace {

cls_statVec calculated(const std::vector<float>& values) {
  cls_statVec s;
  s.setVecAndCalculate(values);
  return s;
}

// One parameter's figures in a line: mean, counts, bounds, and the values above the mean with
// their mean excess.
std::string figuresOf(const cls_statVec& s) {
  std::ostringstream out;
  out << "mean " << s.media << ", N " << s.N << ", nNon0 " << s.nNon0 << ", min " << s.sngMin << ", max " << s.sngMax
      << ", above " << s.nOltreMedia << " by " << s.mediaOltreMedia;
  return out.str();
}

// ---- One parameter --------------------------------------------------------------------------

TEST(StatisticsOfOneParameter, FiguresCountNonZeroFiniteValuesAndTheExcessStrictlyAboveTheMean) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const struct { std::vector<float> values; const char* figures; } cases[] = {
      // Zeros and non-finite values count in N only.
      {{0, 2, nan, 4, 0}, "mean 3, N 5, nNon0 2, min 2, max 4, above 1 by 1"},
      // Ud and Uo can be negative: a 0 is still a missing reading, not a value above the mean.
      {{-2, 0, -4, 0}, "mean -3, N 4, nNon0 2, min -4, max -2, above 1 by 1"},
      // Values equal to the mean are not above it.
      {{1, 2, 2, 3}, "mean 2, N 4, nNon0 4, min 1, max 3, above 1 by 1"},
      // The smallest's starting bound is a plain number, not "no value yet": readings above it
      // never beat it.
      {{200000, 300000}, "mean 250000, N 2, nNon0 2, min 100000, max 300000, above 1 by 50000"},
  };
  for (const auto& c : cases) EXPECT_EQ(figuresOf(calculated(c.values)), c.figures);
}

TEST(StatisticsOfOneParameter, CountsBeyondSixteenBitsStayAtTheLimitAndValuesAppendOnceSomeWereCounted) {
  std::vector<float> values(40000, 1.0f);
  values.resize(50000, 3.0f);
  cls_statVec s = calculated(values);
  EXPECT_EQ(s.nNon0, 32767);
  EXPECT_FLOAT_EQ(s.media, 1.4f);
  s.setVecAndCalculate(std::vector<float>{3});
  EXPECT_EQ(s.vettore.size(), 50001u);
}

// The mean is weighted by readings; excess figures and values stay this vector's; a smallest of
// 0 was never calculated and gives way.
TEST(StatisticsMerge, MeanIsWeightedByReadingsAndAnUncalculatedSmallestGivesWay) {
  cls_statVec a = calculated({1, 1, 1, 9});
  a.add(calculated({6, 0, 100, 100}));
  EXPECT_EQ(figuresOf(a), "mean 31.1429, N 8, nNon0 7, min 1, max 100, above 1 by 6");
  cls_statVec fresh;
  fresh.add(calculated({-4, -2}));
  EXPECT_EQ(figuresOf(fresh), "mean -3, N 2, nNon0 2, min -4, max 0, above 0 by 0");
}

// ---- Best maximum of a plot box -------------------------------------------------------------

TEST(StatisticsBestMax, OneOneOneNineReachesSixSeventyFiveForMAndNineForKdAndUnknownNamesGiveZero) {
  cls_statVars s;
  s.M.setVecAndCalculate(std::vector<float>{1, 1, 1, 9});
  s.Kd.setVecAndCalculate(std::vector<float>{1, 1, 1, 9});
  EXPECT_FLOAT_EQ(s.getNameBestMax("M"), 6.75f);  // 0.25 x 2.5 x 6 + 3
  EXPECT_FLOAT_EQ(s.getNameBestMax("KD"), 9.0f);  // 0.25 x 5 x 6 + 3 = 10.5, cut to the largest
  // Pressure boxes: on P1 alone, and P2U0 cut to P2's own largest whatever Uo.
  s.Po.setVecAndCalculate(std::vector<float>{500});
  s.P1.setVecAndCalculate(std::vector<float>{300});
  s.P2.setVecAndCalculate(std::vector<float>{100, 200});
  s.Uo.setVecAndCalculate(std::vector<float>{300});
  EXPECT_FLOAT_EQ(s.getNameBestMax("U0P2P0P1"), 300.0f);
  EXPECT_FLOAT_EQ(s.getNameBestMax("P2U0"), 200.0f);
  for (const char* name : {"ID", "SIGMA", "M "}) EXPECT_FLOAT_EQ(s.getNameBestMax(name), 0.0f) << name;
}

// ---- A site of verticals --------------------------------------------------------------------

// A view holding only what the statistics read; the DMT depths are 1, 2, 3 ... m.
cls_FileOptions view(const std::string& name, const std::vector<float>& m, const std::vector<float>& phi = {}) {
  cls_FileOptions v;
  v.strVertName = name;
  v.dmt.setN(static_cast<int>(m.size()));
  for (size_t i = 0; i < m.size(); ++i) v.dmt.vZ[i] = static_cast<float>(i + 1);
  v.dmt.vecM = m;
  v.dmt.vecPhi = phi.empty() ? std::vector<float>(m.size(), 0.0f) : phi;
  return v;
}

TEST(StatisticsOfASite, EachVerticalHasItsOwnFiguresUnderItsNameAndTheSiteGathersThemAll) {
  cls_FileOptions a = view("A", {1, 1, 1, 9}, {0, 30, 32, 0});
  a.VZVs = {1, 2, 3};
  a.vVs = {200, 0, 300};
  const cls_FileOptions b = view("B", {2, 0, 4}, {34, 36, 0});
  cls_KORUStatistics stats;
  stats.evaluateStatistics(std::vector<const cls_FileOptions*>{&a, nullptr, &b});
  ASSERT_NE(stats.getVerticalStat("B"), nullptr);
  EXPECT_EQ(figuresOf(stats.getVerticalStat("B")->M), "mean 3, N 3, nNon0 2, min 2, max 4, above 1 by 1");

  EXPECT_EQ(stats.siteStat.M.vettore, (std::vector<float>{1, 1, 1, 9, 2, 0, 4}));
  EXPECT_EQ(figuresOf(stats.siteStat.M), "mean 3, N 7, nNon0 6, min 1, max 9, above 2 by 3.5");  // 9 and 4
  // 2/6 x 2.5 x 3.5 + 3 over the whole site.
  EXPECT_NEAR(stats.siteStat.getNameBestMax("M"), 5.9166667f, 1e-5);

  EXPECT_EQ(stats.siteStat.Vs.vettore, (std::vector<float>{200, 0, 300})) << "only from verticals that have them";
  // Phi share: A has 2 of 4 rows granular; the site 4 of 7.
  EXPECT_TRUE(stats.isPhiTotPercent(0.5f, "A"));
  EXPECT_FALSE(stats.isPhiTotPercent(0.51f, "A"));
  EXPECT_TRUE(stats.isPhiTotPercent(0.57f, ""));
  EXPECT_FALSE(stats.isPhiTotPercent(0.58f, ""));
}

}  // namespace
}  // namespace koru
