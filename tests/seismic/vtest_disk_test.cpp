// The seismic test working on its folder of seismograms: evaluation from disk, the moves that
// load a record (setGood, moveFile) and the files they rewrite. Strikes come from the synthetic
// generator, with a known velocity.

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "scratch_folder.h"
#include "seismic/cls_SEISMOGRAM.h"
#include "seismic/cls_VTEST.h"
#include "synthetic_strike.h"

namespace koru {
namespace {

using testing::ScratchFolder;

// The whole trace as window: on a clean synthetic strike this recovers the true delay to the
// resolution of the search, so a velocity off by more tells the index's settings were not used.
constexpr const char* kWholeTrace = "5,180;0;0,0";
constexpr const char* kDefaultVs = "5,180;4;0,0";

synth::StrikeSettings strikeAt(float z, double velocity, uint32_t seed) {
  synth::StrikeSettings s;
  s.Z = z;
  s.velocity = velocity;
  s.seed = seed;
  return s;
}

// A test bound to a fresh folder layout: <scratch>/VS_1.dat and <scratch>/VS_1/.
struct Site {
  ScratchFolder scratch;
  cls_VTEST test{scratch / "VS_1.dat", scratch / "VS_1"};
  Site() { std::filesystem::create_directories(test.strikesFolder()); }

  // Writes the strike as "<name>.kor" and returns the record as written.
  cls_SEISMOGRAM write(const std::string& name, const synth::StrikeSettings& shot) {
    cls_SEISMOGRAM r = synth::makeSyntheticStrike(shot);
    EXPECT_EQ(r.saveFile(test.seismogramPath(name)), 0);
    return r;
  }

  cls_zSTRIKES& depth(float z) {
    int i = test.strikes.getIndex_byZ(z);
    if (i == 0) i = test.strikes.add(cls_zSTRIKES(z));
    return *test.strikes.item(i);
  }
};

// The strike evaluated in memory under the given settings (the defaults of its wave for "").
cls_SEISMOGRAM evaluated(const synth::StrikeSettings& shot, const std::string& elab) {
  cls_SEISMOGRAM r = synth::makeSyntheticStrike(shot);
  if (elab.empty())
    r.setDefaultElabParameters();
  else
    r.set_elabString(elab);
  r.evalV();
  return r;
}

int16_t velocityOf(const synth::StrikeSettings& shot, const std::string& elab) { return evaluated(shot, elab).V(); }

// The elab string the index keeps after an evaluation with the defaults: the window stage
// writes the interval it found into its parameters.
std::string defaultElabAfterEvaluation(const synth::StrikeSettings& shot) {
  return evaluated(shot, "").get_elabString();
}

TEST(VTestFromDisk, VerticalOfThreeStrikesPerDepthGivesTheTrueVelocity) {
  Site site;
  const std::vector<float> depths = {2.0f, 4.5f, 7.25f, 10.0f};
  const std::vector<double> truth = {160, 200, 240, 280};
  int name = 1;
  for (size_t d = 0; d < depths.size(); ++d) {
    for (uint32_t k = 0; k < 3; ++k) {
      const std::string n = std::to_string(name++);
      site.write(n, strikeAt(depths[d], truth[d], 10 * static_cast<uint32_t>(d) + k));
      // As acquisition enters it: velocity not yet evaluated.
      site.depth(depths[d]).addGood(n, 0, kWholeTrace);
    }
  }
  ASSERT_TRUE(site.test.saveInfo());

  cls_VTEST fromDisk(site.test.indexFile(), site.test.strikesFolder());
  ASSERT_EQ(fromDisk.loadInfo(), 0);
  std::vector<Diagnostic> problems;
  EXPECT_EQ(fromDisk.evaluateStrikes(&problems), 12);
  EXPECT_TRUE(problems.empty());

  const auto v = fromDisk.get_vecV();
  ASSERT_EQ(v.size(), 4u);
  for (size_t d = 0; d < depths.size(); ++d) {
    // One m/s is the resolution the delay search aims at; the noise of the strikes adds a little.
    EXPECT_NEAR(v[d], truth[d], 2.0) << "at Z " << depths[d];
    EXPECT_GE(fromDisk.strikes.item(static_cast<int>(d) + 1)->devStd, 0.0f);
    EXPECT_LT(fromDisk.strikes.item(static_cast<int>(d) + 1)->devStd, 1.0f);
    EXPECT_EQ(fromDisk.strikes.item(static_cast<int>(d) + 1)->velocities().size(), 3u);
  }
}

TEST(VTestFromDisk, StrikeWithoutElabStringIsEvaluatedWithTheDefaultsOfItsWave) {
  Site site;
  const auto shot = strikeAt(5.0f, 220, 7);
  site.write("31", shot);
  site.depth(5.0f).addGood("31", 0, "");
  ASSERT_EQ(site.test.evaluateStrikes(), 1);
  const cls_zSTRIKES& z = *site.test.strikes.item(1);
  EXPECT_EQ(z.elabGood.rfind("5,180;4,", 0), 0u) << z.elabGood;
  EXPECT_EQ(z.elabGood, defaultElabAfterEvaluation(shot));
  EXPECT_EQ(z.vMean, velocityOf(shot, ""));
  EXPECT_EQ(z.vList, std::to_string(velocityOf(shot, "")));
}

TEST(VTestFromDisk, MissingSeismogramKeepsItsStoredVelocityAndIsReported) {
  Site site;
  const auto shot = strikeAt(3.0f, 180, 3);
  site.write("2", shot);
  cls_zSTRIKES& z = site.depth(3.0f);
  z.addGood("1", 250, kWholeTrace);  // its file is not in the folder
  z.addGood("2", 0, kWholeTrace);
  std::vector<Diagnostic> problems;
  EXPECT_EQ(site.test.evaluateStrikes(&problems), 1);
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].file, site.test.seismogramPath("1"));
  const auto v = z.velocities();
  EXPECT_EQ(v[0], "250");
  EXPECT_EQ(v[1], std::to_string(velocityOf(shot, kWholeTrace)));
}

TEST(VTestFromDisk, EvaluationLeavesTheSeismogramFilesAsTheyWere) {
  Site site;
  site.write("4", strikeAt(6.0f, 200, 1));
  const std::string before = ScratchFolder::read(site.test.seismogramPath("4"));
  site.depth(6.0f).addGood("4", 0, kWholeTrace);
  site.test.evaluateStrikes();
  EXPECT_EQ(ScratchFolder::read(site.test.seismogramPath("4")), before);
}

// ---- Moves that load the record -------------------------------------------------------------

TEST(StrikesFileMoves, SetGoodEvaluatesABadStrikeWithItsOwnElabString) {
  Site site;
  const auto shot = strikeAt(4.0f, 200, 5);
  site.write("8", shot);
  cls_zSTRIKES& z = site.depth(4.0f);
  z.addGood("7", 190, kDefaultVs);
  z.addBad("8", kWholeTrace);

  Diagnostic why;
  ASSERT_TRUE(site.test.setGood("8", &why)) << why.toString();
  const cls_zSTRIKES& after = *site.test.strikes.item(1);
  EXPECT_EQ(after.goodList, "7,8");
  EXPECT_EQ(after.elabGood, std::string(kDefaultVs) + "#" + kWholeTrace);
  EXPECT_EQ(after.badList, "");
  EXPECT_EQ(after.elabBad, "");
  const int16_t v = velocityOf(shot, kWholeTrace);
  EXPECT_NEAR(v, 200, 2);
  EXPECT_EQ(after.vList, "190," + std::to_string(v));
  EXPECT_EQ(after.vMean, static_cast<int16_t>(std::nearbyint((190 + v) / 2.0)));
}

TEST(StrikesFileMoves, SetGoodOfANoiseStrikeWithoutElabStringUsesTheDefaults) {
  Site site;
  const auto shot = strikeAt(4.0f, 200, 6);
  site.write("3", shot);
  site.depth(4.0f).addNoise("3", "");
  ASSERT_TRUE(site.test.setGood("3"));
  const cls_zSTRIKES& z = *site.test.strikes.item(1);
  EXPECT_EQ(z.goodList, "3");
  EXPECT_EQ(z.elabGood, defaultElabAfterEvaluation(shot));
  EXPECT_EQ(z.vMean, velocityOf(shot, ""));
  EXPECT_EQ(z.bestFile, "3");
  EXPECT_EQ(z.noiseList, "");
}

TEST(StrikesFileMoves, SetGoodWithAnUnreadableElabStringMovesNothing) {
  Site site;
  site.write("3", strikeAt(4.0f, 200, 6));
  site.depth(4.0f).addBad("3", "5,180");  // the window and delay stages are missing
  EXPECT_FALSE(site.test.setGood("3"));
  const cls_zSTRIKES& z = *site.test.strikes.item(1);
  EXPECT_EQ(z.badList, "3");
  EXPECT_EQ(z.elabBad, "5,180");
  EXPECT_EQ(z.goodList, "");
}

TEST(StrikesFileMoves, SetGoodTakesTheDepthWrittenInTheSeismogram) {
  Site site;
  site.write("3", strikeAt(4.0f, 200, 6));
  site.depth(5.0f).addBad("3", kWholeTrace);  // the index says 5 m, the file 4 m
  Diagnostic why;
  EXPECT_FALSE(site.test.setGood("3", &why));
  EXPECT_NE(why.reason.find("4.00"), std::string::npos) << why.reason;
  EXPECT_EQ(site.test.strikes.item(1)->badList, "3");
}

TEST(StrikesFileMoves, SetGoodOfAMissingFileFailsWithAReason) {
  Site site;
  site.depth(4.0f).addBad("3", kWholeTrace);
  Diagnostic why;
  EXPECT_FALSE(site.test.setGood("3", &why));
  EXPECT_FALSE(why.reason.empty());
  EXPECT_EQ(site.test.strikes.item(1)->badList, "3");
}

TEST(StrikesFileMoves, SetBadAndSetNoiseFindTheDepthByTheFileHeader) {
  Site site;
  site.write("3", strikeAt(4.0f, 200, 6));
  site.depth(4.0f).addGood("3", 201, kWholeTrace);
  ASSERT_TRUE(site.test.setNoise("3"));
  EXPECT_EQ(site.test.strikes.item(1)->noiseList, "3");
  EXPECT_EQ(site.test.strikes.item(1)->elabNoise, kWholeTrace);
  ASSERT_TRUE(site.test.setBad("3"));
  EXPECT_EQ(site.test.strikes.item(1)->badList, "3");
  EXPECT_EQ(site.test.strikes.item(1)->noiseList, "");
}

TEST(StrikesFileMoves, MoveFileRewritesTheDepthAndReevaluatesAGoodStrike) {
  Site site;
  const auto shot = strikeAt(4.0f, 200, 9);
  site.write("5", shot);
  site.depth(4.0f).addGood("5", velocityOf(shot, kWholeTrace), kWholeTrace);

  Diagnostic why;
  ASSERT_TRUE(site.test.moveFile("5", 6.0f, &why)) << why.toString();

  // The old depth had nothing else and is gone; the file says 6 m.
  ASSERT_EQ(site.test.strikes.Count(), 1);
  const cls_zSTRIKES& z = *site.test.strikes.item(1);
  EXPECT_FLOAT_EQ(z.Z, 6.0f);
  EXPECT_EQ(z.goodList, "5");
  EXPECT_EQ(z.elabGood, kWholeTrace);
  cls_SEISMOGRAM moved;
  EXPECT_FLOAT_EQ(moved.loadZ(site.test.seismogramPath("5")), 6.0f);

  // Same delay over the longer path difference at 6 m.
  cls_SEISMOGRAM at6 = synth::makeSyntheticStrike(shot);
  at6.Z = 6.0f;
  const double expected = at6.DeltaS() / synth::trueDelayMs(shot) * 1000.0;
  EXPECT_NEAR(z.vMean, expected, 2.0);
  EXPECT_GT(z.vMean, 201);
}

TEST(StrikesFileMoves, MoveFileKeepsTheKindAndElabOfABadStrikeAndTheOldDepthsOtherFiles) {
  Site site;
  site.write("5", strikeAt(4.0f, 200, 9));
  cls_zSTRIKES& z4 = site.depth(4.0f);
  z4.addGood("4", 200, kDefaultVs);
  z4.addBad("5", "2,180;0,0,699;0,0");
  site.depth(6.0f).addGood("6", 210, kDefaultVs);

  ASSERT_TRUE(site.test.moveFile("5", 6.0f));
  ASSERT_EQ(site.test.strikes.Count(), 2);
  EXPECT_EQ(site.test.strikes.item(1)->goodList, "4");
  EXPECT_EQ(site.test.strikes.item(1)->badList, "");
  EXPECT_EQ(site.test.strikes.item(2)->badList, "5");
  EXPECT_EQ(site.test.strikes.item(2)->elabBad, "2,180;0,0,699;0,0");
  EXPECT_EQ(site.test.strikes.item(2)->vMean, 210);
}

TEST(StrikesFileMoves, MoveFileToANewDepthBetweenOthersKeepsZRising) {
  Site site;
  site.write("5", strikeAt(4.0f, 200, 9));
  site.depth(2.0f).addGood("1", 180, kDefaultVs);
  site.depth(4.0f).addNoise("5", "6;0;-1");
  site.depth(8.0f).addGood("9", 220, kDefaultVs);
  ASSERT_TRUE(site.test.moveFile("5", 5.5f));
  EXPECT_EQ(site.test.get_vecZ(), (std::vector<float>{2.0f, 5.5f, 8.0f}));
  EXPECT_EQ(site.test.strikes.item(2)->noiseList, "5");
}

TEST(StrikesFileMoves, MoveFileOfAStrikeNoDepthListsChangesNothing) {
  Site site;
  site.write("5", strikeAt(4.0f, 200, 9));
  const std::string before = ScratchFolder::read(site.test.seismogramPath("5"));
  site.depth(4.0f).addGood("4", 200, kDefaultVs);
  Diagnostic why;
  EXPECT_FALSE(site.test.moveFile("5", 6.0f, &why));
  EXPECT_FALSE(why.reason.empty());
  EXPECT_EQ(site.test.strikes.Count(), 1);
  EXPECT_EQ(ScratchFolder::read(site.test.seismogramPath("5")), before);
}

TEST(StrikesFileMoves, MoveFileOfAMissingSeismogramLeavesTheIndexAlone) {
  Site site;
  site.depth(4.0f).addGood("5", 200, kDefaultVs);
  EXPECT_FALSE(site.test.moveFile("5", 6.0f));
  ASSERT_EQ(site.test.strikes.Count(), 1);
  EXPECT_EQ(site.test.strikes.item(1)->goodList, "5");
  EXPECT_FALSE(std::filesystem::exists(site.test.seismogramPath("5")));
}

TEST(StrikesFileMoves, UpdateSeismogramElabStoresTheNewSettingsAndVelocity) {
  Site site;
  const auto shot = strikeAt(4.0f, 200, 2);
  cls_zSTRIKES& z = site.depth(4.0f);
  z.addGood("1", 150, kDefaultVs);
  z.addGood("2", 250, kDefaultVs);
  cls_SEISMOGRAM r = synth::makeSyntheticStrike(shot);
  r.set_elabString(kWholeTrace);
  r.evalV();
  ASSERT_TRUE(site.test.strikes.updateSeismogramElab(4.0003f, "2", r));
  EXPECT_EQ(z.elabGood, std::string(kDefaultVs) + "#" + kWholeTrace);
  EXPECT_EQ(z.vList, "150," + std::to_string(r.V()));
  EXPECT_EQ(z.vMean, static_cast<int16_t>(std::nearbyint((150 + r.V()) / 2.0)));
  EXPECT_FALSE(site.test.strikes.updateSeismogramElab(4.5f, "2", r));
}

}  // namespace
}  // namespace koru
