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
  EXPECT_DOUBLE_EQ(roundTo(0.135, 2), 0.14);
  EXPECT_DOUBLE_EQ(roundTo(2.675f, 2), 2.68);
  EXPECT_DOUBLE_EQ(roundTo(17.0 / 9.81, 5), 1.73293);
  EXPECT_DOUBLE_EQ(roundTo(0.0004, 3), 0.0);
  EXPECT_DOUBLE_EQ(roundTo(0.0005, 3), 0.0);  // tie, 0 is even
  EXPECT_DOUBLE_EQ(roundTo(0.0015, 3), 0.002);
  EXPECT_DOUBLE_EQ(roundTo(99.9996, 3), 100.0);
}

TEST(Rounding, Int16ConversionRejectsOutOfRange) {
  EXPECT_EQ(toInt16(12.5), 12);
  EXPECT_EQ(toInt16(-32768.4), -32768);
  EXPECT_FALSE(toInt16(32767.5).has_value());  // rounds to 32768
  EXPECT_FALSE(toInt16(std::numeric_limits<double>::quiet_NaN()).has_value());
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
  EXPECT_FLOAT_EQ(parseSingle("+3"), 3.0f);
  EXPECT_FLOAT_EQ(parseSingle(".5"), 0.5f);
  EXPECT_FLOAT_EQ(parseSingle("5."), 5.0f);
  EXPECT_FLOAT_EQ(parseSingle("1.5E+2"), 150.0f);
}

TEST(ParseSingle, AnythingElseGivesZero) {
  for (const char* bad : {"", " ", "abc", "1,5", "1.2.3", "inf", "nan", "0x10", "-", ".", "1e", "1e400", "--1"})
    EXPECT_EQ(parseSingle(bad), 0.0f) << bad;
  EXPECT_FALSE(tryParseSingle("1,5").has_value());
  EXPECT_TRUE(tryParseSingle("0").has_value());
}

TEST(Helpers, IsMultipleNeedsAWholeQuotient) {
  EXPECT_TRUE(isMultiple(10.0f, 5));
  EXPECT_FALSE(isMultiple(10.5f, 5));
  EXPECT_FALSE(isMultiple(10.0f, 0));
  EXPECT_TRUE(isMultiple(-6.0f, 3));
}

TEST(Helpers, AnglesUsePiAsFourDecimals) {
  EXPECT_FLOAT_EQ(degToRad(180.0f), 3.1416f);
  EXPECT_FLOAT_EQ(radToDeg(3.1416f), 180.0f);
}

TEST(Helpers, GuardedLogarithmOfZeroIsZero) {
  EXPECT_EQ(log10Guarded(0.0), 0.0);
  EXPECT_EQ(log10Guarded(-5.0), 0.0);
  EXPECT_DOUBLE_EQ(log10Guarded(1000.0), 3.0);
}

TEST(Helpers, MaxAndMinKeepTheFirstOfEqualValues) {
  EXPECT_EQ(Max(2, 3), 3);
  EXPECT_EQ(Min(2, 3), 2);
  // With -0.0 and 0.0 equal, the first argument wins.
  EXPECT_TRUE(std::signbit(Max(-0.0, 0.0)));
  EXPECT_TRUE(std::signbit(Min(-0.0, 0.0)));
}

TEST(Helpers, WordsTravelLowByteFirst) {
  EXPECT_EQ(byteSplit(0x1234), std::make_pair(uint8_t{0x34}, uint8_t{0x12}));
  EXPECT_EQ(byteJoin(0x34, 0x12), 0x1234);
}

TEST(Pressure, DisplayUnitsAndEmptyZero) {
  EXPECT_EQ(formatPressure(0.0f, 0), "");
  EXPECT_EQ(formatPressure(0.0004f, 1), "");
  EXPECT_EQ(formatPressure(235.0f, 0), "2.35");
  EXPECT_EQ(formatPressure(235.0f, 1), "235");
  EXPECT_EQ(pressureUnitLabel(0), "bar");
  EXPECT_EQ(pressureUnitLabel(1), "kPa");
  EXPECT_EQ(pressureFactor(2), 0.0f);
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
