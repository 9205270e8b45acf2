#include "frame/Numbers.h"

#include <charconv>
#include <clocale>
#include <cmath>
#include <limits>

#include "frame/DecimalDigits.h"

namespace koru {

double roundHalfEven(double x) {
  if (!std::isfinite(x)) return x;
  return std::nearbyint(x);  // default rounding mode: to nearest, ties to even
}

namespace {

// Rounding on the binary value agrees with rounding on the shortest decimal form unless the
// value lies next to a rounding boundary, so only those few values take the slow decimal path.
// `relativeSlack` covers the distance between a value and its shortest decimal form.
std::optional<double> roundAwayFromBoundary(double x, int decimals, double relativeSlack) {
  static constexpr double kPowers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  if (decimals < 0 || decimals > 15) return std::nullopt;
  const double scale = kPowers[decimals];
  const double scaled = x * scale;
  if (!(std::fabs(scaled) < 4.0e15)) return std::nullopt;
  const double distanceToHalf = std::fabs(std::fabs(scaled - std::floor(scaled)) - 0.5);
  if (distanceToHalf <= relativeSlack * std::fabs(scaled) + 1e-9) return std::nullopt;
  return std::nearbyint(scaled) / scale;
}

template <typename T>
double roundOnDigits(T x, int decimals) {
  auto d = DecimalDigits::of(x);
  d.roundToDecimals(decimals, DecimalDigits::Tie::ToEven);
  return d.toDouble();
}

}  // namespace

double roundTo(double x, int decimals) {
  if (!std::isfinite(x)) return x;
  if (auto fast = roundAwayFromBoundary(x, decimals, 1e-14)) return *fast;
  return roundOnDigits(x, decimals);
}

double roundTo(float x, int decimals) {
  if (!std::isfinite(x)) return x;
  if (auto fast = roundAwayFromBoundary(x, decimals, 1e-6)) return *fast;
  return roundOnDigits(x, decimals);
}

std::optional<int16_t> toInt16(double x) {
  if (!std::isfinite(x)) return std::nullopt;
  double r = roundHalfEven(x);
  if (r < std::numeric_limits<int16_t>::min() || r > std::numeric_limits<int16_t>::max())
    return std::nullopt;
  return static_cast<int16_t>(r);
}

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view trimBlanks(std::string_view s) {
  while (!s.empty() && isBlank(s.front())) s.remove_prefix(1);
  while (!s.empty() && isBlank(s.back())) s.remove_suffix(1);
  return s;
}

// Only plain decimal numbers: [+-]digits[.digits][(e|E)[+-]digits]; no "inf", "nan" or hex.
bool isPlainNumber(std::string_view s) {
  size_t i = 0;
  if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
  size_t mantissaDigits = 0;
  while (i < s.size() && s[i] >= '0' && s[i] <= '9') ++i, ++mantissaDigits;
  if (i < s.size() && s[i] == '.') {
    ++i;
    while (i < s.size() && s[i] >= '0' && s[i] <= '9') ++i, ++mantissaDigits;
  }
  if (mantissaDigits == 0) return false;
  if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
    ++i;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
    size_t expDigits = 0;
    while (i < s.size() && s[i] >= '0' && s[i] <= '9') ++i, ++expDigits;
    if (expDigits == 0) return false;
  }
  return i == s.size();
}

template <typename T>
std::optional<T> parsePlain(std::string_view text) {
  auto s = trimBlanks(text);
  if (!isPlainNumber(s)) return std::nullopt;
  if (s.front() == '+') s.remove_prefix(1);
  T value{};
  auto res = std::from_chars(s.data(), s.data() + s.size(), value);
  if (res.ec != std::errc() || res.ptr != s.data() + s.size() || !std::isfinite(value))
    return std::nullopt;
  return value;
}

// The plain conversion: the shortest digits within `significant`, in fixed notation while the
// exponent is moderate and in "1.234568E+07" form beyond, as a desktop program prints numbers.
std::string plainConversion(DecimalDigits d, int significant) {
  d.roundToSignificant(significant, DecimalDigits::Tie::AwayFromZero);
  if (d.isZero()) return "0";
  std::string out = d.negative ? "-" : "";
  const int n = static_cast<int>(d.digits.size());
  if (d.pointPos > significant || d.pointPos < -4) {
    out += d.digits[0];
    if (n > 1) {
      out += '.';
      out.append(d.digits, 1);
    }
    int e = d.pointPos - 1;
    out += e < 0 ? "E-" : "E+";
    int ae = std::abs(e);
    if (ae < 10) out += '0';
    out += std::to_string(ae);
    return out;
  }
  if (d.pointPos <= 0) {
    out += "0.";
    out.append(static_cast<size_t>(-d.pointPos), '0');
    out += d.digits;
  } else if (d.pointPos >= n) {
    out += d.digits;
    out.append(static_cast<size_t>(d.pointPos - n), '0');
  } else {
    out.append(d.digits, 0, static_cast<size_t>(d.pointPos));
    out += '.';
    out.append(d.digits, static_cast<size_t>(d.pointPos));
  }
  return out;
}

std::string patterned(DecimalDigits d, std::string_view pattern) {
  auto dot = pattern.find('.');
  std::string_view intPattern = pattern.substr(0, dot);
  std::string_view fracPattern = dot == std::string_view::npos ? "" : pattern.substr(dot + 1);
  int minInt = 0;
  for (char c : intPattern) minInt += (c == '0');
  int minFrac = 0, maxFrac = 0;
  for (char c : fracPattern) {
    if (c == '0') ++minFrac, ++maxFrac;
    if (c == '#') ++maxFrac;
  }
  d.roundToDecimals(maxFrac, DecimalDigits::Tie::AwayFromZero);

  std::string intDigits, fracDigits;
  const int n = static_cast<int>(d.digits.size());
  for (int i = 0; i < d.pointPos && !d.isZero(); ++i) intDigits += i < n ? d.digits[static_cast<size_t>(i)] : '0';
  if (!d.isZero()) {
    if (d.pointPos >= 0) {
      if (d.pointPos < n) fracDigits = d.digits.substr(static_cast<size_t>(d.pointPos));
    } else {
      fracDigits = std::string(static_cast<size_t>(-d.pointPos), '0') + d.digits;
    }
  }
  while (static_cast<int>(fracDigits.size()) < minFrac) fracDigits += '0';
  while (static_cast<int>(intDigits.size()) < minInt) intDigits.insert(intDigits.begin(), '0');

  std::string out = (d.negative && !d.isZero()) ? "-" : "";
  out += intDigits;
  if (dot != std::string_view::npos) {
    out += '.';
    out += fracDigits;
  }
  return out;
}

std::string format(DecimalDigits d, std::string_view pattern, int plainDigits) {
  std::string out = pattern.empty() ? plainConversion(std::move(d), plainDigits) : patterned(std::move(d), pattern);
  if (!out.empty() && out.back() == '.') out.pop_back();
  return out;
}

}  // namespace

std::optional<float> tryParseSingle(std::string_view text) { return parsePlain<float>(text); }
std::optional<double> tryParseDouble(std::string_view text) { return parsePlain<double>(text); }

float parseSingle(std::string_view text) { return tryParseSingle(text).value_or(0.0f); }

std::string formatNumber(float value, std::string_view pattern) {
  if (!std::isfinite(value)) return "0";
  return format(DecimalDigits::of(value), pattern, 7);
}

std::string formatNumber(double value, std::string_view pattern) {
  if (!std::isfinite(value)) return "0";
  return format(DecimalDigits::of(value), pattern, 15);
}

std::string localDecimalSep() {
  const std::lconv* conventions = std::localeconv();
  return conventions && conventions->decimal_point && *conventions->decimal_point ? conventions->decimal_point : ".";
}

bool isMultiple(float a, int16_t b) {
  if (b == 0) return false;
  double q = static_cast<double>(a) / b;
  return std::isfinite(q) && q == std::floor(q);
}

float degToRad(float degrees) { return static_cast<float>(degrees * kPi / 180.0); }
float radToDeg(float radians) { return static_cast<float>(radians * 180.0 / kPi); }

double log10Guarded(double x) { return x > 0 ? std::log10(x) : 0.0; }

}  // namespace koru
