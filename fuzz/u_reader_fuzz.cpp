// Feeds arbitrary bytes to the pore pressure profile reader, asks the profile for values and
// writes it back: nothing may crash, hang or give a value that is not a number, and what was
// written reads back to the same mode and table.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "dmt/cls_U.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  koru::cls_U u;
  (void)u.parseInfo({reinterpret_cast<const char*>(data), size}, "U_1.dat");
  for (float z : {-1.0f, 0.0f, 0.2f, 1.0f, 2.5f, 10.0f, 1e30f, NAN})
    if (!std::isfinite(u.getUz(z))) std::abort();
  koru::cls_U back;
  (void)back.parseInfo(u.infoText(), "U_1.dat");
  if (back.Method() != u.Method() || (u.Method() == 1 && back.N() != u.N())) std::abort();
  return 0;
}
