#pragma once
// Exports the DMT test of every vertical of a site as a DMTUNI92 file into one folder, each
// file named after its test: "<test name>.uni".

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "dmt/DMTOptions.h"
#include "frame/strings/StringIds.h"
#include "frame/Diagnostic.h"
#include "frame/strings/StringTable.h"
#include "sites/cls_SITE.h"

namespace koru {

// What an export did, for the message at its end.
struct SiteUniExportResult {
  std::vector<std::filesystem::path> written;  // the files, in the order of the verticals
  std::vector<std::string> skipped;            // folder names of verticals the user left out
  std::vector<Diagnostic> problems;            // tests read only in part, files not written
  std::vector<Diagnostic> renamed;             // files that carry their vertical's folder too, and why
};

// True if `name` can name a file wherever the files may travel: not empty, none of
// \ / : * ? " < > | or control characters, not ending in "." or " ", and not a device name such
// as "CON" or "LPT1".
bool isUsableFileName(std::string_view name);

// For each vertical with a DMT test whose file exists: reads the file (with its Thrust.dat),
// takes the trimmed test name as the file's name, evaluates the test with the vertical's unit
// weight and pore pressure profiles and writes folder/<name>.uni. A name that can't name a file
// is asked for again through the input box of `strings` (text kStrUniBadTestName); an empty
// answer or a cancel leaves the vertical out. When an earlier vertical of the export already
// took the name (letter case aside, as some file systems ignore it), the file is
// "<name> (VERT_m).uni" instead and is listed in `renamed`, so no export replaces another.
//
// The thrust fields of the options follow each test: set for a test with thrust data and reset
// for one without, so that one sounding's thrust never changes another's results. The options
// passed in are not changed. A test read only in part is still exported with what was read, and
// the problem is reported; a file that can't be written is reported and the export goes on.
SiteUniExportResult exportSiteUNI(const cls_SITE& site, const std::filesystem::path& folder,
                                  const DMTOptions& options, const ProgramStrings& strings);

}  // namespace koru
