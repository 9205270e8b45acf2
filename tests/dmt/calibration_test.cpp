#include <gtest/gtest.h>

#include <string>

#include "dmt/cls_Calibration.h"
#include "scratch_folder.h"

namespace koru {
namespace {

using testing::ScratchFolder;

TEST(CalibrationFile, OneLinePerCalibrationThatReadsBackTheSame) {
  const std::string two =
      "DeltaA = 15, DeltaB = 40, Date = 12/03/2008, Time = 10:25\r\n"
      "DeltaA = 18, DeltaB = 45, Date = 12 Mar  2008, Time = 16:05\r\n";
  cls_Calibration c, back;
  c.addCalibration(15, 40, "12/03/2008", "10:25");
  c.addCalibration(18, 45, "12 Mar, 2008", "16:05");  // a comma would split the line: a blank
  EXPECT_EQ(c.fileText(), two);
  ASSERT_TRUE(back.parseCalibrations(two, "Calibration_1.dat").complete());
  EXPECT_EQ(back.fileText(), two);
}

TEST(CalibrationFile, KeysInAnyOrderAndCaseAndALineWithoutBothDeltasIsSkippedAndReported) {
  ScratchFolder dir;
  cls_Calibration c;
  c.setPathFile(dir.write("Calibration_1.dat",
                          "time=09:10 ,  deltab =  35,Operator = Bianchi, DATE = 1/2/2010,DELTAA=12\n"
                          "DeltaA = x5, DeltaB = 40\n\nDeltaA = 16, Date = 1/1/2020\r\nDeltaB = 50, DeltaA = 20\r"));
  Diagnostic why;
  EXPECT_TRUE(c.loadCalibrations(&why));
  ASSERT_EQ(c.N(), 2);
  EXPECT_EQ(c.deltaB_i(0), 35);
  EXPECT_EQ(c.ora_i(0), "09:10");
  EXPECT_EQ(c.deltaA_i(1), 20);
  EXPECT_EQ(why.line, 2);
  EXPECT_EQ(why.reason, "DeltaA 'x5' is not a number; line skipped (2 lines skipped in all)");
}

// A byte-order mark is passed over; a number that is none or a last line cut before its line
// end is a skipped line, told at its line.
TEST(CalibrationFile, BadInputIsToldAtItsLine) {
  const struct { std::string text; int line; int kept; } cases[] = {
      {"\xEF\xBB\xBF" "DeltaA = 15, DeltaB = 40\r\n", 0, 1},
      {"DeltaA = 15, DeltaB = 40\r\nDeltaA = 15, DeltaB = 4", 2, 1},
      {"DeltaA = 15, DeltaB = 40000\r\n", 1, 0},
      {"DeltaA = inf, DeltaB = 40\r\n", 1, 0},
  };
  for (const auto& c : cases) {
    cls_Calibration cal;
    const LoadResult read = cal.parseCalibrations(c.text, "Calibration_1.dat");
    EXPECT_EQ(read.why.line, c.line) << c.text;
    EXPECT_EQ(cal.N(), c.kept) << c.text;
  }
}

TEST(CalibrationFigures, StandardsBoundTheDeltasAndTheirSpread) {
  // DeltaA within 5 to 30, DeltaB within 5 to 80, spreads below 26.
  auto check = [](std::initializer_list<int> deltas, bool forA) {
    cls_Calibration c;
    for (int d : deltas) c.addCalibration(static_cast<int16_t>(d), static_cast<int16_t>(d), "", "");
    return forA ? c.checkDeltaAStandards() : c.checkDeltaBStandards();
  };
  EXPECT_TRUE(check({5, 30}, true));
  EXPECT_FALSE(check({4, 20}, true));
  EXPECT_FALSE(check({5, 31}, false));  // spread 26
  EXPECT_TRUE(check({80}, false));
  EXPECT_FALSE(check({81}, false));
}

}  // namespace
}  // namespace koru
