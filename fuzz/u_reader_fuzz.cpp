// Feeds arbitrary bytes to the pore pressure profile reader, asks the profile for values and
// writes it back: nothing may crash, hang or give a value that is not a number.

#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "dmt/cls_U.h"

namespace {

std::filesystem::path scratchFile(const char* name) {
  return std::filesystem::temp_directory_path() / ("koru_u_fuzz_" + std::to_string(getpid()) + "_" + name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::filesystem::path input = scratchFile("in.dat");
  static const std::filesystem::path output = scratchFile("out.dat");

  if (std::FILE* f = std::fopen(input.c_str(), "wb")) {
    if (size > 0) std::fwrite(data, 1, size, f);
    std::fclose(f);
  } else {
    return 0;
  }

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
