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

// Readable names serve in any case, and numbers may have spaces around them.
TEST(DmtOptionsSetByName, NumbersFlagsAndMethodsAreSetAndRefusalsSayWhy) {
  DMTOptions o;
  for (const auto& [name, value] : {std::pair{"sngFilterEd", " 2.5 "}, {"blnFeeler", "0"}, {"intOCRMethod", "3"},
                                    {"factorocr", "0.75"}})
    EXPECT_TRUE(o.setByName(name, value)) << name;
  EXPECT_EQ(o.sngFilterEd, 2.5f);
  EXPECT_FALSE(o.blnFeeler);
  EXPECT_EQ(o.sngOCRM, 2.7f);
  EXPECT_EQ(o.sngFactorOCR, 0.75f);
  const struct { const char *name, *value, *error; } refused[] = {
      {"sngFactorOCR", "nan", "sngFactorOCR: 'nan' is not a number"}, {"sngFoo", "1", "unknown option 'sngFoo'"},
      {"blnFeeler", "true", "blnFeeler: 'true' is not 0 or 1"}, {"phiMethod", "2", "phiMethod: '2' is not 0 or 1"},
      {"intK0Method", "1.5", "intK0Method: '1.5' is not a line of the table (0 to 4)"},
      {"intK0Method", "5", "intK0Method: '5' is not a line of the table (0 to 4)"}};
  for (const auto& c : refused) {
    std::string error;
    EXPECT_FALSE(o.setByName(c.name, c.value, &error)) << c.name;
    EXPECT_EQ(error, c.error);
  }
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
