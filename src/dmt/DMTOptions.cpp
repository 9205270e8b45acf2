#include "dmt/DMTOptions.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <optional>

#include "dmt/Thrust.h"
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

namespace {

// One field that setByName knows. Exactly one of the member pointers is set; a thrust field
// has its bit in thrustFieldsGiven.
struct SettableField {
  std::string_view name;
  float DMTOptions::*number = nullptr;
  bool DMTOptions::*flag = nullptr;
  int16_t DMTOptions::*choice = nullptr;  // 0 or 1
  bool (DMTOptions::*select)(int) = nullptr;
  std::span<const MethodLine> lines;  // the table of a select... field
  int thrustBit = -1;
};

SettableField number(std::string_view name, float DMTOptions::*field, int thrustBit = -1) {
  return {name, field, nullptr, nullptr, nullptr, {}, thrustBit};
}
SettableField flag(std::string_view name, bool DMTOptions::*field, int thrustBit = -1) {
  return {name, nullptr, field, nullptr, nullptr, {}, thrustBit};
}
SettableField method(std::string_view name, bool (DMTOptions::*select)(int), std::span<const MethodLine> lines) {
  return {name, nullptr, nullptr, nullptr, select, lines, -1};
}
SettableField choice(std::string_view name, int16_t DMTOptions::*field, int thrustBit) {
  return {name, nullptr, nullptr, field, nullptr, {}, thrustBit};
}

const std::array<SettableField, 30>& settableFields() {
  using O = DMTOptions;
  static const std::array<SettableField, 30> fields{{
      number("sngFactorOCR", &O::sngFactorOCR),
      number("sngGammaWater", &O::sngGammaWater),
      flag("blnFeeler", &O::blnFeeler),
      number("sngFilterId", &O::sngFilterId),
      number("sngFilterOCR", &O::sngFilterOCR),
      number("sngFilterKd", &O::sngFilterKd),
      number("sngFilterEd", &O::sngFilterEd),
      method("intK0Method", &O::selectK0Method, kK0Lines),
      number("sngK0M", &O::sngK0M),
      number("sngK0N", &O::sngK0N),
      number("sngK0K", &O::sngK0K),
      method("intOCRMethod", &O::selectOCRMethod, kOCRLines),
      number("sngOCRM", &O::sngOCRM),
      number("sngOCRN", &O::sngOCRN),
      number("sngOCRK", &O::sngOCRK),
      flag("blnRmPersonal", &O::blnRmPersonal),
      method("intRMMethod", &O::selectRMMethod, kRmLines),
      number("sngRMM", &O::sngRMM),
      number("sngRMN", &O::sngRMN),
      number("sngRMK", &O::sngRMK),
      method("intCuMethod", &O::selectCuMethod, kCuLines),
      number("sngCuM", &O::sngCuM),
      number("sngCuN", &O::sngCuN),
      number("sngCuK", &O::sngCuK),
      number("sngIdLimit", &O::sngIdLimit),
      choice("intPhiMethod", &O::intPhiMethod, 0),
      number("sngPhiIdMin", &O::sngPhiIdMin, 1),
      flag("blnK0Thrust", &O::blnK0Thrust, 2),
      number("sngK0ThrustIdMin", &O::sngK0ThrustIdMin, 3),
      choice("intOCRThrust", &O::intOCRThrust, 4),
  }};
  return fields;
}

constexpr int kPhiMethodBit = 0, kK0ThrustBit = 2, kOCRThrustBit = 4;

bool sameIgnoringCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
         });
}

const SettableField* findField(std::string_view name) {
  for (const SettableField& f : settableFields())
    if (f.name == name || sameIgnoringCase(optionReadableName(f.name), name)) return &f;
  return nullptr;
}

}  // namespace

std::span<const std::string_view> optionFieldNames() {
  static const std::array<std::string_view, 30> names = [] {
    std::array<std::string_view, 30> out{};
    for (size_t i = 0; i < out.size(); ++i) out[i] = settableFields()[i].name;
    return out;
  }();
  return names;
}

std::string optionReadableName(std::string_view field) {
  std::string name(field.size() > 3 ? field.substr(3) : field);
  const bool abbreviation =
      name.size() > 1 && (std::isupper(static_cast<unsigned char>(name[1])) || std::isdigit(static_cast<unsigned char>(name[1])));
  if (!abbreviation && !name.empty()) name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
  return name;
}

bool DMTOptions::setByName(std::string_view name, std::string_view value, std::string* error) {
  const std::string written(name);
  const std::string text(value);
  const SettableField* field = findField(name);
  if (!field) return fail(error, "unknown option '" + written + "'");

  if (field->number) {
    const std::optional<float> parsed = tryParseSingle(value);
    if (!parsed) return fail(error, written + ": '" + text + "' is not a number");
    this->*field->number = *parsed;
  } else if (field->flag || field->choice) {
    if (value != "0" && value != "1") return fail(error, written + ": '" + text + "' is not 0 or 1");
    if (field->flag) this->*field->flag = value == "1";
    else this->*field->choice = static_cast<int16_t>(value == "1");
  } else {
    const std::optional<float> parsed = tryParseSingle(value);
    if (!parsed) return fail(error, written + ": '" + text + "' is not a number");
    const float index = *parsed;
    if (index != std::floor(index) || index < 0 || index >= static_cast<float>(field->lines.size()))
      return fail(error, written + ": '" + text + "' is not a line of the table (0 to " +
                             std::to_string(field->lines.size() - 1) + ")");
    return (this->*field->select)(static_cast<int>(index));
  }
  if (field->thrustBit >= 0) thrustFieldsGiven = static_cast<uint8_t>(thrustFieldsGiven | (1u << field->thrustBit));
  return true;
}

DMTOptions DMTOptions::forTest(bool testHasThrust) const {
  DMTOptions options = *this;
  if (testHasThrust)
    setThrustOptions(options);
  else
    resetThrustOptions(options);
  for (const SettableField& f : settableFields()) {
    if (f.thrustBit < 0 || !(thrustFieldsGiven & (1u << f.thrustBit))) continue;
    if (f.number) options.*f.number = this->*f.number;
    if (f.flag) options.*f.flag = this->*f.flag;
    if (f.choice) options.*f.choice = this->*f.choice;
  }
  return options;
}

std::string DMTOptions::thrustConflict(bool testHasThrust) const {
  const DMTOptions o = forTest(testHasThrust);
  const auto given = [this](int bit) { return (thrustFieldsGiven & (1u << bit)) != 0; };
  if (!testHasThrust) {
    if (given(kPhiMethodBit) && o.intPhiMethod == 1)
      return "intPhiMethod=1 (Phi from thrust) needs thrust data, and the test has none";
    if (given(kK0ThrustBit) && o.blnK0Thrust)
      return "blnK0Thrust=1 (Ko from thrust) needs thrust data, and the test has none";
    if (given(kOCRThrustBit) && o.intOCRThrust == 1)
      return "intOCRThrust=1 (OCR from thrust) needs thrust data, and the test has none";
  }
  if (given(kOCRThrustBit) && o.intOCRThrust == 1 && o.intPhiMethod != 1)
    return "intOCRThrust=1 (OCR from thrust) needs Phi from thrust (intPhiMethod=1)";
  return {};
}

}  // namespace koru
