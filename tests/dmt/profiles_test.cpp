#include <gtest/gtest.h>

#include "dmt/cls_GAMMA.h"
#include "dmt/cls_U.h"
#include "scratch_folder.h"

namespace koru {
namespace {

using koru::testing::ScratchFolder;

cls_GAMMA gammaWith(int16_t method, std::initializer_list<std::pair<float, float>> points) {
  cls_GAMMA g;
  g.setMethod(method);
  g.setN(static_cast<int>(points.size()));
  int i = 0;
  for (auto [z, y] : points) g.setZi(i, z), g.setYi(i++, y);
  return g;
}

cls_U uWith(std::initializer_list<std::pair<float, float>> points) {
  cls_U u;
  u.setMethod(1);
  u.setN(static_cast<int>(points.size()));
  int i = 0;
  for (auto [z, v] : points) u.setZi(i, z), u.setUi(i++, v);
  return u;
}

// --- Unit weight by depth ------------------------------------------------------------------

TEST(ProfileGammaValues, UserTableInterpolatesAndHoldsItsEnds) {
  cls_GAMMA g = gammaWith(2, {{1.0f, 16.0f}, {2.0f, 18.0f}, {3.0f, 20.0f}});
  EXPECT_EQ(g.getYz(0.5f), 16.0f);
  EXPECT_FLOAT_EQ(g.getYz(2.75f), 19.5f);
  EXPECT_EQ(g.getYz(9.0f), 20.0f);
  EXPECT_NE(g.getYz(2.0006f), 18.0f) << "only a hit to the millimetre takes the point's value";
  EXPECT_EQ(gammaWith(2, {}).getYz(4.0f), 17.0f);
}

TEST(ProfileGammaValues, ChartModesHoldTheFirstValueDownToTheSecondPoint) {
  cls_GAMMA g = gammaWith(0, {{1.0f, 16.0f}, {2.0f, 18.0f}, {3.0f, 20.0f}});
  EXPECT_EQ(g.getYz(1.5f), 16.0f);
  EXPECT_FLOAT_EQ(g.getYz(2.5f), 19.0f);
  EXPECT_EQ(g.getYz(4.0f), 20.0f);
  g.setMethod(1);
  EXPECT_EQ(g.getYz(4.0f), 20.0f);  // constant 0: the last value
  g.sngConstant = 21.5f;
  EXPECT_EQ(g.getYz(4.0f), 21.5f);
}

TEST(ProfileGammaFile, RoundTripOfEachMode) {
  ScratchFolder dir;
  cls_GAMMA g = gammaWith(2, {{0.5f, 17.25f}, {1.0f, 18.0f}, {2.345f, 19.126f}});
  g.setPath(dir / "GAMMA_1.dat");
  ASSERT_TRUE(g.saveInfo());
  EXPECT_EQ(ScratchFolder::read(dir / "GAMMA_1.dat"), "2\r\n0.5:17.25\r\n1.0:18.0\r\n2.35:19.13\r\n");
  cls_GAMMA one = gammaWith(1, {{1.0f, 16.0f}});
  one.sngConstant = 19.5f;
  one.setPath(dir / "GAMMA_2.dat");
  ASSERT_TRUE(one.saveInfo());
  EXPECT_EQ(ScratchFolder::read(dir / "GAMMA_2.dat"), "1:19.5\r\n");
  for (const char* name : {"GAMMA_1.dat", "GAMMA_2.dat"}) {
    const std::string bytes = ScratchFolder::read(dir / name);
    cls_GAMMA back;
    back.setPath(dir / name);
    ASSERT_EQ(back.loadInfo(), 0);
    ASSERT_TRUE(back.saveInfo());
    EXPECT_EQ(ScratchFolder::read(dir / name), bytes);
  }
}

TEST(ProfileGammaFile, ReadingRules) {
  ScratchFolder dir;
  cls_GAMMA g;
  // Only the first character of line 1 counts. A line without ":" ends the list; a point that is no number ends it too, and says where.
  Diagnostic why;
  g.setPath(dir.write("bad.dat", "25\r\n1.0:16.5\r\n2.0:x\r\n3.0:19\r\n"));
  ASSERT_EQ(g.loadInfo(&why), 0);
  EXPECT_EQ(g.N(), 1);
  EXPECT_EQ(why.line, 3);
}

// --- Pore pressure by depth ----------------------------------------------------------------

TEST(ProfileUValues, TableWithHydrostaticEnds) {
  cls_U u = uWith({{5.0f, 20.0f}, {10.0f, 100.0f}});
  EXPECT_FLOAT_EQ(u.getUz(7.5f), 60.0f);
  // Above the first point: 9.81 Z + (20 - 49.05), never below 0.
  EXPECT_NEAR(u.getUz(4.0f), 10.19f, 1e-4);
  EXPECT_EQ(u.getUz(2.0f), 0.0f);
  // Below the last point: 9.81 Z + (100 - 98.1).
  EXPECT_NEAR(u.getUz(12.0f), 119.62f, 1e-4);
}

TEST(ProfileUFile, RoundTripAndRules) {
  ScratchFolder dir;
  cls_U u = uWith({{2.0f, 0.0f}, {4.5f, 24.525f}});
  u.setPath(dir / "U_1.dat");
  ASSERT_TRUE(u.saveInfo());
  EXPECT_EQ(ScratchFolder::read(dir / "U_1.dat"), "1\r\n2.0:0.0\r\n4.5:24.53\r\n");
  cls_U back;
  back.setPath(dir / "U_1.dat");
  ASSERT_EQ(back.loadInfo(), 0);
  EXPECT_EQ(back.getUi(1), 24.53f);
  back.setPath(dir.write("lf.dat", "1\n1:10\n2:20\nx\n3:30\n"));  // a line without ":" ends the list
  ASSERT_EQ(back.loadInfo(), 0);
  EXPECT_EQ(back.N(), 2);
}

}  // namespace
}  // namespace koru
