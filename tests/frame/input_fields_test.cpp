#include <gtest/gtest.h>

#include <vector>

#include "frame/InputFields.h"

namespace koru {
namespace {

std::vector<std::string> allFields(std::string_view text) {
  InputFields fields(text);
  std::vector<std::string> out;
  while (auto f = fields.next()) out.push_back(f->text);
  return out;
}

TEST(InputFields, CommasAndLineEndsBothSeparate) {
  EXPECT_EQ(allFields("1,2\r\n3\n4,,\r5"), (std::vector<std::string>{"1", "2", "3", "4", "", "", "5"}));
}

TEST(InputFields, QuotedFieldsKeepCommasAndLoseTheirQuotes) {
  InputFields fields("\"a, b\",\"\",x\r\n");
  auto f1 = fields.next();
  ASSERT_TRUE(f1);
  EXPECT_EQ(f1->text, "a, b");
  EXPECT_TRUE(f1->quoted);
  EXPECT_EQ(fields.next()->text, "");
  EXPECT_FALSE(fields.next()->quoted);
  EXPECT_FALSE(fields.next());
}

TEST(InputFields, FieldsKnowTheirLine) {
  InputFields fields("a\r\n\r\nb,c\nd");
  EXPECT_EQ(fields.next()->line, 1);
  EXPECT_EQ(fields.next()->line, 3);
  EXPECT_EQ(fields.next()->line, 3);
  EXPECT_EQ(fields.next()->line, 4);
  EXPECT_TRUE(fields.atEnd());
}

TEST(InputFields, UnclosedQuoteRunsToTheEnd) {
  EXPECT_EQ(allFields("\"abc\r\ndef"), (std::vector<std::string>{"abc\r\ndef"}));
}

}  // namespace
}  // namespace koru
