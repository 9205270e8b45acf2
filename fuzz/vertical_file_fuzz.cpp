// Feeds arbitrary bytes as the header file of a vertical: nothing may crash, and what was read
// must survive being written and read again (numbers to the precision they are written with).

#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

#include "sites/cls_VERTICAL.h"

namespace {

namespace fs = std::filesystem;

fs::path siteFolder() {
  return fs::temp_directory_path() / ("koru_vertical_fuzz_" + std::to_string(getpid())) / "SITE_1";
}

void removeRoot() {
  std::error_code ec;
  fs::remove_all(siteFolder().parent_path(), ec);
}

bool makeFolder() {
  std::error_code ec;
  fs::create_directories(siteFolder() / "VERT_1", ec);
  std::atexit(removeRoot);
  return !ec;
}

bool sameNumber(float a, float b) {
  if (!std::isfinite(a)) return true;  // not a depth anyone can have typed
  return std::fabs(a - b) <= 1e-6f * std::fmax(1.0f, std::fabs(a));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const bool ready = makeFolder();
  if (!ready) return 0;

  koru::cls_VERTICAL v;
  v.setFolders(siteFolder(), "VERT_1");
  if (std::FILE* f = std::fopen(v.strInfoPath.c_str(), "wb")) {
    if (size > 0) std::fwrite(data, 1, size, f);
    std::fclose(f);
  } else {
    return 0;
  }
  v.loadInfo();
  if (!v.saveVerticalFile()) return 0;

  koru::cls_VERTICAL back;
  back.setFolders(siteFolder(), "VERT_1");
  if (!back.loadInfo()) std::abort();  // a file the program wrote itself reads cleanly
  if (back.strTestname != v.strTestname || back.strFirm != v.strFirm || back.strCustomer != v.strCustomer ||
      back.strJob != v.strJob || back.strSite != v.strSite || back.strRemark != v.strRemark ||
      back.strDate != v.strDate || back.strGPS != v.strGPS)
    std::abort();
  if (back.blnTestDMT != v.blnTestDMT || back.blnTestVs != v.blnTestVs || back.blnTestVp != v.blnTestVp ||
      back.blnTestDissip != v.blnTestDissip)
    std::abort();
  if (!sameNumber(v.sngZabs, back.sngZabs) || !sameNumber(v.sngZw, back.sngZw)) std::abort();
  return 0;
}
