#pragma once
// The program-wide state: created at start, alive until exit, handed by reference to whatever
// needs it (there is no global instance). Subsystems add their members as they join.

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "dmt/DMTOptions.h"
#include "frame/ProgramFolders.h"
#include "frame/strings/StringTable.h"
#include "sites/cls_SITE.h"

namespace koru {

struct AppState {
  ProgramFolders folders;
  std::filesystem::path strSitesPath;  // data root / SITES
  std::filesystem::path strTempPath;   // data root / Temp
  std::string strLastExportPath;
  std::string strDecimalSep = ".";  // data is always read and written with "."
  std::string strFirmName;

  std::string strPaperName;
  float sngPaperHeight = 0, sngPaperWidth = 0;  // cm
  int32_t lngDMTImageResolution = 0, lngSeismogramResolution = 0;

  // Geometry of the probe and the hammer, m.
  float sngDCenters = 0, sngDG1G2 = 0, sngDG3G4 = 0, sngHammerVs = 0, sngHammerVp = 0;
  float sngSeismicDeltaZ = 0, sngSeismicDeltaZVp = 0;
  int16_t intNumSamplesS = 0, intNumSamplesP = 0;

  int16_t intPressureUnit = 0;  // 0 = bar, 1 = kPa, for display only
  int16_t intTxRx = 10, intTxTx = 10;  // serial wait times, ms
  int16_t intPortNumber = 1;
  std::string strPortSettings = "9600,N,8,1";
  bool blnBoxPresent = false, blnProbePresent = false;

  bool blnVersionWarning = true;
  float sngZOffset = 0;
  float sngSampleStep = 20;  // sampling step of seismograms

  std::string strLanguage;
  std::vector<std::string> strLanguageList;
  // The texts of the language in use; made by readSettings, which is handed the prompts.
  std::unique_ptr<ProgramStrings> strings;

  DMTOptions dmtOptions;

  std::string strMaskChar = "=";
  // The marker of a missing date: 0000/01/01 00:00:00.
  std::chrono::year_month_day dateNever{std::chrono::year{0}, std::chrono::January, std::chrono::day{1}};

  // At most one site and one vertical are open: a fresh empty site stands for "none open".
  cls_SITE curSite;
  cls_VERTICAL* curVertical = nullptr;  // owned by curSite's verticals
  bool blnVerticalOpen = false;
};

}  // namespace koru
