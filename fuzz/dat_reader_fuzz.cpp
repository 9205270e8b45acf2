// Feeds arbitrary bytes to the .dat reader, then writes the record back to text and reads that
// again. Nothing may crash, hang or read out of bounds, whatever the file holds.

#include <cstddef>
#include <cstdint>
#include <string>

#include "dmt/cls_DmtTEST.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  koru::cls_DmtTEST test;
  (void)test.parseDat({reinterpret_cast<const char*>(data), size}, "in.dat").why.toString();
  const std::string text = test.fileText();
  koru::cls_DmtTEST again;
  (void)again.parseDat(text, "in.dat");
  return 0;
}
