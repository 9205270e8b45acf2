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

// What would be written as "?" is what a name given by the user is refused for.
TEST(TextCodec, UnrepresentableCharactersBecomeQuestionMarksAndAreFoundFirst) {
  const struct { std::string_view text, stored; std::optional<std::string_view> first; } cases[] = {
      {"a\u4e2db\u03a9", "a?b?", "\u4e2d"},
      {"a\xff" "b", "a?b", "\xff"},          // broken UTF-8
      {"\xe2\x82", "??", "\xe2"},             // truncated sequence
      {"\u20ac\u00e8 \U0001F600", "\x80\xe8 ?", "\U0001F600"},
      {"Caf\u00e9 \u2013 \u0152", "Caf\xe9 \x96 \x8c", std::nullopt},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(utf8ToCp1252(c.text), c.stored) << c.text;
    EXPECT_EQ(firstUnstorable(c.text), c.first) << c.text;
  }
}

}  // namespace
}  // namespace koru
