#include <gtest/gtest.h>

#include "frame/TextCodec.h"

namespace koru {
namespace {

TEST(TextCodec, Windows1252BytesRoundTripThroughUtf8) {
  std::string all;
  for (int b = 1; b < 256; ++b) all += static_cast<char>(b);
  EXPECT_EQ(utf8ToCp1252(cp1252ToUtf8(all)), all);
}

TEST(TextCodec, SpecialCharactersOfTheCodePage) {
  EXPECT_EQ(cp1252ToUtf8("\x80"), "\u20ac");
  EXPECT_EQ(cp1252ToUtf8("\xb0"), "\u00b0");  // degree sign of the inclination header
  EXPECT_EQ(cp1252ToUtf8("Fran\xe7" "ais"), "Fran\u00e7ais");
  EXPECT_EQ(utf8ToCp1252("\u20ac \u00e8"), "\x80 \xe8");
}

TEST(TextCodec, UnrepresentableCharactersBecomeQuestionMarks) {
  EXPECT_EQ(utf8ToCp1252("a\u4e2db"), "a?b");
  EXPECT_EQ(utf8ToCp1252("a\xff" "b"), "a?b");  // broken UTF-8
  EXPECT_EQ(utf8ToCp1252("\xe2\x82"), "??");     // truncated sequence
}

}  // namespace
}  // namespace koru
