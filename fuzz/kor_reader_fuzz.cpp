// Feeds arbitrary bytes to the ".kor" reader, evaluates whatever was read with the default
// elaboration and writes it back: nothing may crash, hang or allocate without bound, and a file
// that loaded must come back from its own save byte for byte.


#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "frame/Files.h"
#include "fuzz_input.h"
#include "seismic/cls_SEISMOGRAM.h"

namespace {

std::string bytesOf(const std::filesystem::path& file) {
  auto bytes = koru::readFileBytes(file);
  return bytes ? *bytes : std::string();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::filesystem::path input = koru::fuzzing::scratchFile("kor", "in.kor");
  static const std::filesystem::path output = koru::fuzzing::scratchFile("kor", "out.kor");
  static const std::filesystem::path again = koru::fuzzing::scratchFile("kor", "again.kor");

  if (!koru::fuzzing::writeInput(input, data, size)) return 0;

  koru::cls_SEISMOGRAM r;
  const bool loaded = r.loadFile(input) == 0;
  if (r.intN() < 0 || r.vG1r().size() != static_cast<size_t>(r.intN())) std::abort();

  // Whatever was read, loaded or not, is evaluated: the record must stay sound either way.
  // The lag search grows with the square of the length; records of up to 32767 samples take a
  // tenth of a second in a release build but many seconds under the sanitizers, so the long
  // ones are evaluated by the unit tests and only read and written here.
  if (r.intN() > 4096) {
    r.saveFile(output);
    return 0;
  }
  r.set_elabString("5,180;4;0,0");
  r.evalV();
  if (!std::isfinite(r.DeltaT()) && r.DeltaT() != 0) {
    // An infinite delay is possible only with an absurd sample time; it must still give no
    // velocity.
    if (r.V() != 0) std::abort();
  }
  (void)r.V();
  r.setDefaultElabParameters();
  r.evalV();
  (void)r.V();
  (void)r.Evaluate_Frequency(1);

  if (r.saveFile(output) != 0) return 0;
  if (loaded) {
    koru::cls_SEISMOGRAM back;
    if (back.loadFile(output) != 0) std::abort();
    if (back.saveFile(again) != 0) return 0;
    if (bytesOf(output) != bytesOf(again)) std::abort();
  }
  return 0;
}
