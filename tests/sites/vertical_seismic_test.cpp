#include <gtest/gtest.h>

#include "scratch_folder.h"
#include "sites/cls_SITE.h"

namespace koru {
namespace {

using testing::ScratchFolder;

struct VerticalSeismic : ::testing::Test {
  ScratchFolder root;
  cls_SITE site;
  cls_VERTICAL* vertical = nullptr;

  void SetUp() override {
    ASSERT_TRUE(site.newSite(root.path(), "S"));
    vertical = site.newVertical();
    ASSERT_NE(vertical, nullptr);
  }
};

TEST_F(VerticalSeismic, AVsTestIsSavedWithTheVerticalAndReadWhenActivated) {
  vertical->createNewVsTest();
  cls_zSTRIKES depth(3.0f);
  depth.addGood("1", 180, "5,180;4;0,0");
  depth.addGood("2", 190, "5,180;4;0,0");
  depth.evaluateData();
  vertical->vsTest->strikes.add(depth);
  ASSERT_TRUE(vertical->saveInfo());
  EXPECT_EQ(ScratchFolder::read(root / "SITE_1/VERT_1/VS_1.dat").substr(0, 9), "3.00:185:");

  cls_SITE reopened;
  ASSERT_TRUE(reopened.sOpen(root.path(), "SITE_1"));
  EXPECT_FALSE(reopened.verticals.item(1)->vsTest) << "opening a site reads headers only";
  cls_VERTICAL* active = reopened.verticals.activate(1, DMTOptions{});
  ASSERT_TRUE(active->vsTest);
  ASSERT_EQ(active->vsTest->strikes.Count(), 1);
  EXPECT_EQ(active->vsTest->strikes.item(1)->vMean, 185);
}

}  // namespace
}  // namespace koru
