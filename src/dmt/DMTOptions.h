#pragma once
// The interpretation options of the DMT evaluation: one program-wide record, filled with the
// defaults at start and edited in the options dialog. It is never written to the settings
// store; it lasts for one run of the program.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace koru {

// One line of a correlation selector: the parameter is m x Kd ^ n + k.
struct MethodLine {
  std::string_view label;
  float m, n, k;
  bool personal;  // "Personal": keeps what the user typed
};

std::span<const MethodLine> k0MethodTable();
std::span<const MethodLine> ocrMethodTable();
std::span<const MethodLine> rmMethodTable();  // line 0 is the built-in Rm (no coefficients)
std::span<const MethodLine> cuMethodTable();

struct DMTOptions {
  float sngFactorOCR = 1.0f;   // multiplies each stored OCR
  float sngGammaWater = 1.0f;  // t/m3; the dialog shows it in kg/m3
  bool blnFeeler = true;       // Po takes the corrected form
  float sngFilterId = 0;       // data filters: 0 = off
  float sngFilterOCR = 0;
  float sngFilterKd = 0;
  float sngFilterEd = 0;  // MPa
  int16_t intK0Method = 0;
  float sngK0M = 0.826f, sngK0N = 0.47f, sngK0K = -0.6f;
  int16_t intOCRMethod = 0;
  float sngOCRM = 0.34f, sngOCRN = 1.56f, sngOCRK = 0.0f;
  bool blnRmPersonal = false;
  int16_t intRMMethod = 0;
  float sngRMM = 0.02f, sngRMN = 3.5f, sngRMK = 0.0f;
  int16_t intCuMethod = 0;
  float sngCuM = 0.0925f, sngCuN = 1.25f, sngCuK = 0.0f;
  float sngIdLimit = 1.2f;  // Id upper limit for evaluating Cu, Ko and OCR
  // The thrust fields: set together by adding thrust data to a test and cleared by removing it.
  int16_t intPhiMethod = 0;  // 0: Phi from Kd; 1: Phi from thrust
  float sngPhiIdMin = 1.8f;
  bool blnK0Thrust = false;
  float sngK0ThrustIdMin = 0.0f;
  int16_t intOCRThrust = 0;

  // Selecting a method line fills m, n, k from its table, as the dialog's selectors do; a
  // "Personal" line keeps the coefficients. An index outside the table changes nothing and
  // gives false.
  bool selectK0Method(int index);
  bool selectOCRMethod(int index);
  bool selectRMMethod(int index);  // lines 1 and 2 set blnRmPersonal, line 0 clears it
  bool selectCuMethod(int index);

  // The thrust fields given by name for this run (setByName), one bit each in the order of the
  // fields above. A given field keeps its value whatever the test's thrust data would set.
  uint8_t thrustFieldsGiven = 0;

  // Sets a field from text, by its name ("sngFactorOCR", "intK0Method" ...) or by its readable
  // name (optionReadableName; any case: "factorOCR", "K0Method"): flags take 0 or 1, method
  // indices go through the select... operations. The thrust fields take 0 or 1 for the method
  // and flag fields and are marked as given. On failure gives false, changes nothing and says
  // why, naming the option as it was written.
  bool setByName(std::string_view name, std::string_view value, std::string* error = nullptr);

  // The options one test is evaluated with: its thrust fields follow the test's thrust data
  // (setThrustOptions, resetThrustOptions), except those given by name, which keep their values.
  DMTOptions forTest(bool testHasThrust) const;
  // Why the given thrust fields cannot apply to a test: Phi, Ko or OCR from thrust asked of a
  // test without thrust data, or OCR from thrust without Phi from thrust. Empty when they can.
  std::string thrustConflict(bool testHasThrust) const;
};

// The field names setByName takes, in the order of the record.
std::span<const std::string_view> optionFieldNames();
// The name people type for a field: without its type prefix, first letter in lower case unless
// a capital abbreviation starts the name ("sngFactorOCR" -> "factorOCR", "intK0Method" ->
// "K0Method", "sngOCRM" -> "OCRM").
std::string optionReadableName(std::string_view field);

}  // namespace koru
