#include <gtest/gtest.h>

#include "dissipation/cls_DissTEST.h"
#include "scratch_folder.h"
#include "synthetic_dissipation.h"

namespace koru {
namespace {

using testing::ScratchFolder;

const std::string kFile =
    "DISSIP2002\r\nFIRM = \"Studio Rossi\"\r\nDATE = \"5 MAR 2008\"\r\nTESTNAME = \"D1\"\r\nZD = 12.3\r\n"
    "DELTAA = 15\r\nDELTAB = 40\r\nBFINAL = 612.5\r\nU0 = 0\r\nOCR = 1.5\r\nMH = 4.25\r\nSTARTDATE = 2008/3/5\r\n"
    "STARTTIME = 10:20:30\r\nT =  0.25, A =   560\r\nT =  1.50, A =   235\r\nT =1234.50, A =   300\r\n";

struct Loaded {
  cls_DissTEST test;
  LoadStatus status = LoadStatus::Unreadable;
  Diagnostic why;
};

Loaded loadBytes(const ScratchFolder& dir, const std::string& bytes) {
  Loaded out;
  out.test.filename = dir.write("in.dis", bytes);
  out.status = out.test.parseFile(&out.why);
  return out;
}

TEST(DissFile, ReadsAndWritesBackTheSameBytesUnderTheNameOfItsDepth) {
  ScratchFolder dir;
  Loaded in = loadBytes(dir, kFile);
  ASSERT_EQ(in.status, LoadStatus::Complete) << in.why.toString();
  EXPECT_EQ(in.test.filename, dir / "1230.dis");
  in.test.Site = "   ";  // blank texts and a zero Id are left out; U0 = 0 stays, as given
  in.test.Id = 0;
  ASSERT_TRUE(in.test.saveFile());
  EXPECT_EQ(ScratchFolder::read(dir / "1230.dis"), kFile);
  // Po = 1.05 (300 - 0 + 15) - 0.05 (612.5 - 0 - 40) = 302.125; Ch = 7 / (60 x 60); Kh = Ch / Mh.
  in.test.FlexT = 60.0f;
  EXPECT_EQ(in.test.reportResults(),
            "TFlex = 60.00 min\r\nCh,OC = 1.94 * 10 ^ - 3 cm^2 / sec\r\n"
            " Mh = 4.25 MPa  Kh = 4.58 * 10 ^ - 8 cm / sec\r\nPo,final = 302.1 kPa\r\n");
}

// A long field test (the arrays grow 11 -> 21 -> 41 on the way in) in Windows-1252, and odd values.
TEST(DissFile, SavedTestsLoadAndSaveToTheSameBytes) {
  ScratchFolder dir;
  synth::DecayModel m;
  m.Ch = 0.0005f;
  m.endFactor = 40;
  m.maxReadings = 30;
  std::vector<cls_DissTEST> records{synth::makeSyntheticDissipation(m, dir.path()), {}};
  records[1].folder = dir.path();
  records[1].setZd(327.67f);
  records[1].Mh = 1.0e20f;
  records[1].Remark = "say \"hi\"\r\nÀ €";  // quotes and line breaks cannot break the file
  records[1].setDissData({0.0f, 0.004f, 0.015f, 7.777f, 31999.99f}, {0, -32768, 1, 32767, -1});
  for (const cls_DissTEST& original : records) {
    ASSERT_TRUE(original.saveFile());
    const std::string first = ScratchFolder::read(original.filename);
    Loaded back = loadBytes(dir, first);
    ASSERT_EQ(back.status, LoadStatus::Complete) << back.why.toString();
    EXPECT_EQ(back.test.N(), original.N());
    ASSERT_TRUE(back.test.saveFile());
    EXPECT_EQ(ScratchFolder::read(original.filename), first);
  }
  EXPECT_NE(ScratchFolder::read(records[1].filename).find("REMARK = \"say 'hi'  \xC0 \x80\""), std::string::npos);
}

TEST(DissFileReader, KeysInAnyOrderAndCaseACutTowardsZeroAndACommaEndsAQuotedText) {
  ScratchFolder dir;
  Loaded in = loadBytes(dir,
                        "DISSIP2002\n"
                        "mh = 3\n"
                        "  Firm=\"Rossi, Bianchi\" , colour = \"blue\", deltab = 35\n"
                        "\n"
                        "T = 1, A = 400.9\nX = 2, Y = -300.9\n");
  ASSERT_EQ(in.status, LoadStatus::Complete) << in.why.toString();
  EXPECT_EQ(in.test.strDisFile(),
            "DISSIP2002\r\nFIRM = \"Rossi\"\r\nDELTAB = 35\r\nMH = 3\r\n"
            "T =  1.00, A =   400\r\nT =  2.00, A =  -300\r\n");
}

// A key the file lacks keeps what the record held; the readings are the file's alone.
TEST(DissFileReader, ReadingAgainKeepsTheFieldsTheFileLacks) {
  cls_DissTEST t;
  t.U0 = 35, t.isUoSpecified = true, t.Id = 0.4f, t.OCR = 2, t.Mh = 4.5f;
  t.setDissData({1, 2}, {500, 480});
  ASSERT_TRUE(t.parseDis("DISSIP2002\r\nOCR = 3\r\nT = 5, A = 400\r\n", "in.dis").complete());
  EXPECT_EQ(std::vector<float>({t.U0, t.Id, t.OCR, t.Mh}), std::vector<float>({35, 0.4f, 3, 4.5f}));
  EXPECT_TRUE(t.isUoSpecified);
  EXPECT_EQ(t.vA(), std::vector<int16_t>{400});
}

TEST(DissFileReader, WrongMarkerOrBrokenLinesKeepWhatWasReadAndSayWhere) {
  ScratchFolder dir;
  const struct { const char* bytes; LoadStatus status; int line; size_t readings; } cases[] = {{"DISSIP2001\r\nT = 1, A = 500\r\n", LoadStatus::WrongFormat, 1, 0},
               {"DISSIP2002\r\nT = 1, A = 500\r\nT = 2", LoadStatus::Partial, 3, 1},
               {"DISSIP2002\r\nT = 1, A = 500\r\nT = 2, A = 40000\r\n", LoadStatus::Partial, 3, 1},
               {"\xEF\xBB\xBF" "DISSIP2002\r\nT = 1, A = 500\r\n", LoadStatus::Complete, 0, 1},
               {"DISSIP2002\r\nZD = nan\r\nT = 1, A = 500\r\n", LoadStatus::Partial, 2, 0},
               {"DISSIP2002\r\nMH = \r\nT = 1, A = 500\r\n", LoadStatus::Partial, 2, 0},
               {"DISSIP2002\r\nT = 1, A = 500\r\nT = 0x2, A = 5\r\n", LoadStatus::Partial, 3, 1},
               {"DISSIP2002\r\nT = 1, A = 500\r\nT = 2, A = 1e9\r\n", LoadStatus::Partial, 3, 1},
               {"DISSIP2002\r\nT = 1, A = 500, T = 2\r\nA = 5\r\n", LoadStatus::Partial, 2, 1},
               {"DISSIP2002\r\nT = 1, A = 500, 7\r\nT = 2, A = 5\r\n", LoadStatus::Partial, 2, 1},
               {"DISSIP2002\r\nT = 1, A = 500\r\nT = 2, A = 5", LoadStatus::Partial, 3, 1}};
  for (const auto& c : cases) {
    const Loaded in = loadBytes(dir, c.bytes);
    EXPECT_EQ(in.status, c.status) << c.bytes;
    EXPECT_EQ(in.why.line, c.line) << c.bytes;
    EXPECT_EQ(in.test.vA().size(), c.readings) << c.bytes;
  }
}

// The arrays grow only when their top slot holds a reading: A = 0 there stops the growth.
TEST(DissFileReader, ZeroAInTheLastSlotStopsGrowthAndTheNextReadingFails) {
  ScratchFolder dir;
  std::string bytes = "DISSIP2002\r\n";
  for (int i = 0; i < 13; ++i)
    bytes += "T = " + std::to_string(i + 1) + ", A = " + std::to_string(i == 10 ? 0 : 500 - i) + "\r\n";
  Loaded in = loadBytes(dir, bytes);
  EXPECT_EQ(in.status, LoadStatus::Partial);
  EXPECT_EQ(in.why.line, 13);
  EXPECT_EQ(in.test.N(), 11);
}

// Lone CRs read as CR LF; a buffer cut at any byte keeps the readings before the cut as the
// whole file has them (only the last kept one may lose digits of A) and, unless complete, says why.
TEST(DissFileBuffer, LoneCrReadsAsCrLfAndACutAnywhereKeepsTheReadingsBeforeIt) {
  const std::string file =
      "DISSIP2002\r\nFIRM = \"F\"\r\nZD = 12.3\r\nT =  0.25, A =   560\r\nT =  1.50, A =   235\r\nT =  3.00, A =   300\r\n";
  cls_DissTEST whole, cr;
  ASSERT_TRUE(whole.parseDis(file, "t.dis").complete());
  std::string crOnly;
  for (char c : file)
    if (c != '\n') crOnly += c;
  ASSERT_TRUE(cr.parseDis(crOnly, "t.dis").complete());
  EXPECT_EQ(cr.strDisFile(), whole.strDisFile());
  for (size_t cut = 0; cut < file.size(); ++cut) {
    cls_DissTEST t;
    const LoadResult read = t.parseDis(file.substr(0, cut), "t.dis");
    EXPECT_EQ(read.complete(), read.why.reason.empty()) << cut;
    ASSERT_LE(t.vA().size(), whole.vA().size()) << cut;
    for (size_t i = 0; i < t.vA().size(); ++i)
      EXPECT_TRUE(t.vT()[i] == whole.vT()[i] && (t.vA()[i] == whole.vA()[i] || i + 1 == t.vA().size())) << cut;
  }
}

}  // namespace
}  // namespace koru
