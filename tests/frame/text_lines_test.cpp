#include <gtest/gtest.h>

#include "frame/TextLines.h"

namespace koru {
namespace {

using Lines = std::vector<std::string_view>;

TEST(TextLines, EveryKindOfLineEndEndsALine) {
  EXPECT_EQ(splitLines("a\r\nb\nc\rd"), (Lines{"a", "b", "c", "d"}));
  EXPECT_EQ(splitLines("a\n\rb"), (Lines{"a", "", "b"})) << "LF then CR are two line ends";
}

TEST(TextLines, ALineEndAtTheEndMakesNoEmptyLine) {
  EXPECT_EQ(splitLines("a\r\n"), (Lines{"a"}));
  EXPECT_EQ(splitLines("a\r\n\r\n"), (Lines{"a", ""}));
  EXPECT_EQ(splitLines(""), Lines{});
  EXPECT_EQ(splitLines("\r"), (Lines{""}));
}

}  // namespace
}  // namespace koru
