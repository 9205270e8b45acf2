#include <gtest/gtest.h>

#include <regex>
#include <sstream>

#include "run_program.h"
#include "scratch_folder.h"

namespace koru {
namespace {

using testing::ProgramRun;
using testing::runProgram;
using testing::ScratchFolder;

const std::string kKoru = std::string(KORU_BINARY_DIR) + "/app/koru/koru";
const std::string kDemoRoot = std::string(KORU_SOURCE_DIR) + "/demo";
const std::string kDemoVertical = kDemoRoot + "/SITES/SITE_1/VERT_1";
const std::string kDemoDmt = kDemoVertical + "/DMT_1.dat";

std::vector<std::string> split(const std::string& text, char at) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string part; std::getline(in, part, at);) out.push_back(part);
  return out;
}

ProgramRun demo(std::vector<std::string> args) {
  args.insert(args.begin(), {"--root", kDemoRoot});
  return runProgram(kKoru, args);
}

// Three regular rows of a small test in clay (so that OCR is evaluated), in the program's own form.
const char* kSmallTest =
    "0.2,0.6,2,0.15,0.4,34.7,0,3,0,1.73293,0.2\r\n\"Firm\",\"Customer\"\r\n\"Job\",\"Site\",\"Remark\"\r\n"
    "\"1 MAY 2026\",\"T1\"\r\n300,420\r\n310,440\r\n320,450\r\n";

TEST(KoruCli, EvalNamesItsColumnsAndTheirUnits) {
  ScratchFolder dir;
  const std::string file = dir.write("DMT_1.dat", kSmallTest).string();
  auto out = split(runProgram(kKoru, {"dmt", "eval", file}).out, '\n');
  ASSERT_EQ(out.size(), 4u);
  EXPECT_EQ(out[0],
            "Z,A,B,C,CODREAD,Po,P1,P2,Gamma,SigmaEff,SigmaV,Sigmah,Uo,Ud,Id,LogId,Ed,Kd,Ko,OCR,M,Cu,Phi,SoilType,"
            "IdReal,EdReal,UdReal,description");
  EXPECT_EQ(out[1].substr(0, 24), "0.200000003,300,420,0,10");
  EXPECT_EQ(out[3].substr(0, 21), "0.600000024,320,450,0");
  auto withUnits = split(runProgram(kKoru, {"dmt", "eval", file, "--units"}).out, '\n');
  ASSERT_EQ(withUnits.size(), 5u);
  EXPECT_EQ(withUnits[1], "m,kPa,kPa,kPa,,kPa,kPa,kPa,kN/m3,kPa,kPa,kPa,kPa,,,,MPa,,,,MPa,kPa,degrees,,,MPa,,");
  EXPECT_EQ(withUnits[0] + withUnits[2], out[0] + out[1]);
}

// A readable name and the field's own name set the same option, and each changes the results.
TEST(KoruCli, SetTakesReadableAndFieldNames) {
  const std::string plain = runProgram(kKoru, {"dmt", "eval", kDemoDmt}).out;
  struct Case { const char *readable, *field, *value; };
  for (const Case& c : {Case{"factorOCR", "sngFactorOCR", "2"}, Case{"K0Method", "intK0Method", "1"},
                        Case{"cuMethod", "intCuMethod", "2"}, Case{"phiIdMin", "sngPhiIdMin", "2.5"}}) {
    auto byReadable = runProgram(kKoru, {"dmt", "eval", kDemoDmt, "--set", std::string(c.readable) + "=" + c.value});
    auto byField = runProgram(kKoru, {"dmt", "eval", kDemoDmt, "--set", std::string(c.field) + "=" + c.value});
    ASSERT_EQ(byReadable.exitCode, 0) << byReadable.err;
    EXPECT_EQ(byReadable.out, byField.out) << c.readable;
    EXPECT_TRUE(byReadable.out != plain) << c.readable;
  }
}

TEST(KoruCli, ThrustOptionsApplyOnlyWhereTheTestHasThrust) {
  auto noThrust = runProgram(kKoru, {"dmt", "eval", kDemoDmt, "--set", "phiMethod=1"});
  EXPECT_EQ(noThrust.exitCode, 2);
  EXPECT_TRUE(noThrust.out.empty());
  EXPECT_NE(noThrust.err.find("intPhiMethod=1 (Phi from thrust) needs thrust data"), std::string::npos);

  auto vertical = [](std::vector<std::string> set) {
    set.insert(set.begin(), {"--root", kDemoRoot, "vertical", "eval", "SITE_1", "VERT_3"});
    return runProgram(kKoru, set);
  };
  const std::string byThrust = vertical({}).out;
  auto byKd = vertical({"--set", "intPhiMethod=0"});
  ASSERT_EQ(byKd.exitCode, 0) << byKd.err;
  EXPECT_TRUE(byKd.out != byThrust);
  EXPECT_TRUE(vertical({"--set", "intPhiMethod=1"}).out == byThrust) << "what the thrust data sets anyway";
  EXPECT_TRUE(vertical({"--set", "phiIdMin=2.5"}).out != byThrust);
  EXPECT_EQ(vertical({"--set", "phiMethod=0", "--set", "OCRThrust=1"}).exitCode, 2);
}

TEST(KoruCli, FileProblemsAreNamedAndPartialReadsNeverLookComplete) {
  ScratchFolder dir;
  auto missing = runProgram(kKoru, {"dmt", "eval", (dir / "none.dat").string()});
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_EQ(missing.err, (dir / "none.dat").string() + ": file not found\n");
  EXPECT_TRUE(missing.out.empty());

  auto file = dir.write("DMT_1.dat", std::string(kSmallTest) + "150,x9\r\n160,420\r\n");
  auto run = runProgram(kKoru, {"dmt", "eval", file.string()});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(run.out.empty());
  EXPECT_EQ(run.err.rfind(file.string() + ":8: ", 0), 0u) << run.err;
  auto partial = runProgram(kKoru, {"dmt", "eval", file.string(), "--allow-partial"});
  EXPECT_EQ(partial.exitCode, 1);
  EXPECT_EQ(split(partial.out, '\n').size(), 4u);
  EXPECT_NE(partial.err.find("only the first 3 rows"), std::string::npos);
}

TEST(KoruCli, SaveWritesTheNormalisedFile) {
  ScratchFolder dir;
  // LF line ends and a trailing blank line come back in the program's own form.
  std::string lf = kSmallTest;
  for (size_t p; (p = lf.find("\r\n")) != std::string::npos;) lf.erase(p, 1);
  auto in = dir.write("in.dat", lf + "\n\n");
  auto run = runProgram(kKoru, {"dmt", "save", in.string(), (dir / "out.dat").string()});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(ScratchFolder::read(dir / "out.dat"), kSmallTest);
}

// Thrust rows that end at a depth no row matches end the thrust reading: a warning, not a
// refusal. An output that is an input, or that holds another test, is not written over.
TEST(KoruCli, ThrustEndingEarlyWarnsAndNoOutputReplacesAnInputOrAnotherTest) {
  ScratchFolder dir;
  const auto dat = dir.write("DMT_1.dat", kSmallTest);
  dir.write("Thrust.dat", "THRUST UNITS = kg\r\n\r\nZ = 0.20, TH = 400\r\nZ = 0.30, TH = 420\r\n");
  auto eval = runProgram(kKoru, {"dmt", "eval", dat.string()});
  EXPECT_EQ(eval.exitCode, 0);
  EXPECT_EQ(split(eval.out, '\n').size(), 4u);
  EXPECT_EQ(eval.err.rfind("koru: warning: " + (dir / "Thrust.dat").string() + ":4: ", 0), 0u) << eval.err;
  EXPECT_EQ(runProgram(kKoru, {"dmt", "uni", dat.string(), (dir / "T.uni").string()}).exitCode, 0);

  const auto foreign = dir.write("other/Thrust.dat", "THRUST UNITS = kg\r\n\r\n");
  struct Case { std::vector<std::string> args; int exitCode; };
  const Case cases[] = {{{"uni", dat.string(), (dir / "." / "DMT_1.dat").string()}, 2},
                        {{"uni", dat.string(), (dir / "Thrust.dat").string()}, 2},
                        {{"save", dat.string(), (dir / "other/../DMT_1.dat").string(), "--force"}, 2},
                        {{"save", dat.string(), (dir / "other/DMT_2.dat").string()}, 1}};
  for (const Case& c : cases) {
    std::vector<std::string> args = c.args;
    args.insert(args.begin(), "dmt");
    EXPECT_EQ(runProgram(kKoru, args).exitCode, c.exitCode) << c.args[2];
  }
  EXPECT_EQ(ScratchFolder::read(dat), kSmallTest);
  EXPECT_EQ(ScratchFolder::read(foreign), "THRUST UNITS = kg\r\n\r\n");
  EXPECT_EQ(runProgram(kKoru, {"dmt", "save", dat.string(), (dir / "other/DMT_2.dat").string(), "--force"}).exitCode, 0);
  EXPECT_NE(ScratchFolder::read(foreign).find("Z = 0.20, TH = 400"), std::string::npos);

  // A test without thrust would be read with the thrust rows left in the folder.
  const auto plain = dir.write("plain/DMT_3.dat", kSmallTest);
  EXPECT_EQ(runProgram(kKoru, {"dmt", "save", plain.string(), (dir / "other/DMT_2.dat").string()}).exitCode, 1);
  EXPECT_TRUE(std::filesystem::exists(foreign));
  EXPECT_EQ(runProgram(kKoru, {"dmt", "save", plain.string(), (dir / "other/DMT_2.dat").string(), "--force"}).exitCode, 0);
  EXPECT_FALSE(std::filesystem::exists(foreign));
}

// Usage errors exit with 2 and name what is wrong; a usage error tells the line that help gives.
TEST(KoruCli, UsageErrorsHelpAndVersion) {
  struct Case { std::vector<std::string> args; int exitCode; const char* told; };  // told on stderr
  const Case cases[] = {{{}, 2, "usage: koru"},
               {{"dmt"}, 2, "dmt needs a subcommand"},
               {{"nonsense"}, 2, "unknown command 'nonsense'"},
               {{"dmt", "eval", kDemoDmt, "--set", "sngNoSuch=1"}, 2, "unknown option 'sngNoSuch'"},
               {{"dmt", "eval", kDemoDmt, "--set", "factorOCR=abc"}, 2, "factorOCR: 'abc' is not a number"},
               {{"dmt", "eval", kDemoDmt, "--set", "K0Method=9"}, 2, "K0Method: '9' is not a line"},
               {{"help", "nonsense"}, 2, "no command 'nonsense'"},
               {{"--lang", "Klingon", "site", "list"}, 2, "no language 'Klingon'; the languages are: English French Italiano"},
               {{"--help"}, 0, ""}};
  for (const auto& c : cases) {
    auto run = runProgram(kKoru, c.args);
    EXPECT_EQ(run.exitCode, c.exitCode) << c.told;
    EXPECT_NE(run.err.find(c.told), std::string::npos) << run.err;
  }

  const std::string helpLine = split(runProgram(kKoru, {"help", "dmt", "eval"}).out, '\n').at(0);
  EXPECT_EQ(helpLine.substr(0, 24), "  koru dmt eval FILE.dat");
  EXPECT_EQ(runProgram(kKoru, {"dmt", "eval"}).err, "koru: usage: " + helpLine.substr(2) + "\n");
  EXPECT_NE(runProgram(kKoru, {"help", "vertical", "stats"}).out.find("phiIdMin (sngPhiIdMin)"), std::string::npos);
  const std::string all = runProgram(kKoru, {"help"}).out;
  EXPECT_EQ(all, runProgram(kKoru, {"--help"}).out);
  EXPECT_NE(all.find("koru dissipation report FILE.dis"), std::string::npos);

  const std::string version = runProgram(kKoru, {"--version"}).out;
  EXPECT_TRUE(std::regex_match(version, std::regex("koru [0-9]+\\.[0-9]+\\.[0-9]+\n"))) << version;
}

// The program beside a Language folder that lacks English: no language can have all its texts.
TEST(KoruCli, AMissingEnglishLanguageFileIsAnError) {
  ScratchFolder dir;
  std::filesystem::copy_file(kKoru, dir / "koru");
  dir.write("Language/French.h", "1 \"Un\"\r\n");
  for (const char* language : {"English", "French"}) {
    auto run = runProgram((dir / "koru").string(), {"--lang", language, "--root", dir.path().string(), "site", "list"});
    EXPECT_EQ(run.exitCode, 1) << language;
    EXPECT_EQ(run.err.find((dir / "Language" / "English.h").string() + ": cannot be read"), 0u) << run.err;
  }
}

struct KoruSiteCli : ::testing::Test {
  ScratchFolder root;
  ProgramRun koru(std::vector<std::string> args) {
    args.insert(args.begin(), {"--root", root.path().string()});
    return runProgram(kKoru, args);
  }
  std::filesystem::path site(const std::string& rel) const { return root / ("SITES/" + rel); }
  std::string siteFile() const { return ScratchFolder::read(site("SITE_1/SITE_1.dat")); }
};

TEST_F(KoruSiteCli, ASiteMadeByTheCommandLineHasTheProgramsLayout) {
  ASSERT_EQ(koru({"site", "create", "Quay wall"}).out, "SITE_1\n");
  EXPECT_EQ(koru({"vertical", "create", "SITE_1", "SDMT 1"}).out, "VERT_1\n");
  EXPECT_EQ(koru({"vertical", "create", "SITE_1"}).out, "VERT_2\n");
  EXPECT_EQ(siteFile(), "Quay wall\r\nVERT_1\r\nVERT_2\r\n");
  const std::string vertical = ScratchFolder::read(site("SITE_1/VERT_1/VERT_1.dat"));
  EXPECT_EQ(vertical.substr(0, 8), "SDMT 1\r\n");
  EXPECT_NE(vertical.find("\r\n0\r\n3\r\n1\r\n0\r\n0\r\n0\r\n"), std::string::npos) << vertical;
  EXPECT_EQ(koru({"site", "list"}).out, "folder,name,verticals\nSITE_1,Quay wall,2\n");
}

// The site's files are Windows-1252: a name they cannot hold is refused before anything is made.
TEST_F(KoruSiteCli, NamesTheFilesCannotHoldAreRefusedNotStoredWithQuestionMarks) {
  auto polish = koru({"site", "create", "\u0141\u00f3d\u017a"});
  EXPECT_EQ(polish.exitCode, 2);
  EXPECT_NE(polish.err.find("\"\u0141\" is not a character"), std::string::npos) << polish.err;
  EXPECT_FALSE(std::filesystem::exists(site("SITE_1")));

  ASSERT_EQ(koru({"site", "create", "Quai \u00e0 B\u00e2le \u2013 \u20ac"}).exitCode, 0);
  EXPECT_EQ(siteFile(), "Quai \xe0 B\xe2le \x96 \x80\r\n");
  auto vertical = koru({"vertical", "create", "SITE_1", "SDMT \u2460"});
  EXPECT_EQ(vertical.exitCode, 2);
  EXPECT_NE(vertical.err.find("\"\u2460\""), std::string::npos) << vertical.err;
  EXPECT_FALSE(std::filesystem::exists(site("SITE_1/VERT_1")));
}

TEST_F(KoruSiteCli, ReorderAndRemoveChangeOnlyTheSiteFileAndTheVerticalsFolder) {
  koru({"site", "create", "S"});
  for (const char* name : {"first", "second", "third"}) koru({"vertical", "create", "SITE_1", name});
  ASSERT_EQ(koru({"vertical", "reorder", "SITE_1", "3", "1", "2"}).exitCode, 0);
  EXPECT_EQ(siteFile(), "S\r\nVERT_3\r\nVERT_1\r\nVERT_2\r\n");
  EXPECT_EQ(koru({"vertical", "reorder", "SITE_1", "1", "2", "3", "4"}).exitCode, 2);
  EXPECT_EQ(siteFile(), "S\r\nVERT_3\r\nVERT_1\r\nVERT_2\r\n");

  ASSERT_EQ(koru({"vertical", "remove", "SITE_1", "VERT_1"}).exitCode, 0);
  EXPECT_FALSE(std::filesystem::exists(site("SITE_1/VERT_1")));
  EXPECT_TRUE(std::filesystem::is_directory(site("SITE_1/VERT_3")));
  EXPECT_EQ(koru({"vertical", "create", "SITE_1"}).out, "VERT_1\n") << "the freed number is taken again";
  EXPECT_EQ(siteFile(), "S\r\nVERT_3\r\nVERT_2\r\nVERT_1\r\n");
}

// What a killed change leaves is told on every opening until the repair mends it: a half-built
// vertical goes, a whole one the site file does not name is listed again.
TEST_F(KoruSiteCli, RepairMendsWhatAKilledChangeLeft) {
  koru({"site", "create", "S"});
  koru({"vertical", "create", "SITE_1"});
  koru({"vertical", "create", "SITE_1"});
  root.write("SITES/SITE_1/SITE_1.dat", "S\r\nVERT_1\r\n");
  root.write("SITES/SITE_1/.VERT_3.new~/VERT_3/VERT_3.dat", "half\r\n");
  auto before = koru({"vertical", "list", "SITE_1"});
  EXPECT_EQ(before.exitCode, 1);
  EXPECT_NE(before.err.find("VERT_2"), std::string::npos) << before.err;
  ASSERT_EQ(koru({"site", "repair", "SITE_1"}).exitCode, 0);
  EXPECT_FALSE(std::filesystem::exists(site("SITE_1/.VERT_3.new~")));
  EXPECT_EQ(siteFile(), "S\r\nVERT_1\r\nVERT_2\r\n");
  EXPECT_EQ(koru({"vertical", "list", "SITE_1"}).exitCode, 0);
}

TEST_F(KoruSiteCli, VerticalEvalAppliesTheVerticalsUnitWeightProfile) {
  koru({"site", "create", "S"});
  koru({"vertical", "create", "SITE_1"});
  root.write("SITES/SITE_1/VERT_1/DMT_1.dat", kSmallTest);
  auto byChart = koru({"vertical", "eval", "SITE_1", "VERT_1"});
  ASSERT_EQ(byChart.exitCode, 0) << byChart.err;
  EXPECT_EQ(byChart.out, runProgram(kKoru, {"dmt", "eval", site("SITE_1/VERT_1/DMT_1.dat").string()}).out);

  root.write("SITES/SITE_1/VERT_1/GAMMA_1.dat", "2\r\n0.0:20.0\r\n10.0:20.0\r\n");
  auto byProfile = koru({"vertical", "eval", "SITE_1", "VERT_1"});
  ASSERT_EQ(byProfile.exitCode, 0) << byProfile.err;
  EXPECT_EQ(split(split(byProfile.out, '\n').at(1), ',').at(8), "20") << "the Gamma column";
}

// A profile read only in part is named, and fails every command that read it.
TEST_F(KoruSiteCli, AFileReadInPartIsNamedAndFailsTheCommand) {
  koru({"site", "create", "S"});
  koru({"vertical", "create", "SITE_1"});
  root.write("SITES/SITE_1/VERT_1/DMT_1.dat", kSmallTest);
  const auto gamma = root.write("SITES/SITE_1/VERT_1/GAMMA_1.dat", "2\r\n0.0:20.0\r\n5:x\r\n");
  ScratchFolder out;
  for (std::vector<std::string> args : {std::vector<std::string>{"vertical", "eval", "SITE_1", "VERT_1"},
                                        {"vertical", "list", "SITE_1"},
                                        {"site", "uni", "SITE_1", "--out", out.path().string()}}) {
    auto run = koru(args);
    EXPECT_EQ(run.exitCode, 1) << args[1];
    EXPECT_NE(run.err.find(gamma.string()), std::string::npos) << args[1] << run.err;
  }
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

TEST(KoruDemo, TheVsTestListsItsDepthsWithTheirMarks) {
  auto run = demo({"vertical", "seismic", "SITE_1", "VERT_1", "--wave", "S"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  auto rows = split(run.out, '\n');
  EXPECT_EQ(rows.at(0), "Z,vMean,devStd,bestFile,good,bad,noise");
  EXPECT_EQ(rows.size(), 13u) << "twelve depths";
  EXPECT_NE(run.out.find("\n8,"), std::string::npos);
  EXPECT_NE(run.out.find(",\"10,11\",12,\n"), std::string::npos) << "a clipped strike is marked bad";
  auto noVp = demo({"vertical", "seismic", "SITE_1", "VERT_1", "--wave", "P"});
  EXPECT_EQ(noVp.exitCode, 1);
  EXPECT_EQ(noVp.err, "koru: SITE_1/VERT_1 has no Vp test\n");
}

TEST(KoruDemo, SingleFilesOfTheDemoVertical) {
  auto strike = runProgram(kKoru, {"seismogram", "eval", kDemoVertical + "/VS_1/13.kor", "--elab", "5,180;0,0,699;0,0"});
  ASSERT_EQ(strike.exitCode, 0) << strike.err;
  auto rows = split(strike.out, '\n');
  EXPECT_EQ(rows.at(0), "Z,WaveType,DeltaS,DeltaT,V,iEP1,iEP2,elab");
  auto cells = split(rows.at(1), ',');
  EXPECT_EQ(cells.at(0) + cells.at(1), "10Vs");
  // The demo model puts 188 m/s at 10 m; the whole-trace window recovers it closely.
  EXPECT_NEAR(std::stoi(cells.at(4)), 188, 4);

  auto show = runProgram(kKoru, {"seismogram", "show", kDemoVertical + "/VS_1/1.kor"});
  EXPECT_NE(show.out.find("Wave: Vs\nZ: 2.00 m\n"), std::string::npos) << show.out;
  EXPECT_NE(show.out.find("Samples: 700 at 100 us"), std::string::npos);

  auto dissipation = runProgram(kKoru, {"dissipation", "eval", kDemoVertical + "/DISSIP_1/0600.dis"});
  ASSERT_EQ(dissipation.exitCode, 0) << dissipation.err;
  EXPECT_EQ(split(dissipation.out, '\n').at(0), "Zd,N,FlexT,FlexA,isGoodFlex,Ch,ChMinutes,Kh,Po");
  EXPECT_NE(dissipation.out.find(",1,\""), std::string::npos) << "a good flex, then Ch in quotes";
  EXPECT_NE(dissipation.out.find(" * 10 ^ - "), std::string::npos);
}

TEST(KoruDemo, SiteUniWritesOneExchangeFilePerDmtTest) {
  ScratchFolder out;
  auto run = demo({"site", "uni", "SITE_1", "--out", out.path().string()});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  for (const char* name : {"SDMT 1.uni", "SDMT 2.uni", "SDMT 3.uni"})
    EXPECT_EQ(ScratchFolder::read(out / name).substr(0, 18), "DMTUNI92\r\n\"DBSM\"\r\n") << name;
  // The single-test command writes the same bytes for a test without a profile of its own.
  auto single = runProgram(kKoru, {"dmt", "uni", kDemoVertical + "/DMT_1.dat", (out / "one.uni").string()});
  ASSERT_EQ(single.exitCode, 0) << single.err;
  EXPECT_EQ(ScratchFolder::read(out / "one.uni"), ScratchFolder::read(out / "SDMT 1.uni"));
}

TEST(KoruDemo, VerticalStatsGivesEveryScaleCode) {
  auto run = demo({"vertical", "stats", "SITE_1", "VERT_1", "--units"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  auto rows = split(run.out, '\n');
  EXPECT_EQ(rows.at(0), "code,unit,mean,min,max,count,countNonZero,countAboveMean,meanExcessAboveMean,bestMax");
  ASSERT_EQ(rows.size(), 18u);
  EXPECT_EQ(rows[16].substr(0, 18), "VS,m/s,225,96,352,") << "twelve depths of the demo Vs test";
  EXPECT_EQ(rows[17], "VP,m/s,0,0,0,0,0,0,0,0") << "no Vp test: nothing counted";
  EXPECT_EQ(split(demo({"vertical", "stats", "SITE_1", "VERT_1"}).out, '\n').at(0),
            "code,mean,min,max,count,countNonZero,countAboveMean,meanExcessAboveMean,bestMax");
}

// The statistics count the Phi values that vertical eval gives with the same options.
TEST(KoruDemo, VerticalStatsEvaluateAsVerticalEvalDoes) {
  for (const char* vertical : {"VERT_1", "VERT_3"}) {
    for (std::vector<std::string> set : {std::vector<std::string>{}, {"--set", "phiIdMin=2.5"},
                                         {"--set", "sngPhiIdMin=2.5", "--set", "intPhiMethod=0"}}) {
      std::vector<std::string> args = {"vertical", "eval", "SITE_1", vertical};
      args.insert(args.end(), set.begin(), set.end());
      int phis = 0;
      for (const auto& row : split(demo(args).out, '\n')) phis += row[0] != 'Z' && split(row, ',').at(22) != "0";
      args[1] = "stats";
      std::string phiLine;
      for (const auto& row : split(demo(args).out, '\n'))
        if (row.rfind("PHI,", 0) == 0) phiLine = row;
      EXPECT_EQ(split(phiLine, ',').at(5), std::to_string(phis)) << vertical << " " << set.size();
    }
  }
  EXPECT_EQ(demo({"vertical", "stats", "SITE_1", "VERT_2", "--set", "phiMethod=1"}).exitCode, 2);
}

}  // namespace
}  // namespace koru
