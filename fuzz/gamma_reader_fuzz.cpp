// Feeds arbitrary bytes to the unit weight profile reader, asks the profile for values and
// writes it back: nothing may crash, hang or give a value that is not a number.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "dmt/cls_GAMMA.h"
#include "fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::filesystem::path input = koru::fuzzing::scratchFile("gamma", "in.dat");
  static const std::filesystem::path output = koru::fuzzing::scratchFile("gamma", "out.dat");

  if (!koru::fuzzing::writeInput(input, data, size)) return 0;

  koru::cls_GAMMA g;
  g.setPath(input);
  g.loadInfo();
  for (float z : {-1.0f, 0.0f, 0.2f, 1.0f, 2.5f, 10.0f, 1e30f, NAN}) {
    const float y = g.getYz(z);
    if (!std::isfinite(y)) std::abort();
  }
  g.setPath(output);
  if (g.saveInfo()) {
    koru::cls_GAMMA back;
    back.setPath(output);
    back.loadInfo();
    if (back.Method() != g.Method() || (g.Method() == 2 && back.N() != g.N())) std::abort();
  }
  return 0;
}
