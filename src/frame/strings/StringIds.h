#pragma once
// Numbers of the language texts that the program's code asks for by name. A window or message
// that needs a text takes its number from here, so that one list says what every language file
// must hold (the language file tests check each of them against the shipped files).

#include <cstdint>
#include <string>

namespace koru {

// A group of texts shown together, first to last.
struct StringRange {
  int16_t first;
  int16_t last;
};

// The range as getStringRange takes it: "413-417".
inline std::string rangeText(StringRange range) {
  return std::to_string(range.first) + "-" + std::to_string(range.last);
}

// Captions of the results sheet's title block, filled in as default labels.
inline constexpr int16_t kStrSheetCaption5 = 5;
inline constexpr int16_t kStrSheetCaption6 = 6;
inline constexpr int16_t kStrSheetCaption7 = 7;
inline constexpr int16_t kStrSheetCaption8 = 8;
inline constexpr int16_t kStrSheetCaption9 = 9;
// Z axis caption of a single-parameter sheet.
inline constexpr int16_t kStrAxisDepth = 10;
inline constexpr int16_t kStrAxisElevation = 11;
// Soil zone names of the Id box: full words, then the short ones of cross sections.
inline constexpr int16_t kStrIdZoneLeft = 12;
inline constexpr int16_t kStrIdZoneLeftShort = 13;
inline constexpr int16_t kStrIdZoneMiddle = 14;
inline constexpr int16_t kStrIdZoneMiddleShort = 15;
inline constexpr int16_t kStrIdZoneRight = 16;
inline constexpr int16_t kStrIdZoneRightShort = 17;
inline constexpr int16_t kStrUdGuideNote = 18;
inline constexpr int16_t kStrWaterAboveGroundSeveral = 19;
inline constexpr int16_t kStrSeaBed = 20;
inline constexpr int16_t kStrWaterHead = 21;

// Parts of the number check of the options dialog: label, one of these, limit.
inline constexpr int16_t kStrMustBeGreater = 94;
inline constexpr int16_t kStrMustBeAtLeast = 95;
inline constexpr int16_t kStrMustBeLess = 96;
inline constexpr int16_t kStrMustBeAtMost = 97;
inline constexpr int16_t kStrInvalidValueTitle = 98;
inline constexpr int16_t kStrMustBeNumber = 99;

inline constexpr int16_t kStrError = 101;
inline constexpr int16_t kStrUnknownError = 104;
inline constexpr int16_t kStrSwitchBoxOffAndOn = 105;
inline constexpr int16_t kStrConnectionTestTitle = 106;
inline constexpr int16_t kStrElevationCaption = 119;
inline constexpr int16_t kStrOk = 121;
inline constexpr int16_t kStrFailed = 160;
inline constexpr int16_t kStrOutputOn = 161;
inline constexpr int16_t kStrOutputOff = 162;
inline constexpr int16_t kStrOutputVTest = 163;
inline constexpr int16_t kStrChannel = 164;
inline constexpr int16_t kStrStillStreaming1 = 167;
inline constexpr int16_t kStrStillStreaming2 = 168;
inline constexpr int16_t kStrDescriptionCaption = 197;

inline constexpr StringRange kStrExternalTriggerNote = {401, 404};
inline constexpr int16_t kStrBoxConnected = 407;
inline constexpr int16_t kStrUnableToConnectBox = 408;
inline constexpr int16_t kStrProbeNotAnswering = 411;
inline constexpr int16_t kStrProbeConnected = 412;
inline constexpr StringRange kStrLinkFailure = {413, 417};
inline constexpr StringRange kStrSignalSaturated = {418, 419};
inline constexpr StringRange kStrSignalWeak = {420, 421};
inline constexpr int16_t kStrStandardDeviation = 439;
inline constexpr int16_t kStrDeviationPercent = 440;
inline constexpr StringRange kStrHammerDistanceInvalid = {442, 443};
inline constexpr StringRange kStrSamplingTimeWarning = {446, 447};
inline constexpr int16_t kStrNoUsbSerialPort = 449;
inline constexpr int16_t kStrNoUsbSerialPortHint = 450;

// Sheet captions of the graph windows.
inline constexpr int16_t kStrCrossSectionOf = 1305;
inline constexpr int16_t kStrNoDataSuperimposed = 1306;
inline constexpr int16_t kStrNoDataSingle = 1307;
inline constexpr int16_t kStrChooseAnotherGraph = 1308;

// Toolbar captions, by page.
inline constexpr int16_t kStrToolbarSite = 1701;
inline constexpr int16_t kStrToolbarDmtAcquisition = 1702;
inline constexpr int16_t kStrToolbarDmtData = 1703;
inline constexpr int16_t kStrToolbarVsAcquisition = 1704;
inline constexpr int16_t kStrToolbarVpAcquisition = 1705;
inline constexpr int16_t kStrToolbarInclination = 1706;
inline constexpr int16_t kStrToolbarVsElaboration = 1707;
inline constexpr int16_t kStrToolbarVpElaboration = 1708;
inline constexpr int16_t kStrToolbarGraphs = 1709;
inline constexpr int16_t kStrToolbarTables = 1710;
inline constexpr int16_t kStrToolbarReport = 1711;
inline constexpr int16_t kStrToolbarNotes = 1712;
inline constexpr int16_t kStrToolbarDissipation = 1713;

// Options dialog.
inline constexpr StringRange kStrKoMethodNote = {1823, 1824};
inline constexpr StringRange kStrKoExponentWarning = {1825, 1826};
inline constexpr int16_t kStrExponentWarningTitle = 1827;
inline constexpr StringRange kStrOcrExponentWarning = {1828, 1829};
inline constexpr int16_t kStrSelfTestPassed = 1833;
inline constexpr int16_t kStrIdLimitLabel = 1835;
inline constexpr int16_t kStrAboutIdLimit = 1837;
// Labels of the options dialog's checked fields, as its messages name them.
inline constexpr int16_t kStrLabelTxRx = 1840;
inline constexpr int16_t kStrLabelTxTx = 1841;
inline constexpr int16_t kStrLabelDCenters = 1842;
inline constexpr int16_t kStrLabelDistVs = 1843;
inline constexpr int16_t kStrLabelDistVp = 1844;
inline constexpr int16_t kStrLabelSeismicDeltaZ = 1845;
// m, n and k of the Ko, OCR, Rm and Cu methods, in that order: base + 3 x method + coefficient.
inline constexpr int16_t kStrLabelCoefficientBase = 1846;
inline constexpr int16_t kStrLabelGammaWater = 1858;
inline constexpr int16_t kStrLabelFactorOCR = 1859;
inline constexpr int16_t kStrLabelIdLimit = 1860;
// The data filters: Id, Ed, OCR, Kd.
inline constexpr int16_t kStrLabelFilterId = 1861;
inline constexpr int16_t kStrLabelFilterEd = 1862;
inline constexpr int16_t kStrLabelFilterOCR = 1863;
inline constexpr int16_t kStrLabelFilterKd = 1864;
inline constexpr int16_t kStrLabelPaperHeight = 1865;
inline constexpr int16_t kStrLabelPaperWidth = 1866;
inline constexpr int16_t kStrRmFormulaBuiltIn = 1867;
inline constexpr int16_t kStrRmFormulaPersonal = 1868;

// Quick test of the connection.
inline constexpr int16_t kStrQuickTestTryPort = 2000;
inline constexpr int16_t kStrQuickTestHelloBox = 2001;
inline constexpr int16_t kStrQuickTestHeading = 2002;
inline constexpr int16_t kStrQuickTestNoPortFound = 2003;
inline constexpr int16_t kStrQuickTestBoxIdentity = 2004;
inline constexpr int16_t kStrQuickTestBoxIdentityFailed = 2005;
inline constexpr int16_t kStrQuickTestOutputC = 2006;
inline constexpr int16_t kStrLineResistance = 2007;
inline constexpr int16_t kStrLineGood = 2008;
inline constexpr int16_t kStrLineBad = 2009;
inline constexpr int16_t kStrQuickTestProbe = 2010;
inline constexpr int16_t kStrQuickTestProbeIdentity = 2011;
inline constexpr int16_t kStrQuickTestProbeIdentityFailed = 2012;
inline constexpr int16_t kStrQuickTestSeismic = 2013;
inline constexpr int16_t kStrSeismicSumError = 2014;
inline constexpr int16_t kStrSeismicTransferError = 2015;
inline constexpr int16_t kStrSeismicTimeout = 2016;
inline constexpr int16_t kStrSeismicSetupRefused = 2017;
inline constexpr int16_t kStrSeismicNoTrigger = 2018;
// Battery classes 1 to 6 are kStrBatteryClassBase + class.
inline constexpr int16_t kStrBatteryClassBase = 2030;
inline constexpr int16_t kStrBattery = 2037;
inline constexpr int16_t kStrResettingSensors = 2040;
inline constexpr int16_t kStrNoPWaveSensors = 2041;

// Start screen: description, disclaimer title and text, version, trade line.
inline constexpr StringRange kStrStartScreen = {2701, 2705};
inline constexpr int16_t kStrStartScreenVersion = 2704;

// Running header of the Word report, and the word before a vertical's field data.
inline constexpr int16_t kStrReportHeaderLeft = 3406;
inline constexpr int16_t kStrReportHeaderRight = 3407;
inline constexpr int16_t kStrFieldDataTitle = 3513;

// Box titles of the results sheets: base B is the symbol, B + 1 and B + 2 the two lines of the
// name, B + 3 the unit (empty for a number without unit).
inline constexpr int16_t kStrBoxTitleId = 3600;
inline constexpr int16_t kStrBoxTitleM = 3610;
inline constexpr int16_t kStrBoxTitleCu = 3620;
inline constexpr int16_t kStrBoxTitlePhi = 3630;
inline constexpr int16_t kStrBoxTitleKd = 3640;
inline constexpr int16_t kStrBoxTitleK0 = 3650;
inline constexpr int16_t kStrBoxTitleEd = 3660;
inline constexpr int16_t kStrBoxTitleOcr = 3670;
inline constexpr int16_t kStrBoxTitleP2U0 = 3680;
inline constexpr int16_t kStrBoxTitleUd = 3690;
inline constexpr int16_t kStrBoxTitleP0P1 = 3700;
inline constexpr int16_t kStrBoxTitleU0P2P0P1 = 3710;
inline constexpr int16_t kStrBoxTitleSigmaH = 3720;
inline constexpr int16_t kStrBoxTitleSigmaV = 3730;
inline constexpr int16_t kStrBoxTitleVs = 3740;
inline constexpr int16_t kStrBoxTitleVp = 3750;
inline constexpr int16_t kStrBoxTitleG0 = 3760;
inline constexpr int16_t kStrBoxTitleUnitOffset = 3;

// Soil classes of the chart: its seven columns from clay to sand, then the two classes of very
// low modulus.
inline constexpr int16_t kStrSoilClassFirst = 3800;
inline constexpr int16_t kStrSoilClassLast = 3808;

// Plot parameter labels, in the order of plotLabel's codes.
inline constexpr int16_t kStrPlotLabelFirst = 3900;
inline constexpr int16_t kStrPlotLabelLast = 3915;

// Seismic filters: list entries, then the family names of the table labels.
inline constexpr int16_t kStrFilterLowPass = 4009;
inline constexpr int16_t kStrFilterBessel = 4010;
inline constexpr int16_t kStrFilterButterworth = 4011;
inline constexpr int16_t kStrFilterOrder = 4012;
inline constexpr int16_t kStrFilterNone = 4013;
inline constexpr int16_t kStrFilterLabelLowPass = 4019;
inline constexpr int16_t kStrFilterLabelBessel = 4020;
inline constexpr int16_t kStrFilterLabelButterworth = 4021;
inline constexpr StringRange kStrFilterHelp = {4201, 4204};

inline constexpr int16_t kStrUnableToConnectUsb = 4400;

// Probe and acquisition messages.
inline constexpr int16_t kStrResetSensorsAndConfirm = 5100;
inline constexpr int16_t kStrSensorsNotReset = 5101;
inline constexpr int16_t kStrInvalidReading = 5103;
inline constexpr int16_t kStrPressureStartRefused = 5110;
inline constexpr int16_t kStrPressureStreamLost = 5111;
inline constexpr int16_t kStrSeismicProbeReset = 5113;

// Legend of the two velocity curves; also the kinds of Vp listings.
inline constexpr int16_t kStrTrueInterval = 5200;
inline constexpr int16_t kStrPseudoInterval = 5201;
inline constexpr int16_t kStrPseudoSeismogramsTitle = 5324;

// Dissipation: help on the Tflex method, on Ch and on Kh; title of a printed test.
inline constexpr StringRange kStrAboutTflex = {5408, 5409};
inline constexpr StringRange kStrAboutCh = {5410, 5411};
inline constexpr StringRange kStrAboutKh = {5412, 5413};
inline constexpr int16_t kStrDissipationTestTitle = 5428;

// Exchange files: asked when a test's name cannot name its UNI file.
inline constexpr int16_t kStrUniBadTestName = 2801;

}  // namespace koru
