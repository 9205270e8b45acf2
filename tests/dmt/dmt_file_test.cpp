#include <gtest/gtest.h>

#include <string>

#include "dmt/cls_DmtTEST.h"
#include "dmt_rows.h"

namespace koru {
namespace {

using testing::kDatStrings;
using testing::withRows;

// A .dat file's bytes read into a fresh record.
struct Parsed {
  cls_DmtTEST t;
  LoadResult read;
  explicit Parsed(std::string_view bytes) : read(t.parseDat(bytes, "t.dat")) {}
};

std::string firstLine(const std::string& text) { return text.substr(0, text.find("\r\n")); }
// The rows follow the last string line.
std::string rowsOf(const std::string& text) { return text.substr(text.rfind("\"\r\n") + 3); }

// --- The writer's own form survives reading and writing byte for byte --------------------------

// The four layouts: a regular sounding from 1.2 m every 0.2 m in the older layout with one gauge
// zero, then with C readings, then with depths, then with both. LF line ends and trailing blank
// lines read the same.
TEST(DmtFileRoundTrip, EachLayoutReadsAndWritesBackTheSameBytes) {
  const std::string layouts[] = {
      "1.2,2,4,0.15,0.4,34.7,0.05,3,0,1.73293,0.2\r\n" + kDatStrings +
          "120,300\r\n130,310\r\n150,330\r\n160,350\r\n170,360\r\n",
      "2,2.4,-2,0.12,0.35,34.7,0.03,1.5,12.5,1.83486,0.2\r\n0.02,0.05,0.03\r\n" + kDatStrings +
          "200,450,180\r\n210,470,0\r\n250,520,230\r\n",
      "1,2.05,3,0.15,0.4,34.7,0,3,0,1.73293,0\r\n" + kDatStrings +
          "100,250,100\r\n110,260,125\r\n130,280,170\r\n150,300,205\r\n",
      "0.6,1.35,-2,0.15,0.4,35.12,0,-0.5,101.25,1.73293,0\r\n0.01,0.01,0.02\r\n" + kDatStrings +
          "90,200,0,60\r\n95,210,70,95\r\n99,230,80,135\r\n"};
  for (const std::string& file : layouts) {
    std::string lf = file;
    std::erase(lf, '\r');
    for (const std::string& variant : {file, lf + "\n\n  \n"}) {
      Parsed p(variant);
      ASSERT_TRUE(p.read.complete()) << p.read.why.toString();
      EXPECT_EQ(p.t.fileText(), file);
    }
  }
}

// --- Reading -----------------------------------------------------------------------------------

// Header pressures in bar round to kPa with halves to even (12.5 -> 12, 37.5 -> 38), the unit
// weight comes back in kN/m3 (1.8 x 9.81 = 17.658), fields may be broken over lines, strings
// hold commas, and row numbers written as decimals round with halves to even.
TEST(DmtFileLoad, FieldsMayBeBrokenOverLinesStringsHoldCommasNumbersRound) {
  Parsed p("1.2\r\n2,4,0.125,0.375\r\n34.7,0.05,3,0,1.8,0.2\r\n"
           "\"Rossi, Milano\"\r\n\"C\",\"J\",\"S\",\"R\",\"D\",\"T\"\r\n"
           "120\r\n300\r\n130,310,12.5,13.5\r\n 99.7 , 1e2 \r\n");
  ASSERT_TRUE(p.read.complete()) << p.read.why.toString();
  EXPECT_EQ(p.t.intDeltaA, 12);
  EXPECT_EQ(p.t.intDeltaB, 38);
  EXPECT_FLOAT_EQ(p.t.sngGammaTop, 17.66f);
  EXPECT_EQ(p.t.strFirm, "Rossi, Milano");
  EXPECT_EQ(p.t.vB, std::vector<int16_t>({300, 310, 14, 100}));
}

TEST(DmtFileLoad, ZeroRowIsDroppedButKeepsItsPlaceInDepth) {
  Parsed p("1,1.6,3,0.15,0.4,34.7,0,3,0,1.73293,0.2\r\n" + kDatStrings + "120,300\r\n0,0\r\n150,330\r\n160,340\r\n");
  ASSERT_EQ(p.t.N(), 3);
  // The gap makes the depths irregular, so the next save carries them.
  EXPECT_NE(p.t.fileText().find("120,300,100\r\n150,330,140\r\n160,340,160\r\n"), std::string::npos);
}

TEST(DmtFileLoad, DepthRowsComeBackSortedWithTheirReadings) {
  Parsed p("0,0,-1,0.15,0.4,34.7,0,3,0,1.73293,0\r\n0,0,0\r\n" + kDatStrings +
           "300,500,30,300\r\n100,200,10,100\r\n200,400,20,200\r\n150,300,15,150\r\n250,450,25,100\r\n");
  EXPECT_EQ(p.t.vZ, (std::vector<float>{1.0f, 1.0f, 1.5f, 2.0f, 3.0f}));
  EXPECT_EQ(p.t.vC, (std::vector<int16_t>{10, 25, 15, 20, 30}));  // equal depths keep their file order
}

TEST(DmtFileLoad, ChecksSeeTheZeroTailSoALoadedTestIsIrregular) {
  Parsed p("1,2.8,9,0.15,0.4,34.7,0,3,0,1.73293,0.2\r\n" + kDatStrings + "100,300\r\n101,301\r\n102,302\r\n103,303\r\n"
           "104,304\r\n105,305\r\n106,306\r\n107,307\r\n108,308\r\n109,309\r\n");
  EXPECT_TRUE(p.t.blnZEditable);
  // The next save finds the step again and writes the file without depths.
  EXPECT_EQ(firstLine(p.t.fileText()), "1,2.8,9,0.15,0.4,34.7,0,3,0,1.73293,0.2");
}

TEST(DmtFileLoadError, BadRowNamesItsLineAndKeepsTheRowsBefore) {
  const std::string ab = "1,2,4,0.15,0.4,34.7,0,3,0,1.73293,0.2\r\n" + kDatStrings;
  const std::string abz = "1,2,0,0.15,0.4,34.7,0,3,0,1.73293,0\r\n" + kDatStrings;
  const struct { std::string file; int line; std::string reason; int rowsKept; } cases[] = {
      {ab + "120,300\r\n130,310\r\n140,x1\r\n150,330\r\n", 7, "B reading 'x1' is not a number", 2},
      {abz + "120,300,100\r\n130,310,40000\r\n", 6, "depth '40000' is out of range", 1},
      {abz + "120,300,100\r\n130,310\r\n\r\n", 6, "incomplete row: 2 of 3 fields", 1},
  };
  for (const auto& c : cases) {
    Parsed p(c.file);
    EXPECT_EQ(p.read.status, LoadStatus::Partial);
    EXPECT_EQ(p.read.why.toString(), "t.dat:" + std::to_string(c.line) + ": " + c.reason);
    EXPECT_EQ(p.t.N(), c.rowsKept) << c.reason;
  }
}

// Bad numbers, a byte-order mark, a cut last line and rows with a field too many or too few:
// each is told at its own line and never read as a zero or a shifted column. (Whole rows
// sharing a line, or a row broken over lines, still read.)
TEST(DmtFileLoadError, BadInputIsToldAtItsLineAndNeverReadAsData) {
  const std::string strings = kDatStrings;
  const auto head = [&](std::string count, std::string zw) {
    return "1," + std::string("2,") + count + ",0.15,0.4,34.7,0," + zw + ",0,1.73293,0.2\r\n" + strings;
  };
  const std::string ab = head("4", "3");
  const struct { std::string file; LoadStatus status; int line; std::string words; int rows; } cases[] = {
      {head("x", "3") + "120,300\r\n", LoadStatus::Partial, 1, "row count 'x' is not a number", 0},
      {head("4", "nan") + "120,300\r\n", LoadStatus::Partial, 1, "water table depth 'nan' is not a number", 0},
      {head("4", "1e308") + "120,300\r\n", LoadStatus::Partial, 1, "'1e308' is not a number", 0},
      {head("4", "") + "120,300\r\n", LoadStatus::Partial, 1, "'' is not a number", 0},
      {ab + "120,300\r\n0x10,310\r\n", LoadStatus::Partial, 6, "A reading '0x10' is not a number", 1},
      {ab + "120,300\r\n,310\r\n", LoadStatus::Partial, 6, "A reading '' is not a number", 1},
      {ab + "120,300\r\n130,31", LoadStatus::Partial, 6, "the file ends early", 1},
      {ab + "120,300\r\n130,310,5\r\n140,320\r\n", LoadStatus::Partial, 6, "a field too many or too few", 2},
      {ab + "120,300,130\r\n310,320\r\n", LoadStatus::Partial, 5, "a field too many or too few", 1},
      {ab + "120,300\r\n130\r\n", LoadStatus::Partial, 6, "incomplete row: 1 of 2", 1},
      {"\xEF\xBB\xBF" + ab + "120,300\r\n130,310\r\n", LoadStatus::Complete, 0, "", 2},
  };
  for (const auto& c : cases) {
    Parsed p(c.file);
    EXPECT_EQ(p.read.status, c.status) << c.words;
    EXPECT_EQ(p.read.why.line, c.line) << c.words;
    EXPECT_NE(p.read.why.reason.find(c.words), std::string::npos) << p.read.why.reason;
    EXPECT_EQ(p.t.N(), c.rows) << c.words;
    if (c.status == LoadStatus::Complete) { EXPECT_EQ(p.t.vZ[0], 1.0f) << "the mark shifts no depth"; }
  }
}

// --- Writing -----------------------------------------------------------------------------------

TEST(DmtFileSave, RowCountFieldCarriesTheCFlagInItsSign) {
  const std::string text = withRows({{1.0f, 100, 200, 50}}).fileText();
  EXPECT_EQ(firstLine(text), "1,1,-1,0.15,0.4,34.7,0,3,0,1.73293,0.2");
  EXPECT_NE(text.find("\r\n0,0,0\r\n\""), std::string::npos);
  EXPECT_EQ(firstLine(withRows({{1.0f, 100, 200, 50}, {1.2f, 1, 2, 0}, {1.4f, 1, 2, 0}, {1.6f, 1, 2, 0}}).fileText()),
            "1,1.6,-3,0.15,0.4,34.7,0,3,0,1.73293,0.2");
}

TEST(DmtFileSave, DepthColumnIsCentimetresRoundedHalvesToEven) {
  // Z x 100 is a float product before it is rounded: 1.015f x 100 is 101.5f and goes to 102,
  // 0.045f x 100 is 4.5f and goes to 4 (in double they would be 101.4999986 and 4.5000002).
  EXPECT_EQ(rowsOf(withRows({{0.125f, 10, 20, 0}, {0.045f, 10, 20, 0}, {1.015f, 10, 20, 0}, {327.67f, 10, 20, 0}})
                       .fileText()),
            "10,20,12\r\n10,20,4\r\n10,20,102\r\n10,20,32767\r\n");
  // Rows without depth, or without A and B, are left out.
  EXPECT_EQ(rowsOf(withRows({{1.0f, 10, 20, 0}, {0.0f, 10, 20, 0}, {1.3f, 0, 0, 40}, {1.35f, -1, 0, 0}, {2.0f, 0, 7, 5}})
                       .fileText()),
            "10,20,0,100\r\n0,7,5,200\r\n");
}

TEST(DmtFileSave, StringsLoseDoubleQuotesAndTravelAsWindows1252) {
  cls_DmtTEST t;
  t.strFirm = "Studio \"Alfa\"";
  t.strSite = "Città";
  EXPECT_NE(t.fileText().find("\"Studio 'Alfa'\",\"\"\r\n\"\",\"Citt\xE0\""), std::string::npos);
}

TEST(DmtFileChecks, RegularStepIsFoundDespiteFloatNoise) {
  cls_DmtTEST t;
  for (float z = 0.1f; t.vZ.size() < 50; z += 0.1f) t.vZ.push_back(z);  // accumulates float error
  t.checkZeditable();
  EXPECT_FLOAT_EQ(t.sngDeltaZ, 0.1f);
  EXPECT_FALSE(t.blnZEditable);
}

// --- Reading a buffer ------------------------------------------------------------------------

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
