#include <gtest/gtest.h>

#include "frame/Numbers.h"

namespace koru {
namespace {

TEST(FormatNumber, OptionalDigitsAppearOnlyWhenNotZero) {
  EXPECT_EQ(formatNumber(1.5f, "0.00#"), "1.50");
  EXPECT_EQ(formatNumber(1.505f, "0.00#"), "1.505");
  EXPECT_EQ(formatNumber(1.5055f, "0.00#"), "1.506");
  EXPECT_EQ(formatNumber(2.0f, "0.0#"), "2.0");
  EXPECT_EQ(formatNumber(0.1234567f, "0.####"), "0.1235");
}

TEST(FormatNumber, LoneTrailingPointIsDropped) {
  EXPECT_EQ(formatNumber(3.0f, "0.#"), "3");
  EXPECT_EQ(formatNumber(3.04f, "0.#"), "3");
  EXPECT_EQ(formatNumber(3.06f, "0.#"), "3.1");
}

TEST(FormatNumber, HashIntegerPartOmitsLeadingZero) {
  EXPECT_EQ(formatNumber(0.5f, "#.0"), ".5");
  EXPECT_EQ(formatNumber(12.25f, "#.#"), "12.3");
  EXPECT_EQ(formatNumber(0.0f, "#"), "");
}

TEST(FormatNumber, ZeroPaddedIntegerPart) {
  EXPECT_EQ(formatNumber(12.3f * 100, "0000"), "1230");
  EXPECT_EQ(formatNumber(5.0f, "0000"), "0005");
  EXPECT_EQ(formatNumber(5.5f, "00.00"), "05.50");
}

TEST(FormatNumber, HalvesRoundAwayFromZeroOnTheDecimalValue) {
  EXPECT_EQ(formatNumber(0.125f, "0.00"), "0.13");
  EXPECT_EQ(formatNumber(-0.125f, "0.00"), "-0.13");
  EXPECT_EQ(formatNumber(2.675f, "0.00"), "2.68");  // binary value is 2.67499995...
  EXPECT_EQ(formatNumber(2.5, "0"), "3");
  EXPECT_EQ(formatNumber(9.995, "0.00"), "10.00");
}

TEST(FormatNumber, NegativeValueRoundingToZeroHasNoSign) {
  EXPECT_EQ(formatNumber(-0.001f, "0.00"), "0.00");
  EXPECT_EQ(formatNumber(-0.4, "0"), "0");
}

TEST(FormatNumber, SmallValuesKeepTheirLeadingZeros) {
  EXPECT_EQ(formatNumber(0.000194, "0.0000####"), "0.000194");
  EXPECT_EQ(formatNumber(0.05f, "0.000#"), "0.050");
  EXPECT_EQ(formatNumber(0.0004f, "0.00"), "0.00");
  EXPECT_EQ(formatNumber(0.005f, "0.00"), "0.01");
}

TEST(FormatNumber, PlainConversionOfAFloatHasSevenSignificantDigits) {
  EXPECT_EQ(formatNumber(0.1f, ""), "0.1");
  EXPECT_EQ(formatNumber(1.0f / 3.0f, ""), "0.3333333");
  EXPECT_EQ(formatNumber(34.7f, ""), "34.7");
  EXPECT_EQ(formatNumber(-17.0f, ""), "-17");
  EXPECT_EQ(formatNumber(0.0f, ""), "0");
  EXPECT_EQ(formatNumber(1234567.0f, ""), "1234567");
  EXPECT_EQ(formatNumber(12345678.0f, ""), "1.234568E+07");
  EXPECT_EQ(formatNumber(0.00001f, ""), "0.00001");
  EXPECT_EQ(formatNumber(0.000001f, ""), "1E-06");
}

TEST(FormatNumber, PlainConversionOfADoubleHasFifteenSignificantDigits) {
  EXPECT_EQ(formatNumber(17.0 / 9.81, ""), "1.7329255861366");
  EXPECT_EQ(formatNumber(roundTo(17.0 / 9.81, 5), ""), "1.73293");
  EXPECT_EQ(formatNumber(0.15, ""), "0.15");
}

}  // namespace
}  // namespace koru
