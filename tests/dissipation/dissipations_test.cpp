#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "dissipation/cls_Dissipations.h"
#include "scratch_folder.h"
#include "synthetic_dissipation.h"

namespace koru {
namespace {

namespace fs = std::filesystem;
using testing::ScratchFolder;

const std::string kGood =
    "DISSIP2002\r\nTESTNAME = \"A\"\r\nZD = 2\r\n"
    "T =  0.25, A =   560\r\nT =  0.70, A =   552\r\nT =  1.50, A =   530\r\nT =  3.00, A =   480\r\n"
    "T =  6.00, A =   410\r\nT = 12.00, A =   360\r\nT = 24.00, A =   335\r\n";

TEST(DissCollection, LoadsEveryDisFileOfTheFolderInNameOrder) {
  ScratchFolder dir;
  dir.write("0500.dis", "DISSIP2002\r\nZD = 5\r\nT = 1, A = 400\r\n");
  dir.write("0200.DIS", kGood);
  dir.write("notes.txt", "DISSIP2002\r\n");
  dir.write("sub/0900.dis", kGood);
  cls_Dissipations d;
  d.setFolder(dir.path());
  std::vector<Diagnostic> problems;
  ASSERT_TRUE(d.loadInfo(&problems));
  EXPECT_TRUE(problems.empty());
  ASSERT_EQ(d.Count(), 2);
  EXPECT_EQ(d.entry(1)->file, dir / "0200.DIS");
  EXPECT_EQ(d.item(1)->TstName, "A");
  EXPECT_EQ(d.item(2)->Zd(), 5.0f);
  EXPECT_EQ(d.item(0), nullptr);
  EXPECT_EQ(d.item(3), nullptr);
}

TEST(DissCollection, EachLoadedTestIsInterpreted) {
  ScratchFolder dir;
  dir.write("0200.dis", kGood);
  cls_Dissipations d;
  d.setFolder(dir.path());
  ASSERT_TRUE(d.loadInfo());
  const cls_DissTEST* t = d.item(1);
  ASSERT_NE(t, nullptr);
  EXPECT_GT(t->FlexT, 0.7f);
  EXPECT_LT(t->FlexT, 12.0f);
  EXPECT_NE(t->a3, 0.0f);
}

TEST(DissCollection, MissingFolderMeansNoTests) {
  ScratchFolder dir;
  cls_Dissipations d;
  d.setFolder(dir / "DISSIP_1");
  EXPECT_TRUE(d.loadInfo());
  EXPECT_EQ(d.Count(), 0);
  EXPECT_FALSE(d.isDissipationsSignificant());
  EXPECT_TRUE(d.saveInfo()) << "nothing to write";
  EXPECT_FALSE(fs::exists(dir / "DISSIP_1"));
}

TEST(DissCollection, ForeignFilesAreSkippedAndBrokenOnesNeverWrittenBack) {
  ScratchFolder dir;
  const std::string broken = "DISSIP2002\r\nZD = 3\r\nT = 1, A = 500\r\nT = 2, A = 99999\r\nT = 4, A = 450\r\n";
  dir.write("0100.dis", "not a dissipation\r\n");
  dir.write("0300.dis", broken);
  dir.write("0200.dis", kGood);
  cls_Dissipations d;
  d.setFolder(dir.path());
  std::vector<Diagnostic> problems;
  EXPECT_FALSE(d.loadInfo(&problems));
  ASSERT_EQ(problems.size(), 2u);
  EXPECT_EQ(problems[0].file, dir / "0100.dis");
  EXPECT_EQ(problems[0].reason, "File not valid");
  EXPECT_EQ(problems[1].file, dir / "0300.dis");
  EXPECT_EQ(problems[1].line, 4);
  ASSERT_EQ(d.Count(), 2);
  EXPECT_TRUE(d.entry(1)->complete);
  EXPECT_FALSE(d.entry(2)->complete);
  EXPECT_EQ(d.item(2)->N(), 1) << "what was read is shown";

  ASSERT_TRUE(d.saveInfo());
  EXPECT_EQ(ScratchFolder::read(dir / "0300.dis"), broken);
  EXPECT_EQ(ScratchFolder::read(dir / "0100.dis"), "not a dissipation\r\n");
  EXPECT_EQ(ScratchFolder::read(dir / "0200.dis"), kGood);
}

TEST(DissCollection, SaveCreatesTheFolderAndLoadGivesTheSameTests) {
  ScratchFolder dir;
  const fs::path folder = dir / "VERT_1" / "DISSIP_1";
  cls_Dissipations d;
  d.setFolder(folder);
  synth::DecayModel m;
  m.zd = 7.4f;
  d.add(synth::makeSyntheticDissipation(m, folder), true);
  cls_DissTEST* fresh = d.newTest(9.0f);
  ASSERT_NE(fresh, nullptr);
  fresh->addAcquireDissReading(0.2f, 610);
  std::vector<Diagnostic> problems;
  ASSERT_TRUE(d.saveInfo(&problems)) << (problems.empty() ? "" : problems[0].toString());
  EXPECT_TRUE(fs::exists(folder / "0740.dis"));
  EXPECT_TRUE(fs::exists(folder / "0900.dis"));

  cls_Dissipations back;
  back.setFolder(folder);
  ASSERT_TRUE(back.loadInfo());
  ASSERT_EQ(back.Count(), 2);
  EXPECT_EQ(back.item(1)->strDisFile(), d.item(1)->strDisFile());
  EXPECT_EQ(back.item(2)->vA(), (std::vector<int16_t>{610}));
  // Times pass through the file with two decimals; the flex hardly moves.
  ASSERT_EQ(const_cast<cls_DissTEST*>(d.item(1))->calculate(), TflexStatus::Computed);
  EXPECT_NEAR(back.item(1)->FlexT / d.item(1)->FlexT, 1.0, 0.01);
}

TEST(DissCollection, OneDepthHoldsOneTest) {
  ScratchFolder dir;
  cls_Dissipations d;
  d.setFolder(dir.path());
  cls_DissTEST* first = d.newTest(4.5f);
  ASSERT_NE(first, nullptr);
  first->TstName = "first";
  EXPECT_EQ(d.newTest(4.5f), first);
  EXPECT_EQ(d.Count(), 1);
  EXPECT_EQ(d.newTest(0.0f), nullptr);
  cls_DissTEST replacement;
  replacement.folder = dir.path();
  replacement.setZd(4.5f);
  replacement.TstName = "second";
  d.add(replacement);
  ASSERT_EQ(d.Count(), 1);
  EXPECT_EQ(d.item(1)->TstName, "second");
}

TEST(DissCollection, RemoveDropsTheItemAndOnRequestItsFile) {
  ScratchFolder dir;
  dir.write("0200.dis", kGood);
  dir.write("0500.dis", "DISSIP2002\r\nZD = 5\r\n");
  cls_Dissipations d;
  d.setFolder(dir.path());
  ASSERT_TRUE(d.loadInfo());
  EXPECT_FALSE(d.remove(3, true));
  EXPECT_TRUE(d.remove(2, false));
  EXPECT_TRUE(fs::exists(dir / "0500.dis"));
  EXPECT_TRUE(d.remove(1, true));
  EXPECT_FALSE(fs::exists(dir / "0200.dis"));
  EXPECT_EQ(d.Count(), 0);
}

TEST(DissCollection, TabularFlagsDefaultToTestsWithReadings) {
  ScratchFolder dir;
  dir.write("0200.dis", kGood);
  dir.write("0500.dis", "DISSIP2002\r\nZD = 5\r\n");
  cls_Dissipations d;
  d.setFolder(dir.path());
  ASSERT_TRUE(d.loadInfo());
  EXPECT_FALSE(d.existTabSelected());
  EXPECT_TRUE(d.isDissipationsSignificant());
  d.setDefaultTabDissipations();
  EXPECT_TRUE(d.entry(1)->blnTabInclude);
  EXPECT_FALSE(d.entry(2)->blnTabInclude);
  EXPECT_TRUE(d.existTabSelected());
  d.removeAllTabDissips();
  EXPECT_FALSE(d.existTabSelected());
  d.remove(1, false);
  EXPECT_FALSE(d.isDissipationsSignificant()) << "a header without readings is nothing to list";
}

}  // namespace
}  // namespace koru
