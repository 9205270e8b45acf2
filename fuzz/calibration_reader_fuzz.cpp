// Feeds arbitrary bytes to the calibration reader as a file, then exercises what uses the list.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "probe/cls_Calibration.h"

namespace {

// One file per process, reused for every input.
const std::filesystem::path& inputPath() {
  static const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("koru-calibration-fuzz-" + std::to_string(::getpid()) + ".dat");
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::FILE* f = std::fopen(inputPath().c_str(), "wb");
  if (!f) return 0;
  const bool written = size == 0 || std::fwrite(data, 1, size, f) == size;
  if (std::fclose(f) != 0 || !written) return 0;

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
