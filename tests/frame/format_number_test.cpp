#include <gtest/gtest.h>

#include "frame/Numbers.h"

namespace koru {
namespace {

TEST(FormatNumber, PatternsRoundHalvesAwayFromZeroOnTheDecimalValue) {
  const struct {
    double value;
    bool single;  // the value as a float
    const char *pattern, *text;
  } cases[] = {
      {1.505, true, "0.00#", "1.505"},       {2.0, true, "0.0#", "2.0"},  // optional digits only when not zero
      {3.04, true, "0.#", "3"},              // a lone trailing point is dropped
      {0.5, true, "#.0", ".5"},              {0.0, true, "#", ""},  // "#" omits the leading zero
      {-0.125, true, "0.00", "-0.13"},       {2.675, true, "0.00", "2.68"},  // binary value is 2.67499995...
      {9.995, false, "0.00", "10.00"},       {-0.4, false, "0", "0"},  // no sign on a rounded zero
      {0.000194, false, "0.0000####", "0.000194"}, {0.005, true, "0.00", "0.01"},
      // Plain conversion: seven significant digits for a float.
      {1.0 / 3.0, true, "", "0.3333333"},   {12345678.0, true, "", "1.234568E+07"}, {0.000001, true, "", "1E-06"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.single ? formatNumber(static_cast<float>(c.value), c.pattern) : formatNumber(c.value, c.pattern), c.text)
        << c.value << " " << c.pattern;
}

}  // namespace
}  // namespace koru
