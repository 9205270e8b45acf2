// Feeds arbitrary bytes to the dissipation test reader, interprets what was read, builds every
// text of the test and writes it back: nothing may crash or hang, and a file the program wrote
// must read back to the same bytes.


#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "dissipation/cls_DissTEST.h"
#include "fuzz_input.h"

namespace {

std::string bytesOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::filesystem::path input = koru::fuzzing::scratchFile("dis", "in.dis");
  static const std::filesystem::path output = koru::fuzzing::scratchFile("dis", "out.dis");
  static const std::filesystem::path again = koru::fuzzing::scratchFile("dis", "again.dis");

  if (!koru::fuzzing::writeInput(input, data, size)) return 0;

  koru::cls_DissTEST t;
  t.filename = input;
  koru::Diagnostic why;
  const koru::DissLoadStatus status = t.parseFile(&why);
  if (status != koru::DissLoadStatus::Ok && why.reason.empty()) std::abort();
  if (t.N() < 0 || t.vT().size() != static_cast<size_t>(t.N()) || t.vA().size() != static_cast<size_t>(t.N()))
    std::abort();

  const koru::TflexStatus fit = t.calculate();
  if (fit == koru::TflexStatus::Computed && !(std::isfinite(t.FlexT) && std::isfinite(t.FlexA))) std::abort();
  (void)t.test();
  (void)t.returnCoeff();
  (void)t.strTabularData();
  (void)t.reportHeader();
  (void)t.reportData();
  (void)t.reportResults();

  t.filename = output;
  if (!t.saveFile(&why)) return 0;

  // What the program wrote reads back in full and writes the same bytes. The one exception is
  // the format's own: a header text holding a comma (which a quoted field of a foreign file can
  // bring in) loses what follows it on the way back, and from then on the file is stable.
  bool textHasComma = false;
  for (const std::string* text : {&t.Firm, &t.Customer, &t.Job, &t.Site, &t.Remark, &t.Data, &t.TstName})
    textHasComma = textHasComma || text->find(',') != std::string::npos;
  koru::cls_DissTEST back;
  back.filename = output;
  // A cut text may leave a stray "T = ..." behind, which can break the readings off.
  if (back.parseFile(&why) != koru::DissLoadStatus::Ok && !textHasComma) std::abort();
  back.filename = again;
  if (!back.saveFile(&why)) return 0;
  if (!textHasComma) {
    if (bytesOf(output) != bytesOf(again)) std::abort();
    return 0;
  }
  koru::cls_DissTEST third;
  third.filename = again;
  if (third.parseFile(&why) != koru::DissLoadStatus::Ok) std::abort();
  third.filename = output;
  if (!third.saveFile(&why)) return 0;
  if (bytesOf(output) != bytesOf(again)) std::abort();
  return 0;
}
