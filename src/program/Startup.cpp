#include "program/Startup.h"

#include "frame/Files.h"
#include "frame/Numbers.h"

namespace koru {

namespace {

int16_t readInt16(const SettingsStore& settings, std::string_view section, std::string_view key,
                  std::string_view fallback) {
  auto value = tryParseDouble(settings.GetSetting(kSettingsApp, section, key, fallback));
  if (!value) value = tryParseDouble(fallback);
  return toInt16(value.value_or(0)).value_or(0);
}

}  // namespace

StartupReport readSettings(AppState& state, SettingsStore& settings, Prompts& prompts) {
  StartupReport report;
  auto& problems = report.problems;
  // Numbers are always kept with a point inside the program.
  state.strDecimalSep = ".";

  state.strings = std::make_unique<ProgramStrings>(prompts);
  report.language = chooseLanguageAtStart(*state.strings, settings, state.folders.shareDir);
  state.strLanguage = report.language.language;
  state.strLanguageList = report.language.languages;
  if (report.language.load.englishMissing) problems.push_back(englishMissingProblem(state.folders.shareDir));

  state.intPressureUnit = readInt16(settings, "General", "Pressure Unit", "0");
  state.intTxRx = readInt16(settings, "SerPort", "txrx", "10");
  state.intTxTx = readInt16(settings, "SerPort", "txtx", "10");
  state.intPortNumber = readInt16(settings, "SerPort", "Number", "1");
  state.strPortSettings = "9600,N,8,1";
  state.blnBoxPresent = false;
  state.blnProbePresent = false;

  state.blnVersionWarning = settings.GetSetting(kSettingsApp, "SerPort", "versionWarning", "0") != "0";
  auto single = [&](std::string_view section, std::string_view key, std::string_view fallback) {
    return parseSingle(settings.GetSetting(kSettingsApp, section, key, fallback));
  };
  state.sngDCenters = single("Geometry", "dCenters", "0.5");
  state.sngDG1G2 = single("Geometry", "dG1G2", "0.5");
  state.sngDG3G4 = single("Geometry", "dG3G4", "0.604");
  state.sngHammerVs = single("Geometry", "distanceHammerVs", "1.40");
  state.sngHammerVp = single("Geometry", "distanceHammerVp", "1.60");
  state.sngSeismicDeltaZ = single("Geometry", "seismicDeltaZ", "0.5");
  state.sngSeismicDeltaZVp = single("Geometry", "seismicDeltaZVp", "1.0");
  state.intNumSamplesS = readInt16(settings, "Seismic", "numSamplesS", "700");
  state.intNumSamplesP = readInt16(settings, "Seismic", "numSamplesP", "1700");
  state.strPaperName = settings.GetSetting(kSettingsApp, "Graphics", "PaperName", "A4");
  for (auto& c : state.strPaperName)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  state.sngPaperHeight = single("Graphics", "PaperHeight", "29.70");
  state.sngPaperWidth = single("Graphics", "PaperWidth", "21.00");
  state.lngDMTImageResolution = static_cast<int32_t>(single("Graphics", "KORUImageResolution", "1250"));
  state.lngSeismogramResolution = static_cast<int32_t>(single("Graphics", "SISMImageResolution", "1250"));

  // The legacy hammer distance was replaced by the separate Vs and Vp distances.
  if (!settings.GetSetting(kSettingsApp, "Geometry", "dHAMMER", "").empty())
    settings.DeleteSetting(kSettingsApp, "Geometry", "dHAMMER");

  state.strLastExportPath = "C:\\";
  state.strSitesPath = state.folders.sitesPath();
  if (!ensureFolder(state.strSitesPath))
    problems.push_back({state.strSitesPath, 0, "the SITES folder cannot be created"});

  state.sngZOffset = parseSingle(settings.GetSetting(kSettingsApp, "DMT Acquisition", "ZOffset", "0.896666"));
  state.strFirmName = settings.GetSetting(kSettingsApp, "General", "FIRM", "FIRM");
  return report;
}

void initDefaults(AppState& state) {
  state.strTempPath = state.folders.tempPath();
  state.dmtOptions = DMTOptions{};
  state.strMaskChar = "=";
  state.dateNever = std::chrono::year_month_day{std::chrono::year{0}, std::chrono::January, std::chrono::day{1}};
  state.sngSampleStep = 20;
}

StartupReport startUp(AppState& state, SettingsStore& settings, Prompts& prompts) {
  StartupReport report = readSettings(state, settings, prompts);
  initDefaults(state);
  state.curSite = cls_SITE{};
  state.curVertical = nullptr;
  state.blnVerticalOpen = false;
  return report;
}

}  // namespace koru
