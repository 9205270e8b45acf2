#include <gtest/gtest.h>

#include "frame/Files.h"
#include "frame/ProgramFolders.h"
#include "scratch_folder.h"

namespace koru {
namespace {

using testing::ScratchFolder;

TEST(Files, FolderExistsIgnoresATrailingSeparatorAndRejectsFiles) {
  ScratchFolder dir;
  EXPECT_TRUE(folderExists(dir.path()));
  EXPECT_TRUE(folderExists(dir.path().string() + "/"));
  EXPECT_FALSE(folderExists(dir.write("f.txt", "x")));
}

TEST(Files, AtomicWriteReplacesTheWholeFile) {
  ScratchFolder dir;
  auto file = dir.write("a.dat", "old content that is long");
  ASSERT_TRUE(writeFileAtomically(file, "new"));
  EXPECT_EQ(ScratchFolder::read(file), "new");
  EXPECT_FALSE(std::filesystem::exists(file.string() + ".tmp~"));
}

TEST(Files, FailedWriteLeavesTheOldFileAndSaysWhy) {
  ScratchFolder dir;
  auto file = dir.write("a.dat", "precious");
  // A folder where the temporary file must go makes the write fail, even for the superuser.
  std::filesystem::create_directories(dir / "a.dat.tmp~");
  Diagnostic why;
  EXPECT_FALSE(writeFileAtomically(file, "new", &why));
  EXPECT_EQ(ScratchFolder::read(file), "precious");
  EXPECT_EQ(why.file, file);
}

TEST(ProgramFolders, DataRootDefaultsToTheHomeAndYieldsToTheOverride) {
  ScratchFolder dir;
  auto folders = ProgramFolders::locate(dir / "bin/koru", std::nullopt, dir / "home");
  EXPECT_EQ(folders.sitesPath(), dir / "home" / "KORU" / "SITES");
  folders = ProgramFolders::locate(dir / "bin/koru", dir / "elsewhere", dir / "home");
  EXPECT_EQ(folders.tempPath(), dir / "elsewhere" / "Temp");
}

TEST(ProgramFolders, ShippedFilesAreFoundBesideTheProgramOrInShare) {
  ScratchFolder dir;
  std::filesystem::create_directories(dir / "share/koru/Language");
  EXPECT_EQ(ProgramFolders::locate(dir / "bin/koru", std::nullopt, {}).shareDir, (dir / "share/koru").lexically_normal());
  std::filesystem::create_directories(dir / "bin/Language");
  EXPECT_EQ(ProgramFolders::locate(dir / "bin/koru", std::nullopt, {}).shareDir, dir / "bin");
}

}  // namespace
}  // namespace koru
