#include <gtest/gtest.h>

#include <sstream>

#include "run_program.h"
#include "scratch_folder.h"

namespace koru {
namespace {

using testing::runProgram;
using testing::ScratchFolder;

const std::string kKoru = std::string(KORU_BINARY_DIR) + "/app/koru/koru";

struct KoruSiteCli : ::testing::Test {
  ScratchFolder root;
  testing::ProgramRun koru(std::vector<std::string> args) {
    args.insert(args.begin(), {"--root", root.path().string()});
    return runProgram(kKoru, args);
  }
  std::filesystem::path site(const std::string& rel) const { return root / ("SITES/" + rel); }
};

TEST_F(KoruSiteCli, ASiteMadeByTheCommandLineHasTheProgramsLayout) {
  auto created = koru({"site", "create", "Quay wall"});
  ASSERT_EQ(created.exitCode, 0) << created.err;
  EXPECT_EQ(created.out, "SITE_1\n");
  EXPECT_EQ(koru({"vertical", "create", "SITE_1", "SDMT 1"}).out, "VERT_1\n");
  EXPECT_EQ(koru({"vertical", "create", "SITE_1"}).out, "VERT_2\n");

  EXPECT_EQ(ScratchFolder::read(site("SITE_1/SITE_1.dat")), "Quay wall\r\nVERT_1\r\nVERT_2\r\n");
  const std::string vertical = ScratchFolder::read(site("SITE_1/VERT_1/VERT_1.dat"));
  EXPECT_EQ(vertical.substr(0, 8), "SDMT 1\r\n");
  EXPECT_NE(vertical.find("\r\n0\r\n3\r\n1\r\n0\r\n0\r\n0\r\n"), std::string::npos) << vertical;

  auto listed = koru({"site", "list"});
  EXPECT_EQ(listed.out, "folder,name,verticals\nSITE_1,Quay wall,2\n");
}

TEST_F(KoruSiteCli, ReorderChangesOnlyTheSiteFile) {
  koru({"site", "create", "S"});
  koru({"vertical", "create", "SITE_1", "first"});
  koru({"vertical", "create", "SITE_1", "second"});
  koru({"vertical", "create", "SITE_1", "third"});
  ASSERT_EQ(koru({"vertical", "reorder", "SITE_1", "3", "1", "2"}).exitCode, 0);
  EXPECT_EQ(ScratchFolder::read(site("SITE_1/SITE_1.dat")), "S\r\nVERT_3\r\nVERT_1\r\nVERT_2\r\n");
  EXPECT_TRUE(std::filesystem::is_directory(site("SITE_1/VERT_3")));

  auto wrong = koru({"vertical", "reorder", "SITE_1", "1", "2", "3", "4"});
  EXPECT_EQ(wrong.exitCode, 2);
  EXPECT_EQ(ScratchFolder::read(site("SITE_1/SITE_1.dat")), "S\r\nVERT_3\r\nVERT_1\r\nVERT_2\r\n");
}

TEST_F(KoruSiteCli, RemovedVerticalNumberIsTakenByTheNextOne) {
  koru({"site", "create", "S"});
  koru({"vertical", "create", "SITE_1"});
  koru({"vertical", "create", "SITE_1"});
  ASSERT_EQ(koru({"vertical", "remove", "SITE_1", "VERT_1"}).exitCode, 0);
  EXPECT_FALSE(std::filesystem::exists(site("SITE_1/VERT_1")));
  EXPECT_EQ(koru({"vertical", "create", "SITE_1"}).out, "VERT_1\n");
  EXPECT_EQ(ScratchFolder::read(site("SITE_1/SITE_1.dat")), "S\r\nVERT_2\r\nVERT_1\r\n");
}

TEST_F(KoruSiteCli, VerticalEvalAppliesTheVerticalsUnitWeightProfile) {
  koru({"site", "create", "S"});
  koru({"vertical", "create", "SITE_1"});
  const std::string dat =
      "0.2,0.6,2,0.15,0.4,34.7,0,3,0,1.73293,0.2\r\n\"\",\"\"\r\n\"\",\"\",\"\"\r\n\"1 MAY 2026\",\"T\"\r\n"
      "300,420\r\n310,440\r\n320,450\r\n";
  root.write("SITES/SITE_1/VERT_1/DMT_1.dat", dat);
  auto byChart = koru({"vertical", "eval", "SITE_1", "VERT_1"});
  ASSERT_EQ(byChart.exitCode, 0) << byChart.err;
  auto plain = runProgram(kKoru, {"dmt", "eval", site("SITE_1/VERT_1/DMT_1.dat").string()});
  EXPECT_EQ(byChart.out, plain.out);

  root.write("SITES/SITE_1/VERT_1/GAMMA_1.dat", "2\r\n0.0:20.0\r\n10.0:20.0\r\n");
  auto byProfile = koru({"vertical", "eval", "SITE_1", "VERT_1"});
  ASSERT_EQ(byProfile.exitCode, 0) << byProfile.err;
  std::istringstream lines(byProfile.out);
  std::string header, row;
  std::getline(lines, header);
  std::getline(lines, row);
  // The ninth column is the unit weight of the row.
  std::string cell;
  std::istringstream cells(row);
  for (int i = 0; i < 9; ++i) std::getline(cells, cell, ',');
  EXPECT_EQ(cell, "20");
}

TEST_F(KoruSiteCli, UnknownSiteOrVerticalIsNamed) {
  auto noSite = koru({"vertical", "list", "SITE_9"});
  EXPECT_EQ(noSite.exitCode, 1);
  EXPECT_EQ(noSite.err, site("SITE_9").string() + ": no such site\n");
  koru({"site", "create", "S"});
  auto noVertical = koru({"vertical", "eval", "SITE_1", "VERT_4"});
  EXPECT_EQ(noVertical.exitCode, 1);
  EXPECT_EQ(noVertical.err, "koru: SITE_1 has no vertical VERT_4\n");
}

TEST(KoruDemo, TheDemoSiteEvaluatesWithoutProblems) {
  auto run = runProgram(kKoru, {"--root", std::string(KORU_SOURCE_DIR) + "/demo", "vertical", "eval", "SITE_1",
                                "VERT_2", "--table"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_TRUE(run.err.empty()) << run.err;
  EXPECT_NE(run.out.find("SAND"), std::string::npos);
}

}  // namespace
}  // namespace koru

namespace koru {
namespace {

const std::string kDemoRoot = std::string(KORU_SOURCE_DIR) + "/demo";
const std::string kDemoVertical = kDemoRoot + "/SITES/SITE_1/VERT_1";

TEST(KoruDemo, TheVsTestListsItsDepthsWithTheirMarks) {
  auto run = runProgram(kKoru, {"--root", kDemoRoot, "vertical", "seismic", "SITE_1", "VERT_1", "--wave", "S"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  std::istringstream lines(run.out);
  std::string line;
  std::getline(lines, line);
  EXPECT_EQ(line, "Z,vMean,devStd,bestFile,good,bad,noise");
  int depths = 0;
  while (std::getline(lines, line)) ++depths;
  EXPECT_EQ(depths, 12);
  EXPECT_NE(run.out.find("\n8,"), std::string::npos);
  EXPECT_NE(run.out.find(",\"10,11\",12,\n"), std::string::npos) << "a clipped strike is marked bad";

  auto noVp = runProgram(kKoru, {"--root", kDemoRoot, "vertical", "seismic", "SITE_1", "VERT_1", "--wave", "P"});
  EXPECT_EQ(noVp.exitCode, 1);
  EXPECT_EQ(noVp.err, "koru: SITE_1/VERT_1 has no Vp test\n");
}

TEST(KoruDemo, SeismogramEvalGivesTheVelocityOfTheStrike) {
  auto run = runProgram(kKoru, {"seismogram", "eval", kDemoVertical + "/VS_1/13.kor", "--elab", "5,180;0,0,699;0,0"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  std::istringstream lines(run.out);
  std::string header, row;
  std::getline(lines, header);
  std::getline(lines, row);
  EXPECT_EQ(header, "Z,WaveType,DeltaS,DeltaT,V,iEP1,iEP2,elab");
  EXPECT_EQ(row.substr(0, 6), "10,Vs,");
  // The demo model puts 188 m/s at 10 m; the whole-trace window recovers it closely.
  std::vector<std::string> cells;
  std::istringstream split(row);
  for (std::string cell; std::getline(split, cell, ',');) cells.push_back(cell);
  ASSERT_GE(cells.size(), 5u);
  EXPECT_NEAR(std::stoi(cells[4]), 188, 4);
}

TEST(KoruDemo, SeismogramShowTellsTheHeader) {
  auto run = runProgram(kKoru, {"seismogram", "show", kDemoVertical + "/VS_1/1.kor"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_NE(run.out.find("Wave: Vs\nZ: 2.00 m\n"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("Samples: 700 at 100 us"), std::string::npos);
}

TEST(KoruDemo, DissipationEvalQuotesTheProgramsTexts) {
  auto run = runProgram(kKoru, {"dissipation", "eval", kDemoVertical + "/DISSIP_1/0600.dis"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(run.out.substr(0, run.out.find('\n')), "Zd,N,FlexT,FlexA,isGoodFlex,Ch,ChMinutes,Kh,Po");
  EXPECT_NE(run.out.find(",1,\""), std::string::npos) << "a good flex, then Ch in quotes: " << run.out;
  EXPECT_NE(run.out.find(" * 10 ^ - "), std::string::npos);
}

TEST(KoruDemo, ThrustDataGivesTheFrictionAngleOfTheSands) {
  auto run = runProgram(kKoru, {"--root", kDemoRoot, "vertical", "eval", "SITE_1", "VERT_3"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  // Phi, Ko and OCR of the sands come from the thrust: the same readings without Thrust.dat
  // beside them evaluate otherwise.
  ScratchFolder dir;
  std::filesystem::copy_file(kDemoRoot + "/SITES/SITE_1/VERT_3/DMT_3.dat", dir / "DMT_3.dat");
  auto withoutThrust = runProgram(kKoru, {"dmt", "eval", (dir / "DMT_3.dat").string()});
  ASSERT_EQ(withoutThrust.exitCode, 0);
  EXPECT_NE(run.out, withoutThrust.out);
}

}  // namespace
}  // namespace koru

namespace koru {
namespace {

TEST(KoruDemo, SiteUniWritesOneExchangeFilePerDmtTest) {
  ScratchFolder out;
  auto run = runProgram(kKoru, {"--root", std::string(KORU_SOURCE_DIR) + "/demo", "site", "uni", "SITE_1", "--out",
                                out.path().string()});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  for (const char* name : {"SDMT 1.uni", "SDMT 2.uni", "SDMT 3.uni"}) {
    const std::string text = ScratchFolder::read(out / name);
    EXPECT_EQ(text.substr(0, 18), "DMTUNI92\r\n\"DBSM\"\r\n") << name;
  }
  // The single-test command writes the same bytes for a test without a profile of its own.
  auto single = runProgram(kKoru, {"dmt", "uni", std::string(KORU_SOURCE_DIR) + "/demo/SITES/SITE_1/VERT_1/DMT_1.dat",
                                   (out / "one.uni").string()});
  ASSERT_EQ(single.exitCode, 0) << single.err;
  EXPECT_EQ(ScratchFolder::read(out / "one.uni"), ScratchFolder::read(out / "SDMT 1.uni"));
}

}  // namespace
}  // namespace koru

namespace koru {
namespace {

TEST(KoruDemo, VerticalStatsGivesEveryScaleCode) {
  auto run = runProgram(kKoru, {"--root", std::string(KORU_SOURCE_DIR) + "/demo", "vertical", "stats", "SITE_1", "VERT_1"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  std::istringstream lines(run.out);
  std::string line;
  std::getline(lines, line);
  EXPECT_EQ(line, "code,media,min,max,N,nNon0,nOltreMedia,mediaOltreMedia,bestMax");
  int codes = 0;
  std::string vs, vp;
  while (std::getline(lines, line)) {
    ++codes;
    if (line.rfind("VS,", 0) == 0) vs = line;
    if (line.rfind("VP,", 0) == 0) vp = line;
  }
  EXPECT_EQ(codes, 17);
  EXPECT_EQ(vs.substr(0, 14), "VS,225,96,352,") << "twelve depths of the demo Vs test";
  EXPECT_EQ(vp, "VP,0,0,0,0,0,0,0,0") << "no Vp test: nothing counted";
}

}  // namespace
}  // namespace koru
