// The results view of a vertical: which vector and which depths a parameter code gives, and the
// view filled from a DMT test and seismic tests, in memory and from a vertical's folder.

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "results/cls_FileOptions.h"
#include "scratch_folder.h"
#include "seismic/cls_VTEST.h"
#include "sites/cls_VERTICAL.h"
#include "synthetic_strike.h"

namespace koru {
namespace {

using testing::ScratchFolder;
using Curves = std::vector<std::vector<float>>;

// A sounding from 1.0 to 4.0 m every 0.2 m, stiffening with depth.
cls_DmtTEST sounding() {
  cls_DmtTEST t;
  t.setN(16);
  for (size_t i = 0; i < 16; ++i) {
    t.vZ[i] = std::round((1.0f + 0.2f * static_cast<float>(i)) * 100.0f) / 100.0f;
    t.vA[i] = static_cast<int16_t>(180 + 15 * i);
    t.vB[i] = static_cast<int16_t>(420 + 45 * i);
  }
  t.sngZw = 2.0f;
  return t;
}

// A seismic test in memory: one depth a group of good strikes with their velocities.
cls_VTEST seismicTest(const std::vector<std::pair<float, std::vector<int16_t>>>& depths) {
  cls_VTEST test;
  test.setStrWave("Vs");
  int name = 1;
  for (const auto& [z, velocities] : depths) {
    const int at = test.strikes.add(cls_zSTRIKES(z));
    for (const int16_t v : velocities) test.strikes.item(at)->addGood(std::to_string(name++), v, "5,180;4;0,0");
  }
  return test;
}

TEST(FileOptionsCodes, PressureCodesGiveSeveralCurvesInTheirOrder) {
  cls_FileOptions view;
  view.dmt.vecPo = {1};
  view.dmt.vecP1 = {2};
  view.dmt.vecP2 = {3};
  view.dmt.vecUo = {4};
  EXPECT_EQ(view.getPlotVector("P2U0"), (Curves{{3}, {4}}));
  EXPECT_EQ(view.getPlotVector("U0P2P0P1"), (Curves{{4}, {1}, {2}, {3}}));
}

TEST(FileOptionsFromTests, VsValuesScatterG0AndDmtRatiosAtTheVsDepths) {
  cls_DmtTEST dmt = sounding();
  VerticalSources sources;
  sources.dmt = &dmt;
  sources.sngZw = 2.0f;
  // Unit weight 19.62 kN/m3 everywhere: a density of exactly 2 t/m3.
  sources.unitWeightAt = [](float) { return 19.62f; };
  const cls_VTEST vs = seismicTest({{2.0f, {200, 220}}, {4.4f, {250}}, {6.0f, {300}}, {6.5f, {}}});
  sources.vsTest = &vs;
  cls_FileOptions view;
  ASSERT_TRUE(view.initializeFromPalmiro(sources, DMTOptions{}));
  EXPECT_EQ(view.vVs, (std::vector<float>{210, 250, 300, 0}));
  // 200 and 220: coefficient of variation 100 x sqrt(200) / 210 %.
  EXPECT_NEAR(view.VsRepeatability[0], 6.73f, 0.005f);
  EXPECT_NEAR(view.vG0[0], 88.2f, 1e-3);  // 2 x 210^2 kPa
  EXPECT_FLOAT_EQ(view.vEdVs[0], view.dmt.getEdFromZ(2.0f));
  EXPECT_NEAR(view.vG0EdVs[0], view.vG0[0] / view.vEdVs[0], 1e-5);
  // 4.4 m lies within 0.5 m of the last row (4.0 m): its values are the last row's; 6.0 m is past.
  EXPECT_FLOAT_EQ(view.vEdVs[1], view.dmt.vecEd.back());
  EXPECT_FLOAT_EQ(view.vG0EdVs[2], 0.0f);
}

// The whole trace as the window: a clean synthetic strike then gives its true velocity.
TEST(FileOptionsFromVerticalFolder, DmtAndVsFilesAreReadAndJoinedUnderTheVerticalsName) {
  ScratchFolder scratch;
  cls_VERTICAL vertical;
  vertical.setFolders(scratch.path(), "VERT_1");
  vertical.strTestname = "SDMT 1";
  vertical.blnTestVs = true;
  std::filesystem::create_directories(vertical.strVsFolder);
  cls_DmtTEST dmt = sounding();
  dmt.setDatPath(vertical.strDMTFile);
  ASSERT_EQ(dmt.saveFile(), -1);
  cls_VTEST vs(vertical.strVsFile, vertical.strVsFolder, "Vs");
  const std::vector<float> depths = {1.5f, 2.5f};
  for (size_t d = 0; d < depths.size(); ++d) {
    synth::StrikeSettings shot;
    shot.Z = depths[d];
    shot.velocity = 180 + 40 * d;
    ASSERT_EQ(synth::makeSyntheticStrike(shot).saveFile(vs.seismogramPath(std::to_string(d + 1))), 0);
    vs.strikes.item(vs.strikes.add(cls_zSTRIKES(depths[d])))->addGood(std::to_string(d + 1), 0, "5,180;0;0,0");
  }
  ASSERT_EQ(vs.evaluateStrikes(), 2);
  ASSERT_TRUE(vs.saveInfo());

  cls_FileOptions view;
  ASSERT_TRUE(view.initializeFromPalmiro(vertical, DMTOptions{}));
  EXPECT_EQ(view.strVertName, "SDMT 1");
  ASSERT_EQ(view.VZVs, depths);
  EXPECT_NEAR(view.vVs[1], 220, 2.0);
}

TEST(FileOptionsZVsTextfile, OneDepthALineWithCommentsSkippedAndABadLineEndsTheReading) {
  ScratchFolder scratch;
  const auto good = scratch.write("z.txt", "\xEF\xBB\xBF# Vs depths\r\n1.5\r\n\r\n  2.25  \r\n   # later\n4.0e0");
  std::vector<float> depths;
  ASSERT_TRUE(cls_FileOptions::parseZVsfromTextfile(good, depths));
  EXPECT_EQ(depths, (std::vector<float>{1.5f, 2.25f, 4.0f}));
  for (const char* bad : {"2,5", "-1", "2.5 m", "inf"}) {
    Diagnostic why;
    EXPECT_FALSE(cls_FileOptions::parseZVsfromTextfile(scratch.write("z.txt", std::string("1.0\r\n") + bad + "\r\n3.0\r\n"), depths, &why)) << bad;
    EXPECT_EQ(why.line, 2) << bad;
    EXPECT_EQ(depths, std::vector<float>{1.0f}) << bad;
  }
}

}  // namespace
}  // namespace koru
