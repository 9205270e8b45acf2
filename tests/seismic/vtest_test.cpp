// The index of a seismic test in memory and in its file: the lists of one depth and their
// moves, the mean and scatter of the velocities, the depth lookups, file numbers, and density
// and G0 at the test's depths.

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "seismic/cls_VTEST.h"

namespace koru {
namespace {

// Three depths as the program writes them: a full line, a depth with bad files only (empty
// fields in a row), and one whose good list holds a strike with velocity 0.
const std::string kIndex =
    "1.00:210:200,220:6.73:12:12,13:5,180;4;0,0#2,180;0,0,699;0,0:14:5,180;4;0,0:15:6;0;-1\r\n"
    "2.50:0::-1.00::::16,17:#5,180;4;0,0::\r\n"
    "3.125:300:300,0:-1.00:18:18,19:#5,180;4;0,0:::20:6;0;-1\r\n";



// ---- Mean velocity and scatter --------------------------------------------------------------

TEST(StrikesEvaluateData, MeanAndCoefficientOfVariationOfTheNonZeroVelocities) {
  const double cv200and220 = 100.0 * std::sqrt(200.0) / 210.0;  // about 6.73
  // -1 for fewer than two values; zero velocities in the good list do not count.
  const struct { const char* vList; int vMean; double devStd; } cases[] = {
      {"0,200,0,220", 210, cv200and220}, {"0,250", 250, -1}, {"", 0, -1},
      // The mean rounds halves to even and the scatter is taken from the rounded mean:
      // 200.5 -> 200, differences 0 and 1 from it, so sqrt(1 / 1) = 1 -> 0.5 %.
      {"200,201", 200, 0.5},
      {"201,202", 202, 100.0 / 202.0},                          // 201.5 -> 202
      {"200,200,201", 200, 100.0 * std::sqrt(0.5) / 200.0},  // 200.333 -> 200; S = 0 + 0 + 1
  };
  for (const auto& c : cases) {
    cls_zSTRIKES z(1.0f);
    z.vList = c.vList;
    z.evaluateData();
    EXPECT_EQ(z.vMean, c.vMean) << c.vList;
    EXPECT_NEAR(z.devStd, c.devStd, 1e-4) << c.vList;
  }
}

// ---- Lists of one depth ---------------------------------------------------------------------

// ---- Depths ---------------------------------------------------------------------------------

TEST(StrikesDepths, DepthsWithinHalfAMillimetreAreOneAndTheClosestNeighbourIsNegative) {
  cls_STRIKES s;
  for (float z : {1.0f, 2.0f, 3.0f}) s.add(cls_zSTRIKES(z));
  const struct { float z; int byZ, closest; } cases[] = {
      {1.0004f, 1, 1}, {0.9996f, 1, 1}, {1.0006f, 0, -1}, {1.7f, 0, -2},
      {2.5f, 0, -2},  // equal distances: the first
      {10.0f, 0, -3}};
  for (const auto& c : cases) {
    EXPECT_EQ(s.getIndex_byZ(c.z), c.byZ) << c.z;
    EXPECT_EQ(s.getIndex_ClosestZ(c.z), c.closest) << c.z;
  }
}

// ---- File numbers ---------------------------------------------------------------------------

// ---- Index file -----------------------------------------------------------------------------

TEST(VTestIndexFile, TextReadsIntoDepthsAndIsWrittenBackByteForByte) {
  cls_VTEST t;
  ASSERT_TRUE(t.parseIndex(kIndex, "VS_1.dat").complete());
  ASSERT_EQ(t.strikes.Count(), 3);
  EXPECT_FLOAT_EQ(t.strikes.item(1)->devStd, 6.73f);
  EXPECT_EQ(t.strikes.item(2)->elabBad, "#5,180;4;0,0") << "an empty elab string keeps its place";
  EXPECT_FLOAT_EQ(t.strikes.item(3)->Z, 3.125f);
  EXPECT_EQ(t.indexText(), kIndex);
}

// Depths out of order are sorted, equal depths keep the file order; a bad line ends the read and
// keeps the depths before it.
TEST(VTestIndexFile, DepthsAreSortedAndABadLineEndsTheRead) {
  cls_VTEST t;
  ASSERT_TRUE(t.parseIndex("2.00:0::-1.00::::1:::\r\n1.00:0::-1.00::::2:::\r\n1.00:0::-1.00::::3:::\r\n"
                           "0.50:0::-1.00::::4:::\r\n", "VS_1.dat").complete());
  ASSERT_EQ(t.strikes.Count(), 4);
  const char* expected[] = {"4", "2", "3", "1"};
  for (int i = 1; i <= 4; ++i) EXPECT_EQ(t.strikes.item(i)->badList, expected[i - 1]) << i;

  cls_VTEST bad;
  const LoadResult r = bad.parseIndex("1.00:0::-1.00::::1:::\r\n2.00:0::-1.00::1\r\n3.00:0::-1.00::::3:::\r\n", "VS_1.dat");
  EXPECT_FALSE(r.complete());
  EXPECT_EQ(r.why.line, 2);
  EXPECT_EQ(bad.strikes.Count(), 1);
}

// Bad input ends the read at its line: a number that is none, a field too many or too few, a
// last line cut before its line end. A byte-order mark is passed over.
TEST(VTestIndexFile, BadInputIsToldAtItsLine) {
  const std::string good = "1.00:0::-1.00::::1:::\r\n";
  const struct { std::string text; int line; std::string words; int depths; } cases[] = {
      {"\xEF\xBB\xBF" + good + good, 0, "", 2},
      {good + "nan:0::-1.00::::1:::\r\n", 2, "depth 'nan' is not a number", 1},
      {good + "2.00:x::-1.00::::1:::\r\n", 2, "mean velocity 'x' is not a number", 1},
      {good + "2.00:0:::::::1:::\r\n", 2, "more than the 11 fields", 1},
      {good + "2.00:0::-1.00::::1::", 2, "the file ends early", 1},
  };
  for (const auto& c : cases) {
    cls_VTEST t;
    const LoadResult r = t.parseIndex(c.text, "VS_1.dat");
    EXPECT_EQ(r.why.line, c.line) << c.text;
    EXPECT_NE(r.why.reason.find(c.words), std::string::npos) << r.why.reason;
    EXPECT_EQ(t.strikes.Count(), c.depths) << c.text;
  }
}

TEST(VTestIndexFile, AColonOrLineBreakInsideAFieldCannotSplitTheLine) {
  cls_VTEST t;
  cls_zSTRIKES z(1.0f);
  z.addBad("3", "a:b\r\nc");
  t.strikes.add(z);
  cls_VTEST back;
  ASSERT_EQ(back.readIndexText(t.indexText()), 0);
  ASSERT_EQ(back.strikes.Count(), 1);
  EXPECT_EQ(back.strikes.item(1)->elabBad, "a b  c");
}

// ---- Density and G0 -------------------------------------------------------------------------

TEST(VTestShearModulus, DensityIsUnitWeightOverGravityAndGoIsDensityTimesVelocitySquared) {
  EXPECT_NEAR(evalRho(19.62f), 2.0f, 1e-6);
  EXPECT_EQ(evalRho(-3.0f), 0.0f);
  // 2 t/m3 x (200 m/s)^2 = 80 000 kPa = 80 MPa.
  EXPECT_NEAR(evalGo(2.0f, 200.0f), 80.0f, 1e-4);
}

}  // namespace
}  // namespace koru
