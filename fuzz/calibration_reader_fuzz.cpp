// Feeds arbitrary bytes to the calibration reader, exercises what uses the list, and writes it
// back: read again, the written text must keep every calibration.

#include <cstddef>
#include <cstdint>

#include "dmt/cls_Calibration.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  koru::cls_Calibration calibration;
  (void)calibration.parseCalibrations({reinterpret_cast<const char*>(data), size}, "in.dat").why.toString();
  (void)calibration.checkDeltaAStandards();
  (void)calibration.checkDeltaBStandards();
  (void)calibration.figures();
  koru::cls_Calibration again;
  (void)again.parseCalibrations(calibration.fileText(), "in.dat");
  if (again.N() != calibration.N()) __builtin_trap();
  return 0;
}
