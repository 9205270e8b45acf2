// Feeds arbitrary bytes to the dissipation test reader, interprets what was read and builds
// every text of the test: nothing may crash or hang, and what the program writes must read back
// to the same bytes.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "dissipation/cls_DissTEST.h"
#include "frame/Numbers.h"
#include "frame/TextCodec.h"

namespace {

// The bytes written after reading `bytes`; `complete` tells how the reading ended.
std::string rewritten(const std::string& bytes, bool& complete) {
  koru::cls_DissTEST back;
  complete = back.parseDis(bytes, "out.dis").complete();
  return koru::utf8ToCp1252(back.strDisFile());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  koru::cls_DissTEST t;
  const koru::LoadResult read = t.parseDis({reinterpret_cast<const char*>(data), size}, "in.dis");
  if (!read.complete() && read.why.reason.empty()) std::abort();
  if (t.N() < 0 || t.vT().size() != static_cast<size_t>(t.N()) || t.vA().size() != static_cast<size_t>(t.N()))
    std::abort();
  if (t.calculate() == koru::TflexStatus::Computed && !(std::isfinite(t.FlexT) && std::isfinite(t.FlexA)))
    std::abort();
  (void)(t.test() + t.returnCoeff() + t.strTabularData() + t.reportHeader() + t.reportData() + t.reportResults());

  // A header text holding a comma (which a quoted field of a foreign file can bring in, the start
  // date and time included) loses what follows it on the way back, and may leave a stray
  // "T = ..." that breaks the readings off. A time below 0.005 is written as "0.00", and a zero
  // time in the last slot of the reader's growing store ends the reading there. Either way the
  // file is stable one round later; any other file is stable at once.
  const std::string written = koru::utf8ToCp1252(t.strDisFile());
  bool complete = false;
  const std::string again = rewritten(written, complete);
  if (complete && again == written) return 0;
  bool textHasComma = false;
  for (const std::string* text : {&t.Firm, &t.Customer, &t.Job, &t.Site, &t.Remark, &t.Data, &t.TstName, &t.startDate,
                                   &t.startTime})
    textHasComma = textHasComma || text->find(',') != std::string::npos;
  bool timeWrittenAsZero = false;
  for (int i = 0; i < t.N(); ++i)
    timeWrittenAsZero = timeWrittenAsZero || (t.vT()[static_cast<size_t>(i)] != 0 &&
                                              koru::parseSingle(koru::formatNumber(t.vT()[static_cast<size_t>(i)], "0.00")) == 0);
  if (!(textHasComma || timeWrittenAsZero) || rewritten(again, complete) != again || !complete) std::abort();
  return 0;
}
