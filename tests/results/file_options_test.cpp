// The results view of a vertical: which vector and which depths a parameter code gives, the
// depth extremes, and the view filled from a DMT test and seismic tests, in memory and from a
// vertical's folder with synthetic strikes.

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "results/cls_FileOptions.h"
#include "scratch_folder.h"
#include "seismic/cls_SEISMOGRAM.h"
#include "seismic/cls_VTEST.h"
#include "sites/cls_VERTICAL.h"
#include "synthetic_strike.h"

namespace koru {
namespace {

using testing::ScratchFolder;
using Curves = std::vector<std::vector<float>>;

// A sounding from 1.0 to 4.0 m every 0.2 m, stiffening with depth, with a C reading on top.
cls_DmtTEST sounding() {
  cls_DmtTEST t;
  const int n = 16;
  t.setN(n);
  for (int i = 0; i < n; ++i) {
    const size_t r = static_cast<size_t>(i);
    t.vZ[r] = std::round((1.0f + 0.2f * static_cast<float>(i)) * 100.0f) / 100.0f;
    t.vA[r] = static_cast<int16_t>(180 + 15 * i);
    t.vB[r] = static_cast<int16_t>(420 + 45 * i);
    t.vC[r] = static_cast<int16_t>(i == 0 ? 120 : 0);
  }
  t.sngZw = 2.0f;
  return t;
}

// A seismic test in memory: one depth a group of good strikes with their velocities.
cls_VTEST seismicTest(const std::vector<std::pair<float, std::vector<int16_t>>>& depths, const char* wave = "Vs") {
  cls_VTEST test;
  test.setStrWave(wave);
  int name = 1;
  for (const auto& [z, velocities] : depths) {
    const int at = test.strikes.add(cls_zSTRIKES(z));
    for (const int16_t v : velocities) test.strikes.item(at)->addGood(std::to_string(name++), v, "5,180;4;0,0");
  }
  return test;
}

// Unit weight 19.62 kN/m3 everywhere: a density of exactly 2 t/m3.
float twoTonnesPerCubicMetre(float) { return 19.62f; }

// ---- Plot vectors by code -------------------------------------------------------------------

class FileOptionsCodes : public ::testing::Test {
 protected:
  void SetUp() override {
    // Every vector holds one value of its own, so a wrong pick shows.
    float next = 1;
    for (std::vector<float>* v : {&d().vecPo, &d().vecP1, &d().vecP2, &d().vecGamma, &d().vecSigmaEff, &d().vecSigmaV,
                                  &d().vecSigmah, &d().vecUo, &d().vecUd, &d().vecId, &d().vecLogId, &d().vecEd,
                                  &d().vecKd, &d().vecKo, &d().vecOCR, &d().vecM, &d().vecCu, &d().vecPhi})
      *v = {next++};
    for (std::vector<float>* v : {&view.vVs, &view.Vs1, &view.Vs2, &view.Vp, &view.vP1, &view.vP2, &view.vG0})
      *v = {next++};
    view.dmt.setN(1);
    view.dmt.vZ = {1.5f};
    view.VZVs = {2.25f};
    view.VZVp = {3.5f};
  }
  cls_DmtTEST& d() { return view.dmt; }
  cls_FileOptions view;
};

TEST_F(FileOptionsCodes, EachOneCurveCodeGivesItsVectorInAnyCase) {
  const std::vector<std::pair<const char*, const std::vector<float>*>> table = {
      {"ID", &d().vecLogId}, {"M", &d().vecM},       {"CU", &d().vecCu},          {"PHI", &d().vecPhi},
      {"KD", &d().vecKd},    {"K0", &d().vecKo},     {"ED", &d().vecEd},          {"OCR", &d().vecOCR},
      {"P2", &d().vecP2},    {"UD", &d().vecUd},     {"SIGMAH", &d().vecSigmah},  {"SIGMAV", &d().vecSigmaV},
      {"VS", &view.vVs},     {"VS1", &view.Vs1},     {"VS2", &view.Vs2},          {"VP", &view.Vp},
      {"VP1", &view.vP1},    {"VP2", &view.vP2},     {"G0", &view.vG0},           {"ed", &d().vecEd},
      {"Vs1", &view.Vs1}};
  for (const auto& [code, vec] : table) EXPECT_EQ(view.getPlotVector(code), Curves{*vec}) << code;
}

TEST_F(FileOptionsCodes, PressureCodesGiveSeveralCurvesInTheirOrder) {
  EXPECT_EQ(view.getPlotVector("P0P1"), (Curves{d().vecPo, d().vecP1}));
  EXPECT_EQ(view.getPlotVector("P2U0"), (Curves{d().vecP2, d().vecUo}));
  EXPECT_EQ(view.getPlotVector("U0P2P0P1"), (Curves{d().vecUo, d().vecPo, d().vecP1, d().vecP2}));
}

TEST_F(FileOptionsCodes, ACodeOutsideTheTableGivesNothing) {
  for (const char* code : {"", "GAMMA", "SIGMAEFF", "U0", "P0", "P1", "VS3", "RHO", "ID ", "G0ED"})
    EXPECT_TRUE(view.getPlotVector(code).empty()) << code;
}

TEST_F(FileOptionsCodes, SeismicCodesGoWithTheirOwnDepthsAndAnyOtherWithTheDmtDepths) {
  for (const char* code : {"VS", "VS1", "VS2", "G0"}) EXPECT_EQ(view.ZVector(code), view.VZVs) << code;
  for (const char* code : {"VP", "VP1", "VP2", "vp2"}) EXPECT_EQ(view.ZVector(code), view.VZVp) << code;
  for (const char* code : {"ID", "M", "P0P1", "U0P2P0P1", "SIGMAV", "", "UNKNOWN"})
    EXPECT_EQ(view.ZVector(code), view.dmt.vZ) << code;
}

// ---- Depth extremes -------------------------------------------------------------------------

TEST(FileOptionsDepthExtremes, TopAndBottomSpanTheDmtAndBothSeismicTests) {
  cls_FileOptions view;
  view.sngZabs = 120.0f;
  EXPECT_FLOAT_EQ(view.ZTopDepth(), 0.0f);  // no depths: top and bottom at zero
  EXPECT_FLOAT_EQ(view.ZBottomDepth(), 0.0f);
  EXPECT_FLOAT_EQ(view.ZTopAbs(), 120.0f);
  view.dmt.setN(2);
  view.dmt.vZ = {1.2f, 8.0f};
  view.VZVs = {0.5f, 6.0f};
  view.VZVp = {2.0f, 9.5f};
  EXPECT_FLOAT_EQ(view.ZTopDepth(), 0.5f);
  EXPECT_FLOAT_EQ(view.ZBottomDepth(), 9.5f);
  EXPECT_FLOAT_EQ(view.ZTopAbs(), 119.5f);
  EXPECT_FLOAT_EQ(view.ZBottomAbs(), 110.5f);
}

TEST(FileOptionsDepthExtremes, EachReadingSpansOnlyTheDepthsWhereItHasAValue) {
  cls_FileOptions view;
  view.VZVs = {1, 2, 3, 4};
  view.Vs1 = {0, 200, 210, 0};
  view.Vs2 = {190, 0, 0, 230};
  view.VZVp = {2, 4, 6};
  view.vP1 = {1500, 1550, 1600};
  view.vP2 = {0, 0, 0};
  EXPECT_EQ((std::vector<float>{view.minVecZVs1(), view.maxVecZVs1(), view.minVecZVs2(), view.maxVecZVs2()}),
            (std::vector<float>{2, 3, 1, 4}));
  EXPECT_EQ((std::vector<float>{view.minVecZVP1(), view.maxVecZVP1(), view.minVecZVP2(), view.maxVecZVP2()}),
            (std::vector<float>{2, 6, 0, 0}));
}

// ---- Filled from the tests of a vertical ----------------------------------------------------

class FileOptionsFromTests : public ::testing::Test {
 protected:
  void SetUp() override {
    dmt = sounding();
    sources.strVertName = "SDMT 1";
    sources.sngZw = 2.0f;
    sources.sngZabs = 100.0f;
    sources.dmt = &dmt;
  }
  cls_DmtTEST dmt;
  VerticalSources sources;
  DMTOptions options;
  cls_FileOptions view;
};

TEST_F(FileOptionsFromTests, DmtWithoutSeismicTestHasNoVsDepthsAndNoVs) {
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  EXPECT_TRUE(view.isDMT());
  EXPECT_FALSE(view.isVs());
  EXPECT_FALSE(view.isVp());
  EXPECT_FALSE(view.isDissip());
  EXPECT_TRUE(view.ZVector("VS").empty());
  EXPECT_TRUE(view.vG0EdVs.empty());
  EXPECT_EQ(view.ZVector("ED"), dmt.vZ);
  EXPECT_TRUE(view.blnGraphHasSense());

  // A depth whose strikes were never evaluated is shown, but is no Vs data.
  const cls_VTEST unevaluated = seismicTest({{2.0f, {0}}});
  sources.vsTest = &unevaluated;
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  EXPECT_EQ(view.VZVs.size(), 1u);
  EXPECT_FALSE(view.isVs());
}

TEST_F(FileOptionsFromTests, TheDmtTestIsEvaluatedWithTheGivenProfilesAndOptions) {
  options.blnFeeler = false;
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  cls_DmtTEST expected = dmt;
  ASSERT_TRUE(expected.evalDMT(cls_GAMMA(), cls_U(), options));
  EXPECT_EQ(view.dmt.vecEd, expected.vecEd);
  EXPECT_EQ(view.dmt.vecM, expected.vecM);
  EXPECT_TRUE(view.dmt.blnHasC);
  EXPECT_TRUE(dmt.vecEd.empty()) << "the test given is not touched";
}

TEST_F(FileOptionsFromTests, VelocitiesReadingsAndScatterComeFromTheVsTest) {
  const cls_VTEST vs = seismicTest({{2.0f, {200, 220}}, {3.0f, {250}}, {3.5f, {}}});
  sources.vsTest = &vs;
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  EXPECT_TRUE(view.isVs());
  EXPECT_EQ(view.VZVs, (std::vector<float>{2.0f, 3.0f, 3.5f}));
  EXPECT_EQ(view.vVs, (std::vector<float>{210, 250, 0}));
  EXPECT_EQ(view.Vs1, (std::vector<float>{200, 250, 0}));
  EXPECT_EQ(view.Vs2, (std::vector<float>{220, 0, 0}));
  // 200 and 220: coefficient of variation 100 x sqrt(200) / 210 %, that is sqrt(200) m/s.
  EXPECT_NEAR(view.VsRepeatability[0], 6.73f, 0.005f);
  EXPECT_NEAR(view.vDevStdVs[0], std::sqrt(200.0f), 0.02f);
  EXPECT_FLOAT_EQ(view.VsRepeatability[1], -1.0f);
  EXPECT_FLOAT_EQ(view.vDevStdVs[1], -1.0f);
}

TEST_F(FileOptionsFromTests, DensityAndG0FollowTheUnitWeightAndTheMeanVelocity) {
  const cls_VTEST vs = seismicTest({{2.0f, {200}}, {3.0f, {300}}});
  sources.vsTest = &vs;
  sources.unitWeightAt = twoTonnesPerCubicMetre;
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  EXPECT_NEAR(view.vRho[0], 2.0f, 1e-6);
  EXPECT_NEAR(view.vG0[0], 80.0f, 1e-3);  // 2 x 200^2 kPa
  EXPECT_NEAR(view.vG0[1], 180.0f, 1e-3);

  // Without a callback: the unit weight the chart gave the DMT row at 2.0 m (row 5).
  sources.unitWeightAt = nullptr;
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  const float chart = view.dmt.vecGamma[5];
  ASSERT_GT(chart, 0.0f);
  EXPECT_NEAR(view.vG0[0], chart / 9.81f * 40.0f, 1e-3);

  // A user's table is the unit weight of both the evaluation and the modulus.
  sources.gamma.setMethod(2);
  sources.gamma.setN(1);
  sources.gamma.setZi(0, 0.5f);
  sources.gamma.setYi(0, 21.0f);
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  EXPECT_FLOAT_EQ(view.dmt.vecGamma[5], 21.0f);
  EXPECT_NEAR(view.vRho[0], 21.0f / 9.81f, 1e-5);
}

TEST_F(FileOptionsFromTests, DmtValuesAndRatiosAreTakenAtTheVsDepths) {
  const cls_VTEST vs = seismicTest({{2.1f, {200}}, {4.4f, {260}}, {6.0f, {300}}});
  sources.vsTest = &vs;
  sources.unitWeightAt = twoTonnesPerCubicMetre;
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  ASSERT_EQ(view.vEdVs.size(), 3u);
  const cls_DmtTEST& d = view.dmt;
  EXPECT_FLOAT_EQ(view.vIdVs[0], d.getIdFromZ(2.1f));
  EXPECT_FLOAT_EQ(view.vEdVs[0], d.getEdFromZ(2.1f));
  EXPECT_FLOAT_EQ(view.vMVs[0], d.getMFromZ(2.1f));
  EXPECT_FLOAT_EQ(view.vKdVs[0], d.getKdFromZ(2.1f));
  ASSERT_GT(view.vEdVs[0], 0.0f);
  EXPECT_NEAR(view.vG0EdVs[0], view.vG0[0] / view.vEdVs[0], 1e-5);
  EXPECT_NEAR(view.vG0MVs[0], view.vG0[0] / view.vMVs[0], 1e-5);
  // 4.4 m lies within 0.5 m of the last row (4.0 m): its values are the last row's.
  EXPECT_FLOAT_EQ(view.vEdVs[1], d.vecEd.back());
  EXPECT_GT(view.vG0EdVs[1], 0.0f);
}

TEST_F(FileOptionsFromTests, RatiosAreZeroWhereTheDmtTestDoesNotReach) {
  const cls_VTEST vs = seismicTest({{0.4f, {150}}, {6.0f, {300}}});
  sources.vsTest = &vs;
  sources.unitWeightAt = twoTonnesPerCubicMetre;
  for (const bool withDmt : {true, false}) {
    sources.dmt = withDmt ? &dmt : nullptr;
    ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
    EXPECT_EQ(view.isDMT(), withDmt);
    for (size_t i = 0; i < 2; ++i) {
      EXPECT_GT(view.vG0[i], 0.0f) << i;
      EXPECT_FLOAT_EQ(view.vEdVs[i], 0.0f) << i;
      EXPECT_FLOAT_EQ(view.vG0EdVs[i], 0.0f) << i;
      EXPECT_FLOAT_EQ(view.vG0MVs[i], 0.0f) << i;
    }
  }
  EXPECT_TRUE(view.ZVector("ED").empty());
  EXPECT_FLOAT_EQ(view.ZTopDepth(), 0.4f);
}

TEST_F(FileOptionsFromTests, VpReadingsComeFromTheVpTest) {
  const cls_VTEST vp = seismicTest({{2.0f, {1500, 1520}}, {4.0f, {1600}}}, "Vp");
  sources.vpTest = &vp;
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  EXPECT_TRUE(view.isVp());
  EXPECT_FALSE(view.isVs());
  EXPECT_EQ(view.ZVector("VP"), (std::vector<float>{2.0f, 4.0f}));
  EXPECT_EQ(view.Vp, (std::vector<float>{1510, 1600}));
  EXPECT_EQ(view.vP1, (std::vector<float>{1500, 1600}));
  EXPECT_EQ(view.vP2, (std::vector<float>{1520, 0}));
}

TEST_F(FileOptionsFromTests, RefreshingTheEvaluationMovesTheValuesAtVsDepthsAlong) {
  const cls_VTEST vs = seismicTest({{2.0f, {200}}});
  sources.vsTest = &vs;
  sources.unitWeightAt = twoTonnesPerCubicMetre;
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  const float edBefore = view.vEdVs[0];
  const float g0 = view.vG0[0];

  DMTOptions other;
  other.blnFeeler = !options.blnFeeler;  // Po changes, and with it Ed
  ASSERT_TRUE(view.refreshDMTElab(other));
  EXPECT_NE(view.vEdVs[0], edBefore);
  EXPECT_FLOAT_EQ(view.vEdVs[0], view.dmt.getEdFromZ(2.0f));
  EXPECT_FLOAT_EQ(view.vG0[0], g0);
  EXPECT_NEAR(view.vG0EdVs[0], g0 / view.vEdVs[0], 1e-5);
}

TEST_F(FileOptionsFromTests, FillingAgainForgetsTheEarlierTests) {
  const cls_VTEST vs = seismicTest({{2.0f, {200}}});
  sources.vsTest = &vs;
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  sources.vsTest = nullptr;
  sources.dmt = nullptr;
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  EXPECT_FALSE(view.isDMT());
  EXPECT_FALSE(view.isVs());
  EXPECT_TRUE(view.VZVs.empty());
  EXPECT_TRUE(view.vG0.empty());
  EXPECT_TRUE(view.refreshDMTElab(options));
}

// ---- Report choices and sense ---------------------------------------------------------------

cls_Dissipations dissipationsWithReadings() {
  cls_Dissipations d;
  cls_DissTEST t;
  t.setZd(12.3f);
  t.setDissData({0.1f, 0.5f, 1.0f, 2.0f}, {560, 540, 500, 450});
  d.add(t);
  return d;
}

TEST_F(FileOptionsFromTests, DefaultReportTakesTheListingsOfWhatTheVerticalHas) {
  const cls_VTEST vs = seismicTest({{2.0f, {200}}});
  const cls_VTEST vp = seismicTest({{2.0f, {1500}}}, "Vp");
  sources.vsTest = &vs;
  sources.vpTest = &vp;
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  view.setDefaultReportBooleans();
  EXPECT_TRUE(view.blnTabularDMT);
  EXPECT_EQ(view.intCodTabularDMT, 1);
  EXPECT_TRUE(view.blnTabVsVert);
  EXPECT_EQ(view.intCodTabularVs, 1);
  EXPECT_TRUE(view.blnTabVpVert);
  EXPECT_TRUE(view.blnSismVsVert);
  EXPECT_FALSE(view.blnSismVpVert);

  sources.dmt = nullptr;
  sources.vpTest = nullptr;
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  view.setDefaultReportBooleans();
  EXPECT_FALSE(view.blnTabularDMT);
  EXPECT_TRUE(view.blnTabVsVert);
  EXPECT_EQ(view.intCodTabularVs, 2);
  EXPECT_FALSE(view.blnTabVpVert);
}

TEST_F(FileOptionsFromTests, DissipationsAloneMakeAReportButNoGraph) {
  const cls_Dissipations diss = dissipationsWithReadings();
  sources.dmt = nullptr;
  sources.dissipations = &diss;
  ASSERT_TRUE(view.initializeFromPalmiro(sources, options));
  EXPECT_TRUE(view.isDissip());
  EXPECT_FALSE(view.blnGraphHasSense());
  EXPECT_TRUE(view.blnReportHasSense());
  ASSERT_FALSE(view.dissipations->existTabSelected());
  view.setDefaultReportBooleans();
  EXPECT_TRUE(view.dissipations->existTabSelected());
  EXPECT_FALSE(diss.existTabSelected()) << "the vertical's own tests are not touched";
}

TEST(FileOptionsSense, AnEmptyViewHasNothingToDrawOrReport) {
  const cls_FileOptions view;
  EXPECT_FALSE(view.isDMT());
  EXPECT_FALSE(view.isDissip());
  EXPECT_FALSE(view.blnGraphHasSense());
  EXPECT_FALSE(view.blnReportHasSense());
  EXPECT_TRUE(view.ZVector("VS").empty());
  EXPECT_TRUE(view.ZVector("M").empty());
}

// ---- A vertical's folder with synthetic strikes ----------------------------------------------

// The whole trace as the window: a clean synthetic strike then gives its true velocity.
constexpr const char* kWholeTrace = "5,180;0;0,0";

class FileOptionsFromVerticalFolder : public ::testing::Test {
 protected:
  void SetUp() override {
    vertical.setFolders(scratch.path(), "VERT_1");
    vertical.strTestname = "SDMT 1";
    vertical.sngZabs = 80.0f;
    std::filesystem::create_directories(vertical.strVsFolder);

    cls_DmtTEST dmt = sounding();
    dmt.setDatPath(vertical.strDMTFile);
    ASSERT_EQ(dmt.saveFile(), -1);

    cls_VTEST vs(vertical.strVsFile, vertical.strVsFolder, "Vs");
    int name = 1;
    for (size_t d = 0; d < depths.size(); ++d) {
      for (uint32_t k = 0; k < 2; ++k) {
        synth::StrikeSettings shot;
        shot.Z = depths[d];
        shot.velocity = truth[d];
        shot.seed = 10 * static_cast<uint32_t>(d) + k + 1;
        const std::string n = std::to_string(name++);
        ASSERT_EQ(synth::makeSyntheticStrike(shot).saveFile(vs.seismogramPath(n)), 0);
        int at = vs.strikes.getIndex_byZ(depths[d]);
        if (at == 0) at = vs.strikes.add(cls_zSTRIKES(depths[d]));
        vs.strikes.item(at)->addGood(n, 0, kWholeTrace);
      }
    }
    ASSERT_EQ(vs.evaluateStrikes(), 6);
    ASSERT_TRUE(vs.saveInfo());
    vertical.blnTestVs = true;
  }
  ScratchFolder scratch;
  cls_VERTICAL vertical;
  const std::vector<float> depths = {1.5f, 2.5f, 3.5f};
  const std::vector<double> truth = {180, 220, 260};
  DMTOptions options;
};

TEST_F(FileOptionsFromVerticalFolder, DmtAndVsTestsAreReadAndJoinedAtTheVsDepthsUnderTheVerticalsName) {
  cls_FileOptions view;
  std::vector<Diagnostic> problems;
  ASSERT_TRUE(view.initializeFromPalmiro(vertical, options, &problems)) << problems.front().toString();
  EXPECT_EQ(view.strVertName, "SDMT 1");
  EXPECT_TRUE(view.isDMT());
  EXPECT_TRUE(view.isVs());
  EXPECT_FALSE(view.isVp());
  ASSERT_EQ(view.VZVs, depths);
  for (size_t d = 0; d < depths.size(); ++d) {
    EXPECT_NEAR(view.vVs[d], truth[d], 2.0) << depths[d];
    EXPECT_NEAR(view.Vs1[d], truth[d], 2.0) << depths[d];
    EXPECT_NEAR(view.Vs2[d], truth[d], 2.0) << depths[d];
    // Unit weight from the chart at the DMT rows, through the profile that follows them.
    ASSERT_GT(view.vRho[d], 0.0f);
    EXPECT_NEAR(view.vG0[d], view.vRho[d] * view.vVs[d] * view.vVs[d] / 1000.0f, 1e-3 * view.vG0[d]);
    EXPECT_FLOAT_EQ(view.vEdVs[d], view.dmt.getEdFromZ(depths[d]));
    ASSERT_GT(view.vEdVs[d], 0.0f);
    EXPECT_NEAR(view.vG0EdVs[d], view.vG0[d] / view.vEdVs[d], 1e-4);
  }
  EXPECT_FLOAT_EQ(view.ZTopDepth(), 1.0f);
  EXPECT_FLOAT_EQ(view.ZBottomDepth(), 4.0f);
  EXPECT_FLOAT_EQ(view.ZBottomAbs(), 76.0f);

  vertical.strTestname.clear();  // without a test name the vertical goes by its folder
  ASSERT_TRUE(view.initializeFromPalmiro(vertical, options));
  EXPECT_EQ(view.strVertName, "VERT_1");
}

TEST_F(FileOptionsFromVerticalFolder, NoVsFlagOrNoVsIndexShowsNoVs) {
  vertical.blnTestVs = false;
  cls_FileOptions view;
  ASSERT_TRUE(view.initializeFromPalmiro(vertical, options));
  EXPECT_TRUE(view.isDMT());
  EXPECT_FALSE(view.isVs());
  EXPECT_TRUE(view.ZVector("VS").empty());

  vertical.blnTestVs = true;
  std::filesystem::remove(vertical.strVsFile);
  ASSERT_TRUE(view.initializeFromPalmiro(vertical, options));
  EXPECT_FALSE(view.isVs());
  EXPECT_TRUE(view.VZVs.empty());
}

TEST_F(FileOptionsFromVerticalFolder, ABrokenIndexIsReportedAndItsReadDepthsShown) {
  const std::string index = ScratchFolder::read(vertical.strVsFile);
  const std::string firstLine = index.substr(0, index.find("\r\n") + 2);
  scratch.write("VERT_1/VS_1.dat", firstLine + "2.50:220\r\n");
  cls_FileOptions view;
  std::vector<Diagnostic> problems;
  EXPECT_FALSE(view.initializeFromPalmiro(vertical, options, &problems));
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].line, 2);
  EXPECT_EQ(view.VZVs, std::vector<float>{1.5f});
  EXPECT_TRUE(view.isDMT());
}

// ---- Vs depths from a text file -------------------------------------------------------------

TEST(FileOptionsZVsTextfile, OneDepthALineWithCommentsAndBlankLinesSkipped) {
  ScratchFolder scratch;
  const auto file = scratch.write("z.txt", "\xEF\xBB\xBF# Vs depths of SCPT 3\r\n1.5\r\n\r\n  2.25  \r\n   # later\n3\n4.0e0");
  std::vector<float> depths;
  Diagnostic why;
  ASSERT_TRUE(cls_FileOptions::parseZVsfromTextfile(file, depths, &why)) << why.toString();
  EXPECT_EQ(depths, (std::vector<float>{1.5f, 2.25f, 3.0f, 4.0f}));
}

TEST(FileOptionsZVsTextfile, ALineThatIsNoDepthEndsTheReadingAndIsNamed) {
  ScratchFolder scratch;
  for (const char* bad : {"2,5", "-1", "two", "2.5 m", "inf"}) {
    const auto file = scratch.write("z.txt", std::string("1.0\r\n") + bad + "\r\n3.0\r\n");
    std::vector<float> depths;
    Diagnostic why;
    EXPECT_FALSE(cls_FileOptions::parseZVsfromTextfile(file, depths, &why)) << bad;
    EXPECT_EQ(why.line, 2) << bad;
    EXPECT_EQ(depths, std::vector<float>{1.0f}) << bad;
  }
}

TEST(FileOptionsZVsTextfile, AMissingFileFailsAndAnEmptyFileIsAnEmptyList) {
  ScratchFolder scratch;
  std::vector<float> depths = {9};
  Diagnostic why;
  EXPECT_FALSE(cls_FileOptions::parseZVsfromTextfile(scratch / "none.txt", depths, &why));
  EXPECT_TRUE(depths.empty());
  EXPECT_FALSE(why.reason.empty());
  EXPECT_TRUE(cls_FileOptions::parseZVsfromTextfile(scratch.write("z.txt", ""), depths));
  EXPECT_TRUE(depths.empty());
}

}  // namespace
}  // namespace koru
