// Feeds arbitrary bytes to the unit weight profile reader, asks the profile for values and
// writes it back: nothing may crash, hang or give a value that is not a number, and what was
// written reads back to the same mode and table.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "dmt/cls_GAMMA.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  koru::cls_GAMMA g;
  (void)g.parseInfo({reinterpret_cast<const char*>(data), size}, "GAMMA_1.dat");
  for (float z : {-1.0f, 0.0f, 0.2f, 1.0f, 2.5f, 10.0f, 1e30f, NAN})
    if (!std::isfinite(g.getYz(z))) std::abort();
  koru::cls_GAMMA back;
  (void)back.parseInfo(g.infoText(), "GAMMA_1.dat");
  if (back.Method() != g.Method() || (g.Method() == 2 && back.N() != g.N())) std::abort();
  return 0;
}
