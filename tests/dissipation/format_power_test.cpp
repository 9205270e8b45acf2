#include <gtest/gtest.h>

#include "dissipation/FormatPower.h"

namespace koru {
namespace {

TEST(FormatPower, RoundsTheMantissaWithoutNormalisingItAgain) {
  EXPECT_EQ(formatPower(123456.0, 3), "1.235 * 10 ^ 5");
  EXPECT_EQ(formatPower(1.125, 2), "1.12 * 10 ^ 0") << "halves to even";
  EXPECT_EQ(formatPower(9.996e-4, 2), "10.00 * 10 ^ - 4");
  EXPECT_EQ(formatPower(2.7e-5, 0), "3.0 * 10 ^ - 5") << "no digits: whole mantissa, still one decimal";
  EXPECT_EQ(formatPower(0.0, 2), "") << "no logarithm, no text";
}

}  // namespace
}  // namespace koru
