#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "dmt/cls_Calibration.h"
#include "scratch_folder.h"

namespace koru {
namespace {

using testing::ScratchFolder;

const std::string kTwo =
    "DeltaA = 15, DeltaB = 40, Date = 12/03/2008, Time = 10:25\r\n"
    "DeltaA = 18, DeltaB = 45, Date = 12/03/2008, Time = 16:05\r\n";

cls_Calibration loaded(const ScratchFolder& dir, const std::string& bytes, Diagnostic* why = nullptr,
                       bool* ok = nullptr) {
  cls_Calibration c;
  c.setPathFile(dir.write("Calibration_1.dat", bytes));
  const bool result = c.loadCalibrations(why);
  if (ok) *ok = result;
  return c;
}

TEST(CalibrationFile, SaveWritesOneLinePerCalibrationAndLoadsBackTheSame) {
  ScratchFolder dir;
  cls_Calibration c;
  c.setPathFile(dir / "Calibration_1.dat");
  c.addCalibration(15, 40, "12/03/2008", "10:25");
  c.addCalibration(18, 45, "12/03/2008", "16:05");
  ASSERT_TRUE(c.saveToFile());
  EXPECT_EQ(ScratchFolder::read(dir / "Calibration_1.dat"), kTwo);

  cls_Calibration back;
  back.setPathFile(dir / "Calibration_1.dat");
  ASSERT_TRUE(back.loadCalibrations());
  ASSERT_EQ(back.N(), 2);
  EXPECT_EQ(back.deltaA_i(1), 18);
  EXPECT_EQ(back.deltaB_i(1), 45);
  EXPECT_EQ(back.data_i(1), "12/03/2008");
  EXPECT_EQ(back.ora_i(1), "16:05");
  ASSERT_TRUE(back.saveToFile());
  EXPECT_EQ(ScratchFolder::read(dir / "Calibration_1.dat"), kTwo);

  // A comma inside a date would split the line: it is written as a blank.
  c.setN(0);
  c.addCalibration(15, 40, "12 Mar, 2008", "10:25");
  ASSERT_TRUE(c.saveToFile());
  ASSERT_TRUE(back.loadCalibrations());
  EXPECT_EQ(back.data_i(0), "12 Mar  2008");
  EXPECT_EQ(back.ora_i(0), "10:25");
}

TEST(CalibrationFile, KeysComeInAnyOrderAndCaseAndUnknownKeysAreIgnored) {
  ScratchFolder dir;
  Diagnostic why;
  bool ok = false;
  auto c = loaded(dir,
                  "time=09:10 ,  deltab =  35,Operator = Bianchi, DATE = 1/2/2010,DELTAA=12\n"
                  "\n"
                  "DeltaB = 50, DeltaA = 20\r",
                  &why, &ok);
  EXPECT_TRUE(ok);
  EXPECT_TRUE(why.reason.empty());
  ASSERT_EQ(c.N(), 2);
  EXPECT_EQ(c.deltaA_i(0), 12);
  EXPECT_EQ(c.deltaB_i(0), 35);
  EXPECT_EQ(c.data_i(0), "1/2/2010");
  EXPECT_EQ(c.ora_i(0), "09:10");
  EXPECT_EQ(c.deltaA_i(1), 20);
  EXPECT_EQ(c.data_i(1), "");
}

TEST(CalibrationFile, LineWithoutBothDeltasIsSkippedAndReported) {
  ScratchFolder dir;
  Diagnostic why;
  bool ok = false;
  auto c = loaded(dir,
                  "DeltaA = 15, DeltaB = 40, Date = 1/1/2020, Time = 10:00\r\n"
                  "DeltaA = x5, DeltaB = 40, Date = 1/1/2020, Time = 11:00\r\n"
                  "DeltaA = 16, Date = 1/1/2020\r\n"
                  "DeltaA = 17, DeltaB = 42, Date = 1/1/2020, Time = 12:00\r\n",
                  &why, &ok);
  EXPECT_TRUE(ok);
  ASSERT_EQ(c.N(), 2);
  EXPECT_EQ(c.deltaA_i(1), 17);
  EXPECT_EQ(why.line, 2);
  EXPECT_EQ(why.reason, "DeltaA 'x5' is not a number; line skipped (2 lines skipped in all)");

  auto single = loaded(dir, "DeltaA = 16, Date = 1/1/2020\r\n", &why);
  EXPECT_EQ(single.N(), 0);
  EXPECT_EQ(why.line, 1);
  EXPECT_EQ(why.reason, "no DeltaB; line skipped");
}

TEST(CalibrationFile, MissingFileGivesNoCalibrations) {
  ScratchFolder dir;
  cls_Calibration c;
  c.addCalibration(1, 2, "", "");
  c.setPathFile(dir / "none.dat");
  Diagnostic why;
  EXPECT_FALSE(c.loadCalibrations(&why));
  EXPECT_EQ(why.reason, "file not found");
  EXPECT_EQ(c.N(), 0);
}

TEST(CalibrationFile, FailedSaveLeavesTheOldFile) {
  ScratchFolder dir;
  auto file = dir.write("Calibration_1.dat", kTwo);
  std::filesystem::create_directories(dir / "Calibration_1.dat.tmp~");
  cls_Calibration c;
  c.setPathFile(file);
  c.addCalibration(5, 5, "d", "t");
  Diagnostic why;
  EXPECT_FALSE(c.saveToFile(&why));
  EXPECT_FALSE(why.reason.empty());
  EXPECT_EQ(ScratchFolder::read(file), kTwo);

  c.setPathFile(dir / "no-such-folder" / "Calibration_1.dat");
  EXPECT_FALSE(c.saveToFile(&why));
}

TEST(CalibrationList, SetNKeepsWhatFitsAndDeleteClosesTheGap) {
  cls_Calibration c;
  c.addCalibration(10, 20, "a", "1");
  c.addCalibration(11, 21, "b", "2");
  c.addCalibration(12, 22, "c", "3");
  c.deleteCalibration(1);
  ASSERT_EQ(c.N(), 2);
  EXPECT_EQ(c.deltaA_i(1), 12);
  EXPECT_EQ(c.ora_i(1), "3");
  c.deleteCalibration(5);
  c.deleteCalibration(-1);
  EXPECT_EQ(c.N(), 2);
  c.setN(3);
  ASSERT_EQ(c.N(), 3);
  EXPECT_EQ(c.deltaA_i(0), 10);
  EXPECT_EQ(c.deltaA_i(2), 0);
  c.setN(1);
  EXPECT_EQ(c.N(), 1);
  EXPECT_EQ(c.deltaB_i(0), 20);
  c.setN(-4);
  EXPECT_EQ(c.N(), 0);
}

TEST(CalibrationFigures, RangeAndAveragesOfTheStoredCalibrations) {
  cls_Calibration c;
  EXPECT_EQ(c.minDeltaA(), 0);
  EXPECT_EQ(c.averageCalibration("DA"), 0.0f);
  c.addCalibration(15, 40, "", "");
  c.addCalibration(18, 45, "", "");
  c.addCalibration(12, 50, "", "");
  EXPECT_EQ(c.minDeltaA(), 12);
  EXPECT_EQ(c.maxDeltaA(), 18);
  EXPECT_EQ(c.minDeltaB(), 40);
  EXPECT_EQ(c.maxDeltaB(), 50);
  EXPECT_FLOAT_EQ(c.averageCalibration("DA"), 15.0f);
  EXPECT_FLOAT_EQ(c.averageCalibration("DB"), 45.0f);

  std::string error;
  EXPECT_EQ(c.averageCalibration("DC", &error), 0.0f);
  EXPECT_EQ(error, "Error in calibration selection");

  const CalibrationFigures f = c.figures();
  EXPECT_FLOAT_EQ(f.averageDeltaA, 15.0f);
  EXPECT_FLOAT_EQ(f.averageDeltaB, 45.0f);
  EXPECT_EQ(f.minDeltaA, 12);
  EXPECT_EQ(f.maxDeltaA, 18);
  EXPECT_EQ(f.minDeltaB, 40);
  EXPECT_EQ(f.maxDeltaB, 50);
}

TEST(CalibrationStandards, DeltaAWithinFiveToThirtyDeltaBFiveToEightyWithSpreadBelowTwentySix) {
  auto check = [](std::initializer_list<int> deltas, bool forA) {
    cls_Calibration c;
    for (int d : deltas) c.addCalibration(static_cast<int16_t>(d), static_cast<int16_t>(d), "", "");
    return forA ? c.checkDeltaAStandards() : c.checkDeltaBStandards();
  };
  EXPECT_TRUE(check({5, 30}, true));
  EXPECT_FALSE(check({4, 20}, true));
  EXPECT_FALSE(check({20, 31}, true));
  EXPECT_TRUE(check({5, 30}, false));
  EXPECT_FALSE(check({5, 31}, false));  // spread 26
  EXPECT_TRUE(check({80}, false));
  EXPECT_FALSE(check({81}, false));
  EXPECT_FALSE(check({4}, false));
}

}  // namespace
}  // namespace koru
