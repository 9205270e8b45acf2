// Feeds arbitrary bytes to the .dat reader as a file, then writes the record back to text. The
// reader must never crash, hang or read out of bounds, whatever the file holds.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "dmt/cls_DmtTEST.h"
#include "fuzz_input.h"

namespace {

const std::filesystem::path& inputPath() {
  static const std::filesystem::path path = koru::fuzzing::scratchFile("dat", "in.dat");
  return path;
}

bool writeInput(const uint8_t* data, size_t size) { return koru::fuzzing::writeInput(inputPath(), data, size); }

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
