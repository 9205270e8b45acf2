// The site store under other programs: concurrent changes, programs killed midway, and the
// repair of what they leave.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <random>
#include <set>

#include "scratch_folder.h"
#include "sites/FS.h"
#include "sites/cls_SITE.h"

namespace koru {
namespace {

namespace fs = std::filesystem;
using koru::testing::ScratchFolder;
using ::testing::IsEmpty;

std::vector<std::string> namesInSiteFile(const fs::path& site) { return FS::listVerticalFolders(site); }

TEST(SiteStore, ProcessesCreatingVerticalsAtOnceNeverShareANumberNorLoseOne) {
  ScratchFolder sites;
  ASSERT_TRUE(cls_SITE().newSite(sites.path(), "S"));
  constexpr int kProcesses = 2, kEach = 10;
  std::vector<pid_t> children;
  for (int p = 0; p < kProcesses; ++p) {
    const pid_t child = ::fork();
    if (child == 0) {
      cls_SITE site;
      site.sOpen(sites.path(), "SITE_1");
      int made = 0;
      for (int i = 0; i < kEach; ++i) made += site.newVertical() != nullptr;
      ::_exit(made == kEach ? 0 : 1);
    }
    children.push_back(child);
  }
  for (pid_t child : children) {
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  const auto names = namesInSiteFile(sites / "SITE_1");
  EXPECT_EQ(names.size(), size_t{kProcesses * kEach});
  EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
  cls_SITE site;
  EXPECT_TRUE(site.sOpen(sites.path(), "SITE_1"));
  EXPECT_THAT(site.problems(), IsEmpty());
}

TEST(SiteStore, AMissingFolderKeepsItsLineAndNumberUntilTheVerticalIsRemoved) {
  ScratchFolder sites;
  cls_SITE site;
  ASSERT_TRUE(site.newSite(sites.path(), "S"));
  for (int i = 0; i < 2; ++i) ASSERT_NE(site.newVertical(), nullptr);
  ASSERT_TRUE(FS::deleteFolder(sites / "SITE_1" / "VERT_1"));
  ASSERT_FALSE(site.sOpen(sites.path(), "SITE_1"));
  ASSERT_EQ(site.verticals.Count(), 2);
  ASSERT_TRUE(site.saveInfo());
  EXPECT_EQ(site.newVertical()->strFolderName, "VERT_3");
  ASSERT_TRUE(site.removeVertical(1));
  EXPECT_EQ(ScratchFolder::read(sites / "SITE_1" / "SITE_1.dat"), "S\r\nVERT_2\r\nVERT_3\r\n");
}

// Every listed vertical whose folder is there has its whole header file.
void expectWholeVerticals(const fs::path& sitesPath) {
  cls_SITE site;
  site.sOpen(sitesPath, "SITE_1");
  for (const Diagnostic& d : site.problems())
    EXPECT_THAT(d.reason, ::testing::AnyOf(::testing::HasSubstr("interrupted change"),
                                           ::testing::HasSubstr("not named in the site file")))
        << d.toString();
}

TEST(SiteStore, AProgramKilledWhileChangingASiteLeavesOnlyWhatTheRepairMends) {
  ScratchFolder sites;
  ASSERT_TRUE(cls_SITE().newSite(sites.path(), "S"));
  std::mt19937 random(7);
  for (int round = 0; round < 20; ++round) {
    const pid_t child = ::fork();
    if (child == 0) {
      for (;;) {
        cls_SITE site;
        site.sOpen(sites.path(), "SITE_1");
        if (site.verticals.Count() < 3) {
          cls_VERTICAL* v = site.newVertical();
          if (v) v->strTestname = "named", v->saveVerticalFile();
        } else {
          site.removeVertical(1 + static_cast<int>(random() % 3));
        }
        site.strName = "S" + std::to_string(random() % 10);
        site.saveInfo();
      }
    }
    ::usleep(1000 + random() % 30000);
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    expectWholeVerticals(sites.path());
  }
  cls_SITE site;
  site.sOpen(sites.path(), "SITE_1");
  EXPECT_TRUE(site.cleanLeftovers());
  EXPECT_TRUE(site.sOpen(sites.path(), "SITE_1"));
  EXPECT_THAT(site.problems(), IsEmpty());
  std::vector<std::string> stray;
  for (const auto& entry : fs::recursive_directory_iterator(sites.path()))
    if (entry.path().filename().string().ends_with("~")) stray.push_back(entry.path().string());
  EXPECT_THAT(stray, IsEmpty());
}

}  // namespace
}  // namespace koru
