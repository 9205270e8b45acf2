// One vertical: its paths, its 14-line header file, loading and saving its tests, and the
// create and delete steps of each test.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <filesystem>
#include <locale>
#include <string>

#include "scratch_folder.h"
#include "sites/cls_VERTICAL.h"

namespace koru {
namespace {

namespace fs = std::filesystem;
using koru::testing::ScratchFolder;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// A vertical VERT_1 of SITE_1 inside a scratch sites root.
struct VerticalFixture : ::testing::Test {
  ScratchFolder sites;
  fs::path siteFolder = sites / "SITE_1";
  fs::path folder = siteFolder / "VERT_1";
  cls_VERTICAL vertical;

  VerticalFixture() { vertical.setFolders(siteFolder, "VERT_1"); }

  void writeHeader(std::string_view bytes) { sites.write("SITE_1/VERT_1/VERT_1.dat", bytes); }
};

std::string header(std::string_view zabs, std::string_view zw, std::string_view flags) {
  return "T\r\nF\r\nC\r\nJ\r\nS\r\nR\r\nD\r\nG\r\n" + std::string(zabs) + "\r\n" + std::string(zw) + "\r\n" +
         std::string(flags);
}

TEST(VerticalPaths, EveryPathOfTheLayoutCarriesTheVerticalsNumber) {
  cls_VERTICAL v;
  const fs::path site = fs::path("root") / "SITE_3";
  v.setFolders(site, "VERT_12");
  const fs::path f = site / "VERT_12";
  EXPECT_EQ(v.strFolderName, "VERT_12");
  EXPECT_EQ(v.strFolderPath, f);
  EXPECT_EQ(v.strInfoPath, f / "VERT_12.dat");
  EXPECT_EQ(v.strDMTFile, f / "DMT_12.dat");
  EXPECT_EQ(v.strVsFolder, f / "VS_12");
  EXPECT_EQ(v.strVsFile, f / "VS_12.dat");
  EXPECT_EQ(v.strVsPseudoFile, f / "VS_PISISM_12.dat");
  EXPECT_EQ(v.strVpFolder, f / "VP_12");
  EXPECT_EQ(v.strVpFile, f / "VP_12.dat");
  EXPECT_EQ(v.strVpPseudoFile, f / "VP_PISISM_12.dat");
  EXPECT_EQ(v.strDissipFolder, f / "DISSIP_12");
  EXPECT_EQ(v.strInclinationFile, f / "Inclination_12.dat");
  EXPECT_EQ(v.strNotesFile, f / "Notes_12.dat");
  EXPECT_EQ(v.strCalibrationFile, f / "Calibration_12.dat");
  EXPECT_EQ(v.gamma.path(), f / "GAMMA_12.dat");
  EXPECT_EQ(v.u.path(), f / "U_12.dat");
  EXPECT_EQ(v.dmt->getDatPath(), f / "DMT_12.dat");
}

TEST(VerticalPaths, TheNumberIsTheTextAfterTheLastUnderscore) {
  cls_VERTICAL v;
  v.setFolders("SITE_1", "MY_OLD_VERT_7");
  EXPECT_EQ(v.strDMTFile, fs::path("SITE_1") / "MY_OLD_VERT_7" / "DMT_7.dat");
  EXPECT_EQ(v.strInfoPath, fs::path("SITE_1") / "MY_OLD_VERT_7" / "MY_OLD_VERT_7.dat");
}

TEST_F(VerticalFixture, HeaderFileIsWrittenInItsOwnLineOrder) {
  vertical.strTestname = "Test";
  vertical.strFirm = "Firm";
  vertical.strCustomer = "Customer";
  vertical.strJob = "Job";
  vertical.strSite = "Sit\xC3\xA9";
  vertical.strRemark = "Remark";
  vertical.strDate = "5 MAR 2008";
  vertical.strGPS = "45,9";
  vertical.sngZabs = -1.75f;
  vertical.sngZw = 0.5f;
  vertical.blnTestDMT = false;
  vertical.blnTestVs = true;
  vertical.blnTestVp = false;
  vertical.blnTestDissip = true;
  ASSERT_TRUE(vertical.saveVerticalFile());
  EXPECT_EQ(ScratchFolder::read(folder / "VERT_1.dat"),
            "Test\r\nFirm\r\nCustomer\r\nJob\r\nSit\xE9\r\nRemark\r\n5 MAR 2008\r\n45,9\r\n-1.75\r\n0.5\r\n"
            "0\r\n1\r\n0\r\n1\r\n");

  cls_VERTICAL read;
  read.setFolders(siteFolder, "VERT_1");
  ASSERT_TRUE(read.loadInfo());
  EXPECT_EQ(read.strSite, "Sit\xC3\xA9");
  EXPECT_EQ(read.strGPS, "45,9");
  EXPECT_EQ(read.strDate, "5 MAR 2008");
  EXPECT_FLOAT_EQ(read.sngZabs, -1.75f);
  EXPECT_FLOAT_EQ(read.sngZw, 0.5f);
  EXPECT_FALSE(read.blnTestDMT);
  EXPECT_TRUE(read.blnTestVs);
  EXPECT_FALSE(read.blnTestVp);
  EXPECT_TRUE(read.blnTestDissip);
}

TEST_F(VerticalFixture, OnlyFlagValuesAboveZeroReadAsSet) {
  writeHeader(header("0", "3", "-1\r\n2\r\n0.5\r\nyes\r\n"));
  ASSERT_TRUE(vertical.loadInfo());
  EXPECT_FALSE(vertical.blnTestDMT);  // "-1" is not above 0
  EXPECT_TRUE(vertical.blnTestVs);
  EXPECT_TRUE(vertical.blnTestVp);
  EXPECT_FALSE(vertical.blnTestDissip);
  ASSERT_TRUE(vertical.saveVerticalFile());
  EXPECT_THAT(ScratchFolder::read(folder / "VERT_1.dat"), ::testing::EndsWith("\r\n0\r\n1\r\n1\r\n0\r\n"));
}

TEST_F(VerticalFixture, ANumberThatIsNoNumberReadsAsZeroAndIsReported) {
  writeHeader(header("12,5x", "2.5", "1\r\n0\r\n0\r\n0\r\n"));
  EXPECT_FALSE(vertical.loadInfo());
  EXPECT_FLOAT_EQ(vertical.sngZabs, 0.0f);
  EXPECT_FLOAT_EQ(vertical.sngZw, 2.5f);
  ASSERT_EQ(vertical.problems().size(), 1u);
  EXPECT_EQ(vertical.problems()[0].line, 9);
}

TEST_F(VerticalFixture, AShortFileKeepsTheDefaultsOfWhatIsMissing) {
  writeHeader("Name\nFirm\n");
  EXPECT_FALSE(vertical.loadInfo());
  EXPECT_EQ(vertical.strTestname, "Name");
  EXPECT_EQ(vertical.strFirm, "Firm");
  EXPECT_EQ(vertical.strCustomer, "");
  EXPECT_FLOAT_EQ(vertical.sngZw, 3.0f);
  EXPECT_TRUE(vertical.blnTestDMT);
  ASSERT_EQ(vertical.problems().size(), 1u);
  EXPECT_EQ(vertical.problems()[0].line, 3);
  EXPECT_EQ(vertical.problems()[0].file, folder / "VERT_1.dat");
}

TEST_F(VerticalFixture, LoadingAgainForgetsTheEarlierHeader) {
  writeHeader(header("1", "2", "0\r\n1\r\n1\r\n1\r\n"));
  ASSERT_TRUE(vertical.loadInfo());
  writeHeader("Other\r\n");
  vertical.loadInfo();
  EXPECT_EQ(vertical.strTestname, "Other");
  EXPECT_EQ(vertical.strFirm, "");
  EXPECT_FLOAT_EQ(vertical.sngZabs, 0.0f);
  EXPECT_TRUE(vertical.blnTestDMT);
  EXPECT_FALSE(vertical.blnTestVs);
}

TEST_F(VerticalFixture, AMissingHeaderFileIsReported) {
  EXPECT_FALSE(vertical.loadInfo());
  ASSERT_EQ(vertical.problems().size(), 1u);
  EXPECT_EQ(vertical.problems()[0].file, folder / "VERT_1.dat");
}

// A decimal comma for streams, whether or not the machine has such a C locale installed.
struct CommaPoint : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
};

TEST_F(VerticalFixture, DepthsSurviveAMachineWithADecimalComma) {
  const std::locale previous = std::locale::global(std::locale(std::locale::classic(), new CommaPoint));
  for (const char* name : {"de_DE.UTF-8", "it_IT.UTF-8", "fr_FR.UTF-8", "de_DE", "it_IT"})
    if (std::setlocale(LC_ALL, name)) break;
  vertical.sngZabs = 123.25f;
  vertical.sngZw = 1.5f;
  const bool saved = vertical.saveVerticalFile();
  cls_VERTICAL read;
  read.setFolders(siteFolder, "VERT_1");
  read.loadInfo();
  std::setlocale(LC_ALL, "C");
  std::locale::global(previous);
  ASSERT_TRUE(saved);
  EXPECT_THAT(ScratchFolder::read(folder / "VERT_1.dat"), HasSubstr("\r\n123.25\r\n1.5\r\n"));
  EXPECT_FLOAT_EQ(read.sngZabs, 123.25f);
  EXPECT_FLOAT_EQ(read.sngZw, 1.5f);
}

TEST_F(VerticalFixture, ChangingTheHeaderLeavesTestDataAlone) {
  sites.write("SITE_1/VERT_1/DMT_1.dat", "whatever the test holds");
  vertical.dmt->addZABCtoData(0.2f, 50, 120, 0, false);
  ASSERT_TRUE(vertical.saveVerticalFile());
  EXPECT_EQ(ScratchFolder::read(folder / "DMT_1.dat"), "whatever the test holds");
  EXPECT_TRUE(fs::exists(folder / "GAMMA_1.dat"));
  EXPECT_TRUE(fs::exists(folder / "U_1.dat"));
}

TEST_F(VerticalFixture, SavingWritesOnlyTheTestsWhoseFlagIsSet) {
  vertical.dmt->addZABCtoData(0.2f, 50, 120, 0, false);
  vertical.blnTestDMT = false;
  vertical.blnTestVp = true;
  vertical.blnTestDissip = true;
  ASSERT_TRUE(vertical.saveInfo());
  EXPECT_FALSE(fs::exists(folder / "DMT_1.dat"));
  EXPECT_TRUE(fs::is_directory(folder / "VP_1"));
  EXPECT_TRUE(fs::is_directory(folder / "DISSIP_1"));
  EXPECT_FALSE(fs::exists(folder / "VS_1"));
  EXPECT_FALSE(fs::exists(folder / "Calibration_1.dat"));
}

TEST_F(VerticalFixture, ActivationLoadsAndEvaluatesTheDMTTest) {
  vertical.dmt->addZABCtoData(0.2f, 50, 120, 0, false);
  vertical.dmt->addZABCtoData(0.4f, 55, 130, 0, false);
  ASSERT_TRUE(vertical.saveInfo());

  cls_VERTICAL read;
  read.setFolders(siteFolder, "VERT_1");
  ASSERT_TRUE(read.loadInfo());
  EXPECT_FALSE(read.isDMTSignificant());
  EXPECT_TRUE(read.loadData(DMTOptions{}));
  ASSERT_TRUE(read.isDMTSignificant());
  EXPECT_TRUE(read.isGraphSignificant());
  EXPECT_EQ(read.dmt->N(), 2);
  EXPECT_EQ(read.dmt->vecP1.size(), 2u);
  EXPECT_GT(read.dmt->vecP1[1], read.dmt->vecPo[1]);
}

TEST_F(VerticalFixture, ATestWithoutItsFileStaysEmptyWithoutComplaint) {
  writeHeader(header("0", "3", "1\r\n0\r\n0\r\n0\r\n"));
  ASSERT_TRUE(vertical.loadInfo());
  EXPECT_TRUE(vertical.loadData(DMTOptions{}));
  ASSERT_TRUE(vertical.dmt.has_value());
  EXPECT_EQ(vertical.dmt->N(), 0);
  EXPECT_FALSE(vertical.isDMTSignificant());
  EXPECT_FALSE(vertical.isGraphSignificant());
  EXPECT_FALSE(vertical.isCalibration());
}

TEST_F(VerticalFixture, ADamagedFileIsKeptAsideBeforeTheFirstSaveOverIt) {
  const std::string cut = "0.20,0.40,\r\n";
  sites.write("SITE_1/VERT_1/DMT_1.dat", cut);
  EXPECT_FALSE(vertical.loadData(DMTOptions{}));
  std::vector<Diagnostic> problems;
  ASSERT_TRUE(vertical.saveInfo(&problems));
  EXPECT_EQ(ScratchFolder::read(folder / "DMT_1.dat.damaged"), cut);
  ASSERT_FALSE(problems.empty());
  EXPECT_THAT(problems[0].reason, HasSubstr("DMT_1.dat.damaged"));
  // Once kept, the file is the program's own again: the next save makes no second copy.
  problems.clear();
  ASSERT_TRUE(vertical.saveInfo(&problems));
  EXPECT_THAT(problems, IsEmpty());
  EXPECT_FALSE(fs::exists(folder / "DMT_1.dat.damaged2"));
}

TEST_F(VerticalFixture, CalibrationsLoadWhenTheirFileExistsAndSaveBack) {
  const std::string line = "DeltaA = 15, DeltaB = 40, Date = 12/03/2008, Time = 10:25\r\n";
  sites.write("SITE_1/VERT_1/Calibration_1.dat", line);
  EXPECT_TRUE(vertical.loadData(DMTOptions{}));
  ASSERT_TRUE(vertical.isCalibration());
  ASSERT_EQ(vertical.calibration->N(), 1);
  EXPECT_EQ(vertical.calibration->deltaB_i(0), 40);
  vertical.calibration->addCalibration(16, 42, "13/03/2008", "08:00");
  ASSERT_TRUE(vertical.saveInfo());
  cls_VERTICAL read;
  read.setFolders(siteFolder, "VERT_1");
  read.loadData(DMTOptions{});
  ASSERT_TRUE(read.isCalibration());
  EXPECT_EQ(read.calibration->N(), 2);
}

TEST_F(VerticalFixture, DroppingATestObjectNeverTouchesItsFile) {
  vertical.dmt->addZABCtoData(0.2f, 50, 120, 0, false);
  vertical.createCalibrationTest();
  vertical.calibration->addCalibration(15, 40, "12/03/2008", "10:25");
  ASSERT_TRUE(vertical.saveInfo());
  vertical.deleteDMTTest();
  vertical.deleteCalibrationTest();
  EXPECT_FALSE(vertical.dmt.has_value());
  EXPECT_FALSE(vertical.blnTestDMT);
  EXPECT_FALSE(vertical.isDMTSignificant());
  EXPECT_FALSE(vertical.isCalibration());
  ASSERT_TRUE(vertical.saveInfo());
  EXPECT_TRUE(fs::exists(folder / "DMT_1.dat"));
  EXPECT_TRUE(fs::exists(folder / "Calibration_1.dat"));

  ASSERT_TRUE(vertical.deleteDMTFile());
  ASSERT_TRUE(vertical.deleteCalibrationFile());
  EXPECT_FALSE(fs::exists(folder / "DMT_1.dat"));
  EXPECT_FALSE(fs::exists(folder / "Calibration_1.dat"));
  EXPECT_TRUE(vertical.deleteDMTFile());  // already gone
  EXPECT_TRUE(fs::exists(folder / "VERT_1.dat"));
}

TEST_F(VerticalFixture, FolderDeletionsRemoveOnlyTheirOwnFolder) {
  sites.write("SITE_1/VERT_1/VS_1/a.kor", "k");
  sites.write("SITE_1/VERT_1/VS_1.dat", "index");
  sites.write("SITE_1/VERT_1/VP_1/b.kor", "k");
  sites.write("SITE_1/VERT_1/DISSIP_1/c.dis", "d");
  ASSERT_TRUE(vertical.deleteVsFolder());
  EXPECT_FALSE(fs::exists(folder / "VS_1"));
  EXPECT_TRUE(fs::exists(folder / "VS_1.dat"));
  ASSERT_TRUE(vertical.deleteVsTIFile());
  EXPECT_FALSE(fs::exists(folder / "VS_1.dat"));
  EXPECT_TRUE(fs::exists(folder / "VP_1" / "b.kor"));
  ASSERT_TRUE(vertical.deleteDissipFolder());
  EXPECT_FALSE(fs::exists(folder / "DISSIP_1"));
  EXPECT_TRUE(fs::exists(folder / "VP_1" / "b.kor"));
}

TEST(VerticalUnset, AVerticalWithoutFoldersDeletesNothing) {
  cls_VERTICAL v;
  Diagnostic why;
  EXPECT_FALSE(v.deleteVsFolder(&why));
  EXPECT_FALSE(why.reason.empty());
  EXPECT_FALSE(v.deleteDMTFile());
}

TEST_F(VerticalFixture, ACloneIsIndependentOfItsOriginal) {
  vertical.dmt->addZABCtoData(0.2f, 50, 120, 0, false);
  vertical.strTestname = "original";
  cls_VERTICAL copy = vertical.cloneVertical();
  copy.dmt->addZABCtoData(0.4f, 60, 130, 0, false);
  copy.strTestname = "copy";
  copy.setFolders(siteFolder, "VERT_2");
  EXPECT_EQ(vertical.dmt->N(), 1);
  EXPECT_EQ(copy.dmt->N(), 2);
  EXPECT_EQ(vertical.strTestname, "original");
  EXPECT_EQ(vertical.dmt->getDatPath(), folder / "DMT_1.dat");
  EXPECT_EQ(copy.dmt->getDatPath(), siteFolder / "VERT_2" / "DMT_2.dat");
}

}  // namespace
}  // namespace koru
