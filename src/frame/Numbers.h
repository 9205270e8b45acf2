#pragma once
// Number conversion shared by every file format and window: all numbers pass between text and
// memory through these functions, so that files read the same on every machine (a point is the
// decimal separator whatever the locale) and rounding is the same everywhere.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace koru {

// Nearest integer, halves to the even one (2.5 -> 2, 3.5 -> 4).
double roundHalfEven(double x);

// Rounds to `decimals` decimal places, halves to even, judged on the number's shortest decimal
// form: 0.125 -> 0.12, and 2.675f -> 2.68 because the user typed 2.675, not its binary neighbour.
double roundTo(double x, int decimals);
double roundTo(float x, int decimals);

// Conversion to a 16-bit integer with halves to even; nullopt when out of range or not finite.
std::optional<int16_t> toInt16(double x);

// Text to a 32-bit float. Leading and trailing blanks are ignored; anything that is not a plain
// decimal number (optionally signed, with an optional exponent) gives 0.
float parseSingle(std::string_view text);
// The same, telling a conversion failure apart from a written zero.
std::optional<float> tryParseSingle(std::string_view text);
std::optional<double> tryParseDouble(std::string_view text);

// Formats with a pattern of "0" (digit always shown), "#" (digit shown if significant) and one
// "." ("0.00#", "#.0", "0000" ...). Halves round away from zero, on the number's shortest decimal
// form. An empty pattern gives the plain conversion: 7 significant digits for a float, 15 for a
// double. A lone "." left at the end is dropped ("0.#" of 3 gives "3").
std::string formatNumber(float value, std::string_view pattern);
std::string formatNumber(double value, std::string_view pattern);

// The machine locale's decimal separator ("," on many European machines). Files never use it:
// it is only for telling the user what they may type.
std::string localDecimalSep();

// True if a / b is a whole number (false for b = 0).
bool isMultiple(float a, int16_t b);

// Angles use pi taken as 3.1416, as every stored angle was computed that way.
inline constexpr double kPi = 3.1416;
float degToRad(float degrees);
float radToDeg(float radians);

// Base-10 logarithm that never fails: a zero or negative argument gives 0.
double log10Guarded(double x);

// a if a >= b, else b; a if a <= b, else b (the order decides which of two equal values is kept).
template <typename T> constexpr T Max(T a, T b) { return a >= b ? a : b; }
template <typename T> constexpr T Min(T a, T b) { return a <= b ? a : b; }

inline constexpr float gravity() { return 9.81f; }

}  // namespace koru
