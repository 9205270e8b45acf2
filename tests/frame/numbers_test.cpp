#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

#include "frame/Bytes.h"
#include "frame/DecimalDigits.h"
#include "frame/Numbers.h"
#include "frame/Pressure.h"

namespace koru {
namespace {

TEST(Rounding, HalvesGoToTheEvenNeighbour) {
  EXPECT_EQ(roundHalfEven(2.5), 2.0);
  EXPECT_EQ(roundHalfEven(3.5), 4.0);
  EXPECT_EQ(roundHalfEven(-2.5), -2.0);
  EXPECT_EQ(roundHalfEven(2.51), 3.0);
}

TEST(Rounding, DecimalPlacesAreJudgedOnTheShortestDecimalForm) {
  EXPECT_DOUBLE_EQ(roundTo(0.125, 2), 0.12);
  EXPECT_DOUBLE_EQ(roundTo(2.675f, 2), 2.68);
  EXPECT_DOUBLE_EQ(roundTo(0.0005, 3), 0.0);  // tie, 0 is even
}

TEST(ParseSingle, ReadsPointDecimalsWhateverTheLocale) {
  const char* old = std::setlocale(LC_NUMERIC, nullptr);
  std::string saved = old ? old : "C";
  // A machine whose decimal separator is a comma must still read "0.5" as one half.
  if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") || std::setlocale(LC_NUMERIC, "it_IT.UTF-8")) {
    EXPECT_EQ(localDecimalSep(), ",");
    EXPECT_FLOAT_EQ(parseSingle("0.5"), 0.5f);
    EXPECT_EQ(formatNumber(0.5f, "0.00"), "0.50");
  }
  std::setlocale(LC_NUMERIC, saved.c_str());
  EXPECT_FLOAT_EQ(parseSingle("0.5"), 0.5f);
  EXPECT_EQ(localDecimalSep(), ".");
}

TEST(ParseSingle, AcceptsBlanksSignsAndExponents) {
  EXPECT_FLOAT_EQ(parseSingle("  -1.25 "), -1.25f);
  EXPECT_FLOAT_EQ(parseSingle("1.5E+2"), 150.0f);
  EXPECT_EQ(parseSingle("1,5"), 0.0f) << "anything else gives zero";
}

TEST(Helpers, MaxAndMinKeepTheFirstOfEqualValues) {
  // With -0.0 and 0.0 equal, the first argument wins.
  EXPECT_TRUE(std::signbit(Max(-0.0, 0.0)));
  EXPECT_TRUE(std::signbit(Min(-0.0, 0.0)));
}

TEST(Pressure, DisplayUnitsAndEmptyZero) {
  EXPECT_EQ(formatPressure(0.0004f, 1), "");
  EXPECT_EQ(formatPressure(235.0f, 0), "2.35");
}

}  // namespace
}  // namespace koru

namespace koru {
namespace {

template <typename T>
double roundedOnDigits(T x, int decimals) {
  auto d = DecimalDigits::of(x);
  d.roundToDecimals(decimals, DecimalDigits::Tie::ToEven);
  return d.toDouble();
}

// Most values take a quick binary path; it must agree with rounding on the decimal digits,
// including the values next to a boundary (steps of 0.0005 and 0.00125 hit halves often).
TEST(Rounding, QuickPathAgreesWithRoundingOnTheDigits) {
  for (int i = -40000; i <= 40000; ++i) {
    const float f = static_cast<float>(i) * 0.0005f;
    const double d = static_cast<double>(i) * 0.00125;
    for (int decimals = 0; decimals <= 4; ++decimals) {
      ASSERT_EQ(roundTo(f, decimals), roundedOnDigits(f, decimals)) << f << " " << decimals;
      ASSERT_EQ(roundTo(d, decimals), roundedOnDigits(d, decimals)) << d << " " << decimals;
    }
  }
}

}  // namespace
}  // namespace koru
