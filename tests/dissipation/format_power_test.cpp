#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "dissipation/FormatPower.h"

namespace koru {
namespace {

TEST(FormatPower, WritesMantissaPowerAndBlankAfterEachMinus) {
  EXPECT_EQ(formatPower(0.000194, 2), "1.94 * 10 ^ - 4");
  EXPECT_EQ(formatPower(7.0, 2), "7.00 * 10 ^ 0");
  EXPECT_EQ(formatPower(123456.0, 3), "1.235 * 10 ^ 5");
  EXPECT_EQ(formatPower(7.0 / 60.0, 3), "1.167 * 10 ^ - 1");
  EXPECT_EQ(formatPower(3.5e-12, 1), "3.5 * 10 ^ - 12");
}

TEST(FormatPower, ExactPowersOfTenKeepAMantissaOfOne) {
  EXPECT_EQ(formatPower(0.001, 2), "1.00 * 10 ^ - 3");
  EXPECT_EQ(formatPower(1.0, 2), "1.00 * 10 ^ 0");
  EXPECT_EQ(formatPower(1e-7, 2), "1.00 * 10 ^ - 7");
  EXPECT_EQ(formatPower(1e22, 2), "1.00 * 10 ^ 22");
}

TEST(FormatPower, MantissaRoundingHalvesToEvenAndIsNotNormalisedAgain) {
  EXPECT_EQ(formatPower(1.125, 2), "1.12 * 10 ^ 0");
  EXPECT_EQ(formatPower(1.375, 2), "1.38 * 10 ^ 0");
  EXPECT_EQ(formatPower(9.996e-4, 2), "10.00 * 10 ^ - 4");
}

// No digits: the mantissa is rounded to a whole number, then written as "0.0".
TEST(FormatPower, ZeroDigitsRoundTheMantissaWholeAndStillShowOneDecimal) {
  EXPECT_EQ(formatPower(2.7e-5, 0), "3.0 * 10 ^ - 5");
  EXPECT_EQ(formatPower(2.4e-5, 0), "2.0 * 10 ^ - 5");
  EXPECT_EQ(formatPower(0.000194, 0), "2.0 * 10 ^ - 4");
}

TEST(FormatPower, ValuesWithoutALogarithmGiveAnEmptyText) {
  EXPECT_EQ(formatPower(0.0, 2), "");
  EXPECT_EQ(formatPower(-7.0, 2), "");
  EXPECT_EQ(formatPower(std::nan(""), 2), "");
  EXPECT_EQ(formatPower(std::numeric_limits<double>::infinity(), 2), "");
  EXPECT_FALSE(formatPower(std::numeric_limits<double>::denorm_min(), 2).empty());
  EXPECT_FALSE(formatPower(std::numeric_limits<double>::max(), 2).empty());
}

// Any positive value reads back from its text within half a unit of the last mantissa digit.
TEST(FormatPower, TextReadsBackToTheValue) {
  std::mt19937 gen(7);
  for (int run = 0; run < 2000; ++run) {
    const double exponent = static_cast<double>(gen()) / 4294967296.0 * 40.0 - 20.0;
    const double x = std::pow(10.0, exponent);
    const int digits = 1 + static_cast<int>(gen() % 4);
    const std::string text = formatPower(x, digits);
    const size_t star = text.find(" * 10 ^ ");
    ASSERT_NE(star, std::string::npos) << text;
    const std::string mantissa = text.substr(0, star);
    ASSERT_EQ(mantissa.size() - mantissa.find('.') - 1, static_cast<size_t>(digits)) << text;
    std::string power = text.substr(star + 8);
    int sign = 1;
    if (power.rfind("- ", 0) == 0) {
      sign = -1;
      power = power.substr(2);
    }
    const int e = sign * std::stoi(power);
    const double m = std::stod(mantissa);
    EXPECT_GE(m, 1.0) << text;
    EXPECT_LE(m, 10.0) << text;
    EXPECT_NEAR(m * std::pow(10.0, e), x, 0.5000001 * std::pow(10.0, e - digits)) << text;
  }
}

}  // namespace
}  // namespace koru
