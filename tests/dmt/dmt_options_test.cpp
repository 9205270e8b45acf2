#include <gtest/gtest.h>

#include <string>

#include "dmt/DMTOptions.h"

namespace koru {
namespace {

TEST(DmtOptionsSelect, LinesFillCoefficientsPersonalKeepsThemAndRmSwitchesItsForm) {
  DMTOptions o;
  ASSERT_TRUE(o.selectK0Method(3));
  EXPECT_EQ(o.sngK0M, 0.68f);
  o.sngK0M = 1.5f;
  ASSERT_TRUE(o.selectK0Method(4));  // Personal
  EXPECT_EQ(o.sngK0M, 1.5f);
  EXPECT_FALSE(o.selectK0Method(5));
  EXPECT_EQ(o.intK0Method, 4);
  o.sngRMM = 0.5f;
  ASSERT_TRUE(o.selectRMMethod(0));  // the built-in form has no coefficients to fill
  EXPECT_FALSE(o.blnRmPersonal);
  EXPECT_EQ(o.sngRMM, 0.5f);
  ASSERT_TRUE(o.selectRMMethod(1));
  EXPECT_TRUE(o.blnRmPersonal);
}

TEST(DmtOptionsSetByName, NumbersFlagsAndMethodsAreSetAndRefusalsSayWhy) {
  DMTOptions o;
  EXPECT_TRUE(o.setByName("sngFilterEd", " 2.5 "));
  EXPECT_EQ(o.sngFilterEd, 2.5f);
  EXPECT_TRUE(o.setByName("blnFeeler", "0"));
  EXPECT_FALSE(o.blnFeeler);
  EXPECT_TRUE(o.setByName("intOCRMethod", "3"));
  EXPECT_EQ(o.sngOCRM, 2.7f);
  std::string error;
  for (const char* bad : {"sngFactorOCR=nan", "blnFeeler=true", "intK0Method=1.5", "intK0Method=5", "sngFoo=1"}) {
    const std::string pair = bad;
    EXPECT_FALSE(o.setByName(pair.substr(0, pair.find('=')), pair.substr(pair.find('=') + 1), &error)) << bad;
  }
  EXPECT_EQ(error, "unknown option 'sngFoo'");
  EXPECT_FALSE(o.setByName("intPhiMethod", "1", &error));
  EXPECT_NE(error.find("thrust"), std::string::npos);
}

}  // namespace
}  // namespace koru
