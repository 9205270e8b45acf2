// Sites as the rest of the program sees them: creating, filling, closing and opening again,
// numbering, the order of the verticals, and sites whose files are broken.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "scratch_folder.h"
#include "sites/FS.h"
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
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    std::string rel = entry.path().lexically_relative(root).generic_string();
    if (entry.is_directory()) rel += "/";
    entries.insert(rel);
  }
  return entries;
}

std::vector<std::string> folderNames(const cls_SITE& site) {
  std::vector<std::string> names;
  for (const cls_VERTICAL& v : site.verticals) names.push_back(v.strFolderName);
  return names;
}

bool mentions(const std::vector<Diagnostic>& problems, const fs::path& file) {
  for (const Diagnostic& d : problems)
    if (d.file == file) return true;
  return false;
}

// A vertical file as it lies on disk.
std::string verticalFile(std::string_view testName) {
  return std::string(testName) +
         "\r\nFirm\r\nCustomer\r\nJob\r\nSite\r\nRemark\r\n5 MAR 2008\r\n\r\n0\r\n3\r\n1\r\n0\r\n0\r\n0\r\n";
}

TEST(SitesRoundTrip, ASiteClosedAndOpenedAgainHasExactlyItsFilesAndHeaders) {
  ScratchFolder sites;
  {
    cls_SITE site;
    ASSERT_TRUE(site.newSite(sites.path(), "Cantiere S\xC3\xB9"));
    EXPECT_EQ(site.strFolder, "SITE_1");

    cls_VERTICAL* first = site.newVertical();
    ASSERT_NE(first, nullptr);
    first->strTestname = "DMT 1";
    first->strFirm = "Studio Rossi";
    first->strCustomer = "Comune";
    first->strJob = "J-12";
    first->strSite = "Via Roma";
    first->strRemark = "dry";
    first->strDate = "5 MAR 2008";
    first->strGPS = "45.1N 9.2E";
    first->sngZabs = 12.5f;
    first->sngZw = 2.25f;
    first->dmt->addZABCtoData(0.2f, 50, 120, 0, false);
    first->dmt->addZABCtoData(0.4f, 60, 140, 0, false);
    first->dmt->addZABCtoData(0.6f, 70, 160, 0, false);
    first->gamma.setMethod(2);
    first->gamma.setN(2);
    first->gamma.setZi(0, 1.0f);
    first->gamma.setYi(0, 18.0f);
    first->gamma.setZi(1, 5.0f);
    first->gamma.setYi(1, 19.5f);
    std::vector<Diagnostic> problems;
    EXPECT_TRUE(first->saveInfo(&problems));
    EXPECT_THAT(problems, IsEmpty());

    cls_VERTICAL* second = site.newVertical();
    ASSERT_NE(second, nullptr);
    second->strTestname = "Seismic only";
    second->blnTestDMT = false;
    second->blnTestVs = true;
    EXPECT_TRUE(second->saveInfo());
    EXPECT_TRUE(site.saveInfo());
  }

  EXPECT_EQ(treeOf(sites.path()),
            (std::set<std::string>{"SITE_1/", "SITE_1/SITE_1.dat", "SITE_1/VERT_1/", "SITE_1/VERT_1/VERT_1.dat",
                                   "SITE_1/VERT_1/DMT_1.dat", "SITE_1/VERT_1/GAMMA_1.dat", "SITE_1/VERT_1/U_1.dat",
                                   "SITE_1/VERT_2/", "SITE_1/VERT_2/VERT_2.dat", "SITE_1/VERT_2/VS_2/",
                                   "SITE_1/VERT_2/GAMMA_2.dat", "SITE_1/VERT_2/U_2.dat"}));
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1" / "SITE_1.dat"), "Cantiere S\xF9\r\nVERT_1\r\nVERT_2\r\n");
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1" / "VERT_1" / "VERT_1.dat"),
            "DMT 1\r\nStudio Rossi\r\nComune\r\nJ-12\r\nVia Roma\r\ndry\r\n5 MAR 2008\r\n45.1N 9.2E\r\n"
            "12.5\r\n2.25\r\n1\r\n0\r\n0\r\n0\r\n");
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1" / "VERT_2" / "VERT_2.dat"),
            "Seismic only\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n0\r\n3\r\n0\r\n1\r\n0\r\n0\r\n");

  cls_SITE site;
  EXPECT_TRUE(site.sOpen(sites.path(), "SITE_1"));
  EXPECT_THAT(site.problems(), IsEmpty());
  EXPECT_EQ(site.strName, "Cantiere S\xC3\xB9");
  EXPECT_EQ(site.siteNumber(), 1);
  ASSERT_EQ(site.verticals.Count(), 2);
  const cls_VERTICAL& first = *site.verticals.item(1);
  EXPECT_EQ(first.strFirm, "Studio Rossi");
  EXPECT_EQ(first.strGPS, "45.1N 9.2E");
  EXPECT_FLOAT_EQ(first.sngZabs, 12.5f);
  EXPECT_FLOAT_EQ(first.sngZw, 2.25f);
  EXPECT_TRUE(first.blnTestDMT);
  // The profiles are part of the header.
  EXPECT_EQ(first.gamma.Method(), 2);
  ASSERT_EQ(first.gamma.N(), 2);
  EXPECT_FLOAT_EQ(first.gamma.getYi(1), 19.5f);
  EXPECT_FALSE(site.verticals.item(2)->blnTestDMT);
  EXPECT_TRUE(site.verticals.item(2)->blnTestVs);
}

TEST(SitesRoundTrip, OpeningReadsHeadersOnlyAndActivatingLoadsTheTests) {
  ScratchFolder sites;
  {
    cls_SITE site;
    ASSERT_TRUE(site.newSite(sites.path(), "S"));
    cls_VERTICAL* v = site.newVertical();
    v->dmt->addZABCtoData(0.2f, 50, 120, 0, false);
    v->dmt->addZABCtoData(0.4f, 60, 140, 0, false);
    v->createCalibrationTest();
    v->calibration->addCalibration(15, 40, "12/03/2008", "10:25");
    ASSERT_TRUE(v->saveInfo());
  }
  cls_SITE site;
  ASSERT_TRUE(site.sOpen(sites.path(), "SITE_1"));
  cls_VERTICAL* v = site.verticals.item(1);
  EXPECT_FALSE(v->isDMTSignificant());
  EXPECT_FALSE(v->isCalibration());
  EXPECT_EQ(site.activeVertical(), nullptr);

  EXPECT_EQ(site.verticals.activate(1, DMTOptions{}), v);
  EXPECT_EQ(site.activeVertical(), v);
  EXPECT_EQ(site.verticals.activeIndex(), 1);
  EXPECT_THAT(v->problems(), IsEmpty());
  ASSERT_EQ(v->dmt->N(), 2);
  EXPECT_EQ(v->dmt->vB[1], 140);
  EXPECT_EQ(v->dmt->vecPo.size(), 2u);  // evaluated as it is loaded
  ASSERT_TRUE(v->isCalibration());
  EXPECT_EQ(v->calibration->N(), 1);

  site.setVerticalsInactive();
  EXPECT_EQ(site.activeVertical(), nullptr);
  EXPECT_EQ(site.verticals.activate(3, DMTOptions{}), nullptr);
}

TEST(SitesNumbering, ANewSiteTakesTheNumberOfADeletedOne) {
  ScratchFolder sites;
  for (const char* name : {"One", "Two", "Three"}) {
    cls_SITE site;
    ASSERT_TRUE(site.newSite(sites.path(), name));
  }
  ASSERT_TRUE(FS::deleteFolder(sites / "SITE_2"));
  cls_SITE site;
  ASSERT_TRUE(site.newSite(sites.path(), "Four"));
  EXPECT_EQ(site.strFolder, "SITE_2");
  EXPECT_EQ(site.siteNumber(), 2);
  EXPECT_EQ(FS::siteDisplayName(sites / "SITE_2"), "Four");
  EXPECT_EQ(FS::siteDisplayName(sites / "SITE_3"), "Three");
  EXPECT_THAT(FS::listSiteFolders(sites.path()), ElementsAre("SITE_1", "SITE_2", "SITE_3"));
}

TEST(SitesNumbering, AFileNamedLikeASiteIsSkippedAndKept) {
  ScratchFolder sites;
  sites.write("SITE_1", "stray file");
  cls_SITE site;
  ASSERT_TRUE(site.newSite(sites.path(), "First"));
  EXPECT_EQ(site.strFolder, "SITE_2");
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1"), "stray file");
  EXPECT_THAT(FS::listSiteFolders(sites.path()), ElementsAre("SITE_2"));
}

TEST(SitesNumbering, ANewVerticalTakesTheNumberOfARemovedOneAndGoesLast) {
  ScratchFolder sites;
  cls_SITE site;
  ASSERT_TRUE(site.newSite(sites.path(), "S"));
  for (int i = 0; i < 3; ++i) ASSERT_NE(site.newVertical(), nullptr);
  sites.write("SITE_1/VERT_3/DMT_3.dat", "kept");

  ASSERT_TRUE(site.verticals.Remove(2));
  EXPECT_FALSE(fs::exists(sites / "SITE_1" / "VERT_2"));
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1" / "VERT_3" / "DMT_3.dat"), "kept");
  ASSERT_TRUE(site.saveInfo());  // the caller rewrites the site file after a removal
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1" / "SITE_1.dat"), "S\r\nVERT_1\r\nVERT_3\r\n");

  cls_VERTICAL* v = site.newVertical();
  ASSERT_NE(v, nullptr);
  EXPECT_EQ(v->strFolderName, "VERT_2");
  EXPECT_EQ(v->strDMTFile, sites / "SITE_1" / "VERT_2" / "DMT_2.dat");
  EXPECT_THAT(folderNames(site), ElementsAre("VERT_1", "VERT_3", "VERT_2"));
  // The new vertical is in the site file at once.
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1" / "SITE_1.dat"), "S\r\nVERT_1\r\nVERT_3\r\nVERT_2\r\n");
}

TEST(SitesVerticalOrder, AReorderOfTheWrongLengthChangesNothing) {
  ScratchFolder sites;
  cls_SITE site;
  ASSERT_TRUE(site.newSite(sites.path(), "S"));
  for (int i = 0; i < 3; ++i) ASSERT_NE(site.newVertical(), nullptr);
  EXPECT_FALSE(site.verticals.reOrder({3, 2, 1, 1}));
  EXPECT_FALSE(site.verticals.reOrder({3, 2}));
  EXPECT_FALSE(site.verticals.reOrder({3, 3, 1}));  // not a permutation
  EXPECT_FALSE(site.verticals.reOrder({0, 1, 2}));
  EXPECT_THAT(folderNames(site), ElementsAre("VERT_1", "VERT_2", "VERT_3"));
}

TEST(SitesVerticalOrder, OrderLivesInTheSiteFileAndFoldersKeepTheirNames) {
  ScratchFolder sites;
  cls_SITE site;
  ASSERT_TRUE(site.newSite(sites.path(), "S"));
  for (int i = 0; i < 3; ++i) ASSERT_NE(site.newVertical(), nullptr);
  cls_VERTICAL* active = site.verticals.activate(1, DMTOptions{});

  ASSERT_TRUE(site.verticals.reOrder({3, 1, 2}));
  EXPECT_THAT(folderNames(site), ElementsAre("VERT_3", "VERT_1", "VERT_2"));
  EXPECT_EQ(site.activeVertical(), active);  // the active vertical stays the same one
  EXPECT_EQ(site.verticals.activeIndex(), 2);
  ASSERT_TRUE(site.saveInfo());

  cls_SITE reopened;
  ASSERT_TRUE(reopened.sOpen(sites.path(), "SITE_1"));
  EXPECT_THAT(folderNames(reopened), ElementsAre("VERT_3", "VERT_1", "VERT_2"));
  EXPECT_TRUE(fs::is_directory(sites / "SITE_1" / "VERT_3"));
}

TEST(SitesVerticalCollection, UnloadAndClearLeaveTheFilesAlone) {
  ScratchFolder sites;
  cls_SITE site;
  ASSERT_TRUE(site.newSite(sites.path(), "S"));
  for (int i = 0; i < 2; ++i) ASSERT_NE(site.newVertical(), nullptr);
  site.verticals.activate(2, DMTOptions{});
  ASSERT_TRUE(site.verticals.unLoad(2));
  EXPECT_EQ(site.activeVertical(), nullptr);
  EXPECT_FALSE(site.verticals.unLoad(2));
  site.verticals.Clear();
  EXPECT_EQ(site.verticals.Count(), 0);
  EXPECT_TRUE(fs::exists(sites / "SITE_1" / "VERT_1" / "VERT_1.dat"));
  EXPECT_TRUE(fs::exists(sites / "SITE_1" / "VERT_2" / "VERT_2.dat"));
}

TEST(SitesVerticalCollection, RemoveDeletesOnlyAProperVerticalFolder) {
  ScratchFolder sites;
  cls_SITE site;
  ASSERT_TRUE(site.newSite(sites.path(), "S"));
  ASSERT_NE(site.newVertical(), nullptr);
  // A vertical whose name was damaged would point at the site folder itself.
  cls_VERTICAL* v = site.verticals.item(1);
  v->strFolderName = "..";
  v->strFolderPath = sites / "SITE_1" / "VERT_1" / "..";
  Diagnostic why;
  EXPECT_FALSE(site.verticals.Remove(1, &why));
  EXPECT_FALSE(why.reason.empty());
  EXPECT_EQ(site.verticals.Count(), 1);
  EXPECT_TRUE(fs::exists(sites / "SITE_1" / "SITE_1.dat"));
  EXPECT_TRUE(fs::exists(sites / "SITE_1" / "VERT_1" / "VERT_1.dat"));
  EXPECT_FALSE(site.verticals.Remove(5));
}

TEST(SitesVerticalCollection, OverwritingTheActiveVerticalKeepsItsPlaceActive) {
  ScratchFolder sites;
  cls_SITE site;
  ASSERT_TRUE(site.newSite(sites.path(), "S"));
  for (int i = 0; i < 2; ++i) ASSERT_NE(site.newVertical(), nullptr);
  site.verticals.activate(2, DMTOptions{});
  cls_VERTICAL edited = site.verticals.item(2)->cloneVertical();
  edited.strTestname = "edited";
  ASSERT_TRUE(site.verticals.overWriteVertical(2, edited));
  EXPECT_EQ(site.verticals.item(2)->strTestname, "edited");
  EXPECT_EQ(site.activeVertical(), site.verticals.item(2));
  EXPECT_FALSE(site.verticals.overWriteVertical(3, edited));
}

TEST(SitesBrokenFiles, AMissingSiteFileShowsAsTheSiteName) {
  ScratchFolder sites;
  fs::create_directories(sites / "SITE_1" / "VERT_1");
  cls_SITE site;
  EXPECT_FALSE(site.sOpen(sites.path(), "SITE_1"));
  EXPECT_EQ(site.strName, "(ERROR) 'SITE_1.dat not found");
  EXPECT_EQ(site.verticals.Count(), 0);
  ASSERT_EQ(site.problems().size(), 1u);
  EXPECT_EQ(site.problems()[0].file, sites / "SITE_1" / "SITE_1.dat");
  EXPECT_TRUE(fs::is_directory(sites / "SITE_1" / "VERT_1"));  // nothing was cleaned away

  cls_SITE missing;
  EXPECT_FALSE(missing.sOpen(sites.path(), "SITE_7"));
  EXPECT_EQ(missing.strName, "(ERROR) 'SITE_7' not found");
}

TEST(SitesBrokenFiles, AFolderNameThatIsNoSiteNameOpensNothing) {
  ScratchFolder sites;
  sites.write("SITE_1/SITE_1.dat", "S\r\n");
  cls_SITE site;
  EXPECT_FALSE(site.sOpen(sites / "SITE_1", ".."));
  EXPECT_EQ(site.strName, "(ERROR) invalid sitename");
  EXPECT_FALSE(site.saveInfo());
  EXPECT_EQ(site.newVertical(), nullptr);
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1" / "SITE_1.dat"), "S\r\n");
}

TEST(SitesBrokenFiles, ABrokenVerticalIsReportedWhileTheOthersOpen) {
  ScratchFolder sites;
  sites.write("SITE_1/SITE_1.dat", "S\r\nVERT_1\r\nVERT_2\r\nVERT_3\r\nVERT_4\r\n");
  sites.write("SITE_1/VERT_1/VERT_1.dat", verticalFile("good one"));
  sites.write("SITE_1/VERT_2/VERT_2.dat", "only\r\ntwo lines\r\n");
  fs::create_directories(sites / "SITE_1" / "VERT_3");  // its file is missing
  sites.write("SITE_1/VERT_4/VERT_4.dat", verticalFile("also good"));

  cls_SITE site;
  EXPECT_FALSE(site.sOpen(sites.path(), "SITE_1"));
  ASSERT_EQ(site.verticals.Count(), 4);
  EXPECT_EQ(site.verticals.item(1)->strTestname, "good one");
  EXPECT_EQ(site.verticals.item(2)->strFirm, "two lines");
  EXPECT_FLOAT_EQ(site.verticals.item(2)->sngZw, 3.0f);
  EXPECT_EQ(site.verticals.item(4)->strTestname, "also good");
  EXPECT_TRUE(mentions(site.problems(), sites / "SITE_1" / "VERT_2" / "VERT_2.dat"));
  EXPECT_TRUE(mentions(site.problems(), sites / "SITE_1" / "VERT_3" / "VERT_3.dat"));
  EXPECT_FALSE(mentions(site.problems(), sites / "SITE_1" / "VERT_1" / "VERT_1.dat"));
  EXPECT_THAT(site.verticals.item(1)->problems(), IsEmpty());
}

TEST(SitesBrokenFiles, ABrokenDMTFileIsReportedAtActivationAndTheOthersStillLoad) {
  ScratchFolder sites;
  {
    cls_SITE site;
    ASSERT_TRUE(site.newSite(sites.path(), "S"));
    for (int i = 0; i < 2; ++i) {
      cls_VERTICAL* v = site.newVertical();
      v->dmt->addZABCtoData(0.2f, 50, 120, 0, false);
      ASSERT_TRUE(v->saveInfo());
    }
  }
  sites.write("SITE_1/VERT_1/DMT_1.dat", "0.20,0.40\r\n");  // cut off in the first line

  cls_SITE site;
  ASSERT_TRUE(site.sOpen(sites.path(), "SITE_1"));  // headers are fine
  cls_VERTICAL* broken = site.verticals.activate(1, DMTOptions{});
  ASSERT_NE(broken, nullptr);
  ASSERT_FALSE(broken->problems().empty());
  EXPECT_EQ(broken->problems()[0].file, sites / "SITE_1" / "VERT_1" / "DMT_1.dat");
  EXPECT_EQ(site.activeVertical(), broken);

  cls_VERTICAL* good = site.verticals.activate(2, DMTOptions{});
  EXPECT_THAT(good->problems(), IsEmpty());
  EXPECT_EQ(good->dmt->N(), 1);
}

TEST(SitesSiteFile, WritesTheNameAndTheVerticalsInCollectionOrder) {
  ScratchFolder sites;
  cls_SITE site;
  ASSERT_TRUE(site.newSite(sites.path(), "Two\nlines"));
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1" / "SITE_1.dat"), "Two lines\r\n");
  site.blnModified = true;
  site.strName = "Renamed";
  ASSERT_TRUE(site.saveInfo());
  EXPECT_FALSE(site.blnModified);
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1" / "SITE_1.dat"), "Renamed\r\n");
}

TEST(SitesSiteFile, ANewSiteStartsEmptyWhateverWasOpenBefore) {
  ScratchFolder sites;
  cls_SITE site;
  ASSERT_TRUE(site.newSite(sites.path(), "A"));
  ASSERT_NE(site.newVertical(), nullptr);
  ASSERT_TRUE(site.newSite(sites.path(), "B"));
  EXPECT_EQ(site.strFolder, "SITE_2");
  EXPECT_EQ(site.verticals.Count(), 0);
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_2" / "SITE_2.dat"), "B\r\n");
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1" / "SITE_1.dat"), "A\r\nVERT_1\r\n");
}

}  // namespace
}  // namespace koru
