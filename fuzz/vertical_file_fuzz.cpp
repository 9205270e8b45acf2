// Feeds arbitrary bytes as the header file of a vertical: nothing may crash, and what was read
// must read back cleanly from its own file (numbers to the precision they are written with).

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "sites/FS.h"
#include "sites/cls_VERTICAL.h"

namespace {

bool near(float a, float b) { return !std::isfinite(a) || std::fabs(a - b) <= 1e-6f * std::fmax(1.0f, std::fabs(a)); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  koru::cls_VERTICAL v, back;
  v.parseVerticalFile({reinterpret_cast<const char*>(data), size}, "VERT_1.dat");
  std::vector<std::string> lines = v.verticalFileLines();
  if (!back.parseVerticalFile(koru::FS::textFileBytes(lines), "VERT_1.dat").complete()) std::abort();
  // A name that starts with the characters of a byte-order mark is written as one, and the
  // reader passes a byte-order mark over.
  const std::string markAsRead = "\xC3\xAF\xC2\xBB\xC2\xBF";
  if (lines[0].rfind(markAsRead, 0) == 0) lines[0].erase(0, markAsRead.size());
  std::vector<std::string> again = back.verticalFileLines();
  lines[8] = lines[9] = again[8] = again[9] = "";  // Zabs and Zw, compared as numbers below
  if (again != lines || !near(v.sngZabs, back.sngZabs) || !near(v.sngZw, back.sngZw)) std::abort();
  return 0;
}
