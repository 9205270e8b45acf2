#pragma once
// Very small and very large consolidation figures (Ch, Kh) are shown as a mantissa and a power
// of ten, in a form that reads the same on every machine: "1.94 * 10 ^ - 4".

#include <string>

namespace koru {

// e = floor(log10(x)); the mantissa x / 10^e rounded to `digits` decimals (halves to even) and
// written with `digits` decimals, at least one ("0.0" for no digits), then " * 10 ^ " and e, every "-" followed
// by a blank. The mantissa is not normalised again after rounding, so 9.996e-4 with two digits
// reads "10.00 * 10 ^ - 4", as users have always seen it. A value that has no logarithm (zero,
// negative, not finite) gives the empty text, which windows show as an empty field.
std::string formatPower(double x, int digits);

}  // namespace koru
