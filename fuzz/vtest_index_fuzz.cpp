// Feeds arbitrary bytes as the index of a seismic test whose seismograms are all missing: nothing
// may crash or hang, no strike is evaluated without its file, the index comes back from its own
// text, and moving files between the lists keeps each in a list.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "seismic/cls_VTEST.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  koru::cls_VTEST test("VS_1.dat", "/nonexistent-koru-fuzz/VS_1");
  test.parseIndex({reinterpret_cast<const char*>(data), size}, "VS_1.dat");
  if (test.evaluateStrikes() != 0) std::abort();
  (void)test.strikes.getIndex_ClosestZ(test.strikes.getDeepestZ());
  const std::string text = test.indexText();
  koru::cls_VTEST back;
  if (!back.parseIndex(text, "saved.dat").complete() || back.indexText() != text) std::abort();
  int moves = 0;
  for (koru::cls_zSTRIKES z : test.strikes)
    for (const std::string& name : z.goodFiles()) {
      if (++moves > 64) return 0;
      z.setBad(name);
      z.setNoise(name);
      if (!name.empty() && !z.isGood(name) && !z.isBad(name) && !z.isNoise(name)) std::abort();
      z.evaluateData();
    }
  return 0;
}
