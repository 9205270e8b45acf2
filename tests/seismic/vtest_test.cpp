// The index of a seismic test in memory and in its file: the lists of one depth and their
// moves, the mean and scatter of the velocities, the depth lookups, file numbers, and density
// and G0 at the test's depths.

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "scratch_folder.h"
#include "seismic/cls_VTEST.h"

namespace koru {
namespace {

using testing::ScratchFolder;

// Three depths as the program writes them: a full line, a depth with bad files only (empty
// fields in a row), and one whose good list holds a strike with velocity 0.
const std::string kIndex =
    "1.00:210:200,220:6.73:12:12,13:5,180;4;0,0#2,180;0,0,699;0,0:14:5,180;4;0,0:15:6;0;-1\r\n"
    "2.50:0::-1.00::::16,17:#5,180;4;0,0::\r\n"
    "3.125:300:300,0:-1.00:18:18,19:#5,180;4;0,0:::20:6;0;-1\r\n";

cls_zSTRIKES depthWithVelocities(const std::string& vList) {
  cls_zSTRIKES z(1.0f);
  z.vList = vList;
  z.evaluateData();
  return z;
}

// The lists of one depth side by side, so that one comparison shows every list and its partner.
std::string listsOf(const cls_zSTRIKES& z) {
  return "good=" + z.goodList + " v=" + z.vList + " eg=" + z.elabGood + " bad=" + z.badList + " eb=" + z.elabBad +
         " noise=" + z.noiseList + " en=" + z.elabNoise + " best=" + z.bestFile + " mean=" + std::to_string(z.vMean);
}

// ---- Mean velocity and scatter --------------------------------------------------------------

TEST(StrikesEvaluateData, MeanAndCoefficientOfVariationOfTheNonZeroVelocities) {
  const double cv200and220 = 100.0 * std::sqrt(200.0) / 210.0;  // about 6.73
  const struct {
    const char* vList;
    int vMean;
    double devStd;  // -1 for fewer than two values
  } cases[] = {
      {"200,220", 210, cv200and220},
      {"0,200,220", 210, cv200and220},  // zero velocities in the good list do not count
      {"0,200,0,220", 210, cv200and220},
      {"0,250", 250, -1},
      {"180", 180, -1},
      {"", 0, -1},
      {"0,0", 0, -1},
      // The mean rounds halves to even and the scatter is taken from the rounded mean:
      // 200.5 -> 200, differences 0 and 1 from it, so sqrt(1 / 1) = 1 -> 0.5 %.
      {"200,201", 200, 0.5},
      {"201,202", 202, 100.0 / 202.0},                          // 201.5 -> 202
      {"200,200,201", 200, 100.0 * std::sqrt(0.5) / 200.0},  // 200.333 -> 200; S = 0 + 0 + 1
  };
  for (const auto& c : cases) {
    const auto z = depthWithVelocities(c.vList);
    EXPECT_EQ(z.vMean, c.vMean) << c.vList;
    EXPECT_NEAR(z.devStd, c.devStd, 1e-4) << c.vList;
  }
}

// ---- Lists of one depth ---------------------------------------------------------------------

TEST(StrikesLists, GoodListsStayParallelAndTheHeadIsBestAfterAnAddOrAMove) {
  cls_zSTRIKES z(3.0f);
  z.addGood("12", 200, "e1");
  z.addGood("13", 220, "e2");
  EXPECT_EQ(listsOf(z), "good=12,13 v=200,220 eg=e1#e2 bad= eb= noise= en= best=12 mean=210");
  // The user's mark does not survive another good strike: the head of the list is best again.
  z.bestFile = "13";
  z.addGood("14", 240, "e3");
  EXPECT_EQ(z.bestFile, "12");
  // Set bad, the file takes its elab string along and the depth is evaluated again; the best
  // left the list, so the first good one follows.
  ASSERT_TRUE(z.setBad("12"));
  EXPECT_EQ(listsOf(z), "good=13,14 v=220,240 eg=e2#e3 bad=12 eb=e1 noise= en= best=13 mean=230");
}

TEST(StrikesLists, RemovingAGoodFileThatIsNotBestKeepsTheMark) {
  cls_zSTRIKES z(3.0f);
  z.addGood("12", 200, "e1");
  z.addGood("13", 220, "e2");
  z.addGood("14", 240, "e3");
  z.bestFile = "14";
  ASSERT_TRUE(z.setNoise("13"));
  EXPECT_EQ(listsOf(z), "good=12,14 v=200,240 eg=e1#e3 bad= eb= noise=13 en=e2 best=14 mean=220");
  ASSERT_TRUE(z.remove_fromGood("14"));
  EXPECT_EQ(z.bestFile, "12");
  ASSERT_TRUE(z.remove_fromGood("12"));
  EXPECT_EQ(z.bestFile, "");
  EXPECT_EQ(z.vMean, 0);
}

TEST(StrikesLists, NoiseAndBadMoveBothWaysKeepingElabStrings) {
  cls_zSTRIKES z(3.0f);
  z.addBad("5", "b5");
  z.addBad("6", "b6");
  z.addNoise("7", "n7");
  ASSERT_TRUE(z.setNoise("5"));
  EXPECT_EQ(listsOf(z), "good= v= eg= bad=6 eb=b6 noise=7,5 en=n7#b5 best= mean=0");
  ASSERT_TRUE(z.setBad("7"));
  EXPECT_EQ(listsOf(z), "good= v= eg= bad=6,7 eb=b6#n7 noise=5 en=b5 best= mean=0");
}

TEST(StrikesLists, MovesFromTheSameListOrForUnknownFilesChangeNothing) {
  cls_zSTRIKES z(3.0f);
  z.addGood("1", 200, "g");
  z.addBad("2", "b");
  z.addNoise("3", "n");
  const std::string before = listsOf(z);
  EXPECT_FALSE(z.setBad("2"));
  EXPECT_FALSE(z.setNoise("3"));
  EXPECT_FALSE(z.setBad("9"));
  EXPECT_FALSE(z.setNoise("9"));
  EXPECT_FALSE(z.Remove("9"));
  EXPECT_FALSE(z.remove_fromGood("2"));
  EXPECT_EQ(listsOf(z), before);
}

TEST(StrikesLists, NamesMatchWholeItemsOnly) {
  cls_zSTRIKES z(3.0f);
  z.addGood("12", 200, "");
  z.addBad("123", "");
  EXPECT_FALSE(z.isGood("1"));
  EXPECT_FALSE(z.isGood("2"));
  EXPECT_TRUE(z.isBad("123"));
  EXPECT_EQ(z.getListTypeFromFilename("12"), "g");
  EXPECT_EQ(z.getListTypeFromFilename("123"), "b");
  EXPECT_EQ(z.getListTypeFromFilename("23"), "");
  EXPECT_FALSE(z.Remove("1"));
  EXPECT_EQ(z.goodList, "12");
}

TEST(StrikesLists, AFileStandsInOneListThroughASeriesOfMoves) {
  cls_zSTRIKES z(3.0f);
  for (const char* n : {"1", "2", "3", "4"}) z.addGood(n, 200, std::string("e") + n);
  z.setBad("2");
  z.setNoise("2");
  z.setNoise("3");
  z.setBad("3");
  z.setNoise("1");
  z.setBad("1");
  for (const char* n : {"1", "2", "3", "4"}) {
    const int lists = z.isGood(n) + z.isBad(n) + z.isNoise(n);
    EXPECT_EQ(lists, 1) << n;
    EXPECT_EQ(z.getElab_byFName(n), std::string("e") + n);
  }
  EXPECT_EQ(z.fileList(), "4,3,1,2");
}

TEST(StrikesLists, EmptyElabStringsKeepTheirPlaceInTheList) {
  cls_zSTRIKES z(3.0f);
  z.addBad("1", "");
  EXPECT_EQ(z.elabBad, "");
  z.addBad("2", "x");
  EXPECT_EQ(z.elabBad, "#x");
  EXPECT_EQ(z.getElab(kElabBad, 0), "");
  EXPECT_EQ(z.getElab(kElabBad, 1), "x");
  EXPECT_EQ(z.getElab(kElabBad, 2), "");
  ASSERT_TRUE(z.Remove("1"));
  EXPECT_EQ(z.elabBad, "x");
  EXPECT_EQ(z.getElab_byFName("2"), "x");
}

TEST(StrikesLists, AnElabListThatLostAnItemIsRealignedBeforeItGrows) {
  cls_zSTRIKES z(3.0f);
  z.goodList = "1,2,3";
  z.vList = "200,210";
  z.elabGood = "a#b";
  z.addGood("4", 230, "d");
  EXPECT_EQ(z.elabGood, "a#b##d");
  EXPECT_EQ(z.vList, "200,210,,230");
  EXPECT_EQ(z.getElab_byFName("4"), "d");
  EXPECT_EQ(z.vMean, 213);
}

TEST(StrikesLists, ElabStringsAreReadAndWrittenByKindPositionAndName) {
  cls_zSTRIKES z(3.0f);
  z.addGood("1", 200, "g1");
  z.addGood("2", 200, "g2");
  z.addNoise("3", "n3");
  EXPECT_EQ(z.getElab(kElabGood, 1), "g2");
  EXPECT_EQ(z.getElab(kElabNoise, 0), "n3");
  EXPECT_TRUE(z.setElab(kElabGood, 0, "x"));
  EXPECT_TRUE(z.setElab_byFName("3", "y"));
  EXPECT_FALSE(z.setElab(kElabBad, 0, "z"));  // no bad file
  EXPECT_FALSE(z.setElab(4, 0, "z"));
  EXPECT_FALSE(z.setElab_byFName("9", "z"));
  EXPECT_EQ(z.elabGood, "x#g2");
  EXPECT_EQ(z.elabNoise, "y");
  EXPECT_EQ(z.getElab(kElabBad, 0), "");
}

TEST(StrikesLists, FileNumbersAndListsForOtherModules) {
  cls_zSTRIKES z(3.0f);
  EXPECT_EQ(z.getLastGoodIndex(), -1);
  EXPECT_EQ(z.getMaxFileNumber(), 0);
  EXPECT_TRUE(z.isEmpty());
  z.goodList = "12,15";
  z.badList = "21";
  z.noiseList = "3";
  EXPECT_EQ(z.getLastGoodIndex(), 15);
  EXPECT_EQ(z.getMaxFileNumber(), 21);
  EXPECT_EQ(z.fileList(), "12,15,21,3");
  EXPECT_EQ(z.returnPseudableList(), "21,12,15");
  EXPECT_FALSE(z.isEmpty());

  cls_zSTRIKES onlyBad(1.0f);
  onlyBad.badList = "5,6";
  EXPECT_EQ(onlyBad.returnPseudableList(), "5,6");
  EXPECT_EQ(onlyBad.fileList(), "5,6");
  EXPECT_FALSE(onlyBad.existsGood());
  onlyBad.noiseList = "7";
  EXPECT_EQ(onlyBad.returnPseudableList(), "5,6");
  EXPECT_EQ(onlyBad.fileList(), "5,6,7");
}

TEST(StrikesLists, FileNameIsCutFromThePath) {
  EXPECT_EQ(strikeNameOfPath("C:\\SITES\\SITE_1\\VERT_2\\VS_2\\1204.kor"), "1204");
  EXPECT_EQ(strikeNameOfPath("/data/VERT_2/VS_2/17.kor"), "17");
  EXPECT_EQ(strikeNameOfPath("C:\\a.b\\33"), "33");
  EXPECT_EQ(strikeNameOfPath("8.kor"), "8");
}

// ---- Depths ---------------------------------------------------------------------------------

cls_STRIKES depthsAt(const std::vector<float>& zs) {
  cls_STRIKES s;
  for (float z : zs) s.add(cls_zSTRIKES(z));
  return s;
}

TEST(StrikesDepths, AddKeepsZRisingAndReturnsThePosition) {
  cls_STRIKES s;
  EXPECT_EQ(s.add(cls_zSTRIKES(3.0f)), 1);
  EXPECT_EQ(s.add(cls_zSTRIKES(1.0f)), 1);
  EXPECT_EQ(s.add(cls_zSTRIKES(2.0f)), 2);
  EXPECT_EQ(s.add(cls_zSTRIKES(4.0f)), 4);
  ASSERT_EQ(s.Count(), 4);
  for (int i = 1; i <= 4; ++i) EXPECT_FLOAT_EQ(s.item(i)->Z, static_cast<float>(i));
  EXPECT_EQ(s.item(0), nullptr);
  EXPECT_EQ(s.item(5), nullptr);
  EXPECT_EQ(s.deepestIndex(), 4);
  EXPECT_FLOAT_EQ(s.getDeepestZ(), 4.0f);
  EXPECT_FALSE(s.Remove(5));
  EXPECT_TRUE(s.Remove(4));
  EXPECT_FLOAT_EQ(s.getDeepestZ(), 3.0f);
}

TEST(StrikesDepths, DepthsWithinHalfAMillimetreAreOneAndTheClosestNeighbourIsNegative) {
  const auto s = depthsAt({1.0f, 2.0f, 3.0f});
  const struct {
    float z;
    int byZ, closest;
  } cases[] = {{1.0f, 1, 1},    {1.0004f, 1, 1}, {0.9996f, 1, 1}, {1.0006f, 0, -1}, {2.0002f, 2, 2},
               {2.4f, 0, -2},   {1.7f, 0, -2},
               {2.5f, 0, -2},  // equal distances: the first
               {10.0f, 0, -3}, {-1.0f, 0, -1}};
  for (const auto& c : cases) {
    EXPECT_EQ(s.getIndex_byZ(c.z), c.byZ) << c.z;
    EXPECT_EQ(s.getIndex_ClosestZ(c.z), c.closest) << c.z;
  }
  EXPECT_EQ(depthsAt({}).getIndex_byZ(0.0f), 0);
  EXPECT_EQ(depthsAt({}).getIndex_ClosestZ(1.0f), 0);
}

TEST(StrikesDepths, SignificantDepthsAndQualityLookups) {
  auto s = depthsAt({1.0f, 2.0f, 3.0f});
  s.item(1)->addGood("1", 200, "g1");
  s.item(2)->addBad("2", "b2");
  s.item(3)->addGood("3", 220, "g3");
  s.item(3)->addNoise("4", "n4");
  EXPECT_EQ(s.countSignicative(), 2);
  EXPECT_EQ(s.getQualityOfSeismogram(3.0f, "4"), "n");
  EXPECT_EQ(s.getQualityOfSeismogram(3.0002f, "3"), "g");
  EXPECT_EQ(s.getQualityOfSeismogram(2.0f, "3"), "");
  EXPECT_EQ(s.getQualityOfSeismogram(5.0f, "3"), "");
  EXPECT_EQ(s.getElabStringOfSeismogram(2.0f, "2"), "b2");
  EXPECT_EQ(s.getElabStringOfSeismogram(1.5f, "2"), "");
}

// ---- File numbers ---------------------------------------------------------------------------

TEST(VTestFileNumbers, NextFileNumberFollowsTheGreatestOfAllListsAndDepths) {
  cls_VTEST t;
  EXPECT_EQ(t.nextFileNumber(), 1);
  cls_zSTRIKES a(1.0f);
  a.goodList = "1,2";
  a.badList = "5";
  cls_zSTRIKES b(2.0f);
  b.goodList = "7";
  b.noiseList = "9";
  t.strikes.add(a);
  t.strikes.add(b);
  EXPECT_EQ(t.nextFileNumber(), 10);
  t.strikes.item(2)->Remove("9");
  EXPECT_EQ(t.nextFileNumber(), 8);  // the gap below is not filled: numbers only grow
  t.strikes.item(2)->Remove("7");
  EXPECT_EQ(t.nextFileNumber(), 6);
  t.strikes.item(1)->goodList = "x,3,4b,";  // names that are not numbers do not count
  t.strikes.item(1)->badList = "";
  EXPECT_EQ(t.nextFileNumber(), 4);
}

// ---- Index file -----------------------------------------------------------------------------

TEST(VTestIndexFile, FileReadsIntoDepthsAndIsWrittenBackByteForByte) {
  ScratchFolder dir;
  cls_VTEST t(dir.write("VS_1.dat", kIndex), dir / "VS_1");
  Diagnostic why;
  ASSERT_EQ(t.loadInfo(&why), 0) << why.toString();
  ASSERT_EQ(t.strikes.Count(), 3);

  const cls_zSTRIKES& first = *t.strikes.item(1);
  EXPECT_FLOAT_EQ(first.Z, 1.0f);
  EXPECT_FLOAT_EQ(first.devStd, 6.73f);
  EXPECT_EQ(listsOf(first),
            "good=12,13 v=200,220 eg=5,180;4;0,0#2,180;0,0,699;0,0 bad=14 eb=5,180;4;0,0 noise=15 en=6;0;-1 "
            "best=12 mean=210");
  const cls_zSTRIKES& second = *t.strikes.item(2);
  EXPECT_FLOAT_EQ(second.Z, 2.5f);
  EXPECT_FLOAT_EQ(second.devStd, -1.0f);
  EXPECT_EQ(listsOf(second), "good= v= eg= bad=16,17 eb=#5,180;4;0,0 noise= en= best= mean=0");
  EXPECT_EQ(second.getElab_byFName("17"), "5,180;4;0,0");
  EXPECT_FLOAT_EQ(t.strikes.item(3)->Z, 3.125f);

  t.setPaths(dir / "copy.dat", dir / "VS_1");
  ASSERT_TRUE(t.saveInfo(&why)) << why.toString();
  EXPECT_EQ(ScratchFolder::read(dir / "copy.dat"), kIndex);
  EXPECT_EQ(t.indexText(), kIndex);
}

TEST(VTestIndexFile, LfAndBlankLinesReadTheSameAndAreWrittenWithCrLf) {
  std::string lf = kIndex;
  for (size_t at; (at = lf.find("\r\n")) != std::string::npos;) lf.erase(at, 1);
  cls_VTEST t;
  ASSERT_EQ(t.readIndexText("\r\n\r\n" + lf + "  \r\n\n"), 0);
  EXPECT_EQ(t.indexText(), kIndex);
}

TEST(VTestIndexFile, DepthsOutOfOrderAreSortedAndEqualDepthsKeepTheFileOrder) {
  cls_VTEST t;
  ASSERT_EQ(t.readIndexText("2.00:0::-1.00::::1:::\r\n"
                            "1.00:0::-1.00::::2:::\r\n"
                            "1.00:0::-1.00::::3:::\r\n"
                            "0.50:0::-1.00::::4:::\r\n"),
            0);
  ASSERT_EQ(t.strikes.Count(), 4);
  const char* expected[] = {"4", "2", "3", "1"};
  for (int i = 1; i <= 4; ++i) EXPECT_EQ(t.strikes.item(i)->badList, expected[i - 1]) << i;
}

TEST(VTestIndexFile, ABadLineEndsTheReadAndKeepsTheDepthsBeforeIt) {
  cls_VTEST t(ScratchFolder().path() / "VS_1.dat", "VS_1");
  Diagnostic why;
  EXPECT_EQ(t.readIndexText("1.00:0::-1.00::::1:::\r\n"
                            "2.00:0::-1.00::1\r\n"
                            "3.00:0::-1.00::::3:::\r\n",
                            &why),
            1);
  EXPECT_EQ(t.strikes.Count(), 1);
  EXPECT_EQ(why.line, 2);
  EXPECT_NE(why.reason.find("6 of the 11"), std::string::npos) << why.reason;
  // A mean velocity beyond 16 bits.
  EXPECT_EQ(t.readIndexText("1.00:40000::-1.00:::::::\r\n", &why), 1);
  EXPECT_EQ(t.strikes.Count(), 0);
  EXPECT_EQ(why.line, 1);
}

TEST(VTestIndexFile, NumbersReadWithAPointAndAreWrittenInTheirPatterns) {
  cls_VTEST t;
  ASSERT_EQ(t.readIndexText("4:199.6:a:2.345:::::::\r\n"), 0);
  EXPECT_EQ(t.strikes.item(1)->vMean, 200);
  EXPECT_EQ(t.indexText(), "4.00:200:a:2.35:::::::\r\n");
  ASSERT_EQ(t.readIndexText("1.0006:0::-1:::::::\r\n"), 0);
  EXPECT_EQ(t.indexText(), "1.001:0::-1.00:::::::\r\n");
}

TEST(VTestIndexFile, MissingFileLeavesTheTestEmptyAndAnEmptyTestWritesAnEmptyFile) {
  ScratchFolder dir;
  cls_VTEST t(dir / "VS_1.dat", dir / "VS_1");
  ASSERT_EQ(t.readIndexText(kIndex), 0);
  EXPECT_EQ(t.loadInfo(), -1);
  EXPECT_EQ(t.strikes.Count(), 0);
  dir.write("VS_1.dat", kIndex);
  ASSERT_TRUE(t.saveInfo());
  EXPECT_EQ(ScratchFolder::read(dir / "VS_1.dat"), "");
}

TEST(VTestIndexFile, Windows1252TextSurvivesAndIsUtf8InMemory) {
  const std::string line = "1.00:0::-1.00::::::7:caf\xE9\r\n";
  cls_VTEST t;
  ASSERT_EQ(t.readIndexText(line), 0);
  EXPECT_EQ(t.strikes.item(1)->elabNoise, "caf\xC3\xA9");
  EXPECT_EQ(t.indexText(), line);
}

TEST(VTestIndexFile, AColonOrLineBreakInsideAFieldCannotSplitTheLine) {
  cls_VTEST t;
  cls_zSTRIKES z(1.0f);
  z.addBad("3", "a:b\r\nc");
  t.strikes.add(z);
  cls_VTEST back;
  ASSERT_EQ(back.readIndexText(t.indexText()), 0);
  ASSERT_EQ(back.strikes.Count(), 1);
  EXPECT_EQ(back.strikes.item(1)->badList, "3");
  EXPECT_EQ(back.strikes.item(1)->elabBad, "a b  c");
}

TEST(VTestIndexFile, TestBuiltInMemorySurvivesASaveAndLoad) {
  ScratchFolder dir;
  cls_VTEST t(dir / "VP_1.dat", dir / "VP_1", "Vp");
  EXPECT_EQ(t.intWaveType(), 1);
  cls_zSTRIKES z(12.35f);
  z.addGood("31", 1510, "5,180;5;0,0");
  z.addGood("32", 1490, "5,180;5;0,0");
  z.addNoise("33", "6;0;-1");
  t.strikes.add(z);
  ASSERT_TRUE(t.saveInfo());
  cls_VTEST back(dir / "VP_1.dat", dir / "VP_1", "Vp");
  ASSERT_EQ(back.loadInfo(), 0);
  ASSERT_EQ(back.strikes.Count(), 1);
  EXPECT_EQ(back.indexText(), t.indexText());
  EXPECT_FLOAT_EQ(back.strikes.item(1)->Z, 12.35f);
  // The scatter comes back with the two decimals of the file.
  EXPECT_NEAR(back.strikes.item(1)->devStd, 100.0 * std::sqrt(200.0) / 1500.0, 0.005);
}

// ---- Density and G0 -------------------------------------------------------------------------

TEST(VTestShearModulus, DensityIsUnitWeightOverGravityAndGoIsDensityTimesVelocitySquared) {
  EXPECT_NEAR(evalRho(19.62f), 2.0f, 1e-6);
  EXPECT_NEAR(evalRho(18.0f), 18.0 / 9.81, 1e-6);
  EXPECT_EQ(evalRho(0.0f), 0.0f);
  EXPECT_EQ(evalRho(-3.0f), 0.0f);
  // 2 t/m3 x (200 m/s)^2 = 80 000 kPa = 80 MPa.
  EXPECT_NEAR(evalGo(2.0f, 200.0f), 80.0f, 1e-4);
  EXPECT_EQ(evalGo(2.0f, 0.0f), 0.0f);
  EXPECT_EQ(evalGo(0.0f, 200.0f), 0.0f);
}

TEST(VTestShearModulus, ProfileAtTheTestDepthsTakesTheUnitWeightAtEachDepth) {
  cls_VTEST t;
  ASSERT_EQ(t.readIndexText(kIndex), 0);  // depths 1, 2.5, 3.125 with vMean 210, 0, 300
  std::vector<float> asked;
  const UnitWeightAt gamma = [&](float z) {
    asked.push_back(z);
    return 17.0f + z;
  };
  const auto rho = t.evalRho(gamma);
  EXPECT_EQ(asked, (std::vector<float>{1.0f, 2.5f, 3.125f}));
  ASSERT_EQ(rho.size(), 3u);
  EXPECT_NEAR(rho[0], 18.0 / 9.81, 1e-6);
  EXPECT_NEAR(rho[1], 19.5 / 9.81, 1e-6);
  const auto go = t.evalGo(gamma);
  ASSERT_EQ(go.size(), 3u);
  EXPECT_NEAR(go[0], 18.0 / 9.81 * 210 * 210 / 1000, 1e-3);
  EXPECT_EQ(go[1], 0.0f);  // no velocity at 2.5 m
  EXPECT_NEAR(go[2], 20.125 / 9.81 * 300 * 300 / 1000, 1e-3);
  EXPECT_EQ(t.evalGo(UnitWeightAt()), (std::vector<float>{0, 0, 0}));
}

}  // namespace
}  // namespace koru
