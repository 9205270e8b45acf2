// Feeds arbitrary bytes as a site file: every vertical taken must be a proper VERT_m name, each
// once, and the site file written back must read as the same site.

#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "sites/FS.h"
#include "sites/SiteFile.h"

namespace {

// A UTF-8 byte-order mark as a Windows-1252 reader sees it, in UTF-8.
const std::string kMarkAsRead = "\xC3\xAF\xC2\xBB\xC2\xBF";

std::vector<std::string> linesOf(const koru::SiteFile& site) {
  std::vector<std::string> lines{site.name};
  for (const auto& v : site.verticals) lines.push_back(v.name);
  return lines;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  koru::SiteFile site, back;
  site.parse({reinterpret_cast<const char*>(data), size}, "SITE_1.dat");
  std::set<std::string> seen;
  for (const auto& v : site.verticals)
    if (!koru::FS::folderNumber(v.name, koru::FS::kVerticalPrefix) || !seen.insert(v.name).second) std::abort();
  if (!back.parse(koru::FS::textFileBytes(linesOf(site)), "SITE_1.dat").complete()) std::abort();
  // A name that starts with the characters of a byte-order mark is written as one, and the
  // reader passes a byte-order mark over.
  if (site.name.rfind(kMarkAsRead, 0) == 0) site.name.erase(0, kMarkAsRead.size());
  if (linesOf(back) != linesOf(site)) std::abort();
  return 0;
}
