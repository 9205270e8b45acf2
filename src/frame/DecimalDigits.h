#pragma once
// A number as its shortest decimal digits, so that rounding and formatting work on the value the
// user sees rather than on its binary approximation.

#include <string>

namespace koru {

struct DecimalDigits {
  bool negative = false;
  std::string digits;  // significant digits, no leading zeros; empty for zero
  int pointPos = 0;    // value = 0.digits x 10^pointPos

  static DecimalDigits of(double value);
  static DecimalDigits of(float value);

  enum class Tie { ToEven, AwayFromZero };
  // Keeps `decimals` digits after the point.
  void roundToDecimals(int decimals, Tie tie);
  // Keeps `count` significant digits.
  void roundToSignificant(int count, Tie tie);

  bool isZero() const { return digits.empty(); }
  double toDouble() const;

 private:
  void roundAt(int keep, Tie tie);
  void trim();
};

}  // namespace koru
