#include "dmt/DMTOptions.h"

#include <array>
#include <cmath>
#include <optional>

#include "frame/Numbers.h"

namespace koru {

namespace {

constexpr std::array<MethodLine, 5> kK0Lines{{
    {"Norvaldin 1980", 0.826f, 0.47f, -0.6f, false},
    {"Lacasse 1988", 0.34f, 0.54f, 0.0f, false},
    {"Lunne 1989 (young clay)", 0.34f, 0.54f, 0.0f, false},
    {"Lunne 1989 (old clay)", 0.68f, 0.54f, 0.0f, false},
    {"Personal", 0.0f, 0.0f, 0.0f, true},
}};

constexpr std::array<MethodLine, 6> kOCRLines{{
    {"Norvaldin 1980", 0.34f, 1.56f, 0.0f, false},
    {"Lacasse 1988", 0.225f, 1.51f, 0.0f, false},
    {"Lunne 1989 (young clay)", 0.3f, 1.17f, 0.0f, false},
    {"Lunne 1989 (old clay)", 2.7f, 1.17f, 0.0f, false},
    {"Chang 1991 (marine clay)", 0.56f, 0.84f, 0.0f, false},
    {"Personal", 0.0f, 0.0f, 0.0f, true},
}};

// Line 0 is the built-in Rm, which has no coefficients: selecting it leaves m, n, k as they are
// (they are unused while blnRmPersonal is false).
constexpr std::array<MethodLine, 3> kRmLines{{
    {"Norvaldin 1980", 0.0f, 0.0f, 0.0f, false},
    {"Chang 1991 (marine clay)", 0.02f, 3.5f, 0.0f, false},
    {"Personal", 0.0f, 0.0f, 0.0f, true},
}};

constexpr std::array<MethodLine, 4> kCuLines{{
    {"Norvaldin 1980", 0.0925f, 1.25f, 0.0f, false},
    {"Lunne 1989", 0.084f, 1.25f, 0.0f, false},
    {"Chang 1991 (marine clay)", 0.074f, 1.25f, 0.0f, false},
    {"Personal", 0.0f, 0.0f, 0.0f, true},
}};

// Fills m, n, k from a table line unless the line keeps the user's values.
bool applyLine(std::span<const MethodLine> table, int index, int16_t& selected, float& m, float& n, float& k) {
  if (index < 0 || index >= static_cast<int>(table.size())) return false;
  const MethodLine& line = table[static_cast<size_t>(index)];
  selected = static_cast<int16_t>(index);
  if (!line.personal) {
    m = line.m;
    n = line.n;
    k = line.k;
  }
  return true;
}

bool fail(std::string* error, std::string text) {
  if (error) *error = std::move(text);
  return false;
}

}  // namespace

std::span<const MethodLine> k0MethodTable() { return kK0Lines; }
std::span<const MethodLine> ocrMethodTable() { return kOCRLines; }
std::span<const MethodLine> rmMethodTable() { return kRmLines; }
std::span<const MethodLine> cuMethodTable() { return kCuLines; }

bool DMTOptions::selectK0Method(int index) {
  return applyLine(kK0Lines, index, intK0Method, sngK0M, sngK0N, sngK0K);
}

bool DMTOptions::selectOCRMethod(int index) {
  return applyLine(kOCRLines, index, intOCRMethod, sngOCRM, sngOCRN, sngOCRK);
}

bool DMTOptions::selectRMMethod(int index) {
  if (index == 0) {
    intRMMethod = 0;
    blnRmPersonal = false;
    return true;
  }
  if (!applyLine(kRmLines, index, intRMMethod, sngRMM, sngRMN, sngRMK)) return false;
  blnRmPersonal = true;
  return true;
}

bool DMTOptions::selectCuMethod(int index) {
  return applyLine(kCuLines, index, intCuMethod, sngCuM, sngCuN, sngCuK);
}

bool DMTOptions::setByName(std::string_view name, std::string_view value, std::string* error) {
  const std::string field(name);
  const std::string text(value);

  if (name == "intPhiMethod" || name == "sngPhiIdMin" || name == "blnK0Thrust" || name == "sngK0ThrustIdMin" ||
      name == "intOCRThrust")
    return fail(error, field + ": follows the test's thrust data and cannot be set by hand");

  float* number = nullptr;
  if (name == "sngFactorOCR") number = &sngFactorOCR;
  else if (name == "sngGammaWater") number = &sngGammaWater;
  else if (name == "sngFilterId") number = &sngFilterId;
  else if (name == "sngFilterOCR") number = &sngFilterOCR;
  else if (name == "sngFilterKd") number = &sngFilterKd;
  else if (name == "sngFilterEd") number = &sngFilterEd;
  else if (name == "sngK0M") number = &sngK0M;
  else if (name == "sngK0N") number = &sngK0N;
  else if (name == "sngK0K") number = &sngK0K;
  else if (name == "sngOCRM") number = &sngOCRM;
  else if (name == "sngOCRN") number = &sngOCRN;
  else if (name == "sngOCRK") number = &sngOCRK;
  else if (name == "sngRMM") number = &sngRMM;
  else if (name == "sngRMN") number = &sngRMN;
  else if (name == "sngRMK") number = &sngRMK;
  else if (name == "sngCuM") number = &sngCuM;
  else if (name == "sngCuN") number = &sngCuN;
  else if (name == "sngCuK") number = &sngCuK;
  else if (name == "sngIdLimit") number = &sngIdLimit;
  if (number) {
    const std::optional<float> parsed = tryParseSingle(value);
    if (!parsed) return fail(error, field + ": '" + text + "' is not a number");
    *number = *parsed;
    return true;
  }

  bool* flag = nullptr;
  if (name == "blnFeeler") flag = &blnFeeler;
  else if (name == "blnRmPersonal") flag = &blnRmPersonal;
  if (flag) {
    if (value == "0") *flag = false;
    else if (value == "1") *flag = true;
    else return fail(error, field + ": '" + text + "' is not 0 or 1");
    return true;
  }

  bool (DMTOptions::*select)(int) = nullptr;
  std::span<const MethodLine> table;
  if (name == "intK0Method") select = &DMTOptions::selectK0Method, table = kK0Lines;
  else if (name == "intOCRMethod") select = &DMTOptions::selectOCRMethod, table = kOCRLines;
  else if (name == "intRMMethod") select = &DMTOptions::selectRMMethod, table = kRmLines;
  else if (name == "intCuMethod") select = &DMTOptions::selectCuMethod, table = kCuLines;
  if (select) {
    const std::optional<float> parsed = tryParseSingle(value);
    if (!parsed) return fail(error, field + ": '" + text + "' is not a number");
    const float index = *parsed;
    if (index != std::floor(index) || index < 0 || index >= static_cast<float>(table.size()))
      return fail(error, field + ": '" + text + "' is not a line of the table (0 to " +
                             std::to_string(table.size() - 1) + ")");
    return (this->*select)(static_cast<int>(index));
  }

  return fail(error, "unknown option '" + field + "'");
}

}  // namespace koru
