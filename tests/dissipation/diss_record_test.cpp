#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <vector>

#include "dissipation/cls_DissTEST.h"

namespace koru {
namespace {

namespace fs = std::filesystem;

// --- The depth names the file ------------------------------------------------------------------

TEST(DissDepth, NamesTheFileInTheFolderAsHundredthsOfAMetre) {
  cls_DissTEST t;
  t.folder = fs::path("site") / "DISSIP_1";
  t.setZd(12.3f);
  EXPECT_FLOAT_EQ(t.Zd(), 12.3f);
  EXPECT_EQ(t.filename, fs::path("site") / "DISSIP_1" / "1230.dis");
  t.setZd(0.5f);
  EXPECT_EQ(t.filename.filename(), "0050.dis");
  t.setZd(105.25f);
  EXPECT_EQ(t.filename.filename(), "10525.dis");
}

TEST(DissDepth, ZeroOrNegativeDepthChangesNothingAndNoFolderKeepsTheFilesOwn) {
  cls_DissTEST t;
  t.filename = fs::path("a") / "b" / "old.dis";
  t.setZd(7.0f);
  EXPECT_EQ(t.filename, fs::path("a") / "b" / "0700.dis");
  t.setZd(0.0f);
  t.setZd(-3.0f);
  EXPECT_EQ(t.filename, fs::path("a") / "b" / "0700.dis");
  EXPECT_FLOAT_EQ(t.Zd(), 7.0f);
}

TEST(DissDepth, TypedDepthMarksItSpecifiedAndEmptyTextClearsIt) {
  cls_DissTEST t;
  t.folder = "f";
  t.inputZd(" 3.4 ");
  EXPECT_TRUE(t.isZdSpecified);
  EXPECT_FLOAT_EQ(t.Zd(), 3.4f);
  EXPECT_EQ(t.filename.filename(), "0340.dis");
  t.inputZd("  ");
  EXPECT_FALSE(t.isZdSpecified);
  EXPECT_EQ(t.Zd(), 0.0f);
  EXPECT_EQ(t.filename.filename(), "0340.dis");
}

// --- Growth and trimming of the reading arrays ----------------------------------------------------

TEST(DissVectors, FirstSizingGivesElevenEmptySlots) {
  cls_DissTEST t;
  t.sizeVectors();
  EXPECT_EQ(t.vT().size(), 11u);
  EXPECT_EQ(t.vA().size(), 11u);
  EXPECT_EQ(t.N(), 0);
}

TEST(DissVectors, UpperBoundDoublesOnlyWhenTheTopSlotHoldsAReading) {
  cls_DissTEST t;
  t.sizeVectors();
  for (int i = 0; i < 10; ++i) ASSERT_TRUE(t.storeTAReadings(1.0f + i, static_cast<int16_t>(500 - i), i));
  t.sizeVectors();
  EXPECT_EQ(t.vT().size(), 11u) << "top slot (10) still empty";
  ASSERT_TRUE(t.storeTAReadings(20.0f, 400, 10));
  t.sizeVectors();
  EXPECT_EQ(t.vT().size(), 21u) << "bound 10 -> 20";
  EXPECT_EQ(t.vA().size(), 21u);
  EXPECT_FLOAT_EQ(t.vT()[3], 4.0f) << "contents kept";
  EXPECT_EQ(t.vA()[10], 400);
  EXPECT_EQ(t.N(), 11);
}

TEST(DissVectors, ZeroInTheTopSlotHoldsGrowthBackAndTheNextStoreFails) {
  for (auto [time, a] : {std::pair<float, int16_t>{15.0f, 0}, std::pair<float, int16_t>{0.0f, 300}}) {
    cls_DissTEST t;
    t.sizeVectors();
    for (int i = 0; i < 10; ++i) ASSERT_TRUE(t.storeTAReadings(1.0f + i, 500, i));
    ASSERT_TRUE(t.storeTAReadings(time, a, 10));
    t.sizeVectors();
    EXPECT_EQ(t.vT().size(), 11u);
    EXPECT_FALSE(t.storeTAReadings(16.0f, 290, 11));
    EXPECT_EQ(t.N(), 11);
  }
}

TEST(DissVectors, StoreOutsideTheArraysFailsWithoutTouchingThem) {
  cls_DissTEST t;
  t.setN(2);
  EXPECT_FALSE(t.storeTAReadings(1.0f, 1, -1));
  EXPECT_FALSE(t.storeTAReadings(1.0f, 1, 2));
  EXPECT_EQ(t.N(), 2);
  EXPECT_EQ(t.vT().size(), 2u);
}

TEST(DissVectors, FinalSizeCutsToTheLastReadingAndSetsN) {
  cls_DissTEST t;
  t.sizeVectors();
  ASSERT_TRUE(t.storeTAReadings(0.5f, 510, 0));
  ASSERT_TRUE(t.storeTAReadings(1.0f, 505, 1));
  t.setFinalSize(1);
  EXPECT_EQ(t.N(), 2);
  EXPECT_EQ(t.vT(), (std::vector<float>{0.5f, 1.0f}));
  EXPECT_EQ(t.vA(), (std::vector<int16_t>{510, 505}));
  t.setFinalSize(-1);
  EXPECT_EQ(t.N(), 0);
  EXPECT_TRUE(t.vT().empty());
}

TEST(DissVectors, NDropsContentsFieldReadingsAppendAndCopiesTakeTheTimesLength) {
  cls_DissTEST t;
  ASSERT_TRUE(t.addAcquireDissReading(0.2f, 560));
  ASSERT_TRUE(t.addAcquireDissReading(0.6f, 551));
  EXPECT_EQ(t.vT(), (std::vector<float>{0.2f, 0.6f}));
  EXPECT_EQ(t.vA(), (std::vector<int16_t>{560, 551}));
  t.setN(3);
  EXPECT_EQ(t.vA(), (std::vector<int16_t>(3, 0)));
  t.setN(-5);
  EXPECT_EQ(t.N(), 0);
  EXPECT_TRUE(t.vT().empty());
  t.setDissData({1.0f, 2.0f, 4.0f}, {500, 490});
  EXPECT_EQ(t.N(), 3);
  EXPECT_EQ(t.vA(), (std::vector<int16_t>{500, 490, 0}));
}

// --- Start of the test and the header ---------------------------------------------------------------

TEST(DissStart, SettingTheStartWritesDateAndTimeInTheirFormats) {
  using namespace std::chrono;
  cls_DissTEST t;
  EXPECT_FALSE(t.existsTempoInizioProva());
  EXPECT_FALSE(t.tempoInizioProva().has_value());
  const local_seconds when = local_days{year{2008} / 3 / 5} + hours{9} + minutes{4} + seconds{7};
  t.setTempoInizioProva(when);
  EXPECT_EQ(t.startDate, "2008/3/5");
  EXPECT_EQ(t.startTime, "09:04:07");
  EXPECT_TRUE(t.isTimeAbsolute());
  ASSERT_TRUE(t.tempoInizioProva().has_value());
  EXPECT_EQ(*t.tempoInizioProva(), when);
}

TEST(DissStart, AMissingHalfOrTextsThatAreNoDateGiveNoStart) {
  cls_DissTEST t;
  t.startDate = "2008/3/5";
  EXPECT_FALSE(t.isTimeAbsolute());
  EXPECT_FALSE(t.tempoInizioProva().has_value());
  t.startDate = "2008/13/5";
  t.startTime = "10:00:00";
  EXPECT_FALSE(t.tempoInizioProva().has_value());
  t.startDate = "2008/2/29";
  t.startTime = "24:00:00";
  EXPECT_FALSE(t.tempoInizioProva().has_value());
  t.startTime = "23:59:59";
  EXPECT_TRUE(t.tempoInizioProva().has_value());
}

TEST(DissHeader, DeltasComeFromTheVerticalOnlyWithADmtTest) {
  DissVertData v{"Firm", "Cust", "Job", "Site", "Rem", "5 MAR 2008", "V1", true, 15, 40};
  cls_DissTEST t;
  t.initializeDissVertData(v);
  EXPECT_EQ(t.TstName, "V1");
  EXPECT_EQ(t.DeltaA, 15);
  EXPECT_EQ(t.DeltaB, 40);
  v.hasDmtTest = false;
  t.initializeDissVertData(v);
  EXPECT_EQ(t.DeltaA, 0);
  EXPECT_EQ(t.DeltaB, 0);
}

TEST(DissHeader, ResetEmptiesTheHeaderButKeepsReadingsAndFile) {
  cls_DissTEST t;
  t.folder = "f";
  t.Firm = "x";
  t.startTime = "10:00:00";
  t.inputZd("3");
  t.BFinal = 600;
  t.isUoSpecified = true;
  t.setDissData({1.0f}, {400});
  t.resetData();
  EXPECT_EQ(t.strDisFile(), "DISSIP2002\r\nT =  1.00, A =   400\r\n");
  EXPECT_FALSE(t.isZdSpecified);
  EXPECT_EQ(t.filename.filename(), "0300.dis");
}

}  // namespace
}  // namespace koru
