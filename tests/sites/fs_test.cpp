// The folder tree helpers: folder names and numbers, the site and vertical listings, and the
// file operations that must never lose data the user did not ask to lose.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "scratch_folder.h"
#include "sites/FS.h"

namespace koru {
namespace {

namespace fs = std::filesystem;
using koru::testing::ScratchFolder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(FSFolderNames, PlainNumbersAfterThePrefixAreValid) {
  EXPECT_TRUE(FS::isValidFolderName("SITE_1"));
  EXPECT_TRUE(FS::isValidFolderName("VERT_12"));
  EXPECT_TRUE(FS::isValidFolderName("SITE_999999999"));
  EXPECT_EQ(FS::folderNumber("VERT_305"), 305);
  EXPECT_EQ(FS::folderNumber("SITE_7", FS::kSitePrefix), 7);
}

TEST(FSFolderNames, AnythingButOnePlainNumberIsRefused) {
  // Padded or zero numbers would give one site two names, and a path in the name would lead
  // the store outside its tree.
  for (const char* name : {"SITE_", "SITE_0", "SITE_01", "SITE_1a", "SITE_ 1", "site_1", "VERT_-1", "VERT_+2",
                           "SITE_1234567890", "DMT_1", "SITE_1/..", "..", ""})
    EXPECT_FALSE(FS::isValidFolderName(name)) << name;
  EXPECT_FALSE(FS::folderNumber("VERT_3", FS::kSitePrefix));
}

TEST(FSNewFolderNames, TakesTheSmallestFreeNumber) {
  ScratchFolder root;
  EXPECT_EQ(FS::newSiteFolderName(root.path()), "SITE_1");
  fs::create_directories(root / "SITE_1");
  fs::create_directories(root / "SITE_3");
  EXPECT_EQ(FS::newSiteFolderName(root.path()), "SITE_2");
  fs::create_directories(root / "SITE_2");
  EXPECT_EQ(FS::newSiteFolderName(root.path()), "SITE_4");
}

TEST(FSNewFolderNames, AFileInTheWayIsSkippedAndLeftAlone) {
  ScratchFolder root;
  root.write("SITE_1", "not a site");
  root.write("VERT_1", "");
  EXPECT_EQ(FS::newSiteFolderName(root.path()), "SITE_2");
  EXPECT_EQ(FS::newVerticalFolderName(root.path()), "VERT_2");
  EXPECT_EQ(ScratchFolder::read(root / "SITE_1"), "not a site");
}

TEST(FSNewFolderNames, VerticalNumbersAreCountedPerSite) {
  ScratchFolder root;
  fs::create_directories(root / "SITE_1" / "VERT_1");
  fs::create_directories(root / "SITE_1" / "VERT_2");
  fs::create_directories(root / "SITE_2");
  EXPECT_EQ(FS::newVerticalFolderName(root / "SITE_1"), "VERT_3");
  EXPECT_EQ(FS::newVerticalFolderName(root / "SITE_2"), "VERT_1");
}

TEST(FSSiteDisplayName, IsTheFirstLineOfTheSiteFileInCp1252) {
  ScratchFolder root;
  root.write("SITE_4/SITE_4.dat", "Cantiere S\xF9\r\nVERT_1\r\n");
  EXPECT_EQ(FS::siteDisplayName(root / "SITE_4"), "Cantiere S\xC3\xB9");
  EXPECT_EQ(FS::siteDisplayName((root / "SITE_4") / ""), "Cantiere S\xC3\xB9");
}

TEST(FSSiteDisplayName, ABrokenSiteShowsWhatIsWrong) {
  ScratchFolder root;
  fs::create_directories(root / "SITE_1");
  EXPECT_EQ(FS::siteDisplayName(root / "SITE_1"), "(ERROR) 'SITE_1.dat not found");
  EXPECT_EQ(FS::siteDisplayName(root / "SITE_9"), "(ERROR) 'SITE_9' not found");
  fs::create_directories(root / "SITE_x");
  EXPECT_EQ(FS::siteDisplayName(root / "SITE_x"), "(ERROR) invalid sitename");
  // A folder where the site file should be is no site file either.
  fs::create_directories(root / "SITE_2" / "SITE_2.dat");
  EXPECT_EQ(FS::siteDisplayName(root / "SITE_2"), "(ERROR) 'SITE_2.dat not found");
}

TEST(FSListSiteFolders, GivesSiteFoldersOnlyInNumberOrder) {
  ScratchFolder root;
  for (const char* folder : {"SITE_10", "SITE_2", "SITE_1", "SITE_x", "SITE_01", "Temp", "VERT_1"})
    fs::create_directories(root / folder);
  root.write("SITE_4", "a file, not a site");
  EXPECT_THAT(FS::listSiteFolders(root.path()), ElementsAre("SITE_1", "SITE_2", "SITE_10"));
}

TEST(FSListVerticalFolders, FollowsTheOrderOfTheSiteFile) {
  ScratchFolder root;
  for (const char* folder : {"VERT_1", "VERT_2", "VERT_3", "VERT_9"}) fs::create_directories(root / "SITE_1" / folder);
  root.write("SITE_1/SITE_1.dat", "Name\r\nVERT_3\r\nVERT_1\r\nVERT_2\r\n");
  std::vector<Diagnostic> problems;
  EXPECT_THAT(FS::listVerticalFolders(root / "SITE_1", &problems), ElementsAre("VERT_3", "VERT_1", "VERT_2"));
  EXPECT_THAT(problems, IsEmpty());
}

TEST(FSListVerticalFolders, AcceptsBareLineFeedsBlankLinesAndStrayBlanks) {
  ScratchFolder root;
  for (const char* folder : {"VERT_1", "VERT_2"}) fs::create_directories(root / "SITE_1" / folder);
  root.write("SITE_1/SITE_1.dat", "Name\nVERT_2 \n\n\tVERT_1\n\n");
  std::vector<Diagnostic> problems;
  EXPECT_THAT(FS::listVerticalFolders(root / "SITE_1", &problems), ElementsAre("VERT_2", "VERT_1"));
  EXPECT_THAT(problems, IsEmpty());
}

TEST(FSListVerticalFolders, SkipsAndReportsLinesThatNameNoVerticalFolder) {
  ScratchFolder root;
  fs::create_directories(root / "SITE_1" / "VERT_1");
  fs::create_directories(root / "SITE_2");
  root.write("SITE_1/SITE_1.dat", "Name\r\n..\\SITE_2\r\nVERT_1\r\nVERT_7\r\nVERT_1\r\n");
  std::vector<Diagnostic> problems;
  EXPECT_THAT(FS::listVerticalFolders(root / "SITE_1", &problems), ElementsAre("VERT_1"));
  ASSERT_EQ(problems.size(), 3u);
  EXPECT_EQ(problems[0].line, 2);
  EXPECT_EQ(problems[1].line, 4);
  EXPECT_THAT(problems[1].reason, ::testing::HasSubstr("VERT_7"));
  EXPECT_EQ(problems[2].line, 5);
}

TEST(FSListVerticalFolders, AMissingSiteFileListsNothingAndSaysSo) {
  ScratchFolder root;
  fs::create_directories(root / "SITE_1" / "VERT_1");
  std::vector<Diagnostic> problems;
  EXPECT_THAT(FS::listVerticalFolders(root / "SITE_1", &problems), IsEmpty());
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].file, root / "SITE_1" / "SITE_1.dat");
}

TEST(FSLineFiles, SplitsOnEveryKindOfLineEnd) {
  EXPECT_THAT(FS::splitLines("a\r\nb\nc\rd"), ElementsAre("a", "b", "c", "d"));
  EXPECT_THAT(FS::splitLines("a\r\n\r\nb\r\n"), ElementsAre("a", "", "b"));
  EXPECT_THAT(FS::splitLines(""), IsEmpty());
  EXPECT_THAT(FS::splitLines("\r\n"), ElementsAre(""));
}

TEST(FSLineFiles, WritesCp1252WithCrLfAndKeepsEachFieldOnItsLine) {
  EXPECT_EQ(FS::textFileBytes({"S\xC3\xB9", "two\r\nlines", "x\ny", ""}), "S\xF9\r\ntwo  lines\r\nx y\r\n\r\n");
}

TEST(FSCopyFolder, CopiesTheWholeTree) {
  ScratchFolder root;
  root.write("a/x.dat", "x");
  root.write("a/VS_1/1.kor", "k");
  fs::create_directories(root / "a" / "empty");
  ASSERT_TRUE(FS::copyFolder(root / "a", root / "b"));
  EXPECT_EQ(ScratchFolder::read(root / "b" / "x.dat"), "x");
  EXPECT_EQ(ScratchFolder::read(root / "b" / "VS_1" / "1.kor"), "k");
  EXPECT_TRUE(fs::is_directory(root / "b" / "empty"));
}

TEST(FSCopyFolder, KeepsExistingFilesUnlessAskedToReplaceThem) {
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
}

TEST(FSCopyFolder, RefusesToCopyAFolderIntoItself) {
  ScratchFolder root;
  root.write("a/x.dat", "x");
  EXPECT_FALSE(FS::copyFolder(root / "a", root / "a" / "inner"));
  EXPECT_FALSE(FS::copyFolder(root / "a", root / "a"));
  EXPECT_FALSE(fs::exists(root / "a" / "inner"));
  EXPECT_FALSE(FS::copyFolder(root / "missing", root / "c"));
}

TEST(FSCopyFile, NeverReplacesUnlessAskedAndNeverCopiesOntoItself) {
  ScratchFolder root;
  root.write("a.dat", "A");
  root.write("b.dat", "B");
  EXPECT_FALSE(FS::copyFile(root / "a.dat", root / "b.dat"));
  EXPECT_EQ(ScratchFolder::read(root / "b.dat"), "B");
  EXPECT_TRUE(FS::copyFile(root / "a.dat", root / "b.dat", true));
  EXPECT_EQ(ScratchFolder::read(root / "b.dat"), "A");
  EXPECT_TRUE(FS::copyFile(root / "a.dat", root / "a.dat", true));
  EXPECT_EQ(ScratchFolder::read(root / "a.dat"), "A");
  EXPECT_FALSE(FS::copyFile(root / "none.dat", root / "c.dat"));
  EXPECT_FALSE(fs::exists(root / "c.dat"));
}

TEST(FSMoveFile, MovesButNeverReplaces) {
  ScratchFolder root;
  root.write("a.dat", "A");
  root.write("b.dat", "B");
  EXPECT_FALSE(FS::moveFile(root / "a.dat", root / "b.dat"));
  EXPECT_EQ(ScratchFolder::read(root / "a.dat"), "A");
  EXPECT_EQ(ScratchFolder::read(root / "b.dat"), "B");
  EXPECT_TRUE(FS::moveFile(root / "a.dat", root / "c.dat"));
  EXPECT_FALSE(fs::exists(root / "a.dat"));
  EXPECT_EQ(ScratchFolder::read(root / "c.dat"), "A");
}

TEST(FSDeleteFolder, RemovesTheFolderWithEverythingInIt) {
  ScratchFolder root;
  root.write("SITE_1/VERT_1/DMT_1.dat", "d");
  root.write("SITE_1/VERT_1/VS_1/1.kor", "k");
  root.write("SITE_2/SITE_2.dat", "keep");
  EXPECT_TRUE(FS::deleteFolder(root / "SITE_1"));
  EXPECT_FALSE(fs::exists(root / "SITE_1"));
  EXPECT_EQ(ScratchFolder::read(root / "SITE_2" / "SITE_2.dat"), "keep");
  EXPECT_TRUE(FS::deleteFolder(root / "SITE_1"));  // already gone
}

TEST(FSDeleteFolder, RefusesFilesAndPathsThatAreNoFolderName) {
  ScratchFolder root;
  root.write("a.dat", "A");
  EXPECT_FALSE(FS::deleteFolder(root / "a.dat"));
  EXPECT_TRUE(fs::exists(root / "a.dat"));
  EXPECT_FALSE(FS::deleteFolder(""));
  fs::create_directories(root / "sub");
  EXPECT_FALSE(FS::deleteFolder(root / "sub" / ".."));
  EXPECT_FALSE(FS::deleteFolder(root / "."));
  EXPECT_FALSE(FS::deleteFolder("/"));
  EXPECT_TRUE(fs::exists(root / "a.dat"));
}

TEST(FSCopyTestFiles, CopiesOnlyTheFilesOfTheirKind) {
  ScratchFolder root;
  root.write("VS_1/z1.kor", "1");
  root.write("VS_1/Z2.KOR", "2");
  root.write("VS_1/notes.txt", "n");
  root.write("DISSIP_1/d1.dis", "d");
  ASSERT_TRUE(FS::copySeismograms(root / "VS_1", root / "VS_2"));
  EXPECT_EQ(ScratchFolder::read(root / "VS_2" / "z1.kor"), "1");
  EXPECT_EQ(ScratchFolder::read(root / "VS_2" / "Z2.KOR"), "2");
  EXPECT_FALSE(fs::exists(root / "VS_2" / "notes.txt"));
  ASSERT_TRUE(FS::copyDissipations(root / "DISSIP_1", root / "VS_2"));
  EXPECT_EQ(ScratchFolder::read(root / "VS_2" / "d1.dis"), "d");
  EXPECT_FALSE(FS::copySeismograms(root / "VP_1", root / "VP_2"));
}

TEST(FSFolderSize, SumsTheFilesBelowTheFolder) {
  ScratchFolder root;
  root.write("a/x.dat", "12345");
  root.write("a/b/y.dat", "123");
  EXPECT_EQ(FS::folderSize(root / "a"), 8u);
  EXPECT_EQ(FS::folderSize(root / "missing"), 0u);
}

}  // namespace
}  // namespace koru
