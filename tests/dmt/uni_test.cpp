// The DMTUNI92 exchange file of an evaluated test, line by line.

#include <gtest/gtest.h>

#include <string>

#include "dmt/UniExport.h"
#include "dmt/cls_DmtTEST.h"
#include "scratch_folder.h"

namespace koru {
namespace {

using testing::ScratchFolder;

// Two rows with their results filled in by hand, chosen to show each field's rounding: halves
// go to the even neighbour (255.5 -> 256, 254.5 -> 254, 1.25 -> 1.2 ...), and Kd is printed positive.
TEST(UniFile, SmallTestLineByLine) {
  ScratchFolder dir;
  cls_DmtTEST t;
  t.setDatPath(dir / "VERT_7" / "DMT_7.dat");
  t.strFirm = "Studio \"Rossi\"";
  t.strRemark = "citt\xC3\xA0";
  t.strDate = "5 MAR 2008";
  t.strTstname = "DMT1";
  t.sngZw = 2.5f;
  t.sngZabs = 101.25f;
  t.setN(2);
  t.vZ = {1.2f, 1.4f};
  t.vecPo = {255.5f, 254.5f};
  t.vecP1 = {400.2f, 399.7f};
  t.vecGamma = {18.25f, 17.15f};
  t.vecSigmaEff = {20.4f, 0.5f};
  t.vecUo = {0.0f, 1.5f};
  t.vecId = {0.345f, 1.255f};
  t.vecKd = {-3.456f, 12.125f};
  t.vecEd = {5.05f, 12.25f};
  t.vecKo = {0.875f, 1.0f};
  t.vecOCR = {2.345f, 99.9f};
  t.vecM = {7.75f, 100.0f};
  t.vecCu = {35.5f, 0.0f};
  t.vecSoilType = {6, 0};
  // Head: name of the .dat file, Zi, Zf, Zw, elevation, the seven strings, the row count.
  const std::string uni =
      "DMTUNI92\r\n\"DBSM\"\r\n\"DMT_7.dat\"\r\n1.2,1.4,2.5,101.25\r\n"
      "\"Studio 'Rossi'\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"citt\xE0\"\r\n\"5 MAR 2008\"\r\n\"DMT1\"\r\n2\r\n"
      "1.2,256,400,18.2,20,0,0.34,3.46,5,0.88,2.34,7.8,36,6\r\n"
      "1.4,254,400,17.2,0,2,1.26,12.12,12.2,1,99.9,100,0,0\r\n";
  EXPECT_EQ(uniFileText(t), uni);
  Diagnostic why;
  ASSERT_TRUE(t.generateUNI(dir / "DMT1.uni", &why)) << why.toString();
  EXPECT_EQ(ScratchFolder::read(dir / "DMT1.uni"), uni);
}

// Also: the name of the .dat file is the part after the last backslash.
TEST(UniFile, EmptyTestWritesTheHeadAndNoRows) {
  cls_DmtTEST t;
  t.setDatPath("C:\\KORU\\SITES\\SITE_1\\VERT_2\\DMT_3.dat");
  t.strDate = "1 JAN 2001";
  EXPECT_EQ(uniFileText(t),
            "DMTUNI92\r\n\"DBSM\"\r\n\"DMT_3.dat\"\r\n0,0,3,0\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n"
            "\"1 JAN 2001\"\r\n\"\"\r\n0\r\n");
}

}  // namespace
}  // namespace koru
