// The statistics that choose plot scales: one parameter's figures, their merging, the best
// maximum of a box, and the site gathering the values of its verticals.

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "results/cls_FileOptions.h"
#include "results/cls_KORUStatistics.h"
#include "results/cls_statVars.h"
#include "results/cls_statVec.h"

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
  const struct {
    std::vector<float> values;
    const char* figures;
  } cases[] = {
      {{1, 1, 1, 9}, "mean 3, N 4, nNon0 4, min 1, max 9, above 1 by 6"},
      // Zeros and non-finite values count in N only.
      {{0, 2, nan, 4, 0}, "mean 3, N 5, nNon0 2, min 2, max 4, above 1 by 1"},
      // Ud and Uo can be negative: a 0 is still a missing reading, not a value above the mean.
      {{-2, 0, -4, 0}, "mean -3, N 4, nNon0 2, min -4, max -2, above 1 by 1"},
      // Values equal to the mean are not above it.
      {{7.5f}, "mean 7.5, N 1, nNon0 1, min 7.5, max 7.5, above 0 by 0"},
      {{1, 2, 2, 3}, "mean 2, N 4, nNon0 4, min 1, max 3, above 1 by 1"},
      // The smallest's starting bound is a plain number, not "no value yet": readings above it
      // never beat it.
      {{200000, 300000}, "mean 250000, N 2, nNon0 2, min 100000, max 300000, above 1 by 50000"},
  };
  for (const auto& c : cases) EXPECT_EQ(figuresOf(calculated(c.values)), c.figures);
}

TEST(StatisticsOfOneParameter, OnlyZerosLeaveStartingBoundsZeroMeanAndTheLastExcessFigures) {
  cls_statVec s = calculated({1, 1, 1, 9});
  s.vettore = {0, 0, 0};
  s.statCalculate();
  EXPECT_EQ(figuresOf(s), "mean 0, N 3, nNon0 0, min 100000, max -1e+06, above 1 by 6");
}

TEST(StatisticsOfOneParameter, CountsBeyondSixteenBitsStayAtTheLimitWhileTheMeanUsesAll) {
  std::vector<float> values(40000, 1.0f);
  values.resize(50000, 3.0f);
  const cls_statVec s = calculated(values);
  EXPECT_EQ(s.N, 32767);
  EXPECT_EQ(s.nNon0, 32767);
  EXPECT_FLOAT_EQ(s.media, 1.4f);
  EXPECT_EQ(s.nOltreMedia, 10000);
}

// ---- Feeding values -------------------------------------------------------------------------

TEST(StatisticsFeeding, ValuesReplaceUntilACalculationCountedSomeThenTheyAppend) {
  cls_statVec s;
  s.vettore = {5, 6};
  s.setVecAndCalculate(std::vector<float>{});  // nothing counted: N stays 0
  s.setVecAndCalculate(std::vector<float>{0, 0});
  EXPECT_EQ(s.vettore, (std::vector<float>{0, 0}));
  s.setVecAndCalculate(std::vector<float>{1, 2});  // zeros alone were counted in N
  EXPECT_EQ(s.vettore, (std::vector<float>{0, 0, 1, 2}));
  EXPECT_EQ(s.N, 4);
  EXPECT_FLOAT_EQ(s.media, 1.5f);
}

// ---- Merging summaries ----------------------------------------------------------------------

TEST(StatisticsMerge, MeanIsWeightedByReadingsWhileExcessFiguresAndValuesStayThisVectors) {
  cls_statVec a = calculated({1, 1, 1, 9});
  a.add(calculated({6, 0, 100, 100}));
  EXPECT_FLOAT_EQ(a.media, (4 * 3.0f + 3 * 206.0f / 3) / 7);
  EXPECT_EQ(figuresOf(a), "mean 31.1429, N 8, nNon0 7, min 1, max 100, above 1 by 6");
  EXPECT_EQ(a.vettore, (std::vector<float>{1, 1, 1, 9}));
}

TEST(StatisticsMerge, ASmallestOfZeroWasNeverCalculatedAndGivesWay) {
  cls_statVec a = calculated({4, 9});
  a.add(calculated({2, 50}));
  EXPECT_FLOAT_EQ(a.sngMin, 2.0f);
  EXPECT_FLOAT_EQ(a.sngMax, 50.0f);

  cls_statVec byHand;  // summary figures given by hand, bounds never calculated
  byHand.nNon0 = 2;
  byHand.media = 1;
  a.add(byHand);
  EXPECT_FLOAT_EQ(a.sngMin, 2.0f);

  cls_statVec fresh;
  fresh.add(calculated({-4, -2}));
  EXPECT_FLOAT_EQ(fresh.sngMin, -4.0f);
  EXPECT_FLOAT_EQ(fresh.sngMax, 0.0f);  // the larger of 0 and -2
  EXPECT_FLOAT_EQ(fresh.media, -3.0f);
  EXPECT_EQ(fresh.N, 2);
  EXPECT_TRUE(fresh.vettore.empty());
}

TEST(StatisticsMerge, NothingChangesWhenNeitherHasReadings) {
  cls_statVec a = calculated({0, 0});
  a.add(calculated({0, 0, 0}));
  EXPECT_EQ(a.N, 2);
  EXPECT_FLOAT_EQ(a.sngMax, -1000000.0f);
}

TEST(StatisticsMerge, VectorsOfAVerticalMergeWithTheirFellows) {
  cls_statVars a, b;
  a.M.setVecAndCalculate(std::vector<float>{1, 1, 1, 9});
  b.M.setVecAndCalculate(std::vector<float>{8});
  b.Vs.setVecAndCalculate(std::vector<float>{200, 300});
  a.add(b);
  EXPECT_FLOAT_EQ(a.M.media, 4.0f);
  EXPECT_FLOAT_EQ(a.Vs.media, 250.0f);
  EXPECT_EQ(a.Cu.N, 0);
}

// ---- Best maximum of a plot box -------------------------------------------------------------

TEST(StatisticsBestMax, OneOneOneNineReachesSixSeventyFiveForMAndNineForKdWhateverTheCase) {
  cls_statVars s;
  s.M.setVecAndCalculate(std::vector<float>{1, 1, 1, 9});
  s.Kd.setVecAndCalculate(std::vector<float>{1, 1, 1, 9});
  s.sPhi.setVecAndCalculate(std::vector<float>{30});
  EXPECT_FLOAT_EQ(s.getNameBestMax("M"), 6.75f);  // 0.25 x 2.5 x 6 + 3
  EXPECT_FLOAT_EQ(s.getNameBestMax("KD"), 9.0f);  // 0.25 x 5 x 6 + 3 = 10.5, cut to the largest
  EXPECT_FLOAT_EQ(s.getNameBestMax("m"), 6.75f);
  EXPECT_FLOAT_EQ(s.getNameBestMax("kD"), 9.0f);
  EXPECT_FLOAT_EQ(s.getNameBestMax("Phi"), 30.0f);
}

TEST(StatisticsBestMax, EveryNameOfTheTablePicksItsVector) {
  using V = cls_statVec cls_statVars::*;
  const std::vector<std::pair<std::string, V>> table = {
      {"M", &cls_statVars::M},           {"CU", &cls_statVars::Cu},         {"KD", &cls_statVars::Kd},
      {"ED", &cls_statVars::Ed},         {"K0", &cls_statVars::Ko},         {"U0", &cls_statVars::Uo},
      {"UD", &cls_statVars::Ud},         {"PHI", &cls_statVars::sPhi},      {"OCR", &cls_statVars::sOCR},
      {"P2U0", &cls_statVars::P2},       {"P0P1", &cls_statVars::P1},       {"U0P2P0P1", &cls_statVars::P1},
      {"SIGMAH", &cls_statVars::sSigmaH}, {"SIGMAV", &cls_statVars::sSigmaV}, {"SIGMAEFF", &cls_statVars::sSigmaEFF},
      {"GAMMA", &cls_statVars::sGamma},  {"VS", &cls_statVars::Vs},         {"VP", &cls_statVars::Vp},
      {"G0", &cls_statVars::G0}};
  for (const auto& [name, picked] : table) {
    cls_statVars s;
    // Only the picked vector holds values; each value alone is its own best maximum.
    (s.*picked).setVecAndCalculate(std::vector<float>{42});
    EXPECT_FLOAT_EQ(s.getNameBestMax(name), 42.0f) << name;
  }
}

TEST(StatisticsBestMax, PressureBoxesAreScaledOnP1AndOnP2) {
  cls_statVars s;
  s.Po.setVecAndCalculate(std::vector<float>{500});
  s.P1.setVecAndCalculate(std::vector<float>{300});
  EXPECT_FLOAT_EQ(s.getNameBestMax("P0P1"), 300.0f);
  EXPECT_FLOAT_EQ(s.getNameBestMax("U0P2P0P1"), 300.0f);
  // P2U0: the larger of the two largest values, then cut to P2's own largest, whatever Uo.
  s.P2.setVecAndCalculate(std::vector<float>{100, 200});
  for (float uo : {300.0f, 50.0f}) {
    s.Uo = calculated({uo});
    EXPECT_FLOAT_EQ(s.getNameBestMax("P2U0"), 200.0f) << uo;
  }
}

TEST(StatisticsBestMax, AnUnknownNameOrAParameterWithoutReadingsGivesZero) {
  cls_statVars s;
  s.Id.setVecAndCalculate(std::vector<float>{1, 2});
  s.M.setVecAndCalculate(std::vector<float>{0, 0});
  s.Uo.setVecAndCalculate(std::vector<float>{100});
  for (const char* name : {"ID", "", "SIGMA", "P1", "VS1", "M ", "CU", "P2U0"})
    EXPECT_FLOAT_EQ(s.getNameBestMax(name), 0.0f) << name;
  EXPECT_FLOAT_EQ(s.getNameBestMax("M"), 0.0f);
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

void addVs(cls_FileOptions& v, const std::vector<float>& vs, const std::vector<float>& g0) {
  v.VZVs.clear();
  for (size_t i = 0; i < vs.size(); ++i) v.VZVs.push_back(static_cast<float>(i + 1));
  v.vVs = vs;
  v.vG0 = g0;
}

void addVp(cls_FileOptions& v, const std::vector<float>& p1, const std::vector<float>& p2) {
  v.VZVp.clear();
  for (size_t i = 0; i < p1.size(); ++i) v.VZVp.push_back(static_cast<float>(i + 1));
  v.vP1 = p1;
  v.vP2 = p2;
  v.Vp.clear();
  for (size_t i = 0; i < p1.size(); ++i) v.Vp.push_back((p1[i] + p2[i]) / 2);
}

class StatisticsOfASite : public ::testing::Test {
 protected:
  void SetUp() override {
    a = view("A", {1, 1, 1, 9}, {0, 30, 32, 0});
    a.dmt.blnHasC = true;
    addVs(a, {200, 0, 300}, {80, 0, 180});
    b = view("B", {2, 0, 4}, {34, 36, 0});
    addVp(b, {1500, 0}, {1600, 1700});
    stats.evaluateStatistics(std::vector<const cls_FileOptions*>{&a, nullptr, &b});
  }
  cls_FileOptions a, b;
  cls_KORUStatistics stats;
};

TEST_F(StatisticsOfASite, EachVerticalHasItsOwnFiguresUnderItsNameAndTheSiteGathersThemAll) {
  ASSERT_EQ(stats.verticalStats.size(), 2u);
  ASSERT_NE(stats.getVerticalStat("A"), nullptr);
  ASSERT_NE(stats.getVerticalStat("B"), nullptr);
  EXPECT_EQ(figuresOf(stats.getVerticalStat("A")->M), "mean 3, N 4, nNon0 4, min 1, max 9, above 1 by 6");
  EXPECT_EQ(figuresOf(stats.getVerticalStat("B")->M), "mean 3, N 3, nNon0 2, min 2, max 4, above 1 by 1");
  EXPECT_EQ(stats.getVerticalStat("C"), nullptr);

  EXPECT_EQ(stats.siteStat.M.vettore, (std::vector<float>{1, 1, 1, 9, 2, 0, 4}));
  EXPECT_EQ(figuresOf(stats.siteStat.M), "mean 3, N 7, nNon0 6, min 1, max 9, above 2 by 3.5");  // 9 and 4
  // 2/6 x 2.5 x 3.5 + 3 over the whole site.
  EXPECT_NEAR(stats.siteStat.getNameBestMax("M"), 5.9166667f, 1e-5);

  EXPECT_EQ(stats.countDmt, 2);
  EXPECT_EQ(stats.countDmtWithC, 1);
  EXPECT_EQ(stats.countVs, 1);
  EXPECT_EQ(stats.countVp, 1);
}

TEST_F(StatisticsOfASite, VelocitiesJoinOnlyFromVerticalsThatHaveThem) {
  const cls_statVars* sa = stats.getVerticalStat("A");
  const cls_statVars* sb = stats.getVerticalStat("B");
  EXPECT_EQ(sa->Vs.vettore, (std::vector<float>{200, 0, 300}));
  EXPECT_EQ(sa->G0.vettore, (std::vector<float>{80, 0, 180}));
  EXPECT_EQ(sa->Vp.N, 0);
  EXPECT_EQ(sb->Vs.N, 0);
  // Both Vp readings go into one vector.
  EXPECT_EQ(sb->Vp.vettore, (std::vector<float>{1500, 0, 1600, 1700}));
  EXPECT_FLOAT_EQ(sb->Vp.media, 1600.0f);
  EXPECT_EQ(stats.siteStat.Vs.vettore, (std::vector<float>{200, 0, 300}));
  EXPECT_EQ(stats.siteStat.Vp.vettore, (std::vector<float>{1500, 0, 1600, 1700}));
}

TEST_F(StatisticsOfASite, AThirdVerticalKeepsAppendingToTheSite) {
  const cls_FileOptions c = view("C", {6});
  stats.evaluateVertical(c);
  EXPECT_EQ(stats.siteStat.M.vettore, (std::vector<float>{1, 1, 1, 9, 2, 0, 4, 6}));
  EXPECT_EQ(stats.countDmt, 3);
  EXPECT_EQ(stats.verticalStats.size(), 3u);
}

TEST_F(StatisticsOfASite, PhiShareIsReadForAVerticalOrForTheSite) {
  // A: 2 of 4 rows granular; B: 2 of 3; site: 4 of 7.
  EXPECT_TRUE(stats.isPhiTotPercent(0.5f, "A"));
  EXPECT_FALSE(stats.isPhiTotPercent(0.51f, "A"));
  EXPECT_TRUE(stats.isPhiTotPercent(0.6f, "B"));
  EXPECT_TRUE(stats.isPhiTotPercent(0.57f, ""));
  EXPECT_FALSE(stats.isPhiTotPercent(0.58f, ""));
  EXPECT_FALSE(stats.isPhiTotPercent(0.0f, "Z"));
}

TEST(StatisticsSiteEdges, AShareThatEqualsTheFractionMeetsIt) {
  cls_KORUStatistics stats;
  const cls_FileOptions v = view("T", {1, 1, 1, 1, 1, 1, 1, 1, 1, 1}, {30, 0, 0, 32, 0, 0, 0, 0, 0, 34});
  stats.evaluateVertical(v);
  // 3 of 10 rows have Phi: a share of exactly 0.3.
  EXPECT_TRUE(stats.isPhiTotPercent(0.3f, "T"));
  EXPECT_TRUE(stats.isPhiTotPercent(0.3f, ""));
  EXPECT_FALSE(stats.isPhiTotPercent(0.31f, "T"));
}

TEST(StatisticsSiteEdges, AVerticalWithoutRowsHasNoPhiShare) {
  cls_KORUStatistics stats;
  const cls_FileOptions empty = view("E", {});
  stats.evaluateVertical(empty);
  EXPECT_FALSE(stats.isPhiTotPercent(0.0f, "E"));
  EXPECT_FALSE(stats.isPhiTotPercent(0.0f, ""));
  EXPECT_EQ(stats.countDmt, 0);
}

TEST(StatisticsSiteEdges, TheFirstVerticalOfARepeatedNameAnswers) {
  cls_KORUStatistics stats;
  const cls_FileOptions first = view("SCPT1", {5});
  const cls_FileOptions second = view("SCPT1", {7});
  stats.evaluateStatistics(std::vector<const cls_FileOptions*>{&first, &second});
  ASSERT_NE(stats.getVerticalStat("SCPT1"), nullptr);
  EXPECT_FLOAT_EQ(stats.getVerticalStat("SCPT1")->M.media, 5.0f);
}

TEST(StatisticsDebugLines, EachDmtParameterIsLabelledAndFollowedByItsFigures) {
  cls_statVars s;
  s.Po.setVecAndCalculate(std::vector<float>{1, 1, 1, 9});
  const std::vector<std::string> lines = s.debugLines();
  ASSERT_EQ(lines.size(), 17u * 8u);
  EXPECT_EQ(std::vector<std::string>(lines.begin(), lines.begin() + 9),
            (std::vector<std::string>{"Po:  ", "Media (3)", "Min (1)", "Max (9)", "nNon0 (4)", "N (4)",
                                      "nOltreMedia (1)", "mediaOltreMedia (6)", "P1:  "}));
  EXPECT_EQ(lines[16 * 8], "Phi:  ");
}

}  // namespace
}  // namespace koru
