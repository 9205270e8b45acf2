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


TEST(VTestFromDisk, VerticalOfThreeStrikesPerDepthGivesTheTrueVelocity) {
  Site site;
  const std::vector<float> depths = {2.0f, 7.25f};
  const std::vector<double> truth = {160, 240};
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
  EXPECT_EQ(fromDisk.evaluateStrikes(&problems), 6);
  EXPECT_TRUE(problems.empty());
  const auto v = fromDisk.get_vecV();
  ASSERT_EQ(v.size(), 2u);
  for (size_t d = 0; d < depths.size(); ++d) {
    // One m/s is the resolution the delay search aims at; the noise of the strikes adds a little.
    EXPECT_NEAR(v[d], truth[d], 2.0) << "at Z " << depths[d];
    EXPECT_LT(fromDisk.strikes.item(static_cast<int>(d) + 1)->devStd, 1.0f);
  }
}

// ---- Moves that load the record -------------------------------------------------------------

TEST(StrikesFileMoves, MoveFileRewritesTheDepthAndReevaluatesAGoodStrike) {
  Site site;
  const auto shot = strikeAt(4.0f, 200, 9);
  site.write("5", shot);
  site.depth(4.0f).addGood("5", 200, kWholeTrace);

  Diagnostic why;
  ASSERT_TRUE(site.test.moveFile("5", 6.0f, &why)) << why.toString();

  // The old depth had nothing else and is gone; the file says 6 m.
  ASSERT_EQ(site.test.strikes.Count(), 1);
  const cls_zSTRIKES& z = *site.test.strikes.item(1);
  EXPECT_FLOAT_EQ(z.Z, 6.0f);
  EXPECT_FLOAT_EQ(cls_SEISMOGRAM().loadZ(site.test.seismogramPath("5")), 6.0f);

  // Same delay over the longer path difference at 6 m.
  cls_SEISMOGRAM at6 = synth::makeSyntheticStrike(shot);
  at6.Z = 6.0f;
  const double expected = at6.DeltaS() / synth::trueDelayMs(shot) * 1000.0;
  EXPECT_NEAR(z.vMean, expected, 2.0);
}

}  // namespace
}  // namespace koru
