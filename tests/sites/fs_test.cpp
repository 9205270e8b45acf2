// The folder tree helpers: folder names and numbers, the site and vertical listings, and the
// file operations that must never lose data the user did not ask to lose.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "scratch_folder.h"
#include "sites/FS.h"

namespace koru {
namespace {

namespace fs = std::filesystem;
using koru::testing::ScratchFolder;
using ::testing::ElementsAre;

// Padded or zero numbers would give one site two names, and a path in the name would lead the
// store outside its tree.
TEST(FSFolderNames, OnlyOnePlainNumberAfterThePrefixIsValid) {
  EXPECT_TRUE(FS::isValidFolderName("SITE_999999999"));
  EXPECT_EQ(FS::folderNumber("VERT_305"), 305);
  for (const char* name : {"SITE_0", "SITE_01", "SITE_1a", "site_1", "VERT_+2", "SITE_1234567890", "SITE_1/.."})
    EXPECT_FALSE(FS::isValidFolderName(name)) << name;
}

TEST(FSNewFolderNames, TakesTheSmallestFreeNumber) {
  ScratchFolder root;
  EXPECT_EQ(FS::newSiteFolderName(root.path()), "SITE_1");
  for (const char* taken : {"SITE_1", "SITE_3"}) fs::create_directories(root / taken);
  EXPECT_EQ(FS::newSiteFolderName(root.path()), "SITE_2");
  fs::create_directories(root / "SITE_2");
  EXPECT_EQ(FS::newSiteFolderName(root.path()), "SITE_4");
}

TEST(FSListVerticalFolders, SkipsLinesThatNameNoVerticalAndKeepsOnesWhoseFolderIsMissing) {
  ScratchFolder root;
  fs::create_directories(root / "SITE_1" / "VERT_1");
  fs::create_directories(root / "SITE_2");
  root.write("SITE_1/SITE_1.dat", "Name\r\n..\\SITE_2\r\nVERT_1\r\nVERT_7\r\nVERT_1\r\n");
  std::vector<Diagnostic> problems;
  EXPECT_THAT(FS::listVerticalFolders(root / "SITE_1", &problems), ElementsAre("VERT_1", "VERT_7"));
  ASSERT_EQ(problems.size(), 3u);
  EXPECT_EQ(problems[1].line, 4);
}

TEST(FSCopy, KeepsExistingFilesUnlessAskedToReplaceThem) {
  ScratchFolder root;
  root.write("a/x.dat", "new");
  root.write("a/y.dat", "y");
  root.write("b/x.dat", "old");
  Diagnostic why;
  EXPECT_FALSE(FS::copyFolder(root / "a", root / "b", false, &why));
  EXPECT_EQ(why.file, root / "b" / "x.dat");
  EXPECT_EQ(ScratchFolder::read(root / "b" / "x.dat"), "old");
  EXPECT_EQ(ScratchFolder::read(root / "b" / "y.dat"), "y");  // the rest is still copied
  EXPECT_TRUE(FS::copyFolder(root / "a", root / "b", true));
  EXPECT_EQ(ScratchFolder::read(root / "b" / "x.dat"), "new");

  // A single file is never replaced unless asked, and never copied onto itself.
  EXPECT_FALSE(FS::copyFile(root / "a" / "y.dat", root / "b" / "x.dat"));
  EXPECT_EQ(ScratchFolder::read(root / "b" / "x.dat"), "new");
  EXPECT_TRUE(FS::copyFile(root / "a" / "y.dat", root / "a" / "y.dat", true));
  EXPECT_EQ(ScratchFolder::read(root / "a" / "y.dat"), "y");
}

TEST(FSDeleteFolder, RefusesFilesAndPathsThatAreNoFolderName) {
  ScratchFolder root;
  root.write("a.dat", "A");
  fs::create_directories(root / "sub");
  for (const fs::path& p : {root / "a.dat", fs::path(), root / "sub" / "..", root / "."})
    EXPECT_FALSE(FS::deleteFolder(p)) << p;
  EXPECT_TRUE(fs::exists(root / "a.dat"));
}

}  // namespace
}  // namespace koru
