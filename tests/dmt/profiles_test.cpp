#include <gtest/gtest.h>

#include <string>

#include "dmt/cls_GAMMA.h"
#include "dmt/cls_U.h"
#include "scratch_folder.h"

namespace koru {
namespace {

using koru::testing::ScratchFolder;

// A profile read from the text of its file.
template <class Profile>
Profile read(std::string_view text) {
  Profile p;
  p.parseInfo(text, "p.dat");
  return p;
}

TEST(ProfileValues, UnitWeightByDepth) {
  EXPECT_EQ(read<cls_GAMMA>("2\r\n").getYz(4.0f), 17.0f);
  cls_GAMMA g = read<cls_GAMMA>("2\r\n1:16\r\n2:18\r\n3:20\r\n");
  EXPECT_NE(g.getYz(2.0006f), 18.0f) << "only a hit to the millimetre takes the point's value";
  const struct { int16_t method; float constant, z, value; } cases[] = {
      // The user's table interpolates and holds its ends.
      {2, 0, 0.5f, 16}, {2, 0, 2.75f, 19.5f}, {2, 0, 9, 20},
      // The chart modes hold the first value down to the second point; a constant 0 gives the last value.
      {0, 0, 1.5f, 16}, {0, 0, 2.5f, 19}, {0, 0, 4, 20}, {1, 0, 4, 20}, {1, 21.5f, 4, 21.5f}};
  for (const auto& c : cases) {
    g.setMethod(c.method);
    g.sngConstant = c.constant;
    EXPECT_FLOAT_EQ(g.getYz(c.z), c.value) << c.method << " at " << c.z;
  }
}

TEST(ProfileValues, PorePressureIsTheTableWithHydrostaticEnds) {
  const auto u = read<cls_U>("1\r\n5:20\r\n10:100\r\n");
  // Above the first point 9.81 Z + (20 - 49.05), never below 0; below the last 9.81 Z + (100 - 98.1).
  const std::pair<float, float> cases[] = {{7.5f, 60}, {4, 10.19f}, {2, 0}, {12, 119.62f}};
  for (const auto& [z, value] : cases) EXPECT_NEAR(u.getUz(z), value, 1e-4) << z;
}

// Each mode writes its own form, which reads back to the same bytes; the constant mode writes no points.
template <class Profile>
void expectRoundTrip(const std::string& text, const std::string& written) {
  EXPECT_EQ(read<Profile>(text).infoText(), written);
  EXPECT_EQ(read<Profile>(written).infoText(), written);
}

TEST(ProfileFile, EachModeWritesItsFormAndReadsItBack) {
  expectRoundTrip<cls_GAMMA>("2\r\n0.5:17.25\r\n1:18\r\n2.345:19.126\r\n",
                             "2\r\n0.5:17.25\r\n1.0:18.0\r\n2.35:19.13\r\n");
  expectRoundTrip<cls_GAMMA>("1:19.5\r\n1:16\r\n", "1:19.5\r\n");
  expectRoundTrip<cls_U>("1\r\n2:0\r\n4.5:24.525\r\n", "1\r\n2.0:0.0\r\n4.5:24.53\r\n");
}

// Only the first character of line 1 counts. A point that is no number ends the list and says
// where, yet the load reports 0 as for a whole file; a line without ":" ends the list quietly.
TEST(ProfileFile, ReadingRules) {
  ScratchFolder dir;
  cls_GAMMA g;
  Diagnostic why;
  g.setPath(dir.write("bad.dat", "25\r\n1.0:16.5\r\n2.0:x\r\n3.0:19\r\n"));
  ASSERT_EQ(g.loadInfo(&why), 0);
  EXPECT_EQ(g.N(), 1);
  EXPECT_EQ(why.line, 3);
  EXPECT_EQ(read<cls_U>("1\n1:10\n2:20\nx\n3:30\n").N(), 2);
}

// Bad input is told at its line, a byte-order mark is passed over and CR alone ends a line.
TEST(ProfileFile, BadInputIsToldAtItsLine) {
  const struct { std::string text; LoadStatus status; int line; int points; } cases[] = {
      {"\xEF\xBB\xBF" "2\r\n1:16\r\n2:18\r\n", LoadStatus::Complete, 0, 2},
      {"2\r1:16\r2:18\r", LoadStatus::Complete, 0, 2},
      {"2\r\n1:16\r\n2:1", LoadStatus::Partial, 3, 1},
      {"2\r\n1:16\r\n2:nan\r\n", LoadStatus::Partial, 3, 1},
      {"2\r\n1:16\r\n:18\r\n", LoadStatus::Partial, 3, 1},
      {"1:1e39\r\n", LoadStatus::Partial, 1, 0},
      {"x\r\n1:16\r\n", LoadStatus::WrongFormat, 1, 0},
      {"", LoadStatus::WrongFormat, 1, 0},
  };
  for (const auto& c : cases) {
    cls_GAMMA g;
    const LoadResult read = g.parseInfo(c.text, "GAMMA_1.dat");
    EXPECT_EQ(read.status, c.status) << c.text;
    EXPECT_EQ(read.why.line, c.line) << c.text;
    EXPECT_EQ(g.N(), c.points) << c.text;
  }
}

}  // namespace
}  // namespace koru
