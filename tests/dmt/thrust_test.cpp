// The thrust extension: Thrust.dat read and written with its quirks, and the angle that balances
// a row's thrust.

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "dmt/DMTOptions.h"
#include "dmt/Thrust.h"
#include "dmt/cls_DmtTEST.h"
#include "dmt_rows.h"
#include "scratch_folder.h"

namespace koru {
namespace {

using testing::kDatStrings;
using testing::ScratchFolder;

const std::string kDefaultHead =
    "DRILLED ROD TYPE = OTHER\r\nDRILLED ROD DIAMETER [CM] = 3.7\r\nDRILLED ROD WEIGHT [KGF/METER] = 6.5\r\n"
    "DIAMETER OF FRICTION REDUCER [CM] = 4.8\r\nSOIL-DMT/INTERNAL FRICTION ANGLE = 0.50\r\n"
    "BLADE THICKNESS [MM] = 13.7\r\nBLADE WIDTH [MM] = 94\r\nTHRUST UNITS = kg\r\n\r\n";

// A thrust that would be written as 0 is left out too: read back, it would end the rows there.
// Read, head keys are trimmed and case-blind, LF lines do, and a key not in the file leaves its
// field as it was.
TEST(ThrustFile, HeadTakesItsFormatsOnlyRowsWithThrustFollowAndKeysReadLoosely) {
  RodData rod;
  rod.sngRodDiameter = 3.755f;
  rod.sngRatioDelPhi = 0.6666f;
  rod.sngBladeWidth = 95.25f;
  rod.strRodType = "Aste \xC3\xA0\r\nZ = 1";  // a line break in it must not end the head
  const std::string text = thrustFileText(rod, {1.0f, 1.2f, 1.4f, 1.6f, 1.8f}, {120.0f, 0.0f, 850.4f, -3.0f, 0.4f});
  EXPECT_EQ(text,
            "DRILLED ROD TYPE = Aste \xE0  Z = 1\r\nDRILLED ROD DIAMETER [CM] = 3.76\r\n"
            "DRILLED ROD WEIGHT [KGF/METER] = 6.5\r\nDIAMETER OF FRICTION REDUCER [CM] = 4.8\r\n"
            "SOIL-DMT/INTERNAL FRICTION ANGLE = 0.667\r\nBLADE THICKNESS [MM] = 13.7\r\n"
            "BLADE WIDTH [MM] = 95.3\r\nTHRUST UNITS = kg\r\n\r\nZ = 1.00, TH = 120\r\nZ = 1.40, TH = 850\r\n");
  RodData back;
  std::vector<float> thrusts;
  const LoadResult read = parseThrustText(text, "Thrust.dat", {1.0f, 1.2f, 1.4f}, back, thrusts);
  ASSERT_TRUE(read.complete()) << read.why.reason;
  EXPECT_EQ(back.strRodType, "Aste \xC3\xA0  Z = 1");
  EXPECT_EQ(thrusts, (std::vector<float>{120, 0, 850}));

  ASSERT_TRUE(parseThrustText("  drilled rod diameter [cm]=  4.2 \nOPERATOR = Rossi\n--- rows ---\nZ = 1.20, TH = 300\n\n",
                              "Thrust.dat", {1.0f, 1.2f}, rod, thrusts).complete());
  EXPECT_FLOAT_EQ(rod.sngRodDiameter, 4.2f);
  EXPECT_FLOAT_EQ(rod.sngBladeWidth, 95.25f);
  EXPECT_EQ(thrusts, (std::vector<float>{0, 300}));
}

// The rows are read from line 10 on, below the head; a pointer runs along the test's rows.
TEST(ThrustFile, RowsAreMatchedToTheTestsRowsUntilOneEndsTheReading) {
  // The line that ended the reading with a failure (0 if none), and the thrusts read.
  const struct { std::string rows; int line; std::vector<float> thrusts; } cases[] = {
      // A zero thrust on the first row ends the reading at once.
      {"Z = 1.00, TH = 0\r\nZ = 1.20, TH = 50\r\n", 0, {0, 0, 0, 0}},
      // The pointer walks back for rows out of order.
      {"Z = 1.40, TH = 40\r\nZ = 1.20, TH = 20\r\nZ = 1.00, TH = 10\r\n", 0, {10, 20, 40, 0}},
      // After the last row the pointer stands past the rows.
      {"Z = 1.60, TH = 40\r\nZ = 1.20, TH = 20\r\n", 11, {0, 0, 0, 40}},
      // Depths match within 5 mm, but not beyond.
      {"Z = 1.204, TH = 7\r\nZ = 1.396, TH = 8\r\n", 0, {0, 7, 8, 0}},
      {"Z = 1.206, TH = 7\r\n", 10, {0, 0, 0, 0}},
      // A depth below the rows ends the reading; one between two rows ends it instead of walking forever.
      {"Z = 1.00, TH = 100\r\nZ = 5.00, TH = 200\r\nZ = 1.40, TH = 3\r\n", 11, {100, 0, 0, 0}},
      {"Z = 1.10, TH = 100\r\n", 10, {0, 0, 0, 0}},
      // An unreadable row ends it.
      {"Z = 1.00, TH = 100\r\nZ = 1.20 TH = 300\r\nZ = 1.40, TH = 5\r\n", 11, {100, 0, 0, 0}},
      // So do a field too many, a number that is none and a last line cut before its line end.
      {"Z = 1.00, TH = 100, TH = 5\r\n", 10, {0, 0, 0, 0}},
      {"Z = 1.00, TH = 1e99\r\n", 10, {0, 0, 0, 0}},
      {"Z = 0x1, TH = 5\r\n", 10, {0, 0, 0, 0}},
      {"Z = 1.00, TH = 100\r\nZ = 1.20, TH = 3", 11, {100, 0, 0, 0}},
  };
  for (const auto& c : cases) {
    RodData rod;
    std::vector<float> thrusts;
    const LoadResult read = parseThrustText(kDefaultHead + c.rows, "Thrust.dat", {1.0f, 1.2f, 1.4f, 1.6f}, rod, thrusts);
    EXPECT_EQ(read.complete(), c.line == 0) << c.rows;
    EXPECT_EQ(read.why.line, c.line) << c.rows;
    EXPECT_EQ(thrusts, c.thrusts) << c.rows;
  }
}

// A byte-order mark is passed over; a head number that is none ends the reading at its line.
TEST(ThrustFile, HeadWithAByteOrderMarkOrABadNumber) {
  const struct { std::string text; int line; float width; } cases[] = {
      {"\xEF\xBB\xBF" "BLADE WIDTH [MM] = 94\r\n\r\nZ = 1.00, TH = 9\r\n", 0, 94},
      {"BLADE WIDTH [MM] = 9e99\r\n\r\nZ = 1.00, TH = 9\r\n", 1, 0},
      {"BLADE WIDTH [MM] = \r\n\r\nZ = 1.00, TH = 9\r\n", 1, 0},
  };
  for (const auto& c : cases) {
    RodData rod;
    rod.sngBladeWidth = 0;
    std::vector<float> thrusts;
    const LoadResult read = parseThrustText(c.text, "Thrust.dat", {1.0f}, rod, thrusts);
    EXPECT_EQ(read.why.line, c.line) << c.text;
    EXPECT_EQ(rod.sngBladeWidth, c.width) << c.text;
    EXPECT_EQ(thrusts[0], c.line == 0 ? 9 : 0) << c.text;
  }
}

TEST(ThrustFile, LoadThenSaveGivesTheSameBytesAndRemoveDeletesTheFile) {
  const std::string dat =
      "1.2,1.6,2,0.15,0.4,34.7,0.05,3,0,1.73293,0.2\r\n" + kDatStrings + "120,300\r\n130,310\r\n150,330\r\n";
  const std::string thrust = kDefaultHead + "Z = 1.20, TH = 420\r\nZ = 1.60, TH = 515\r\n";
  ScratchFolder dir;
  cls_DmtTEST t;
  t.setDatPath(dir.write("DMT_1.dat", dat));
  dir.write("Thrust.dat", thrust);
  Diagnostic why;
  ASSERT_EQ(t.loadFile(&why), -1) << why.toString();
  EXPECT_EQ(t.vTH, (std::vector<float>{420, 0, 515}));
  ASSERT_EQ(t.saveFile(&why), -1) << why.toString();
  EXPECT_EQ(ScratchFolder::read(dir / "DMT_1.dat"), dat);
  EXPECT_EQ(ScratchFolder::read(dir / "Thrust.dat"), thrust);

  DMTOptions o;
  t.addThrust(o);
  EXPECT_TRUE(t.removeThrust(o, &why));
  EXPECT_FALSE(t.hasThrustFile());
  EXPECT_FLOAT_EQ(o.sngPhiIdMin, 1.8f);
}

// A test whose Thrust.dat cannot be replaced keeps its old .dat too: the two never disagree.
TEST(ThrustFile, ATestAndItsThrustAreReplacedTogetherOrNotAtAll) {
  const std::string dat = "1.2,1.4,1,0.15,0.4,34.7,0.05,3,0,1.73293,0.2\r\n" + kDatStrings + "120,300\r\n130,310\r\n";
  ScratchFolder dir;
  cls_DmtTEST t;
  t.setDatPath(dir.write("DMT_1.dat", dat));
  dir.write("Thrust.dat", kDefaultHead + "Z = 1.20, TH = 420\r\n");
  ASSERT_EQ(t.loadFile(), -1);
  std::filesystem::remove(dir / "Thrust.dat");
  std::filesystem::create_directory(dir / "Thrust.dat");
  t.vA[0] = 290;
  EXPECT_EQ(t.saveFile(), 0);
  EXPECT_EQ(ScratchFolder::read(dir / "DMT_1.dat"), dat);
}

// --- The angle that balances the thrust ---------------------------------------------------------
//
// Each thrust was worked out by hand for its angle, outside this program, from the closed-form
// Ngq of Durgunoglu and Mitchell (1975), "Static penetration resistance of soils: I - Analysis",
// ASCE Conf. on In Situ Measurement of Soil Properties, Raleigh, 1, 151-171, for a wedge of
// 31 deg with delta = ratio x phi, D/B = Z / 13.7 mm; K = Ko = 0.376 + 0.095 Kd - 0.0017 qD/sigma'v
// (Baldi et al. 1986), shape 1 - 0.4 x 13.7/94 = 0.9417 (De Beer 1970), qD = sigma'v 0.9417 Ngq / (D/B).
// The rods (3.7 cm, 6.5 kgf/m) then carry qD on the 12.88 cm2 end, the faces' friction
// 355 cm2 x (Po - Uo) tan delta, less the rods' weight, plus the water's lift on them.
struct Worked {
  const char* what;
  double z, sigmaBar, kd, uoBar, poBar, ratio, phi, thrust;
};
constexpr Worked kWorked[] = {
    // D/B 438: spiral ends at beta = phi, m' 2.90; Ko 0.633, Ngq 7681, qD 12.39 bar.
    {"loose sand at 6 m", 6, 0.75, 3, 0.35, 2.8, 0.5, 30, 364.859},
    // eta 37.94 deg, theta0 102.56 deg; Ko 0.605, Ngq 15336, qD 24.73 bar.
    {"medium sand at 6 m", 6, 0.75, 3, 0.35, 2.8, 0.5, 35, 568.817},
    // Ko 0.540, Ngq 33037, qD 53.28 bar (qD / sigma'v = 71).
    {"dense sand at 6 m", 6, 0.75, 3, 0.35, 2.8, 0.5, 40, 986.551},
    // D/B 7.30 is below m' at beta = phi: beta drops to 37.52 deg, where m' = D/B; Ngq 481.5.
    {"spiral reaching the ground at 0.1 m", 0.1, 0.017, 3, 0, 0.4, 0.5, 41, 67.309},
    // eta 13.92 deg; Ko 0.856, Ngq 40940, qD 63.38 bar; the faces take 783 kgf.
    {"rough blade, high Kd, at 10 m", 10, 1.2, 6, 0.8, 4.5, 0.9, 33.7, 1558.574},
    // eta 45 + phi/2 = 63.5 deg, no face friction; Ko 0.499, Ngq 1790.7, qD 3.47 bar.
    {"smooth blade at 2 m", 2, 0.3, 1.5, 0.1, 0.9, 0.0, 37, 33.571},
};

double solve(const Worked& w, double thrust, RodData rod = RodData()) {
  rod.sngRatioDelPhi = static_cast<float>(w.ratio);
  return solveThrustPhi(w.z, thrust, w.sigmaBar, w.kd, 2.5, w.uoBar, w.poBar, rod);
}

// The thrust worked from an angle gives that angle back, and a little more thrust a larger one.
TEST(ThrustPhi, ThrustWorkedFromAnAngleGivesThatAngleBack) {
  for (const Worked& w : kWorked) {
    EXPECT_NEAR(solve(w, w.thrust), w.phi, 0.002) << w.what;
    EXPECT_GT(solve(w, w.thrust + 2), w.phi + 0.001) << w.what;
  }
}

TEST(ThrustPhi, NoAngleOutsideTheBracketOrWithoutAnAnswer) {
  const Worked& w = kWorked[1];
  // 239.4 and 1360.9 kgf are what 24.5 and 42.5 degrees need, worked as above.
  for (double thrust : {0.0, 239.4, 1360.9, 1e30, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(solve(w, thrust), 0.0) << thrust;
  RodData noReducer, noBlade, tooRough;
  noReducer.sngReducerDiameter = noReducer.sngRodDiameter;  // the rods would rub: nothing tells how
  noBlade.sngBladeThickness = 0;
  tooRough.sngRatioDelPhi = 1.5f;
  for (const RodData& rod : {noReducer, noBlade, tooRough})
    EXPECT_EQ(solveThrustPhi(w.z, w.thrust, w.sigmaBar, w.kd, 2.5, w.uoBar, w.poBar, rod), 0.0);
}

}  // namespace
}  // namespace koru
