// Feeds arbitrary bytes to the calibration reader as a file, then exercises what uses the list.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "fuzz_input.h"
#include "dmt/cls_Calibration.h"

namespace {

const std::filesystem::path& inputPath() {
  static const std::filesystem::path path = koru::fuzzing::scratchFile("calibration", "in.dat");
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (!koru::fuzzing::writeInput(inputPath(), data, size)) return 0;

  koru::cls_Calibration calibration;
  calibration.setPathFile(inputPath());
  koru::Diagnostic why;
  calibration.loadCalibrations(&why);
  (void)why.toString();
  (void)calibration.checkDeltaAStandards();
  (void)calibration.checkDeltaBStandards();
  (void)calibration.figures();
  // Saving and loading again must keep every calibration.
  const int before = calibration.N();
  if (calibration.saveToFile(&why)) {
    koru::cls_Calibration again;
    again.setPathFile(inputPath());
    again.loadCalibrations(&why);
    if (again.N() != before) __builtin_trap();
  }
  return 0;
}
