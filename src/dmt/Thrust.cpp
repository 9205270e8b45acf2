// The thrust extension: Thrust.dat, the thrust operations of cls_DmtTEST, and the friction
// angle, Ko and OCR of sands from the thrust that pushed the blade.

#include "dmt/Thrust.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "dmt/cls_DmtTEST.h"
#include "frame/Files.h"
#include "frame/Numbers.h"
#include "frame/Text.h"
#include "frame/TextLines.h"
#include "frame/TextCodec.h"

namespace koru {

namespace fs = std::filesystem;

void setThrustOptions(DMTOptions& options) {
  options.intPhiMethod = 1;
  options.sngPhiIdMin = 1.2f;
  options.blnK0Thrust = true;
  options.sngK0ThrustIdMin = 1.2f;
  options.intOCRThrust = 1;
}

void resetThrustOptions(DMTOptions& options) {
  options.intPhiMethod = 0;
  options.sngPhiIdMin = 1.8f;
  options.blnK0Thrust = false;
  options.sngK0ThrustIdMin = 0.0f;
  options.intOCRThrust = 0;
}

// --- Thrust.dat ----------------------------------------------------------------------------

namespace {

constexpr std::string_view kKeyRodType = "DRILLED ROD TYPE";
constexpr std::string_view kKeyRodDiameter = "DRILLED ROD DIAMETER [CM]";
constexpr std::string_view kKeyRodWeight = "DRILLED ROD WEIGHT [KGF/METER]";
constexpr std::string_view kKeyReducerDiameter = "DIAMETER OF FRICTION REDUCER [CM]";
constexpr std::string_view kKeyRatioDelPhi = "SOIL-DMT/INTERNAL FRICTION ANGLE";
constexpr std::string_view kKeyBladeThickness = "BLADE THICKNESS [MM]";
constexpr std::string_view kKeyBladeWidth = "BLADE WIDTH [MM]";
constexpr std::string_view kKeyThrustUnits = "THRUST UNITS";

// A row's depth matches a file depth closer than this.
constexpr double kDepthMatch = 0.005;

// A text value on one line of its own: a line break inside it would end the head early.
std::string lineText(std::string_view text) {
  std::string clean(text);
  std::replace(clean.begin(), clean.end(), '\r', ' ');
  std::replace(clean.begin(), clean.end(), '\n', ' ');
  return utf8ToCp1252(clean);
}


// One "KEY = value" line of the head; false when a number of it is not one.
bool setRodField(RodData& rod, const std::string& key, std::string_view value) {
  float* number = nullptr;
  if (key == kKeyRodType) rod.strRodType = cp1252ToUtf8(value);
  else if (key == kKeyRodDiameter) number = &rod.sngRodDiameter;
  else if (key == kKeyRodWeight) number = &rod.sngRodWeight;
  else if (key == kKeyReducerDiameter) number = &rod.sngReducerDiameter;
  else if (key == kKeyRatioDelPhi) number = &rod.sngRatioDelPhi;
  else if (key == kKeyBladeThickness) number = &rod.sngBladeThickness;
  else if (key == kKeyBladeWidth) number = &rod.sngBladeWidth;
  else if (key == kKeyThrustUnits) rod.strThrustUnits = cp1252ToUtf8(value);
  if (!number) return true;
  const auto parsed = tryParseSingle(value);
  if (parsed) *number = *parsed;
  return parsed.has_value();
}

// The row of `depths` that the row pointer reaches from `pointer` when it walks towards `z`:
// up or down until a depth within kDepthMatch, stopping where it would turn back or leave the
// rows. Depths in rising order (as a loaded test keeps them) are searched by halving, so a
// file that jumps between the ends of a long test costs no walk; other orders are walked.
std::optional<size_t> walkToDepth(const std::vector<float>& depths, bool rising, size_t pointer, float z) {
  const size_t n = depths.size();
  if (pointer >= n) return std::nullopt;
  const auto matches = [z](float d) { return std::fabs(static_cast<double>(z) - d) < kDepthMatch; };
  if (rising) {
    const auto begin = depths.begin();
    if (depths[pointer] < z) {
      // Upwards over every depth below z that does not match.
      const auto stop = std::partition_point(begin + static_cast<std::ptrdiff_t>(pointer), depths.end(),
                                             [&](float d) { return d < z && !matches(d); });
      if (stop == depths.end() || !matches(*stop)) return std::nullopt;
      return static_cast<size_t>(stop - begin);
    }
    // Downwards over every depth not below z that does not match.
    const auto stop = std::partition_point(begin, begin + static_cast<std::ptrdiff_t>(pointer) + 1,
                                           [&](float d) { return d < z || matches(d); });
    if (stop == begin || !matches(*(stop - 1))) return std::nullopt;
    return static_cast<size_t>(stop - begin) - 1;
  }
  long p = static_cast<long>(pointer);
  int direction = 0;
  for (;;) {
    if (matches(depths[static_cast<size_t>(p)])) return static_cast<size_t>(p);
    const int step = depths[static_cast<size_t>(p)] < z ? 1 : -1;
    if (direction != 0 && step != direction) return std::nullopt;
    direction = step;
    p += step;
    if (p < 0 || p >= static_cast<long>(n)) return std::nullopt;
  }
}

// The number after the first "=" of one part of a row line ("Z = 1.20" or " TH = 850").
std::optional<float> partValue(std::string_view part) {
  const size_t eq = part.find('=');
  if (eq == std::string_view::npos) return std::nullopt;
  auto value = tryParseSingle(trimmed(part.substr(eq + 1)));
  if (!value || !std::isfinite(*value)) return std::nullopt;
  return value;
}

std::string forMessage(std::string_view line) {
  constexpr size_t kLongest = 40;
  std::string text = cp1252ToUtf8(line.substr(0, kLongest));
  if (line.size() > kLongest) text += "...";
  return "'" + text + "'";
}

}  // namespace

std::string thrustFileText(const RodData& rod, const std::vector<float>& depths, const std::vector<float>& thrusts) {
  const std::string crlf = "\r\n";
  std::string out;
  const auto line = [&](std::string_view key, const std::string& value) {
    out += key;
    out += " = ";
    out += value;
    out += crlf;
  };
  line(kKeyRodType, lineText(rod.strRodType));
  line(kKeyRodDiameter, formatNumber(rod.sngRodDiameter, "0.0#"));
  line(kKeyRodWeight, formatNumber(rod.sngRodWeight, "0.0#"));
  line(kKeyReducerDiameter, formatNumber(rod.sngReducerDiameter, "0.0#"));
  line(kKeyRatioDelPhi, formatNumber(rod.sngRatioDelPhi, "0.00#"));
  line(kKeyBladeThickness, formatNumber(rod.sngBladeThickness, "0.0#"));
  line(kKeyBladeWidth, formatNumber(rod.sngBladeWidth, "0.#"));
  line(kKeyThrustUnits, lineText(rod.strThrustUnits));
  out += crlf;
  const size_t n = std::min(depths.size(), thrusts.size());
  for (size_t i = 0; i < n; ++i) {
    if (!(thrusts[i] > 0)) continue;
    // A thrust under half a unit would be written as 0, which the reader takes as the end of
    // the rows: it is left out like a thrust of 0, so that the rows after it survive.
    const std::string thrust = formatNumber(thrusts[i], "0");
    if (thrust == "0") continue;
    out += "Z = " + formatNumber(depths[i], "0.00") + ", TH = " + thrust + crlf;
  }
  return out;
}

LoadResult parseThrustText(std::string_view bytes, const fs::path& file, const std::vector<float>& depths,
                           RodData& rod, std::vector<float>& thrusts, bool* leftRows) {
  if (leftRows) *leftRows = false;
  bytes = withoutBom(bytes);
  const size_t n = depths.size();
  thrusts.assign(n, 0.0f);
  const auto fail = [&](int line, std::string reason) {
    return LoadResult::fail(LoadStatus::Partial, {file, line, std::move(reason) + ": the rows from here on are not read"});
  };
  // A last line without its line end may have lost digits: it is not taken.
  const auto cutShort = [&](size_t pos) { return pos == bytes.size() && !endsWithLineEnd(bytes); };

  // The head: "KEY = value" lines up to the first line without "=".
  size_t pos = 0;
  int lineNumber = 0;
  std::string_view text;
  while (nextLine(bytes, pos, text)) {
    ++lineNumber;
    const size_t eq = text.find('=');
    if (eq == std::string_view::npos) break;
    if (cutShort(pos)) return fail(lineNumber, "the file ends early, in the middle of line " + std::to_string(lineNumber));
    const std::string key = upperAscii(trimmed(text.substr(0, eq)));
    if (!setRodField(rod, key, trimmed(text.substr(eq + 1))))
      return fail(lineNumber, cp1252ToUtf8(key) + " " + forMessage(trimmed(text.substr(eq + 1))) + " is not a number");
  }

  // The rows. The pointer stays where the last match left it, one row on, so a file in the
  // order of the rows is read in one pass. After a match on the last row it stands past the
  // rows: it has left them, and a further row with thrust ends the reading.
  const bool rising = std::is_sorted(depths.begin(), depths.end());
  size_t pointer = 0;
  while (nextLine(bytes, pos, text)) {
    ++lineNumber;
    if (trimmed(text).empty()) continue;
    if (cutShort(pos)) return fail(lineNumber, "the file ends early, in the middle of line " + std::to_string(lineNumber));
    const size_t comma = text.find(',');
    std::optional<float> z, thrust;
    if (comma != std::string_view::npos) {
      z = partValue(text.substr(0, comma));
      const std::string_view rest = text.substr(comma + 1);
      // A second comma is a field the row does not have.
      if (rest.find(',') == std::string_view::npos) thrust = partValue(rest);
    }
    if (!z || !thrust) return fail(lineNumber, "row " + forMessage(text) + " is not \"Z = depth, TH = thrust\"");
    if (!(*thrust > 0)) return {};  // a thrust of 0 marks the end of the rows

    const auto row = walkToDepth(depths, rising, pointer, *z);
    if (!row) {
      if (leftRows) *leftRows = true;
      return fail(lineNumber, "depth " + formatNumber(*z, "") + " m matches no row of the test");
    }
    thrusts[*row] = *thrust;
    pointer = *row + 1;
  }
  return {};
}

// --- The thrust operations of the record ----------------------------------------------------

fs::path cls_DmtTEST::thrustFilePath() const {
  if (strDatPath_.empty()) return {};
  return strDatPath_.parent_path() / "Thrust.dat";
}

bool cls_DmtTEST::hasThrustFile() const {
  const fs::path path = thrustFilePath();
  return !path.empty() && fileExists(path);
}

namespace {

// What adding thrust does to the record itself; the options are the caller's.
void markThrust(cls_DmtTEST& t) {
  t.blnHasThrust = true;
  t.rodData = RodData::addThrustDefaults();
  // The thrust column runs alongside the rows.
  t.vTH.resize(t.vZ.size(), 0.0f);
}

}  // namespace

void cls_DmtTEST::addThrust(DMTOptions& options) {
  markThrust(*this);
  setThrustOptions(options);
}

bool cls_DmtTEST::removeThrust(DMTOptions& options, Diagnostic* why) {
  blnHasThrust = false;
  resetThrustOptions(options);
  const fs::path path = thrustFilePath();
  if (path.empty()) return true;
  std::error_code ec;
  const fs::file_status st = fs::symlink_status(path, ec);
  if (st.type() == fs::file_type::not_found) return true;
  if (fs::is_directory(st) || !fs::remove(path, ec) || ec) {
    if (why) *why = Diagnostic{path, 0, "cannot be deleted" + (ec ? ": " + ec.message() : std::string())};
    return false;
  }
  return true;
}

bool cls_DmtTEST::loadThrust(DMTOptions* options, Diagnostic* why) {
  thrustPartial_ = thrustLeftRows_ = false;
  const fs::path path = thrustFilePath();
  if (path.empty()) return true;
  std::error_code ec;
  if (fs::status(path, ec).type() == fs::file_type::not_found) return true;
  Diagnostic problem{path, 0, ""};
  const auto bytes = readFileBytes(path, &problem);
  if (bytes) {
    const LoadResult read = parseThrust(*bytes, path, options);
    if (read.complete()) return true;
    problem = read.why;
  } else if (options) {
    addThrust(*options);
  } else {
    markThrust(*this);
  }
  thrustPartial_ = true;
  if (why) *why = problem;
  return false;
}

LoadResult cls_DmtTEST::parseThrust(std::string_view bytes, const fs::path& file, DMTOptions* options) {
  if (options) addThrust(*options);
  else markThrust(*this);
  return parseThrustText(bytes, file, vZ, rodData, vTH, &thrustLeftRows_);
}

bool cls_DmtTEST::saveThrust(Diagnostic* why) const {
  const fs::path path = thrustFilePath();
  if (path.empty()) {
    if (why) *why = Diagnostic{path, 0, "no file name given"};
    return false;
  }
  return writeFileAtomically(path, thrustFileText(rodData, vZ, vTH), why);
}

// --- From thrust to the friction angle -----------------------------------------------------
//
// The thrust read at the surface pushes the rods and the blade down; the rods' weight adds to
// it; the water lifts the rods; the soil holds the blade by the bearing capacity of its end and
// by friction on its two faces. The friction reducer above the blade opens a hole wider than the
// rods, so the rods themselves rub on nothing. Balancing these for one row gives the net end
// pressure qD of the blade, and the angle is the one whose bearing capacity equals it.
//
// Bearing capacity. The blade's end is a wedge pushed into sand at depth, so it follows the
// static penetration theory for wedges and cones of
//   H. T. Durgunoglu and J. K. Mitchell (1975), "Static penetration resistance of soils:
//   I - Analysis", Proc. ASCE Conference on In Situ Measurement of Soil Properties,
//   Raleigh NC, Vol. 1, pp. 151-171,
// for a cohesionless soil:   qD = gamma' B Ngq xi
// with B the blade's thickness (the wedge's base in the plane of the mechanism), gamma' the mean
// effective unit weight above the row (sigma'v / Z) and Ngq their combined factor of the soil's
// weight and of the depth. Their mechanism, in the plane across the blade:
//   - the wedge face, at psi = 90 deg - (apex angle) / 2 from the horizontal, pushes on the soil
//     with the obliquity delta = ratio x phi; the stress state there fixes the angle eta at which
//     the radial shear zone leaves the face:
//       tan delta (1 + sin phi sin(2 eta - phi)) = sin phi cos(2 eta - phi);
//   - a log spiral r = r0 e^(theta tan phi) sweeps theta0 = pi - (psi + eta) + beta and ends on
//     a plane at beta from the horizontal: beta = phi where the spiral stays in the ground, less
//     near the surface, where its end rises to the ground: the end lies m' B above the tip,
//       m' = sin beta cos(eta - phi) e^(theta0 tan phi) / (2 cos psi cos phi),  m' <= m = D/B;
//   - the soil above the spiral's end acts as a surcharge held by shear on a vertical plane
//     under the lateral pressure K sigma'v;
// and with I(theta0) their integral of the spiral's weight,
//   Ngq = cos(psi - delta) / cos delta x (1 + sin phi sin(2 eta - phi)) / (cos phi cos(eta - phi))
//         x [ I cos^2(eta - phi) / (4 cos^2 psi cos^2 phi)
//             + 3/4 cos(eta - phi) / (cos psi cos phi) cos^2 beta e^(2 theta0 tan phi) (m - 2/3 m')
//             + K cos psi cos phi / cos(eta - phi) (m^3 - (m - m')^2 (m + 2 m')) ]  - tan psi / 4.
// Deep down the bracket grows as m, so gamma' B Ngq = sigma'v Ngq / m stays finite.
//
// K is the sand's Ko, which the dilatometer measures where a cone can't: from Kd and the blade's
// own qD with the calibration-chamber fit of
//   G. Baldi and others (1986),
//   "Flat dilatometer tests in calibration chambers", Proc. In Situ '86, ASCE
//   Conference, Blacksburg VA, pp. 431-446:   Ko = 0.376 + 0.095 Kd - 0.0017 qD / sigma'v.
// The blade's shape, B/L = thickness / width, takes the shape factor of a rectangle,
// xi = 1 - 0.4 B/L, after E. E. De Beer (1970), "Experimental determination of the shape factors
// and the bearing capacity factors of sand", Geotechnique 20(4), pp. 387-411.

namespace {

constexpr double kSectionFactor = 3.1416 / 4;  // pi / 4 for the round sections of rods and reducer
constexpr double kKgfPerBarCm2 = 1.019;        // 1 bar on 1 cm2, in kgf
constexpr double kWaterMetresPerBar = 10.19;   // head of water of 1 bar
constexpr double kKgfPerCm2Metre = 0.1;        // water on 1 cm2 over 1 m of height, in kgf
constexpr double kBladeFacesCm2 = 355.0;       // the two faces of the blade in the soil
constexpr double kPhiLowest = 25.0, kPhiHighest = 42.0;  // degrees
constexpr double kCoarseStep = 5.0, kFineStep = 0.5;     // degrees
constexpr int kBisections = 16;

constexpr double kQuarterPi = 0.7854;
constexpr double kBladeApex = 0.54105;  // radians, 31 degrees: the angle of the blade's cutting edge
// The lateral pressure on the plane above the spiral: Ko from Kd and qD / sigma'v.
constexpr double kKoBase = 0.376, kKoPerKd = 0.095, kKoPerQd = 0.0017;

double radians(double degrees) { return degrees * kPi / 180.0; }

// Step 1: the angles at the blade's face, psi of the face from the horizontal and eta where the
// radial shear zone leaves it. eta solves the obliquity condition in closed form: with
// u = 2 eta - phi it reads cos(u + delta) = sin delta / sin phi. A smooth face gives the passive
// 45 deg + phi/2; a face as rough as the soil gives eta = 0.
struct FaceAngles {
  double psi, eta;
};
FaceAngles faceAngles(double phi, double delta) {
  return {2 * kQuarterPi - kBladeApex / 2, kQuarterPi + (phi - delta - std::asin(Min(1.0, std::sin(delta) / std::sin(phi)))) / 2};
}

// Step 2: where the log spiral ends, for the relative depth m = D/B. Deep down it ends on the
// plane at beta = phi; where that end would lie above the ground, beta is lowered until the end
// meets the ground (m' = m). m' grows with beta, so halving the interval finds it.
struct SpiralEnd {
  double beta, theta0, mPrime;
};
SpiralEnd spiralEnd(double phi, const FaceAngles& a, double m) {
  const auto at = [&](double beta) {
    const double theta0 = kPi - (a.psi + a.eta) + beta;
    const double mPrime = 0.5 * std::sin(beta) * std::cos(a.eta - phi) * std::exp(theta0 * std::tan(phi)) /
                          (std::cos(a.psi) * std::cos(phi));
    return SpiralEnd{beta, theta0, mPrime};
  };
  SpiralEnd end = at(phi);
  if (end.mPrime < m) return end;
  double low = 0, high = phi;
  for (int step = 0; step < 50; ++step) {
    const double middle = (low + high) / 2;
    if (at(middle).mPrime > m) high = middle;
    else low = middle;
  }
  return at((low + high) / 2);
}

// Step 3: the combined factor Ngq, with the soil's weight over the spiral (the integral I, whose
// closed form carries 1 / (1 + 9 tan^2 phi)), the surcharge above the spiral's end and the shear
// that K mobilises on the vertical plane over it. m'^2 (3 m - 2 m') is the bracket's
// m^3 - (m - m')^2 (m + 2 m') without the cancellation of two cubes in the hundreds.
double nGammaQ(double phi, double delta, double m, double k) {
  const FaceAngles a = faceAngles(phi, delta);
  const SpiralEnd s = spiralEnd(phi, a, m);
  const double t = std::tan(phi);
  const double grow3 = std::exp(3 * s.theta0 * t);
  const double spiral = (3 * t * (grow3 * std::cos(s.beta) - std::cos(s.theta0 - s.beta)) +
                         (grow3 * std::sin(s.beta) + std::sin(s.theta0 - s.beta))) /
                        (1 + 9 * t * t);
  const double cPsi = std::cos(a.psi), cPhi = std::cos(phi), cEta = std::cos(a.eta - phi);
  const double face = std::cos(a.psi - delta) / std::cos(delta) *
                      (1 + std::sin(phi) * std::sin(2 * a.eta - phi)) / (cPhi * cEta);
  const double weight = 0.25 * spiral * cEta * cEta / (cPsi * cPsi * cPhi * cPhi);
  const double surcharge = 0.75 * cEta / (cPsi * cPhi) * std::cos(s.beta) * std::cos(s.beta) *
                           std::exp(2 * s.theta0 * t) * (m - 2.0 / 3.0 * s.mPrime);
  const double shear = k * cPsi * cPhi / cEta * s.mPrime * s.mPrime * (3 * m - 2 * s.mPrime);
  return face * (weight + surcharge + shear) - std::tan(a.psi) / 4;
}

struct ThrustBalance {
  double pushKgf = 0;         // thrust + rods' weight - water's lift on the rods
  double facesNormalKgf = 0;  // effective horizontal force on the blade's faces
  double endAreaCm2 = 0;
  double ratioDelPhi = 0;
  double sigmaBar = 0, kd = 0;
  double m = 0, shape = 0;  // D/B, and the shape factor of the blade's end

  // The net pressure the thrust leaves for the blade's end, bar.
  double netEndBar(double phiDegrees) const {
    const double friction = facesNormalKgf * std::tan(radians(ratioDelPhi * phiDegrees));
    return (pushKgf - friction) / (kKgfPerBarCm2 * endAreaCm2);
  }

  // Bearing capacity minus the net end pressure, bar. It grows with the angle: the bearing
  // capacity rises, the faces take more of the thrust, and the smaller qD leaves a larger Ko.
  double excess(double phiDegrees) const {
    const double qd = netEndBar(phiDegrees);
    const double k = Max(0.0, kKoBase + kKoPerKd * kd - kKoPerQd * qd / sigmaBar);
    const double phi = radians(phiDegrees);
    const double bearing = sigmaBar * shape * nGammaQ(phi, ratioDelPhi * phi, m, k) / m;
    return bearing - qd;
  }
};

}  // namespace

double solveThrustPhi(double z, double thrust, double sigmaBar, double kd, double /*id*/, double uoBar,
                      double poBar, const RodData& rod) {
  for (double v : {z, thrust, sigmaBar, kd, uoBar, poBar})
    if (!std::isfinite(v)) return 0.0;
  const double thicknessCm = rod.sngBladeThickness / 10.0, widthCm = rod.sngBladeWidth / 10.0;
  const double rodSection = kSectionFactor * rod.sngRodDiameter * rod.sngRodDiameter;
  const double reducerSection = kSectionFactor * rod.sngReducerDiameter * rod.sngReducerDiameter;
  if (!(z > 0) || !(sigmaBar > 0) || !(thicknessCm > 0) || !(widthCm > 0) || !std::isfinite(rod.sngRodWeight) ||
      !std::isfinite(rodSection))
    return 0.0;
  // The blade can't grip the soil harder than the soil grips itself: a ratio outside 0..1 is a
  // typing error, not a soil, and gives no angle.
  if (!(rod.sngRatioDelPhi >= 0 && rod.sngRatioDelPhi <= 1)) return 0.0;
  // Without a reducer wider than the rods, the rods rub along the whole hole by an amount that
  // nothing measured tells, and the thrust can't be taken down to the blade.
  if (!(reducerSection > rodSection)) return 0.0;

  ThrustBalance b;
  const double waterHead = kWaterMetresPerBar * uoBar;
  b.pushKgf = thrust + static_cast<double>(rod.sngRodWeight) * z - rodSection * waterHead * kKgfPerCm2Metre;
  b.facesNormalKgf = kBladeFacesCm2 * Max(0.0, poBar - uoBar) * kKgfPerBarCm2;
  b.endAreaCm2 = thicknessCm * widthCm;
  b.ratioDelPhi = rod.sngRatioDelPhi;
  b.sigmaBar = sigmaBar;
  b.kd = kd;
  const double narrow = Min(thicknessCm, widthCm), wide = Max(thicknessCm, widthCm);
  b.m = z * 100.0 / narrow;
  b.shape = 1 - 0.4 * narrow / wide;

  // The bracket: step up from 25 degrees by 5 to the first angle whose bearing capacity reaches
  // the net pressure, then narrow it in steps of 0.5. Below 25 or beyond 42 there is no answer.
  if (!(b.excess(kPhiLowest) <= 0)) return 0.0;
  double low = kPhiLowest, high = kPhiLowest;
  bool bracketed = false;
  while (high < kPhiHighest) {
    high = Min(low + kCoarseStep, kPhiHighest);
    const double e = b.excess(high);
    if (!std::isfinite(e)) return 0.0;
    if (e >= 0) {
      bracketed = true;
      break;
    }
    low = high;
  }
  if (!bracketed) return 0.0;
  const double coarseHigh = high;
  while (low < coarseHigh) {
    high = Min(low + kFineStep, coarseHigh);
    if (b.excess(high) >= 0) break;
    low = high;
  }
  for (int step = 0; step < kBisections; ++step) {
    const double middle = (low + high) / 2;
    if (b.excess(middle) >= 0) high = middle;
    else low = middle;
  }
  return (low + high) / 2;
}

double thrustPhiPlane(double sigmaBar, double phi) {
  if (!(phi > 0)) return 0.0;
  const double rad = phi * kPi / 180.0;
  const double plane = std::atan(std::tan(rad) - 0.046 + 0.105 * log10Guarded((1.0 + std::sin(rad)) * sigmaBar));
  return plane * 180.0 / kPi;
}

double thrustK0(float id, double kd, double phi) {
  if (!(id >= 1.2f && phi > 0)) return 0.0;
  const double f = phi <= 32 ? phi : phi - (phi - 32) / 3;
  const double s = 1.0 - std::sin(f * kPi / 180.0);
  const double denominator = 717.0 * s - 192.0;
  if (denominator == 0) return 0.0;
  return ((86.0 * kd - 152.0) * s + 717.0 * s * s - (23.0 * kd + 40.0)) / denominator;
}

}  // namespace koru
