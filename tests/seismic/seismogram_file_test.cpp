// The ".kor" file: its exact layout, the round trip of what the program writes, the labels of
// older versions, and files that are damaged or hostile.

#include <gtest/gtest.h>

#include <string>

#include "scratch_folder.h"
#include "seismic/cls_SEISMOGRAM.h"
#include "synthetic_strike.h"

namespace {

using koru::cls_SEISMOGRAM;
using koru::Diagnostic;
using koru::testing::ScratchFolder;

// A small record whose file is written out by hand below.
cls_SEISMOGRAM smallRecord() {
  cls_SEISMOGRAM r;
  r.Z = 3.2f;
  r.distG1G2 = 0.5f;
  r.distHammer = 1.4f;
  r.sngTcamp = 100;
  r.Gain = 100;
  r.triggerType = 0;
  r.LoopS = 100;
  r.triggerSensibility = 10;
  r.Data = "12/03/2024";
  r.hour = "10:15:00";
  r.firmwareMajor = 3;
  r.firmwareMinor = 1;
  r.hardwareMajor = 2;
  r.hardwareMinor = 1;
  r.setIntN(3);
  r.storeG1(127, 0);
  r.storeG2(128.5f, 0);
  r.storeG1(127.125f, 1);
  r.storeG2(0, 1);
  r.storeG1(255, 2);
  r.storeG2(12345.5f, 2);
  return r;
}

const char* const kSmallFile =
    "Z [m] = 3.20\r\n"
    "Wave Type = Vs\r\n"
    "DistG1G2 [m] = 0.50\r\n"
    "DistHammer [m] = 1.40\r\n"
    "Sample Time [us] = 100 \r\n"
    "NSamples = 3\r\n"
    "Gain = 100\r\n"
    "Trigger Type = Autotrigger\r\n"
    "Loop Samples = 100\r\n"
    "Trigger Sensibility = 10\r\n"
    "Date = 12/03/2024\r\n"
    "Hour = 10:15:00\r\n"
    "Firmware = 3 - 1\r\n"
    "Hardware = 2 - 1\r\n"
    "\r\n"
    "127     128.5\r\n"
    "127.125   0    \r\n"
    "255     12345.5\r\n";

// Header lines before the samples, for hand-made files.
std::string header(const std::string& extra = "", int n = 3, const std::string& tcamp = "100") {
  return "Z [m] = 2.00\r\nWave Type = Vs\r\nDistG1G2 [m] = 0.50\r\nDistHammer [m] = 1.40\r\nSample Time [us] = " +
         tcamp + " \r\nNSamples = " + std::to_string(n) +
         "\r\nGain = 100\r\nTrigger Type = External\r\nTrigger Delay = 2\r\n" + extra +
         "Date = d\r\nHour = h\r\nFirmware = 1 - 2\r\nHardware = 3 - 4\r\n\r\n";
}

TEST(SeismogramFile, WritesHeaderKeysTrailingBlanksAndPaddedColumns) {
  EXPECT_EQ(smallRecord().fileText(), kSmallFile);
}

TEST(SeismogramFile, WritesOptionalLinesOnlyWhenTheyHoldSomething) {
  auto r = smallRecord();
  r.delaySampleG2 = 50;
  r.notes = "wet clay";
  r.triggerType = 1;
  r.TrigDelay = 4;
  r.intWaveType = 1;
  const std::string text = r.fileText();
  EXPECT_NE(text.find("Wave Type = Vp\r\n"), std::string::npos);
  EXPECT_NE(text.find("Sample Time [us] = 100 \r\nDelay Sample G2 [us] = 50 \r\nNSamples = 3\r\n"), std::string::npos);
  EXPECT_NE(text.find("Trigger Type = External\r\nTrigger Delay = 4\r\nDate = "), std::string::npos);
  EXPECT_EQ(text.find("Loop Samples"), std::string::npos);
  EXPECT_EQ(text.find("Trigger Sensibility"), std::string::npos);
  EXPECT_NE(text.find("Hardware = 2 - 1\r\nNotes = wet clay\r\n\r\n127 "), std::string::npos);

  r.triggerType = 2;
  r.notes.clear();
  const std::string immediate = r.fileText();
  EXPECT_NE(immediate.find("Trigger Type = Immediate\r\nDate = "), std::string::npos);
  EXPECT_EQ(immediate.find("Trigger Delay"), std::string::npos);
  EXPECT_EQ(immediate.find("Notes"), std::string::npos);
  EXPECT_NE(immediate.find("Hardware = 2 - 1\r\n\r\n127 "), std::string::npos);
}

TEST(SeismogramFile, ProgramWrittenFilesSurviveLoadAndSaveByteForByte) {
  ScratchFolder dir;
  std::vector<cls_SEISMOGRAM> records;
  records.push_back(smallRecord());
  koru::synth::StrikeSettings shear;
  records.push_back(koru::synth::makeSyntheticStrike(shear));
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
  auto immediate = smallRecord();
  immediate.triggerType = 2;
  immediate.Gain = 20480;
  records.push_back(immediate);

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

TEST(SeismogramFile, ReadsBackWhatWasWritten) {
  ScratchFolder dir;
  auto r = smallRecord();
  r.delaySampleG2 = 50;
  r.notes = "note";
  r.triggerType = 1;
  r.TrigDelay = 3;
  r.intWaveType = 1;
  ASSERT_EQ(r.saveFile(dir / "a.kor"), 0);
  cls_SEISMOGRAM back;
  ASSERT_EQ(back.loadFile(dir / "a.kor"), 0);
  EXPECT_FLOAT_EQ(back.Z, 3.2f);
  EXPECT_EQ(back.intWaveType, 1);
  EXPECT_EQ(back.strWaveType(), "Vp");
  EXPECT_FLOAT_EQ(back.distG1G2, 0.5f);
  EXPECT_FLOAT_EQ(back.distHammer, 1.4f);
  EXPECT_FLOAT_EQ(back.sngTcamp, 100);
  EXPECT_FLOAT_EQ(back.delaySampleG2, 50);
  EXPECT_FLOAT_EQ(back.Gain, 100);
  EXPECT_EQ(back.triggerType, 1);
  EXPECT_EQ(back.TrigDelay, 3);
  EXPECT_EQ(back.Data, "12/03/2024");
  EXPECT_EQ(back.hour, "10:15:00");
  EXPECT_EQ(back.notes, "note");
  EXPECT_EQ(back.firmwareMajor, 3);
  EXPECT_EQ(back.firmwareMinor, 1);
  EXPECT_EQ(back.hardwareMajor, 2);
  EXPECT_EQ(back.hardwareMinor, 1);
  EXPECT_EQ(back.vG1r(), (std::vector<float>{127, 127.125f, 255}));
  EXPECT_EQ(back.vG2r(), (std::vector<float>{128.5f, 0, 12345.5f}));
  // Means come from the running sums; an external trigger at 100 us keeps 25 start samples out
  // of the extremes, which here is every sample.
  EXPECT_FLOAT_EQ(back.mediaG1r, (127 + 127.125f + 255) / 3);
  EXPECT_EQ(back.maxG1R(), 0);
  EXPECT_EQ(back.minG1R(), 255);
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
  EXPECT_EQ(r.deviceType, 1);
  // "Device Type" stands for the older probes, which reported no words.
  EXPECT_EQ(r.firmwareMajor, 0);
  EXPECT_EQ(r.firmwareMinor, 0);
  EXPECT_EQ(r.hardwareMajor, 0);
  EXPECT_EQ(r.hardwareMinor, 0);
  EXPECT_FLOAT_EQ(r.K4mV, 3.3f * 1000 / 1 / 256);  // device type 1: 3.3 V, gain absent: 1
  EXPECT_FLOAT_EQ(r.loadZ(file), 0);               // only "Z [m]" is a depth for loadZ
  // Written again, the file has the labels of today.
  const std::string again = r.fileText();
  EXPECT_EQ(again.rfind("Z [m] = 4.50\r\n", 0), 0u);
  EXPECT_EQ(again.find("Zcenter"), std::string::npos);
  EXPECT_EQ(again.find("Device Type"), std::string::npos);
}

TEST(SeismogramFile, MissingLinesKeepTheDefaultsOfANewRecord) {
  ScratchFolder dir;
  const auto file = dir.write(
      "plain.kor", "Sample Time [us] = 100\r\nNSamples = 2\r\nNoise = 3\r\nColour = red\r\n\r\n1 2\r\n3 4\r\n");
  cls_SEISMOGRAM r;
  ASSERT_EQ(r.loadFile(file), 0);
  EXPECT_EQ(r.delaySampleG2, 0);
  EXPECT_EQ(r.intWaveType, 0);
  EXPECT_EQ(r.triggerType, 0);
  EXPECT_FLOAT_EQ(r.Gain, 1);
  EXPECT_EQ(r.get_elabString(), "6;0;-1");
}

TEST(SeismogramFile, GainBelowOneLoadsAsOne) {
  ScratchFolder dir;
  for (const char* gain : {"0", "0.25", "-40"}) {
    const auto file = dir.write("g.kor", header(std::string("Gain = ") + gain + "\r\n", 1) + "1 1\r\n");
    cls_SEISMOGRAM r;
    ASSERT_EQ(r.loadFile(file), 0) << gain;
    EXPECT_FLOAT_EQ(r.Gain, 1) << gain;
  }
}

TEST(SeismogramFile, ParsesWordsWaveTypeAndTriggerType) {
  ScratchFolder dir;
  const auto file = dir.write(
      "w.kor",
      "Wave Type = vp\r\nTrigger Type = Sometimes\r\nSample Time [us] = 100\r\nNSamples = 1\r\nFirmware =  12 -  7 \r\n"
      "Hardware = 5-6\r\n\r\n1   2\r\n");
  cls_SEISMOGRAM r;
  r.triggerType = 1;
  ASSERT_EQ(r.loadFile(file), 0);
  EXPECT_EQ(r.intWaveType, 0);  // only "Vp" exactly
  EXPECT_EQ(r.triggerType, 1);  // an unknown word leaves the field
  EXPECT_EQ(r.firmwareMajor, 12);
  EXPECT_EQ(r.firmwareMinor, 7);
  EXPECT_EQ(r.hardwareMajor, 5);
  EXPECT_EQ(r.hardwareMinor, 6);
}

TEST(SeismogramFile, LongValuesAreWrittenUnpaddedAndReadBack) {
  ScratchFolder dir;
  cls_SEISMOGRAM r = smallRecord();
  const std::string text = r.fileText();
  EXPECT_NE(text.find("\r\n127.125   0    \r\n"), std::string::npos);
  const auto file = dir.write("x.kor", text);
  cls_SEISMOGRAM back;
  ASSERT_EQ(back.loadFile(file), 0);
  EXPECT_FLOAT_EQ(back.vG1r()[1], 127.125f);
  EXPECT_FLOAT_EQ(back.vG2r()[2], 12345.5f);
}

TEST(SeismogramFile, FewerSampleLinesLeaveZerosAndMoreAreAnError) {
  ScratchFolder dir;
  cls_SEISMOGRAM fewer;
  ASSERT_EQ(fewer.loadFile(dir.write("few.kor", header("", 4) + "10 20\r\n\r\n30 40\r\n")), 0);
  EXPECT_EQ(fewer.vG1r(), (std::vector<float>{10, 30, 0, 0}));
  EXPECT_EQ(fewer.vG2r(), (std::vector<float>{20, 40, 0, 0}));

  cls_SEISMOGRAM more;
  Diagnostic why;
  EXPECT_EQ(more.loadFile(dir.write("more.kor", header("", 2) + "1 2\r\n3 4\r\n5 6\r\n"), &why), 1);
  EXPECT_EQ(why.line, 17);
  EXPECT_EQ(more.vG1r(), (std::vector<float>{1, 3}));  // what was read stays
}

TEST(SeismogramFile, LoadZReadsOnlyTheDepthLine) {
  ScratchFolder dir;
  cls_SEISMOGRAM r;
  r.Z = 9;
  EXPECT_FLOAT_EQ(r.loadZ(dir.write("z.kor", header() + "1 2\r\n")), 2.0f);
  EXPECT_FLOAT_EQ(r.Z, 9);
  EXPECT_FLOAT_EQ(r.loadZ(dir.write("noz.kor", "Wave Type = Vs\r\n\r\n1 2\r\n")), 0);
  Diagnostic why;
  EXPECT_FLOAT_EQ(r.loadZ(dir / "missing.kor", &why), 0);
  EXPECT_FALSE(why.reason.empty());
}

TEST(SeismogramFile, LoadHeaderReadsTheHeaderAndNoSamples) {
  ScratchFolder dir;
  cls_SEISMOGRAM r;
  ASSERT_EQ(r.loadHeaderSeismogram(dir.write("h.kor", header("", 3) + "10 20\r\n30 40\r\n")), 0);
  EXPECT_FLOAT_EQ(r.Z, 2);
  EXPECT_EQ(r.intN(), 3);
  EXPECT_EQ(r.vG1r(), (std::vector<float>{0, 0, 0}));
}

TEST(SeismogramFile, ReadsLfOnlyLinesAsWell) {
  ScratchFolder dir;
  cls_SEISMOGRAM r;
  ASSERT_EQ(r.loadFile(dir.write("lf.kor", "Z [m] = 1.5\nSample Time [us] = 100\nNSamples = 2\n\n5 6\n7 8\n")), 0);
  EXPECT_FLOAT_EQ(r.Z, 1.5f);
  EXPECT_EQ(r.vG2r(), (std::vector<float>{6, 8}));
}

TEST(SeismogramFile, HostileHeadersAreRejectedOrBoundedWithADiagnostic) {
  ScratchFolder dir;
  struct Case {
    std::string text;
    int status;
    std::string reasonPart;
  };
  const std::vector<Case> cases = {
      {"Sample Time [us] = 100\r\nNSamples = -5\r\n\r\n", 1, "negative"},
      {"Sample Time [us] = 0\r\nNSamples = 5\r\n\r\n1 1\r\n", 1, "sample time"},
      {"Sample Time [us] = 0.4\r\nNSamples = 5\r\n\r\n1 1\r\n", 1, "sample time"},
      {"Sample Time [us] = -100\r\nNSamples = 5\r\n\r\n1 1\r\n", 1, "sample time"},
      {"Sample Time [us] = NaN\r\nNSamples = 5\r\n\r\n1 1\r\n", 1, "sample time"},
      {"NSamples = 5\r\n\r\n1 1\r\n", 1, "sample time"},
      {"Sample Time [us] = 100\r\n\r\n1 1\r\n", 1, "no samples"},
      {"Sample Time [us] = 100\r\nNSamples = 5\r\nLoop Samples = 99999\r\n\r\n", 1, "loop samples"},
      {"Sample Time [us] = 100\r\nNSamples = 5\r\nFirmware = 1 - 1e9\r\n\r\n", 1, "firmware"},
      {"Sample Time [us] = 100\r\nNSamples = 5\r\n", 1, "header"},
      {"", 1, "header"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    cls_SEISMOGRAM r;
    Diagnostic why;
    EXPECT_EQ(r.loadFile(dir.write("bad.kor", c.text), &why), c.status);
    EXPECT_NE(why.reason.find(c.reasonPart), std::string::npos) << why.reason;
  }
  // A sample count beyond 16 bits is taken as the largest one, and nothing more is allocated.
  cls_SEISMOGRAM huge;
  ASSERT_EQ(huge.loadFile(dir.write("huge.kor", "Sample Time [us] = 100\r\nNSamples = 1e30\r\n\r\n1 2\r\n")), 0);
  EXPECT_EQ(huge.intN(), 32767);
  EXPECT_EQ(huge.vG1r().size(), 32767u);

  Diagnostic why;
  cls_SEISMOGRAM none;
  EXPECT_EQ(none.loadFile(dir / "nowhere.kor", &why), 1);
  EXPECT_EQ(why.file, dir / "nowhere.kor");
}

TEST(SeismogramFile, SaveReplacesTheFileAndFailsWithADiagnostic) {
  ScratchFolder dir;
  const auto file = dir.write("s.kor", "old contents");
  EXPECT_EQ(smallRecord().saveFile(file), 0);
  EXPECT_EQ(ScratchFolder::read(file), kSmallFile);
  Diagnostic why;
  EXPECT_EQ(smallRecord().saveFile(dir / "no" / "such" / "folder.kor", &why), 1);
  EXPECT_FALSE(why.reason.empty());
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
  EXPECT_DOUBLE_EQ(cut.sumG1R(), 5);  // the samples before the extra line are counted
}

}  // namespace
