#pragma once
// The options dialog as a model: what each field shows, what each control changes, and the
// order in which a confirmation validates and stores. The window only displays these texts and
// calls these operations.

#include <functional>
#include <string>
#include <string_view>

#include "program/AppState.h"
#include "frame/SettingsStore.h"

namespace koru {

class ProgramStrings;

// An optional leading "-", then digits and at most one "."; "." and "-." alone are not numbers.
bool isNumericText(std::string_view text);

// Checks a field: it must pass isNumericText and lie within the limits (each limit inclusive
// unless told exclusive). On failure shows the label (a text of the language files), the rule
// (strings 94-97, or 99 for text that is no number) and the limit in `format`, and gives false.
bool validateNumber(std::string_view text, std::string_view label, double min, double max, std::string_view format,
                    bool minExclusive, bool maxExclusive, const ProgramStrings& strings);

enum class DataFilter { Id, Ed, OCR, Kd };

// The field that stopped a confirmation, for the focus.
enum class OptionsField {
  None, TxRx, TxTx, DCenters, DistVs, DistVp, SeismicDeltaZ, K0M, K0N, K0K, OCRM, OCRN, OCRK, RMM, RMN, RMK,
  CuM, CuN, CuK, GammaWater, FactorOCR, IdLimit, FilterId, FilterEd, FilterOCR, FilterKd, PaperHeight, PaperWidth
};

struct OptionsFields {
  std::string language;
  int pressureUnit = 0;
  std::string txRx, txTx;
  std::string dCenters, distVs, distVp, seismicDeltaZ;  // dCenters, dG1G2, dG3G4, seismicDeltaZ
  bool versionWarning = false;

  int k0Method = 0, ocrMethod = 0, rmMethod = 0, cuMethod = 0;
  std::string k0M, k0N, k0K, ocrM, ocrN, ocrK, rmM, rmN, rmK, cuM, cuN, cuK;
  bool feeler = true;
  std::string gammaWater;  // kg/m3
  std::string factorOCR;
  std::string idLimit;

  bool filterIdOn = false, filterEdOn = false, filterOCROn = false, filterKdOn = false;
  std::string filterId, filterEd, filterOCR, filterKd;

  int paperIndex = 0;  // 0 "A4", 1 "LETTER", 2 the user's size
  std::string paperHeight, paperWidth;
  int dmtResolutionSlider = 0, seismogramResolutionSlider = 0;  // resolution - 700
};

// The fields as the dialog opens on the current state.
OptionsFields openOptions(const AppState& state);

void selectPaper(OptionsFields& fields, int index);
// Ticking fills the field with the filter's default; unticking leaves the text.
void tickFilter(OptionsFields& fields, DataFilter filter, bool ticked);
std::string filterLabel(DataFilter filter, const ProgramStrings& strings);

// The method selectors fill m, n, k from their tables; "Personal" keeps what is typed.
void selectK0Method(OptionsFields& fields, int index);
void selectOCRMethod(OptionsFields& fields, int index);
void selectRMMethod(OptionsFields& fields, int index);
void selectCuMethod(OptionsFields& fields, int index);
// "see ASCE '80 (p. 318)" for the built-in Rm, "Rm = m x Kd ^ n + k" otherwise, in the
// language of the program.
std::string rmFormulaLine(int rmMethod, const ProgramStrings& strings);
// An exponent outside the range the published correlations use deserves a second look.
bool isKoExponentDoubtful(std::string_view text);
bool isOCRExponentDoubtful(std::string_view text);

// The Id limit accepts 1.2 to 1.8; anything else restores the value in force.
void leaveIdLimit(OptionsFields& fields, const AppState& state);
void restoreIdLimitDefault(OptionsFields& fields);

// The wait-time buttons step by 1 ms; each change is saved at once, but only when both wait
// times pass their check (0 to 32767 ms): otherwise the first that fails is told and returned,
// and nothing is saved.
void stepWaitTime(std::string& field, int step);
OptionsField saveWaitTimes(const OptionsFields& fields, AppState& state, SettingsStore& settings,
                           const ProgramStrings& strings);

struct OptionsHooks {
  std::function<void(const std::string& language)> languageChanged;  // reload strings, loadStrings
  std::function<void()> refreshWindows;  // results, dissipation and main window
};

// Validates every field (stopping at the first failure, which is returned) and then stores in
// the dialog's order: language, pressure unit, geometry, version warning, interpretation
// options, wait times, paper, image resolutions, then the windows are refreshed.
OptionsField confirmOptions(const OptionsFields& fields, AppState& state, SettingsStore& settings,
                            const ProgramStrings& strings, const OptionsHooks& hooks);

}  // namespace koru
