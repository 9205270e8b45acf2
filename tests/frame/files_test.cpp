#include <gtest/gtest.h>

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <functional>

#include "frame/FileLock.h"
#include "frame/Files.h"
#include "frame/ProgramFolders.h"
#include "scratch_folder.h"

namespace koru {
namespace {

using testing::ScratchFolder;

// Names of temporaries are made predictable, so that something can be planted at each of them.
int plantedCounter = 0;
std::string countedName() { return "n" + std::to_string(plantedCounter++); }

TEST(Files, SavesNeverWriteThroughWhatIsPlantedAtATemporaryName) {
  ScratchFolder dir;
  const auto outside = dir.write("outside.txt", "untouched");
  for (const bool together : {false, true}) {
    SCOPED_TRACE(together);
    const auto file = dir.write("a.dat", "old");
    plantedCounter = 0;
    for (int n = 0; n < 5; ++n)
      std::filesystem::create_symlink(outside, file.string() + "." + std::to_string(::getpid()) + "-n" +
                                                   std::to_string(n + (together ? 5 : 0)) + ".tmp~");
    plantedCounter = together ? 5 : 0;
    setTemporaryNameSource(countedName);
    const bool saved = together ? writeFilesTogether({{file, "new"}}) : writeFileAtomically(file, "new");
    setTemporaryNameSource(nullptr);
    EXPECT_TRUE(saved);
    EXPECT_EQ(ScratchFolder::read(file), "new");
    EXPECT_EQ(ScratchFolder::read(outside), "untouched");
  }
}

// A child process whose files may grow to 8 bytes: a longer write fails as on a full disk.
int inSmallFileLimit(const std::function<bool()>& save) {
  const pid_t child = ::fork();
  if (child == 0) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{8, 8};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    ::_exit(save() ? 0 : 1);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(Files, AFailedWriteLeavesEveryOldFileWholeAndNamesTheSystemsReason) {
  ScratchFolder dir;
  const auto a = dir.write("a.dat", "old a"), b = dir.write("b.dat", "old b");
  struct Case {
    const char* name;
    std::function<bool(Diagnostic*)> save;
  };
  const Case cases[] = {
      {"one file", [&](Diagnostic* why) { return writeFileAtomically(a, "far too long for the limit", why); }},
      {"together", [&](Diagnostic* why) { return writeFilesTogether({{a, "short"}, {b, "far too long for the limit"}}, why); }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Diagnostic why;
    EXPECT_EQ(inSmallFileLimit([&] { return c.save(&why) || why.reason.find(std::strerror(EFBIG)) == std::string::npos; }), 1);
    EXPECT_EQ(ScratchFolder::read(a), "old a");
    EXPECT_EQ(ScratchFolder::read(b), "old b");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 2) << "no temporary is left";
  }
  ASSERT_TRUE(writeFilesTogether({{a, "new a"}, {b, "new b"}, {dir / "c.dat", "new c"}}));
  EXPECT_EQ(ScratchFolder::read(b) + ScratchFolder::read(dir / "c.dat"), "new bnew c");
}

TEST(Files, ASaveClearsTheTemporariesOfKilledSavesOnly) {
  ScratchFolder dir;
  const pid_t gone = ::fork();
  if (gone == 0) ::_exit(0);
  ::waitpid(gone, nullptr, 0);
  const auto dead = dir.write("a.dat." + std::to_string(gone) + "-0123.tmp~", "x");
  const auto alive = dir.write("a.dat." + std::to_string(::getppid()) + "-0123.tmp~", "x");
  ASSERT_TRUE(writeFileAtomically(dir / "b.dat", "b"));
  EXPECT_FALSE(std::filesystem::exists(dead));
  EXPECT_TRUE(std::filesystem::exists(alive));
}

TEST(FileLock, WaitsForAnotherProcessAndNestsInOne) {
  ScratchFolder dir;
  const auto lockFile = dir / "lock";
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t holder = ::fork();
  if (holder == 0) {
    FileLock lock(lockFile);
    char c = 'x';
    (void)!::write(ready[1], &c, 1);
    ::usleep(300000);
    ::_exit(lock.locked() ? 0 : 1);
  }
  char c;
  ASSERT_EQ(::read(ready[0], &c, 1), 1);
  {
    FileLock busy(lockFile, "busy", std::chrono::milliseconds(50));
    EXPECT_FALSE(busy.locked());
    EXPECT_EQ(busy.why().reason, "busy");
  }
  FileLock waited(lockFile, "busy", std::chrono::milliseconds(5000));
  EXPECT_TRUE(waited.locked());
  FileLock nested(lockFile, "busy", std::chrono::milliseconds(0));
  EXPECT_TRUE(nested.locked());
  int status = 0;
  ::waitpid(holder, &status, 0);
  EXPECT_EQ(status, 0);
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
