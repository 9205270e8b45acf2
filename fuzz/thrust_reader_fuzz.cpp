// Feeds arbitrary bytes to the thrust reader as the Thrust.dat beside a small DMT file, then
// evaluates the test with the thrust options and saves it. Reading, the thrust search and writing
// must never crash, hang or read out of bounds, whatever the file holds; and once written, the
// thrust file must read back to the same bytes.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

#include "dmt/DMTOptions.h"
#include "dmt/Thrust.h"
#include "dmt/cls_DmtTEST.h"
#include "dmt/cls_GAMMA.h"
#include "dmt/cls_U.h"

namespace {

namespace fs = std::filesystem;

// Sand and clay rows every 0.2 m from 1.2 m, so that file depths have rows to meet.
const std::string kDat =
    "1.2,2.8,8,0.15,0.4,34.7,0.05,1.5,0,1.73293,0.2\r\n"
    "\"Firm\",\"Customer\"\r\n"
    "\"Job\",\"Site\",\"Remark\"\r\n"
    "\"5 MAR 2008\",\"Fuzz\"\r\n"
    "250,900\r\n260,940\r\n400,600\r\n270,980\r\n0,0\r\n300,1100\r\n280,700\r\n310,1200\r\n320,1250\r\n";

// One folder per process, reused for every input.
const fs::path& folder() {
  static const fs::path path = [] {
    fs::path p = fs::temp_directory_path() / ("koru-thrust-fuzz-" + std::to_string(::getpid()));
    std::error_code ec;
    fs::create_directories(p, ec);
    return p;
  }();
  return path;
}

bool writeFile(const fs::path& path, const void* data, size_t size) {
  std::FILE* f = std::fopen(path.c_str(), "wb");
  if (!f) return false;
  const bool ok = size == 0 || std::fwrite(data, 1, size, f) == size;
  return std::fclose(f) == 0 && ok;
}

std::string readFile(const fs::path& path) {
  std::string bytes;
  if (std::FILE* f = std::fopen(path.c_str(), "rb")) {
    char buffer[4096];
    size_t got;
    while ((got = std::fread(buffer, 1, sizeof buffer, f)) > 0) bytes.append(buffer, got);
    std::fclose(f);
  }
  return bytes;
}

// Load, evaluate with the options the test's thrust calls for, save.
bool cycle(const fs::path& dat) {
  koru::cls_DmtTEST test;
  test.setDatPath(dat);
  koru::Diagnostic why;
  test.loadFile(&why);
  (void)why.toString();
  koru::DMTOptions options;
  if (test.blnHasThrust) koru::setThrustOptions(options);
  koru::cls_GAMMA gamma;
  koru::cls_U u;
  test.evalDMT(gamma, u, options);
  return test.saveFile(&why) == -1;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const fs::path dat = folder() / "DMT_1.dat";
  const fs::path thrust = folder() / "Thrust.dat";
  if (!writeFile(dat, kDat.data(), kDat.size()) || !writeFile(thrust, data, size)) return 0;
  if (!cycle(dat)) return 0;
  // The first save puts the file in the writer's form; from then on a load and a save change
  // nothing.
  const std::string written = readFile(thrust);
  if (!cycle(dat)) return 0;
  const std::string again = readFile(thrust);
  if (again != written) __builtin_trap();
  return 0;
}
