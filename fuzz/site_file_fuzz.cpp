// Feeds arbitrary bytes as the site file of a site and opens it: nothing may crash, every
// vertical taken must be a proper, unique VERT_m folder of that site, and writing the site file
// back and opening it again must give the same site.

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include "sites/FS.h"
#include "sites/cls_SITE.h"

namespace {

namespace fs = std::filesystem;

fs::path sitesRoot() {
  return fs::temp_directory_path() / ("koru_site_fuzz_" + std::to_string(getpid()));
}

void removeRoot() {
  std::error_code ec;
  fs::remove_all(sitesRoot(), ec);
}

void writeBytes(const fs::path& file, const uint8_t* data, size_t size) {
  if (std::FILE* f = std::fopen(file.c_str(), "wb")) {
    if (size > 0) std::fwrite(data, 1, size, f);
    std::fclose(f);
  }
}

// SITE_1 with three verticals, one of them without its header file, and a file named VERT_4.
bool makeTree() {
  const fs::path site = sitesRoot() / "SITE_1";
  std::error_code ec;
  for (const char* v : {"VERT_1", "VERT_2", "VERT_10"}) fs::create_directories(site / v, ec);
  if (ec) return false;
  const std::string header = "T\r\nF\r\nC\r\nJ\r\nS\r\nR\r\nD\r\nG\r\n1.5\r\n3\r\n1\r\n0\r\n0\r\n0\r\n";
  writeBytes(site / "VERT_1" / "VERT_1.dat", reinterpret_cast<const uint8_t*>(header.data()), header.size());
  writeBytes(site / "VERT_10" / "VERT_10.dat", reinterpret_cast<const uint8_t*>(header.data()), 20);
  writeBytes(site / "VERT_4", nullptr, 0);
  std::atexit(removeRoot);
  return true;
}

std::vector<std::string> namesOf(const koru::cls_SITE& site) {
  std::vector<std::string> names;
  for (const koru::cls_VERTICAL& v : site.verticals) names.push_back(v.strFolderName);
  return names;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const bool ready = makeTree();
  if (!ready) return 0;
  const fs::path siteFile = sitesRoot() / "SITE_1" / "SITE_1.dat";
  writeBytes(siteFile, data, size);

  koru::cls_SITE site;
  site.sOpen(sitesRoot(), "SITE_1");
  std::set<std::string> seen;
  for (const koru::cls_VERTICAL& v : site.verticals) {
    if (!koru::FS::folderNumber(v.strFolderName, koru::FS::kVerticalPrefix)) std::abort();
    if (!seen.insert(v.strFolderName).second) std::abort();
    if (v.strFolderPath != sitesRoot() / "SITE_1" / v.strFolderName) std::abort();
    if (!fs::is_directory(v.strFolderPath)) std::abort();
  }

  if (site.saveInfo()) {
    koru::cls_SITE again;
    again.sOpen(sitesRoot(), "SITE_1");
    if (again.strName != site.strName || namesOf(again) != namesOf(site)) std::abort();
  }
  return 0;
}
