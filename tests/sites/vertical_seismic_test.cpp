#include <gtest/gtest.h>

#include "scratch_folder.h"
#include "sites/cls_SITE.h"

namespace koru {
namespace {

using testing::ScratchFolder;

// Opening a site reads the verticals' headers only; their tests are read at activation, where a
// broken file is reported and the other verticals still load theirs.
TEST(VerticalActivation, TestsAreReadAtActivationAndABrokenFileIsReportedThen) {
  ScratchFolder root;
  {
    cls_SITE site;
    ASSERT_TRUE(site.newSite(root.path(), "S"));
    cls_VERTICAL* dmt = site.newVertical();
    ASSERT_NE(dmt, nullptr);
    dmt->dmt->addZABCtoData(0.2f, 50, 120, 0, false);
    ASSERT_TRUE(dmt->saveInfo());
    cls_VERTICAL* vertical = site.newVertical();
    ASSERT_NE(vertical, nullptr);
    vertical->createNewVsTest();
    cls_zSTRIKES depth(3.0f);
    depth.addGood("1", 180, "5,180;4;0,0");
    depth.addGood("2", 190, "5,180;4;0,0");
    depth.evaluateData();
    vertical->vsTest->strikes.add(depth);
    ASSERT_TRUE(vertical->saveInfo());
  }
  EXPECT_EQ(ScratchFolder::read(root / "SITE_1/VERT_2/VS_2.dat").substr(0, 9), "3.00:185:");
  root.write("SITE_1/VERT_1/DMT_1.dat", "0.20,0.40\r\n");  // cut off in the first line

  cls_SITE reopened;
  ASSERT_TRUE(reopened.sOpen(root.path(), "SITE_1"));
  EXPECT_FALSE(reopened.verticals.item(2)->vsTest) << "opening a site reads headers only";
  cls_VERTICAL* broken = reopened.verticals.activate(1, DMTOptions{});
  ASSERT_FALSE(broken->problems().empty());
  EXPECT_EQ(broken->problems()[0].file, root / "SITE_1" / "VERT_1" / "DMT_1.dat");
  cls_VERTICAL* active = reopened.verticals.activate(2, DMTOptions{});
  ASSERT_TRUE(active->vsTest);
  ASSERT_EQ(active->vsTest->strikes.Count(), 1);
  EXPECT_EQ(active->vsTest->strikes.item(1)->vMean, 185);
}

}  // namespace
}  // namespace koru
