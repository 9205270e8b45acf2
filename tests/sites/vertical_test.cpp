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
};

TEST_F(VerticalFixture, HeaderFileIsWrittenInItsOwnLineOrderAndAShortOneKeepsTheDefaults) {
  const std::string bytes =
      "Test\r\nFirm\r\nCustomer\r\nJob\r\nSit\xE9\r\nRemark\r\n5 MAR 2008\r\n45,9\r\n-1.75\r\n0.5\r\n0\r\n1\r\n0\r\n1\r\n";
  ASSERT_TRUE(vertical.parseVerticalFile(bytes, "VERT_1.dat").complete());
  EXPECT_EQ(vertical.strSite, "Sit\xC3\xA9");
  EXPECT_TRUE(vertical.blnTestDissip);
  ASSERT_TRUE(vertical.saveVerticalFile());
  EXPECT_EQ(ScratchFolder::read(folder / "VERT_1.dat"), bytes);

  cls_VERTICAL cut;
  const LoadResult r = cut.parseVerticalFile("Name\nFirm\n", "VERT_1.dat");
  EXPECT_EQ(r.status, LoadStatus::Partial);
  EXPECT_EQ(r.why.line, 3);
  EXPECT_EQ(cut.strFirm, "Firm");
  EXPECT_FLOAT_EQ(cut.sngZw, 3.0f);
}

// A number or flag that is none keeps its default and is told at its line; a byte-order mark is
// passed over; a last line cut before its line end is not taken.
TEST_F(VerticalFixture, BadLinesOfTheHeaderFileAreToldAtTheirLine) {
  const std::string texts = "T\r\nF\r\nC\r\nJ\r\nS\r\nR\r\nD\r\nG\r\n";
  const struct { std::string text; int line; float zw; bool dissip; } cases[] = {
      {"\xEF\xBB\xBF" + texts + "1\r\n2\r\n1\r\n1\r\n1\r\n1\r\n", 0, 2, true},
      {texts + "1\r\nnan\r\n1\r\n1\r\n1\r\n1\r\n", 10, 3, true},
      {texts + "1\r\n2\r\n1\r\n1\r\n1\r\nyes\r\n", 14, 2, false},
      {texts + "1\r\n2\r\n1\r\n1\r\n1\r\n1", 14, 2, false},
  };
  for (const auto& c : cases) {
    cls_VERTICAL v;
    const LoadResult r = v.parseVerticalFile(c.text, "VERT_1.dat");
    EXPECT_EQ(r.why.line, c.line) << c.text;
    EXPECT_EQ(v.strTestname, "T");
    EXPECT_FLOAT_EQ(v.sngZw, c.zw) << c.text;
    EXPECT_EQ(v.blnTestDissip, c.dissip) << c.text;
  }
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

TEST_F(VerticalFixture, SavingWritesOnlyTheTestsWhoseFlagIsSet) {
  vertical.dmt->addZABCtoData(0.2f, 50, 120, 0, false);
  vertical.blnTestDMT = false;
  vertical.blnTestVp = true;
  vertical.blnTestDissip = true;
  ASSERT_TRUE(vertical.saveInfo());
  EXPECT_FALSE(fs::exists(folder / "DMT_1.dat"));
  EXPECT_TRUE(fs::is_directory(folder / "VP_1"));
  EXPECT_FALSE(fs::exists(folder / "VS_1"));
}

TEST_F(VerticalFixture, ADamagedFileIsKeptAsideBeforeTheFirstSaveOverIt) {
  const std::string cut = "0.20,0.40,\r\n";
  sites.write("SITE_1/VERT_1/DMT_1.dat", cut);
  EXPECT_FALSE(vertical.loadData(DMTOptions{}));
  std::vector<Diagnostic> problems;
  ASSERT_TRUE(vertical.saveInfo(&problems));
  EXPECT_EQ(ScratchFolder::read(folder / "DMT_1.dat.damaged"), cut);
  // Once kept, the file is the program's own again: the next save makes no second copy.
  problems.clear();
  ASSERT_TRUE(vertical.saveInfo(&problems));
  EXPECT_THAT(problems, IsEmpty());
  EXPECT_FALSE(fs::exists(folder / "DMT_1.dat.damaged2"));
}

// Only the file read in part is kept aside, and it is never cut short without that copy.
TEST_F(VerticalFixture, TheCopyKeptIsOfTheFileReadInPart) {
  sites.write("SITE_1/VERT_1/DMT_1.dat",
              "0.2,0.4,1,0.15,0.4,34.7,0,3,0,1.73293,0.2\r\n\"F\",\"C\"\r\n\"J\",\"S\",\"R\"\r\n\"D\",\"T\"\r\n"
              "300,420\r\n310,440\r\n");
  const std::string thrust = "THRUST UNITS = kg\r\n\r\nZ = 0.20, TH = 400\r\nZ = 0.30, TH = 420\r\nZ = 0.40, TH = 450\r\n";
  sites.write("SITE_1/VERT_1/Thrust.dat", thrust);
  EXPECT_FALSE(vertical.loadData(DMTOptions{}));
  std::vector<Diagnostic> problems;
  ASSERT_TRUE(vertical.saveInfo(&problems));
  EXPECT_EQ(ScratchFolder::read(folder / "Thrust.dat.damaged"), thrust);
  EXPECT_FALSE(fs::exists(folder / "DMT_1.dat.damaged"));
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].file, folder / "Thrust.dat");
}

}  // namespace
}  // namespace koru
