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
  EXPECT_FALSE(o.setByName("phiMethod", "2", &error));
  EXPECT_EQ(error, "phiMethod: '2' is not 0 or 1");
  EXPECT_TRUE(o.setByName("factorocr", "0.75"));  // readable names in any case
  EXPECT_EQ(o.sngFactorOCR, 0.75f);
}

// A thrust field given by name keeps its value whatever the test's thrust data; the others
// still follow the data.
TEST(DmtOptionsSetByName, GivenThrustFieldsOutliveTheTestsThrustData) {
  DMTOptions o;
  ASSERT_TRUE(o.setByName("phiIdMin", "2"));
  EXPECT_EQ(o.forTest(true).sngPhiIdMin, 2.0f);
  EXPECT_EQ(o.forTest(false).sngPhiIdMin, 2.0f);
  EXPECT_EQ(o.forTest(true).intPhiMethod, 1);
  EXPECT_EQ(o.forTest(true).sngK0ThrustIdMin, 1.2f);
  ASSERT_TRUE(o.setByName("intPhiMethod", "1"));
  EXPECT_EQ(o.thrustConflict(true), "");
  EXPECT_NE(o.thrustConflict(false).find("no"), std::string::npos);
  ASSERT_TRUE(o.setByName("intPhiMethod", "0"));
  ASSERT_TRUE(o.setByName("OCRThrust", "1"));
  EXPECT_NE(o.thrustConflict(true).find("intPhiMethod=1"), std::string::npos);
}

}  // namespace
}  // namespace koru
