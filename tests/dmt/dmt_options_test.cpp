#include <gtest/gtest.h>

#include <string>
#include <span>

#include "dmt/DMTOptions.h"

namespace koru {
namespace {

// "label m n k" of each line; a "Personal" line keeps the user's coefficients.
std::string describe(std::span<const MethodLine> table) {
  std::string out;
  for (const MethodLine& line : table) {
    out += std::string(line.label);
    if (!line.personal) out += " " + std::to_string(line.m) + " " + std::to_string(line.n) + " " + std::to_string(line.k);
    out += "; ";
  }
  return out;
}

TEST(DmtOptionsTables, LabelsAndCoefficientsOfEveryLine) {
  EXPECT_EQ(describe(k0MethodTable()),
            "Norvaldin 1980 0.826000 0.470000 -0.600000; Lacasse 1988 0.340000 0.540000 0.000000; "
            "Lunne 1989 (young clay) 0.340000 0.540000 0.000000; Lunne 1989 (old clay) 0.680000 0.540000 0.000000; "
            "Personal; ");
  EXPECT_EQ(describe(ocrMethodTable()),
            "Norvaldin 1980 0.340000 1.560000 0.000000; Lacasse 1988 0.225000 1.510000 0.000000; "
            "Lunne 1989 (young clay) 0.300000 1.170000 0.000000; Lunne 1989 (old clay) 2.700000 1.170000 0.000000; "
            "Chang 1991 (marine clay) 0.560000 0.840000 0.000000; Personal; ");
  ASSERT_EQ(rmMethodTable().size(), 3u);
  EXPECT_EQ(rmMethodTable()[0].label, "Norvaldin 1980");  // the built-in form
  EXPECT_EQ(describe(rmMethodTable().subspan(1)), "Chang 1991 (marine clay) 0.020000 3.500000 0.000000; Personal; ");
  EXPECT_EQ(describe(cuMethodTable()),
            "Norvaldin 1980 0.092500 1.250000 0.000000; Lunne 1989 0.084000 1.250000 0.000000; "
            "Chang 1991 (marine clay) 0.074000 1.250000 0.000000; Personal; ");
}

TEST(DmtOptionsTables, DefaultsAreTheFirstLines) {
  DMTOptions o;
  EXPECT_EQ(o.sngK0M, k0MethodTable()[0].m);
  EXPECT_EQ(o.sngK0K, k0MethodTable()[0].k);
  EXPECT_EQ(o.sngOCRN, ocrMethodTable()[0].n);
  EXPECT_EQ(o.sngCuM, cuMethodTable()[0].m);
  EXPECT_FALSE(o.blnRmPersonal);
}

TEST(DmtOptionsSelect, LinesFillCoefficientsAndPersonalKeepsThem) {
  DMTOptions o;
  ASSERT_TRUE(o.selectK0Method(3));
  EXPECT_EQ(o.intK0Method, 3);
  EXPECT_EQ(o.sngK0M, 0.68f);
  EXPECT_EQ(o.sngK0N, 0.54f);
  EXPECT_EQ(o.sngK0K, 0.0f);
  o.sngK0M = 1.5f;
  ASSERT_TRUE(o.selectK0Method(4));
  EXPECT_EQ(o.intK0Method, 4);
  EXPECT_EQ(o.sngK0M, 1.5f);

  ASSERT_TRUE(o.selectOCRMethod(4));
  EXPECT_EQ(o.sngOCRM, 0.56f);
  EXPECT_EQ(o.sngOCRN, 0.84f);
  ASSERT_TRUE(o.selectCuMethod(2));
  EXPECT_EQ(o.sngCuM, 0.074f);

  EXPECT_FALSE(o.selectK0Method(5));
  EXPECT_FALSE(o.selectOCRMethod(-1));
  EXPECT_FALSE(o.selectCuMethod(4));
  EXPECT_FALSE(o.selectRMMethod(3));
  EXPECT_EQ(o.intK0Method, 4);
  EXPECT_EQ(o.intCuMethod, 2);
}

TEST(DmtOptionsSelect, RmLinesSwitchThePersonalForm) {
  DMTOptions o;
  o.sngRMM = 0.5f;
  ASSERT_TRUE(o.selectRMMethod(2));
  EXPECT_TRUE(o.blnRmPersonal);
  EXPECT_EQ(o.sngRMM, 0.5f);
  ASSERT_TRUE(o.selectRMMethod(0));
  EXPECT_FALSE(o.blnRmPersonal);
  EXPECT_EQ(o.intRMMethod, 0);
  EXPECT_EQ(o.sngRMM, 0.5f);  // the built-in form has no coefficients to fill
  ASSERT_TRUE(o.selectRMMethod(1));
  EXPECT_TRUE(o.blnRmPersonal);
  EXPECT_EQ(o.sngRMM, 0.02f);
  EXPECT_EQ(o.sngRMN, 3.5f);
}

TEST(DmtOptionsSetByName, NumbersFlagsAndMethods) {
  DMTOptions o;
  std::string error;
  EXPECT_TRUE(o.setByName("sngFactorOCR", "0.75", &error));
  EXPECT_EQ(o.sngFactorOCR, 0.75f);
  EXPECT_TRUE(o.setByName("sngGammaWater", "1.03"));
  EXPECT_EQ(o.sngGammaWater, 1.03f);
  EXPECT_TRUE(o.setByName("sngFilterEd", " 2.5 "));
  EXPECT_EQ(o.sngFilterEd, 2.5f);
  EXPECT_TRUE(o.setByName("sngIdLimit", "1.5"));
  EXPECT_EQ(o.sngIdLimit, 1.5f);
  EXPECT_TRUE(o.setByName("sngCuK", "-1e-2"));
  EXPECT_EQ(o.sngCuK, -0.01f);

  EXPECT_TRUE(o.setByName("blnFeeler", "0"));
  EXPECT_FALSE(o.blnFeeler);
  EXPECT_TRUE(o.setByName("blnRmPersonal", "1"));
  EXPECT_TRUE(o.blnRmPersonal);

  EXPECT_TRUE(o.setByName("intK0Method", "2"));
  EXPECT_EQ(o.intK0Method, 2);
  EXPECT_EQ(o.sngK0M, 0.34f);
  EXPECT_EQ(o.sngK0N, 0.54f);
  EXPECT_TRUE(o.setByName("intRMMethod", "0"));
  EXPECT_FALSE(o.blnRmPersonal);
  EXPECT_TRUE(o.setByName("intOCRMethod", "3"));
  EXPECT_EQ(o.sngOCRM, 2.7f);
  EXPECT_TRUE(o.setByName("intCuMethod", "1"));
  EXPECT_EQ(o.sngCuM, 0.084f);
}

TEST(DmtOptionsSetByName, RefusalsSayWhy) {
  DMTOptions o;
  const DMTOptions before = o;
  std::string error;
  EXPECT_FALSE(o.setByName("sngFoo", "1", &error));
  EXPECT_EQ(error, "unknown option 'sngFoo'");
  EXPECT_FALSE(o.setByName("sngFactorOCR", "abc", &error));
  EXPECT_EQ(error, "sngFactorOCR: 'abc' is not a number");
  EXPECT_FALSE(o.setByName("sngFactorOCR", "nan", &error));
  EXPECT_FALSE(o.setByName("blnFeeler", "true", &error));
  EXPECT_FALSE(o.setByName("blnFeeler", "-1", &error));
  EXPECT_NE(error.find("blnFeeler"), std::string::npos);
  EXPECT_FALSE(o.setByName("intK0Method", "5", &error));
  EXPECT_FALSE(o.setByName("intK0Method", "1.5", &error));
  EXPECT_FALSE(o.setByName("intCuMethod", "x", &error));
  EXPECT_EQ(error, "intCuMethod: 'x' is not a number");
  EXPECT_FALSE(o.setByName("phiMethod", "2", &error));
  EXPECT_EQ(error, "phiMethod: '2' is not 0 or 1");
  EXPECT_FALSE(o.setByName("sngPhiIdMin", "x"));
  EXPECT_FALSE(o.setByName("sngFactorOCR", "abc"));  // no error text asked for
  EXPECT_EQ(o.sngFactorOCR, before.sngFactorOCR);
  EXPECT_TRUE(o.blnFeeler);
  EXPECT_EQ(o.intK0Method, 0);
  EXPECT_EQ(o.intPhiMethod, 0);
  EXPECT_EQ(o.sngPhiIdMin, 1.8f);
  EXPECT_EQ(o.thrustFieldsGiven, 0);
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
