#include <gtest/gtest.h>

#include <sstream>

#include "run_program.h"
#include "scratch_folder.h"

namespace koru {
namespace {

using testing::ProgramRun;
using testing::runProgram;
using testing::ScratchFolder;

const std::string kKoru = std::string(KORU_BINARY_DIR) + "/app/koru/koru";

// Three regular rows of a small test in clay (so that OCR is evaluated), in the program's own form.
const char* kSmallTest =
    "0.2,0.6,2,0.15,0.4,34.7,0,3,0,1.73293,0.2\r\n"
    "\"Firm\",\"Customer\"\r\n"
    "\"Job\",\"Site\",\"Remark\"\r\n"
    "\"1 MAY 2026\",\"T1\"\r\n"
    "300,420\r\n"
    "310,440\r\n"
    "320,450\r\n";

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) out.push_back(line);
  return out;
}

TEST(KoruCli, EvalPrintsTheHeaderAndOneLinePerRow) {
  ScratchFolder dir;
  auto file = dir.write("DMT_1.dat", kSmallTest);
  ProgramRun run = runProgram(kKoru, {"dmt", "eval", file.string()});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  auto out = lines(run.out);
  ASSERT_EQ(out.size(), 4u);
  EXPECT_EQ(out[0],
            "Z,A,B,C,vecCODREAD,vecPo,vecP1,vecP2,vecGamma,vecSigmaEff,vecSigmaV,vecSigmah,vecUo,vecUd,vecId,vecLogId,"
            "vecEd,vecKd,vecKo,vecOCR,vecM,vecCu,vecPhi,vecSoilType,vecIdReal,vecEdReal,vecUdReal,description");
  EXPECT_EQ(out[1].substr(0, 24), "0.200000003,300,420,0,10");
  EXPECT_EQ(out[3].substr(0, 21), "0.600000024,320,450,0");
}

TEST(KoruCli, SetChangesAnOptionForTheRun) {
  ScratchFolder dir;
  auto file = dir.write("DMT_1.dat", kSmallTest);
  auto plain = runProgram(kKoru, {"dmt", "eval", file.string()});
  auto scaled = runProgram(kKoru, {"dmt", "eval", file.string(), "--set", "sngFactorOCR=2"});
  ASSERT_EQ(scaled.exitCode, 0) << scaled.err;
  EXPECT_NE(plain.out, scaled.out);
}

TEST(KoruCli, UnknownOptionNameIsAUsageError) {
  ScratchFolder dir;
  auto file = dir.write("DMT_1.dat", kSmallTest);
  auto run = runProgram(kKoru, {"dmt", "eval", file.string(), "--set", "sngNoSuch=1"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_NE(run.err.find("sngNoSuch"), std::string::npos);
  EXPECT_TRUE(run.out.empty());
}

TEST(KoruCli, MissingFileGivesOneLineNamingIt) {
  ScratchFolder dir;
  auto run = runProgram(kKoru, {"dmt", "eval", (dir / "none.dat").string()});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.err, (dir / "none.dat").string() + ": file not found\n");
  EXPECT_TRUE(run.out.empty());
}

TEST(KoruCli, PartialReadIsNeverPresentedAsComplete) {
  ScratchFolder dir;
  std::string broken = std::string(kSmallTest) + "150,x9\r\n160,420\r\n";
  auto file = dir.write("DMT_1.dat", broken);
  auto run = runProgram(kKoru, {"dmt", "eval", file.string()});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(run.out.empty());
  EXPECT_EQ(run.err.rfind(file.string() + ":8: ", 0), 0u) << run.err;

  auto partial = runProgram(kKoru, {"dmt", "eval", file.string(), "--allow-partial"});
  EXPECT_EQ(partial.exitCode, 1);
  EXPECT_EQ(lines(partial.out).size(), 4u);
  EXPECT_NE(partial.err.find("only the first 3 rows"), std::string::npos);
}

TEST(KoruCli, SaveWritesTheNormalisedFile) {
  ScratchFolder dir;
  // LF line ends and a trailing blank line come back in the program's own form.
  std::string lf = kSmallTest;
  for (size_t p; (p = lf.find("\r\n")) != std::string::npos;) lf.erase(p, 1);
  auto in = dir.write("in.dat", lf + "\n\n");
  auto out = dir / "out.dat";
  auto run = runProgram(kKoru, {"dmt", "save", in.string(), out.string()});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(ScratchFolder::read(out), kSmallTest);
}

TEST(KoruCli, UsageErrorsExitWithTwo) {
  EXPECT_EQ(runProgram(kKoru, {}).exitCode, 2);
  EXPECT_EQ(runProgram(kKoru, {"dmt"}).exitCode, 2);
  EXPECT_EQ(runProgram(kKoru, {"dmt", "eval"}).exitCode, 2);
  EXPECT_EQ(runProgram(kKoru, {"nonsense"}).exitCode, 2);
  EXPECT_EQ(runProgram(kKoru, {"--help"}).exitCode, 0);
}

}  // namespace
}  // namespace koru
