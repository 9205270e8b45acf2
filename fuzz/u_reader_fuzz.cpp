// Feeds arbitrary bytes to the pore pressure profile reader, asks the profile for values and
// writes it back: nothing may crash, hang or give a value that is not a number.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "dmt/cls_U.h"
#include "fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::filesystem::path input = koru::fuzzing::scratchFile("u", "in.dat");
  static const std::filesystem::path output = koru::fuzzing::scratchFile("u", "out.dat");

  if (!koru::fuzzing::writeInput(input, data, size)) return 0;

  koru::cls_U g;
  g.setPath(input);
  g.loadInfo();
  for (float z : {-1.0f, 0.0f, 0.2f, 1.0f, 2.5f, 10.0f, 1e30f, NAN}) {
    const float y = g.getUz(z);
    if (!std::isfinite(y)) std::abort();
  }
  g.setPath(output);
  if (g.saveInfo()) {
    koru::cls_U back;
    back.setPath(output);
    back.loadInfo();
    if (back.Method() != g.Method() || (g.Method() == 1 && back.N() != g.N())) std::abort();
  }
  return 0;
}
