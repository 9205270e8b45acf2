#include <gtest/gtest.h>


#include "dissipation/cls_Dissipations.h"
#include "scratch_folder.h"

namespace koru {
namespace {

using testing::ScratchFolder;

TEST(DissCollection, LoadsDisFilesInNameOrderAndKeepsABrokenOneAsideBeforeWritingIt) {
  ScratchFolder dir;
  const std::string broken = "DISSIP2002\r\nZD = 3\r\nT = 1, A = 500\r\nT = 2, A = 99999\r\nT = 4, A = 450\r\n";
  dir.write("0100.dis", "not a dissipation\r\n");
  dir.write("0300.dis", broken);
  dir.write("0200.DIS",
            "DISSIP2002\r\nTESTNAME = \"A\"\r\nZD = 2\r\nT = 0.25, A = 560\r\nT = 0.7, A = 552\r\n"
            "T = 1.5, A = 530\r\nT = 3, A = 480\r\nT = 6, A = 410\r\nT = 12, A = 360\r\nT = 24, A = 335\r\n");
  dir.write("notes.txt", "DISSIP2002\r\n");
  cls_Dissipations d;
  d.setFolder(dir.path());
  std::vector<Diagnostic> problems;
  EXPECT_FALSE(d.loadInfo(&problems));
  ASSERT_EQ(problems.size(), 2u);
  ASSERT_EQ(d.Count(), 2);
  EXPECT_GT(d.item(1)->FlexT, 0.7f) << "each loaded test is interpreted";
  EXPECT_EQ(d.item(2)->N(), 1) << "what was read is shown";

  // The broken file is written back with what was read, its original kept aside and told.
  problems.clear();
  ASSERT_TRUE(d.saveInfo(&problems));
  EXPECT_EQ(ScratchFolder::read(dir / "0300.dis.damaged"), broken);
  EXPECT_EQ(ScratchFolder::read(dir / "0300.dis"), d.item(2)->strDisFile());
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].file, dir / "0300.dis");
  EXPECT_EQ(ScratchFolder::read(dir / "0100.dis"), "not a dissipation\r\n");
}

TEST(DissCollection, OneDepthHoldsOneTestAndSaveCreatesTheFolder) {
  ScratchFolder dir;
  cls_Dissipations d;
  d.setFolder(dir / "VERT_1" / "DISSIP_1");
  ASSERT_EQ(d.newTest(9.0f), d.newTest(9.0f));
  d.newTest(9.0f)->addAcquireDissReading(0.2f, 610);
  ASSERT_TRUE(d.saveInfo());
  EXPECT_EQ(ScratchFolder::read(dir / "VERT_1" / "DISSIP_1" / "0900.dis"), "DISSIP2002\r\nZD = 9\r\nT =  0.20, A =   610\r\n");
}

}  // namespace
}  // namespace koru
