// Feeds arbitrary bytes to the thrust reader against the rows of a small DMT file, evaluates the
// test with the thrust options and writes the thrust file: nothing may crash, hang or read out
// of bounds, and once written, the thrust file reads back to the same bytes.

#include <cstddef>
#include <cstdint>
#include <string>

#include "dmt/DMTOptions.h"
#include "dmt/Thrust.h"
#include "dmt/cls_DmtTEST.h"
#include "dmt/cls_GAMMA.h"
#include "dmt/cls_U.h"

// Sand and clay rows every 0.2 m from 1.2 m (one left out), so that file depths have rows to meet.
constexpr const char* kDat =
    "1.2,2.8,8,0.15,0.4,34.7,0.05,1.5,0,1.73293,0.2\r\n\"Firm\",\"Customer\"\r\n\"Job\",\"Site\",\"Remark\"\r\n"
    "\"5 MAR 2008\",\"Fuzz\"\r\n250,900\r\n260,940\r\n400,600\r\n270,980\r\n0,0\r\n300,1100\r\n280,700\r\n"
    "310,1200\r\n320,1250\r\n";

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  koru::cls_DmtTEST test;
  koru::DMTOptions options;
  if (!test.parseDat(kDat, "DMT_1.dat").complete()) __builtin_trap();
  (void)test.parseThrust({reinterpret_cast<const char*>(data), size}, "Thrust.dat", &options);
  test.evalDMT(koru::cls_GAMMA{}, koru::cls_U{}, options);
  const std::string written = koru::thrustFileText(test.rodData, test.vZ, test.vTH);
  (void)test.parseThrust(written, "Thrust.dat");
  if (koru::thrustFileText(test.rodData, test.vZ, test.vTH) != written) __builtin_trap();
  return 0;
}
