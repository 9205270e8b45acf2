#include "program/OptionsDialog.h"

#include <vector>

#include "frame/Numbers.h"
#include "frame/strings/StringIds.h"
#include "frame/strings/StringTable.h"

namespace koru {

namespace {

constexpr std::string_view kGeometryFormat = "0.00#";

std::string coefficient(float value) { return formatNumber(value, ""); }

void fillFromTable(std::span<const MethodLine> table, int index, std::string& m, std::string& n, std::string& k) {
  if (index < 0 || index >= static_cast<int>(table.size())) return;
  const MethodLine& line = table[static_cast<size_t>(index)];
  if (line.personal) return;
  m = coefficient(line.m);
  n = coefficient(line.n);
  k = coefficient(line.k);
}

float number(std::string_view text) { return parseSingle(text); }

struct Check {
  OptionsField field;
  const std::string* text;
  int16_t label;  // the field's name in the language of the program
  double min, max;
  std::string_view format;
};

constexpr double kAny = 1e30;

// The wait times are 16-bit milliseconds.
std::vector<Check> waitTimeChecks(const OptionsFields& f) {
  return {{OptionsField::TxRx, &f.txRx, kStrLabelTxRx, 0, 32767, "0"},
          {OptionsField::TxTx, &f.txTx, kStrLabelTxTx, 0, 32767, "0"}};
}

// Tells the first field that fails its check, or gives None.
OptionsField firstInvalid(const std::vector<Check>& checks, const ProgramStrings& strings) {
  for (const auto& c : checks)
    if (!validateNumber(*c.text, strings.getString(c.label), c.min, c.max, c.format, false, false, strings))
      return c.field;
  return OptionsField::None;
}

}  // namespace

bool isNumericText(std::string_view text) {
  if (!text.empty() && text.front() == '-') text.remove_prefix(1);
  if (text.empty()) return false;
  int points = 0, digits = 0;
  for (char c : text) {
    if (c == '.') {
      ++points;
    } else if (c >= '0' && c <= '9') {
      ++digits;
    } else {
      return false;
    }
  }
  return points <= 1 && digits > 0;
}

bool validateNumber(std::string_view text, std::string_view label, double min, double max, std::string_view format,
                    bool minExclusive, bool maxExclusive, const ProgramStrings& strings) {
  auto show = [&](int rule, std::string limit) {
    std::string message = std::string(label) + " " + strings.getString(rule);
    if (!limit.empty()) message += " " + limit;
    strings.prompts().showMessage(message, msgbox::kOkOnly + msgbox::kExclamation, "");
    return false;
  };
  if (!isNumericText(text)) return show(kStrMustBeNumber, "");
  const double value = parseSingle(text);
  if (minExclusive ? value <= min : value < min)
    return show(minExclusive ? kStrMustBeGreater : kStrMustBeAtLeast, formatNumber(min, format));
  if (maxExclusive ? value >= max : value > max)
    return show(maxExclusive ? kStrMustBeLess : kStrMustBeAtMost, formatNumber(max, format));
  return true;
}

OptionsFields openOptions(const AppState& state) {
  OptionsFields f;
  const DMTOptions& o = state.dmtOptions;
  f.language = state.strLanguage;
  f.pressureUnit = state.intPressureUnit;
  f.txRx = std::to_string(state.intTxRx);
  f.txTx = std::to_string(state.intTxTx);
  f.dCenters = formatNumber(state.sngDCenters, kGeometryFormat);
  f.distVs = formatNumber(state.sngDG1G2, kGeometryFormat);
  f.distVp = formatNumber(state.sngDG3G4, kGeometryFormat);
  f.seismicDeltaZ = formatNumber(state.sngSeismicDeltaZ, kGeometryFormat);
  f.versionWarning = state.blnVersionWarning;
  f.k0Method = o.intK0Method;
  f.ocrMethod = o.intOCRMethod;
  f.rmMethod = o.intRMMethod;
  f.cuMethod = o.intCuMethod;
  f.k0M = coefficient(o.sngK0M), f.k0N = coefficient(o.sngK0N), f.k0K = coefficient(o.sngK0K);
  f.ocrM = coefficient(o.sngOCRM), f.ocrN = coefficient(o.sngOCRN), f.ocrK = coefficient(o.sngOCRK);
  f.rmM = coefficient(o.sngRMM), f.rmN = coefficient(o.sngRMN), f.rmK = coefficient(o.sngRMK);
  f.cuM = coefficient(o.sngCuM), f.cuN = coefficient(o.sngCuN), f.cuK = coefficient(o.sngCuK);
  f.feeler = o.blnFeeler;
  f.gammaWater = formatNumber(o.sngGammaWater * 1000.0f, "0");
  f.factorOCR = formatNumber(o.sngFactorOCR, "0.00##");
  f.idLimit = formatNumber(o.sngIdLimit, "0.00");
  auto filter = [](float value, bool& on, std::string& text) {
    on = value > 0;
    if (on) text = formatNumber(value, "");
  };
  filter(o.sngFilterId, f.filterIdOn, f.filterId);
  filter(o.sngFilterEd, f.filterEdOn, f.filterEd);
  filter(o.sngFilterOCR, f.filterOCROn, f.filterOCR);
  filter(o.sngFilterKd, f.filterKdOn, f.filterKd);
  f.paperIndex = state.strPaperName == "A4" ? 0 : state.strPaperName == "LETTER" ? 1 : 2;
  f.paperHeight = formatNumber(state.sngPaperHeight, "0.00");
  f.paperWidth = formatNumber(state.sngPaperWidth, "0.00");
  f.dmtResolutionSlider = state.lngDMTImageResolution - 700;
  f.seismogramResolutionSlider = state.lngSeismogramResolution - 700;
  return f;
}

void selectPaper(OptionsFields& fields, int index) {
  fields.paperIndex = index;
  if (index == 0) {
    fields.paperHeight = "29.70";
    fields.paperWidth = "21.00";
  } else if (index == 1) {
    fields.paperHeight = "27.94";
    fields.paperWidth = "21.59";
  }
}

void tickFilter(OptionsFields& fields, DataFilter filter, bool ticked) {
  struct Box {
    bool* on;
    std::string* text;
    const char* fallback;
  };
  Box box = filter == DataFilter::Id    ? Box{&fields.filterIdOn, &fields.filterId, "0.12"}
            : filter == DataFilter::Ed  ? Box{&fields.filterEdOn, &fields.filterEd, "5.0"}
            : filter == DataFilter::OCR ? Box{&fields.filterOCROn, &fields.filterOCR, "0.9"}
                                        : Box{&fields.filterKdOn, &fields.filterKd, "0.2"};
  *box.on = ticked;
  if (ticked) *box.text = box.fallback;
}

std::string filterLabel(DataFilter filter, const ProgramStrings& strings) {
  switch (filter) {
    case DataFilter::Id: return strings.getString(kStrLabelFilterId);
    case DataFilter::Ed: return strings.getString(kStrLabelFilterEd);
    case DataFilter::OCR: return strings.getString(kStrLabelFilterOCR);
    case DataFilter::Kd: return strings.getString(kStrLabelFilterKd);
  }
  return "";
}

void selectK0Method(OptionsFields& f, int index) {
  f.k0Method = index;
  fillFromTable(k0MethodTable(), index, f.k0M, f.k0N, f.k0K);
}
void selectOCRMethod(OptionsFields& f, int index) {
  f.ocrMethod = index;
  fillFromTable(ocrMethodTable(), index, f.ocrM, f.ocrN, f.ocrK);
}
void selectRMMethod(OptionsFields& f, int index) {
  f.rmMethod = index;
  if (index != 0) fillFromTable(rmMethodTable(), index, f.rmM, f.rmN, f.rmK);
}
void selectCuMethod(OptionsFields& f, int index) {
  f.cuMethod = index;
  fillFromTable(cuMethodTable(), index, f.cuM, f.cuN, f.cuK);
}

std::string rmFormulaLine(int rmMethod, const ProgramStrings& strings) {
  return strings.getString(rmMethod == 0 ? kStrRmFormulaBuiltIn : kStrRmFormulaPersonal);
}

bool isKoExponentDoubtful(std::string_view text) {
  if (!isNumericText(text)) return true;
  float n = parseSingle(text);
  return n < 0.44f || n > 0.64f;
}

bool isOCRExponentDoubtful(std::string_view text) {
  if (!isNumericText(text)) return true;
  float n = parseSingle(text);
  return n < 0.8f || n > 1.6f;
}

void leaveIdLimit(OptionsFields& fields, const AppState& state) {
  if (isNumericText(fields.idLimit)) {
    float value = parseSingle(fields.idLimit);
    if (value >= 1.2f && value <= 1.8f) return;
  }
  fields.idLimit = formatNumber(state.dmtOptions.sngIdLimit, "0.00");
}

void restoreIdLimitDefault(OptionsFields& fields) { fields.idLimit = formatNumber(1.2f, "0.00"); }

void stepWaitTime(std::string& field, int step) {
  int value = isNumericText(field) ? static_cast<int>(roundHalfEven(parseSingle(field))) : 0;
  value += step;
  if (value < 0) value = 0;
  field = std::to_string(value);
}

OptionsField saveWaitTimes(const OptionsFields& fields, AppState& state, SettingsStore& settings,
                           const ProgramStrings& strings) {
  const OptionsField invalid = firstInvalid(waitTimeChecks(fields), strings);
  if (invalid != OptionsField::None) return invalid;
  state.intTxRx = toInt16(parseSingle(fields.txRx)).value_or(state.intTxRx);
  state.intTxTx = toInt16(parseSingle(fields.txTx)).value_or(state.intTxTx);
  settings.SaveSetting(kSettingsApp, "SerPort", "txrx", std::to_string(state.intTxRx));
  settings.SaveSetting(kSettingsApp, "SerPort", "txtx", std::to_string(state.intTxTx));
  return OptionsField::None;
}

OptionsField confirmOptions(const OptionsFields& f, AppState& state, SettingsStore& settings,
                            const ProgramStrings& strings, const OptionsHooks& hooks) {
  std::vector<Check> checks = waitTimeChecks(f);
  const std::vector<Check> rest = {
      {OptionsField::DCenters, &f.dCenters, kStrLabelDCenters, -kAny, kAny, ""},
      {OptionsField::DistVs, &f.distVs, kStrLabelDistVs, -kAny, kAny, ""},
      {OptionsField::DistVp, &f.distVp, kStrLabelDistVp, -kAny, kAny, ""},
      {OptionsField::SeismicDeltaZ, &f.seismicDeltaZ, kStrLabelSeismicDeltaZ, -kAny, kAny, ""},
      {OptionsField::K0M, &f.k0M, kStrLabelCoefficientBase + 0, -kAny, kAny, ""},
      {OptionsField::K0N, &f.k0N, kStrLabelCoefficientBase + 1, -kAny, kAny, ""},
      {OptionsField::K0K, &f.k0K, kStrLabelCoefficientBase + 2, -kAny, kAny, ""},
      {OptionsField::OCRM, &f.ocrM, kStrLabelCoefficientBase + 3, -kAny, kAny, ""},
      {OptionsField::OCRN, &f.ocrN, kStrLabelCoefficientBase + 4, -kAny, kAny, ""},
      {OptionsField::OCRK, &f.ocrK, kStrLabelCoefficientBase + 5, -kAny, kAny, ""},
      {OptionsField::RMM, &f.rmM, kStrLabelCoefficientBase + 6, -kAny, kAny, ""},
      {OptionsField::RMN, &f.rmN, kStrLabelCoefficientBase + 7, -kAny, kAny, ""},
      {OptionsField::RMK, &f.rmK, kStrLabelCoefficientBase + 8, -kAny, kAny, ""},
      {OptionsField::CuM, &f.cuM, kStrLabelCoefficientBase + 9, -kAny, kAny, ""},
      {OptionsField::CuN, &f.cuN, kStrLabelCoefficientBase + 10, -kAny, kAny, ""},
      {OptionsField::CuK, &f.cuK, kStrLabelCoefficientBase + 11, -kAny, kAny, ""},
      {OptionsField::GammaWater, &f.gammaWater, kStrLabelGammaWater, -kAny, kAny, ""},
      {OptionsField::FactorOCR, &f.factorOCR, kStrLabelFactorOCR, -kAny, kAny, ""},
      {OptionsField::IdLimit, &f.idLimit, kStrLabelIdLimit, 1.2, 1.8, "0.00"},
  };
  checks.insert(checks.end(), rest.begin(), rest.end());
  if (f.filterIdOn) checks.push_back({OptionsField::FilterId, &f.filterId, kStrLabelFilterId, -kAny, kAny, ""});
  if (f.filterEdOn) checks.push_back({OptionsField::FilterEd, &f.filterEd, kStrLabelFilterEd, -kAny, kAny, ""});
  if (f.filterOCROn) checks.push_back({OptionsField::FilterOCR, &f.filterOCR, kStrLabelFilterOCR, -kAny, kAny, ""});
  if (f.filterKdOn) checks.push_back({OptionsField::FilterKd, &f.filterKd, kStrLabelFilterKd, -kAny, kAny, ""});
  if (f.paperIndex == 2) {
    checks.push_back({OptionsField::PaperHeight, &f.paperHeight, kStrLabelPaperHeight, -kAny, kAny, ""});
    checks.push_back({OptionsField::PaperWidth, &f.paperWidth, kStrLabelPaperWidth, -kAny, kAny, ""});
  }
  // Everything is checked before anything is stored, so that a refused confirmation leaves the
  // settings and the state as they were.
  if (const OptionsField invalid = firstInvalid(checks, strings); invalid != OptionsField::None) return invalid;

  // 1. Language.
  if (f.language != state.strLanguage) {
    state.strLanguage = f.language;
    settings.SaveSetting(kSettingsApp, "General", "Language", f.language);
    if (hooks.languageChanged) hooks.languageChanged(f.language);
  }
  // 2. Pressure unit.
  state.intPressureUnit = static_cast<int16_t>(f.pressureUnit);
  settings.SaveSetting(kSettingsApp, "General", "Pressure Unit", std::to_string(f.pressureUnit));
  // 3. Geometry. The Vp depth step is read at start but is not the dialog's to write.
  settings.SaveSetting(kSettingsApp, "Geometry", "dCenters", f.dCenters);
  settings.SaveSetting(kSettingsApp, "Geometry", "dG1G2", f.distVs);
  settings.SaveSetting(kSettingsApp, "Geometry", "dG3G4", f.distVp);
  settings.SaveSetting(kSettingsApp, "Geometry", "seismicDeltaZ", f.seismicDeltaZ);
  state.sngDCenters = number(f.dCenters);
  state.sngDG1G2 = number(f.distVs);
  state.sngDG3G4 = number(f.distVp);
  state.sngSeismicDeltaZ = number(f.seismicDeltaZ);
  // 4. Version warning.
  state.blnVersionWarning = f.versionWarning;
  settings.SaveSetting(kSettingsApp, "SerPort", "versionWarning", f.versionWarning ? "1" : "0");
  // 5. Interpretation options: they last for this run only.
  DMTOptions& o = state.dmtOptions;
  o.intK0Method = static_cast<int16_t>(f.k0Method);
  o.intOCRMethod = static_cast<int16_t>(f.ocrMethod);
  o.intRMMethod = static_cast<int16_t>(f.rmMethod);
  o.intCuMethod = static_cast<int16_t>(f.cuMethod);
  o.blnRmPersonal = f.rmMethod != 0;
  o.sngK0M = number(f.k0M), o.sngK0N = number(f.k0N), o.sngK0K = number(f.k0K);
  o.sngOCRM = number(f.ocrM), o.sngOCRN = number(f.ocrN), o.sngOCRK = number(f.ocrK);
  o.sngRMM = number(f.rmM), o.sngRMN = number(f.rmN), o.sngRMK = number(f.rmK);
  o.sngCuM = number(f.cuM), o.sngCuN = number(f.cuN), o.sngCuK = number(f.cuK);
  o.sngFactorOCR = number(f.factorOCR);
  o.sngGammaWater = number(f.gammaWater) / 1000.0f;
  o.sngIdLimit = number(f.idLimit);
  o.blnFeeler = f.feeler;
  o.sngFilterId = f.filterIdOn ? number(f.filterId) : 0.0f;
  o.sngFilterEd = f.filterEdOn ? number(f.filterEd) : 0.0f;
  o.sngFilterOCR = f.filterOCROn ? number(f.filterOCR) : 0.0f;
  o.sngFilterKd = f.filterKdOn ? number(f.filterKd) : 0.0f;
  // 6. Wait times, checked above with the rest.
  saveWaitTimes(f, state, settings, strings);
  // 7. Paper, its name kept in upper case.
  const std::string paper = f.paperIndex == 0 ? "A4" : f.paperIndex == 1 ? "LETTER" : "USER";
  settings.SaveSetting(kSettingsApp, "Graphics", "PaperName", paper);
  settings.SaveSetting(kSettingsApp, "Graphics", "PaperHeight", f.paperHeight);
  settings.SaveSetting(kSettingsApp, "Graphics", "PaperWidth", f.paperWidth);
  state.strPaperName = paper;
  state.sngPaperHeight = number(f.paperHeight);
  state.sngPaperWidth = number(f.paperWidth);
  // 8. Image resolutions.
  state.lngDMTImageResolution = f.dmtResolutionSlider + 700;
  state.lngSeismogramResolution = f.seismogramResolutionSlider + 700;
  settings.SaveSetting(kSettingsApp, "Graphics", "KORUImageResolution", std::to_string(state.lngDMTImageResolution));
  settings.SaveSetting(kSettingsApp, "Graphics", "SISMImageResolution", std::to_string(state.lngSeismogramResolution));
  // 9. Windows that show results follow the new options.
  if (hooks.refreshWindows) hooks.refreshWindows();
  return OptionsField::None;
}

}  // namespace koru
