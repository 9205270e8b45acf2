#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "dissipation/cls_DissTEST.h"
#include "scratch_folder.h"
#include "synthetic_dissipation.h"

namespace koru {
namespace {

namespace fs = std::filesystem;
using testing::ScratchFolder;

// A test with every kind of header line, some left out by their conditions.
cls_DissTEST fullRecord(const fs::path& folder) {
  cls_DissTEST t;
  t.folder = folder;
  t.Firm = "Studio Rossi";
  t.Customer = "Comune";
  t.Site = "   ";  // blank: left out
  t.Data = "5 MAR 2008";
  t.TstName = "D1";
  t.setZd(12.3f);
  t.DeltaA = 15;
  t.DeltaB = 40;
  t.BFinal = 612.5f;
  t.U0 = 0;
  t.isUoSpecified = true;  // written although 0
  t.Id = 0;                // not written
  t.OCR = 1.5f;
  t.Mh = 4.25f;
  t.startDate = "2008/3/5";
  t.startTime = "10:20:30";
  t.setDissData({0.25f, 1.5f, 1234.5f}, {560, 235, 300});
  return t;
}

const std::string kFullFile =
    "DISSIP2002\r\n"
    "FIRM = \"Studio Rossi\"\r\n"
    "CUSTOMER = \"Comune\"\r\n"
    "DATE = \"5 MAR 2008\"\r\n"
    "TESTNAME = \"D1\"\r\n"
    "ZD = 12.3\r\n"
    "DELTAA = 15\r\n"
    "DELTAB = 40\r\n"
    "BFINAL = 612.5\r\n"
    "U0 = 0\r\n"
    "OCR = 1.5\r\n"
    "MH = 4.25\r\n"
    "STARTDATE = 2008/3/5\r\n"
    "STARTTIME = 10:20:30\r\n"
    "T =  0.25, A =   560\r\n"
    "T =  1.50, A =   235\r\n"
    "T =1234.50, A =   300\r\n";

struct Loaded {
  cls_DissTEST test;
  LoadStatus status = LoadStatus::Unreadable;
  Diagnostic why;
};

Loaded loadBytes(const ScratchFolder& dir, const std::string& bytes, const char* name = "in.dis") {
  Loaded out;
  out.test.filename = dir.write(name, bytes);
  out.status = out.test.parseFile(&out.why);
  return out;
}

// --- Writer ---------------------------------------------------------------------------------------

TEST(DissFileWriter, WritesHeaderLinesByTheirConditionsThenOneLinePerReading) {
  EXPECT_EQ(fullRecord("f").strDisFile(), kFullFile);
}

TEST(DissFileWriter, TestWithoutReadingsWritesOnlyItsHeader) {
  cls_DissTEST t;
  t.folder = "f";
  t.TstName = "D2";
  t.setZd(3.0f);
  EXPECT_EQ(t.strDisFile(), "DISSIP2002\r\nTESTNAME = \"D2\"\r\nZD = 3\r\n");
  EXPECT_EQ(cls_DissTEST{}.strDisFile(), "DISSIP2002\r\n");
}

TEST(DissFileWriter, ReadingColumnsAreRightAlignedInSixAndNeverCut) {
  cls_DissTEST t;
  t.setDissData({0.0f, 12.345f, 99999.0f}, {-5, 32767, 0});
  EXPECT_EQ(t.strDisFile(),
            "DISSIP2002\r\n"
            "T =  0.00, A =    -5\r\n"
            "T = 12.35, A = 32767\r\n"
            "T =99999.00, A =     0\r\n");
}

TEST(DissFileWriter, QuotesLineBreaksAndBlanksCannotBreakTheFile) {
  cls_DissTEST t;
  t.Remark = "say \"hi\"\r\nbye";
  t.startTime = "  08:00:00 ";
  EXPECT_EQ(t.strDisFile(), "DISSIP2002\r\nREMARK = \"say 'hi'  bye\"\r\nSTARTTIME = 08:00:00\r\n");
}

TEST(DissFileWriter, SaveWritesWindows1252AndReplacesTheFile) {
  ScratchFolder dir;
  cls_DissTEST t;
  t.folder = dir.path();
  t.Firm = "Società";
  t.setZd(1.0f);
  dir.write("0100.dis", "old content that is longer than the new one ..........................");
  Diagnostic why;
  ASSERT_TRUE(t.saveFile(&why)) << why.toString();
  EXPECT_EQ(ScratchFolder::read(dir / "0100.dis"), "DISSIP2002\r\nFIRM = \"Societ\xE0\"\r\nZD = 1\r\n");
  EXPECT_FALSE(fs::exists(dir / "0100.dis.tmp~"));
}

TEST(DissFileWriter, SaveWithoutAFileNameOrIntoAMissingFolderFails) {
  cls_DissTEST t;
  Diagnostic why;
  EXPECT_FALSE(t.saveFile(&why));
  EXPECT_FALSE(why.reason.empty());
  ScratchFolder dir;
  t.filename = dir / "no" / "such" / "folder" / "x.dis";
  EXPECT_FALSE(t.saveFile(&why));
  EXPECT_EQ(why.file, t.filename);
}

// --- The program's own files survive load and save byte for byte ----------------------------------
//
// With the writer's text pinned above, this also shows that the reader puts every field back.

class DissFileRoundTrip : public ::testing::TestWithParam<int> {
 protected:
  cls_DissTEST record(const fs::path& folder) const {
    switch (GetParam()) {
      case 0: return fullRecord(folder);
      case 1: {  // header only
        cls_DissTEST t;
        t.folder = folder;
        t.Job = "  padded job  ";
        t.setZd(0.2f);
        t.Zm = 3.5f;
        t.U0 = -12.25f;
        t.isUoSpecified = true;
        t.Id = 0.35f;
        return t;
      }
      case 2: {  // a long field test: the arrays grow 11 -> 21 -> 41 on the way in
        synth::DecayModel m;
        m.Ch = 0.0005f;
        m.endFactor = 40;
        m.maxReadings = 30;
        cls_DissTEST t = synth::makeSyntheticDissipation(m, folder);
        t.Remark = "Genova ÀÈÌÒÙ €";
        return t;
      }
      default: {  // odd values: a reading at time 0, negative A, large and tiny numbers
        cls_DissTEST t;
        t.folder = folder;
        t.setZd(327.67f);
        t.Zm = 1e-5f;
        t.BFinal = 123456.7f;
        t.Mh = 1.0e20f;
        t.OCR = 0.3333333f;
        t.setDissData({0.0f, 0.004f, 0.015f, 7.777f, 31999.99f}, {0, -32768, 1, 32767, -1});
        return t;
      }
    }
  }
};

TEST_P(DissFileRoundTrip, LoadAndSaveGiveTheSameBytes) {
  ScratchFolder dir;
  const cls_DissTEST original = record(dir.path());
  ASSERT_FALSE(original.filename.empty());
  Diagnostic why;
  ASSERT_TRUE(original.saveFile(&why)) << why.toString();
  const std::string first = ScratchFolder::read(original.filename);

  cls_DissTEST back;
  back.folder = dir.path();
  back.filename = original.filename;
  ASSERT_EQ(back.parseFile(&why), LoadStatus::Complete) << why.toString();
  EXPECT_EQ(back.filename, original.filename);
  EXPECT_EQ(back.N(), original.N());
  back.filename = dir / "copy.dis";
  ASSERT_TRUE(back.saveFile(&why)) << why.toString();
  EXPECT_EQ(ScratchFolder::read(dir / "copy.dis"), first);
}

INSTANTIATE_TEST_SUITE_P(Records, DissFileRoundTrip, ::testing::Values(0, 1, 2, 3));

TEST(DissShortestForm, NumbersReadBackToTheSameText) {
  // Any float written in its shortest form reads back to a float that writes the same text.
  std::vector<float> values = {12.3f, 0.1f, 1.0f / 3.0f, 9.999999f, 8388607.0f, 1.0e-7f, 3.4e38f, 123.456789f};
  for (uint32_t bits = 0x3F800000u; bits < 0x41200000u; bits += 0x0001F3A7u) {
    float f;
    std::memcpy(&f, &bits, sizeof f);
    values.push_back(f);
  }
  for (float v : values) {
    cls_DissTEST t;
    t.Mh = v;
    const std::string file = t.strDisFile();  // the marker line, then "MH = ..."
    const std::string line = file.substr(12, file.size() - 14);
    const DissItem item = cls_DissTEST::parseItem(line);
    cls_DissTEST back;
    ASSERT_TRUE(back.setField(item.name, item.value));
    EXPECT_EQ(back.strDisFile(), file) << v;
  }
}

// --- Reader ---------------------------------------------------------------------------------------

TEST(DissFileReader, DepthLineRenamesTheFileInTheSameFolder) {
  ScratchFolder dir;
  Loaded in = loadBytes(dir, "DISSIP2002\r\nZD = 12.3\r\n", "whatever.dis");
  ASSERT_EQ(in.status, LoadStatus::Complete);
  EXPECT_EQ(in.test.filename, dir / "1230.dis");
}

TEST(DissFileReader, KeysComeInAnyOrderAndCaseWithUnknownKeysIgnored) {
  ScratchFolder dir;
  Loaded in = loadBytes(dir,
                        "DISSIP2002\n"
                        "mh = 3\n"
                        "  Firm=\"A\" , colour = \"blue\", deltab = 35\n"
                        "STARTTIME = 08:00:00,U0 = 12.5\n"
                        "\n"
                        "T = 1, A = 400\n");
  ASSERT_EQ(in.status, LoadStatus::Complete) << in.why.toString();
  EXPECT_EQ(in.test.strDisFile(),
            "DISSIP2002\r\nFIRM = \"A\"\r\nDELTAB = 35\r\nU0 = 12.5\r\nMH = 3\r\nSTARTTIME = 08:00:00\r\n"
            "T =  1.00, A =   400\r\n");
}

TEST(DissFileReader, CommaInsideAQuotedTextLosesWhatFollows) {
  ScratchFolder dir;
  Loaded in = loadBytes(dir, "DISSIP2002\r\nFIRM = \"Rossi, Bianchi & C.\"\r\nJOB = \"7\"\r\n");
  ASSERT_EQ(in.status, LoadStatus::Complete);
  EXPECT_EQ(in.test.Firm, "Rossi");
  EXPECT_EQ(in.test.Job, "7");
}

TEST(DissFileReader, HeaderWithoutReadingsGivesNoReadingsEvenOverAnEarlierTest) {
  ScratchFolder dir;
  Loaded in;
  in.test.setDissData({1, 2, 3}, {3, 2, 1});
  in.test.Firm = "earlier";
  in.test.filename = dir.write("h.dis", "DISSIP2002\r\nTESTNAME = \"H\"\r\n");
  ASSERT_EQ(in.test.parseFile(), LoadStatus::Complete);
  EXPECT_EQ(in.test.N(), 0);
  EXPECT_TRUE(in.test.vT().empty());
  EXPECT_EQ(in.test.TstName, "H");
  EXPECT_EQ(in.test.Firm, "") << "a key the file leaves out reads as empty";
}

TEST(DissFileReader, ReadingValuesCountAndTheirNamesDoNotAndACutsTowardsZero) {
  ScratchFolder dir;
  Loaded in = loadBytes(dir, "DISSIP2002\r\nT = 0, A = 560\r\nT = 1, A = 400.9\r\nX = 2, Y = -300.9\r\ngarbage, A = 5\r\n");
  ASSERT_EQ(in.status, LoadStatus::Complete);
  EXPECT_EQ(in.test.vT(), (std::vector<float>{0.0f, 1.0f, 2.0f, 0.0f}));  // a reading at time 0 is kept
  EXPECT_EQ(in.test.vA(), (std::vector<int16_t>{560, 400, -300, 5}));
}

TEST(DissFileReader, WrongMarkerIsNotValidAndChangesNothing) {
  ScratchFolder dir;
  for (const std::string bytes : {"DISSIP2001\r\nFIRM = \"X\"\r\n", "", "\r\n\r\n", "FIRM = \"X\"\r\nDISSIP2002\r\n"}) {
    cls_DissTEST t;
    t.Firm = "kept";
    t.setDissData({1}, {2});
    t.filename = dir.write("bad.dis", bytes);
    Diagnostic why;
    EXPECT_EQ(t.parseFile(&why), LoadStatus::WrongFormat);
    EXPECT_EQ(why.reason, "File not valid");
    EXPECT_EQ(t.Firm, "kept");
    EXPECT_EQ(t.N(), 1);
    EXPECT_EQ(t.filename, dir / "bad.dis");
  }
}

TEST(DissFileReader, MissingFileIsReportedAndChangesNothing) {
  ScratchFolder dir;
  cls_DissTEST t;
  t.Firm = "kept";
  t.filename = dir / "none.dis";
  Diagnostic why;
  EXPECT_EQ(t.parseFile(&why), LoadStatus::Unreadable);
  EXPECT_EQ(why.file, dir / "none.dis");
  EXPECT_FALSE(why.reason.empty());
  EXPECT_EQ(t.Firm, "kept");
}

TEST(DissFileReader, BrokenLinesKeepWhatWasReadAndSayWhere) {
  ScratchFolder dir;
  const struct {
    const char* bytes;
    int line;
    const char* reason;  // found in the reason given
    std::vector<int16_t> a;
  } cases[] = {
      {"DISSIP2002\r\nFIRM = \"F\"\r\nT = 1, A = 500\r\nT = 2", 4, "A value is missing", {500}},
      {"DISSIP2002\r\nT = 1, A = 500\r\nT = 2, A = 40000\r\n", 3, "out of range", {500}},
      {"DISSIP2002\r\nT = 2", 2, "", {}},  // no empty slots are left behind
      {"DISSIP2002\r\nDELTAA = 99999\r\nT = 1, A = 500\r\n", 2, "", {}},
  };
  for (const auto& c : cases) {
    const Loaded in = loadBytes(dir, c.bytes);
    EXPECT_EQ(in.status, LoadStatus::Partial) << c.bytes;
    EXPECT_EQ(in.why.line, c.line) << c.bytes;
    EXPECT_NE(in.why.reason.find(c.reason), std::string::npos) << in.why.reason;
    EXPECT_EQ(in.test.vA(), c.a) << c.bytes;
    EXPECT_EQ(in.test.vT().size(), c.a.size()) << c.bytes;
    EXPECT_EQ(in.test.N(), static_cast<int>(c.a.size())) << c.bytes;
  }
  EXPECT_EQ(loadBytes(dir, cases[0].bytes).test.Firm, "F");
  EXPECT_EQ(loadBytes(dir, cases[3].bytes).test.DeltaA, 0);
}

TEST(DissFileReader, ZeroAInTheLastSlotStopsGrowthAndTheNextReadingFails) {
  ScratchFolder dir;
  std::string bytes = "DISSIP2002\r\n";
  for (int i = 0; i < 13; ++i) {
    const int a = i == 10 ? 0 : 500 - i;
    bytes += "T = " + std::to_string(i + 1) + ", A = " + std::to_string(a) + "\r\n";
  }
  Loaded in = loadBytes(dir, bytes);
  EXPECT_EQ(in.status, LoadStatus::Partial);
  EXPECT_EQ(in.why.line, 13) << "the twelfth reading";
  EXPECT_EQ(in.test.N(), 11);
  EXPECT_EQ(in.test.vA().size(), 11u);
  EXPECT_EQ(in.test.vA()[10], 0);

  // The same file with a non-zero A there grows past the bound.
  bytes.replace(bytes.find("A = 0"), 5, "A = 7");
  Loaded ok = loadBytes(dir, bytes);
  EXPECT_EQ(ok.status, LoadStatus::Complete);
  EXPECT_EQ(ok.test.N(), 13);
}

// --- parseItem ------------------------------------------------------------------------------------

TEST(DissParseItem, SplitsNameAndValueByTheirQuotingRules) {
  struct Case {
    const char* field;
    const char* name;
    const char* value;
  } cases[] = {
      {"FIRM = \"Studio\"", "FIRM", "Studio"},
      {"  FIRM   =   \"  spaced  \"", "FIRM", "  spaced  "},
      {"ZD=12.3", "ZD", "12.3"},
      {"STARTTIME = 10:20:30", "STARTTIME", "10:20:30"},
      {"FIRM = \"\"", "FIRM", ""},
      {"FIRM = \"open to the end", "FIRM", "open to the end"},
      {"no equal sign", "", ""},
      {"", "", ""},
      {"A = 1 = 2", "A", "1 = 2"},
      {"FIRM = \"a\" JOB = \"b\"", "JOB", "b"},
      {"FIRM = \"a\" tail", "FIRM", "a"},
      {"= 5", "", "5"},
      {"X =", "X", ""},
  };
  for (const auto& c : cases) {
    const DissItem item = cls_DissTEST::parseItem(c.field);
    EXPECT_EQ(item.name, c.name) << c.field;
    EXPECT_EQ(item.value, c.value) << c.field;
  }
}

TEST(DissSetField, NumbersAndFlagsGoWhereTheirNamesSay) {
  cls_DissTEST t;
  t.folder = "f";
  EXPECT_TRUE(t.setField("zd", "2.5"));
  EXPECT_EQ(t.filename, fs::path("f") / "0250.dis");
  EXPECT_TRUE(t.setField("Zm", "1.5"));
  EXPECT_TRUE(t.setField("BFINAL", "600"));
  EXPECT_TRUE(t.setField("Id", "0.6"));
  EXPECT_TRUE(t.setField("OCR", "not a number"));
  EXPECT_TRUE(t.setField("WHATEVER", "1"));
  EXPECT_FALSE(t.isUoSpecified);
  EXPECT_TRUE(t.setField("u0", "0"));
  EXPECT_TRUE(t.isUoSpecified);
  EXPECT_FLOAT_EQ(t.Zm, 1.5f);
  EXPECT_FLOAT_EQ(t.BFinal, 600.0f);
  EXPECT_FLOAT_EQ(t.Id, 0.6f);
  EXPECT_EQ(t.OCR, 0.0f);
  EXPECT_TRUE(t.setField("DELTAA", "14.5"));
  EXPECT_EQ(t.DeltaA, 14) << "halves to even";
  EXPECT_FALSE(t.setField("DELTAB", "-40000"));
  EXPECT_EQ(t.DeltaB, 0);
}

// --- Listing and report texts ---------------------------------------------------------------------

TEST(DissTexts, TabularListingHasUnitsAndNoStart) {
  EXPECT_EQ(fullRecord("f").strTabularData(),
            "FIRM = Studio Rossi\r\n"
            "CUSTOMER = Comune\r\n"
            "DATE = 5 MAR 2008\r\n"
            "TESTNAME = D1\r\n"
            "ZD = 12.3 m\r\n"
            "DELTAA = 15 kPa\r\n"
            "DELTAB = 40 kPa\r\n"
            "BFINAL = 612.5 kPa\r\n"
            "U0 = 0 kPa\r\n"
            "OCR = 1.5\r\n"
            "Mh = 4.25 MPa\r\n"
            "T =  0.25 min, A =   560\r\n"
            "T =  1.50 min, A =   235\r\n"
            "T =1234.50 min, A =   300\r\n");
}

TEST(DissTexts, ReportHeaderShowsTheStartAsDayMonthYear) {
  cls_DissTEST t = fullRecord("f");
  t.Zm = 2.5f;
  EXPECT_EQ(t.reportHeader(),
            "FIRM = Studio Rossi\r\n"
            "CUSTOMER = Comune\r\n"
            "DATE = 5 MAR 2008\r\n"
            "TESTNAME = D1\r\n"
            "START DATE = 5 Mar 2008\r\n"
            "START TIME = 10:20:30\r\n"
            "ZD = 12.3 m\r\n"
            "ZM = 2.5 kPa\r\n"
            "DELTAA = 15 kPa\r\n"
            "DELTAB = 40 kPa\r\n"
            "BFINAL = 612.5 kPa\r\n"
            "U0 = 0 kPa\r\n"
            "OCR = 1.5\r\n"
            "Mh = 4.25 MPa\r\n");
  t.startTime.clear();
  EXPECT_EQ(t.reportHeader().find("START"), std::string::npos);
}

TEST(DissTexts, ReportDataHasThreeDecimalMinutesAndKpa) {
  EXPECT_EQ(fullRecord("f").reportData(),
            "T =    0.250 min, A =   560 kPa\r\n"
            "T =    1.500 min, A =   235 kPa\r\n"
            "T = 1234.500 min, A =   300 kPa\r\n");
}

TEST(DissTexts, ReportResultsGiveTflexChMhKhAndPoFinal) {
  cls_DissTEST t = fullRecord("f");
  t.FlexT = 60.0f;
  // Po = 1.05 (300 - 0 + 15) - 0.05 (612.5 - 0 - 40) = 302.125
  EXPECT_EQ(t.reportResults(),
            "TFlex = 60.00 min\r\n"
            "Ch,OC = 1.94 * 10 ^ - 3 cm^2 / sec\r\n"
            " Mh = 4.25 MPa  Kh = 4.58 * 10 ^ - 8 cm / sec\r\n"
            "Po,final = 302.1 kPa\r\n");
}

}  // namespace
}  // namespace koru

// --- Reading a buffer ------------------------------------------------------------------------

namespace koru {
namespace {

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
