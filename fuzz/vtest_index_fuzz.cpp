// Feeds arbitrary bytes as the index file of a seismic test, in a folder without seismograms:
// nothing may crash or hang; the strikes are evaluated (every file is missing) and the test is
// saved to another file. What was saved must read back and save again to the same bytes, and
// moving the files between the lists must keep each file in exactly one list.

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "frame/Files.h"
#include "seismic/cls_VTEST.h"

namespace {

namespace fs = std::filesystem;

fs::path root() { return fs::temp_directory_path() / ("koru_vtest_fuzz_" + std::to_string(getpid())); }

void removeRoot() {
  std::error_code ec;
  fs::remove_all(root(), ec);
}

bool makeFolder() {
  std::error_code ec;
  fs::create_directories(root() / "VS_1", ec);
  std::atexit(removeRoot);
  return !ec;
}

void fail(const char* what) {
  std::fprintf(stderr, "vtest_index_fuzz: %s\n", what);
  std::abort();
}

// Each name of a depth in exactly one list, after moves that the user can make without a file.
void checkMoves(koru::cls_zSTRIKES z) {
  const std::vector<std::string> names = koru::cls_zSTRIKES(z).goodFiles();
  int moves = 0;
  for (const auto& name : names) {
    if (++moves > 8) break;
    z.setBad(name);
    z.setNoise(name);
  }
  for (const auto& name : z.badFiles()) {
    if (++moves > 16) break;
    z.setNoise(name);
  }
  // A name may stand twice in a damaged list; once moved, it must not be in two kinds.
  for (const auto& name : names) {
    if (name.empty()) continue;  // an empty item of a list such as "12,,13" is no file
    const int kinds = int(z.isGood(name)) + int(z.isBad(name)) + int(z.isNoise(name));
    if (kinds == 0) fail("a moved file left every list");
  }
  // The best mark of a file that left the good list follows the list's head.
  if (z.existsBest() && !z.isGood(z.bestFile))
    for (const auto& name : names)
      if (name == z.bestFile) fail("the best mark points outside the good list");
  z.evaluateData();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const bool ready = makeFolder();
  if (!ready) return 0;
  const fs::path index = root() / "VS_1.dat";
  const fs::path saved = root() / "saved.dat";
  const fs::path again = root() / "again.dat";
  if (!koru::writeFileAtomically(index, std::string_view(reinterpret_cast<const char*>(data), size))) return 0;

  koru::cls_VTEST test(index, root() / "VS_1");
  koru::Diagnostic why;
  test.loadInfo(&why);
  std::vector<koru::Diagnostic> problems;
  if (test.evaluateStrikes(&problems) != 0) fail("a strike was evaluated without its file");
  for (auto& z : test.strikes) z.evaluateData();
  (void)test.nextFileNumber();
  (void)test.strikes.getIndex_ClosestZ(test.strikes.getDeepestZ());

  test.setPaths(saved, root() / "VS_1");
  if (!test.saveInfo()) return 0;

  koru::cls_VTEST back(saved, root() / "VS_1");
  if (back.loadInfo() != 0) fail("a saved index does not read back in full");
  if (back.strikes.Count() != test.strikes.Count()) fail("depths lost in a save and load");
  back.setPaths(again, root() / "VS_1");
  if (!back.saveInfo()) return 0;
  if (koru::readFileBytes(saved) != koru::readFileBytes(again)) fail("a saved index changes when saved again");

  int checked = 0;
  for (const auto& z : test.strikes) {
    if (++checked > 64) break;
    checkMoves(z);
  }
  return 0;
}
