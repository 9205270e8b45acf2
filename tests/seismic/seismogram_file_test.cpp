// The ".kor" file: its exact layout, the round trip of what the program writes, the labels of
// older versions, and files that are damaged or hostile.

#include <gtest/gtest.h>

#include <string>

#include "scratch_folder.h"
#include "seismic/cls_SEISMOGRAM.h"
#include "synthetic_strike.h"

namespace {

using koru::cls_SEISMOGRAM;
using koru::testing::ScratchFolder;

// A small record written out by hand.
const char* const kSmallFile =
    "Z [m] = 3.20\r\nWave Type = Vs\r\nDistG1G2 [m] = 0.50\r\nDistHammer [m] = 1.40\r\n"
    "Sample Time [us] = 100 \r\nNSamples = 3\r\nGain = 100\r\nTrigger Type = Autotrigger\r\n"
    "Loop Samples = 100\r\nTrigger Sensibility = 10\r\nDate = 12/03/2024\r\nHour = 10:15:00\r\n"
    "Firmware = 3 - 1\r\nHardware = 2 - 1\r\n\r\n"
    "127     128.5\r\n127.125   0    \r\n255     12345.5\r\n";

cls_SEISMOGRAM smallRecord() {
  cls_SEISMOGRAM r;
  EXPECT_TRUE(r.parseFile(kSmallFile, "small.kor").complete());
  return r;
}

TEST(SeismogramFile, ReadsAndWritesBackHeaderKeysTrailingBlanksAndPaddedColumns) {
  const cls_SEISMOGRAM r = smallRecord();
  EXPECT_EQ(r.vG2r(), (std::vector<float>{128.5f, 0, 12345.5f}));
  EXPECT_EQ(r.fileText(), kSmallFile);
}

TEST(SeismogramFile, WritesOptionalLinesOnlyWhenTheyHoldSomething) {
  auto r = smallRecord();
  r.delaySampleG2 = 50;
  r.notes = "wet clay";
  r.triggerType = 1;
  r.TrigDelay = 4;
  const std::string text = r.fileText();
  EXPECT_NE(text.find("Sample Time [us] = 100 \r\nDelay Sample G2 [us] = 50 \r\nNSamples = 3\r\n"), std::string::npos);
  EXPECT_NE(text.find("Trigger Type = External\r\nTrigger Delay = 4\r\nDate = "), std::string::npos);
  EXPECT_NE(text.find("Hardware = 2 - 1\r\nNotes = wet clay\r\n\r\n127 "), std::string::npos);
}

TEST(SeismogramFile, ProgramWrittenFilesSurviveLoadAndSaveByteForByte) {
  ScratchFolder dir;
  std::vector<cls_SEISMOGRAM> records;
  records.push_back(smallRecord());
  records.push_back(koru::synth::makeSyntheticStrike({}));
  koru::synth::StrikeSettings compression;
  compression.waveType = 1;
  compression.n = 1700;
  compression.sngTcamp = 50;
  compression.triggerType = 1;
  compression.quantise = false;  // fractions, as stacked records hold
  auto vp = koru::synth::makeSyntheticStrike(compression);
  vp.delaySampleG2 = 37;
  vp.notes = "  two  blanks, a tab\tand caf\xC3\xA9 ";
  vp.Z = 12.3456f;
  records.push_back(vp);

  for (size_t k = 0; k < records.size(); ++k) {
    SCOPED_TRACE(k);
    const auto first = dir / ("first" + std::to_string(k) + ".kor");
    const auto second = dir / ("second" + std::to_string(k) + ".kor");
    ASSERT_EQ(records[k].saveFile(first), 0);
    cls_SEISMOGRAM loaded;
    ASSERT_EQ(loaded.loadFile(first), 0);
    ASSERT_EQ(loaded.saveFile(second), 0);
    EXPECT_EQ(ScratchFolder::read(first), ScratchFolder::read(second));
    EXPECT_EQ(loaded.intN(), records[k].intN());
  }
}

TEST(SeismogramFile, ReadsTheLabelsOfOlderVersions) {
  ScratchFolder dir;
  const std::string text =
      "Zcenter = 4.50\r\nWave Type = Vs\r\nSample Time [us] = 200 \r\nNSamples = 2\r\nFirmware = 7 - 8\r\n"
      "Hardware = 1 - 1\r\nDevice Type = 1\r\n\r\n120   130\r\n140   150\r\n";
  const auto file = dir.write("old.kor", text);
  cls_SEISMOGRAM r;
  ASSERT_EQ(r.loadFile(file), 0);
  EXPECT_FLOAT_EQ(r.Z, 4.5f);
  EXPECT_EQ(r.firmwareMajor, 0) << "\"Device Type\" stands for the older probes, which reported no words";
  EXPECT_FLOAT_EQ(r.K4mV, 3.3f * 1000 / 1 / 256);  // device type 1: 3.3 V, gain absent: 1
  EXPECT_FLOAT_EQ(r.loadZ(file), 0);               // only "Z [m]" is a depth for loadZ
  // Written again, the file has the labels of today.
  EXPECT_EQ(r.fileText().rfind("Z [m] = 4.50\r\nWave Type = Vs\r\n", 0), 0u);
}

// A file cut short keeps zeros for the missing samples, but its extremes are of the samples it
// holds; walking the arrays again (prepareForEvalv) counts the zeros too.
TEST(SeismogramFile, ExtremesOfAShortFileAreOfTheSamplesRead) {
  const std::string head = "Sample Time [us] = 100\r\nTrigger Type = Immediate\r\nNSamples = 5\r\n\r\n";
  cls_SEISMOGRAM r;
  ASSERT_TRUE(r.parseFile(head + "1 2\r\n50 60\r\n40 70\r\n", "short.kor").complete());
  EXPECT_EQ(r.minG1R(), 40);  // sample 0 is a start sample
  EXPECT_EQ(r.maxG2R(), 70);
  EXPECT_DOUBLE_EQ(r.sumG2R(), 132);
  EXPECT_EQ(r.vG2r(), (std::vector<float>{2, 60, 70, 0, 0}));  // missing sample lines leave zeros
  cls_SEISMOGRAM walked;
  walked.parseHeader(head, "short.kor");
  walked.set_vG1r(r.vG1r());
  walked.prepareForEvalv();
  EXPECT_EQ(walked.minG1R(), 0);

  cls_SEISMOGRAM cut;
  const koru::LoadResult extra = cut.parseFile(head + "1 2\r\n\r\n1 2\r\n1 2\r\n1 2\r\n1 2\r\n1 2\r\n", "long.kor");
  EXPECT_EQ(extra.status, koru::LoadStatus::Partial);
  EXPECT_EQ(extra.why.file, "long.kor");
  EXPECT_EQ(extra.why.line, 11);
  EXPECT_DOUBLE_EQ(cut.sumG1R(), 5);  // the samples before the extra line are kept and counted
}

// Bad input is told at its line and never read as a zero; a byte-order mark is passed over and
// CR alone ends a line.
TEST(SeismogramFile, BadInputIsToldAtItsLine) {
  const std::string head = "Sample Time [us] = 100\r\nTrigger Type = Immediate\r\nNSamples = 2\r\n\r\n";
  const struct { std::string text; int line; std::string words; std::vector<float> g1; } cases[] = {
      {"\xEF\xBB\xBF" "Z [m] = 3.5\r\n" + head + "1 2\r\n3 4\r\n", 0, "", {1, 3}},
      {"Z [m] = 3.5\rSample Time [us] = 100\rNSamples = 2\r\r1 2\r3 4\r", 0, "", {1, 3}},
      {"Z [m] = nan\r\n" + head, 1, "Z [m] 'nan' is not a number", {}},
      {"Gain = 1e40\r\n" + head, 1, "Gain '1e40' is not a number", {}},
      {"NSamples = 2147483648\r\n" + head, 1, "out of range", {}},
      {"Sample Time [us] = \r\n" + head, 1, "is not a number", {}},
      {head + "1 2\r\n3 0x1\r\n", 6, "sample 2: not two numbers", {1, 0}},
      {head + "1 2\r\n3 4 5\r\n", 6, "sample 2: not two numbers", {1, 0}},
      {head + "1\r\n", 5, "sample 1: not two numbers", {0, 0}},
      {head + "1 2\r\n3 4", 6, "the file ends early", {1, 0}},
  };
  for (const auto& c : cases) {
    cls_SEISMOGRAM r;
    const koru::LoadResult read = r.parseFile(c.text, "t.kor");
    EXPECT_EQ(read.why.line, c.line) << c.text;
    EXPECT_NE(read.why.reason.find(c.words), std::string::npos) << read.why.reason;
    if (!c.g1.empty()) { EXPECT_EQ(r.vG1r(), c.g1) << c.text; }
    if (c.line == 0) { EXPECT_FLOAT_EQ(r.Z, 3.5f); }
  }
}

}  // namespace
