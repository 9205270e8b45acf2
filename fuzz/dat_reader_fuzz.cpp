// Feeds arbitrary bytes to the .dat reader as a file, then writes the record back to text. The
// reader must never crash, hang or read out of bounds, whatever the file holds.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "dmt/cls_DmtTEST.h"

namespace {

// One file per process, reused for every input.
const std::filesystem::path& inputPath() {
  static const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("koru-dat-fuzz-" + std::to_string(::getpid()) + ".dat");
  return path;
}

bool writeInput(const uint8_t* data, size_t size) {
  std::FILE* f = std::fopen(inputPath().c_str(), "wb");
  if (!f) return false;
  const bool ok = size == 0 || std::fwrite(data, 1, size, f) == size;
  return std::fclose(f) == 0 && ok;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (!writeInput(data, size)) return 0;
  koru::cls_DmtTEST test;
  test.setDatPath(inputPath());
  koru::Diagnostic why;
  test.loadFile(&why);
  (void)why.toString();
  const std::string text = test.fileText();
  // What the writer produced must read back.
  if (!text.empty() && writeInput(reinterpret_cast<const uint8_t*>(text.data()), text.size())) {
    koru::cls_DmtTEST again;
    again.setDatPath(inputPath());
    again.loadFile(&why);
  }
  return 0;
}
