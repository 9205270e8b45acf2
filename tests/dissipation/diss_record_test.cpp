#include <gtest/gtest.h>

#include "dissipation/cls_DissTEST.h"

namespace koru {
namespace {

TEST(DissRecord, DepthNamesTheFileInHundredthsOfAMetreAndOnlyDepthsAboveZeroCount) {
  cls_DissTEST t;
  t.setZd(105.25f);
  t.setZd(-3.0f);
  EXPECT_EQ(t.filename.filename(), "10525.dis");
}

}  // namespace
}  // namespace koru
