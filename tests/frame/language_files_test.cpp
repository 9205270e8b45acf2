// The language files shipped with the program: that they read cleanly, that the translations
// hold the same numbers as English, and that every number the code asks for is there.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "frame/Files.h"
#include "frame/strings/Language.h"
#include "frame/strings/LanguageFile.h"
#include "frame/strings/StringIds.h"
#include "scripted_prompts.h"

namespace koru {
namespace {

using testing::ScriptedPrompts;

const std::filesystem::path kShare = std::filesystem::path(KORU_SOURCE_DIR) / "share";
const std::vector<std::string> kShipped = {"English", "French", "Italiano"};

std::vector<LanguageEntry> shippedEntries(const std::string& name) {
  auto entries = readLanguageFile(languageFilePath(kShare, name));
  EXPECT_TRUE(entries.has_value()) << name;
  return entries.value_or(std::vector<LanguageEntry>{});
}

std::map<int, std::string> textsById(const std::string& name) {
  std::map<int, std::string> texts;
  for (auto& e : shippedEntries(name)) texts[e.id] = e.text;
  return texts;
}

size_t countOf(const std::string& text, std::string_view what) {
  size_t n = 0;
  for (size_t pos = text.find(what); pos != std::string::npos; pos = text.find(what, pos + what.size())) ++n;
  return n;
}

void addRange(std::vector<int>& ids, StringRange range) {
  for (int id = range.first; id <= range.last; ++id) ids.push_back(id);
}

// Every number the program's code asks for by name.
std::vector<int> idsAskedForByTheCode() {
  std::vector<int> ids = {
      kStrUniBadTestName, kStrSheetCaption5, kStrSheetCaption6, kStrSheetCaption7, kStrSheetCaption8, kStrSheetCaption9, kStrAxisDepth, kStrAxisElevation,
      kStrIdZoneLeft, kStrIdZoneLeftShort, kStrIdZoneMiddle, kStrIdZoneMiddleShort, kStrIdZoneRight, kStrIdZoneRightShort,
      kStrUdGuideNote, kStrWaterAboveGroundSeveral, kStrSeaBed, kStrWaterHead, kStrMustBeGreater, kStrMustBeAtLeast, kStrMustBeLess,
      kStrMustBeAtMost, kStrInvalidValueTitle, kStrMustBeNumber, kStrError, kStrUnknownError, kStrSwitchBoxOffAndOn,
      kStrConnectionTestTitle, kStrElevationCaption, kStrOk, kStrFailed, kStrOutputOn, kStrOutputOff, kStrOutputVTest, kStrChannel,
      kStrStillStreaming1, kStrStillStreaming2, kStrDescriptionCaption, kStrBoxConnected, kStrUnableToConnectBox,
      kStrProbeNotAnswering, kStrProbeConnected, kStrStandardDeviation, kStrDeviationPercent, kStrNoUsbSerialPort,
      kStrNoUsbSerialPortHint, kStrCrossSectionOf, kStrNoDataSuperimposed, kStrNoDataSingle, kStrChooseAnotherGraph,
      kStrToolbarSite, kStrToolbarDmtAcquisition, kStrToolbarDmtData, kStrToolbarVsAcquisition, kStrToolbarVpAcquisition,
      kStrToolbarInclination, kStrToolbarVsElaboration, kStrToolbarVpElaboration, kStrToolbarGraphs, kStrToolbarTables,
      kStrToolbarReport, kStrToolbarNotes, kStrToolbarDissipation, kStrExponentWarningTitle, kStrSelfTestPassed, kStrIdLimitLabel,
      kStrAboutIdLimit, kStrQuickTestTryPort, kStrQuickTestHelloBox, kStrQuickTestHeading, kStrQuickTestNoPortFound,
      kStrQuickTestBoxIdentity, kStrQuickTestBoxIdentityFailed, kStrQuickTestOutputC, kStrLineResistance, kStrLineGood, kStrLineBad,
      kStrQuickTestProbe, kStrQuickTestProbeIdentity, kStrQuickTestProbeIdentityFailed, kStrQuickTestSeismic,
      kStrSeismicSumError, kStrSeismicTransferError, kStrSeismicTimeout, kStrSeismicSetupRefused, kStrSeismicNoTrigger,
      kStrBattery, kStrResettingSensors, kStrNoPWaveSensors, kStrStartScreenVersion, kStrReportHeaderLeft, kStrReportHeaderRight,
      kStrFieldDataTitle, kStrFilterLowPass, kStrFilterBessel, kStrFilterButterworth, kStrFilterOrder, kStrFilterNone,
      kStrFilterLabelLowPass, kStrFilterLabelBessel, kStrFilterLabelButterworth, kStrUnableToConnectUsb,
      kStrResetSensorsAndConfirm, kStrSensorsNotReset, kStrInvalidReading, kStrPressureStartRefused, kStrPressureStreamLost,
      kStrSeismicProbeReset, kStrTrueInterval, kStrPseudoInterval, kStrPseudoSeismogramsTitle, kStrDissipationTestTitle};
  for (StringRange r : {kStrExternalTriggerNote, kStrLinkFailure, kStrSignalSaturated, kStrSignalWeak, kStrHammerDistanceInvalid,
                  kStrSamplingTimeWarning, kStrKoMethodNote, kStrKoExponentWarning, kStrOcrExponentWarning, kStrStartScreen,
                  kStrFilterHelp, kStrAboutTflex, kStrAboutCh, kStrAboutKh})
    addRange(ids, r);
  for (int cls = 1; cls <= 6; ++cls) ids.push_back(kStrBatteryClassBase + cls);
  for (int base : {kStrBoxTitleId, kStrBoxTitleM, kStrBoxTitleCu, kStrBoxTitlePhi, kStrBoxTitleKd, kStrBoxTitleK0, kStrBoxTitleEd,
                   kStrBoxTitleOcr, kStrBoxTitleP2U0, kStrBoxTitleUd, kStrBoxTitleP0P1, kStrBoxTitleU0P2P0P1, kStrBoxTitleSigmaH,
                   kStrBoxTitleSigmaV, kStrBoxTitleVs, kStrBoxTitleVp, kStrBoxTitleG0})
    addRange(ids, {static_cast<int16_t>(base), static_cast<int16_t>(base + kStrBoxTitleUnitOffset)});
  addRange(ids, {kStrSoilClassFirst, kStrSoilClassLast});
  addRange(ids, {kStrPlotLabelFirst, kStrPlotLabelLast});
  return ids;
}

// The unit texts of boxes whose parameter has no unit: the box title drops the brackets.
const std::set<int> kIntentionallyEmpty = {
    kStrBoxTitleId + kStrBoxTitleUnitOffset, kStrBoxTitleKd + kStrBoxTitleUnitOffset,
    kStrBoxTitleK0 + kStrBoxTitleUnitOffset, kStrBoxTitleOcr + kStrBoxTitleUnitOffset,
    kStrBoxTitleUd + kStrBoxTitleUnitOffset};

TEST(LanguageShippedFiles, TheThreeLanguagesAreListed) {
  EXPECT_EQ(listLanguages(kShare), kShipped);
}

TEST(LanguageShippedFiles, EachFileReadsWithStrictlyAscendingIds) {
  for (const auto& name : kShipped) {
    auto entries = shippedEntries(name);
    ASSERT_GT(entries.size(), 200u) << name;
    for (size_t i = 1; i < entries.size(); ++i)
      ASSERT_LT(entries[i - 1].id, entries[i].id) << name << " line " << entries[i].line;
  }
}

TEST(LanguageShippedFiles, FilesAreWindows1252WithCrLfLineEnds) {
  for (const auto& name : kShipped) {
    auto bytes = readFileBytes(languageFilePath(kShare, name));
    ASSERT_TRUE(bytes.has_value()) << name;
    bool accented = false;
    for (size_t i = 0; i < bytes->size(); ++i) {
      const auto c = static_cast<unsigned char>((*bytes)[i]);
      if (c == '\n') {
        ASSERT_TRUE(i > 0 && (*bytes)[i - 1] == '\r') << name << ": bare LF at byte " << i;
      }
      if (c == '\r') {
        ASSERT_TRUE(i + 1 < bytes->size() && (*bytes)[i + 1] == '\n') << name << ": bare CR at byte " << i;
      }
      if (c == 0xC3 && i + 1 < bytes->size()) {
        const auto next = static_cast<unsigned char>((*bytes)[i + 1]);
        ASSERT_FALSE(next >= 0x80 && next <= 0xBF) << name << ": UTF-8 sequence at byte " << i;
      }
      if (c >= 0xC0) accented = true;
    }
    if (name != "English") {
      EXPECT_TRUE(accented) << name << " has no accented letter at all";
    }
    EXPECT_EQ(bytes->substr(0, 2), "//") << name << " starts with its comment header";
  }
}

TEST(LanguageShippedFiles, TranslationsHoldExactlyTheIdsOfEnglish) {
  const auto english = textsById("English");
  for (const std::string name : {"Italiano", "French"}) {
    const auto other = textsById(name);
    for (const auto& [id, text] : english) EXPECT_TRUE(other.count(id)) << name << " lacks " << id;
    for (const auto& [id, text] : other) EXPECT_TRUE(english.count(id)) << name << " has extra " << id;
  }
}

TEST(LanguageShippedFiles, EveryIdTheCodeAsksForIsInEnglish) {
  const auto english = textsById("English");
  for (int id : idsAskedForByTheCode()) EXPECT_TRUE(english.count(id)) << "English lacks " << id;
}

TEST(LanguageShippedFiles, NoTextIsEmptyButTheUnitsOfUnitlessParameters) {
  for (const auto& name : kShipped) {
    for (const auto& [id, text] : textsById(name)) {
      if (kIntentionallyEmpty.count(id))
        EXPECT_TRUE(text.empty()) << name << " " << id << ": a unitless parameter shows no unit";
      else
        EXPECT_FALSE(text.empty()) << name << " " << id;
    }
  }
}

TEST(LanguageShippedFiles, PlaceholdersAreTheSameInEveryLanguage) {
  const auto english = textsById("English");
  for (const std::string name : {"Italiano", "French"}) {
    const auto other = textsById(name);
    for (const auto& [id, text] : english) {
      auto it = other.find(id);
      if (it == other.end()) continue;
      for (std::string_view placeholder : {"XXX", "YYY", "ZZZ"})
        EXPECT_EQ(countOf(it->second, placeholder), countOf(text, placeholder)) << name << " " << id << " " << placeholder;
    }
  }
}

TEST(LanguageShippedFiles, EveryLanguageLoadsWithNothingBorrowedAndLabelsEveryPlot) {
  for (const auto& name : kShipped) {
    ScriptedPrompts prompts;
    ProgramStrings strings(prompts);
    auto result = loadLanguage(strings, kShare, name);
    EXPECT_TRUE(result.fileRead) << name;
    EXPECT_TRUE(result.missingIds.empty()) << name;
    for (const char* code : {"ID", "CU", "PHI", "KD", "K0", "ED", "OCR", "P2U0", "UD", "P0P1", "U0P2P0P1", "SIGMAH",
                             "SIGMAV", "VS", "VP", "G0"})
      EXPECT_FALSE(plotLabel(strings, code).empty()) << name << " " << code;
    for (int id : idsAskedForByTheCode()) strings.getString(id);
    EXPECT_TRUE(prompts.messages.empty()) << name << ": " << (prompts.messages.empty() ? "" : prompts.messages[0].text);
  }
}

TEST(LanguageShippedFiles, TheVelocityUnitStartsWithTheMetreLetter) {
  // Sheets in Cyrillic script take their depth unit, "(m)", from the first letter of the Vs unit.
  for (const auto& name : kShipped) {
    const auto texts = textsById(name);
    auto it = texts.find(kStrBoxTitleVs + kStrBoxTitleUnitOffset);
    ASSERT_NE(it, texts.end());
    EXPECT_EQ(it->second.substr(0, 1), "m") << name;
  }
}

}  // namespace
}  // namespace koru
