// Sites as the rest of the program sees them: creating, filling, closing and opening again,
// numbering, the order of the verticals, and sites whose files are broken.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "scratch_folder.h"
#include "sites/FS.h"
#include "sites/SiteFile.h"
#include "sites/cls_SITE.h"

namespace koru {
namespace {

namespace fs = std::filesystem;
using koru::testing::ScratchFolder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Every file and folder below `root`, relative, folders ending in "/".
std::set<std::string> treeOf(const fs::path& root) {
  std::set<std::string> entries;
  for (const auto& entry : fs::recursive_directory_iterator(root))
    if (entry.path().filename() != FS::kLockFileName)
      entries.insert(entry.path().lexically_relative(root).generic_string() + (entry.is_directory() ? "/" : ""));
  return entries;
}

std::vector<std::string> folderNames(const cls_SITE& site) {
  std::vector<std::string> names;
  for (const cls_VERTICAL& v : site.verticals) names.push_back(v.strFolderName);
  return names;
}


TEST(SitesRoundTrip, ASiteClosedAndOpenedAgainHasExactlyItsFilesAndHeaders) {
  ScratchFolder sites;
  {
    cls_SITE site;
    ASSERT_TRUE(site.newSite(sites.path(), "Cantiere S\xC3\xB9"));

    cls_VERTICAL* first = site.newVertical();
    ASSERT_NE(first, nullptr);
    first->strTestname = "DMT 1", first->strFirm = "Studio Rossi", first->sngZabs = 12.5f;
    first->dmt->addZABCtoData(0.2f, 50, 120, 0, false);
    first->gamma.setMethod(1);
    EXPECT_TRUE(first->saveInfo());

    cls_VERTICAL* second = site.newVertical();
    ASSERT_NE(second, nullptr);
    second->strTestname = "Seismic only", second->blnTestDMT = false, second->blnTestVs = true;
    EXPECT_TRUE(second->saveInfo());
    EXPECT_TRUE(site.saveInfo());
  }

  EXPECT_EQ(treeOf(sites.path()),
            (std::set<std::string>{"SITE_1/", "SITE_1/SITE_1.dat", "SITE_1/VERT_1/", "SITE_1/VERT_1/VERT_1.dat",
                                   "SITE_1/VERT_1/DMT_1.dat", "SITE_1/VERT_1/GAMMA_1.dat", "SITE_1/VERT_1/U_1.dat",
                                   "SITE_1/VERT_2/", "SITE_1/VERT_2/VERT_2.dat", "SITE_1/VERT_2/VS_2/",
                                   "SITE_1/VERT_2/GAMMA_2.dat", "SITE_1/VERT_2/U_2.dat"}));
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1" / "SITE_1.dat"), "Cantiere S\xF9\r\nVERT_1\r\nVERT_2\r\n");

  cls_SITE site;
  EXPECT_TRUE(site.sOpen(sites.path(), "SITE_1"));
  EXPECT_THAT(site.problems(), IsEmpty());
  EXPECT_EQ(site.strName, "Cantiere S\xC3\xB9");
  ASSERT_EQ(site.verticals.Count(), 2);
  EXPECT_FLOAT_EQ(site.verticals.item(1)->sngZabs, 12.5f);
  EXPECT_EQ(site.verticals.item(1)->gamma.Method(), 1) << "the profiles are part of the header";
  EXPECT_TRUE(site.verticals.item(2)->blnTestVs);
}

TEST(SitesNumbering, ANewSiteTakesTheNumberOfADeletedOne) {
  ScratchFolder sites;
  for (const char* name : {"One", "Two", "Three"}) ASSERT_TRUE(cls_SITE().newSite(sites.path(), name));
  ASSERT_TRUE(FS::deleteFolder(sites / "SITE_2"));
  cls_SITE site;
  ASSERT_TRUE(site.newSite(sites.path(), "Four"));
  EXPECT_EQ(site.strFolder, "SITE_2");
  EXPECT_EQ(FS::siteDisplayName(sites / "SITE_2"), "Four");
}

TEST(SitesVerticals, ANewVerticalTakesTheNumberOfARemovedOneAndTheOrderLivesInTheSiteFile) {
  ScratchFolder sites;
  cls_SITE site;
  ASSERT_TRUE(site.newSite(sites.path(), "S"));
  for (int i = 0; i < 3; ++i) ASSERT_NE(site.newVertical(), nullptr);
  sites.write("SITE_1/VERT_3/DMT_3.dat", "kept");

  ASSERT_TRUE(site.removeVertical(2));
  EXPECT_FALSE(fs::exists(sites / "SITE_1" / "VERT_2"));
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1" / "VERT_3" / "DMT_3.dat"), "kept");
  ASSERT_NE(site.newVertical(), nullptr);
  // The new vertical goes last and is in the site file at once.
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1" / "SITE_1.dat"), "S\r\nVERT_1\r\nVERT_3\r\nVERT_2\r\n");

  // Reordering moves the entries, not the folders, and the active vertical stays the same one.
  cls_VERTICAL* active = site.verticals.activate(1, DMTOptions{});
  ASSERT_TRUE(site.verticals.reOrder({3, 1, 2}));
  EXPECT_THAT(folderNames(site), ElementsAre("VERT_2", "VERT_1", "VERT_3"));
  EXPECT_EQ(site.activeVertical(), active);
  ASSERT_TRUE(site.saveInfo());
  cls_SITE reopened;
  ASSERT_TRUE(reopened.sOpen(sites.path(), "SITE_1"));
  EXPECT_THAT(folderNames(reopened), ElementsAre("VERT_2", "VERT_1", "VERT_3"));
}

// The site file: a byte-order mark and lone CRs read as plain lines; a last line cut before its
// line end is not taken (it may have lost digits), and junk is told at its line but only so often.
TEST(SitesFile, BadLinesAreToldAtTheirLine) {
  std::string junk = "S\r\n";
  for (int i = 0; i < 150; ++i) junk += "x\r\n";
  const struct { std::string text; std::vector<std::string> verticals; int line; size_t problems; } cases[] = {
      {"\xEF\xBB\xBF" "S\r\nVERT_1\r\nVERT_2\r\n", {"VERT_1", "VERT_2"}, 0, 0},
      {"S\rVERT_1\rVERT_2\r", {"VERT_1", "VERT_2"}, 0, 0},
      {"S\r\nVERT_1\r\nVERT_12", {"VERT_1"}, 3, 1},
      {"S\r\nVERT_1\r\nVERT_1\r\nVERT 2\r\n", {"VERT_1"}, 3, 2},
      {junk, {}, 2, SiteFile::kMaxProblems + 1},
  };
  for (const auto& c : cases) {
    SiteFile f;
    const LoadResult read = f.parse(c.text, "SITE_1.dat");
    EXPECT_EQ(f.name, "S");
    std::vector<std::string> names;
    for (const auto& v : f.verticals) names.push_back(v.name);
    EXPECT_EQ(names, c.verticals) << c.text;
    EXPECT_EQ(read.why.line, c.line) << c.text;
    EXPECT_EQ(f.problems.size(), c.problems) << c.text;
  }
}

}  // namespace
}  // namespace koru
