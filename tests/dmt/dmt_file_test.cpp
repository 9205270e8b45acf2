#include <gtest/gtest.h>

#include <array>

#include "dmt/cls_DmtTEST.h"
#include "scratch_folder.h"

namespace koru {
namespace {

using testing::ScratchFolder;

const std::string kStrings =
    "\"Studio Rossi\",\"Comune di Prato\"\r\n"
    "\"Job 7\",\"Via Roma\",\"no remark\"\r\n"
    "\"5 MAR 2008\",\"DMT1\"\r\n";

// A regular sounding from 1.2 m every 0.2 m, the older layout with one gauge zero.
const std::string kAB =
    "1.2,2,4,0.15,0.4,34.7,0.05,3,0,1.73293,0.2\r\n" + kStrings +
    "120,300\r\n130,310\r\n150,330\r\n160,350\r\n170,360\r\n";

const std::string kABC =
    "2,2.4,-2,0.12,0.35,34.7,0.03,1.5,12.5,1.83486,0.2\r\n"
    "0.02,0.05,0.03\r\n" +
    kStrings + "200,450,180\r\n210,470,0\r\n250,520,230\r\n";

const std::string kABZ =
    "1,2.05,3,0.15,0.4,34.7,0,3,0,1.73293,0\r\n" + kStrings +
    "100,250,100\r\n110,260,125\r\n130,280,170\r\n150,300,205\r\n";

const std::string kABCZ =
    "0.6,1.35,-2,0.15,0.4,35.12,0,-0.5,101.25,1.73293,0\r\n"
    "0.01,0.01,0.02\r\n" +
    kStrings + "90,200,0,60\r\n95,210,70,95\r\n99,230,80,135\r\n";

struct Loaded {
  cls_DmtTEST test;
  int16_t status = 0;
  Diagnostic why;
};

// Loads the bytes as a .dat file into a fresh record.
void load(const ScratchFolder& dir, const std::string& bytes, Loaded& out) {
  out.test.setDatPath(dir.write("t.dat", bytes));
  out.status = out.test.loadFile(&out.why);
}

std::string firstLine(const std::string& text) { return text.substr(0, text.find("\r\n")); }

// --- The writer's own form survives load and save byte for byte ---------------------------------

class DmtFileRoundTrip : public ::testing::TestWithParam<std::string> {};

// LF line ends and trailing blank lines load the same.
TEST_P(DmtFileRoundTrip, LoadThenSaveGivesTheSameBytes) {
  ScratchFolder dir;
  std::string lf = GetParam();
  std::erase(lf, '\r');
  for (const std::string& variant : {GetParam(), lf + "\n\n  \n"}) {
    Loaded t;
    load(dir, variant, t);
    ASSERT_EQ(t.status, -1) << t.why.toString();
    EXPECT_EQ(t.test.saveFile(&t.why), -1) << t.why.toString();
    EXPECT_EQ(ScratchFolder::read(t.test.getDatPath()), GetParam());
  }
}

std::string formatName(const ::testing::TestParamInfo<std::string>& info) {
  static const char* const kNames[] = {"AB", "ABC", "ABZ", "ABCZ"};
  return kNames[info.index];
}

INSTANTIATE_TEST_SUITE_P(DmtFileFormats, DmtFileRoundTrip, ::testing::Values(kAB, kABC, kABZ, kABCZ), formatName);

// --- Reading -----------------------------------------------------------------------------------

TEST(DmtFileLoad, HeaderPressuresRoundHalvesToEvenAndUnitWeightComesBackInKn) {
  ScratchFolder dir;
  Loaded t;
  load(dir, "0,0,0,0.125,0.375,40,0,3,0,1.8,0.2\r\n" + kStrings + "100,200\r\n", t);
  ASSERT_EQ(t.status, -1);
  EXPECT_EQ(t.test.intDeltaA, 12);
  EXPECT_EQ(t.test.intDeltaB, 38);
  EXPECT_FLOAT_EQ(t.test.sngGammaTop, 17.66f);  // 1.8 x 9.81 = 17.658
}

TEST(DmtFileLoad, ZeroRowIsDroppedButKeepsItsPlaceInDepth) {
  ScratchFolder dir;
  Loaded ab;
  load(dir, "1,1.6,3,0.15,0.4,34.7,0,3,0,1.73293,0.2\r\n" + kStrings + "120,300\r\n0,0\r\n150,330\r\n160,340\r\n",
       ab);
  ASSERT_EQ(ab.status, -1);
  ASSERT_EQ(ab.test.N(), 3);
  // The gap makes the depths irregular, so the next save carries them.
  EXPECT_NE(ab.test.fileText().find("120,300,100\r\n150,330,140\r\n160,340,160\r\n"), std::string::npos);
}

TEST(DmtFileLoad, DepthRowsComeBackSortedWithTheirReadings) {
  ScratchFolder dir;
  Loaded t;
  load(dir, "0,0,-1,0.15,0.4,34.7,0,3,0,1.73293,0\r\n0,0,0\r\n" + kStrings +
                "300,500,30,300\r\n100,200,10,100\r\n200,400,20,200\r\n150,300,15,150\r\n250,450,25,100\r\n",
       t);
  ASSERT_EQ(t.status, -1);
  EXPECT_EQ(t.test.vZ, (std::vector<float>{1.0f, 1.0f, 1.5f, 2.0f, 3.0f}));
  EXPECT_EQ(t.test.vC, (std::vector<int16_t>{10, 25, 15, 20, 30}));  // equal depths keep their file order
}

TEST(DmtFileLoad, ChecksSeeTheZeroTailSoALoadedTestIsIrregular) {
  ScratchFolder dir;
  std::string rows;
  for (int i = 0; i < 10; ++i) rows += std::to_string(100 + i) + "," + std::to_string(300 + i) + "\r\n";
  Loaded t;
  load(dir, "1,2.8,9,0.15,0.4,34.7,0,3,0,1.73293,0.2\r\n" + kStrings + rows, t);
  ASSERT_EQ(t.status, -1);
  EXPECT_TRUE(t.test.blnZEditable);
  // The next save finds the step again and writes the file without depths.
  EXPECT_EQ(firstLine(t.test.fileText()), "1,2.8,9,0.15,0.4,34.7,0,3,0,1.73293,0.2");
}

TEST(DmtFileLoad, FieldsMayBeBrokenOverLinesStringsHoldCommasNumbersRound) {
  ScratchFolder dir;
  Loaded t;
  load(dir,
       "1.2\r\n2,4,0.15,0.4\r\n34.7,0.05,3,0,1.73293,0.2\r\n\"Rossi, Milano\"\r\n\"C\",\"J\",\"S\",\"R\",\"D\",\"T\"\r\n"
       "120\r\n300\r\n130,310,12.5,13.5\r\n 99.7 , 1e2 \r\n",
       t);
  ASSERT_EQ(t.status, -1) << t.why.toString();
  EXPECT_EQ(t.test.strFirm, "Rossi, Milano");
  // Row numbers may be written as decimals; they round with halves to even.
  EXPECT_EQ(t.test.vB, std::vector<int16_t>({300, 310, 14, 100}));
}

// --- Errors while reading ----------------------------------------------------------------------

TEST(DmtFileLoadError, BadRowNamesItsLineAndKeepsTheRowsBefore) {
  struct Case { std::string file; int line; std::string reason; int rowsKept; };
  const std::string ab = "1,2,4,0.15,0.4,34.7,0,3,0,1.73293,0.2\r\n" + kStrings;
  const std::string abz = "1,2,0,0.15,0.4,34.7,0,3,0,1.73293,0\r\n" + kStrings;
  const Case cases[] = {
      {ab + "120,300\r\n130,310\r\n140,x1\r\n150,330\r\n", 7, "B reading 'x1' is not a number", 2},
      {abz + "120,300,100\r\n130,310,40000\r\n", 6, "depth '40000' is out of range", 1},
      {abz + "120,300,100\r\n130,310\r\n\r\n", 6, "incomplete row: 2 of 3 fields", 1},
  };
  ScratchFolder dir;
  for (const Case& c : cases) {
    Loaded t;
    load(dir, c.file, t);
    EXPECT_EQ(t.status, 0);
    EXPECT_EQ(t.why.toString(), t.test.getDatPath().string() + ":" + std::to_string(c.line) + ": " + c.reason);
    EXPECT_EQ(t.test.N(), c.rowsKept) << c.reason;
  }
}

// --- Writing -----------------------------------------------------------------------------------

cls_DmtTEST recordWithRows(std::initializer_list<std::array<float, 4>> rows) {
  cls_DmtTEST t;
  t.strDate = "1 JAN 2020";
  for (const auto& r : rows) {
    t.vZ.push_back(r[0]);
    t.vA.push_back(static_cast<int16_t>(r[1]));
    t.vB.push_back(static_cast<int16_t>(r[2]));
    t.vC.push_back(static_cast<int16_t>(r[3]));
    t.vTH.push_back(0);
  }
  return t;
}

// The rows follow the last string line.
std::string rowsOf(const std::string& text) { return text.substr(text.rfind("\"\r\n") + 3); }

TEST(DmtFileSave, RowCountFieldCarriesTheCFlagInItsSign) {
  auto withC = recordWithRows({{1.0f, 100, 200, 50}});
  std::string text = withC.fileText();
  EXPECT_EQ(firstLine(text), "1,1,-1,0.15,0.4,34.7,0,3,0,1.73293,0.2");
  EXPECT_NE(text.find("\r\n0,0,0\r\n\""), std::string::npos);
  auto four = recordWithRows({{1.0f, 100, 200, 50}, {1.2f, 1, 2, 0}, {1.4f, 1, 2, 0}, {1.6f, 1, 2, 0}});
  EXPECT_EQ(firstLine(four.fileText()), "1,1.6,-3,0.15,0.4,34.7,0,3,0,1.73293,0.2");
}

TEST(DmtFileSave, DepthColumnIsCentimetresRoundedHalvesToEven) {
  // Z x 100 is a float product before it is rounded: 1.015f x 100 is 101.5f and goes to 102,
  // 0.045f x 100 is 4.5f and goes to 4 (in double they would be 101.4999986 and 4.5000002).
  auto t = recordWithRows({{0.125f, 10, 20, 0}, {0.045f, 10, 20, 0}, {1.015f, 10, 20, 0}, {327.67f, 10, 20, 0}});
  EXPECT_EQ(rowsOf(t.fileText()), "10,20,12\r\n10,20,4\r\n10,20,102\r\n10,20,32767\r\n");

  // Rows without depth, or without A and B, are left out.
  t = recordWithRows({{1.0f, 10, 20, 0}, {0.0f, 10, 20, 0}, {1.3f, 0, 0, 40}, {1.35f, -1, 0, 0}, {2.0f, 0, 7, 5}});
  EXPECT_EQ(rowsOf(t.fileText()), "10,20,0,100\r\n0,7,5,200\r\n");
}

TEST(DmtFileSave, StringsLoseDoubleQuotesAndTravelAsWindows1252) {
  ScratchFolder dir;
  cls_DmtTEST t;
  t.strFirm = "Studio \"Alfa\"";
  t.strSite = "Città";
  t.setDatPath(dir / "s.dat");
  ASSERT_EQ(t.saveFile(), -1);
  EXPECT_NE(ScratchFolder::read(dir / "s.dat").find("\"Studio 'Alfa'\",\"\"\r\n\"\",\"Citt\xE0\""), std::string::npos);
}

// --- Checks ------------------------------------------------------------------------------------

TEST(DmtFileChecks, RegularStepIsFoundDespiteFloatNoise) {
  cls_DmtTEST t;
  float z = 0.1f;
  for (int i = 0; i < 50; ++i, z += 0.1f) t.vZ.push_back(z);  // accumulates float error
  t.checkZeditable();
  EXPECT_FLOAT_EQ(t.sngDeltaZ, 0.1f);
  EXPECT_FALSE(t.blnZEditable);
}

}  // namespace
}  // namespace koru

// --- Reading a buffer ------------------------------------------------------------------------

namespace koru {
namespace {

// Lone CRs read as CR LF; a buffer cut at any byte keeps the rows before the cut as the whole
// file has them (only the last kept row may lose digits of B) and, unless complete, says why.
TEST(DmtDatBuffer, LoneCrReadsAsCrLfAndACutAnywhereKeepsTheRowsBeforeIt) {
  const std::string file = "1.2,1.6,2,0.15,0.4,34.7,0,2,0,1.7,0.2\r\n\"F\",\"C\"\r\n\"J\",\"S\",\"R\"\r\n\"D\",\"T\"\r\n"
                           "250,900\r\n260,940\r\n270,980\r\n";
  cls_DmtTEST whole, cr;
  ASSERT_TRUE(whole.parseDat(file, "t.dat").complete());
  std::string crOnly;
  for (char c : file)
    if (c != '\n') crOnly += c;
  ASSERT_TRUE(cr.parseDat(crOnly, "t.dat").complete());
  EXPECT_EQ(cr.fileText(), whole.fileText());
  for (size_t cut = 0; cut < file.size(); ++cut) {
    cls_DmtTEST t;
    const LoadResult read = t.parseDat(std::string_view(file).substr(0, cut), "t.dat");
    EXPECT_EQ(read.complete(), read.why.reason.empty()) << cut;
    ASSERT_LE(t.vA.size(), whole.vA.size()) << cut;
    for (size_t i = 0; i < t.vA.size(); ++i)
      EXPECT_TRUE(t.vA[i] == whole.vA[i] && (t.vB[i] == whole.vB[i] || i + 1 == t.vA.size())) << cut;
  }
}

}  // namespace
}  // namespace koru
