#include "sites/SiteUniExport.h"

#include <array>
#include <optional>
#include <set>
#include <system_error>

#include "dmt/Thrust.h"
#include "dmt/cls_DmtTEST.h"
#include "frame/Files.h"
#include "frame/Text.h"

namespace koru {

namespace fs = std::filesystem;

namespace {

// UTF-8 text to a path, the same on every platform.
fs::path utf8Path(const std::string& text) { return fs::path(std::u8string(text.begin(), text.end())); }

}  // namespace

bool isUsableFileName(std::string_view name) {
  if (name.empty() || name.back() == '.' || name.back() == ' ') return false;
  for (char c : name) {
    if (static_cast<unsigned char>(c) < 0x20) return false;
    if (std::string_view("\\/:*?\"<>|").find(c) != std::string_view::npos) return false;
  }
  // Device names stay devices whatever extension follows them.
  const std::string stem = upperAscii(name.substr(0, name.find('.')));
  static constexpr std::array<std::string_view, 4> kDevices = {"CON", "PRN", "AUX", "NUL"};
  for (std::string_view device : kDevices)
    if (stem == device) return false;
  if (stem.size() == 4 && (stem.starts_with("COM") || stem.starts_with("LPT")) && stem[3] >= '1' && stem[3] <= '9')
    return false;
  return true;
}

namespace {

// One vertical of exportSiteUNI; a vertical left out returns early.
void exportVertical(const cls_VERTICAL& vertical, const fs::path& folder, const DMTOptions& options,
                    const ProgramStrings& strings, SiteUniExportResult& result, std::set<std::string>& taken) {
  if (!vertical.blnTestDMT) return;
  std::error_code ec;
  if (!fs::is_regular_file(vertical.strDMTFile, ec)) return;  // no readings yet

  cls_DmtTEST test;
  test.setDatPath(vertical.strDMTFile);
  Diagnostic why;
  if (test.loadFile(&why) != -1) {
    if (why.reason.empty()) why = {vertical.strDMTFile, 0, "could not be read in full"};
    result.problems.push_back(why);
  }

  std::string name(trimmed(test.strTstname));
  if (!isUsableFileName(name)) {
    const std::optional<std::string> answer =
        strings.prompts().inputBox(strings.getStringX(kStrUniBadTestName, name), "", name);
    const std::string given(answer ? trimmed(*answer) : std::string_view());
    if (given.empty()) {
      result.skipped.push_back(vertical.strFolderName);
      return;
    }
    if (!isUsableFileName(given)) {
      result.problems.push_back({folder, 0, "'" + given + "' cannot name a file: the test of " +
                                                vertical.strFolderName + " is not exported"});
      return;
    }
    name = given;
  }

  if (test.N() > 0 && !test.evalDMT(vertical.gamma, vertical.u, options.forTest(test.blnHasThrust)))
    result.problems.push_back(
        {vertical.strDMTFile, 0, "a row could not be evaluated: results from that row on are 0"});

  std::string fileName = name + ".uni";
  if (!taken.insert(upperAscii(fileName)).second) {
    fileName = name + " (" + vertical.strFolderName + ").uni";
    taken.insert(upperAscii(fileName));
    result.renamed.push_back({folder / utf8Path(fileName), 0,
                              "another vertical's test is named '" + name + "' too: named after " +
                                  vertical.strFolderName + " as well"});
  }
  const fs::path target = folder / utf8Path(fileName);
  Diagnostic writeWhy;
  if (test.generateUNI(target, &writeWhy)) result.written.push_back(target);
  else result.problems.push_back(writeWhy);
}

}  // namespace

SiteUniExportResult exportSiteUNI(const cls_SITE& site, const fs::path& folder, const DMTOptions& options,
                                  const ProgramStrings& strings) {
  SiteUniExportResult result;
  std::set<std::string> taken;  // the file names of this export, in upper case
  for (const cls_VERTICAL& vertical : site.verticals)
    exportVertical(vertical, folder, options, strings, result, taken);
  return result;
}

}  // namespace koru
